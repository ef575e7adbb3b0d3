#pragma once

#include "model/Session.h"
#include "tool/ToolContext.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace daylark::tool {

/// FILE, --playlist P and --item I of the commands that work on one item; both count from 1.
struct SessionItemArguments {
    std::string file;
    int playlist = 1, item = 1;
    void addTo(CLI::App& command);
};

/// One item of a session that has been read; the session lives as long as this.
struct SessionItem {
    SessionContents session;
    std::shared_ptr<Movie> movie;
};

/// Reads the session and finds the item; a failure has been reported when there is none.
[[nodiscard]] std::optional<SessionItem> findItem(ToolContext& context,
                                                  const SessionItemArguments& arguments);

/// A playlist of a session by its number from 1; null, and reported, when there is none.
[[nodiscard]] std::shared_ptr<Playlist> findPlaylist(ToolContext& context, const SessionContents& session,
                                                     const QString& path, int number);

/// The items of a playlist in its own order; `numbers` (from 1) picks some, empty means all.
[[nodiscard]] std::optional<std::vector<std::shared_ptr<Movie>>>
itemsOf(ToolContext& context, const Playlist& playlist, const QString& path, const std::vector<int>& numbers);

/// Writes a session file as Save does (only the playlists).
void writeSession(ToolContext& context, const QString& out, const SessionContents& session);

} // namespace daylark::tool
