#include "ui/panels/BookmarkPanel.h"

#include "base/PlainText.h"
#include "preferences/Preferences.h"
#include "commands/viewer/ViewerCommands.h"
#include "ui/commands/Commands.h"
#include "ui/common/ListOpener.h"
#include "ui/common/RowSlide.h"
#include "ui/common/Theme.h"
#include "ui/panels/BookmarkTable.h"
#include "viewer/review/ViewerBookmarks.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace daylark {

namespace {

/// A flat button that opens a menu of commands.
QToolButton* menuButton(const Commands& commands, const QString& iconName, const QString& title,
                        const char* const* first, const char* const* last, QWidget* parent) {
    auto* button = new QToolButton(parent);
    button->setObjectName(iconName + QStringLiteral("Menu"));
    button->setAutoRaise(true);
    button->setIcon(theme::icon(iconName));
    button->setIconSize({16, 16});
    button->setMinimumSize(24, 24);
    button->setFocusPolicy(Qt::TabFocus);
    button->setToolTip(plain::toolTip(title));
    button->setAccessibleName(title);
    auto* menu = new QMenu(button);
    for (const char* const* id = first; id != last; ++id)
        menu->addAction(commands.action(QLatin1String(*id)));
    letOpen(*button, menu);
    return button;
}

} // namespace

BookmarkPanel::BookmarkPanel(ViewerBookmarks& bookmarks, Commands& commands, Preferences& preferences,
                             QWidget* parent)
    : QWidget(parent)
    , bookmarks_(bookmarks)
    , preferences_(preferences)
    , rows_(std::make_unique<BookmarkRows>(bookmarks))
    , table_(new BookmarkTable(*rows_, this))
    , slide_(new RowSlide(table_, [this](int row) { return rows_->at(row).get(); })) {
    setObjectName(QStringLiteral("bookmarkPanel"));
    table_->setObjectName(QStringLiteral("bookmarkTable"));
    table_->setAccessibleName(tr("Bookmarks"));
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    table_->setShowGrid(false);
    table_->setWordWrap(false);
    table_->setTabKeyNavigation(false);
    table_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->verticalHeader()->setDefaultSectionSize(BookmarkTable::buttonSide);
    table_->horizontalHeader()->setHighlightSections(false);
    table_->setContextMenuPolicy(Qt::CustomContextMenu);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 0, 8, 8);
    layout->setSpacing(4);
    layout->addLayout(buttonStrip(commands));
    layout->addWidget(table_, 1);
    arrangeColumns();
    setMinimumHeight(112);

    for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(key, table_, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
                &BookmarkPanel::goToSelected);
    for (const auto key : {Qt::Key_Delete, Qt::Key_Backspace})
        connect(new QShortcut(key, table_, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
                &BookmarkPanel::deleteSelected);
    connect(table_, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (!(rows_->flags(index) & Qt::ItemIsEditable)) goToSelected();
    });
    connect(table_, &BookmarkTable::buttonPressed, this, [this](int row, int tag) {
        if (tag == bookmarkTag::remove)
            deleteRow(row);
        else
            bookmarks_.bookmarkButtonPress({{}, tag}, row);
    });
    connect(table_, &QWidget::customContextMenuRequested, this, &BookmarkPanel::showRowMenu);
    connect(&bookmarks_, &ViewerBookmarks::bookmarksChanged, this, &BookmarkPanel::refresh);
    connect(&bookmarks_, &ViewerBookmarks::frameNumbersChanged, this, &BookmarkPanel::showProdColumns);
    connect(&bookmarks_, &ViewerBookmarks::activeBookmarksChanged, rows_.get(), &BookmarkRows::rowsChanged);
}

BookmarkPanel::~BookmarkPanel() {
    preferences_.viewerBookmarkTableColumns.set(
        QString::fromLatin1(table_->horizontalHeader()->saveState().toBase64()));
    table_->setModel(nullptr);
}

