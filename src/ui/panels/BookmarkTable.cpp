#include "ui/panels/BookmarkTable.h"

#include "base/PlainText.h"
#include "ui/panels/BookmarkRows.h"
#include "ui/common/Theme.h"
#include "viewer/review/ViewerBookmarks.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>

namespace daylark {

namespace {

constexpr int buttonIconSide = 16;
constexpr int longestBookmark = 100000000; ///< frames that can be typed

/// Keys that write or move belong to the cell being edited, not to the transport.
class CellTextField : public QLineEdit {
public:
    using QLineEdit::QLineEdit;

protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::ShortcutOverride) {
            const auto* key = static_cast<QKeyEvent*>(event);
            if (!(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) &&
                key->key() != Qt::Key_Escape) {
                event->accept();
                return true;
            }
        }
        return QLineEdit::event(event);
    }
};

int buttonsInColumn(int column) {
    return int(std::count_if(BookmarkTable::buttons.begin(), BookmarkTable::buttons.end(),
                             [column](const BookmarkButton& button) { return button.column == column; }));
}

QString buttonIconName(int tag, const Bookmark& bookmark) {
    switch (tag) {
    case bookmarkTag::goToFirst:
        return QStringLiteral("goToFirst");
    case bookmarkTag::goToLast:
        return QStringLiteral("goToLast");
    case bookmarkTag::setIn:
        return QStringLiteral("setIn");
    case bookmarkTag::setOut:
        return QStringLiteral("setOut");
    case bookmarkTag::fromDuration:
        return QStringLiteral("duration");
    case bookmarkTag::mute:
        return bookmark.mute ? QStringLiteral("mute") : QStringLiteral("unmute");
    case bookmarkTag::loop:
        return bookmark.loopImage.name();
    default:
        return QStringLiteral("trash");
    }
}

/// What a button shows is in force.
bool buttonIsOn(int tag, const Bookmark& bookmark) {
    return (tag == bookmarkTag::mute && bookmark.mute) || (tag == bookmarkTag::loop && bookmark.loopStatus);
}

} // namespace

const std::array<BookmarkButton, 8> BookmarkTable::buttons{{
    {bookmarkTag::goToFirst, BookmarkRows::firstFrameColumn, 0,
     QT_TRANSLATE_NOOP("BookmarkTable", "Go to First Frame")},
    {bookmarkTag::setIn, BookmarkRows::firstFrameColumn, 1,
     QT_TRANSLATE_NOOP("BookmarkTable", "Set First Frame to Frame on Screen")},
    {bookmarkTag::goToLast, BookmarkRows::lastFrameColumn, 0,
     QT_TRANSLATE_NOOP("BookmarkTable", "Go to Last Frame")},
    {bookmarkTag::setOut, BookmarkRows::lastFrameColumn, 1,
     QT_TRANSLATE_NOOP("BookmarkTable", "Set Last Frame to Frame on Screen")},
    {bookmarkTag::fromDuration, BookmarkRows::durationColumn, 0,
     QT_TRANSLATE_NOOP("BookmarkTable", "Set Last Frame from Number of Frames")},
    {bookmarkTag::mute, BookmarkRows::actionsColumn, 0, QT_TRANSLATE_NOOP("BookmarkTable", "Mute Bookmark")},
    {bookmarkTag::loop, BookmarkRows::actionsColumn, 1, QT_TRANSLATE_NOOP("BookmarkTable", "Loop Bookmark")},
    {bookmarkTag::remove, BookmarkRows::actionsColumn, 2,
     QT_TRANSLATE_NOOP("BookmarkTable", "Remove Bookmark")},
}};

/// Paints the cells with their buttons and makes the fields that texts and lengths are typed into.
class BookmarkTable::Delegate : public QStyledItemDelegate {
public:
    explicit Delegate(BookmarkTable* table)
        : QStyledItemDelegate(table)
        , table_(*table) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        auto* editor = new CellTextField(parent);
        editor->setFrame(false);
        if (index.column() == BookmarkRows::durationColumn) {
            editor->setFont(BookmarkRows::numberFont());
            editor->setAlignment(Qt::AlignRight);
            editor->setValidator(new QIntValidator(1, longestBookmark, editor));
        }
        return editor;
    }
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override {
        editor->setGeometry(option.rect.adjusted(buttonsInColumn(index.column()) * buttonSide, 0, 0, 0));
    }
    // Escape leaves as it leaves a note: what is typed stays, whichever command has the key.
    bool eventFilter(QObject* editor, QEvent* event) override {
        const bool press = event->type() == QEvent::KeyPress;
        if ((press || event->type() == QEvent::ShortcutOverride) &&
            static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            auto* field = qobject_cast<QWidget*>(editor);
            if (!press || !field) return false;
            Q_EMIT commitData(field);
            Q_EMIT closeEditor(field);
            return true;
        }
        return QStyledItemDelegate::eventFilter(editor, event);
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        const auto bookmark = table_.rows_.at(index.row());
        if (!bookmark) return;
        for (const BookmarkButton& button : buttons)
            if (button.column == index.column())
                paintButton(*painter, option, index.row(), button, *bookmark);
    }

