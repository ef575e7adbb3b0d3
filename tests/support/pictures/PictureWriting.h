#pragma once

#include <string>
#include <utility>
#include <vector>

namespace daylark::test {

/// One picture file as the foreign library is asked to write it: interleaved floats, white at 1.
struct WrittenPicture {
    std::string path, numbers = "half"; ///< "uint8", "uint16", "half", "float", "uint10" for DPX
    int x = 0, y = 0, width = 0, height = 0;       ///< the data window
    int fullX = 0, fullY = 0, fullWidth = 0, fullHeight = 0; ///< the display window; 0: as the data window
    int number = 0;                                          ///< for whoever makes it
    std::vector<std::string> channels;
    std::vector<float> pixels;
    std::vector<std::pair<std::string, std::string>> texts;
    std::vector<std::pair<std::string, float>> reals;
    std::vector<float> chromaticities; ///< eight
    int rate = 0, rateScale = 1;
    unsigned timecode = 0; ///< as its standard packs it
    int orientation = 1;   ///< as cameras count them
    bool tiles = false, deep = false;
    /// Smaller ones of the same picture, which are white all over; in tiles. `eachWay`: where the format has them, widths and
    /// heights are halved independently. Where a side is uneven, what is over is left out, or counts (`halvedUp`).
    enum class Levels { one, halved, halvedUp, eachWay };
    Levels levels = Levels::one;
    std::string partName;
    std::vector<WrittenPicture> further; ///< parts
};

} // namespace daylark::test

/// The module's one function; false with what went wrong in `trouble`.
extern "C" bool daylarkWritePicture(const daylark::test::WrittenPicture& picture, std::string& trouble);
