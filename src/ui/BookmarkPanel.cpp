#include "ui/BookmarkPanel.h"

#include "model/Bookmark.h"
#include "platform/UserDefaults.h"
#include "ui/Commands.h"
#include "ui/Theme.h"
#include "viewer/ViewerBookmarks.h"

#include <QAbstractTableModel>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace daylark {

namespace {

const QString bookmarkColumnsKey = QStringLiteral("viewerBookmarkColumns");

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

class BookmarkDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const override {
        auto* editor = new CellTextField(parent);
        editor->setFrame(false);
        return editor;
    }
};

QFont smallNumberFont() {
    QFont font = theme::numberFont();
    font.setPointSizeF(theme::smallFont().pointSizeF());
    return font;
}

bool isText(int column) {
    return column == BookmarkPanel::descriptionColumn || column == BookmarkPanel::noteColumn;
}

} // namespace

class BookmarkPanel::Rows : public QAbstractTableModel {
public:
    explicit Rows(ViewerBookmarks& bookmarks)
        : source_(bookmarks)
        , bookmarks_(bookmarks.bookmarks()) {}

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : int(bookmarks_.size());
    }
    int columnCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : int(BookmarkPanel::columnCount);
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override {
        const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
        return isText(index.column()) ? flags | Qt::ItemIsEditable : flags;
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation == Qt::Vertical) return {};
        if (role == Qt::TextAlignmentRole) return int(alignmentOf(section));
        if (role != Qt::DisplayRole) return {};
        const char* const titles[] = {"",     "First TC", "Last TC",     "First",
                                      "Last", "Frames",   "Description", "Note"};
        return QString::fromLatin1(titles[section]);
    }
    QVariant data(const QModelIndex& index, int role) const override {
        const auto bookmark = at(index.row());
        if (!bookmark) return {};
        switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
            return textOf(*bookmark, index.column());
        case Qt::ToolTipRole:
            return isText(index.column()) ? textOf(*bookmark, index.column()) : QString();
        case Qt::DecorationRole:
            return index.column() == activeColumn ? QVariant(theme::icon(imageName(bookmark))) : QVariant();
        case Qt::AccessibleDescriptionRole:
            return isActive(bookmark) ? QStringLiteral("active") : QString();
        case Qt::BackgroundRole:
            return isActive(bookmark) ? QVariant(QColor(0x2c, 0x38, 0x2d)) : QVariant();
        case Qt::FontRole:
            return index.column() >= firstTCColumn && index.column() <= durationColumn ? numbers_ : words_;
        case Qt::TextAlignmentRole:
            return int(alignmentOf(index.column()));
        default:
            return {};
        }
    }
    bool setData(const QModelIndex& index, const QVariant& value, int role) override {
        const auto bookmark = at(index.row());
        if (!bookmark || role != Qt::EditRole || !isText(index.column())) return false;
        // An untouched empty text stays "none".
        if (value.toString() == textOf(*bookmark, index.column())) return true;
        if (index.column() == descriptionColumn)
            source_.setOverlayString(bookmark, value.toString());
        else
            source_.setOverlayString2(bookmark, value.toString());
        return true;
    }
    std::shared_ptr<Bookmark> at(int row) const {
        return row >= 0 && row < int(bookmarks_.size()) ? bookmarks_[size_t(row)] : nullptr;
    }
    int rowOf(const std::shared_ptr<Bookmark>& bookmark) const {
        const auto found = std::find(bookmarks_.begin(), bookmarks_.end(), bookmark);
        return found == bookmarks_.end() ? -1 : int(found - bookmarks_.begin());
    }
    /// Takes the list as it is now; only another list or order resets the rows.
    void reload() {
        auto now = source_.bookmarks();
        if (now == bookmarks_) return rowsChanged();
        beginResetModel();
        bookmarks_ = std::move(now);
        endResetModel();
    }
    void rowsChanged() {
        if (!bookmarks_.empty())
            Q_EMIT dataChanged(index(0, 0),
                               index(int(bookmarks_.size()) - 1, BookmarkPanel::columnCount - 1));
    }

private:
    static Qt::Alignment alignmentOf(int column) {
        const bool number = column >= firstFrameColumn && column <= durationColumn;
        return Qt::AlignVCenter | (column == activeColumn ? Qt::AlignHCenter
                                   : number               ? Qt::AlignRight
                                                          : Qt::AlignLeft);
    }
    static QString textOf(const Bookmark& bookmark, int column) {
        switch (column) {
        case firstTCColumn:
            return bookmark.firstTC;
        case lastTCColumn:
            return bookmark.lastTC;
        case firstFrameColumn:
            return QString::number(bookmark.firstFrame);
        case lastFrameColumn:
            return QString::number(bookmark.lastFrame);
        case durationColumn:
            return QString::number(bookmark.duration);
        case descriptionColumn:
            return bookmark.overlayString;
        case noteColumn:
            return bookmark.overlayString2;
        default:
            return {};
        }
    }
    bool isActive(const std::shared_ptr<Bookmark>& bookmark) const {
        const auto& active = source_.activeBookmarks();
        return std::find(active.begin(), active.end(), bookmark) != active.end();
    }
    QString imageName(const std::shared_ptr<Bookmark>& bookmark) const {
        if (bookmark->mute) return QStringLiteral("NSStatusUnavailable");
        return isActive(bookmark) ? QStringLiteral("NSStatusAvailable") : QStringLiteral("NSStatusNone");
    }

    ViewerBookmarks& source_;
    std::vector<std::shared_ptr<Bookmark>> bookmarks_;
    QFont numbers_ = smallNumberFont(), words_ = theme::smallFont();
};

