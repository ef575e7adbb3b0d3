#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

namespace daylark {

/// Bookmark data of a file: our own small record (path, device, inode, size, modification time) that finds the file again
/// after it was renamed or moved within its folder or to a sibling folder. Touches the disk: worker threads (or the tool).

/// Null when there is no such file.
[[nodiscard]] QByteArray createFileBookmark(const QString& path);

/// The file's path now. Data made elsewhere, cut short or null resolves to `storedPath` if a file is there. Errors: no file.
[[nodiscard]] Result<QString> resolveFileBookmark(const QByteArray& data, const QString& storedPath);

} // namespace daylark
