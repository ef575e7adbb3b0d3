#include "app/SessionMigration.h"

#include "app/Library.h"

namespace daylark {

void updatePlaylistsWithNewVariables(Library& library) {
    for (const auto& playlist : library.playlists()) {
        playlist->updateCount();
        if (!playlist->playlistType.isNull()) continue;
        const bool divider = playlist->isDivider && numberToBool(*playlist->isDivider);
        playlist->playlistType = divider ? QStringLiteral("divider") : QStringLiteral("playlist");
        library.announcePlaylist(playlist);
    }
}

} // namespace daylark
