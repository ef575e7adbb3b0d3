#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

namespace daylark {

/// A file that is being written: it has a hidden name beside its final one (".clip.mov.unfinished") and gets the final one
/// only by `commit`, whole and synced. Without a commit the destructor removes it; what a kill leaves is taken over by the
/// next one for the same final name, and never seen as the file itself. Owned by the job that writes; worker threads.
class UnfinishedFile {
public:
    /// What happens to a file that has the final name already.
    enum class Existing { keep, replace };

    /// The folder must exist. Errors: the reason in the system's words, without a path.
    [[nodiscard]] static Result<UnfinishedFile> beside(const QString& finalPath);
    /// As above for who writes by the handle alone: without any name where the file system can, so that a kill leaves nothing.
    [[nodiscard]] static Result<UnfinishedFile> nameless(const QString& finalPath);
    UnfinishedFile(UnfinishedFile&& other) noexcept;
    UnfinishedFile& operator=(UnfinishedFile&& other) noexcept;
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile();

    /// Open for reading and writing, empty, at its beginning. Stays ours.
    [[nodiscard]] int handle() const { return handle_; }
    /// For writers that open a file by its name themselves; null while it has none.
    [[nodiscard]] QString path() const;
    [[nodiscard]] QString finalPath() const;
    /// Writes all of it at the handle's position. Errors as above.
    [[nodiscard]] Result<void> write(const QByteArray& bytes);

    /// Syncs and renames, once. `keep`: an error, and nothing is touched, when there is something of that name. A folder of
    /// that name is never replaced.
    [[nodiscard]] Result<void> commit(Existing existing);

private:
    UnfinishedFile(int handle, QByteArray temporary, QByteArray target);
    void discard();
    [[nodiscard]] int giveName(Existing existing);

    int handle_ = -1;
    QByteArray temporary_, final_; ///< as the file system spells them; no temporary one: committed, or nameless
    bool committed_ = false;
};

/// Makes what was renamed or made in the file's folder last through a power cut. Not every file system can.
void syncFolderOf(const QString& path);

} // namespace daylark
