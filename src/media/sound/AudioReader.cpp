#include "media/sound/AudioReader.h"

#include "media/container/MediaFile.h"
#include "media/sound/SoundTrack.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace daylark {
namespace {

constexpr double longestLag = 2; // seconds that a track's packets may come later in the file than another's

struct Voice {
    const AVStream* stream = nullptr;
    std::optional<SoundTrack::Place> place;
};

QByteArray languageOf(const AVStream* stream) {
    const AVDictionaryEntry* entry = av_dict_get(stream->metadata, "language", nullptr, 0);
    return entry ? QByteArray(entry->value) : QByteArray();
}

/// What a mono track says it is for; a track that says nothing reads as a centre.
quint64 speakerOf(const AVStream* stream) {
    const AVChannelLayout& layout = stream->codecpar->ch_layout;
    return layout.order == AV_CHANNEL_ORDER_NATIVE ? layout.u.mask : AV_CH_FRONT_CENTER;
}

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

/// Which tracks are heard, and where. Productions deliver one mono track a channel: those that say which
/// speaker they are for are put together accordingly; of others the first two are left and right, as the
/// mixdown stands there by custom, and what follows is left out.
std::vector<Voice> chooseVoices(const AVFormatContext* format) {
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
    if (first->codecpar->ch_layout.nb_channels != 1 || monos.size() < 2) return {{first, std::nullopt}};
    const auto centres = std::count_if(monos.begin(), monos.end(), [](const AVStream* stream) {
        return speakerOf(stream) == AV_CH_FRONT_CENTER;
    });
    if (centres > 1) return {{monos[0], SoundTrack::Place{1, 0}}, {monos[1], SoundTrack::Place{0, 1}}};
    std::vector<Voice> voices;
    for (const AVStream* stream : monos)
        if (const auto place = placeOf(speakerOf(stream))) voices.push_back({stream, place});
    return voices;
}

std::vector<Voice> firstVoice(const AVFormatContext* format) {
    for (unsigned i = 0; i < format->nb_streams; ++i)
        if (format->streams[i]->codecpar->codec_type == AVMEDIA_TYPE_AUDIO)
            return {{format->streams[i], std::nullopt}};
    return {};
}

/// Where a file begins, in seconds of its own time stamps. QuickTime's count from the movie's beginning,
/// whatever comes first there; broadcast streams count from anywhere, and some sound files from before what a
/// decoder leaves out.
double beginningOf(const AVFormatContext* format) {
    const bool counts = qstrncmp(format->iformat->name, "mov", 3) != 0;
    return counts && format->start_time != AV_NOPTS_VALUE ? double(format->start_time) / AV_TIME_BASE : 0;
}

class DecodingAudioReader final : public AudioReader {
public:
    using Tracks = std::vector<std::pair<int, std::unique_ptr<SoundTrack>>>; // with the stream's number
    DecodingAudioReader(MediaFile file, Tracks tracks, double origin, int rate)
        : file_(std::move(file))
        , tracks_(std::move(tracks))
        , origin_(origin)
        , rate_(rate)
        , packet_(av_packet_alloc()) {
        deliver();
    }

    Result<void> findStart();
    int rate() const override { return rate_; }
    qint64 start() const override { return start_; }
    Result<void> read(qint64 position, float* pairs, qint64 count, const CancelFlag* cancel) override;

private:
    enum class Step { more, end, cancelled };

    void deliver();
    void drop();
    qint64 heldFrom() const;
    qint64 heldUntil() const;
    Result<void> seekTo(qint64 position);
    bool wind(qint64 position, int attempt);
    bool standsBefore(qint64 position) const;
    Step decodeMore();

