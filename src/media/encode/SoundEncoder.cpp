#include "media/encode/SoundEncoder.h"

#include <algorithm>
#include <vector>

namespace daylark {
namespace {

constexpr qint64 framesAtOnce = 8192; // frames

AVCodecID plainCodec(SoundDepth depth) {
    switch (depth) {
    case SoundDepth::bits16:
        return AV_CODEC_ID_PCM_S16LE;
    case SoundDepth::bits24:
        return AV_CODEC_ID_PCM_S24LE;
    case SoundDepth::bits32:
        return AV_CODEC_ID_PCM_S32LE;
    case SoundDepth::float32:
        return AV_CODEC_ID_PCM_F32LE;
    case SoundDepth::float64:
        break;
    }
    return AV_CODEC_ID_PCM_F64LE;
}

bool isMxf(const AVOutputFormat& container) {
    return QByteArray(container.name).startsWith("mxf");
}

/// The first of these that the container knows is taken.
std::vector<AVCodecID> candidates(const SoundForm& form, const AVOutputFormat& container) {
    if (isMxf(container)) // knows these two, and doesn't say so
        return {form.depth == SoundDepth::bits16 ? AV_CODEC_ID_PCM_S16LE : AV_CODEC_ID_PCM_S24LE};
    std::vector<AVCodecID> known;
    for (const AVCodecID id : {plainCodec(form.depth), AV_CODEC_ID_ALAC, AV_CODEC_ID_FLAC, AV_CODEC_ID_OPUS,
                               AV_CODEC_ID_AAC, container.audio_codec})
        if (avformat_query_codec(&container, id, FF_COMPLIANCE_NORMAL) == 1 && avcodec_find_encoder(id)) known.push_back(id);
    return known;
}

/// The deepest one that loses nothing is at the list's end where encoders have several.
AVSampleFormat formatFor(const AVCodec* encoder, SoundDepth depth) {
    if (!encoder->sample_fmts) return AV_SAMPLE_FMT_S16;
    AVSampleFormat best = encoder->sample_fmts[0];
    for (const AVSampleFormat* format = encoder->sample_fmts; *format != AV_SAMPLE_FMT_NONE; ++format) {
        const AVSampleFormat packed = av_get_packed_sample_fmt(*format);
        const bool fits = depth == SoundDepth::bits16 ? packed == AV_SAMPLE_FMT_S16
                                                      : packed == AV_SAMPLE_FMT_S32 || packed == AV_SAMPLE_FMT_FLT ||
                                                            packed == AV_SAMPLE_FMT_DBL;
        if (fits) best = *format;
    }
    return best;
}

int rateFor(const AVCodec* encoder, int rate) {
    if (!encoder->supported_samplerates) return rate;
    int best = encoder->supported_samplerates[0];
    for (const int* known = encoder->supported_samplerates; *known; ++known)
        if (std::abs(*known - rate) < std::abs(best - rate)) best = *known;
    return best;
}

/// The encoder's own layout of as many channels; else stereo.
void layoutFor(const AVCodec* encoder, int channels, AVChannelLayout* layout) {
    if (!encoder->ch_layouts) return av_channel_layout_default(layout, channels);
    for (const AVChannelLayout* known = encoder->ch_layouts; known->nb_channels; ++known)
        if (known->nb_channels == channels) {
            av_channel_layout_copy(layout, known);
            return;
        }
    av_channel_layout_default(layout, std::min(channels, 2));
}

} // namespace

Result<std::unique_ptr<SoundEncoder>> SoundEncoder::open(RecordedSound& sound, qint64 length, const AVOutputFormat& container) {
    Error failure{QStringLiteral("this kind of movie has no room for this sound")};
    for (const AVCodecID id : candidates(sound.form(), container)) {
        std::unique_ptr<SoundEncoder> encoder(new SoundEncoder(sound, length));
        const Result<void> opened = encoder->openCodec(id, container);
        if (opened) return encoder;
        failure = opened.error();
    }
    return failure;
}

SoundEncoder::SoundEncoder(RecordedSound& sound, qint64 length)
    : sound_(sound)
    , length_(length) {}

SoundEncoder::~SoundEncoder() {
    swr_free(&resampler_);
    av_audio_fifo_free(waiting_);
}

Result<void> SoundEncoder::openCodec(AVCodecID id, const AVOutputFormat& container) {
    const SoundForm& form = sound_.form();
    const AVCodec* encoder = avcodec_find_encoder(id);
    codec_.reset(avcodec_alloc_context3(encoder));
    codec_->sample_fmt = formatFor(encoder, form.depth);
    fillsUp_ = isMxf(container);
    codec_->sample_rate = isMxf(container) ? 48000 : rateFor(encoder, form.rate);
    layoutFor(encoder, form.channels, &codec_->ch_layout);
    const int channels = codec_->ch_layout.nb_channels;
    if (id == plainCodec(form.depth) && form.speakers && channels == form.channels) { // plain samples know every speaker
        av_channel_layout_uninit(&codec_->ch_layout);
        av_channel_layout_from_mask(&codec_->ch_layout, form.speakers);
    }
    codec_->time_base = {1, codec_->sample_rate};
    if (av_get_packed_sample_fmt(codec_->sample_fmt) == AV_SAMPLE_FMT_S32 && form.depth != SoundDepth::bits32)
        codec_->bits_per_raw_sample = 24;
    codec_->bit_rate = qint64(160000) * channels; // where it counts
    if (container.flags & AVFMT_GLOBALHEADER) codec_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (const int code = avcodec_open2(codec_.get(), encoder, nullptr); code < 0)
        return av::errorOf("opening the sound encoder", code);

    // As many channels pass as they are; whatever else the encoder's layout is, is mixed from the usual one.
    AVChannelLayout from = {}, to = {};
    av_channel_layout_default(&from, form.channels);
    if (channels == form.channels)
        av_channel_layout_copy(&to, &from);
    else
        av_channel_layout_copy(&to, &codec_->ch_layout);
    int code = swr_alloc_set_opts2(&resampler_, &to, codec_->sample_fmt, codec_->sample_rate, &from, AV_SAMPLE_FMT_DBL,
                                   form.rate, 0, nullptr);
    if (code >= 0) code = swr_init(resampler_);
    av_channel_layout_uninit(&from);
    av_channel_layout_uninit(&to);
    if (code < 0) return av::errorOf("preparing the sound", code);
    waiting_ = av_audio_fifo_alloc(codec_->sample_fmt, channels, int(framesAtOnce));
    return {};
}

Result<void> SoundEncoder::encodeSome(const std::function<Result<void>(AVPacket*)>& packet, const CancelFlag* cancel) {
    if (ended_) return {};
    const qint64 count = std::min(framesAtOnce, length_ - read_);
    std::vector<double> frames(size_t(std::max<qint64>(count, 1)) * size_t(sound_.form().channels));
    const Result<void> read = sound_.read(read_, frames.data(), count, cancel);
    if (!read) return read;
    read_ += count;
    qint64 wanted = count;
    if (!fillsUp_ && sound_.endsBefore(read_)) // how much of this piece the sound still fills
        while (wanted > 0 && sound_.endsBefore(read_ - count + wanted - 1))
            --wanted;
    ended_ = wanted < count || read_ >= length_;

    const auto* in = reinterpret_cast<const uint8_t*>(frames.data());
    const int room = swr_get_out_samples(resampler_, int(wanted));
    uint8_t* planes[AV_NUM_DATA_POINTERS * 8] = {};
    const int channels = codec_->ch_layout.nb_channels;
    if (channels > int(std::size(planes))) return Error{QStringLiteral("too many channels of sound")};
    if (av_samples_alloc(planes, nullptr, channels, std::max(room, 1), codec_->sample_fmt, 0) < 0)
        return Error{QStringLiteral("not enough memory")};
    int made = swr_convert(resampler_, planes, room, &in, int(wanted));
    if (made > 0) av_audio_fifo_write(waiting_, reinterpret_cast<void**>(planes), made);
    while (ended_ && made >= 0) {
        made = swr_convert(resampler_, planes, room, nullptr, 0);
        if (made <= 0) break;
        av_audio_fifo_write(waiting_, reinterpret_cast<void**>(planes), made);
    }
    av_freep(&planes[0]);
    return drain(ended_, packet);
}

Result<void> SoundEncoder::drain(bool all, const std::function<Result<void>(AVPacket*)>& packet) {
    const int size = codec_->frame_size > 0 ? codec_->frame_size : 4096;
    const av::PacketPtr made(av_packet_alloc());
    const auto handOn = [&]() -> Result<void> {
        while (avcodec_receive_packet(codec_.get(), made.get()) >= 0) {
            const Result<void> taken = packet(made.get());
            av_packet_unref(made.get());
            if (!taken) return taken;
        }
        return {};
    };
    while (av_audio_fifo_size(waiting_) >= size || (all && av_audio_fifo_size(waiting_) > 0)) {
        const av::FramePtr frame(av_frame_alloc());
        frame->nb_samples = std::min(size, av_audio_fifo_size(waiting_));
        frame->format = codec_->sample_fmt;
        frame->sample_rate = codec_->sample_rate;
        av_channel_layout_copy(&frame->ch_layout, &codec_->ch_layout);
        if (const int code = av_frame_get_buffer(frame.get(), 0); code < 0) return av::errorOf("encoding sound", code);
        av_audio_fifo_read(waiting_, reinterpret_cast<void**>(frame->extended_data), frame->nb_samples);
        frame->pts = sent_;
        sent_ += frame->nb_samples;
        if (const int code = avcodec_send_frame(codec_.get(), frame.get()); code < 0)
            return av::errorOf("encoding sound", code);
        if (const Result<void> handed = handOn(); !handed) return handed;
    }
    if (!all) return {};
    avcodec_send_frame(codec_.get(), nullptr);
    return handOn();
}

} // namespace daylark
