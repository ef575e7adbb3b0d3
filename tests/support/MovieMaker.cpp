#include "support/MovieMaker.h"

#include "support/BarCode.h"
#include "support/FieldPictures.h"

#include <QDir>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>
#include <set>

#include <sched.h>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

namespace daylark {
namespace {

template<auto Free>
struct FreeByAddress {
    template<class T>
    void operator()(T* pointer) const {
        Free(&pointer);
    }
};
using CodecPtr = std::unique_ptr<AVCodecContext, FreeByAddress<avcodec_free_context>>;
using FramePtr = std::unique_ptr<AVFrame, FreeByAddress<av_frame_free>>;
using PacketPtr = std::unique_ptr<AVPacket, FreeByAddress<av_packet_free>>;
struct FreeScaler {
    void operator()(SwsContext* context) const { sws_freeContext(context); }
};
using ScalerPtr = std::unique_ptr<SwsContext, FreeScaler>;
struct FreeOutput {
    void operator()(AVFormatContext* context) const {
        if (context->pb && !(context->oformat->flags & AVFMT_NOFILE)) avio_closep(&context->pb);
        avformat_free_context(context);
    }
};
using OutputPtr = std::unique_ptr<AVFormatContext, FreeOutput>;

Error errorOf(const char* what, int code) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(code, text, sizeof text);
    return {QStringLiteral("%1: %2").arg(QString::fromLatin1(what), QString::fromLocal8Bit(text))};
}

/// One encoded stream of the movie being written.
struct Track {
    CodecPtr codec;
    AVStream* stream = nullptr;
    std::function<void(EncodedSample&)> onSample;
    std::map<int64_t, int> numbers; ///< frame number by time stamp
    mutable std::set<int64_t> awaited; ///< time stamps of pictures that have not come back yet
    mutable int place = 0;