    MediaFile file_;
    const Tracks tracks_;
    const double origin_; ///< the first picture's time in the file, seconds
    const int rate_;
    av::PacketPtr packet_;
    bool started_ = false; ///< the file stands where reading can go on
    bool ended_ = false;
    qint64 start_ = 0;
};

/// Only the packets of the tracks that are heard.
void DecodingAudioReader::deliver() {
    for (unsigned i = 0; i < file_.format()->nb_streams; ++i) {
        const bool heard = std::any_of(tracks_.begin(), tracks_.end(),
                                       [&](const auto& track) { return track.first == int(i); });
        file_.format()->streams[i]->discard = heard ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
}

void DecodingAudioReader::drop() {
    for (const auto& [stream, track] : tracks_)
        track->drop();
    started_ = ended_ = false;
}

/// Everything is held from here on; before it something has been forgotten.
qint64 DecodingAudioReader::heldFrom() const {
    qint64 from = std::numeric_limits<qint64>::min();
    for (const auto& [stream, track] : tracks_)
        if (track->isPlaced() && (!track->start || track->first() > *track->start))
            from = std::max(from, track->first());
    return from;
}

/// Up to here nothing more will come: a track that lags far behind another one is silent there.
qint64 DecodingAudioReader::heldUntil() const {
    constexpr qint64 nothing = std::numeric_limits<qint64>::min() / 2;
    qint64 least = std::numeric_limits<qint64>::max(), most = nothing;
    for (const auto& [stream, track] : tracks_) {
        const qint64 until = track->isPlaced() ? track->heldUntil() : nothing;
        least = std::min(least, until);
        most = std::max(most, until);
    }
    return std::max(least, most - qint64(longestLag * rate_));
}

/// The first frame tells where a track begins: headers don't count what a decoder leaves out.
Result<void> DecodingAudioReader::findStart() {
    const auto isKnown = [](const auto& track) {
        return track.second->isPlaced() && track.second->heldUntil() > track.second->first();
    };
    const auto isLong = [this](const auto& track) {
        return track.second->heldUntil() - track.second->first() > qint64(longestLag * rate_);
    };
    while (!std::all_of(tracks_.begin(), tracks_.end(), isKnown) &&
           std::none_of(tracks_.begin(), tracks_.end(), isLong)) {
        const Step step = decodeMore();
        if (step == Step::cancelled) return Error{QStringLiteral("cancelled")};
        if (step == Step::end) break;
    }
    start_ = std::numeric_limits<qint64>::max();
    for (const auto& [stream, track] : tracks_) {
        if (!track->isPlaced()) continue;
        track->start = track->first();
        start_ = std::min(start_, track->first());
    }
    if (start_ == std::numeric_limits<qint64>::max()) return Error{QStringLiteral("no sound can be decoded")};
    started_ = true;
    file_.setCancel(nullptr);
    return {};
}

Result<void> DecodingAudioReader::read(qint64 position, float* pairs, qint64 count,
                                       const CancelFlag* cancel) {
    std::fill_n(pairs, count * 2, 0.0f);
    file_.setCancel(cancel);
    const qint64 wanted = std::max(position, start_), end = position + count;
    Result<void> result;
    // A short way ahead is decoded, a long one wound.
    if (wanted < end && (!started_ || wanted < heldFrom() || (wanted > heldUntil() + rate_ && !ended_)))
        result = seekTo(wanted);
    while (result && wanted < end && heldUntil() < end && !ended_) {
        for (const auto& [stream, track] : tracks_)
            track->forgetBefore(wanted);
        if (decodeMore() == Step::cancelled) result = Error{QStringLiteral("cancelled")};
    }
    if (!result) started_ = false; // interrupted within a packet, the file stands anywhere
    for (const auto& [stream, track] : tracks_) {
        if (!result) break;
        track->addTo(pairs, position, count);
        track->forgetBefore(std::min(end, track->heldUntil()));
    }
    file_.setCancel(nullptr);
    return result;
}

/// Leaves the reader decoding from at or before the position. Where a container's seeking ends is checked by
/// what comes out; the last attempt reads the file from its beginning.
Result<void> DecodingAudioReader::seekTo(qint64 position) {
    constexpr int attempts = 4;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        drop();
        if (!wind(position, attempt)) continue;
        Step step = Step::more;
        while (step == Step::more && !standsBefore(position) && heldUntil() <= position)
            step = decodeMore();
        if (step == Step::cancelled) return Error{QStringLiteral("cancelled")};
        const bool beyondEnd = ended_ && attempt == attempts - 2 && heldUntil() < position;
        if (standsBefore(position) || beyondEnd || attempt == attempts - 1) {
            started_ = true;
            return {};
        }
        if (file_.cancelled()) break;
    }
    return Error{QStringLiteral("cancelled")};
}

/// Whether nothing of what stands at the position has been passed over; a track that has not come up yet
/// counts where another shows that it will not before the position.
bool DecodingAudioReader::standsBefore(qint64 position) const {
    bool any = false;
    for (const auto& [stream, track] : tracks_) {
        if (!track->isPlaced()) {
            if (heldUntil() <= position && !ended_) return false;
            continue;
        }
        any = true;
        if (track->start && track->first() > std::max(position, *track->start)) return false;
    }
    return any;
}

bool DecodingAudioReader::wind(qint64 position, int attempt) {
    if (attempt == 3) {
        Result<MediaFile> fresh = file_.reopened();
        if (!fresh) return false;
        file_ = std::move(*fresh);
        deliver();
        return true;
    }
    // Decoders need a few frames to come to their full voice.
    constexpr double stepsBack[] = {0.15, 1.5, 8.0};
    const int stream = tracks_.front().first;
    const double seconds = origin_ + double(position) / rate_ - stepsBack[attempt];
    const auto stamp = int64_t(seconds / av_q2d(file_.format()->streams[stream]->time_base));
    return av_seek_frame(file_.format(), stream, stamp, AVSEEK_FLAG_BACKWARD) >= 0;
}

/// Decodes the file's next packet that matters. A read error in the middle is the end of what can be read.
DecodingAudioReader::Step DecodingAudioReader::decodeMore() {
    if (ended_) return Step::end;
    for (;;) {
        if (file_.cancelled()) return Step::cancelled;
        const int code = av_read_frame(file_.format(), packet_.get());
        if (code == AVERROR(EAGAIN)) continue;
        if (code < 0) break;
        const auto track = std::find_if(tracks_.begin(), tracks_.end(), [this](const auto& candidate) {
            return candidate.first == packet_->stream_index;
        });
        if (track != tracks_.end()) track->second->decode(packet_.get());
        av_packet_unref(packet_.get());
        if (track != tracks_.end()) return Step::more;
    }
    if (file_.cancelled()) return Step::cancelled;
    for (const auto& [stream, track] : tracks_)
        track->decode(nullptr);
    ended_ = true;
    return Step::end;
}

Result<std::unique_ptr<AudioReader>> readerOf(MediaFile file, const std::vector<Voice>& voices, double origin,
                                              int rate) {
    DecodingAudioReader::Tracks tracks;
    Error failure{QStringLiteral("no decoder for this sound")};
    for (const Voice& voice : voices) {
        auto track = SoundTrack::open(*voice.stream, origin, rate, voice.place);
        if (track)
            tracks.emplace_back(voice.stream->index, std::move(*track));
        else
            failure = track.error();
    }
    if (tracks.empty()) return failure;
    auto reader = std::make_unique<DecodingAudioReader>(std::move(file), std::move(tracks), origin, rate);
    if (const auto found = reader->findStart(); !found) return found.error();
    std::unique_ptr<AudioReader> result = std::move(reader);
    return result;
}

} // namespace

Result<std::unique_ptr<AudioReader>> AudioReader::open(const QString& path, const SampleIndex& pictures,
                                                       int rate, const CancelFlag* cancel) {
    Result<MediaFile> file = MediaFile::open(path, cancel);
    if (!file) return file.error();
    double origin = 0;
    if (!pictures.samples.empty())
        origin = double(pictures.samples.front().pts) * pictures.timeBaseNum / pictures.timeBaseDen;
    const auto voices = chooseVoices(file->format());
    return readerOf(std::move(*file), voices, origin, std::max(1, rate));
}

Result<std::unique_ptr<AudioReader>> AudioReader::openAdded(const QString& path, int rate,
                                                            const CancelFlag* cancel) {
    Result<MediaFile> file = MediaFile::open(path, cancel);
    if (!file) return file.error();
    const auto voices = firstVoice(file->format());
    const double origin = beginningOf(file->format());
    return readerOf(std::move(*file), voices, origin, std::max(1, rate));
}

} // namespace daylark
