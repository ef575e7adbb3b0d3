#pragma once

#include "ui/common/Theme.h"

#include <QAbstractItemView>
#include <QDataStream>
#include <QDrag>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QIODevice>
#include <QListView>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QUrl>

#include <algorithm>
#include <functional>
#include <optional>
#include <set>
#include <type_traits>
#include <utility>
#include <vector>

namespace daylark {

/// What item views share in drag and drop: files from outside, and their own rows dragged to a gap between
/// rows, which a line shows. A drag carries row numbers only, so it means something inside this program
/// alone.
struct RowDrag {
    /// The files of a drag; empty when it holds none.
    [[nodiscard]] static QStringList filesOf(const QMimeData& data) {
        QStringList files;
        const QList<QUrl> urls = data.urls();
        for (const QUrl& url : urls)
            if (url.isLocalFile()) files << QFileInfo(url.toLocalFile()).absoluteFilePath();
        return files;
    }
    [[nodiscard]] static QByteArray encode(const std::vector<qsizetype>& rows) {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        for (const qsizetype row : rows)
            stream << qint64(row);
        return bytes;
    }
    [[nodiscard]] static std::vector<qsizetype> decode(const QByteArray& bytes) {
        std::vector<qsizetype> rows;
        QDataStream stream(bytes);
        for (qint64 row = 0; !stream.atEnd();) {
            stream >> row;
            if (stream.status() != QDataStream::Ok) break;
            rows.push_back(qsizetype(row));
        }
        return rows;
    }
    /// The selected rows of a view, ascending, each once.
    [[nodiscard]] static std::vector<qsizetype> selectedRows(const QAbstractItemView& view) {
        std::set<qsizetype> rows;
        const QItemSelection selection = view.selectionModel()->selection();
        for (const QItemSelectionRange& range : selection)
            for (int row = range.top(); row <= range.bottom(); ++row)
                rows.insert(row);
        return {rows.begin(), rows.end()};
    }
};

/// A view (QTableView, QListView) whose rows can be dragged into another order and that takes files, and rows of another
/// view onto its own, unless nobody is there to take them: then a drag with files is refused, whatever else it holds. `View`
/// lays its rows out downwards; with `sideways` the gap stands left or right of an item instead. Interface thread.
template<class View>
class ReorderView : public View {
public:
    ReorderView(const QString& rowsType, bool sideways, QWidget* parent)
        : View(parent)
        , rowsType_(rowsType)
        , sideways_(sideways) {
        this->setDragEnabled(true);
        this->setAcceptDrops(true);
        this->viewport()->setAcceptDrops(true);
        this->setDragDropMode(QAbstractItemView::DragDrop);
        this->setDropIndicatorShown(false); // we draw our own
    }

    std::function<void(const QStringList&)> filesDropped;
    std::function<void(const std::vector<qsizetype>&, qsizetype)>
        rowsDropped; ///< rows and the row the gap stands before

    /// Rows of another view, dropped onto a row here: their type, whether the row takes them, and the drop with the
    /// modifiers held at it.
    QString ontoType;
    std::function<bool(qsizetype row)> takesOnto;
    std::function<void(const std::vector<qsizetype>& rows, qsizetype onto, Qt::KeyboardModifiers held)>
        rowsDroppedOnto;
    std::function<bool()> mayReorder; ///< empty: always; else asked while rows of its own hang over it
    /// What hangs on the pointer, and what is done before and after a drag of rows from here.
    std::function<QPixmap(const std::vector<qsizetype>&)> pictureOf;
    std::function<void(const std::vector<qsizetype>&)> dragBegins;
    std::function<void()> dragEnds;

    std::function<void()>
        doubleClickEnded; ///< over a row, the button let go: the window may hide now without losing that

