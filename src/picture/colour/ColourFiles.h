#pragma once

#include "base/Result.h"

#include <QString>
#include <QStringList>

/// What a colour configuration may make the colour library read: the configuration may be a stranger's, and so is every file of
/// tables that it names. The library itself opens whatever there is, in full. Looks at the disk; worker threads.
namespace daylark {

/// The configuration's own file: a regular one, of a size that configurations have, and one that does not repeat its own parts
/// so often that it would grow without end while it is read.
[[nodiscard]] Result<void> checkColourConfigFile(const QString& path);

/// Files of tables as the system spells them, those that are there: regular, and none larger than tables are. A pipe or a device
/// is refused without opening it; what is not there the library itself misses when it is wanted.
[[nodiscard]] Result<void> checkColourTableFiles(const QStringList& paths);

} // namespace daylark
