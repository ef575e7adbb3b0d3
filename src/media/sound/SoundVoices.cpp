#include "media/sound/SoundVoices.h"

#include <algorithm>

namespace daylark {
namespace {

QByteArray languageOf(const AVStream* stream) {
    const AVDictionaryEntry* entry = av_dict_get(stream->metadata, "language", nullptr, 0);
    return entry ? QByteArray(entry->value) : QByteArray();
}

/// What a mono track says it is for; a track that says nothing reads as a centre.
quint64 speakerOf(const AVStream* stream) {
    const AVChannelLayout& layout = stream->codecpar->ch_layout;
    return layout.order == AV_CHANNEL_ORDER_NATIVE ? layout.u.mask : AV_CH_FRONT_CENTER;
}

/// The mono tracks that go with the first one: not those of another language.
std::vector<const AVStream*> monoTracks(const AVFormatContext* format, const AVStream* first) {
    std::vector<const AVStream*> found;
    for (unsigned i = unsigned(first->index); i < format->nb_streams; ++i) {
        const AVStream* stream = format->streams[i];
        const AVCodecParameters* parameters = stream->codecpar;
        if (parameters->codec_type == AVMEDIA_TYPE_AUDIO && parameters->ch_layout.nb_channels == 1 &&
            avcodec_find_decoder(parameters->codec_id) && languageOf(stream) == languageOf(first))
            found.push_back(stream);
    }
    return found;
}

} // namespace

std::optional<SoundTrack::Place> placeOf(quint64 speaker) {
    constexpr double lower = 0.7071;
    switch (speaker) {
    case AV_CH_FRONT_LEFT:
        return SoundTrack::Place{1, 0};
    case AV_CH_FRONT_RIGHT:
        return SoundTrack::Place{0, 1};
    case AV_CH_FRONT_CENTER:
        return SoundTrack::Place{lower, lower};
    case AV_CH_SIDE_LEFT:
    case AV_CH_BACK_LEFT:
        return SoundTrack::Place{lower, 0};
    case AV_CH_SIDE_RIGHT:
    case AV_CH_BACK_RIGHT:
        return SoundTrack::Place{0, lower};
    case AV_CH_BACK_CENTER:
        return SoundTrack::Place{0.5, 0.5};
    default:
        return std::nullopt;
    }
}

// Productions deliver one mono track a channel: those that say which speaker they are for are put together accordingly; of
// others the first two are left and right, as the mixdown stands there by custom, and what follows is left out.
std::vector<SoundVoice> heardVoices(const AVFormatContext* format) {
    const AVStream* first = nullptr;
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        const AVStream* stream = format->streams[i];
        if (stream->codecpar->codec_type != AVMEDIA_TYPE_AUDIO ||
            !avcodec_find_decoder(stream->codecpar->codec_id))
            continue;
        const bool preferred = stream->disposition & AV_DISPOSITION_DEFAULT;
        if (!first || (preferred && !(first->disposition & AV_DISPOSITION_DEFAULT))) first = stream;
    }
    if (!first) return {};
    const std::vector<const AVStream*> monos = monoTracks(format, first);
    if (first->codecpar->ch_layout.nb_channels != 1 || monos.size() < 2) return {{first}};
    const auto centres = std::count_if(monos.begin(), monos.end(), [](const AVStream* stream) {
        return speakerOf(stream) == AV_CH_FRONT_CENTER;
    });
    if (centres > 1) return {{monos[0], AV_CH_FRONT_LEFT}, {monos[1], AV_CH_FRONT_RIGHT}};
    std::vector<SoundVoice> voices;
    for (const AVStream* stream : monos)
        voices.push_back({stream, speakerOf(stream)});
    return voices;
}

std::vector<SoundVoice> firstVoice(const AVFormatContext* format) {
    for (unsigned i = 0; i < format->nb_streams; ++i)
        if (format->streams[i]->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) return {{format->streams[i]}};
    return {};
}

// QuickTime's time stamps count from the movie's beginning, whatever comes first there; broadcast streams count from anywhere,
// and some sound files from before what a decoder leaves out.
double beginningOf(const AVFormatContext* format) {
    const bool counts = qstrncmp(format->iformat->name, "mov", 3) != 0;
    return counts && format->start_time != AV_NOPTS_VALUE ? double(format->start_time) / AV_TIME_BASE : 0;
}

} // namespace daylark
