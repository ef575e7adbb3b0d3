#pragma once

#include <QTableView>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace daylark {

class Commands;
class DropHint;
class Movie;
class PlaylistController;
class PlaylistsModel;

/// The left side of the library: the playlists with their count, made, renamed, removed and reordered here; items are
/// dropped onto them.
/// Shows what the library holds and passes every action on. Interface thread.
class PlaylistsPane : public QWidget {
    Q_OBJECT
public:
    PlaylistsPane(PlaylistController& controller, const Commands& commands, QWidget* parent = nullptr);

    [[nodiscard]] QTableView* table() const { return table_; }
    /// Which items these rows of a drag are; whoever shows the items knows.
    std::function<std::vector<std::shared_ptr<Movie>>(const std::vector<qsizetype>& rows)> draggedItems;
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
