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

/// As the viewer shows it, but without what somebody looks at it with.
QImage rendered(const VideoFrame& picture, QSize size, const std::shared_ptr<const DisplayProcessor>& display) {
    PictureRequest request;
    request.size = size;
    request.display = display;
    return renderPicture(picture, request);
}

/// As large as fits, to the nearest pixel, so that 16:9 fills its box.
QSize sizeWithin(const VideoFrame& picture, const QSize& box) {
    return QSizeF(picture.displaySize()).scaled(box, Qt::KeepAspectRatio).toSize().expandedTo(QSize(1, 1));
}

/// The picture keeps its shape inside the box; the image's size in points is the box itself, whatever the shape.
Image inBox(const QImage& image) {
    return image.isNull() ? Image() : Image::fromEncoded(Image::fromQImage(image).encoded(), thumbnailBox);
}

Image pictureAt(FrameReader& reader, qint64 frame, const ThumbnailRequest& request, const CancelFlag* cancel) {
    const Result<VideoFrame> picture = reader.read(frame, cancel);
    if (!picture) return {};
    return inBox(rendered(*picture, sizeWithin(*picture, thumbnailBox),
                          request.colour.processorFor(*picture, request.path)));
}

} // namespace

namespace {

/// Every frame that a thumbnail may be of, the likeliest first.
std::vector<qint64> framesOfChoices(const SampleIndex& index, const QString& first) {
    std::vector<qint64> frames;
    for (const QString& choice : {first, QStringLiteral("Middle Frame"), QStringLiteral("First Frame"),
                                  QStringLiteral("Second Frame"), QStringLiteral("Last Frame")}) {
        const ThumbnailRequest request{{}, choice};
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

/// One of some hundreds of colours for every pixel.
std::vector<size_t> coloursOf(const QImage& picture) {
    constexpr int levels = 24, tints = 5;
    const auto tint = [](int difference) { return (difference + 255) * tints / 511; };
    std::vector<size_t> colours;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            const int place = (qGray(pixel) * levels / 256 * tints + tint(qRed(pixel) - qGreen(pixel))) * tints +
                              tint(qBlue(pixel) - qGreen(pixel));
            colours.push_back(size_t(place));
        }
    return colours;
}

/// How much of another picture's lightness is told by this one's colours, 0 to 1.
double toldBy(const QImage& picture, const QImage& other) {
    struct Sum {
        double count = 0, sum = 0, squares = 0;
        void add(double value) { count += 1, sum += value, squares += value * value; }
        [[nodiscard]] double spread() const { return count > 0 ? squares - sum * sum / count : 0; }
    };
    const std::vector<size_t> colours = coloursOf(picture);
    std::vector<Sum> byColour(600);
    Sum all;
    for (size_t i = 0; i < colours.size(); ++i) {
        const double value = qGray(other.pixel(int(i) % other.width(), int(i) / other.width()));
        byColour[colours[i]].add(value);
        all.add(value);
    }
    double left = 0;
    for (const Sum& sum : byColour)
        left += sum.spread();
    return all.spread() > all.count ? 1 - left / all.spread() : 0; // an even grey tells nothing
}

/// Whether two pictures of one size may be one picture by two views, which make of one colour always the same one, though
/// perhaps the same of several: 1 if so, less the more speaks against it.
double likenessOf(const QImage& one, const QImage& other) {
    return std::max(toldBy(one, other), toldBy(other, one));
}

/// The frame that a thumbnail shows, and what it is to go through.
struct KnownFrame {
    VideoFrame picture; ///< null: none that is known
    std::shared_ptr<const DisplayProcessor> display;
};

/// `isAnew`: the thumbnail may have been made by another view, or by none.
KnownFrame frameOfThumbnail(const Image& thumbnail, const ThumbnailRequest& request, bool isAnew, const CancelFlag* cancel,
                            SampleTables* tables) {
    constexpr double alike = 3.0; // of 255: rounding, and what other encoders made of it
    constexpr double wellAlike = 0.97, better = 0.005; // of a shot that hardly moves the likeliest is believed
    const QImage known = thumbnail.decode();
    if (known.isNull()) return {};
    const Result<std::unique_ptr<FrameReader>> reader = FrameReader::open(request.path, cancel, tables);
    if (!reader) return {};
    KnownFrame best;
    double bestLikeness = wellAlike;
    for (const qint64 frame : framesOfChoices((*reader)->index(), request.choice)) {
        if (cancel && *cancel) return {};
        const Result<VideoFrame> picture = (*reader)->read(frame, cancel);
        if (!picture) continue;
        const auto display = request.colour.processorFor(*picture, request.path);
        const QImage shown = rendered(*picture, known.size(), display);
        if (differenceOf(shown, known) <= alike) return {*picture, display};
        const double likeness = display || isAnew ? likenessOf(shown, known) : 0;
        if (likeness <= bestLikeness + (best.picture.isNull() ? 0 : better)) continue;
        best = {*picture, display};
        bestLikeness = likeness;
    }
    return best;
}

} // namespace

QImage largerThumbnail(const Image& thumbnail, const ThumbnailRequest& request, int side, const CancelFlag* cancel,
                       SampleTables* tables) {
    const KnownFrame frame = frameOfThumbnail(thumbnail, request, false, cancel, tables);
    return frame.picture.isNull() ? QImage() : rendered(frame.picture, sizeWithin(frame.picture, {side, side}), frame.display);
}

Image sameThumbnailAnew(const Image& thumbnail, const ThumbnailRequest& request, const CancelFlag* cancel,
                        SampleTables* tables) {
    const KnownFrame frame = frameOfThumbnail(thumbnail, request, true, cancel, tables);
    return frame.picture.isNull() ? Image()
                                  : inBox(rendered(frame.picture, sizeWithin(frame.picture, thumbnailBox), frame.display));
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
        result.thumbnail = pictureAt(**reader, index.frameAt(time), request, cancel);
    }
    if (result.thumbnail.isNil())
        result.thumbnail = pictureAt(**reader, legacyFrameOfChoice(request, index), request, cancel);
    result.creatingThumbnailText = result.thumbnail.isNil() ? QStringLiteral("No QT Thumbnail") : QStringLiteral("");
    return result;
}

} // namespace daylark
