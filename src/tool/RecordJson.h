#pragma once

#include "model/Session.h"

#include <QJsonObject>

namespace daylark::tool {

/// A session as JSON under the records' own field names: images as {"image": name or "W x H"}, notes as plain
/// text, colours as "#rrggbb", and with each movie an `id`, the same number for the same object in several
/// playlists.
[[nodiscard]] QJsonObject sessionJson(const SessionContents& session);

} // namespace daylark::tool
