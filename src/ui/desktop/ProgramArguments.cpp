#include "ui/desktop/ProgramArguments.h"

#include "app/links/ReviewLink.h"
#include "base/FolderEntries.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace daylark {

namespace {

/// Desktops hand files over as addresses too.
QString localPath(const QString& argument, const QDir& folder) {
    if (argument.startsWith(QLatin1String("file:"), Qt::CaseInsensitive)) {
        const QString path = QUrl(argument).toLocalFile();
        if (!path.isEmpty()) return QDir::cleanPath(path);
    }
    return QDir::cleanPath(folder.absoluteFilePath(argument));
}

} // namespace

ProgramArguments ProgramArguments::read(const QStringList& given, const QDir& folder) {
    ProgramArguments arguments;
    for (const QString& argument : given) {
        if (isReviewLink(argument)) {
            arguments.toOpen << argument;
            continue;
        }
        const QString path = localPath(argument, folder);
        if (const auto lost = lostName(path)) {
            arguments.failures << shownName(*lost) + QStringLiteral(": left out, not named in UTF-8");
            arguments.toOpen << path; // the library says so, too: nobody may read what is said here
            continue;
        }
        if (!argument.isEmpty() && QFileInfo::exists(path))
            arguments.toOpen << path;
        else
            arguments.failures << argument + QStringLiteral(": no such file or folder");
    }
    return arguments;
}

} // namespace daylark
