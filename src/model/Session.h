#pragma once

#include "archive/Archivable.h"
#include "base/Result.h"
#include "model/Playlist.h"
#include "platform/AtomicFile.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace daylark {

/// What a session file holds: the playlists in display order and, in the temporary session only, the selection and the
/// writer's version. A value that shares its records; whoever holds it on another thread must be their only holder.
struct SessionContents {
    std::vector<std::shared_ptr<Playlist>> playlists;
    bool hasPlaylists = false; ///< false when the file had no "playlists"
    std::optional<qint64> lastSelectedPlaylistIndex;
    struct Version {
        int majorVersion = 1, minorVersion = 14, patchVersion = 1, build = 431;
    };
    std::optional<Version> version;
    QString colourConfiguration; ///< by which its pictures are brought to a display; empty: as the preference says
    /// Of an archive without "playlists": the playlist that is its root or stands in its root. Never written.
    std::shared_ptr<Playlist> lonePlaylist;
};

/// The classes that session archives hold.
[[nodiscard]] const ArchiveClasses& recordClasses();

/// Independent copies of every record, cheaply (values are shared until somebody changes them), identity kept: a movie that
/// stood in two playlists still does. Interface thread; the copy may then be encoded by a worker while the user goes on.
[[nodiscard]] SessionContents snapshotOf(const SessionContents& contents);

/// The archive's bytes (root dictionary, keys in their order, named icons with pictures). Interface thread, or on copies.
[[nodiscard]] QByteArray encodeSession(const SessionContents& contents);
[[nodiscard]] Result<SessionContents> decodeSession(const QByteArray& bytes); ///< worker threads; the records are the caller's

/// A keyed-archive round trip: new, independent records.
[[nodiscard]] std::vector<std::shared_ptr<Movie>> copyMovies(const std::vector<std::shared_ptr<Movie>>& movies);
[[nodiscard]] std::vector<std::shared_ptr<Bookmark>> copyBookmarks(const std::vector<std::shared_ptr<Bookmark>>& bookmarks);

/// Reads a session file. Worker threads. Errors: not readable, no archive.
[[nodiscard]] Result<SessionContents> readSessionFile(const QString& path);
/// Writes bytes made by `encodeSession` whole or not at all. Worker threads.
[[nodiscard]] Result<void> writeSessionFile(const QString& path, const QByteArray& bytes,
                                            Readers readers = Readers::byUmask);
/// Sets a file that could not be read aside beside itself ("name (unreadable 2026-11-21 13.05.09).dls"), so that nothing
/// overwrites it; the new path.
[[nodiscard]] Result<QString> setFileAside(const QString& path);

} // namespace daylark
