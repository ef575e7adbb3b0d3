#include "picture/PixelProbe.h"

#include "picture/PicturePlanes.h"
#include "picture/PictureRenderer.h"

#include <QImage>
#include <QRect>
#include <qfloat16.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace daylark {

namespace {

constexpr int linesAround = 8; // two of the coarsest chroma: what is filtered into a pixel lies within
constexpr double deepWhite = 65535;

/// Where a place of the upright picture is stored.
QPoint storedPlace(QPoint upright, QSize stored, const Orientation& orientation) {
    const QSize size = orientation.isTurned() ? stored.transposed() : stored;
    const int x = orientation.flipsX() ? size.width() - 1 - upright.x() : upright.x();
    const int y = orientation.flipsY() ? size.height() - 1 - upright.y() : upright.y();
    return orientation.isTurned() ? QPoint(y, x) : QPoint(x, y);
}

double sampleAt(const PicturePlanes& picture, const uchar* at) {
    switch (picture.numbers) {
    case PicturePlanes::Numbers::half: {
        qfloat16 value;
        std::memcpy(&value, at, sizeof value);
        return double(float(value));
    }
    case PicturePlanes::Numbers::real: {
        float value = 0;
        std::memcpy(&value, at, sizeof value);
        return double(value);
    }
    case PicturePlanes::Numbers::whole:
        break;
    }
    if (picture.bytesPerSample == 1) return *at;
    quint16 code = 0;
    std::memcpy(&code, at, sizeof code);
    return code;
}

/// What planes 0 to 2 hold, where the file doesn't call it anything.
std::array<QString, 3> planeNames(const PicturePlanes& picture) {
    const auto& red = picture.toRgb[0];
    if (picture.isGrey()) return {QStringLiteral("Y"), {}, {}};
    if (red[0] == 0) return {QStringLiteral("G"), QStringLiteral("B"), QStringLiteral("R")};
    if (red[1] != 0) return {QStringLiteral("Y"), QStringLiteral("Cg"), QStringLiteral("Co")};
    if (red[2] != 0) return {QStringLiteral("Y"), QStringLiteral("Cb"), QStringLiteral("Cr")};
    return {QStringLiteral("R"), QStringLiteral("G"), QStringLiteral("B")};
}

std::vector<PixelValues::Number> storedNumbers(const PicturePlanes& picture, QPoint at) {
    std::vector<PixelValues::Number> numbers;
    const std::array<QString, 3> names = planeNames(picture);
    for (size_t i = 0; i < picture.planes.size(); ++i) {
        const PicturePlanes::Plane& plane = picture.planes[i];
        if (!plane.data) continue;
        const bool isChroma = i == 1 || i == 2;
        const int x = std::min(isChroma ? at.x() >> picture.log2ChromaWidth : at.x(), plane.size.width() - 1);
        const int y = std::min(isChroma ? at.y() >> picture.log2ChromaHeight : at.y(), plane.size.height() - 1);
        const double value = sampleAt(picture, plane.data + y * plane.stride + qsizetype(x) * picture.bytesPerSample);
        const QString own = i == 3 ? QStringLiteral("A") : names[i];
        const bool isAsInFile = picture.black == 0 && picture.white == 1; // infinite stays infinite
        numbers.push_back({i < size_t(picture.channels.size()) ? picture.channels[qsizetype(i)] : own,
                           isAsInFile ? value : picture.black + value * (picture.white - picture.black)});
    }
    return numbers;
}

} // namespace

std::array<int, 3> PixelValues::shownCodes() const {
    std::array<int, 3> codes{};
    for (size_t i = 0; i < codes.size(); ++i)
        codes[i] = int(std::lround(shown[i] * 255));
    return codes;
}

std::optional<double> PixelValues::hue() const {
    const auto [red, green, blue] = shown;
    const double most = std::max({red, green, blue}), range = most - std::min({red, green, blue});
    if (range < 0.5 / 255) return std::nullopt;
    const double sixth = most == red     ? (green - blue) / range
                         : most == green ? 2 + (blue - red) / range
                                         : 4 + (red - green) / range;
    return std::fmod(sixth * 60 + 360, 360);
}

QSize uprightSize(const VideoFrame& frame) {
    return frame.orientation().isTurned() ? frame.size().transposed() : frame.size();
}

std::optional<PixelValues> pixelAt(const VideoFrame& frame, QPoint place, const PixelLook& look) {
    const Orientation orientation = frame.orientation();
    if (!QRect(QPoint(), uprightSize(frame)).contains(place)) return std::nullopt;
    const QPoint stored = storedPlace(place, frame.size(), orientation);
    const PictureLines lines = linesOf(frame, stored.y() - linesAround, 2 * linesAround + 1);
    if (lines.planes.isNull()) return std::nullopt;
    const QPoint at = stored - QPoint(0, lines.first);
    PixelValues values;
    values.place = place;
    values.stored = storedNumbers(lines.planes, at);
    values.isCode = lines.planes.numbers == PicturePlanes::Numbers::whole;
    values.depth = lines.planes.depth;
    PictureRequest request;
    request.visible = {at, QSize(1, 1)};
    request.colour = look.colour;
    request.display = look.display;
    request.deep = true;
    const QImage pixel = renderPicture(lines.planes, request);
    if (pixel.isNull()) return std::nullopt;
    const QRgba64 shown = reinterpret_cast<const QRgba64*>(pixel.constScanLine(0))[0];
    values.shown = {shown.red() / deepWhite, shown.green() / deepWhite, shown.blue() / deepWhite};
    return values;
}

} // namespace daylark
