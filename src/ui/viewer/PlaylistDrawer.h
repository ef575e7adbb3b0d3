#pragma once

#include <QWidget>

#include <memory>

class QListView;

namespace daylark {

class Movie;
class ReviewEdits;
class Preferences;
class ViewerList;

/// The viewer's list beside the picture: thumbnail, name and flag of every movie, the one on screen marked,
/// the ones that next and previous pass over (skipped, missing) dimmed and named so. Choosing a row shows
/// that movie, choosing several shows the first of them; rows are dragged into another order. A press chooses
/// when the button is let go, so that a drag loads no movie. Owned by the viewer window; interface thread.
class PlaylistDrawer : public QWidget {
    Q_OBJECT
public:
    PlaylistDrawer(ViewerList& list, ReviewEdits& edits, Preferences& preferences, QWidget* parent = nullptr);
    ~PlaylistDrawer() override;
    [[nodiscard]] QListView* view() const;
    void movieUpdated(const std::shared_ptr<Movie>& movie); ///< its thumbnail or flag is another

private:
    class Rows;
    class RowDelegate;
    class RowsView;
    void showSelection(); ///< the list's selection, the movie on screen in sight
    void adoptSelection();

    ViewerList& list_;
    std::unique_ptr<Rows> rows_;
    RowsView* view_;
    bool showing_ = false; ///< the view is being given the list's selection
};

} // namespace daylark
