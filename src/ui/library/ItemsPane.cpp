#include "ui/library/ItemsPane.h"

#include "app/PlaylistController.h"
#include "base/PlainText.h"
#include "preferences/Preferences.h"
#include "ui/commands/Commands.h"
#include "ui/common/DropHint.h"
#include "ui/common/ListOpener.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/ReorderView.h"
#include "ui/common/ThumbnailCache.h"
#include "ui/library/DragPicture.h"
#include "ui/library/FreeColumn.h"
#include "ui/library/ItemDelegates.h"
#include "ui/library/ItemInformation.h"
#include "ui/library/MoviesModel.h"
#include "ui/library/search/FilterControls.h"
#include "ui/library/search/FindPanel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QListView>
#include <QMenu>
#include <QSlider>
#include <QStackedWidget>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <set>

namespace daylark {

namespace {

/// The rows of a view, as few ranges as there are runs.
QItemSelection selectionOfRows(const QAbstractItemModel& model, const Library::Rows& rows, int lastColumn) {
    QItemSelection selection;
    for (size_t first = 0; first < rows.size();) {
        size_t last = first;
        while (last + 1 < rows.size() && rows[last + 1] == rows[last] + 1)
            ++last;
        selection.select(model.index(int(rows[first]), 0), model.index(int(rows[last]), lastColumn));
        first = last + 1;
    }
    return selection;
}

} // namespace

const QString ItemsPane::dragType = QStringLiteral("application/x-daylark-item-rows");

ItemsPane::ItemsPane(PlaylistController& controller, const Commands& commands, QWidget* parent)
    : QWidget(parent)
    , controller_(controller)
    , thumbnails_(std::make_unique<ThumbnailCache>())
    , model_(new MoviesModel(controller.library(), controller.preferences(), *thumbnails_, this)) {
    model_->markLinked(controller.linkOpening());
    model_->tellFacts(controller.itemFacts());
    stack_ = new QStackedWidget(this);
    makeTable();
    makeTiles();
    information_ = new ItemInformation(controller_.library(), *model_, controller_.itemFacts(),
                                       controller_.preferences(), this);
    information_->hide();
    makeLayout(commands);

    connect(&controller_.library(), &Library::movieSelectionChanged, this, &ItemsPane::followLibrary);
    connect(model_, &QAbstractItemModel::modelReset, this, [this] {
        refreshHints();
        showSortIndicator();
        fitNames();
    });
    connect(&controller_.library(), &Library::playlistsChanged, this, &ItemsPane::refreshHints);
    connect(&controller_.library(), &Library::playlistSelectionChanged, this, &ItemsPane::refreshHints);
    connect(&controller_.library(), &Library::playlistUpdated, this, &ItemsPane::refreshHints);
    connect(&controller_.library(), &Library::filterChanged, this, &ItemsPane::refreshHints);
    connect(&controller_.library(), &Library::sortChanged, this, &ItemsPane::showSortIndicator);
    connect(&controller_.fileStates(), &FileStates::updated, model_, &MoviesModel::refreshAll);
    columnsChanged_.setSingleShot(true);
    columnsChanged_.setInterval(300);
    connect(&columnsChanged_, &QTimer::timeout, this, &ItemsPane::storeColumns);

    visibleChanged_.setSingleShot(true);
    visibleChanged_.setInterval(100);
    connect(&visibleChanged_, &QTimer::timeout, this, &ItemsPane::followVisible);
    connect(model_, &QAbstractItemModel::modelReset, &visibleChanged_, qOverload<>(&QTimer::start));
    connect(model_, &QAbstractItemModel::dataChanged, this, [this] {
        if (!visibleChanged_.isActive()) visibleChanged_.start(); // many in a row don't put it off
    });
    connect(this, &ItemsPane::looksChanged, &visibleChanged_, qOverload<>(&QTimer::start));
    connect(&controller_.preferences().sharpThumbnails, &PreferenceItem::changed, &visibleChanged_,
            qOverload<>(&QTimer::start));
    connect(&controller_.largeThumbnails(), &LargeThumbnails::made, this, [this](const Image& thumbnail, const QImage& picture) {
        thumbnails_->sharpen(thumbnail, picture);
        activeView()->viewport()->update();
    });
    connect(&controller_.largeThumbnails(), &LargeThumbnails::outdated, this, [this] {
        thumbnails_->forgetSharp();
        visibleChanged_.start();
        activeView()->viewport()->update();
    });
    for (const QAbstractItemView* view :
         {static_cast<QAbstractItemView*>(table_), static_cast<QAbstractItemView*>(tiles_)}) {
        connect(view->verticalScrollBar(), &QScrollBar::valueChanged, &visibleChanged_, qOverload<>(&QTimer::start));
        // So it is when the window becomes larger.
        connect(view->verticalScrollBar(), &QScrollBar::rangeChanged, &visibleChanged_, [this] { visibleChanged_.start(); });
    }

    const int stored = controller_.preferences().libraryWindowTileSize();
    setTileSize(stored > 0 ? stored : 100);
    restoreColumns();
    showTiles(true);
    followLibrary();
    refreshHints();
}

ItemsPane::~ItemsPane() {
    if (columnsChanged_.isActive()) storeColumns();
}

void ItemsPane::prepareView(QAbstractItemView* view) {
    view->setModel(model_);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setFrameShape(QFrame::NoFrame);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->verticalScrollBar()->setSingleStep(24);
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view, &QWidget::customContextMenuRequested, this, [this, view](const QPoint& position) {
        Q_EMIT menuRequested(view->viewport()->mapToGlobal(position), view->indexAt(position).isValid());
    });
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this, view] {
        if (!following_) controller_.library().selectMovies(RowDrag::selectedRows(*view));
    });
}

