#include "support/FieldPictures.h"

#include <algorithm>

namespace daylark {
namespace {

constexpr int blockSize = 16;

/// Bits from the highest down, with the format's variable-length numbers.
class BitWriter {
public:
    void bits(unsigned value, int count) {
        for (int bit = count - 1; bit >= 0; --bit) {
            if (free_ == 0) {
                bytes_.append('\0');
                free_ = 8;
            }
            --free_;
            if ((value >> bit) & 1) bytes_.back() = char(uint8_t(bytes_.back()) | (1U << free_));
        }
    }
    void number(unsigned value) { // Exp-Golomb
        const unsigned code = value + 1;
        int length = 0;
        while (code >> (length + 1))
            ++length;
        bits(0, length);
        bits(code, length + 1);
    }
    void align() { free_ = 0; }
    void bytes(const uint8_t* from, int count) { bytes_.append(reinterpret_cast<const char*>(from), count); }
    void end() {
        bits(1, 1);
        align();
    }
    [[nodiscard]] const QByteArray& data() const { return bytes_; }

private:
    QByteArray bytes_;
    int free_ = 0; ///< bits of the last byte
};

/// With its start code, and with the bytes that keep start codes out of the data.
QByteArray unit(int importance, int type, const QByteArray& data) {
    QByteArray out = QByteArray::fromHex("00000001");
    out.append(char((importance << 5) | type));
    int zeros = 0;
    for (const char byte : data) {
        if (zeros >= 2 && uint8_t(byte) <= 3) {
            out.append('\3');
            zeros = 0;
        }
        zeros = byte == 0 ? zeros + 1 : 0;
        out.append(byte);
    }
    return out;
}

/// One macroblock of a field as plain samples.
void plainBlock(BitWriter& out, const FieldPictureEncoder::Planes& planes, int column, int row, bool lower) {
    out.align();
    for (size_t plane = 0; plane < 3; ++plane) {
        const int edge = plane == 0 ? blockSize : blockSize / 2;
        for (int line = 0; line < edge; ++line) {
            const int inFrame = 2 * (row * edge + line) + (lower ? 1 : 0);
            out.bytes(planes.data[plane] + ptrdiff_t(inFrame) * planes.stride[plane] + column * edge, edge);
        }
    }
}

} // namespace

std::vector<FieldPictureEncoder::Place> FieldPictureEncoder::fileOrder(int frames, int groupSize,
                                                                       int between) {
    std::vector<Place> order;
    for (int group = 0; group < frames; group += groupSize) {
        const int end = std::min(frames, group + groupSize);
        order.push_back({group, true, true});
        for (int shown = group; shown + 1 < end;) {
            const int next = std::min(shown + between + 1, end - 1);
            order.push_back({next, false, true});
            for (int inner = shown + 1; inner < next; ++inner)
                order.push_back({inner, false, false});
            shown = next;
        }
    }
    return order;
}

QByteArray FieldPictureEncoder::parameterSets() const {
    BitWriter sequence;
    sequence.bits(77, 8); // main profile
    sequence.bits(0, 8);
    sequence.bits(40, 8); // level
    sequence.number(0);
    sequence.number(4); // frame numbers of 8 bits
    sequence.number(0);
    sequence.number(4); // order counts of 8 bits
    sequence.number(2); // frames that can be referred to
    sequence.bits(0, 1);
    sequence.number(unsigned(size_.width() / blockSize - 1));
    sequence.number(unsigned(size_.height() / (2 * blockSize) - 1));
    sequence.bits(0b00, 2); // not frames only, not mixed within a frame
    sequence.bits(1, 1);
    sequence.bits(0, 1);    // no cropping
    sequence.bits(1, 1);    // further information: only how far frames are reordered
    sequence.bits(0, 8);    // aspect, overscan, signal, chroma place, timing, two buffers, structure
    sequence.bits(0b11, 2); // restrictions; vectors may point outside
    sequence.number(0);
    sequence.number(0);
    sequence.number(9);
    sequence.number(9);
    sequence.number(1); // frames reordered
    sequence.number(2); // frames kept
    sequence.end();
    BitWriter picture;
    picture.number(0);
    picture.number(0);
    picture.bits(0b00, 2);
    picture.number(0);
    picture.number(0);
    picture.number(0);
    picture.bits(0, 3);
    picture.number(0);
    picture.number(0);
    picture.number(0);
    picture.bits(0b100, 3); // the deblocking filter can be switched off
    picture.end();
    return unit(3, 7, sequence.data()) + unit(3, 8, picture.data());
}

QByteArray FieldPictureEncoder::field(const Place& place, const Planes& planes, bool lower) const {
    const bool first = !lower, plain = place.key;
    const bool restarts = place.key && first; // the second field of such a frame is an ordinary one
    BitWriter out;
    out.number(0);
    out.number(plain ? 7 : 5);
    out.number(0);
    out.bits(unsigned(frameNumber_) & 255, 8);
    out.bits(lower ? 0b11 : 0b10, 2);
    if (restarts) out.number(unsigned(place.frame) & 1);
    out.bits(unsigned(2 * (place.frame - keyFrame_) + (lower ? 1 : 0)) & 255, 8);
    if (!plain) out.bits(0b00, 2); // references as they come
    if (place.referredTo) out.bits(0, restarts ? 2 : 1);
    out.number(0);
    out.number(1); // no deblocking
    const int columns = size_.width() / blockSize, rows = size_.height() / (2 * blockSize);
    const int coded = plain ? rows : std::min(rows, codedRows_);
    for (int block = 0; block < coded * columns; ++block) {
        if (!plain) out.number(0); // none skipped before it
        out.number(plain ? 25 : 30);
        plainBlock(out, planes, block % columns, block / columns, lower);
    }
    if (coded < rows) out.number(unsigned((rows - coded) * columns));
    out.end();
    return unit(place.referredTo ? 2 : 0, restarts ? 5 : 1, out.data());
}

QByteArray FieldPictureEncoder::encode(const Place& place, const Planes& planes) {
    if (place.key) {
        keyFrame_ = place.frame;
        frameNumber_ = 0;
    }
    const QByteArray delimiter = unit(0, 9, QByteArray::fromHex("f0"));
    QByteArray both = delimiter;
    if (place.key) both += parameterSets();
    both += field(place, planes, false) + delimiter + field(place, planes, true);
    if (place.referredTo) ++frameNumber_;
    return both;
}

} // namespace daylark
