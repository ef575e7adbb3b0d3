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
    return open(stream, origin, Form{rate, 2, place, false});
}

Result<std::unique_ptr<SoundTrack>> SoundTrack::openAsRecorded(const AVStream& stream, double origin, int rate) {
    return open(stream, origin, Form{rate, std::max(1, stream.codecpar->ch_layout.nb_channels), std::nullopt, true});
}

Result<std::unique_ptr<SoundTrack>> SoundTrack::open(const AVStream& stream, double origin, const Form& form) {
    const AVCodec* decoder = avcodec_find_decoder(stream.codecpar->codec_id);
    if (!decoder) return Error{QStringLiteral("no decoder for this sound")};
    av::CodecPtr codec(avcodec_alloc_context3(decoder));
    avcodec_parameters_to_context(codec.get(), stream.codecpar);
    codec->pkt_timebase = stream.time_base;
    codec->thread_count = 1;
    if (const int code = avcodec_open2(codec.get(), decoder, nullptr); code < 0)
        return av::errorOf("opening the sound decoder", code);
    return std::unique_ptr<SoundTrack>(new SoundTrack(std::move(codec), stream.time_base, origin, form));
}

SoundTrack::SoundTrack(av::CodecPtr codec, AVRational timeBase, double origin, const Form& form)
    : codec_(std::move(codec))
    , timeBase_(timeBase)
    , origin_(origin)
    , rate_(form.rate)
    , channels_(form.channels)
    , place_(form.place)
    , asRecorded_(form.asRecorded)
    , frame_(av_frame_alloc()) {}

bool SoundTrack::isFloat() const {
    const AVSampleFormat format = av_get_packed_sample_fmt(codec_->sample_fmt);
    return format == AV_SAMPLE_FMT_FLT || format == AV_SAMPLE_FMT_DBL;
}

int SoundTrack::bits() const {
    const int held = av_get_bytes_per_sample(codec_->sample_fmt) * 8, told = codec_->bits_per_raw_sample;
    return !isFloat() && told > 0 && told < held ? told : held;
}

SoundTrack::~SoundTrack() {
    av_channel_layout_uninit(&inputLayout_);
}

void SoundTrack::drop() {
    avcodec_flush_buffers(codec_.get());
    resampler_.reset();
    plain_ = false;
    samples_.clear();
    placed_ = false;
}

void SoundTrack::decode(const AVPacket* packet) {
    avcodec_send_packet(codec_.get(), packet); // damage: the next one
    while (avcodec_receive_frame(codec_.get(), frame_.get()) >= 0)
        takeFrame();
    if (!packet && resampler_) convert(nullptr);
}

void SoundTrack::forgetBefore(qint64 position) {
    constexpr qint64 kept = 8192; // a reader that turns back a little need not seek
    const qint64 gone = std::min(position - kept, heldUntil()) - first_;
    if (!placed_ || gone < kept) return;
    samples_.erase(samples_.begin(), samples_.begin() + gone * channels_);
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
            samples_.resize(size_t(at - first_) * size_t(channels_), 0.0);
        } else if (at < heldUntil() && at > first_) {
            samples_.resize(size_t(at - first_) * size_t(channels_));
        } // else: time stamps that make no sense are taken as going on
        expected_ = double(heldUntil());
        placed_ = true;
    }
    convert(frame_.get());
    expected_ += double(frame_->nb_samples) * rate_ / frame_->sample_rate;
}

