#include "media/AudioReader.h"

#include "media/MediaFile.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libswresample/swresample.h>
}

namespace daylark {
namespace {

constexpr int outputChannels = 2;
constexpr qint64 longestGap = 120; // seconds; beyond it the time stamps are wrong

struct ResamplerDeleter {
    void operator()(SwrContext* context) const { swr_free(&context); }
};
using ResamplerPtr = std::unique_ptr<SwrContext, ResamplerDeleter>;

class LayoutCopy {
public:
    LayoutCopy() = default;
    ~LayoutCopy() { av_channel_layout_uninit(&layout); }
    LayoutCopy(const LayoutCopy&) = delete;
    LayoutCopy& operator=(const LayoutCopy&) = delete;
    AVChannelLayout layout = {};
};

/// Decoded pairs pile up in pairs_, which always is one stretch without gaps from first_ on.
class DecodingAudioReader final : public AudioReader {
public:
    DecodingAudioReader(MediaFile file, av::CodecPtr codec, double origin, int rate)
        : file_(std::move(file))
        , codec_(std::move(codec))
        , origin_(origin)
        , rate_(rate)
        , packet_(av_packet_alloc())
        , frame_(av_frame_alloc()) {}

    Result<void> findStart();
    int rate() const override { return rate_; }
    qint64 start() const override { return start_; }
    Result<void> read(qint64 position, float* pairs, qint64 count, const CancelFlag* cancel) override;

private:
    enum class Step { more, end, cancelled };

    qint64 heldUntil() const { return first_ + qint64(pairs_.size()) / outputChannels; }
    Result<void> seekTo(qint64 position);
    bool wind(qint64 position, int attempt);
    Step decodeMore();
    Step decodeFrame();
    void takeFrame();
    bool matchesResampler() const;
    bool openResampler();
    void convert(const AVFrame* frame);
    void drop();
    void forgetBefore(qint64 position);

    MediaFile file_;
    av::CodecPtr codec_;
    const double origin_; ///< the first picture's time in the file, seconds
    const int rate_;
    av::PacketPtr packet_;
    av::FramePtr frame_;
    ResamplerPtr resampler_;
    LayoutCopy inputLayout_;
    int inputFormat_ = AV_SAMPLE_FMT_NONE, inputRate_ = 0;

