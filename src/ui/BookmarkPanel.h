#pragma once

#include <QWidget>

#include <memory>

class QTableView;

namespace daylark {

class Bookmark;
class Commands;
class UserDefaults;
class ViewerBookmarks;

/// The bookmarks of the movie on screen as a table, its two texts editable in place, the rows that cover the
/// frame on screen brightened. A double-click beside the texts, Return or the button goes to the bookmark's
/// first frame. Owned by the viewer window; interface thread.
class BookmarkPanel : public QWidget {
    Q_OBJECT
public:
    enum Column {
        activeColumn,
        firstTCColumn,
        lastTCColumn,
        firstFrameColumn,
        lastFrameColumn,
        durationColumn,
        descriptionColumn,
        noteColumn,
        columnCount
    };

    /// `commands` has "viewer.addBookmark".
    BookmarkPanel(ViewerBookmarks& bookmarks, Commands& commands, UserDefaults& defaults,
                  QWidget* parent = nullptr);
    ~BookmarkPanel() override;

    [[nodiscard]] QTableView* table() const { return table_; }
    [[nodiscard]] std::shared_ptr<Bookmark> selectedBookmark() const;
    void goToSelected();
    void deleteSelected();

private:
    class Rows;
    void refresh();
    void arrangeColumns();

    ViewerBookmarks& bookmarks_;
    UserDefaults& defaults_;
    std::unique_ptr<Rows> rows_;
    QTableView* table_;
};

} // namespace daylark
