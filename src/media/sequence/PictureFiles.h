#pragma once

#include "base/Result.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <array>
#include <cmath>
#include <functional>
#include <optional>
#include <utility>

namespace daylark {

/// What a picture file's header says.
struct PictureFacts {
    QSize size;              ///< the display window, in pixels as stored
    double pixelAspect = 1;
    int exifOrientation = 1;    ///< 1 to 8, as it is to be turned
    double framesPerSecond = 0; ///< 0: not said
    std::optional<std::array<int, 4>> timecode; ///< hours, minutes, seconds, frames
    QStringList layers;      ///< what of it can be shown beside its colours: layers and single channels
};

/// A picture as it was read: 1 plane (grey) or 3 (red, green, blue), one after the other, over the display window.
struct ReadPicture {
    enum class Numbers { whole8, whole16, half, real };
    QSize size;
    Numbers numbers = Numbers::whole8;
    int planes = 0;
    qsizetype stride = 0;      ///< bytes from line to line
    double pixelAspect = 1;
    int exifOrientation = 1;   ///< 1 to 8, as it is to be turned
    bool isSceneLinear = false;
    QString colourSpace;       ///< as the file names it; null: it says nothing
    QStringList channels;      ///< what the file calls what its planes hold: "R" or "diffuse.R"
    double black = 0, white = 1; ///< what of the file's own numbers became 0 and 1
};

/// Memory for a picture of so many bytes; null where there is none to be had.
using PictureRoom = std::function<uchar*(size_t bytes)>;

/// "0,100": the numbers that are black and white. None for what is no two numbers, or the same one twice.
[[nodiscard]] inline std::optional<std::pair<double, double>> blackAndWhiteOf(const QString& text) {
    const QStringList ends = text.split(QLatin1Char(','));
    if (ends.size() != 2) return std::nullopt;
    bool isLow = false, isHigh = false;
    const double low = ends[0].toDouble(&isLow), high = ends[1].toDouble(&isHigh);
    const bool isRange = isLow && isHigh && std::isfinite(low) && std::isfinite(high) && std::isnormal(high - low);
    return isRange ? std::optional(std::pair(low, high)) : std::nullopt;
}

/// Reads picture files (EXR, DPX, Cineon, TIFF, PNG, JPEG, TGA, WebP, HDR, PSD and their like). The seam to a module of its
/// own, since the library behind it brings hundreds of others along: they are loaded when the first run is opened. Only plain
/// values go through. Any number of threads.
class PictureFiles {
public:
    /// Changes with everything above: a module of another build is not taken.
    static constexpr int version = 3;

    virtual ~PictureFiles() = default;
    /// Errors: none there, damaged or cut off, deep, too large, of no known kind.
    [[nodiscard]] virtual Result<PictureFacts> facts(const QString& path) const = 0;
    /// `layer`: one of the facts' layers, with "[low,high]" behind it (`blackAndWhiteOf`); null: the colours.
    [[nodiscard]] virtual Result<ReadPicture> read(const QString& path, const QString& layer,
                                                   const PictureRoom& room) const = 0;
};

/// The module, loaded at the first call, which may take a moment. Errors: it is not installed, or of another version.
[[nodiscard]] Result<const PictureFiles*> pictureFiles();

} // namespace daylark
