#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <dirent.h>

#include <memory>
#include <optional>
#include <vector>

/// What folders hold, as the system itself lists it. A file system keeps names as bytes, the program knows files by texts: a
/// name that is not UTF-8 could never be opened again, and is counted and told instead of being passed over in silence. Waits
/// for the disk; any thread but the interface's.
namespace daylark {

enum class EntryKind { file, folder, linkedFolder, other };

struct FolderEntry {
    QByteArray name;
    EntryKind kind = EntryKind::other;
};

/// A folder that is being read, closed when it goes.
struct CloseFolder {
    void operator()(DIR* open) const { ::closedir(open); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

/// Of an entry just read from a folder; a link is what it leads to. Devices, pipes, sockets and what leads nowhere are `other`:
/// nothing to play, and to open one could wait for ever.
[[nodiscard]] EntryKind kindOf(int folder, const dirent& entry);
/// In no order, hidden ones left out; none where the folder cannot be read.
[[nodiscard]] std::vector<FolderEntry> entriesOf(const QString& folder);

/// The text of a name; none where it is not UTF-8.
[[nodiscard]] std::optional<QString> textOfName(const QByteArray& name);
/// For showing alone: every byte that is not UTF-8 as "\xE9".
[[nodiscard]] QString shownName(const QByteArray& name);
/// What the system calls a path that came as a text already, when the text has lost bytes of it: a drop, a command line. The
/// last part alone is looked for. None where nothing was lost, or it is there as it is spelt.
[[nodiscard]] std::optional<QByteArray> lostName(const QString& path);

/// Files and folders whose names are not UTF-8: how many, and the first of them as they are shown. A value.
struct LeftOutNames {
    qint64 count = 0;
    QStringList shown;

    void add(const QByteArray& name);
    [[nodiscard]] QString list() const; ///< "caf\xE9.mov, \xFF\xFE/, …"
    bool operator==(const LeftOutNames&) const = default;
};

} // namespace daylark
