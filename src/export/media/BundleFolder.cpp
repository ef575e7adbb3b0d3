#include "export/media/BundleFolder.h"

#include "media/sequence/RunFiles.h"
#include "model/bundle/MovieBundle.h"
#include "platform/AtomicFile.h"
#include "platform/NamedImages.h"
#include "platform/desktop/FolderIcon.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>

#include <cerrno>

namespace daylark {

namespace {

constexpr int iconSide = 256;
using End = BundleReport::End;

BundleReport failed(const QString& path, const QString& reason) {
    return {End::failed, 0, path, reason};
}

/// Null when it is there; with what stood in the way else.
QString makeFolder(const QString& path) {
    if (QFileInfo(path).isDir()) return {};
    errno = 0;
    return QDir().mkpath(path) ? QString() : qt_error_string(QFileInfo::exists(path) ? EEXIST : errno);
}

QByteArray iconOf(const Movie& movie) {
    QImage icon = movie.thumbnail.decode();
    if (icon.isNull()) icon = namedImage(QStringLiteral("DLM_filmstrip.png"), iconSide);
    QByteArray png;
    QBuffer out(&png);
    return icon.save(&out, "PNG") ? png : QByteArray();
}

/// Copies the media into the folder. A folder that has its name goes once there is a copy to take its place.
CopyOutcome copyMedia(const QString& from, const QString& to, const CopyWatch& watch) {
    CopyOutcome outcome = copyFile(from, to, UnfinishedFile::Existing::replace, watch);
    if (outcome.end != CopyOutcome::End::failed || !QFileInfo(to).isDir() || QFileInfo(to).isSymLink()) return outcome;
    const QString aside = to + QStringLiteral(".replaced");
    if (!QFileInfo(from).isReadable() || !QDir().rename(to, aside)) return outcome;
    outcome = copyFile(from, to, UnfinishedFile::Existing::keep, watch);
    if (outcome)
        QDir(aside).removeRecursively();
    else
        QDir().rename(aside, to);
    return outcome;
}

/// Where its media are; of a run, all its pictures that are there.
QStringList mediaFilesOf(const BundleSource& source, const FileCheck& file) {
    const auto address = RunAddress::of(mediaAddress(file.path, source.file.run));
    if (!address) return {file.path};
    QStringList paths;
    if (const Result<RunFiles> files = RunFiles::look(*address))
        for (const qint64 number : files->numbers)
            paths.append(files->address.pathOf(number));
    return paths;
}

/// One after the other; given up or out of room, none of them is left. `last` is the copy that was tried last.
CopyOutcome copyPictures(const QStringList& paths, const QDir& inside, const CopyWatch& watch, QString& last) {
    CopyOutcome all{CopyOutcome::End::source_missing, 0, qt_error_string(ENOENT)};
    QStringList made;
    qint64 done = 0;
    for (const QString& path : paths) {
        const QString to = last = inside.filePath(QFileInfo(path).fileName());
        const CopyWatch one{watch.cancelled, [&](qint64 bytes) {
                                if (watch.progress) watch.progress(done + bytes);
                            }};
        const bool isNew = !QFileInfo::exists(to);
        all = copyMedia(path, to, one);
        if (!all && all.end != CopyOutcome::End::source_missing) // one that went meanwhile is no reason to lose the others
            for (const QString& copy : made)
                QFile::remove(copy);
        if (!all) return all;
        if (isNew) made.append(to);
        done += all.bytes;
    }
    all.bytes = done;
    return all;
}

} // namespace

qint64 BundleSource::mediaBytes() const {
    qint64 bytes = 0;
    for (const QString& path : mediaFilesOf(*this, checkFile(file)))
        bytes += QFileInfo(path).size();
    return bytes;
}

BundleSource BundleSource::of(const std::shared_ptr<Movie>& movie) {
    return {snapshotOf(movie), movie->fileReference(false)};
}

BundleReport writeBundleFolder(const BundleSource& source, const QString& folder, const CopyWatch& watch) {
    const bool isNew = !QFileInfo::exists(folder);
    if (const QString obstacle = makeFolder(folder); !obstacle.isNull()) return failed(folder, obstacle);
    const QDir inside(folder);
    const QString archive = inside.filePath(QStringLiteral("data.dls"));
    if (const Result<void> written = writeFileAtomically(archive, encodeMovieRoot(source.movie)); !written)
        return failed(archive, written.error().text);
    const FileCheck file = checkFile(source.file);
    const QString name = QFileInfo(source.movie->filenameString).fileName(); // a name, never a way elsewhere
    QString copy = inside.filePath(name.isEmpty() ? QFileInfo(file.path).fileName() : name);
    CopyOutcome copied{CopyOutcome::End::source_missing, 0, qt_error_string(ENOENT)};
    if (file.found)
        copied = source.file.run ? copyPictures(mediaFilesOf(source, file), inside, watch, copy)
                                 : copyMedia(file.path, copy, watch);
    const bool isHalf = copied.end == CopyOutcome::End::cancelled ||
                        (source.file.run && copied.end == CopyOutcome::End::failed);
    if (isHalf && isNew) {
        QFile::remove(archive);
        QDir().rmdir(folder); // only as long as nobody put anything into it
    }
    if (copied.end == CopyOutcome::End::cancelled) return {End::cancelled, 0, {}, {}};
    if (isHalf) return failed(copy, copied.reason);
    setFolderIcon(folder, iconOf(*source.movie));
    if (!copied) return failed(file.found ? copy : file.path, copied.reason);
    return {End::written, copied.bytes, {}, {}};
}

BundleReport writeBundleFile(const BundleSource& source, const QString& path) {
    const QByteArray archive = encodeBundleRoot(exportDLM(*source.movie));
    if (const QString obstacle = makeFolder(path); !obstacle.isNull()) return failed(path, obstacle);
    const QString file = path + QStringLiteral(".dlm");
    if (const Result<void> written = writeFileAtomically(file, archive); !written) return failed(file, written.error().text);
    // By the theme's name: a picture's file would be something in the folder.
    for (const QString& each : {path, file})
        setIconName(each, QStringLiteral("application-x-daylark-bundle"));
    return {End::written, 0, {}, {}};
}

} // namespace daylark