QHBoxLayout* BookmarkPanel::buttonStrip(Commands& commands) {
    auto* strip = new QHBoxLayout;
    strip->setSpacing(4);
    for (const char* id :
         {"viewer.addBookmark", "viewer.bookmarkFromRange", "viewer.previousBookmark", "viewer.nextBookmark"})
        strip->addWidget(commands.button(QLatin1String(id), this));
    strip->addSpacing(12);
    using namespace viewerCommand;
    strip->addWidget(menuButton(commands, QStringLiteral("mute"), tr("Mute Bookmarks"), std::begin(muting),
                                std::end(muting), this));
    strip->addWidget(menuButton(commands, QStringLiteral("copy"), tr("Copy Bookmarks"), std::begin(copying),
                                std::end(copying), this));
    strip->addWidget(commands.button(QStringLiteral("viewer.pasteBookmarks"), this));
    strip->addSpacing(12);
    for (const char* id : {"viewer.deleteActiveBookmarks", "viewer.deleteAllBookmarks"})
        strip->addWidget(commands.button(QLatin1String(id), this));
    strip->addStretch(1);
    return strip;
}

// The two texts share what the numbers leave; those keep the widths they are given.
void BookmarkPanel::arrangeColumns() {
    QHeaderView* header = table_->horizontalHeader();
    header->setMinimumSectionSize(24);
    const QFontMetrics numbers(BookmarkRows::numberFont());
    const int timecode = timecodeWidth_ = numbers.horizontalAdvance(QStringLiteral("00:00:00:00")) + 16;
    const int frames = numbers.horizontalAdvance(QStringLiteral("000000")) + 12;
    const int side = BookmarkTable::buttonSide;
    const int prod = std::max(frames, QFontMetrics(header->font()).horizontalAdvance(tr("Prod")) + 20);
    const int widths[] = {28,  timecode, timecode,    frames + 2 * side, frames + 2 * side, frames + side,
                          200, 160,      3 * side + 4, prod, prod};
    if (!header->restoreState(QByteArray::fromBase64(preferences_.viewerBookmarkTableColumns().toLatin1())))
        for (int column = 0; column < BookmarkRows::columnsInAll; ++column)
            table_->setColumnWidth(column, widths[column]);
    for (const int column : {BookmarkRows::descriptionColumn, BookmarkRows::noteColumn})
        header->setSectionResizeMode(column, QHeaderView::Stretch);
    for (const int column : {BookmarkRows::activeColumn, BookmarkRows::actionsColumn}) {
        header->setSectionResizeMode(column, QHeaderView::Fixed);
        table_->setColumnWidth(column, widths[column]);
    }
    // Each beside the one that is counted from 1.
    for (const auto& [prodColumn, counted] : {std::pair(BookmarkRows::firstProdColumn, BookmarkRows::firstFrameColumn),
                                              std::pair(BookmarkRows::lastProdColumn, BookmarkRows::lastFrameColumn)}) {
        if (table_->columnWidth(prodColumn) < prod) table_->setColumnWidth(prodColumn, prod);
        header->moveSection(header->visualIndex(prodColumn), header->visualIndex(counted) + 1);
    }
    showProdColumns();
}

/// Where the movie's numbers are those that are counted anyway, they would say the same twice.
void BookmarkPanel::showProdColumns() {
    const bool isOwn = bookmarks_.frameNumbers().areOwn();
    for (const int column : {BookmarkRows::firstProdColumn, BookmarkRows::lastProdColumn})
        table_->setColumnHidden(column, !isOwn);
    giveTextsRoom();
    rows_->rowsChanged();
}

void BookmarkPanel::resizeEvent(QResizeEvent*) {
    giveTextsRoom();
}

