#include "media/index/SecondFields.h"

namespace daylark {

SecondFields::SecondFields(const AVStream& stream) {
    if (stream.codecpar->codec_id != AV_CODEC_ID_H264) return;
    codec_.reset(avcodec_alloc_context3(nullptr));
    parser_ = av_parser_init(AV_CODEC_ID_H264);
    if (!codec_ || !parser_) return;
    avcodec_parameters_to_context(codec_.get(), stream.codecpar);
    parser_->flags |= PARSER_FLAG_COMPLETE_FRAMES; // a packet is a picture or a field already
}

SecondFields::~SecondFields() {
    if (parser_) av_parser_close(parser_);
}

bool SecondFields::isSecond(const AVPacket& packet) {
    if (!parser_) return false;
    uint8_t* data = nullptr;
    int size = 0;
    parser_->picture_structure = AV_PICTURE_STRUCTURE_UNKNOWN;
    av_parser_parse2(parser_, codec_.get(), &data, &size, packet.data, packet.size, packet.pts, packet.dts,
                     packet.pos);
    const int structure = parser_->picture_structure;
    const bool timeless = packet.pts == AV_NOPTS_VALUE && packet.dts == AV_NOPTS_VALUE;
    const bool sameTime = packet.pts != AV_NOPTS_VALUE && packet.pts == firstTime_;
    if ((timeless || sameTime) && structure != AV_PICTURE_STRUCTURE_UNKNOWN && structure == waitsFor_) {
        waitsFor_ = 0;
        return true;
    }
    waitsFor_ = structure == AV_PICTURE_STRUCTURE_TOP_FIELD      ? AV_PICTURE_STRUCTURE_BOTTOM_FIELD
                : structure == AV_PICTURE_STRUCTURE_BOTTOM_FIELD ? AV_PICTURE_STRUCTURE_TOP_FIELD
                                                                 : 0;
    firstTime_ = packet.pts;
    return false;
}

} // namespace daylark
