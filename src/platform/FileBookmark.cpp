#include "platform/FileBookmark.h"

#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>

#include <dirent.h>
#include <sys/stat.h>

#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace daylark {

namespace {

constexpr quint32 bookmarkMagic = 0x444c424b; // "DLBK"
constexpr quint16 bookmarkVersion = 1;
/// How many folder entries a search reads at most, all folders together: a folder of a million frames ends
/// the search.
constexpr int largestSearch = 200000;

struct FileIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    qint64 modifiedNs = 0;

    /// A device number may change from one mount to the next, and an inode is given to another file after
    /// deletion; so the inode alone never decides.
    [[nodiscard]] bool isOf(const FileIdentity& file) const {
        if (inode != file.inode) return false;
        const bool sameSize = size == file.size;
        const bool sameTime = modifiedNs == file.modifiedNs;
        return device == file.device ? (sameSize || sameTime) : (sameSize && sameTime);
    }
};

struct FileBookmarkRecord {
    QByteArray path; ///< as the file system spells it, absolute
    FileIdentity identity;
};

std::optional<FileIdentity> identityOfFile(const QByteArray& path) {
    struct stat info {};
    if (path.isEmpty() || path.contains('\0') || ::stat(path.constData(), &info) != 0) return std::nullopt;
    return FileIdentity{quint64(info.st_dev), quint64(info.st_ino), qint64(info.st_size),
                        qint64(info.st_mtim.tv_sec) * 1000000000 + info.st_mtim.tv_nsec};
}

std::optional<FileBookmarkRecord> parseFileBookmark(const QByteArray& data) {
    QDataStream in(data);
    in.setVersion(QDataStream::Qt_6_4);
    quint32 magic = 0;
    quint16 version = 0;
    in >> magic >> version;
    if (magic != bookmarkMagic || version != bookmarkVersion) return std::nullopt;
    FileBookmarkRecord record;
    FileIdentity& identity = record.identity;
    in >> record.path >> identity.device >> identity.inode >> identity.size >> identity.modifiedNs;
    if (in.status() != QDataStream::Ok || !record.path.startsWith('/') || record.path.contains('\0'))
        return std::nullopt;
    return record;
}

QByteArray folderOfPath(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    return slash <= 0 ? QByteArray("/") : path.left(slash);
}

QByteArray pathInFolder(const QByteArray& folder, const char* name) {
    return folder.endsWith('/') ? folder + name : folder + '/' + name;
}

/// Looks for one file by its identity, folder by folder, and counts what it reads.
class IdentitySearch {
public:
    explicit IdentitySearch(const FileIdentity& wanted)
        : wanted_(wanted) {}

    /// The file's path when it stands directly in the folder, else empty.
    QByteArray inFolder(const QByteArray& folder) {
        QByteArray found;
        if (!searched_.insert(folder).second) return found;
        forEachEntry(folder, [&](const dirent& entry) {
            if (entry.d_ino != wanted_.inode) // spares a stat of every file
                return true;
            const QByteArray path = pathInFolder(folder, entry.d_name);
            const auto identity = identityOfFile(path);
            if (identity && wanted_.isOf(*identity)) found = path;
            return found.isEmpty();
        });
        return found;
    }

    /// As above, in each folder that stands beside the given one.
    QByteArray inSiblingsOf(const QByteArray& folder) {
        std::vector<QByteArray> siblings;
        const QByteArray parent = folderOfPath(folder);
        forEachEntry(parent, [&](const dirent& entry) {
            const bool maybeFolder = entry.d_type == DT_DIR || entry.d_type == DT_UNKNOWN;
            if (maybeFolder && qstrcmp(entry.d_name, ".") != 0 && qstrcmp(entry.d_name, "..") != 0)
                siblings.push_back(pathInFolder(parent, entry.d_name));
            return true;
        });
        for (const QByteArray& sibling : siblings)
            if (const QByteArray found = inFolder(sibling); !found.isEmpty()) return found;
        return {};
    }

private:
    template<class Visit>
    void forEachEntry(const QByteArray& folder, Visit visit) {
        struct CloseFolder {
            void operator()(DIR* open) const { ::closedir(open); }
        };
        const std::unique_ptr<DIR, CloseFolder> open(::opendir(folder.constData()));
        if (!open) return;
        while (read_ < largestSearch) {
            const dirent* entry = ::readdir(open.get());
            if (!entry) return;
            ++read_;
            if (!visit(*entry)) return;
        }
    }

    FileIdentity wanted_;
    int read_ = 0;
    std::set<QByteArray> searched_;
};

} // namespace

QByteArray createFileBookmark(const QString& path) {
    if (path.isEmpty()) return {};
    const QByteArray absolute = QFile::encodeName(QFileInfo(path).absoluteFilePath());
    const auto identity = identityOfFile(absolute);
    if (!identity) return {};
    QByteArray data;
    QDataStream out(&data, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_6_4);
    out << bookmarkMagic << bookmarkVersion << absolute << identity->device << identity->inode
        << identity->size << identity->modifiedNs;
    return data;
}

Result<QString> resolveFileBookmark(const QByteArray& data, const QString& storedPath) {
    const QByteArray stored = QFile::encodeName(storedPath);
    const auto atStored = identityOfFile(stored);
    const Error missing{QStringLiteral("no file at %1").arg(storedPath)};
    const auto record = parseFileBookmark(data);
    if (!record) {
        if (atStored) return storedPath;
        return missing;
    }
    const auto atRecorded = identityOfFile(record->path);
    if (atRecorded && record->identity.isOf(*atRecorded)) return QFile::decodeName(record->path);
    if (atStored && record->identity.isOf(*atStored)) return storedPath;
    // A file put in the place of the marked one is taken for it: a new render of the same shot.
    if (atRecorded) return QFile::decodeName(record->path);

    IdentitySearch search(record->identity);
    std::vector<QByteArray> folders{folderOfPath(record->path)};
    if (stored.startsWith('/') && !stored.contains('\0')) folders.push_back(folderOfPath(stored));
    for (const QByteArray& folder : folders)
        if (const QByteArray found = search.inFolder(folder); !found.isEmpty())
            return QFile::decodeName(found);
    for (const QByteArray& folder : folders)
        if (const QByteArray found = search.inSiblingsOf(folder); !found.isEmpty())
            return QFile::decodeName(found);
    // Sessions travel between machines, where neither path nor identity of the bookmark means anything.
    if (atStored) return storedPath;
    return missing;
}

} // namespace daylark
