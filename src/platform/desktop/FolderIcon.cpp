#include "platform/desktop/FolderIcon.h"

#include "platform/AtomicFile.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace daylark {

namespace {

constexpr int patienceMs = 5000;

/// The store belongs to a session's daemon; without a session its tool would try to begin one.
void storeAttribute(const QString& folder, const QString& attribute, const QString& value) {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const bool session = qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
                         (!runtime.isEmpty() && QFileInfo::exists(runtime + QStringLiteral("/bus")));
    const QString gio = session ? QStandardPaths::findExecutable(QStringLiteral("gio")) : QString();
    if (gio.isEmpty()) return;
    QProcess tool;
    tool.setStandardOutputFile(QProcess::nullDevice());
    tool.setStandardErrorFile(QProcess::nullDevice());
    tool.start(gio, {QStringLiteral("set"), QFileInfo(folder).absoluteFilePath(), attribute, value});
    if (!tool.waitForFinished(patienceMs)) tool.kill();
    tool.waitForFinished(patienceMs);
}

} // namespace

void setFolderIcon(const QString& folder, const QByteArray& png) {
    const QDir inside(folder);
    const QString picture = inside.absoluteFilePath(QStringLiteral(".icon.png"));
    if (png.isEmpty() || !writeFileAtomically(picture, png)) return;
    static_cast<void>(writeFileAtomically(inside.filePath(QStringLiteral(".directory")),
                                          "[Desktop Entry]\nIcon=./.icon.png\n"));
    storeAttribute(folder, QStringLiteral("metadata::custom-icon"),
                   QString::fromLatin1(QUrl::fromLocalFile(picture).toEncoded()));
}

void setIconName(const QString& path, const QString& icon) {
    storeAttribute(path, QStringLiteral("metadata::custom-icon-name"), icon);
}

} // namespace daylark
