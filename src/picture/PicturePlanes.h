#pragma once

#include "media/decode/VideoFrame.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <array>
#include <memory>

namespace daylark {

/// A decoded picture as planes of numbers, with all that is needed to make RGB of it and no decoder type: what both renderers
/// (and their reference) work from. Plane 0 is luma or red, 1 Cb or green, 2 Cr or blue, 3 alpha; grey pictures have plane 0
/// (and perhaps 3) only.
///
/// RGB of a sample, with c the numbers divided by 2^depth - 1:
///
///     rgb = toRgb * (c - offset)            (for RGB pictures toRgb is the identity and offset 0)
///
/// Half and single precision numbers are RGB (or grey) themselves, divided by nothing: 1 is a display's white or, scene-linear,
/// a reflectance of 1. They may be negative, above 1, infinite or no number at all: whoever computes with them takes what is
/// no number for 0 and holds the rest to +-`PicturePlanes::largest`.
///
/// Chroma sample (i, j) sits at luma position (i * 2^log2ChromaWidth + chromaX, j * 2^log2ChromaHeight +
/// chromaY), in luma samples, where (0, 0) is the centre of the first luma sample. Formats that are not planar,
/// or stored in the other byte order, have been brought into this form without loss. Keeps what it points to
/// alive. A plain value; any thread.
struct PicturePlanes {
    struct Plane {
        const uchar* data = nullptr; ///< null: no such plane
        qsizetype stride = 0;        ///< bytes from row to row
        QSize size;                  ///< samples
    };
    /// How a sample is stored, in this machine's byte order: a whole number of `depth` bits, a half, a float.
    enum class Numbers { whole, half, real };
    static constexpr float largest = 1e30F;
    std::array<Plane, 4> planes;
    Numbers numbers = Numbers::whole;
    int bytesPerSample = 1;          ///< 1 or 2; 2 for halves, 4 for floats
    int depth = 8;                   ///< bits that count, in the low end; of whole numbers
    bool isSceneLinear = false;      ///< proportional to light: to be brought to a display by a view
    QString colourSpace;             ///< by the name that the file itself gives; null: it says nothing
    QStringList channels;            ///< what the file calls planes 0, 1, 2; empty: it doesn't
    double black = 0, white = 1;     ///< what of the file's own numbers stands as 0 and 1 here
    int log2ChromaWidth = 0, log2ChromaHeight = 0;
    double chromaX = 0, chromaY = 0; ///< luma samples
    std::array<std::array<double, 3>, 3> toRgb{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    std::array<double, 3> offset{0, 0, 0};
    Orientation orientation; ///< as it is to be shown
    std::shared_ptr<const void> keep;

    [[nodiscard]] bool isNull() const { return !planes[0].data; }
    [[nodiscard]] bool isGrey() const { return !planes[1].data; }
    [[nodiscard]] bool hasAlpha() const { return planes[3].data; }
    /// What a sample is divided by.
    [[nodiscard]] double codes() const { return numbers == Numbers::whole ? double((1 << depth) - 1) : 1; }
    [[nodiscard]] QSize size() const { return planes[0].size; } ///< samples, before orientation and pixel aspect
};

/// Cheap (no copy) for what decoders give planar; converts otherwise. Any thread.
[[nodiscard]] PicturePlanes planesOf(const VideoFrame& frame);
/// Lines `first` to `first` + `count` of it alone, as if they were the picture, unturned: next to nothing, however it is
/// stored. `first` is brought to where a line of chroma begins, and what is asked for to what there is. Any thread.
struct PictureLines {
    PicturePlanes planes;
    int first = 0; ///< of its lines
};
[[nodiscard]] PictureLines linesOf(const VideoFrame& frame, int first, int count);

} // namespace daylark
