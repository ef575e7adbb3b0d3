#pragma once

#include <QByteArray>
#include <QSize>

#include <array>
#include <cstdint>
#include <vector>

namespace daylark {

/// A small H.264 encoder for one purpose: every frame is coded as two field pictures (the upper one first),
/// which the common encoders don't make. Key frames hold plain samples; in the others only the topmost rows
/// of macroblocks, where the bar code stands, are coded and the rest is taken from the frame before. Frames
/// between two that are referred to are referred to by none, and stand in the file behind both. For test
/// movies: the sizes are multiples of 16 across and of 32 down.
class FieldPictureEncoder {
public:
    /// The planes of a 4:2:0 picture, 8 bit.
    struct Planes {
        std::array<const uint8_t*, 3> data{};
        std::array<int, 3> stride{};
    };
    struct Place {
        int frame = 0; ///< from 0, as shown
        bool key = false, referredTo = true;
    };

    FieldPictureEncoder(QSize size, int codedRows)
        : size_(size)
        , codedRows_(codedRows) {}

    /// The frames of a movie in file order, in groups of this size with so many frames that none refers to.
    [[nodiscard]] static std::vector<Place> fileOrder(int frames, int groupSize, int between);
    [[nodiscard]] QByteArray parameterSets() const;
    /// Both fields of the next frame in file order, as a byte stream with start codes.
    [[nodiscard]] QByteArray encode(const Place& place, const Planes& planes);

private:
    [[nodiscard]] QByteArray field(const Place& place, const Planes& planes, bool lower) const;

    QSize size_;
    int codedRows_; ///< of macroblocks, in a field
    int keyFrame_ = 0;
    int frameNumber_ = 0;
};

} // namespace daylark