BookmarkPanel::BookmarkPanel(ViewerBookmarks& bookmarks, Commands& commands, UserDefaults& defaults,
                             QWidget* parent)
    : QWidget(parent)
    , bookmarks_(bookmarks)
    , defaults_(defaults)
    , rows_(std::make_unique<Rows>(bookmarks))
    , table_(new QTableView(this)) {
    setObjectName(QStringLiteral("bookmarkPanel"));
    table_->setObjectName(QStringLiteral("bookmarkTable"));
    table_->setAccessibleName(tr("Bookmarks"));
    table_->setModel(rows_.get());
    table_->setItemDelegate(new BookmarkDelegate(table_));
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    table_->setShowGrid(false);
    table_->setWordWrap(false);
    table_->setTabKeyNavigation(false);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setDefaultSectionSize(24);
    table_->horizontalHeader()->setHighlightSections(false);
    arrangeColumns();

    QToolButton* add = commands.button(QStringLiteral("viewer.addBookmark"), this);
    auto* remove = new QToolButton(this);
    auto* goTo = new QToolButton(this);
    const auto dress = [](QToolButton* button, const QString& iconName, const QString& text) {
        button->setAutoRaise(true);
        button->setIcon(theme::icon(iconName));
        button->setMinimumSize(24, 24);
        button->setToolTip(text);
        button->setAccessibleName(text);
        button->setFocusPolicy(Qt::TabFocus);
        button->setObjectName(iconName);
    };
    dress(remove, QStringLiteral("remove"), tr("Delete Bookmark (Del)"));
    dress(goTo, QStringLiteral("goToFirst"), tr("Go to First Frame (Return)"));
    auto* buttons = new QVBoxLayout;
    buttons->setSpacing(4);
    for (QToolButton* button : {add, remove, goTo})
        buttons->addWidget(button);
    buttons->addStretch(1);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 8);
    layout->setSpacing(8);
    layout->addLayout(buttons);
    layout->addWidget(table_, 1);
    setMinimumHeight(112);

    connect(remove, &QToolButton::clicked, this, &BookmarkPanel::deleteSelected);
    connect(goTo, &QToolButton::clicked, this, &BookmarkPanel::goToSelected);
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(key, table_, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
                &BookmarkPanel::goToSelected);
    for (const auto key : {Qt::Key_Delete, Qt::Key_Backspace})
        connect(new QShortcut(key, table_, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
                &BookmarkPanel::deleteSelected);
    connect(table_, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (!isText(index.column())) goToSelected();
    });
    connect(&bookmarks_, &ViewerBookmarks::bookmarksChanged, this, &BookmarkPanel::refresh);
    connect(&bookmarks_, &ViewerBookmarks::activeBookmarksChanged, this, [this] { rows_->rowsChanged(); });
}

BookmarkPanel::~BookmarkPanel() {
    defaults_.set(bookmarkColumnsKey,
                  QString::fromLatin1(table_->horizontalHeader()->saveState().toBase64()));
    table_->setModel(nullptr);
}

void BookmarkPanel::arrangeColumns() {
    QHeaderView* header = table_->horizontalHeader();
    header->setMinimumSectionSize(24);
    header->setStretchLastSection(true);
    if (header->restoreState(QByteArray::fromBase64(defaults_.stringForKey(bookmarkColumnsKey).toLatin1())))
        return;
    const QFontMetrics numbers(smallNumberFont());
    const int timecode = numbers.horizontalAdvance(QStringLiteral("00:00:00:00")) + 20;
    const int frames = numbers.horizontalAdvance(QStringLiteral("0000000")) + 16;
    const int widths[] = {28, timecode, timecode, frames, frames, frames, 280, 240};
    for (int column = 0; column < columnCount; ++column)
        table_->setColumnWidth(column, widths[column]);
}

void BookmarkPanel::refresh() {
    const auto selected = selectedBookmark();
    rows_->reload();
    if (const int row = rows_->rowOf(selected); row >= 0 && selected != selectedBookmark())
        table_->selectRow(row);
}

std::shared_ptr<Bookmark> BookmarkPanel::selectedBookmark() const {
    return rows_->at(table_->currentIndex().row());
}

void BookmarkPanel::goToSelected() {
    if (const auto bookmark = selectedBookmark()) bookmarks_.goToFirstFrameOf(bookmark);
}

void BookmarkPanel::deleteSelected() {
    const int row = table_->currentIndex().row();
    const auto bookmark = selectedBookmark();
    if (!bookmark) return;
    bookmarks_.removeBookmark(bookmark);
    if (const int rows = rows_->rowCount({}); rows > 0) table_->selectRow(std::min(row, rows - 1));
}

} // namespace daylark
