#pragma once

#include <QByteArray>
#include <QString>

namespace daylark {

/// How a folder looks in file browsers. Worker threads; fails silently: where nobody keeps such things the folder has its usual
/// look.

/// The picture (PNG) travels inside the folder, as hidden files that name each other by relative paths (".directory"); browsers
/// that ask the desktop's own store find it there too.
void setFolderIcon(const QString& folder, const QByteArray& png);

/// An icon of the desktop's theme for a folder or a file, in the desktop's own store: nothing is put into the folder.
void setIconName(const QString& path, const QString& icon);

} // namespace daylark
