#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

namespace daylark {

/// Writes a file whole or not at all: a temporary file beside the target, flushed to the disk, renamed over it. A crash, a
/// kill, a full disk or a read-only folder leaves the old file as it was. Worker threads.
[[nodiscard]] Result<void> writeFileAtomically(const QString& path, const QByteArray& bytes);

} // namespace daylark