/// In a narrow panel what was written goes before the timecodes, which the frames tell as well.
void BookmarkPanel::giveTextsRoom() {
    constexpr int leastDescription = 120, leastNote = 72;
    int left = width() - layout()->contentsMargins().left() - layout()->contentsMargins().right() - leastDescription;
    for (int column = 0; column < BookmarkRows::columnsInAll; ++column) {
        const bool yields = column == BookmarkRows::noteColumn || column == BookmarkRows::firstTCColumn ||
                            column == BookmarkRows::lastTCColumn;
        if (column != BookmarkRows::descriptionColumn && !yields) left -= table_->columnWidth(column);
    }
    for (const auto& [column, needed] :
         {std::pair(BookmarkRows::noteColumn, leastNote), std::pair(BookmarkRows::firstTCColumn, timecodeWidth_),
          std::pair(BookmarkRows::lastTCColumn, timecodeWidth_)}) {
        left -= needed;
        table_->setColumnHidden(column, left < 0);
    }
}

void BookmarkPanel::refresh() {
    if (rows_->isUpToDate()) return rows_->rowsChanged();
    const auto selected = selectedBookmark();
    slide_->remember();
    rows_->reload();
    if (const int row = rows_->rowOf(selected); row >= 0 && selected != selectedBookmark())
        table_->selectRow(row);
    slide_->play();
}

std::shared_ptr<Bookmark> BookmarkPanel::selectedBookmark() const {
    return rows_->at(table_->currentIndex().row());
}

bool BookmarkPanel::hasSelection() const {
    return selectedBookmark() != nullptr;
}

void BookmarkPanel::clearSelection() {
    table_->setCurrentIndex({});
    table_->clearSelection();
}

void BookmarkPanel::goToSelected() {
    bookmarks_.bookmarkButtonPress({{}, bookmarkTag::goToFirst}, table_->currentIndex().row());
}

int BookmarkPanel::rowForKeys() const {
    const auto& active = bookmarks_.activeBookmarks();
    if (table_->hasFocus() || active.empty()) return table_->currentIndex().row();
    return rows_->rowOf(
        *std::max_element(active.begin(), active.end(), [](const auto& one, const auto& other) {
            return one->firstFrame < other->firstFrame;
        }));
}

bool BookmarkPanel::hasRowForKeys() const {
    return rows_->at(rowForKeys()) != nullptr;
}

void BookmarkPanel::editText() {
    QModelIndex cell = table_->currentIndex();
    if (!table_->hasFocus() || !(rows_->flags(cell) & Qt::ItemIsEditable))
        cell = rows_->index(rowForKeys(), BookmarkRows::descriptionColumn);
    if (!cell.isValid()) return;
    window()->activateWindow();
    table_->setFocus();
    table_->setCurrentIndex(cell);
    table_->edit(cell);
}

void BookmarkPanel::toggleLoop() {
    const int row = rowForKeys();
    if (rows_->at(row)) bookmarks_.bookmarkButtonPress({{}, bookmarkTag::loop}, row);
}

void BookmarkPanel::deleteSelected() {
    if (selectedBookmark()) deleteRow(table_->currentIndex().row());
}

/// The row that follows takes the selection over.
void BookmarkPanel::deleteRow(int row) {
    bookmarks_.bookmarkButtonPress({{}, bookmarkTag::remove}, row);
    if (const int rows = rows_->rowCount(); rows > 0) table_->selectRow(std::min(row, rows - 1));
}

void BookmarkPanel::showRowMenu(const QPoint& position) {
    const QModelIndex hit = table_->indexAt(position);
    const int row = hit.isValid() ? hit.row() : table_->currentIndex().row();
    if (!rows_->at(row)) return;
    table_->selectRow(row);
    QMenu menu(this);
    for (const BookmarkButton& button : BookmarkTable::buttons) {
        if (button.tag == bookmarkTag::mute) menu.addSeparator();
        menu.addAction(plain::menuTitle(table_->buttonTitle(button, row)), table_,
                       [this, row, tag = button.tag] { Q_EMIT table_->buttonPressed(row, tag); });
    }
    menu.exec(table_->viewport()->mapToGlobal(position));
}

} // namespace daylark