    /// Lets `onSample` see and change it; false: left out.
    bool pass(AVPacket* packet) const {
        if (!onSample) return true;
        const auto known = numbers.find(packet->pts);
        EncodedSample sample{place++, known == numbers.end() ? 0 : known->second,
                             (packet->flags & AV_PKT_FLAG_KEY) != 0,
                             QByteArray(reinterpret_cast<const char*>(packet->data), packet->size), true};
        onSample(sample);
        const PacketPtr changed(av_packet_alloc());
        if (av_new_packet(changed.get(), int(sample.data.size())) < 0) return false;
        std::copy(sample.data.cbegin(), sample.data.cend(), reinterpret_cast<char*>(changed->data));
        av_packet_copy_props(changed.get(), packet);
        av_packet_unref(packet);
        av_packet_move_ref(packet, changed.get());
        return sample.keep;
    }
    Result<void> drain(AVFormatContext* output) const {
        const PacketPtr packet(av_packet_alloc());
        while (avcodec_receive_packet(codec.get(), packet.get()) >= 0) {
            awaited.erase(packet->pts);
            if (!pass(packet.get())) continue;
            av_packet_rescale_ts(packet.get(), codec->time_base, stream->time_base);
            packet->stream_index = stream->index;
            if (const int code = av_interleaved_write_frame(output, packet.get()); code < 0)
                return errorOf("writing", code);
        }
        return {};
    }
    Result<void> encode(AVFormatContext* output, const AVFrame* frame) const {
        if (const int code = avcodec_send_frame(codec.get(), frame); code < 0)
            return errorOf("encoding", code);
        return drain(output);
    }
};

/// The file's matrix takes coded to shown coordinates, y downwards: (x, y) to (ax + cy + tx, bx + dy + ty).
void setRotation(AVStream* stream, const MovieSpec& spec) {
    constexpr int32_t one = 1 << 16;
    auto* matrix = reinterpret_cast<int32_t*>(
        av_stream_new_side_data(stream, AV_PKT_DATA_DISPLAYMATRIX, 9 * sizeof(int32_t)));
    if (!matrix) return;
    const int32_t cosine = spec.rotation == 180 ? -one : spec.rotation == 0 ? one : 0;
    const int32_t sine = spec.rotation == 90 ? one : spec.rotation == 270 ? -one : 0;
    const int32_t width = spec.size.width() * one, height = spec.size.height() * one;
    const int32_t right = spec.rotation == 90 ? height : spec.rotation == 180 ? width : 0;
    const int32_t down = spec.rotation == 270 ? width : spec.rotation == 180 ? height : 0;
    const int32_t shownWidth = spec.rotation % 180 ? height : width, mirror = spec.mirrored ? -1 : 1;
    const int32_t values[] = {mirror * cosine, sine, 0, mirror * -sine, cosine, 0,
                              spec.mirrored ? shownWidth - right : right, down, 1 << 30};
    std::copy(std::begin(values), std::end(values), matrix);
}

bool isFieldPictures(const MovieSpec& spec) {
    return spec.encoder == QLatin1String("field pictures");
}

void setPicture(const MovieSpec& spec, AVCodecContext* codec) {
    codec->width = spec.size.width();
    codec->height = spec.size.height();
    codec->pix_fmt = av_get_pix_fmt(spec.pixelFormat.toLatin1().constData());
    codec->time_base = {spec.rateDen, spec.rateNum};
    if (!spec.ticks.empty()) codec->time_base = {1, spec.rateNum};
    codec->framerate = {spec.rateNum, spec.rateDen};
    codec->gop_size = spec.groupSize;
    codec->max_b_frames = spec.bFrames;
    codec->sample_aspect_ratio = {spec.pixelAspectNum, spec.pixelAspectDen};
    codec->colorspace = spec.size.height() >= 720 ? AVCOL_SPC_BT709 : AVCOL_SPC_SMPTE170M;
    codec->color_range =
        spec.pixelFormat.startsWith(QLatin1String("yuvj")) ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
}

/// The stream's description without an encoder of the library.
void describeFieldPictures(const MovieSpec& spec, AVCodecContext* codec) {
    const QByteArray sets = FieldPictureEncoder(spec.size, 0).parameterSets();
    codec->codec_type = AVMEDIA_TYPE_VIDEO;
    codec->codec_id = AV_CODEC_ID_H264;
    codec->profile = FF_PROFILE_H264_MAIN;
    codec->field_order = AV_FIELD_TT;
    codec->has_b_frames = 1;
    codec->extradata = static_cast<uint8_t*>(av_mallocz(size_t(sets.size()) + AV_INPUT_BUFFER_PADDING_SIZE));
    codec->extradata_size = int(sets.size());
    std::copy(sets.cbegin(), sets.cend(), reinterpret_cast<char*>(codec->extradata));
}

/// Where the user is root one encoder puts its threads before everything else on the machine, other tests included.
void calmThreads() {
    const sched_param usual{};
    for (const QString& thread : QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        ::sched_setscheduler(thread.toInt(), SCHED_OTHER, &usual);
}

Result<void> openEncoder(const MovieSpec& spec, const AVCodec* encoder, const AVFormatContext* output,
                         AVCodecContext* codec) {
    codec->bit_rate = std::max<int64_t>(2'000'000, int64_t(spec.size.width()) * spec.size.height() * 8);
    codec->thread_count = 2;
    if (output->oformat->flags & AVFMT_GLOBALHEADER) codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (spec.interlaced) {
        codec->flags |= AV_CODEC_FLAG_INTERLACED_DCT | AV_CODEC_FLAG_INTERLACED_ME;
        codec->field_order = AV_FIELD_TT;
    }
    AVDictionary* options = nullptr;
    if (spec.encoder == QLatin1String("libx264")) {
        av_dict_set(&options, "preset", "veryfast", 0);
        av_dict_set_int(&options, "bf", spec.bFrames, 0);
    }
    for (const auto& [key, value] : spec.encoderOptions)
        av_dict_set(&options, key.toUtf8().constData(), value.toUtf8().constData(), 0);
    const int code = avcodec_open2(codec, encoder, &options);
    av_dict_free(&options);
    if (code < 0) return errorOf("opening the encoder", code);
    if (spec.encoder == QLatin1String("libsvtav1")) calmThreads();
    return {};
}

Result<Track> openVideo(const MovieSpec& spec, AVFormatContext* output) {
    const bool own = isFieldPictures(spec);
    const AVCodec* encoder =
        own ? nullptr : avcodec_find_encoder_by_name(spec.encoder.toLatin1().constData());
    if (!encoder && !own) return Error{QStringLiteral("no encoder ") + spec.encoder};
    Track track;
    track.codec.reset(avcodec_alloc_context3(encoder));
    AVCodecContext* codec = track.codec.get();
    setPicture(spec, codec);
    if (own)
        describeFieldPictures(spec, codec);
    else if (const auto opened = openEncoder(spec, encoder, output, codec); !opened)
        return opened.error();
    track.stream = avformat_new_stream(output, nullptr);
    track.stream->time_base = codec->time_base;
    track.stream->avg_frame_rate = codec->framerate;
    track.stream->sample_aspect_ratio = codec->sample_aspect_ratio;
    avcodec_parameters_from_context(track.stream->codecpar, codec);
    if (codec->codec_id == AV_CODEC_ID_PRORES && codec->profile == FF_PROFILE_UNKNOWN)
        track.stream->codecpar->profile = FF_PROFILE_PRORES_STANDARD; // some containers want to know it
    if (spec.rotation != 0 || spec.mirrored) setRotation(track.stream, spec);
    track.onSample = spec.onSample;
    if (!spec.timecode.isEmpty())
        av_dict_set(&track.stream->metadata, "timecode", spec.timecode.toLatin1().constData(), 0);
    return track;
}

Result<Track> openSound(AVFormatContext* output) {
    const AVCodecID id = output->oformat->audio_codec == AV_CODEC_ID_NONE ? AV_CODEC_ID_PCM_S16LE
                                                                          : output->oformat->audio_codec;
    const AVCodec* encoder = avcodec_find_encoder(id);
    if (!encoder) return Error{QStringLiteral("no sound encoder")};
    Track track;
    track.codec.reset(avcodec_alloc_context3(encoder));
    AVCodecContext* codec = track.codec.get();
    codec->sample_fmt = encoder->sample_fmts ? encoder->sample_fmts[0] : AV_SAMPLE_FMT_S16;
    codec->sample_rate = 48000;
    av_channel_layout_default(&codec->ch_layout, 2);
    codec->bit_rate = 128000;
    codec->time_base = {1, codec->sample_rate};
    if (output->oformat->flags & AVFMT_GLOBALHEADER) codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (const int code = avcodec_open2(codec, encoder, nullptr); code < 0)
        return errorOf("opening the sound encoder", code);
    track.stream = avformat_new_stream(output, nullptr);
    track.stream->time_base = codec->time_base;
    avcodec_parameters_from_context(track.stream->codecpar, codec);
    return track;
}

/// A quiet hum, and a beep in the first tenth of every second.
float toneAt(int64_t sample) {
    const double seconds = double(sample) / 48000;
    const bool beep = seconds - std::floor(seconds) < 0.1;
    return float((beep ? 0.5 : 0.02) * std::sin(seconds * 2 * M_PI * (beep ? 1000 : 220)));
}

Result<void> encodeSoundFrame(const Track& track, AVFormatContext* output, int64_t first, int count) {
    const FramePtr frame(av_frame_alloc());
    frame->nb_samples = count;
    frame->format = track.codec->sample_fmt;
    av_channel_layout_copy(&frame->ch_layout, &track.codec->ch_layout);
    frame->sample_rate = track.codec->sample_rate;
    frame->pts = first;
    if (const int code = av_frame_get_buffer(frame.get(), 0); code < 0) return errorOf("sound buffer", code);
    for (int i = 0; i < count; ++i) {
        const float value = toneAt(first + i);
        for (int channel = 0; channel < 2; ++channel) {
            switch (frame->format) {
            case AV_SAMPLE_FMT_FLTP:
                reinterpret_cast<float*>(frame->extended_data[channel])[i] = value;
                break;
            case AV_SAMPLE_FMT_FLT:
                reinterpret_cast<float*>(frame->data[0])[2 * i + channel] = value;
                break;
            case AV_SAMPLE_FMT_S16P:
                reinterpret_cast<int16_t*>(frame->extended_data[channel])[i] = int16_t(value * 32767);
                break;
            default:
                reinterpret_cast<int16_t*>(frame->data[0])[2 * i + channel] = int16_t(value * 32767);
                break;
            }
        }
    }
    return track.encode(output, frame.get());
}

/// The painted picture in the encoder's pixel format, with the matrix that the stream is labelled with.
Result<FramePtr> convert(const QImage& picture, const AVCodecContext* codec, ScalerPtr& scaler) {
    FramePtr frame(av_frame_alloc());
    frame->format = codec->pix_fmt;
    frame->width = codec->width;
    frame->height = codec->height;
    frame->colorspace = codec->colorspace;
    frame->color_range = codec->color_range;
    frame->sample_aspect_ratio = codec->sample_aspect_ratio;
    if (const int code = av_frame_get_buffer(frame.get(), 0); code < 0)
        return errorOf("picture buffer", code);
    if (!scaler) {
        scaler.reset(sws_getContext(
            picture.width(), picture.height(), AV_PIX_FMT_BGRA, codec->width, codec->height, codec->pix_fmt,
            SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INP, nullptr, nullptr, nullptr));
        const int* matrix =
            sws_getCoefficients(codec->colorspace == AVCOL_SPC_BT709 ? SWS_CS_ITU709 : SWS_CS_ITU601);
        const int full = codec->color_range == AVCOL_RANGE_JPEG;
        sws_setColorspaceDetails(scaler.get(), matrix, 1, matrix, full, 0, 1 << 16, 1 << 16);
    }
    const uint8_t* source[] = {picture.constBits()};
    const int stride[] = {int(picture.bytesPerLine())};
    sws_scale(scaler.get(), source, stride, 0, picture.height(), frame->data, frame->linesize);
    return frame;
}

Result<void> writeFieldPictures(const MovieSpec& spec, AVFormatContext* output, Track& video) {
    const int codedRows = (spec.size.height() / 8 + 31) / 32; // those of the bar code
    FieldPictureEncoder encoder(spec.size, codedRows);
    ScalerPtr scaler;
    qint64 decodingTime = -1;
    for (const auto& place : FieldPictureEncoder::fileOrder(spec.frames, spec.groupSize, spec.bFrames)) {
        const Result<FramePtr> frame = convert(paintFrame(spec, place.frame + 1), video.codec.get(), scaler);
        if (!frame) return frame.error();
        const AVFrame& picture = **frame;
        const QByteArray data =
            encoder.encode(place, {{picture.data[0], picture.data[1], picture.data[2]},
                                   {picture.linesize[0], picture.linesize[1], picture.linesize[2]}});
        const PacketPtr packet(av_packet_alloc());
        if (const int code = av_new_packet(packet.get(), int(data.size())); code < 0)
            return errorOf("a sample", code);
        std::copy(data.cbegin(), data.cend(), reinterpret_cast<char*>(packet->data));
        packet->pts = place.frame;
        packet->dts = decodingTime++;
        packet->duration = 1;
        if (place.key) packet->flags |= AV_PKT_FLAG_KEY;
        video.numbers[packet->pts] = place.frame + 1;
        if (!video.pass(packet.get())) continue;
        av_packet_rescale_ts(packet.get(), video.codec->time_base, video.stream->time_base);
        packet->stream_index = video.stream->index;
        if (const int code = av_interleaved_write_frame(output, packet.get()); code < 0)
            return errorOf("writing", code);
    }
    return {};
}

Result<void> writeAll(const MovieSpec& spec, AVFormatContext* output, Track& video, const Track* sound) {
    if (isFieldPictures(spec)) return writeFieldPictures(spec, output, video);
    ScalerPtr scaler;
    int64_t soundSample = 0;
    const int soundChunk = sound && sound->codec->frame_size > 0 ? sound->codec->frame_size : 1024;
    const int count = spec.ticks.empty() ? spec.frames : int(spec.ticks.size());
    for (int i = 0; i < count; ++i) {
        Result<FramePtr> frame = convert(paintFrame(spec, i + 1), video.codec.get(), scaler);
        if (!frame) return frame.error();
        (*frame)->pts = spec.ticks.empty() ? i : spec.ticks[size_t(i)];
        (*frame)->interlaced_frame = (*frame)->top_field_first = spec.interlaced;
        video.numbers[(*frame)->pts] = i + 1;
        video.awaited.insert((*frame)->pts);
        if (const Result<void> done = video.encode(output, frame->get()); !done) return done;
        const int64_t until = av_rescale_q((*frame)->pts + 1, video.codec->time_base, {1, 48000});
        for (; sound && soundSample + soundChunk <= until; soundSample += soundChunk)
            if (const Result<void> done = encodeSoundFrame(*sound, output, soundSample, soundChunk); !done)
                return done;
    }
    if (const Result<void> done = video.encode(output, nullptr); !done) return done;
    // Some encoders do so where the pictures' times are very uneven: then the file is not what was asked for.
    if (!video.awaited.empty()) return Error{QStringLiteral("the encoder left pictures out")};
    return sound ? sound->encode(output, nullptr) : Result<void>();
}

} // namespace

QImage paintFrame(const MovieSpec& spec, int number) {
    const AVPixFmtDescriptor* format =
        av_pix_fmt_desc_get(av_get_pix_fmt(spec.pixelFormat.toLatin1().constData()));
    const bool alpha = format && (format->flags & AV_PIX_FMT_FLAG_ALPHA);
    const QSize size = spec.rotation % 180 ? spec.size.transposed() : spec.size;
    QImage picture(size, alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    picture.fill(alpha ? Qt::transparent : Qt::black);
    {
        QPainter painter(&picture);
        if (spec.paint) {
            spec.paint(painter, number);
        } else {
            QLinearGradient gradient(0, 0, size.width(), size.height());
            gradient.setColorAt(0, QColor(40, 60, 90));
            gradient.setColorAt(1, QColor(180, 150, 110, alpha ? 90 : 255));
            painter.fillRect(picture.rect(), gradient);
            const int x = (number * 7) % std::max(1, size.width() - 20);
            painter.fillRect(QRect(x, size.height() / 2, 20, 20), QColor(220, 80, 60));
        }
        if (spec.barCode) drawBarCode(painter, size, number);
    }
    if (spec.mirrored) picture = picture.mirrored(true, false);
    return spec.rotation ? picture.transformed(QTransform().rotate(-spec.rotation)) : picture;
}

Result<void> makeMovie(const MovieSpec& spec) {
    av_log_set_level(AV_LOG_ERROR);
    AVFormatContext* allocated = nullptr;
    const QByteArray path = spec.path.toUtf8();
    if (const int code = avformat_alloc_output_context2(&allocated, nullptr, nullptr, path.constData());
        code < 0)
        return errorOf("the container", code);
    const OutputPtr output(allocated);
    Result<Track> video = openVideo(spec, output.get());
    if (!video) return video.error();
    std::optional<Track> sound;
    if (spec.sound) {
        Result<Track> track = openSound(output.get());
        if (!track) return track.error();
        sound = std::move(*track);
    }
    if (!(output->oformat->flags & AVFMT_NOFILE))
        if (const int code = avio_open(&output->pb, path.constData(), AVIO_FLAG_WRITE); code < 0)
            return errorOf("opening the file", code);
    AVDictionary* options = nullptr;
    for (const auto& [key, value] : spec.muxerOptions)
        av_dict_set(&options, key.toUtf8().constData(), value.toUtf8().constData(), 0);
    const int header = avformat_write_header(output.get(), &options);
    av_dict_free(&options);
    if (header < 0) return errorOf("the header", header);
    if (const Result<void> done = writeAll(spec, output.get(), *video, sound ? &*sound : nullptr); !done)
        return done;
    if (const int code = av_write_trailer(output.get()); code < 0) return errorOf("the trailer", code);
    return {};
}

} // namespace daylark
