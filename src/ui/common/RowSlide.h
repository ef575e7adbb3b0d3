#pragma once

#include <QPixmap>
#include <QVariantAnimation>
#include <QWidget>

#include <functional>
#include <map>

class QTableView;

namespace daylark {

/// Rows of a table that slide to where they now stand, over the table and for a moment only: the table itself
/// already is what it will be, and takes clicks meanwhile. Rows that went are slid over by what follows them.
/// `identity` tells a row through its moves. A child of the table's viewport; interface thread.
class RowSlide : public QWidget {
    Q_OBJECT
public:
    RowSlide(QTableView* table, std::function<const void*(int row)> identity);
    void remember(); ///< before the change
    void play();     ///< after it; nothing happens when no row in sight moved

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    using Places = std::map<const void*, int>; ///< row to its y
    [[nodiscard]] Places placesInSight() const;

    QTableView* table_;
    std::function<const void*(int)> identity_;
    QVariantAnimation progress_;
    Places before_, after_;
    QPixmap pictureBefore_, pictureAfter_;
    int rowHeight_ = 0;
};

} // namespace daylark
