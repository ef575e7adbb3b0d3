#include "media/decode/DisposablePicture.h"

namespace daylark {
namespace {

/// The next start code's first zero at or after `at`, or `size`.
int startCode(const uint8_t* data, int at, int size) {
    for (; at + 2 < size; ++at)
        if (data[at] == 0 && data[at + 1] == 0 && data[at + 2] == 1) return at;
    return size;
}

} // namespace

DisposablePicture::DisposablePicture(const AVCodecParameters& parameters) {
    const uint8_t* header = parameters.extradata;
    const int size = header ? parameters.extradata_size : 0;
    const bool boxed = size > 0 && header[0] == 1; // a configuration record, else start codes
    if (parameters.codec_id == AV_CODEC_ID_H264) {
        if (boxed && size < 7) return;
        lengthBytes_ = boxed ? (header[4] & 3) + 1 : 0;
        codec_ = AV_CODEC_ID_H264;
    } else if (parameters.codec_id == AV_CODEC_ID_HEVC && boxed && size >= 23) {
        // With several temporal layers a picture of no use to its own layer may be of use to a higher one.
        constexpr int oneLayer = 1;
        if (((header[21] >> 3) & 7) != oneLayer) return;
        lengthBytes_ = (header[21] & 3) + 1;
        codec_ = AV_CODEC_ID_HEVC;
    }
}

DisposablePicture::Unit DisposablePicture::kindOf(const uint8_t* unit, int size) const {
    if (codec_ == AV_CODEC_ID_H264) {
        if (size < 1) return Unit::harmless;
        const int type = unit[0] & 31, importance = (unit[0] >> 5) & 3;
        if (type == 1) return importance == 0 ? Unit::disposable : Unit::needed;
        constexpr int information = 6, delimiter = 9, filler = 12;
        return type == information || type == delimiter || type == filler ? Unit::harmless : Unit::needed;
    }
    if (size < 2) return Unit::harmless;
    const int type = (unit[0] >> 1) & 63, layer = (unit[0] & 1) << 5 | unit[1] >> 3, temporal = unit[1] & 7;
    if (layer != 0 || temporal != 1) return Unit::needed;
    constexpr int lastOrdinary = 9; // trailing and leading pictures; the even types are of no use to others
    if (type <= lastOrdinary) return type % 2 == 0 ? Unit::disposable : Unit::needed;
    constexpr int delimiter = 35, filler = 38, information = 39, afterwards = 40;
    return type == delimiter || type == filler || type == information || type == afterwards ? Unit::harmless
                                                                                            : Unit::needed;
}

bool DisposablePicture::is(const AVPacket& packet) const {
    if (!known() || !packet.data) return false;
    bool found = false;
    const auto allows = [&](const uint8_t* unit, int size) {
        const Unit kind = kindOf(unit, size);
        found = found || kind == Unit::disposable;
        return kind != Unit::needed;
    };
    const int size = packet.size;
    if (lengthBytes_ == 0) {
        for (int at = startCode(packet.data, 0, size); at < size;) {
            const int begin = at + 3;
            at = startCode(packet.data, begin, size);
            if (!allows(packet.data + begin, at - begin)) return false;
        }
        return found;
    }
    for (int at = 0; at < size;) {
        if (size - at < lengthBytes_) return false;
        quint32 length = 0;
        for (int i = 0; i < lengthBytes_; ++i)
            length = length << 8 | packet.data[at++];
        if (length > quint32(size - at) || !allows(packet.data + at, int(length))) return false;
        at += int(length);
    }
    return found;
}

} // namespace daylark
