#pragma once

#include "media/container/Av.h"

#include "base/Result.h"

#include <memory>
#include <optional>
#include <vector>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libswresample/swresample.h>
}

namespace daylark {

/// One sound stream of a file while it is decoded: takes its packets in order, and holds what they give as
/// one stretch of stereo pairs without gaps, placed in samples on the movie's own clock. Internal to media/;
/// owned by the audio reader; one thread at a time. Damage gives nothing, and the gap is silence.
class SoundTrack {
public:
    /// How loud a mono track is on either side.
    struct Place {
        double left = 1, right = 1;
    };
    /// `origin`: the first picture's time in the file, seconds. `rate`: samples a second. Without a place the
    /// layout says what is heard where.
    [[nodiscard]] static Result<std::unique_ptr<SoundTrack>> open(const AVStream& stream, double origin,
                                                                  int rate, std::optional<Place> place);
    ~SoundTrack();
    SoundTrack(const SoundTrack&) = delete;
    SoundTrack& operator=(const SoundTrack&) = delete;

    void decode(const AVPacket* packet); ///< null: the file has ended
    void drop();                         ///< forgets all; the next packets come from elsewhere in the file

    [[nodiscard]] bool isPlaced() const { return placed_; } ///< it is known where the pairs stand
    [[nodiscard]] qint64 first() const { return first_; }
    [[nodiscard]] qint64 heldUntil() const { return first_ + qint64(pairs_.size()) / 2; }
    /// Adds what it holds of that stretch.
    void addTo(float* pairs, qint64 position, qint64 count) const;
    void forgetBefore(qint64 position);

    std::optional<qint64> start; ///< where the track begins, once known

private:
    SoundTrack(av::CodecPtr codec, AVRational timeBase, double origin, int rate, std::optional<Place> place);
    void takeFrame();
    [[nodiscard]] bool matchesResampler() const;
    [[nodiscard]] bool openResampler();
    [[nodiscard]] bool openResampler(AVChannelLayout& layout, const std::vector<double>& matrix);
    void convert(const AVFrame* frame);

    struct ResamplerDeleter {
        void operator()(SwrContext* context) const { swr_free(&context); }
    };
    const av::CodecPtr codec_;
    const AVRational timeBase_;
    const double origin_;
    const int rate_;
    const std::optional<Place> place_;
    const av::FramePtr frame_;
    std::unique_ptr<SwrContext, ResamplerDeleter> resampler_;
    AVChannelLayout inputLayout_ = {};
    int inputFormat_ = AV_SAMPLE_FMT_NONE, inputRate_ = 0;

    std::vector<float> pairs_;
    qint64 first_ = 0;    ///< position of pairs_' beginning
    double expected_ = 0; ///< where the next decoded frame should lie
    bool placed_ = false;
};

} // namespace daylark
