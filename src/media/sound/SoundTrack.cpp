#include "media/sound/SoundTrack.h"

#include <algorithm>
#include <cmath>

namespace daylark {

namespace {

constexpr double longestGap = 120; // seconds; beyond it the time stamps are wrong
constexpr int mostSpeakers = 8;    // more channels without a layout are discrete ones

} // namespace

Result<std::unique_ptr<SoundTrack>> SoundTrack::open(const AVStream& stream, double origin, int rate,
                                                     std::optional<Place> place) {
    const AVCodec* decoder = avcodec_find_decoder(stream.codecpar->codec_id);
    if (!decoder) return Error{QStringLiteral("no decoder for this sound")};
    av::CodecPtr codec(avcodec_alloc_context3(decoder));
    avcodec_parameters_to_context(codec.get(), stream.codecpar);
    codec->pkt_timebase = stream.time_base;
    codec->thread_count = 1;
    if (const int code = avcodec_open2(codec.get(), decoder, nullptr); code < 0)
        return av::errorOf("opening the sound decoder", code);
    return std::unique_ptr<SoundTrack>(
        new SoundTrack(std::move(codec), stream.time_base, origin, rate, place));
}

SoundTrack::SoundTrack(av::CodecPtr codec, AVRational timeBase, double origin, int rate,
                       std::optional<Place> place)
    : codec_(std::move(codec))
    , timeBase_(timeBase)
    , origin_(origin)
    , rate_(rate)
    , place_(place)
    , frame_(av_frame_alloc()) {}

SoundTrack::~SoundTrack() {
    av_channel_layout_uninit(&inputLayout_);
}

void SoundTrack::drop() {
    avcodec_flush_buffers(codec_.get());
    resampler_.reset();
    pairs_.clear();
    placed_ = false;
}

void SoundTrack::decode(const AVPacket* packet) {
    avcodec_send_packet(codec_.get(), packet); // damage: the next one
    while (avcodec_receive_frame(codec_.get(), frame_.get()) >= 0)
        takeFrame();
    if (!packet && resampler_) convert(nullptr);
}

void SoundTrack::addTo(float* pairs, qint64 position, qint64 count) const {
    if (!placed_) return;
    const qint64 from = std::max(position, first_), until = std::min(position + count, heldUntil());
    for (qint64 i = from * 2; i < until * 2; ++i)
        pairs[i - position * 2] += pairs_[size_t(i - first_ * 2)];
}

void SoundTrack::forgetBefore(qint64 position) {
    constexpr qint64 kept = 8192; // a reader that turns back a little need not seek
    const qint64 gone = std::min(position - kept, heldUntil()) - first_;
    if (!placed_ || gone < kept) return;
    pairs_.erase(pairs_.begin(), pairs_.begin() + gone * 2);
    first_ += gone;
}

void SoundTrack::takeFrame() {
    if (frame_->nb_samples <= 0 || frame_->sample_rate <= 0) return;
    double position = expected_;
    if (frame_->best_effort_timestamp != AV_NOPTS_VALUE)
        position = (double(frame_->best_effort_timestamp) * av_q2d(timeBase_) - origin_) * rate_;
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
        } else if (at > heldUntil() && double(at - heldUntil()) < rate_ * longestGap) {
            pairs_.resize(size_t(at - first_) * 2, 0.0f);
        } else if (at < heldUntil() && at > first_) {
            pairs_.resize(size_t(at - first_) * 2);
        } // else: time stamps that make no sense are taken as going on
        expected_ = double(heldUntil());
        placed_ = true;
    }
    convert(frame_.get());
    expected_ += double(frame_->nb_samples) * rate_ / frame_->sample_rate;
}

bool SoundTrack::matchesResampler() const {
    return resampler_ && inputFormat_ == frame_->format && inputRate_ == frame_->sample_rate &&
           av_channel_layout_compare(&inputLayout_, &frame_->ch_layout) == 0;
}

/// Layouts of up to eight speakers are mixed down as the library does (centre and surrounds 3 dB lower,
/// without the low-frequency channel); what it cannot mix gives its first two channels.
bool SoundTrack::openResampler() {
    inputFormat_ = frame_->format;
    inputRate_ = frame_->sample_rate;
    av_channel_layout_uninit(&inputLayout_);
    av_channel_layout_copy(&inputLayout_, &frame_->ch_layout);
    const int channels = inputLayout_.nb_channels;
    if (channels == 1) {
        const Place place = place_.value_or(Place());
        AVChannelLayout mono = {};
        av_channel_layout_default(&mono, 1);
        return openResampler(mono, {place.left, place.right});
    }
    const bool unknown = inputLayout_.order == AV_CHANNEL_ORDER_UNSPEC; // files often leave it out
    if (!unknown && openResampler(inputLayout_, {})) return true;
    AVChannelLayout usual = {};
    av_channel_layout_default(&usual, channels);
    const bool isUsual = channels <= mostSpeakers && openResampler(usual, {});
    av_channel_layout_uninit(&usual);
    if (isUsual) return true;
    std::vector<double> firstTwo(size_t(channels) * 2, 0.0);
    firstTwo[0] = firstTwo[size_t(channels) + 1] = 1;
    AVChannelLayout discrete = {};
    discrete.order = AV_CHANNEL_ORDER_UNSPEC;
    discrete.nb_channels = channels;
    return openResampler(discrete, firstTwo);
}

bool SoundTrack::openResampler(AVChannelLayout& layout, const std::vector<double>& matrix) {
    AVChannelLayout stereo = {};
    av_channel_layout_default(&stereo, 2);
    SwrContext* made = nullptr;
    const int code = swr_alloc_set_opts2(&made, &stereo, AV_SAMPLE_FMT_FLT, rate_, &layout,
                                         AVSampleFormat(inputFormat_), inputRate_, 0, nullptr);
    resampler_.reset(made);
    const bool ok = code >= 0 &&
                    (matrix.empty() || swr_set_matrix(made, matrix.data(), int(matrix.size() / 2)) >= 0) &&
                    swr_init(made) >= 0;
    if (!ok) resampler_.reset();
    return ok;
}

/// Appends a frame (none: what the resampler still holds) to pairs_.
void SoundTrack::convert(const AVFrame* frame) {
    const int in = frame ? frame->nb_samples : 0;
    const int room = swr_get_out_samples(resampler_.get(), in);
    if (room <= 0) return;
    const size_t held = pairs_.size();
    pairs_.resize(held + size_t(room) * 2);
    auto* out = reinterpret_cast<uint8_t*>(pairs_.data() + held);
    const uint8_t** data = frame ? const_cast<const uint8_t**>(frame->extended_data) : nullptr;
    const int made = swr_convert(resampler_.get(), &out, room, data, in);
    pairs_.resize(held + size_t(std::max(0, made)) * 2);
}

} // namespace daylark
