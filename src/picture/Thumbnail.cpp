#include "picture/Thumbnail.h"

#include "media/container/MediaFile.h"
#include "picture/PictureRenderer.h"

#include <algorithm>
#include <cmath>

namespace daylark {
namespace {

constexpr QSize thumbnailBox(100, 56);

bool isChoice(const ThumbnailRequest& request, const char* title) {
    return request.choice == QLatin1String(title);
}

/// Where the current back end looks, and the frame number that two of the choices record.
MediaTime timeOfChoice(const ThumbnailRequest& request, double seconds, ThumbnailResult& result) {
    if (seconds <= 0 || isChoice(request, "First Frame")) {
        result.mThumbnailFrame = 1;
        return {0, 24};
    }
    if (isChoice(request, "Second Frame")) {
        result.mThumbnailFrame = 2;
        return {1, 23}; // just inside the second frame at all usual rates; the odd base is wanted
    }
    if (isChoice(request, "Middle Frame") || isChoice(request, "Recreate Missing Thumbnails"))
        return {std::llround(seconds * 0.5 * 600), 600};
    if (isChoice(request, "Last Frame")) return {std::llround(seconds * 600), 600};
    return {0, 1};
}

/// Where the legacy back end looks; its first frame is the one after the first, so that a black one is
/// avoided.
qint64 legacyFrameOfChoice(const ThumbnailRequest& request, const SampleIndex& index) {
    if (index.count() == 0) return 0;
    const qint64 step = index.endTicks / index.count();
    qint64 value = 0;
    if (isChoice(request, "First Frame"))
        value = step;
    else if (isChoice(request, "Second Frame"))
        value = 2 * step;
    else if (isChoice(request, "Middle Frame"))
        value = step * (index.count() / 2);
    else if (isChoice(request, "Last Frame"))
        value = index.endTicks;
    return index.frameAt({value, index.timeScale});
}

Image pictureAt(FrameReader& reader, qint64 frame, const CancelFlag* cancel) {
    const Result<VideoFrame> picture = reader.read(frame, cancel);
    if (!picture) return {};
    // To the nearest pixel, so that 16:9 fills the box.
    const QSize size = QSizeF(picture->displaySize())
                           .scaled(thumbnailBox, Qt::KeepAspectRatio)
                           .toSize()
                           .expandedTo(QSize(1, 1));
    const QImage image = renderFrame(*picture, size);
    // The picture keeps its shape inside the box; the image's size in points is the box itself, whatever the
    // shape.
    return image.isNull() ? Image() : Image::fromEncoded(Image::fromQImage(image).encoded(), thumbnailBox);
}

} // namespace

ThumbnailResult makeThumbnail(const ThumbnailRequest& request, const CancelFlag* cancel, SampleTables* tables) {
    ThumbnailResult result;
    const Result<std::unique_ptr<FrameReader>> reader = FrameReader::open(request.path, cancel, tables);
    if (!reader) {
        const Result<MediaFile> file = MediaFile::open(request.path, cancel);
        if (!request.legacyRules) timeOfChoice(request, 0, result);
        // Sound alone has nothing to show and is no failure.
        if (!file || file->video()) result.creatingThumbnailText = QStringLiteral("No QT Thumbnail");
        return result;
    }
    const SampleIndex& index = (*reader)->index();
    if (!request.legacyRules) {
        const MediaTime time = timeOfChoice(request, index.duration().seconds(), result);
        result.thumbnail = pictureAt(**reader, index.frameAt(time), cancel);
    }
    if (result.thumbnail.isNil())
        result.thumbnail = pictureAt(**reader, legacyFrameOfChoice(request, index), cancel);
    result.creatingThumbnailText = result.thumbnail.isNil() ? QStringLiteral("No QT Thumbnail") : QStringLiteral("");
    return result;
}

} // namespace daylark
