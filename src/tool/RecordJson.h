#pragma once

#include "model/Session.h"

#include <QJsonArray>
#include <QJsonObject>

namespace daylark {
class Preferences;
}

namespace daylark::tool {

/// A session as JSON under the records' own field names: images as {"image": name or "W x H"}, notes as plain
/// text, colours as "#rrggbb", and with each movie an `id`, the same number for the same object in several
/// playlists.
[[nodiscard]] QJsonObject sessionJson(const SessionContents& session, const Preferences& preferences);

/// The items as the library lists them, an object a playlist: `name` and `items`, each with what the library's
/// columns say of it under the fields that they show; a column of icons says true. What has nothing to say is
/// left out.
[[nodiscard]] QJsonArray listedItemsJson(const SessionContents& session, const Preferences& preferences);

} // namespace daylark::tool
