#pragma once

#include "archive/Archivable.h"
#include "archive/Value.h"
#include "base/Result.h"

#include <QByteArray>

#include <functional>

namespace daylark {

/// Gives the TIFF bytes of a named icon, so that a reader without our icons still sees a picture; empty when
/// unknown.
using NamedImageData = std::function<QByteArray(const QString& name)>;

/// Writes one keyed archive ($top {root}) as a binary property list. Deterministic: the same graph gives the
/// same bytes. Any thread, as long as nobody changes the graph meanwhile.
[[nodiscard]] QByteArray archiveRoot(const Value& root, const NamedImageData& namedImages = {});

/// Reads a keyed archive (binary or XML property list) and gives its root. Bytes from strangers: wrong types,
/// missing keys, cycles, out-of-range UIDs, absurd counts and deep nesting give nil in that place, or an
/// error for the whole; never a crash or more memory than a small multiple of `bytes`. Any thread; the
/// records are the caller's alone until it shares them.
[[nodiscard]] Result<Value> unarchiveRoot(const QByteArray& bytes, const ArchiveClasses& classes);

/// As above, with all of $top as a dictionary (archives made elsewhere may name their roots otherwise).
[[nodiscard]] Result<Value> unarchiveTop(const QByteArray& bytes, const ArchiveClasses& classes);

/// An independent copy by a round trip through an archive: records inside are new, shared ones stay shared
/// among themselves.
[[nodiscard]] Value deepCopy(const Value& root, const ArchiveClasses& classes);

} // namespace daylark
