#pragma once

#include "model/Bookmark.h"

#include <QAbstractTableModel>
#include <QFont>

#include <memory>
#include <vector>

namespace daylark {

class ViewerBookmarks;

/// The bookmarks of the movie on screen as the rows of a table. Shows what the records say; what is typed
/// goes through the viewer's bookmarks. A change of the list keeps the rows that stayed, so that selection,
/// scroll position and an open field stay with their bookmark. Interface thread.
class BookmarkRows : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column {
        activeColumn,
        firstTCColumn,
        lastTCColumn,
        firstFrameColumn, ///< with the buttons "go to first", "set in"
        lastFrameColumn,  ///< "go to last", "set out"
        durationColumn,   ///< "from duration"
        descriptionColumn,
        noteColumn,
        actionsColumn, ///< "mute", "loop", "delete"
        firstProdColumn, ///< the production's numbers of both; behind the others, since stored widths count on the order
        lastProdColumn,
        columnsInAll
    };

    explicit BookmarkRows(ViewerBookmarks& bookmarks, QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    [[nodiscard]] std::shared_ptr<Bookmark> at(int row) const;                ///< null when there is none
    [[nodiscard]] int rowOf(const std::shared_ptr<Bookmark>& bookmark) const; ///< -1 when it is not shown
    [[nodiscard]] bool isUpToDate() const; ///< list and order are the viewer's
    void reload();                         ///< takes the viewer's list and looks
    void rowsChanged();                    ///< only looks differ

    [[nodiscard]] static bool isText(int column) {
        return column == descriptionColumn || column == noteColumn;
    }
    [[nodiscard]] static QFont numberFont();

private:
    using Bookmarks = std::vector<std::shared_ptr<Bookmark>>;
    void takeMembers(const Bookmarks& now);
    void takeOrder(const Bookmarks& now);
    [[nodiscard]] QString prodOf(const Bookmark& bookmark, int column) const;
    [[nodiscard]] bool isActive(const std::shared_ptr<Bookmark>& bookmark) const;
    [[nodiscard]] QString imageName(const std::shared_ptr<Bookmark>& bookmark) const;

    ViewerBookmarks& source_;
    Bookmarks bookmarks_;
    QFont numbers_, words_;
};

} // namespace daylark
