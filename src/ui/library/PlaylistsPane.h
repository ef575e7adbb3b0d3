#pragma once

#include <QTableView>
#include <QWidget>

namespace daylark {

class Commands;
class DropHint;
class PlaylistController;
class PlaylistsModel;

/// The left side of the library: the playlists with their count, made, renamed, removed and reordered here.
/// Shows what the library holds and passes every action on. Interface thread.
class PlaylistsPane : public QWidget {
    Q_OBJECT
public:
    PlaylistsPane(PlaylistController& controller, const Commands& commands, QWidget* parent = nullptr);

    [[nodiscard]] QTableView* table() const { return table_; }
    void editSelectedName(); ///< opens the editor in the selected row
    void refreshHint(); ///< the drop hint stands while there are no playlists and the preference wants it

Q_SIGNALS:
    void menuRequested(const QPoint& globalPosition, bool onPlaylist);

private:
    void makeTable();
    void showLibrarySelection();

    PlaylistController& controller_;
    PlaylistsModel* model_;
    QTableView* table_ = nullptr;
    DropHint* hint_ = nullptr;
    bool following_ = false; ///< the selection is being taken over from the library
};

} // namespace daylark
