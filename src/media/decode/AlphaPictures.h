#pragma once

#include "media/container/MediaFile.h"

#include <map>

namespace daylark {

/// The alpha that Matroska carries beside VP8, VP9 and AV1 pictures: a second stream of the same codec, a packet
/// with each packet, whose luma is the alpha. Decodes it in step with the picture's own decoder and joins the
/// two. Internal to media/; belongs to one decoder; one thread at a time. Costs nothing where there is none;
/// where a picture's is missing or of another kind, the picture is opaque.
class AlphaPictures {
public:
    explicit AlphaPictures(const MediaFile& file)
        : parameters_(*file.video()->codecpar) {}

    void flush();
    /// A packet on its way to the picture's decoder, which will give its picture this number.
    void feed(const AVPacket& packet, qint64 number);
    /// Gives the picture its alpha.
    void addTo(AVFrame& frame, qint64 number);

private:
    const AVCodecParameters& parameters_;
    av::CodecPtr codec_; ///< null: no alpha has come yet
    std::map<qint64, av::FramePtr> made_;
};

} // namespace daylark