template<class View>
void ItemsPane::prepareDrags(View* view) {
    view->filesDropped = [this](const QStringList& files) {
        controller_.mediaAdding().dropOnMovies(files);
        controller_.find().closeFindPanel();
        controller_.bringLibraryToFront();
    };
    view->doubleClickEnded = [this] { Q_EMIT openRequested(); };
    view->mayReorder = [this] {
        const auto playlist = controller_.library().selectedPlaylist();
        return playlist && playlist->takesItems();
    };
    view->rowsDropped = [this](const std::vector<qsizetype>& rows, qsizetype gap) {
        if (!controller_.itemTransfer().selectionAllowsDrop()) return;
        controller_.playlistEditing().moveMovies(draggedItems(rows), controller_.library().movieAt(gap));
        controller_.find().closeFindPanel();
    };
    view->pictureOf = [this](const std::vector<qsizetype>& rows) {
        std::vector<QPixmap> pictures;
        for (size_t at = 0; at < rows.size() && at < 3; ++at)
            pictures.push_back(model_->thumbnailAt(int(rows[at])));
        return dragPicture(pictures, {}, qsizetype(rows.size()), devicePixelRatio());
    };
    view->dragBegins = [this](const std::vector<qsizetype>& rows) { dragged_ = controller_.library().moviesAt(rows); };
    view->dragEnds = [this] { dragged_.clear(); };
}

/// What is shown may change while somebody drags.
std::vector<std::shared_ptr<Movie>> ItemsPane::draggedItems(const std::vector<qsizetype>& rows) const {
    return dragged_.size() == rows.size() ? dragged_ : controller_.library().moviesAt(rows);
}

void ItemsPane::makeTable() {
    auto* table = new ReorderView<QTableView>(dragType, false, this);
    table_ = table;
    table->setObjectName(QStringLiteral("itemTable"));
    table->setAccessibleName(tr("Items as a list"));
    prepareView(table);
    table->setItemDelegate(new ItemCellDelegate(*model_, table));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(ItemCellDelegate::rowHeight);

    QHeaderView* header = table->horizontalHeader();
    header->setSectionsMovable(true);
    header->setSectionsClickable(true);
    header->setHighlightSections(false);
    header->setMinimumSectionSize(28);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    header->setSortIndicatorShown(false);
    header->setAccessibleName(tr("Columns"));
    // Wide enough for what they say in whatever size of text, and for their titles with the arrow of the sorting.
    const double larger = std::max(1.0, QFontMetrics(font()).height() / 17.0);
    for (int section = 0; section < Column::tableTotal; ++section) {
        const Column& facts = column(section);
        const bool text = *facts.title;
        const int title = text ? header->fontMetrics().horizontalAdvance(facts.titleText()) + 32 : 0;
        header->resizeSection(section, std::max(title, text ? int(facts.width * larger) : facts.width));
    }

    names_ = new FreeColumn(*table, Column::name); // hears of widths before they are stored
    prepareDrags(table);
    connect(header, &QHeaderView::sectionClicked, this, &ItemsPane::sortByColumn);
    connect(header, &QWidget::customContextMenuRequested, this, &ItemsPane::showColumnsMenu);
    connect(header, &QHeaderView::sectionResized, &columnsChanged_, [this] {
        if (!names_->isFitting()) columnsChanged_.start();
    });
    connect(header, &QHeaderView::sectionMoved, &columnsChanged_, qOverload<>(&QTimer::start));
    tableHint_ = new DropHint(tr("Drop movies or folders here"), table);
    stack_->addWidget(table);
}

