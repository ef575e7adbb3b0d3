#pragma once

#include "model/ItemPlaces.h"

#include <QObject>
#include <QString>

#include <memory>

namespace daylark {

class Alerts;
class FileStates;
class Find;
class Library;
class Playlist;
class PlaylistEditing;
class ReviewEdits;

/// Items that go from one playlist to another: as copies, which are records of their own; moved; or as instances, the same
/// record in both. Interface thread.
class ItemTransfer : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        PlaylistEditing& playlistEditing;
        FileStates& fileStates;
        ReviewEdits& edits;
        Find& find;
        Alerts& alerts;
    };
    explicit ItemTransfer(const Surroundings& surroundings, QObject* parent = nullptr);

    /// Items of the selected playlist dropped onto another one: asks whether to copy or to move them, or, with a
    /// modifier held, whether to instance them.
    void dropOnPlaylist(const ItemList& items, const std::shared_ptr<Playlist>& target, bool withModifier);
    /// Alerts where the selection of playlists forbids a drop of items.
    [[nodiscard]] bool selectionAllowsDrop();

    void addAllItemsToNewPlaylist(); ///< of every playlist
    void addSelectedItemsToNewPlaylist(); ///< of the selected playlists, of which there are two at least
    /// The find results as a new playlist: the same records, or copies of them.
    void createPlaylistWithFoundsItems(bool instances);

Q_SIGNALS:
    void dropAccepted(); ///< the library's window comes to the front

private:
    [[nodiscard]] ItemList numberedCopies(const ItemList& items, qint64 firstNumber) const;
    void addInstances(const std::shared_ptr<Playlist>& target, const ItemList& items);
    void copyOrMove(const ItemList& items, const std::shared_ptr<Playlist>& target);
    void combine(const std::vector<std::shared_ptr<Playlist>>& playlists);
    [[nodiscard]] bool isInLibrary(const std::shared_ptr<Playlist>& playlist) const;

    Surroundings surroundings_;
};

} // namespace daylark
