#include "media/encode/MovieCopy.h"

#include <QFile>

#include <cmath>

namespace daylark {

MovieCopy::MovieCopy(const QString& path, const AVOutputFormat& container)
    : url_("file:" + QFile::encodeName(path)) {
    avformat_alloc_output_context2(&output_, &container, nullptr, url_.constData());
}

MovieCopy::~MovieCopy() {
    if (output_ && output_->pb) avio_closep(&output_->pb);
    avformat_free_context(output_);
    av_dict_free(&options_);
}

Result<void> MovieCopy::copy(MediaFile* movie, bool withOwnSound, SoundEncoder* sound, double soundStart,
                             const ExportWatch& watch) {
    if (!output_) return Error{QStringLiteral("no such kind of movie can be written")};
    sound_ = sound;
    soundStart_ = soundStart;
    if (movie)
        if (const Result<void> added = addStreams(*movie->format(), withOwnSound); !added) return added;
    if (sound)
        if (const Result<void> added = addEncoded(*sound); !added) return added;
    if (const Result<void> begun = begin(); !begun) return begun;
    if (movie)
        if (const Result<void> copied = copyPackets(*movie, watch); !copied) return copied;
    if (const Result<void> encoded = encodeUntil(INFINITY, watch); !encoded) return encoded;
    return end();
}

/// Pictures and what goes with them. A track of timecode has no codec: the container makes it anew of what is said about it.
Result<void> MovieCopy::addStreams(const AVFormatContext& movie, bool withOwnSound) {
    streamOf_.assign(movie.nb_streams, -1);
    av_dict_copy(&output_->metadata, movie.metadata, 0);
    for (unsigned i = 0; i < movie.nb_streams; ++i) {
        AVStream* from = movie.streams[i];
        const AVCodecParameters& coded = *from->codecpar;
        const bool isSound = coded.codec_type == AVMEDIA_TYPE_AUDIO;
        if (isSound && !withOwnSound) continue;
        const bool isShown = coded.codec_type == AVMEDIA_TYPE_VIDEO || isSound;
        if (!isShown && (coded.codec_id == AV_CODEC_ID_NONE ||
                         avformat_query_codec(output_->oformat, coded.codec_id, FF_COMPLIANCE_NORMAL) != 1))
            continue;
        AVStream* to = avformat_new_stream(output_, nullptr);
        if (const int code = avcodec_parameters_copy(to->codecpar, &coded); code < 0) return av::errorOf("copying", code);
        // Four letters mean the same only in the same family of files.
        const AVCodecTag* const* tags = output_->oformat->codec_tag;
        if (!tags || av_codec_get_id(tags, coded.codec_tag) != coded.codec_id) to->codecpar->codec_tag = 0;
        to->time_base = from->time_base;
        to->disposition = from->disposition;
        to->sample_aspect_ratio = from->sample_aspect_ratio;
        to->avg_frame_rate = from->avg_frame_rate;
        to->r_frame_rate = from->r_frame_rate;
        av_dict_copy(&to->metadata, from->metadata, 0);
        for (int data = 0; data < from->nb_side_data; ++data) {
            const AVPacketSideData& side = from->side_data[data];
            uint8_t* copy = av_stream_new_side_data(to, side.type, side.size);
            if (copy) std::copy_n(side.data, side.size, copy);
        }
        from->discard = AVDISCARD_DEFAULT;
        streamOf_[i] = to->index;
    }
    return {};
}

Result<void> MovieCopy::addEncoded(const SoundEncoder& sound) {
    AVStream* stream = avformat_new_stream(output_, nullptr);
    if (const int code = avcodec_parameters_from_context(stream->codecpar, &sound.codec()); code < 0)
        return av::errorOf("preparing the sound", code);
    stream->time_base = sound.codec().time_base;
    stream->disposition = AV_DISPOSITION_DEFAULT;
    soundStream_ = stream->index;
    soundShift_ = std::llround(soundStart_ / av_q2d(sound.codec().time_base));
    return {};
}

Result<void> MovieCopy::begin() {
    if (const int code = avio_open(&output_->pb, url_.constData(), AVIO_FLAG_WRITE); code < 0)
        return av::errorOf("writing", code);
    if (const int code = avformat_write_header(output_, &options_); code < 0) return av::errorOf("this kind of movie", code);
    return {};
}

Result<void> MovieCopy::encodeUntil(double seconds, const ExportWatch& watch) {
    while (sound_ && !sound_->hasEnded() && sound_->seconds() + soundStart_ < seconds) {
        const auto write = [this](AVPacket* packet) -> Result<void> {
            packet->stream_index = soundStream_;
            packet->pts += soundShift_;
            packet->dts += soundShift_;
            av_packet_rescale_ts(packet, sound_->codec().time_base, output_->streams[soundStream_]->time_base);
            const int code = av_interleaved_write_frame(output_, packet);
            return code < 0 ? Result<void>(av::errorOf("writing", code)) : Result<void>();
        };
        const Result<void> encoded = sound_->encodeSome(write, watch.cancelled);
        if (!encoded) return encoded;
        if (streamOf_.empty()) watch.tell(qint64(sound_->seconds() * 1000), qint64(sound_->length() * 1000));
        if (watch.isCancelled()) return Error{QStringLiteral("cancelled")};
    }
    return {};
}

Result<void> MovieCopy::copyPackets(MediaFile& movie, const ExportWatch& watch) {
    const av::PacketPtr packet(av_packet_alloc());
    movie.setCancel(watch.cancelled);
    for (;;) {
        int code = av_read_frame(movie.format(), packet.get());
        if (code == AVERROR(EAGAIN)) continue;
        if (movie.cancelled()) return Error{QStringLiteral("cancelled")};
        if (code == AVERROR_EOF) return {};
        if (code < 0) return av::errorOf("reading", code);
        const int to = streamOf_[size_t(packet->stream_index)];
        const AVStream* from = movie.format()->streams[packet->stream_index];
        if (packet->pos >= 0) watch.tell(std::min<qint64>(packet->pos, movie.size()), movie.size());
        if (to >= 0) {
            const qint64 stamp = packet->dts != AV_NOPTS_VALUE ? packet->dts : packet->pts;
            if (stamp != AV_NOPTS_VALUE) {
                const Result<void> encoded = encodeUntil(double(stamp) * av_q2d(from->time_base), watch);
                if (!encoded) return encoded;
            }
            av_packet_rescale_ts(packet.get(), from->time_base, output_->streams[to]->time_base);
            packet->stream_index = to;
            packet->pos = -1;
            code = av_interleaved_write_frame(output_, packet.get());
            if (code < 0) return av::errorOf("writing", code);
        }
        av_packet_unref(packet.get());
    }
}

Result<void> MovieCopy::end() {
    if (const int code = av_write_trailer(output_); code < 0) return av::errorOf("writing", code);
    const int failed = output_->pb->error;
    const int code = avio_closep(&output_->pb);
    if (failed < 0 || code < 0) return av::errorOf("writing", failed < 0 ? failed : code);
    return {};
}

} // namespace daylark