void ItemsPane::makeTiles() {
    auto* tiles = new ReorderView<QListView>(dragType, true, this);
    tiles_ = tiles;
    tiles->setObjectName(QStringLiteral("itemTiles"));
    tiles->setAccessibleName(tr("Items as tiles"));
    tiles->setModelColumn(Column::name);
    tiles->setFlow(QListView::LeftToRight);
    tiles->setWrapping(true);
    tiles->setResizeMode(QListView::Adjust);
    tiles->setUniformItemSizes(true);
    prepareView(tiles);
    tiles->setModelColumn(Column::name);
    tileDelegate_ = new TileDelegate(*model_, tiles);
    tiles->setItemDelegate(tileDelegate_);
    tiles->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    tiles->setStyleSheet(QStringLiteral("QListView { padding: 6px; }"));

    prepareDrags(tiles);
    tilesHint_ = new DropHint(tr("Drop movies or folders here"), tiles);
    stack_->addWidget(tiles);
}

void ItemsPane::makeLayout(const Commands& commands) {
    sizeSlider_ = new QSlider(Qt::Horizontal, this);
    sizeSlider_->setObjectName(QStringLiteral("tileSizeSlider"));
    sizeSlider_->setRange(100, 400);
    sizeSlider_->setPageStep(50);
    sizeSlider_->setSingleStep(10);
    sizeSlider_->setFixedWidth(120);
    sizeSlider_->setAccessibleName(tr("Tile size"));
    sizeSlider_->setToolTip(tr("Tile size"));
    connect(sizeSlider_, &QSlider::valueChanged, this, [this](int percent) { setTileSize(percent); });

    sizeControls_ = new QWidget(this);
    sizeControls_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* sizes = new QHBoxLayout(sizeControls_);
    sizes->setContentsMargins(0, 0, 0, 0);
    sizes->setSpacing(4);
    sizes->addWidget(commands.button(QStringLiteral("view.smallerTiles"), sizeControls_));
    sizes->addWidget(sizeSlider_);
    sizes->addWidget(commands.button(QStringLiteral("view.largerTiles"), sizeControls_));

    filter_ = new FilterControls(controller_.library(), commands, this);
    auto* find = new FindPanel(controller_, commands, this);
    connect(filter_, &FilterControls::left, this, [this] { activeView()->setFocus(); });
    connect(find, &FindPanel::left, this, [this] { activeView()->setFocus(); });
    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(8, 4, 8, 4);
    bar->setSpacing(4);
    auto* adding = new QMenu(this);
    for (const char* id : {"session.addMedia", "session.addFolder", "session.addBundle"})
        adding->addAction(commands.action(QLatin1String(id)));
    QToolButton* add = commands.button(QStringLiteral("session.addMedia"), this);
    letOpen(*add, adding, QToolButton::MenuButtonPopup);
    add->setMinimumWidth(36);
    bar->addWidget(add);
    bar->addWidget(commands.button(QStringLiteral("item.open"), this));
    bar->addSpacing(12);
    bar->addWidget(filter_, 1);
    bar->addWidget(sizeControls_);
    bar->addSpacing(12);
    bar->addWidget(commands.button(QStringLiteral("view.tiles"), this));
    bar->addWidget(commands.button(QStringLiteral("view.list"), this));
    bar->addSpacing(12);
    bar->addWidget(commands.button(QStringLiteral("view.information"), this));

    auto* views = new QHBoxLayout;
    views->setContentsMargins(0, 0, 0, 0);
    views->setSpacing(1);
    views->addWidget(stack_, 1);
    views->addWidget(information_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(bar);
    layout->addWidget(find);
    layout->addLayout(views, 1);
}

void ItemsPane::showTiles(bool tiles) {
    const bool hadFocus = activeView()->hasFocus();
    stack_->setCurrentWidget(tiles ? static_cast<QWidget*>(tiles_) : table_);
    sizeControls_->setEnabled(tiles);
    if (hadFocus) activeView()->setFocus();
    showLibrarySelection(activeView());
    Q_EMIT looksChanged();
}

bool ItemsPane::tilesShown() const {
    return stack_->currentWidget() == tiles_;
}

QAbstractItemView* ItemsPane::activeView() const {
    return static_cast<QAbstractItemView*>(stack_->currentWidget());
}

void ItemsPane::setTileSize(int percent) {
    percent = std::clamp(percent, sizeSlider_->minimum(), sizeSlider_->maximum());
    sizeSlider_->setValue(percent); // comes back here once when it differs
    tileDelegate_->setScale(percent / 100.0);
    const QSize size = tileDelegate_->tileSize() + QSize(4, 4);
    if (tiles_->gridSize() == size) return;
    const QModelIndex current = tiles_->currentIndex();
    tiles_->setGridSize(size);
    if (current.isValid()) tiles_->scrollTo(current);
    visibleChanged_.start();
    if (controller_.preferences().libraryWindowTileSize() != percent)
        controller_.preferences().libraryWindowTileSize.set(percent);
}

int ItemsPane::tileSize() const {
    return sizeSlider_->value();
}

void ItemsPane::setInformationShown(bool shown) {
    information_->setVisible(shown);
    if (shown) information_->refresh();
    layout()->activate();
    activeView()->scrollTo(activeView()->currentIndex()); // the tiles stand elsewhere now
    Q_EMIT looksChanged();
}

bool ItemsPane::informationShown() const {
    return !information_->isHidden();
}

void ItemsPane::followLibrary() {
    showLibrarySelection(table_);
    showLibrarySelection(tiles_);
}

void ItemsPane::showLibrarySelection(QAbstractItemView* view) {
    const Library::Rows& rows = controller_.library().selectedMovieRows();
    if (model_->rowCount() != int(controller_.library().arrangedMovies().size()) ||
        rows == RowDrag::selectedRows(*view))
        return;
    following_ = true;
    view->selectionModel()->select(selectionOfRows(*model_, rows, Column::tableTotal - 1),
                                   QItemSelectionModel::ClearAndSelect);
    if (!rows.empty()) {
        const QModelIndex first = model_->index(int(rows.front()), Column::name);
        view->selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
        const int sideways = view->horizontalScrollBar()->value(); // only the row is to come into view
        view->scrollTo(first);
        view->horizontalScrollBar()->setValue(sideways);
    }
    following_ = false;
}

std::vector<std::shared_ptr<Movie>> ItemsPane::visibleMovies() const {
    const QAbstractItemView* view = activeView();
    const Library::Movies& movies = controller_.library().arrangedMovies();
    constexpr int probe = 40; // points, smaller than any row or tile
    std::set<int> rows;
    for (int y = probe / 2; y < view->viewport()->height(); y += probe)
        for (int x = probe / 2; x < (tilesShown() ? view->viewport()->width() : probe); x += probe)
            if (const int row = view->indexAt({x, y}).row(); row >= 0 && size_t(row) < movies.size())
                rows.insert(row);
    Thumbnails::Movies visible;
    for (const int row : rows)
        visible.push_back(movies[size_t(row)]);
    return visible;
}

void ItemsPane::followVisible() {
    const std::vector<std::shared_ptr<Movie>> visible = visibleMovies();
    if (!controller_.thumbnails().isIdle()) controller_.thumbnails().prioritise(visible);
    const bool soundShown = !tilesShown() && !table_->isColumnHidden(Column::sound);
    if (soundShown) controller_.itemFacts().want(visible);
    const int shown = tilesShown() ? tileDelegate_->pictureWidth() : table_->columnWidth(Column::thumbnail);
    const int width = int(shown * devicePixelRatio());
    std::vector<std::shared_ptr<Movie>> blurred;
    std::copy_if(visible.begin(), visible.end(), std::back_inserter(blurred),
                 [&](const auto& movie) { return !thumbnails_->isSharp(movie->thumbnail, std::min(width, 1024)); });
    controller_.largeThumbnails().want(blurred, width);
}

/// A first click sorts upwards, a second downwards, a third gives the playlist's own order back.
void ItemsPane::sortByColumn(int column) {
    Library& library = controller_.library();
    if (!columns()[size_t(column)].sortKey) return;
    const QString field = QLatin1String(columns()[size_t(column)].field);
    if (library.sortField() != field)
        library.setSort(field, true);
    else if (library.sortAscending())
        library.setSort(field, false);
    else
        library.setSort(QStringLiteral("sortOrder"), true);
    showSortIndicator();
}

void ItemsPane::showSortIndicator() {
    const Library& library = controller_.library();
    QHeaderView* header = table_->horizontalHeader();
    int sorted = -1;
    for (int column = 0; column < Column::tableTotal; ++column)
        if (QLatin1String(columns()[size_t(column)].field) == library.sortField()) sorted = column;
    header->setSortIndicatorShown(sorted >= 0);
    if (sorted >= 0)
        header->setSortIndicator(sorted, library.sortAscending() ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void ItemsPane::showColumnsMenu(const QPoint& position) {
    QMenu menu(this);
    QHeaderView* header = table_->horizontalHeader();
    for (int column = 0; column < Column::tableTotal; ++column) {
        if (column == Column::name) continue; // an item without a name could not be told from another
        QAction* action =
            menu.addAction(plain::menuTitle(model_->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString()));
        action->setCheckable(true);
        action->setChecked(!header->isSectionHidden(column));
        connect(action, &QAction::toggled, this, [this, header, column](bool shown) {
            header->setSectionHidden(column, !shown);
            columnsChanged_.start();
        });
    }
    menu.exec(header->mapToGlobal(position));
}

void ItemsPane::restoreColumns() {
    const QByteArray stored = controller_.preferences().libraryWindowColumns();
    if (!stored.isEmpty()) table_->horizontalHeader()->restoreState(stored);
    const int names = controller_.preferences().libraryWindowNameWidth();
    names_->setLeast(names > 0 ? names : table_->columnWidth(Column::name));
    table_->horizontalHeader()->setSectionsMovable(true);
    table_->setColumnHidden(Column::name, false);
    showSortIndicator();
    columnsChanged_.stop();
}

/// The first names that come say how wide their column is, until a person says something else.
void ItemsPane::fitNames() {
    const Library::Movies& movies = controller_.library().arrangedMovies();
    if (namesFit_ || movies.empty()) return;
    namesFit_ = true;
    if (!controller_.preferences().libraryWindowColumns().isEmpty()) return;
    constexpr size_t looked = 200;
    constexpr int narrowest = 160, widest = 420;
    int width = narrowest;
    for (size_t at = 0; at < movies.size() && at < looked; ++at)
        width = std::max(width, table_->fontMetrics().horizontalAdvance(plain::line(movies[at]->shownName())) + 16);
    names_->setLeast(std::min(width, widest));
}

void ItemsPane::storeColumns() {
    columnsChanged_.stop();
    controller_.preferences().libraryWindowColumns.set(table_->horizontalHeader()->saveState());
    controller_.preferences().libraryWindowNameWidth.set(names_->least());
}

void ItemsPane::goToSearch() {
    filter_->goToField();
}

/// Why nothing is to be seen, and what can be done about it.
QString ItemsPane::hintText() const {
    const Library& library = controller_.library();
    const auto playlist = library.selectedPlaylist();
    if (playlist && !library.unfilteredMovies().empty())
        return tr("The filter hides all items of this playlist.\nEscape in the search field or Show All brings them back.");
    if (playlist && playlist->isType(playlistType::smart))
        return playlist->asksRules() ? tr("No item answers the rules of this smartlist")
                                     : tr("This smartlist has no rules yet.\nSmartlist Rules... in its menu gives it some.");
    if (playlist && playlist->isType(playlistType::folder)) return tr("No media in this folder");
    return tr("Drop movies or folders here");
}

void ItemsPane::refreshHints() {
    const Library& library = controller_.library();
    const bool hides = !library.unfilteredMovies().empty();
    // The preference is about drops; that a filter hides everything is said in any case.
    const bool wanted = library.arrangedMovies().empty() && (hides || controller_.preferences().showDropText());
    for (DropHint* hint : {tableHint_, tilesHint_}) {
        hint->setText(hintText());
        hint->setVisible(wanted);
    }
}

} // namespace daylark
