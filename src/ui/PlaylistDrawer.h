#pragma once

#include <QWidget>

#include <memory>

class QListView;

namespace daylark {

class Movie;
class ReviewEdits;
class UserDefaults;
class ViewerList;

/// The viewer's list beside the picture: thumbnail, name and flag of every movie, the one on screen marked.
/// Choosing a row shows that movie. Owned by the viewer window; interface thread.
class PlaylistDrawer : public QWidget {
    Q_OBJECT
public:
    PlaylistDrawer(ViewerList& list, ReviewEdits& edits, UserDefaults& defaults, QWidget* parent = nullptr);
    ~PlaylistDrawer() override;
    [[nodiscard]] QListView* view() const { return view_; }
    void movieUpdated(const std::shared_ptr<Movie>& movie); ///< its thumbnail or flag is another

private:
    class Rows;
    class RowDelegate;
    void showSelection();

    ViewerList& list_;
    std::unique_ptr<Rows> rows_;
    QListView* view_;
};

} // namespace daylark
