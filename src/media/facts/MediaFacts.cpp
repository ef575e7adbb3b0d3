#include "media/facts/MediaFacts.h"

#include "media/container/MediaFile.h"
#include "media/facts/TimecodeTrack.h"

extern "C" {
#include <libavutil/channel_layout.h>
}

#include <QStringList>

namespace daylark {
namespace {

QString codecNameOf(const AVCodecParameters& coded) {
    const AVCodecDescriptor* description = avcodec_descriptor_get(coded.codec_id);
    QString name = QString::fromUtf8(avcodec_get_name(coded.codec_id));
    // "H.264 / AVC / MPEG-4 AVC / MPEG-4 part 10": its first name will do.
    if (description && description->long_name)
        name = QString::fromUtf8(description->long_name).section(QStringLiteral(" / "), 0, 0).section(QStringLiteral(" ("), 0, 0);
    const char* profile = avcodec_profile_name(coded.codec_id, coded.profile);
    return profile ? name + QStringLiteral(", ") + QString::fromUtf8(profile) : name;
}

void addNamed(QStringList& words, const char* name, bool known) {
    if (known && name && !words.contains(QLatin1String(name))) words << QString::fromUtf8(name);
}

QString colourOf(const AVCodecParameters& coded) {
    QStringList words;
    addNamed(words, av_color_primaries_name(coded.color_primaries), coded.color_primaries != AVCOL_PRI_UNSPECIFIED);
    addNamed(words, av_color_transfer_name(coded.color_trc), coded.color_trc != AVCOL_TRC_UNSPECIFIED);
    addNamed(words, av_color_space_name(coded.color_space), coded.color_space != AVCOL_SPC_UNSPECIFIED);
    addNamed(words, av_color_range_name(coded.color_range), coded.color_range != AVCOL_RANGE_UNSPECIFIED);
    return words.join(QStringLiteral(" · "));
}

QString layoutOf(const AVChannelLayout& layout) {
    char text[128] = "";
    const bool isNamed = layout.order == AV_CHANNEL_ORDER_NATIVE && av_channel_layout_describe(&layout, text, sizeof text) > 0;
    return isNamed ? QString::fromUtf8(text) : QString();
}

} // namespace

Result<MediaFacts> readMediaFacts(const QString& path, const CancelFlag* cancel) {
    Result<MediaFile> file = MediaFile::open(path, cancel, MediaFile::Opening::forFacts);
    if (!file) return file.error();
    MediaFacts facts;
    if (const AVStream* video = file->video()) {
        facts.codec = codecNameOf(*video->codecpar);
        if (const char* format = av_get_pix_fmt_name(AVPixelFormat(video->codecpar->format)))
            facts.pixelFormat = QString::fromUtf8(format);
        facts.colour = colourOf(*video->codecpar);
    }
    const AVFormatContext* format = file->format();
    for (unsigned at = 0; at < format->nb_streams; ++at) {
        const AVStream& stream = *format->streams[at];
        if (stream.codecpar->codec_type != AVMEDIA_TYPE_AUDIO) continue;
        const AVDictionaryEntry* language = av_dict_get(stream.metadata, "language", nullptr, 0);
        const QString told = language ? QString::fromUtf8(language->value) : QString();
        facts.sounds.push_back({codecNameOf(*stream.codecpar), layoutOf(stream.codecpar->ch_layout),
                                stream.codecpar->ch_layout.nb_channels, stream.codecpar->sample_rate,
                                told == QLatin1String("und") ? QString() : told});
    }
    const std::vector<SmpteTime> times = AVTimecodeReader(path, cancel).readTimecodeSamples();
    if (!times.empty()) facts.startTimecode = times.front();
    return facts;
}

} // namespace daylark
