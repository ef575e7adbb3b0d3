#pragma once

#include <QString>
#include <QStringList>

namespace daylark {

enum class MediaType { other, movie, image };

/// The type by the file name's extension alone (case-insensitive), from a table of the usual containers and still formats.
[[nodiscard]] MediaType mediaTypeOfPath(const QString& path);

/// All extensions of such files, in lower case and in order.
[[nodiscard]] QStringList extensionsOf(MediaType type);

} // namespace daylark
