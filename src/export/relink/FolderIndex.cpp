#include "export/relink/FolderIndex.h"

#include "base/FolderEntries.h"

#include <QDir>
#include <QFile>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <memory>
#include <set>
#include <utility>

namespace daylark {

namespace {

struct Child {
    std::string name;
    EntryKind kind = EntryKind::other;
};

using FolderIdentity = std::pair<dev_t, ino_t>;

std::string joined(const std::string& folder, const std::string& name) {
    return folder.back() == '/' ? folder + name : folder + '/' + name;
}

} // namespace

/// One look through a folder. Folders are kept on a list of our own, so that deep trees cost no stack; each is closed before
/// the next is opened.
class FolderIndex::Walk {
public:
    Walk(FolderIndex& index, const IndexWatch& watch)
        : index_(index)
        , watch_(watch) {}

    /// False when cancelled.
    bool through(const std::string& root) {
        noteFoldersAbove(root);
        if (!descend(root)) return false;
        linked_ = true;
        for (size_t at = 0; at < links_.size(); ++at) { // it may grow meanwhile
            const std::string link = links_[at];
            if (!descend(link)) return false;
        }
        return true;
    }

private:
    struct Level {
        qint32 folder = 0;
        std::vector<Child> children;
        size_t next = 0;
    };

    bool descend(const std::string& top) {
        std::vector<Level> levels;
        if (!enter(top, levels)) return !isCancelled();
        while (!levels.empty()) {
            Level& level = levels.back();
            if (level.next == level.children.size()) {
                levels.pop_back();
                continue;
            }
            Child& child = level.children[level.next++];
            if (child.kind == EntryKind::file) {
                addFile(std::move(child.name), level.folder);
                continue;
            }
            const std::string path = joined(index_.folders_[size_t(level.folder)], child.name);
            if (child.kind == EntryKind::linkedFolder)
                links_.push_back(path);
            else if (!enter(path, levels) && isCancelled()) // `level` may have moved
                return false;
        }
        return !isCancelled();
    }

    /// Reads a folder and puts it on top; false when it cannot be read or was looked through before.
    bool enter(const std::string& path, std::vector<Level>& levels) {
        if (isCancelled()) return false;
        const OpenFolder open(::opendir(path.c_str()));
        struct stat info {};
        if (!open || ::fstat(::dirfd(open.get()), &info) != 0) return false;
        const FolderIdentity identity(info.st_dev, info.st_ino);
        if (above_.contains(identity) || !visited_.insert(identity).second) return false;
        Level level;
        level.folder = qint32(index_.folders_.size());
        index_.folders_.push_back(path);
        while (const dirent* entry = ::readdir(open.get())) {
            if (entry->d_name[0] == '.') continue; // hidden; and the folder itself and the one above
            Child child{entry->d_name, kindOf(::dirfd(open.get()), *entry)};
            // No item can have a name that is no text.
            const bool isText = QByteArrayView(child.name.data(), qsizetype(child.name.size())).isValidUtf8();
            if (child.kind != EntryKind::other && isText) level.children.push_back(std::move(child));
        }
        std::sort(level.children.begin(), level.children.end(),
                  [](const Child& a, const Child& b) { return a.name < b.name; });
        levels.push_back(std::move(level));
        if (watch_.progress) watch_.progress(index_.count());
        return true;
    }

    void addFile(std::string name, qint32 folder) {
        const auto [known, isNew] = index_.last_.try_emplace(std::move(name), -1);
        if (linked_ && !isNew && known->second < firstLinked_) return; // found without links
        const qint32 file = qint32(index_.files_.size());
        if (!linked_) firstLinked_ = file + 1;
        index_.files_.push_back({folder, std::exchange(known->second, file)});
    }

    /// A link to one of these would lead out of the folder and round about into it again.
    void noteFoldersAbove(const std::string& root) {
        const QByteArray real = QFile::encodeName(QDir(QFile::decodeName(root.c_str())).canonicalPath());
        for (qsizetype slash = real.lastIndexOf('/'); slash >= 0 && real.size() > 1;
             slash = slash > 0 ? real.lastIndexOf('/', slash - 1) : -1) {
            struct stat info {};
            const QByteArray above = slash == 0 ? QByteArray("/") : real.left(slash);
            if (::stat(above.constData(), &info) == 0) above_.insert({info.st_dev, info.st_ino});
        }
    }

    [[nodiscard]] bool isCancelled() const { return watch_.cancelled && *watch_.cancelled; }

    FolderIndex& index_;
    const IndexWatch& watch_;
    std::set<FolderIdentity> visited_, above_;
    std::vector<std::string> links_; ///< to folders, in the order met
    bool linked_ = false;            ///< by one of these
    qint32 firstLinked_ = 0;
};

FolderIndex FolderIndex::ofFolder(const QString& folder, const IndexWatch& watch) {
    FolderIndex index;
    const QByteArray root = QFile::encodeName(QDir::cleanPath(folder));
    if (root.isEmpty() || root.contains('\0')) return index;
    return Walk(index, watch).through(root.toStdString()) ? index : FolderIndex();
}

QString FolderIndex::path(const QString& name) const {
    const QStringList all = allPaths(name);
    return all.isEmpty() ? QString() : all.last();
}

qint32 FolderIndex::lastOf(const QString& name) const {
    const auto found = last_.find(QFile::encodeName(name).toStdString());
    return found == last_.end() ? -1 : found->second;
}

QStringList FolderIndex::allPaths(const QString& name) const {
    const std::string bytes = QFile::encodeName(name).toStdString();
    QStringList paths;
    for (qint32 at = lastOf(name); at >= 0; at = files_[size_t(at)].earlier)
        paths.prepend(QFile::decodeName(joined(folders_[size_t(files_[size_t(at)].folder)], bytes).c_str()));
    return paths;
}

QStringList FolderIndex::foldersOf(const FrameRun& run) const {
    struct Holding {
        qint64 pictures = 0;
        qint32 metLast = 0, folder = 0;
        auto operator<=>(const Holding&) const = default;
    };
    std::unordered_map<qint32, Holding> byFolder;
    for (qint64 frame = 0; frame < run.count(); ++frame)
        for (qint32 at = lastOf(run.nameOf(run.numberAt(frame))); at >= 0; at = files_[size_t(at)].earlier) {
            Holding& holding = byFolder[files_[size_t(at)].folder];
            holding = {holding.pictures + 1, std::max(holding.metLast, at), files_[size_t(at)].folder};
        }
    std::vector<Holding> inOrder;
    for (const auto& [folder, holding] : byFolder)
        inOrder.push_back(holding);
    std::sort(inOrder.begin(), inOrder.end());
    QStringList folders;
    for (const Holding& holding : inOrder)
        folders << QFile::decodeName(folders_[size_t(holding.folder)].c_str());
    return folders;
}

} // namespace daylark
