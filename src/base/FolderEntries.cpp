#include "base/FolderEntries.h"

#include "base/PlainText.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>

namespace daylark {

namespace {

constexpr qsizetype mostShown = 3, longestShown = 60;

EntryKind kindOfMode(mode_t mode) {
    return S_ISREG(mode) ? EntryKind::file : S_ISDIR(mode) ? EntryKind::folder : EntryKind::other;
}

/// How many bytes of it are one character; 0: none.
qsizetype characterAt(const QByteArray& name, qsizetype at) {
    for (qsizetype bytes = 1; bytes <= 4 && at + bytes <= name.size(); ++bytes)
        if (QByteArrayView(name).sliced(at, bytes).isValidUtf8()) return bytes;
    return 0;
}

} // namespace

EntryKind kindOf(int folder, const dirent& entry) {
    if (entry.d_type == DT_REG) return EntryKind::file;
    if (entry.d_type == DT_DIR) return EntryKind::folder;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return EntryKind::other;
    struct stat info {};
    if (::fstatat(folder, entry.d_name, &info, AT_SYMLINK_NOFOLLOW) != 0) return EntryKind::other;
    if (!S_ISLNK(info.st_mode)) return kindOfMode(info.st_mode);
    if (::fstatat(folder, entry.d_name, &info, 0) != 0) return EntryKind::other; // leads nowhere
    return S_ISDIR(info.st_mode) ? EntryKind::linkedFolder : kindOfMode(info.st_mode);
}

std::vector<FolderEntry> entriesOf(const QString& folder) {
    std::vector<FolderEntry> entries;
    const OpenFolder open(::opendir(QFile::encodeName(folder).constData()));
    if (!open) return entries;
    while (const dirent* entry = ::readdir(open.get()))
        if (entry->d_name[0] != '.') entries.push_back({entry->d_name, kindOf(::dirfd(open.get()), *entry)});
    return entries;
}

std::optional<QString> textOfName(const QByteArray& name) {
    return name.isValidUtf8() ? std::optional(QString::fromUtf8(name)) : std::nullopt;
}

QString shownName(const QByteArray& name) {
    QString shown;
    for (qsizetype at = 0; at < name.size();) {
        const qsizetype bytes = characterAt(name, at);
        shown += bytes > 0 ? QString::fromUtf8(name.sliced(at, bytes))
                           : QStringLiteral("\\x") + QString::fromLatin1(name.sliced(at, 1).toHex().toUpper());
        at += std::max<qsizetype>(1, bytes);
    }
    return plain::line(shown);
}

std::optional<QByteArray> lostName(const QString& path) {
    if (!path.contains(QChar::ReplacementCharacter)) return std::nullopt;
    const QFileInfo file(path);
    if (file.exists()) return std::nullopt;
    for (const FolderEntry& entry : entriesOf(file.path()))
        if (!entry.name.isValidUtf8() && QString::fromUtf8(entry.name) == file.fileName()) return entry.name;
    return file.fileName().toUtf8(); // a folder above it has such a name
}

void LeftOutNames::add(const QByteArray& name) {
    ++count;
    if (shown.size() < mostShown) shown.append(plain::line(shownName(name), longestShown));
}

QString LeftOutNames::list() const {
    return shown.join(QStringLiteral(", ")) + (count > shown.size() ? QStringLiteral(", …") : QString());
}

} // namespace daylark
