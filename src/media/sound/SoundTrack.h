#pragma once

#include "media/container/Av.h"

#include "base/Result.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libswresample/swresample.h>
}

namespace daylark {

/// One sound stream of a file while it is decoded: takes its packets in order, and holds what they give as
/// one stretch of samples without gaps, placed on the movie's own clock: mixed to stereo at a rate asked for, or as they were
/// recorded. Internal to media/; owned by a `SoundSource`; one thread at a time. Damage gives nothing, and the gap is silence.
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
    /// Every channel as it is, at the stream's own rate; `rate` for streams that go with one of another rate.
    [[nodiscard]] static Result<std::unique_ptr<SoundTrack>> openAsRecorded(const AVStream& stream, double origin, int rate);
    ~SoundTrack();
    SoundTrack(const SoundTrack&) = delete;
    SoundTrack& operator=(const SoundTrack&) = delete;

    void decode(const AVPacket* packet); ///< null: the file has ended
    void drop();                         ///< forgets all; the next packets come from elsewhere in the file

    [[nodiscard]] bool isPlaced() const { return placed_; } ///< it is known where the samples stand
    [[nodiscard]] qint64 first() const { return first_; }
    [[nodiscard]] qint64 heldUntil() const { return first_ + qint64(samples_.size()) / channels_; }
    [[nodiscard]] int channels() const { return channels_; }
    /// The decoder's own samples: whether they are fractions, and how many bits matter.
    [[nodiscard]] bool isFloat() const;
    [[nodiscard]] int bits() const;
    /// Adds what it holds of that stretch to frames of `stride` channels, from the first one on.
    template<class Sample>
    void addTo(Sample* frames, int stride, qint64 position, qint64 count) const {
        if (!placed_) return;
        const qint64 from = std::max(position, first_), until = std::min(position + count, heldUntil());
        for (qint64 i = from; i < until; ++i)
            for (int channel = 0; channel < channels_; ++channel)
                frames[(i - position) * stride + channel] += Sample(samples_[size_t((i - first_) * channels_ + channel)]);
    }
    void forgetBefore(qint64 position);

    std::optional<qint64> start; ///< where the track begins, once known

private:
    struct Form {
        int rate = 0, channels = 2;
        std::optional<Place> place;
        bool asRecorded = false;
    };
    [[nodiscard]] static Result<std::unique_ptr<SoundTrack>> open(const AVStream& stream, double origin, const Form& form);
    SoundTrack(av::CodecPtr codec, AVRational timeBase, double origin, const Form& form);
    void takeFrame();
    [[nodiscard]] bool matchesResampler() const;
    [[nodiscard]] bool openResampler();
    [[nodiscard]] bool openForChannelsAsTheyAre();
    [[nodiscard]] bool openResampler(AVChannelLayout& layout, const std::vector<double>& matrix);
    [[nodiscard]] bool openResampler(AVChannelLayout& from, AVChannelLayout& to, const std::vector<double>& matrix);
    void convert(const AVFrame* frame);
    void appendAsItIs(const AVFrame& frame);

    struct ResamplerDeleter {
        void operator()(SwrContext* context) const { swr_free(&context); }
    };
    const av::CodecPtr codec_;
    const AVRational timeBase_;
    const double origin_;
    const int rate_, channels_;
    const std::optional<Place> place_;
    const bool asRecorded_;
    const av::FramePtr frame_;
    std::unique_ptr<SwrContext, ResamplerDeleter> resampler_;
    bool plain_ = false; ///< frames need no resampler
    AVChannelLayout inputLayout_ = {};
    int inputFormat_ = AV_SAMPLE_FMT_NONE, inputRate_ = 0;

    std::vector<double> samples_; ///< exact for whatever decoders give
    qint64 first_ = 0;    ///< position of samples_' beginning
    double expected_ = 0; ///< where the next decoded frame should lie
    bool placed_ = false;
};

} // namespace daylark
