#include "picture/colour/ColourFiles.h"

#include "base/jobs/Patience.h"
#include "media/container/RegularFile.h"

#include <QFile>
#include <QRegularExpression>

#include <sys/stat.h>

#include <optional>

namespace daylark {

namespace {

constexpr std::chrono::seconds tablesPatience{20}; // hundreds of them, perhaps on a share
constexpr qint64 largestConfig = 8 << 20, largestTable = 256 << 20;
/// An alias stands for a part once more, and parts may hold aliases: each multiplies what was there before.
constexpr qsizetype mostAliases = 12;

qsizetype aliasesIn(const QString& text) {
    static const QRegularExpression alias(QStringLiteral("(?:^|[\\s\\[{,:-])\\*[^\\s\\[\\]{},]"));
    qsizetype count = 0;
    for (auto each = alias.globalMatch(text); each.hasNext() && count <= mostAliases; each.next())
        ++count;
    return count;
}

/// The library's reader of one kind looks for the end of the remarks beyond the file's own end, and finds it nowhere.
bool neverEnds(const QString& path) {
    constexpr qint64 head = 4096;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !file.peek(head).toUpper().contains("CSPLUTV100")) return false;
    const QByteArray text = file.read(largestTable).toUpper();
    const qsizetype begin = text.indexOf("BEGIN METADATA");
    return begin >= 0 && text.indexOf("END METADATA", begin) < 0;
}

/// What is wrong with one of them; null: nothing.
QString troubleOf(const QStringList& paths) {
    for (const QString& path : paths) {
        struct stat info {};
        if (::stat(QFile::encodeName(path).constData(), &info) != 0 || S_ISDIR(info.st_mode)) continue;
        if (!S_ISREG(info.st_mode)) return QStringLiteral("the colour configuration names %1, which is no file").arg(path);
        if (qint64(info.st_size) > largestTable)
            return QStringLiteral("the colour configuration names %1, which is too large for a table").arg(path);
        if (neverEnds(path)) return QStringLiteral("the colour configuration names %1, whose remarks have no end").arg(path);
    }
    return {};
}

} // namespace

Result<void> checkColourConfigFile(const QString& path) {
    const Result<RegularFile> found = RegularFile::at(path);
    if (!found) return Error{QStringLiteral("%1: %2").arg(path, found.error().text)};
    if (found->size > largestConfig) return Error{QStringLiteral("%1 is too large for a colour configuration").arg(path)};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return Error{QStringLiteral("%1: %2").arg(path, file.errorString())};
    if (aliasesIn(QString::fromUtf8(file.read(largestConfig))) > mostAliases)
        return Error{QStringLiteral("%1 repeats its own parts too often").arg(path)};
    return {};
}

Result<void> checkColourTableFiles(const QStringList& paths) {
    const auto trouble =
        askWithPatience<QString>([paths] { return troubleOf(paths); }, tablesPatience);
    if (!trouble) return Error{QStringLiteral("the disk or share with the colour configuration's tables does not answer")};
    if (!trouble->isEmpty()) return Error{*trouble};
    return {};
}

} // namespace daylark
