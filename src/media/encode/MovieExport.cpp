#include "media/encode/MovieExport.h"

#include "media/encode/MovAssembly.h"
#include "media/encode/MovieCopy.h"
#include "media/encode/SoundExport.h"
#include "platform/FileBookmark.h"
#include "platform/UnfinishedFile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <sys/stat.h>

namespace daylark {
namespace {

struct Job {
    const QString& movie;
    const MovieSound& sound;
    SampleTables* tables;
    const ExportWatch& watch;
};

const AVOutputFormat* containerOf(const QString& name) {
    return av_guess_format(nullptr, QFile::encodeName(QStringLiteral("x.") + QFileInfo(name).suffix()).constData(), nullptr);
}

bool isQuickTime(const AVOutputFormat* container) {
    const QByteArray name(container ? container->name : "");
    return name == "mov" || name == "mp4" || name == "ipod" || name == "3gp" || name == "3g2";
}

/// The added sound on its way into the movie; begins with the first picture.
struct AddedSound {
    std::unique_ptr<RecordedSound> recorded;
    std::unique_ptr<SoundEncoder> encoder;
    double start = 0; ///< seconds on the movie file's own clock
};
Result<AddedSound> addedSound(const Job& job, const AVOutputFormat& container) {
    const Result<SampleIndex> pictures = picturesOf(job.movie, job.watch.cancelled, job.tables);
    if (!pictures) return pictures.error();
    auto recorded = RecordedSound::openHeard(job.movie, *pictures, job.sound, job.watch.cancelled);
    if (!recorded) return recorded.error();
    AddedSound added{std::move(*recorded), nullptr, 0};
    auto encoder = SoundEncoder::open(*added.recorded, soundFramesOf(*pictures, added.recorded->form().rate), container);
    if (!encoder) return encoder.error();
    added.encoder = std::move(*encoder);
    if (!pictures->samples.empty())
        added.start = double(pictures->samples.front().pts) * pictures->timeBaseNum / pictures->timeBaseDen;
    return added;
}

/// Track by track, as it stands. The added sound is made a movie of its own beside the file first.
Result<void> assemble(const Job& job, MovAssembly& assembly, const AVOutputFormat& container, UnfinishedFile& file) {
    if (job.sound.kind != MovieSound::Kind::added) return assembly.write(file.handle(), job.watch);
    const Result<AddedSound> added = addedSound(job, container);
    if (!added) return added.error();
    const Result<UnfinishedFile> apart = UnfinishedFile::beside(file.finalPath() + QStringLiteral(".sound"));
    if (!apart) return apart.error();
    MovieCopy copy(apart->path(), container);
    copy.setOption("movie_timescale", QByteArray::number(assembly.timeScale()));
    const Result<void> copied = copy.copy(nullptr, false, added->encoder.get(), std::max(0.0, added->start), job.watch);
    if (!copied) return copied;
    if (const auto lifted = assembly.addSound(apart->path()); !lifted) return lifted;
    return assembly.write(file.handle(), job.watch);
}

Result<void> copyStreams(const Job& job, const AVOutputFormat& container, const UnfinishedFile& file) {
    Result<MediaFile> movie = MediaFile::open(job.movie, job.watch.cancelled, MediaFile::Opening::forFacts);
    if (!movie) return movie.error();
    AddedSound added;
    if (job.sound.kind == MovieSound::Kind::added) {
        Result<AddedSound> made = addedSound(job, container);
        if (!made) return made.error();
        added = std::move(*made);
    }
    movie->format()->flags |= AVFMT_FLAG_GENPTS;
    MovieCopy copy(file.path(), container);
    return copy.copy(&*movie, job.sound.kind == MovieSound::Kind::own, added.encoder.get(), added.start, job.watch);
}

} // namespace

Result<qint64> saveMovieWithSound(const QString& movie, const MovieSound& sound, const QString& path, SampleTables* tables,
                                  const ExportWatch& watch) {
    if (isSameFile(movie, path)) return Error{QStringLiteral("this is the movie itself")};
    if (sound.kind == MovieSound::Kind::added) {
        const Result<QString> added = resolveFileBookmark(sound.addedBookmark, sound.addedPath);
        if (added && isSameFile(*added, path)) return Error{QStringLiteral("this is the added sound itself")};
    }
    const Job job{movie, sound, tables, watch};
    const AVOutputFormat* own = containerOf(movie);
    const AVOutputFormat* container = containerOf(path);
    if (!container) container = own;
    if (!container) return Error{QStringLiteral("no such kind of movie can be written")};
    Result<MovAssembly> assembly = Error{};
    if (isQuickTime(container)) assembly = MovAssembly::of(movie, sound.kind == MovieSound::Kind::own);
    Result<UnfinishedFile> file = assembly ? UnfinishedFile::nameless(path) : UnfinishedFile::beside(path);
    if (!file) return file.error();
    Result<void> written =
        assembly ? assemble(job, *assembly, *container, *file) : copyStreams(job, *container, *file);
    if (written && watch.isCancelled()) written = Error{QStringLiteral("cancelled")};
    struct stat info {};
    if (written && ::fstat(file->handle(), &info) != 0) written = Error{qt_error_string()};
    if (written) written = file->commit(UnfinishedFile::Existing::replace);
    if (!written) return written.error();
    return qint64(info.st_size);
}

} // namespace daylark
