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

/// Items of one playlist of a session that has been read; the session lives as long as this.
struct SessionItems {
    SessionContents session;
    std::shared_ptr<Playlist> playlist;
    std::vector<std::shared_ptr<Movie>> movies; ///< in the playlist's own order, or as they were asked for
};

/// Reads the session and finds the items; `numbers` (from 1) picks some, empty means all. A failure has been reported when
/// there are none.
[[nodiscard]] std::optional<SessionItems> findItems(ToolContext& context, const QString& path, int playlistNumber,
                                                    const std::vector<int>& numbers = {});

/// Writes a session file as Save does (only the playlists).
void writeSession(ToolContext& context, const QString& out, const SessionContents& session);

} // namespace daylark::tool
