#include "picture/Thumbnail.h"

#include "media/container/MediaFile.h"
#include "picture/PictureRenderer.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

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

namespace {

/// Every frame that a thumbnail may be of, the likeliest first.
std::vector<qint64> framesOfChoices(const SampleIndex& index, const QString& first) {
    std::vector<qint64> frames;
    for (const QString& choice : {first, QStringLiteral("Middle Frame"), QStringLiteral("First Frame"),
                                  QStringLiteral("Second Frame"), QStringLiteral("Last Frame")}) {
        const ThumbnailRequest request{{}, choice, false};
        ThumbnailResult unused;
        for (const qint64 frame : {index.frameAt(timeOfChoice(request, index.duration().seconds(), unused)),
                                   legacyFrameOfChoice(request, index)})
            if (std::find(frames.begin(), frames.end(), frame) == frames.end()) frames.push_back(frame);
    }
    return frames;
}

/// Mean difference of a component, of two pictures of one size; the larger the less alike.
double differenceOf(const QImage& one, const QImage& other) {
    const QImage a = one.convertToFormat(QImage::Format_RGB888), b = other.convertToFormat(QImage::Format_RGB888);
    qint64 sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        const uchar *left = a.constScanLine(y), *right = b.constScanLine(y);
        for (int x = 0; x < 3 * a.width(); ++x)
            sum += std::abs(int(left[x]) - int(right[x]));
    }
    return double(sum) / (3.0 * a.width() * std::max(1, a.height()));
}

} // namespace

QImage largerThumbnail(const Image& thumbnail, const QString& path, const QString& choice, int side, const CancelFlag* cancel,
                       SampleTables* tables) {
    constexpr double alike = 3.0; // of 255: rounding, and what other encoders made of it
    const QImage known = thumbnail.decode();
    if (known.isNull()) return {};
    const Result<std::unique_ptr<FrameReader>> reader = FrameReader::open(path, cancel, tables);
    if (!reader) return {};
    for (const qint64 frame : framesOfChoices((*reader)->index(), choice)) {
        if (cancel && *cancel) return {};
        const Result<VideoFrame> picture = (*reader)->read(frame, cancel);
        if (!picture || differenceOf(renderFrame(*picture, known.size()), known) > alike) continue;
        const QSize size =
            QSizeF(picture->displaySize()).scaled(QSizeF(side, side), Qt::KeepAspectRatio).toSize().expandedTo(QSize(1, 1));
        return renderFrame(*picture, size);
    }
    return {};
}

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
