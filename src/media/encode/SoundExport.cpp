#include "media/encode/SoundExport.h"

#include "media/encode/WaveFile.h"
#include "media/sound/RecordedSound.h"
#include "platform/FileBookmark.h"
#include "platform/UnfinishedFile.h"

#include <QFileInfo>

#include <algorithm>
#include <vector>

namespace daylark {
namespace {

constexpr qint64 piece = 16384; // frames

/// Of sound alone: it is read through once to know.
Result<qint64> framesUntilTheEnd(RecordedSound& sound, const ExportWatch& watch) {
    std::vector<double> frames(size_t(piece) * size_t(sound.form().channels));
    qint64 position = 0;
    while (!sound.endsBefore(position)) {
        const Result<void> read = sound.read(position, frames.data(), piece, watch.cancelled);
        if (!read) return read.error();
        position += piece;
    }
    qint64 below = std::max<qint64>(0, position - 2 * piece), above = position;
    while (below < above) { // the last piece is still held
        const qint64 middle = (below + above) / 2;
        if (sound.endsBefore(middle))
            above = middle;
        else
            below = middle + 1;
    }
    return above;
}

} // namespace

qint64 soundFramesOf(const SampleIndex& pictures, int rate) {
    // In 128 bits: a day at 192 kHz on a fast clock is more than 64 hold.
    const auto wide = __extension__ static_cast<__int128>(pictures.endTicks) * rate * 2 + pictures.timeScale;
    return qint64(wide / (qint64(pictures.timeScale) * 2));
}

bool isSameFile(const QString& one, const QString& other) {
    const QString real = QFileInfo(one).canonicalFilePath();
    return !real.isEmpty() && real == QFileInfo(other).canonicalFilePath();
}

Result<SavedSound> saveSoundAsWave(const QString& movie, const MovieSound& sound, const QString& path, SampleTables* tables,
                                   const ExportWatch& watch) {
    if (isSameFile(movie, path)) return Error{QStringLiteral("this is the movie itself")};
    if (sound.kind == MovieSound::Kind::added) {
        const Result<QString> added = resolveFileBookmark(sound.addedBookmark, sound.addedPath);
        if (added && isSameFile(*added, path)) return Error{QStringLiteral("this is the added sound itself")};
    }
    const Result<SampleIndex> pictures = picturesOf(movie, watch.cancelled, tables);
    if (!pictures) return pictures.error();
    const auto recorded = RecordedSound::openHeard(movie, *pictures, sound, watch.cancelled);
    if (!recorded) return recorded.error();
    RecordedSound& source = **recorded;
    SavedSound saved{0, soundFramesOf(*pictures, source.form().rate), source.form()};
    if (pictures->samples.empty()) {
        const Result<qint64> frames = framesUntilTheEnd(source, watch);
        if (!frames) return frames.error();
        saved.frames = *frames;
    }
    Result<UnfinishedFile> file = UnfinishedFile::nameless(path);
    if (!file) return file.error();
    const auto write = [&](const QByteArray& bytes) {
        saved.bytes += bytes.size();
        return file->write(bytes);
    };
    Result<void> written = write(waveHeader(saved.form, saved.frames));
    std::vector<double> frames(size_t(piece) * size_t(saved.form.channels));
    for (qint64 done = 0; written && done < saved.frames; done += piece) {
        const qint64 count = std::min(piece, saved.frames - done);
        written = source.read(done, frames.data(), count, watch.cancelled);
        if (written) written = write(waveSamples(frames.data(), count * saved.form.channels, saved.form.depth));
        watch.tell(done + count, saved.frames);
        if (written && watch.isCancelled()) written = Error{QStringLiteral("cancelled")}; // silence is decoded from nothing
    }
    if (written) written = write(waveEnd(saved.form, saved.frames));
    if (written) written = file->commit(UnfinishedFile::Existing::replace);
    if (!written) return written.error();
    return saved;
}

} // namespace daylark
