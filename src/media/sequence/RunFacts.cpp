#include "media/sequence/RunFacts.h"

#include "media/sequence/RunReader.h"

#include <cmath>

namespace daylark {

namespace {

struct ReadFacts {
    RunFiles files;
    PictureFacts facts;
    qint64 number = 0; ///< of the picture that they are of
};

std::optional<ReadFacts> factsAt(const RunAddress& address, const CancelFlag* cancel) {
    const Result<const PictureFiles*> reader = pictureFiles();
    Result<RunFiles> files = RunFiles::look(address, cancel);
    if (!files || !reader) return std::nullopt;
    constexpr size_t mostTries = 20;
    for (size_t at = 0; at < files->numbers.size() && at < mostTries && !(cancel && cancel->load()); ++at) {
        const qint64 number = files->numbers[at];
        if (Result<PictureFacts> facts = (*reader)->facts(address.pathOf(number)))
            return ReadFacts{std::move(*files), std::move(*facts), number};
    }
    return std::nullopt;
}

} // namespace

std::optional<SmpteTime> timecodeOfRun(const RunAddress& address, const CancelFlag* cancel) {
    const std::optional<ReadFacts> read = factsAt(address, cancel);
    if (!read || !read->facts.timecode) return std::nullopt;
    const auto [hours, minutes, seconds, written] = *read->facts.timecode;
    const double stated = read->facts.framesPerSecond;
    const SampleIndex index = indexOf(read->files, stated);
    const auto quanta = std::max<qint64>(1, std::llround(double(index.timeScale) / index.step));
    // Whoever wrote a number that no second has at this rate counted by a higher one: the second stays theirs, and the frame
    // is the one that is as far into it.
    const qint64 counted = std::max<qint64>(std::llround(stated), written + 1);
    const qint64 frames = written < quanta ? written : written * quanta / counted;
    const FrameRun& run = read->files.address.movie.run;
    // The picture may not be the first frame: that one's is as many numbers earlier, round the clock.
    const qint64 day = 24 * 3600 * quanta;
    qint64 frame = ((qint64(hours) * 60 + minutes) * 60 + seconds) * quanta + frames - (read->number - run.first);
    frame = (frame % day + day) % day;
    SmpteTime time;
    time.flags = 1; // valid
    time.frames = qint16(frame % quanta);
    time.seconds = qint16(frame / quanta % 60);
    time.minutes = qint16(frame / quanta / 60 % 60);
    time.hours = qint16(frame / quanta / 3600);
    return time;
}

QStringList layersOfRun(const RunAddress& address, const CancelFlag* cancel) {
    const std::optional<ReadFacts> read = factsAt(address, cancel);
    return read ? read->facts.layers : QStringList();
}

} // namespace daylark