private:
    void paintButton(QPainter& painter, const QStyleOptionViewItem& option, int row,
                     const BookmarkButton& button, const Bookmark& bookmark) const {
        const QRect place = rectIn(option.rect, button);
        const auto isAt = [&](const std::optional<Hit>& hit) {
            return hit && hit->cell.row() == row && hit->tag == button.tag;
        };
        const bool hovered = isAt(table_.hovered_), pressed = isAt(table_.pressed_);
        const bool selected = option.state & QStyle::State_Selected;
        painter.save();
        if (hovered || pressed) {
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(pressed && hovered ? theme::line : theme::raised);
            painter.drawRoundedRect(place.adjusted(0, 1, 0, -1), 4, 4);
        }
        // Quiet until wanted: a table of bright buttons would outshine its texts.
        const bool bright = hovered || selected || buttonIsOn(button.tag, bookmark) ||
                            (table_.hovered_ && table_.hovered_->cell.row() == row);
        painter.setOpacity(bright ? 1.0 : 0.45);
        const int margin = (buttonSide - buttonIconSide) / 2;
        theme::icon(buttonIconName(button.tag, bookmark))
            .paint(&painter, place.adjusted(margin, margin, -margin, -margin));
        painter.restore();
    }

    BookmarkTable& table_;
};

BookmarkTable::BookmarkTable(BookmarkRows& rows, QWidget* parent)
    : QTableView(parent)
    , rows_(rows) {
    setModel(&rows);
    setItemDelegate(new Delegate(this));
    setMouseTracking(true);
}

QRect BookmarkTable::rectIn(const QRect& cell, const BookmarkButton& button) {
    return {cell.left() + button.place * buttonSide, cell.center().y() - buttonSide / 2 + 1, buttonSide,
            buttonSide};
}

QRect BookmarkTable::buttonRect(int row, int tag) const {
    for (const BookmarkButton& button : buttons)
        if (button.tag == tag) return rectIn(visualRect(rows_.index(row, button.column)), button);
    return {};
}

QString BookmarkTable::buttonTitle(const BookmarkButton& button, int row) const {
    const auto bookmark = rows_.at(row);
    if (bookmark && button.tag == bookmarkTag::mute && bookmark->mute) return tr("Unmute Bookmark");
    if (bookmark && button.tag == bookmarkTag::loop && bookmark->loopStatus)
        return tr("Stop Looping Bookmark");
    return QCoreApplication::translate("BookmarkTable", button.title);
}

std::optional<BookmarkTable::Hit> BookmarkTable::hitAt(const QPoint& position) const {
    const QModelIndex cell = indexAt(position);
    if (!cell.isValid()) return {};
    for (const BookmarkButton& button : buttons)
        if (button.column == cell.column() && rectIn(visualRect(cell), button).contains(position))
            return Hit{cell, button.tag};
    return {};
}

void BookmarkTable::updateRowOf(const std::optional<Hit>& hit) {
    if (!hit || !hit->cell.isValid()) return;
    const QRect cell = visualRect(hit->cell);
    viewport()->update(0, cell.top(), viewport()->width(), cell.height());
}

void BookmarkTable::setHovered(const std::optional<Hit>& hit) {
    if (hit == hovered_) return;
    updateRowOf(hovered_);
    hovered_ = hit;
    updateRowOf(hovered_);
}

bool BookmarkTable::pressButton(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return false;
    const auto hit = hitAt(event->position().toPoint());
    if (!hit) return false;
    pressed_ = hit;
    setHovered(hit);
    selectionModel()->setCurrentIndex(hit->cell,
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    updateRowOf(pressed_);
    return true;
}

void BookmarkTable::mousePressEvent(QMouseEvent* event) {
    if (!pressButton(event)) QTableView::mousePressEvent(event);
}

// The second of two quick presses is a press like the first.
void BookmarkTable::mouseDoubleClickEvent(QMouseEvent* event) {
    if (!pressButton(event)) QTableView::mouseDoubleClickEvent(event);
}

void BookmarkTable::mouseMoveEvent(QMouseEvent* event) {
    setHovered(hitAt(event->position().toPoint()));
    if (!pressed_) QTableView::mouseMoveEvent(event);
}

void BookmarkTable::mouseReleaseEvent(QMouseEvent* event) {
    if (!pressed_ || event->button() != Qt::LeftButton) return QTableView::mouseReleaseEvent(event);
    const std::optional<Hit> pressed = std::exchange(pressed_, {});
    updateRowOf(pressed);
    if (hitAt(event->position().toPoint()) == pressed && pressed->cell.isValid())
        Q_EMIT buttonPressed(pressed->cell.row(), pressed->tag);
}

bool BookmarkTable::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave) setHovered({});
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        if (const auto hit = hitAt(help->pos())) {
            const auto button = std::find_if(buttons.begin(), buttons.end(),
                                             [&](const BookmarkButton& b) { return b.tag == hit->tag; });
            QToolTip::showText(help->globalPos(), plain::toolTip(buttonTitle(*button, hit->cell.row())), this,
                               buttonRect(hit->cell.row(), hit->tag));
            return true;
        }
    }
    return QTableView::viewportEvent(event);
}

} // namespace daylark
