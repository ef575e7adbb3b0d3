#pragma once

#include "media/container/Av.h"

namespace daylark {

/// Tells which packets of a stream are only the second field of the picture before: some containers give
/// H.264 that is coded field by field in packets of one field, of which only the first has a time, or both the
/// same. Looks at every packet in file order. Internal to media/. One thread at a time; a stream of another
/// kind has none.
class SecondFields {
public:
    explicit SecondFields(const AVStream& stream);
    ~SecondFields();
    SecondFields(const SecondFields&) = delete;
    SecondFields& operator=(const SecondFields&) = delete;

    [[nodiscard]] bool isSecond(const AVPacket& packet);

private:
    av::CodecPtr codec_;
    AVCodecParserContext* parser_ = nullptr; ///< null: nothing to tell
    int waitsFor_ = 0;                       ///< the field that would complete the picture before
    int64_t firstTime_ = AV_NOPTS_VALUE;     ///< of that picture
};

} // namespace daylark
