#include "picture/scopes/ScopeTrace.h"

#include "picture/scopes/Histogram.h"
#include "picture/scopes/Vectorscope.h"
#include "picture/scopes/Waveform.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace daylark {

namespace {

constexpr int waveformColumns = 480, histogramHeight = 200;
constexpr double fullAt = 0.04; // of a column's pixels on one level: as bright as it gets, nearly

/// Of so much of `colour`, 0 to 1.
QRgb lit(double amount, const std::array<double, 3>& colour) {
    const auto part = [amount](double of, int dark) {
        return std::clamp(int(std::lround(dark + amount * (of * 255 - dark))), 0, 255);
    };
    return qRgb(part(colour[0], qRed(scopeDark)), part(colour[1], qGreen(scopeDark)), part(colour[2], qBlue(scopeDark)));
}

QImage darkImage(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(scopeDark);
    return image;
}

QRgb* lineOf(QImage& image, int y) {
    return reinterpret_cast<QRgb*>(image.scanLine(y));
}

/// Colours by count, up to where more is no brighter.
std::vector<QRgb> shadesOf(double pixelsAColumn, const std::array<double, 3>& colour) {
    const double full = fullAt * pixelsAColumn;
    std::vector<QRgb> shades(size_t(6 * full) + 2, scopeDark);
    for (size_t count = 1; count < shades.size(); ++count)
        shades[count] = lit(1 - 0.7 * std::exp(-double(count) / full), colour);
    return shades;
}

void layWaveform(QImage& image, int left, const Waveform& waveform, double pixelsAColumn, const std::array<double, 3>& colour) {
    const std::vector<QRgb> shades = shadesOf(pixelsAColumn, colour);
    for (int level = 0; level < scopeLevels; ++level) {
        QRgb* line = lineOf(image, scopeLevels - 1 - level) + left;
        for (int x = 0; x < waveform.columns; ++x)
            line[x] = shades[std::min(size_t(waveform.at(x, level)), shades.size() - 1)];
    }
}

double pixelsAColumn(const QImage& picture, const Waveform& waveform) {
    return double(picture.width()) * picture.height() / std::max(1, waveform.columns);
}

} // namespace

QImage waveformTrace(const QImage& picture) {
    if (picture.isNull()) return {};
    const Waveform luma = waveformOf(picture, ScopeChannel::luma, waveformColumns);
    QImage image = darkImage(luma.columns, scopeLevels);
    layWaveform(image, 0, luma, pixelsAColumn(picture, luma), {0.85, 0.85, 0.85});
    return image;
}

QImage paradeTrace(const QImage& picture) {
    if (picture.isNull()) return {};
    constexpr std::array<std::array<double, 3>, 3> colours{{{0.92, 0.33, 0.3}, {0.36, 0.8, 0.4}, {0.36, 0.52, 0.95}}};
    constexpr std::array channels{ScopeChannel::red, ScopeChannel::green, ScopeChannel::blue};
    const int columns = std::min(paradeColumns, picture.width());
    QImage image = darkImage(3 * columns + 2 * paradeGap, scopeLevels);
    for (size_t i = 0; i < channels.size(); ++i) {
        const Waveform waveform = waveformOf(picture, channels[i], columns);
        layWaveform(image, int(i) * (columns + paradeGap), waveform, pixelsAColumn(picture, waveform), colours[i]);
    }
    return image;
}

// Each cell in the colour that lies there, at one brightness.
QImage vectorscopeTrace(const QImage& picture) {
    if (picture.isNull()) return {};
    const Vectorscope scope = vectorscopeOf(picture);
    QImage image = darkImage(Vectorscope::side, Vectorscope::side);
    const double most = std::log1p(double(picture.width()) * picture.height() / 200);
    for (int y = 0; y < Vectorscope::side; ++y) {
        QRgb* line = lineOf(image, y);
        for (int x = 0; x < Vectorscope::side; ++x) {
            const quint32 count = scope.at({x, y});
            if (!count) continue;
            constexpr double half = Vectorscope::side / 2, luma = 0.6;
            const double cb = (x - half) / (2 * half), cr = (half - y) / (2 * half);
            const std::array<double, 3> colour{luma + 1.5748 * cr, luma - 0.1873 * cb - 0.4681 * cr, luma + 1.8556 * cb};
            line[x] = lit(std::clamp(0.55 + 0.45 * std::log1p(count) / most, 0.0, 1.0),
                          {std::clamp(colour[0], 0.1, 1.0), std::clamp(colour[1], 0.1, 1.0), std::clamp(colour[2], 0.1, 1.0)});
        }
    }
    return image;
}

// Where channels lie over each other their colours add up.
QImage histogramTrace(const QImage& picture) {
    if (picture.isNull()) return {};
    const Histogram histogram = histogramOf(picture);
    const double highest = std::max<quint32>(1, histogram.highestInside());
    QImage image = darkImage(scopeLevels, histogramHeight);
    const auto height = [&](const Histogram::Counts& counts, int level) { // a root, so that the few are seen beside the many
        const double share = std::sqrt(std::min(1.0, counts[size_t(level)] / highest));
        return counts[size_t(level)] ? std::max(1, int(std::lround(share * histogramHeight))) : 0;
    };
    int before = 0; // of luma, whose outline is one line
    for (int level = 0; level < scopeLevels; ++level) {
        const int red = height(histogram.red, level), green = height(histogram.green, level);
        const int blue = height(histogram.blue, level), luma = height(histogram.luma, level);
        for (int y = 0; y < histogramHeight; ++y) {
            const int up = histogramHeight - y;
            const std::array<double, 3> colour{up <= red ? 0.66 : 0.14, up <= green ? 0.62 : 0.14, up <= blue ? 0.72 : 0.14};
            if (up <= std::max({red, green, blue})) lineOf(image, y)[level] = lit(1, colour);
            const bool isOutline = up <= std::max(luma, before) && up >= std::max(1, std::min(luma, before));
            if (isOutline) lineOf(image, y)[level] = lit(1, {0.9, 0.9, 0.9});
        }
        before = luma;
    }
    return image;
}

} // namespace daylark