bool SoundTrack::matchesResampler() const {
    return (resampler_ || plain_) && inputFormat_ == frame_->format && inputRate_ == frame_->sample_rate &&
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
    if (asRecorded_) return openForChannelsAsTheyAre();
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

/// The same number of channels at the same rate needs no resampler; another layout than the stream began with is mixed into
/// that, where the library can.
bool SoundTrack::openForChannelsAsTheyAre() {
    resampler_.reset();
    plain_ = inputLayout_.nb_channels == channels_ && inputRate_ == rate_;
    if (plain_) return true;
    AVChannelLayout from = {}, to = {};
    av_channel_layout_default(&to, channels_);
    const bool named = inputLayout_.order != AV_CHANNEL_ORDER_UNSPEC && inputLayout_.nb_channels != channels_;
    if (named)
        av_channel_layout_copy(&from, &inputLayout_);
    else
        av_channel_layout_default(&from, inputLayout_.nb_channels);
    const bool opened = openResampler(from, to, {});
    av_channel_layout_uninit(&from);
    av_channel_layout_uninit(&to);
    return opened;
}

bool SoundTrack::openResampler(AVChannelLayout& layout, const std::vector<double>& matrix) {
    AVChannelLayout stereo = {};
    av_channel_layout_default(&stereo, 2);
    return openResampler(layout, stereo, matrix);
}

bool SoundTrack::openResampler(AVChannelLayout& from, AVChannelLayout& to, const std::vector<double>& matrix) {
    SwrContext* made = nullptr;
    const int code = swr_alloc_set_opts2(&made, &to, AV_SAMPLE_FMT_DBL, rate_, &from, AVSampleFormat(inputFormat_), inputRate_,
                                         0, nullptr);
    resampler_.reset(made);
    const bool ok = code >= 0 &&
                    (matrix.empty() || swr_set_matrix(made, matrix.data(), from.nb_channels) >= 0) &&
                    swr_init(made) >= 0;
    if (!ok) resampler_.reset();
    return ok;
}

namespace {

template<class Sample>
void appendSamples(std::vector<double>& samples, const AVFrame& frame, int channels, double zero, double one) {
    const bool planar = av_sample_fmt_is_planar(AVSampleFormat(frame.format));
    for (int i = 0; i < frame.nb_samples; ++i)
        for (int channel = 0; channel < channels; ++channel) {
            const auto* plane = reinterpret_cast<const Sample*>(frame.extended_data[planar ? channel : 0]);
            samples.push_back((double(plane[planar ? i : i * channels + channel]) - zero) / one);
        }
}

} // namespace

void SoundTrack::appendAsItIs(const AVFrame& frame) {
    constexpr double byte = 128, word = 32768, integer = 2147483648.0;
    switch (av_get_packed_sample_fmt(AVSampleFormat(frame.format))) {
    case AV_SAMPLE_FMT_U8:
        return appendSamples<quint8>(samples_, frame, channels_, byte, byte);
    case AV_SAMPLE_FMT_S16:
        return appendSamples<qint16>(samples_, frame, channels_, 0, word);
    case AV_SAMPLE_FMT_S32:
        return appendSamples<qint32>(samples_, frame, channels_, 0, integer);
    case AV_SAMPLE_FMT_S64:
        return appendSamples<qint64>(samples_, frame, channels_, 0, integer * 2 * integer);
    case AV_SAMPLE_FMT_FLT:
        return appendSamples<float>(samples_, frame, channels_, 0, 1);
    case AV_SAMPLE_FMT_DBL:
        return appendSamples<double>(samples_, frame, channels_, 0, 1);
    default:
        return;
    }
}

/// Appends a frame (none: what the resampler still holds) to samples_.
void SoundTrack::convert(const AVFrame* frame) {
    if (plain_ && frame) return appendAsItIs(*frame);
    if (!resampler_) return;
    const int in = frame ? frame->nb_samples : 0;
    const int room = swr_get_out_samples(resampler_.get(), in);
    if (room <= 0) return;
    const size_t held = samples_.size(), channels = size_t(channels_);
    samples_.resize(held + size_t(room) * channels);
    auto* out = reinterpret_cast<uint8_t*>(samples_.data() + held);
    const uint8_t** data = frame ? const_cast<const uint8_t**>(frame->extended_data) : nullptr;
    const int made = swr_convert(resampler_.get(), &out, room, data, in);
    samples_.resize(held + size_t(std::max(0, made)) * channels);
}

} // namespace daylark