    [[nodiscard]] qsizetype gapAt(const QPoint& position) const {
        const qsizetype count = this->model() ? this->model()->rowCount() : 0;
        const QModelIndex hit = this->indexAt(position);
        if (!hit.isValid()) return nearestGap(position, count);
        const QRect place = this->visualRect(hit);
        const bool behind = sideways_ ? position.x() > place.center().x() : position.y() > place.center().y();
        return hit.row() + (behind ? 1 : 0);
    }

protected:
    void startDrag(Qt::DropActions) override {
        const std::vector<qsizetype> rows = RowDrag::selectedRows(*this);
        if (rows.empty()) return;
        auto* mime = new QMimeData;
        mime->setData(rowsType_, RowDrag::encode(rows));
        auto* drag = new QDrag(this);
        drag->setMimeData(mime);
        drag->setPixmap(pictureOf ? pictureOf(rows)
                                  : theme::icon(QStringLiteral("dl-grabIcon-01.png")).pixmap(24, 24));
        if (dragBegins) dragBegins(rows);
        drag->exec(Qt::CopyAction);
        // What the drop asks comes on the next turn, and may still want to know what was dragged.
        if (dragEnds) QMetaObject::invokeMethod(this, dragEnds, Qt::QueuedConnection);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override {
        const bool onRow = this->indexAt(event->position().toPoint()).isValid();
        View::mouseDoubleClickEvent(event);
        doubleClicked_ = onRow && event->button() == Qt::LeftButton;
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        View::mouseReleaseEvent(event);
        if (std::exchange(doubleClicked_, false) && doubleClickEnded) doubleClickEnded();
    }
    /// One that is refused here hears of no row that it comes to later: below the rows what they would take comes in.
    void dragEnterEvent(QDragEnterEvent* event) override {
        consider(event);
        if (event->isAccepted() || !holdsForRows(*event->mimeData())) return;
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
    void dragMoveEvent(QDragMoveEvent* event) override {
        consider(event);
        autoScroll(event->position().toPoint());
    }
    void dragLeaveEvent(QDragLeaveEvent*) override { unmark(); }
    /// What follows may ask the person something: the drag is over before that, and its source free again.
    void dropEvent(QDropEvent* event) override {
        unmark();
        const QMimeData& mime = *event->mimeData();
        std::function<void()> action;
        if (!filesDropped && mime.hasUrls()) {
            event->ignore();
            return;
        }
        if (const auto onto = rowTaking(*event)) {
            action = [this, rows = RowDrag::decode(mime.data(ontoType)), row = *onto,
                      held = event->modifiers()] { rowsDroppedOnto(rows, row, held); };
        } else if (mime.hasFormat(rowsType_) && rowsDropped && takesOwnRows()) {
            action = [this, rows = RowDrag::decode(mime.data(rowsType_)),
                      gap = gapAt(event->position().toPoint())] { rowsDropped(rows, gap); };
        } else if (const QStringList files = RowDrag::filesOf(mime); !files.isEmpty() && filesDropped) {
            action = [this, files] { filesDropped(files); };
        } else {
            return;
        }
        event->setDropAction(Qt::CopyAction);
        event->accept();
        QMetaObject::invokeMethod(this, action, Qt::QueuedConnection);
    }
    /// Coming here by key, there is something to act on at once.
    void focusInEvent(QFocusEvent* event) override {
        View::focusInEvent(event);
        const bool byKey = event->reason() != Qt::MouseFocusReason &&
                           event->reason() != Qt::PopupFocusReason &&
                           event->reason() != Qt::ActiveWindowFocusReason;
        if (byKey && this->model() && this->model()->rowCount() > 0 &&
            !this->selectionModel()->hasSelection())
            this->setCurrentIndex(this->currentIndex().isValid() ? this->currentIndex()
                                                                 : this->model()->index(0, firstColumn()));
    }
    void paintEvent(QPaintEvent* event) override {
        View::paintEvent(event);
        if (!gap_ && !target_) return;
        QPainter painter(this->viewport());
        if (gap_) painter.fillRect(gapLine(*gap_), theme::focus);
        if (!target_) return;
        QRect place = this->visualRect(this->model()->index(int(*target_), firstColumn()));
        place.setLeft(0);
        place.setRight(this->viewport()->width() - 1);
        painter.setPen(QPen(theme::focus, 2));
        painter.drawRect(place.adjusted(1, 1, -1, -1));
    }

private:
    [[nodiscard]] bool takesOwnRows() const { return !mayReorder || mayReorder(); }
    [[nodiscard]] bool holdsForRows(const QMimeData& mime) const {
        return !ontoType.isEmpty() && mime.hasFormat(ontoType) && rowsDroppedOnto;
    }
    /// The row under the pointer that would take what is dragged.
    [[nodiscard]] std::optional<qsizetype> rowTaking(const QDropEvent& event) const {
        if (!holdsForRows(*event.mimeData())) return std::nullopt;
        const QModelIndex hit = this->indexAt(event.position().toPoint());
        if (!hit.isValid() || (takesOnto && !takesOnto(hit.row()))) return std::nullopt;
        return hit.row();
    }
    void consider(QDropEvent* event) {
        const QMimeData& mime = *event->mimeData();
        const auto onto = rowTaking(*event);
        const bool rows = !onto && mime.hasFormat(rowsType_) && takesOwnRows();
        if (!onto && ((!filesDropped && mime.hasUrls()) ||
                      (!rows && (!mime.hasUrls() || RowDrag::filesOf(mime).isEmpty())))) {
            unmark();
            event->ignore();
            return;
        }
        event->setDropAction(Qt::CopyAction);
        event->accept();
        mark(rows ? std::optional<qsizetype>(gapAt(event->position().toPoint())) : std::nullopt, onto);
    }
    [[nodiscard]] int firstColumn() const {
        if constexpr (std::is_base_of_v<QListView, View>)
            return this->modelColumn();
        else
            return 0;
    }
    void mark(std::optional<qsizetype> gap, std::optional<qsizetype> target) {
        if (gap == gap_ && target == target_) return;
        gap_ = gap;
        target_ = target;
        this->viewport()->update();
    }
    void unmark() { mark({}, {}); }
    /// Beside or below the items: the end of the line that was hit, or of everything.
    [[nodiscard]] qsizetype nearestGap(const QPoint& position, qsizetype count) const {
        if (!sideways_ || count == 0) return count;
        for (int x = position.x(); x > 0; x -= 24)
            if (const QModelIndex left = this->indexAt({x, position.y()}); left.isValid())
                return left.row() + 1;
        return count;
    }
    [[nodiscard]] QRect gapLine(qsizetype gap) const {
        const qsizetype count = this->model()->rowCount();
        if (count == 0) return {0, 0, sideways_ ? 2 : this->viewport()->width(), 2};
        const bool behindLast = gap >= count;
        const QRect place =
            this->visualRect(this->model()->index(int(std::min(gap, count - 1)), firstColumn()));
        if (sideways_)
            return {(behindLast ? place.right() : place.left()) - 1, place.top(), 2, place.height()};
        return {0, (behindLast ? place.bottom() : place.top()) - 1, this->viewport()->width(), 2};
    }
    void autoScroll(const QPoint& position) {
        constexpr int edge = 24;
        QScrollBar* bar = this->verticalScrollBar();
        if (position.y() < edge)
            bar->setValue(bar->value() - bar->singleStep());
        else if (position.y() > this->viewport()->height() - edge)
            bar->setValue(bar->value() + bar->singleStep());
    }

    QString rowsType_;
    bool sideways_;
    std::optional<qsizetype> gap_;
    std::optional<qsizetype> target_; ///< the row that what is dragged would be dropped onto
    bool doubleClicked_ = false;
};

} // namespace daylark
