#pragma once

#include "media/container/Av.h"

namespace daylark {

/// Tells the packets that a decoder may be spared: those whose picture no other picture refers to. Judged by
/// the packet's own unit headers (H.264 and HEVC; any other codec: none is), so that leaving one out cannot
/// change any other picture by a bit; in doubt a packet is not disposable. Internal to media/. A plain value;
/// any thread. Packets are untrusted bytes.
class DisposablePicture {
public:
    explicit DisposablePicture(const AVCodecParameters& parameters);
    /// False: `is` is never true.
    [[nodiscard]] bool known() const { return codec_ != AV_CODEC_ID_NONE; }
    [[nodiscard]] bool is(const AVPacket& packet) const;

private:
    enum class Unit { disposable, harmless, needed };
    [[nodiscard]] Unit kindOf(const uint8_t* unit, int size) const;

    AVCodecID codec_ = AV_CODEC_ID_NONE;
    int lengthBytes_ = 0; ///< of the number before each unit; 0: start codes
};

} // namespace daylark
