#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

namespace daylark {

/// Whom a new file is for. One that is replaced keeps who may read it.
enum class Readers {
    byUmask, ///< what a person saves somewhere
    owner    ///< what the program keeps for itself: 0600, also where the old one was open to others
};

/// Makes the folder and those above it, 0700 each; one that exists keeps its mode. False when there is none then.
bool makePrivateFolder(const QString& path);

/// Writes a file whole or not at all: a temporary file beside the target, flushed to the disk, renamed over it. A crash, a
/// kill, a full disk or a read-only folder leaves the old file as it was. What stands there and is no file (a device, a pipe,
/// a folder) is refused. Worker threads.
[[nodiscard]] Result<void> writeFileAtomically(const QString& path, const QByteArray& bytes,
                                               Readers readers = Readers::byUmask);

} // namespace daylark
