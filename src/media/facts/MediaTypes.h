#pragma once

#include <QString>

namespace daylark {

enum class MediaType { other, movie, image };

/// The type by the file name's extension alone (case-insensitive), from a table of the usual containers and still formats.
[[nodiscard]] MediaType mediaTypeOfPath(const QString& path);

} // namespace daylark
