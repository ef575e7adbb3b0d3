#include "media/sound/RecordedSound.h"

#include "media/index/SampleTables.h"
#include "media/index/SampleTable.h"
#include "media/sound/SoundSource.h"
#include "media/sound/SoundVoices.h"
#include "platform/FileBookmark.h"

#include <algorithm>
#include <bit>

namespace daylark {
namespace {

/// The speakers that WAVE files know have the bits of the codec library's.
constexpr quint64 knownSpeakers = 0x3FFFF;

/// Files often leave it out; up to eight channels are heard as the usual layout then.
quint32 speakersOf(const AVChannelLayout& layout) {
    constexpr int mostSpeakers = 8;
    AVChannelLayout told = {};
    if (layout.order == AV_CHANNEL_ORDER_UNSPEC && layout.nb_channels <= mostSpeakers)
        av_channel_layout_default(&told, layout.nb_channels);
    else
        av_channel_layout_copy(&told, &layout);
    const bool known = told.order == AV_CHANNEL_ORDER_NATIVE && (told.u.mask & ~knownSpeakers) == 0;
    const quint32 speakers = known ? quint32(told.u.mask) : 0;
    av_channel_layout_uninit(&told);
    return speakers;
}

SoundDepth depthOf(const SoundTrack& track) {
    if (track.isFloat()) return track.bits() > 32 ? SoundDepth::float64 : SoundDepth::float32;
    if (track.bits() > 32) return SoundDepth::float64;
    return track.bits() <= 16 ? SoundDepth::bits16 : track.bits() <= 24 ? SoundDepth::bits24 : SoundDepth::bits32;
}

class DecodedSound final : public RecordedSound {
public:
    DecodedSound(std::unique_ptr<SoundSource> source, std::vector<int> firstChannels, SoundForm form)
        : source_(std::move(source))
        , firstChannels_(std::move(firstChannels))
        , form_(form) {
        for (const auto& [stream, track] : source_->tracks())
            form_.depth = std::max(form_.depth, depthOf(*track)); // known once something is decoded
    }
    const SoundForm& form() const override { return form_; }
    bool endsBefore(qint64 position) const override { return source_->endsBefore(position); }
    Result<void> read(qint64 position, double* frames, qint64 count, const CancelFlag* cancel) override {
        std::fill_n(frames, count * form_.channels, 0.0);
        const Result<void> reached = source_->reach(position, count, cancel);
        if (!reached) return reached;
        for (size_t i = 0; i < firstChannels_.size(); ++i)
            source_->tracks()[i].second->addTo(frames + firstChannels_[i], form_.channels, position, count);
        return {};
    }

private:
    const std::unique_ptr<SoundSource> source_;
    const std::vector<int> firstChannels_; ///< of each track
    SoundForm form_;
};

Result<std::unique_ptr<RecordedSound>> soundOf(MediaFile file, std::vector<SoundVoice> voices, double origin) {
    std::erase_if(voices, [](const SoundVoice& voice) { return (voice.speaker & ~knownSpeakers) != 0; });
    Error failure{QStringLiteral("it has no sound")};
    SoundForm form{.rate = 0, .channels = 0, .speakers = 0, .depth = SoundDepth::bits16};
    for (const SoundVoice& voice : voices) {
        form.rate = std::max(form.rate, voice.stream->codecpar->sample_rate);
        form.speakers |= quint32(voice.speaker);
    }
    SoundSource::Tracks tracks;
    std::vector<int> firstChannels;
    for (const SoundVoice& voice : voices) {
        auto track = SoundTrack::openAsRecorded(*voice.stream, origin, std::max(1, form.rate));
        if (!track) {
            failure = track.error();
            continue;
        }
        // Channels stand in the order of their speakers' bits.
        firstChannels.push_back(voice.speaker ? std::popcount(form.speakers & (quint32(voice.speaker) - 1)) : 0);
        if (!voice.speaker) {
            form.channels = (*track)->channels();
            form.speakers = speakersOf(voice.stream->codecpar->ch_layout);
        }
        tracks.emplace_back(voice.stream->index, std::move(*track));
    }
    if (tracks.empty()) return failure;
    if (form.channels == 0) form.channels = std::popcount(form.speakers);
    auto source = SoundSource::open(std::move(file), std::move(tracks), origin, form.rate);
    if (!source) return source.error();
    return std::unique_ptr<RecordedSound>(new DecodedSound(std::move(*source), std::move(firstChannels), form));
}

} // namespace

Result<std::unique_ptr<RecordedSound>> RecordedSound::open(const QString& path, const SampleIndex& pictures,
                                                           const CancelFlag* cancel) {
    Result<MediaFile> file = MediaFile::open(path, cancel, MediaFile::Opening::forFacts);
    if (!file) return file.error();
    const double origin = pictures.samples.empty()
                              ? beginningOf(file->format())
                              : double(pictures.samples.front().pts) * pictures.timeBaseNum / pictures.timeBaseDen;
    const auto voices = heardVoices(file->format());
    return soundOf(std::move(*file), voices, origin);
}

Result<std::unique_ptr<RecordedSound>> RecordedSound::openAdded(const QString& path, const CancelFlag* cancel) {
    Result<MediaFile> file = MediaFile::open(path, cancel, MediaFile::Opening::forFacts);
    if (!file) return file.error();
    const auto voices = firstVoice(file->format());
    const double origin = beginningOf(file->format());
    return soundOf(std::move(*file), voices, origin);
}

Result<std::unique_ptr<RecordedSound>> RecordedSound::openHeard(const QString& path, const SampleIndex& pictures,
                                                                const MovieSound& sound, const CancelFlag* cancel) {
    if (sound.kind == MovieSound::Kind::none) return Error{QStringLiteral("it has no sound")};
    if (sound.kind == MovieSound::Kind::own) return open(path, pictures, cancel);
    const Result<QString> file = resolveFileBookmark(sound.addedBookmark, sound.addedPath);
    if (!file) return Error{QStringLiteral("the added sound file is missing")};
    return openAdded(*file, cancel);
}

Result<SampleIndex> picturesOf(const QString& path, const CancelFlag* cancel, SampleTables* tables) {
    const Result<MediaFile> file = MediaFile::open(path, cancel);
    if (!file) return file.error();
    if (!file->video()) return SampleIndex();
    if (tables) {
        const Result<SampleTables::Table> table = tables->tableOf(*file);
        if (!table) return table.error();
        return (*table)->index;
    }
    Result<SampleTable> table = buildSampleTable(*file);
    if (!table) return table.error();
    return std::move(table->index);
}

} // namespace daylark
