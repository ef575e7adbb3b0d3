#pragma once

#include <QPersistentModelIndex>
#include <QTableView>

#include <array>
#include <optional>

namespace daylark {

class BookmarkRows;

/// A button that stands in every row of the bookmark table.
struct BookmarkButton {
    int tag;
    int column;        ///< of `BookmarkRows`
    int place;         ///< from the left of its cell
    const char* title; ///< for menu and tooltip
};

/// The bookmark table: its rows' buttons are painted, not made, so that a thousand rows cost no more than
/// those in sight. Pressing one announces its row and tag. Interface thread.
class BookmarkTable : public QTableView {
    Q_OBJECT
public:
    static constexpr int buttonSide = 24;
    static const std::array<BookmarkButton, 8> buttons;

    BookmarkTable(BookmarkRows& rows, QWidget* parent);

    [[nodiscard]] QRect buttonRect(int row, int tag) const; ///< in the viewport
    [[nodiscard]] QString buttonTitle(const BookmarkButton& button, int row) const;

Q_SIGNALS:
    void buttonPressed(int row, int tag);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    class Delegate;
    struct Hit {
        QPersistentModelIndex cell;
        int tag = 0;
        bool operator==(const Hit& other) const { return cell == other.cell && tag == other.tag; }
    };
    [[nodiscard]] std::optional<Hit> hitAt(const QPoint& position) const;
    [[nodiscard]] static QRect rectIn(const QRect& cell, const BookmarkButton& button);
    void setHovered(const std::optional<Hit>& hit);
    bool pressButton(QMouseEvent* event);
    void updateRowOf(const std::optional<Hit>& hit);

    BookmarkRows& rows_;
    std::optional<Hit> hovered_, pressed_;
};

} // namespace daylark
