#include "model/bundle/BundleReading.h"

#include "archive/LargeArchive.h"
#include "model/bundle/MovieBundle.h"
#include "platform/FileBookmark.h"

#include <QDir>
#include <QFileInfo>

namespace daylark {

namespace {

const QString archiveName = QStringLiteral("data.dls");

/// A record's file name is a stranger's: a name, never a way to another folder.
QString fileNameOf(const Movie& movie) {
    const QString name = QFileInfo(movie.filenameString.isEmpty() ? movie.filepathString : movie.filenameString).fileName();
    return name == QLatin1String(".") || name == QLatin1String("..") ? QString() : name;
}

/// The file of that name in the folder; other machines spell accents otherwise. Null when there is none.
QString fileInFolder(const QDir& folder, const QString& name) {
    if (name.isEmpty()) return {};
    if (QFileInfo(folder.filePath(name)).isFile()) return folder.filePath(name);
    const QString wanted = name.normalized(QString::NormalizationForm_C);
    for (const QString& entry : folder.entryList(QDir::Files))
        if (entry.normalized(QString::NormalizationForm_C) == wanted) return folder.filePath(entry);
    return {};
}

/// Its media in the folder. Of a run the first picture may be one that is missing. Null when they aren't there.
QString mediaInFolder(const QDir& folder, const Movie& movie) {
    const QString file = fileInFolder(folder, fileNameOf(movie));
    if (!file.isNull() || !movie.frameRun) return file;
    const FrameRun& run = movie.frameRun->run;
    for (const QString& name : folder.entryList(QDir::Files))
        if (const auto number = run.numberIn(name); number && run.frameOf(*number)) return folder.filePath(run.nameOf(run.first));
    return {};
}

void setPath(Movie& movie, const QString& path) {
    movie.addVideoFile(path, createFileBookmark(path));
    movie.applyFileCheck({true, path});
}

/// It was counted in the session that it comes from.
void makeSingle(Movie& movie) {
    movie.iCount = 0;
    movie.instanceIcon = Image();
    movie.mMovieBookmarkArray.isNil = false;
}

Result<BundleContents> readFolder(const QDir& folder) {
    const QString path = folder.filePath(archiveName);
    const Result<LargeArchive> archive = LargeArchive::read(path, recordClasses());
    if (!archive) return archive.error();
    BundleContents contents;
    contents.movie = std::dynamic_pointer_cast<Movie>(archive->root()[u"movie"].object());
    if (contents.movie) {
        makeSingle(*contents.movie);
        const QString file = mediaInFolder(folder, *contents.movie);
        if (!file.isNull()) setPath(*contents.movie, file);
        return contents;
    }
    Result<SessionContents> session = readSessionFile(path);
    if (!session) return session.error();
    contents.session = *std::move(session);
    for (const auto& playlist : contents.session->playlists)
        for (const auto& movie : playlist->movieList)
            if (const QString file = mediaInFolder(folder, *movie); !file.isNull()) setPath(*movie, file);
    return contents;
}

/// The movie's bytes out of the bundle's file to a file of their own beside it.
CopyOutcome takeOut(const LargeArchive& archive, const QString& bundle, const QByteArray& video, const QString& to,
                    const CopyWatch& watch) {
    constexpr auto keep = UnfinishedFile::Existing::keep;
    if (const auto place = archive.left(video))
        return copyPartOfFile(bundle, {place->offset, place->length}, to, keep, watch);
    Result<UnfinishedFile> file = UnfinishedFile::beside(to);
    Result<void> written = file ? file->write(video) : Result<void>(file.error());
    if (written) written = file->commit(keep);
    if (!written) return {CopyOutcome::End::failed, 0, written.error().text};
    return {CopyOutcome::End::copied, video.size(), {}};
}

Result<BundleContents> readFile(const QString& path, const CopyWatch& watch, QString& unwritten) {
    const Result<LargeArchive> archive = LargeArchive::read(path, recordClasses());
    if (!archive) return archive.error();
    const auto bundle = std::dynamic_pointer_cast<DLMovieBundle>(archive->root()[u"movie"].object());
    if (!bundle || !bundle->mMetaData) return Error{QStringLiteral("%1 holds no movie").arg(path)};
    BundleContents contents;
    contents.movie = bundle->mMetaData;
    Movie& movie = *contents.movie;
    makeSingle(movie);
    const QDir folder = QFileInfo(path).absoluteDir();
    const QString name = fileNameOf(movie), beside = fileInFolder(folder, name);
    if (!beside.isNull()) {
        setPath(movie, beside);
    } else if (!QFileInfo(movie.filepathString).isFile() && !bundle->mQTMovieData.isEmpty() && !name.isEmpty()) {
        const CopyOutcome written = takeOut(*archive, path, bundle->mQTMovieData, folder.filePath(name), watch);
        if (written) setPath(movie, folder.filePath(name));
        unwritten = written.reason;
    }
    return contents;
}

} // namespace

bool isBundlePath(const QString& path) {
    return QFileInfo(QDir::cleanPath(path)).suffix() == QLatin1String("dlm");
}

QString bundleOfPath(const QString& path) {
    const QFileInfo file(QDir::cleanPath(path));
    if (isBundlePath(path)) return file.filePath();
    return file.fileName() == archiveName && isBundlePath(file.path()) ? file.path() : QString();
}

Result<BundleContents> readBundle(const QString& bundle, const CopyWatch& watch, QString& unwritten) {
    return QFileInfo(bundle).isDir() ? readFolder(QDir(bundle)) : readFile(bundle, watch, unwritten);
}

} // namespace daylark
