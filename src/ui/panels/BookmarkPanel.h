#pragma once

#include "ui/panels/BookmarkRows.h"

#include <QWidget>

#include <memory>

class QHBoxLayout;

namespace daylark {

class BookmarkTable;
class Commands;
class RowSlide;
class Preferences;
class ViewerBookmarks;

/// The bookmarks of the movie on screen as a table with buttons in every row, its texts and lengths editable
/// in place, the rows that cover the frame on screen brightened; over it what is done with all of them. A
/// double-click beside the texts or Return goes to the bookmark's first frame, Delete deletes it, the context
/// menu has every button of the row. Owned by the viewer window; interface thread.
class BookmarkPanel : public QWidget {
    Q_OBJECT
public:
    /// `commands` has "viewer.addBookmark" and those of `addBookmarkCommands`.
    BookmarkPanel(ViewerBookmarks& bookmarks, Commands& commands, Preferences& preferences,
                  QWidget* parent = nullptr);
    ~BookmarkPanel() override;

    [[nodiscard]] BookmarkTable* table() const { return table_; }
    [[nodiscard]] std::shared_ptr<Bookmark> selectedBookmark() const;
    void clearSelection();
    void goToSelected();
    // By key: of the row selected, when the table has the focus, else of the latest bookmark on this frame.
    [[nodiscard]] bool hasRowForKeys() const;
    [[nodiscard]] bool hasSelection() const;
    void editText(); ///< the text takes the keys
    void toggleLoop();
    void deleteSelected();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] QHBoxLayout* buttonStrip(Commands& commands);
    void arrangeColumns();
    void giveTextsRoom();
    void showProdColumns();
    void refresh();
    [[nodiscard]] int rowForKeys() const; ///< -1: none
    void showRowMenu(const QPoint& position);
    void deleteRow(int row);

    ViewerBookmarks& bookmarks_;
    Preferences& preferences_;
    std::unique_ptr<BookmarkRows> rows_;
    BookmarkTable* table_;
    RowSlide* slide_;
    int timecodeWidth_ = 0;
};

} // namespace daylark
