#include "media/sound/AudioReader.h"

#include "media/container/MediaFile.h"
#include "media/sound/SoundSource.h"
#include "media/sound/SoundVoices.h"

#include <algorithm>
#include <vector>

namespace daylark {
namespace {

class DecodingAudioReader final : public AudioReader {
public:
    explicit DecodingAudioReader(std::unique_ptr<SoundSource> source)
        : source_(std::move(source)) {}

    int rate() const override { return source_->rate(); }
    qint64 start() const override { return source_->start(); }
    Result<void> read(qint64 position, float* pairs, qint64 count, const CancelFlag* cancel) override {
        std::fill_n(pairs, count * 2, 0.0f);
        const Result<void> reached = source_->reach(position, count, cancel);
        if (!reached) return reached;
        for (const auto& [stream, track] : source_->tracks())
            track->addTo(pairs, 2, position, count);
        return {};
    }

private:
    const std::unique_ptr<SoundSource> source_;
};

Result<std::unique_ptr<AudioReader>> readerOf(MediaFile file, const std::vector<SoundVoice>& voices, double origin, int rate) {
    SoundSource::Tracks tracks;
    Error failure{QStringLiteral("no decoder for this sound")};
    for (const SoundVoice& voice : voices) {
        const auto place = placeOf(voice.speaker);
        if (voice.speaker && !place) continue;
        auto track = SoundTrack::open(*voice.stream, origin, rate, place);
        if (track)
            tracks.emplace_back(voice.stream->index, std::move(*track));
        else
            failure = track.error();
    }
    if (tracks.empty()) return failure;
    auto source = SoundSource::open(std::move(file), std::move(tracks), origin, rate);
    if (!source) return source.error();
    return std::unique_ptr<AudioReader>(new DecodingAudioReader(std::move(*source)));
}

} // namespace

Result<std::unique_ptr<AudioReader>> AudioReader::open(const QString& path, const SampleIndex& pictures,
                                                       int rate, const CancelFlag* cancel) {
    Result<MediaFile> file = MediaFile::open(path, cancel);
    if (!file) return file.error();
    double origin = 0;
    if (!pictures.samples.empty())
        origin = double(pictures.samples.front().pts) * pictures.timeBaseNum / pictures.timeBaseDen;
    const auto voices = heardVoices(file->format());
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