    std::vector<float> pairs_;
    qint64 first_ = 0;     ///< position of pairs_' beginning
    double expected_ = 0;  ///< where the next decoded frame should lie, samples at rate_
    bool placed_ = false;  ///< first_ and expected_ are known
    bool started_ = false; ///< the file stands where reading can go on
    bool draining_ = false, ended_ = false;
    qint64 start_ = 0;
};

void DecodingAudioReader::drop() {
    avcodec_flush_buffers(codec_.get());
    resampler_.reset();
    pairs_.clear();
    started_ = placed_ = draining_ = ended_ = false;
}

/// The first frame tells where the track begins: headers don't count what a decoder leaves out.
Result<void> DecodingAudioReader::findStart() {
    while (!placed_ || pairs_.empty()) {
        const Step step = decodeMore();
        if (step == Step::cancelled) return Error{QStringLiteral("cancelled")};
        if (step == Step::end) break;
    }
    if (!placed_) return Error{QStringLiteral("no sound can be decoded")};
    start_ = first_;
    started_ = true;
    file_.setCancel(nullptr);
    return {};
}

Result<void> DecodingAudioReader::read(qint64 position, float* pairs, qint64 count,
                                       const CancelFlag* cancel) {
    std::fill_n(pairs, count * outputChannels, 0.0f);
    file_.setCancel(cancel);
    const qint64 wanted = std::max(position, start_), end = position + count;
    Result<void> result;
    // A short way ahead is decoded, a long one wound.
    if (wanted < end && (!started_ || wanted < first_ || (wanted > heldUntil() + rate_ && !ended_)))
        result = seekTo(wanted);
    while (result && wanted < end && heldUntil() < end && !ended_) {
        forgetBefore(wanted);
        if (decodeMore() == Step::cancelled) result = Error{QStringLiteral("cancelled")};
    }
    if (!result) {
        started_ = false; // interrupted within a packet, the file stands anywhere
    } else {
        const qint64 from = std::max(wanted, first_), until = std::min(end, heldUntil());
        if (from < until)
            std::copy_n(pairs_.begin() + (from - first_) * outputChannels, (until - from) * outputChannels,
                        pairs + (from - position) * outputChannels);
        forgetBefore(std::min(end, heldUntil()));
    }
    file_.setCancel(nullptr);
    return result;
}

void DecodingAudioReader::forgetBefore(qint64 position) {
    constexpr qint64 kept = 8192; // a reader that turns back a little need not seek
    const qint64 gone = std::min(position - kept, heldUntil()) - first_;
    if (gone < kept) return;
    pairs_.erase(pairs_.begin(), pairs_.begin() + gone * outputChannels);
    first_ += gone;
}

/// Leaves the reader decoding from at or before the position. Where a container's seeking ends is checked by
/// what comes out; the last attempt reads the file from its beginning.
Result<void> DecodingAudioReader::seekTo(qint64 position) {
    constexpr int attempts = 4;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        drop();
        if (!wind(position, attempt)) continue;
        Step step = Step::more;
        while (step == Step::more && !placed_)
            step = decodeMore();
        if (step == Step::cancelled) return Error{QStringLiteral("cancelled")};
        const bool early = placed_ && first_ <= std::max(position, start_);
        if (early || attempt == attempts - 1) {
            started_ = true;
            return {};
        }
        if (file_.cancelled()) break;
    }
    return Error{QStringLiteral("cancelled")};
}

bool DecodingAudioReader::wind(qint64 position, int attempt) {
    if (attempt == 3) {
        Result<MediaFile> fresh = file_.reopened();
        if (!fresh) return false;
        file_ = std::move(*fresh);
        file_.deliver(file_.sound());
        return true;
    }
    // Decoders need a few frames to come to their full voice.
    constexpr double stepsBack[] = {0.15, 1.5, 8.0};
    const AVStream* stream = file_.sound();
    const double seconds = origin_ + double(position) / rate_ - stepsBack[attempt];
    const auto stamp = int64_t(seconds / av_q2d(stream->time_base));
    return av_seek_frame(file_.format(), stream->index, stamp, AVSEEK_FLAG_BACKWARD) >= 0;
}

DecodingAudioReader::Step DecodingAudioReader::decodeMore() {
    const Step step = decodeFrame();
    if (step == Step::more) takeFrame();
    if (step == Step::end && !ended_) {
        if (resampler_) convert(nullptr);
        ended_ = true;
    }
    return step;
}

/// Brings the next decoded frame into frame_.
DecodingAudioReader::Step DecodingAudioReader::decodeFrame() {
    for (;;) {
        const int code = avcodec_receive_frame(codec_.get(), frame_.get());
        if (code >= 0) return Step::more;
        if (code == AVERROR_EOF || draining_) return Step::end;
        const int read = file_.readPacket(packet_.get());
        if (read == AVERROR_EXIT) return Step::cancelled;
        draining_ = read < 0;
        avcodec_send_packet(codec_.get(), draining_ ? nullptr : packet_.get()); // damage: the next one
        av_packet_unref(packet_.get());
    }
}

void DecodingAudioReader::takeFrame() {
    if (frame_->nb_samples <= 0 || frame_->sample_rate <= 0) return;
    double position = expected_;
    if (frame_->best_effort_timestamp != AV_NOPTS_VALUE)
        position =
            (double(frame_->best_effort_timestamp) * av_q2d(file_.sound()->time_base) - origin_) * rate_;
    // Containers round their time stamps; only what cannot be rounding is a gap.
    const double tolerance = 0.02 * rate_;
    const bool apart = !placed_ || std::abs(position - expected_) > tolerance;
    if (!matchesResampler() || apart) {
        if (resampler_) convert(nullptr);
        if (!openResampler()) return;
    }
    if (apart) {
        const qint64 at = qint64(std::llround(position));
        if (!placed_) {
            first_ = at;
        } else if (at > heldUntil() && at - heldUntil() < rate_ * longestGap) {
            pairs_.resize(size_t(at - first_) * outputChannels, 0.0f);
        } else if (at < heldUntil() && at > first_) {
            pairs_.resize(size_t(at - first_) * outputChannels);
        } // else: time stamps that make no sense are taken as going on
        expected_ = double(heldUntil());
        placed_ = true;
    }
    convert(frame_.get());
    expected_ += double(frame_->nb_samples) * rate_ / frame_->sample_rate;
}

bool DecodingAudioReader::matchesResampler() const {
    return resampler_ && inputFormat_ == frame_->format && inputRate_ == frame_->sample_rate &&
           av_channel_layout_compare(&inputLayout_.layout, &frame_->ch_layout) == 0;
}

bool DecodingAudioReader::openResampler() {
    inputFormat_ = frame_->format;
    inputRate_ = frame_->sample_rate;
    av_channel_layout_uninit(&inputLayout_.layout);
    av_channel_layout_copy(&inputLayout_.layout, &frame_->ch_layout);
    LayoutCopy known; // files often leave out which speaker a channel is for
    if (frame_->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
        av_channel_layout_default(&known.layout, frame_->ch_layout.nb_channels);
    else
        av_channel_layout_copy(&known.layout, &frame_->ch_layout);
    AVChannelLayout stereo = AV_CHANNEL_LAYOUT_STEREO;
    SwrContext* made = nullptr;
    const int code = swr_alloc_set_opts2(&made, &stereo, AV_SAMPLE_FMT_FLT, rate_, &known.layout,
                                         AVSampleFormat(inputFormat_), inputRate_, 0, nullptr);
    resampler_.reset(made);
    if (code < 0 || swr_init(made) < 0) resampler_.reset();
    return resampler_ != nullptr;
}

/// Appends a frame (none: what the resampler still holds) to pairs_.
void DecodingAudioReader::convert(const AVFrame* frame) {
    const int in = frame ? frame->nb_samples : 0;
    const int room = swr_get_out_samples(resampler_.get(), in);
    if (room <= 0) return;
    const size_t held = pairs_.size();
    pairs_.resize(held + size_t(room) * outputChannels);
    auto* out = reinterpret_cast<uint8_t*>(pairs_.data() + held);
    const uint8_t** data = frame ? const_cast<const uint8_t**>(frame->extended_data) : nullptr;
    const int made = swr_convert(resampler_.get(), &out, room, data, in);
    pairs_.resize(held + size_t(std::max(0, made)) * outputChannels);
}

Result<av::CodecPtr> openSoundDecoder(const AVStream& stream) {
    const AVCodec* decoder = avcodec_find_decoder(stream.codecpar->codec_id);
    if (!decoder) return Error{QStringLiteral("no decoder for this sound")};
    av::CodecPtr codec(avcodec_alloc_context3(decoder));
    avcodec_parameters_to_context(codec.get(), stream.codecpar);
    codec->pkt_timebase = stream.time_base;
    codec->thread_count = 1;
    if (const int code = avcodec_open2(codec.get(), decoder, nullptr); code < 0)
        return av::errorOf("opening the sound decoder", code);
    return codec;
}

} // namespace

Result<std::unique_ptr<AudioReader>> AudioReader::open(const QString& path, const SampleIndex& pictures,
                                                       int rate, const CancelFlag* cancel) {
    Result<MediaFile> file = MediaFile::open(path, cancel);
    if (!file) return file.error();
    if (!file->sound()) return Error{QStringLiteral("no sound")};
    file->deliver(file->sound());
    Result<av::CodecPtr> codec = openSoundDecoder(*file->sound());
    if (!codec) return codec.error();
    double origin = 0;
    if (!pictures.samples.empty())
        origin = double(pictures.samples.front().pts) * pictures.timeBaseNum / pictures.timeBaseDen;
    auto reader =
        std::make_unique<DecodingAudioReader>(std::move(*file), std::move(*codec), origin, std::max(1, rate));
    if (const auto found = reader->findStart(); !found) return found.error();
    std::unique_ptr<AudioReader> result = std::move(reader);
    return result;
}

} // namespace daylark
