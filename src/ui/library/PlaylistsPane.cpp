#include "ui/library/PlaylistsPane.h"

#include "app/PlaylistController.h"
#include "preferences/Preferences.h"
#include "ui/commands/Commands.h"
#include "ui/common/DropHint.h"
#include "ui/common/ListOpener.h"
#include "ui/common/ReorderView.h"
#include "ui/library/DragPicture.h"
#include "ui/library/ItemDelegates.h"
#include "ui/library/ItemsPane.h"
#include "ui/library/PlaylistsModel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace daylark {

PlaylistsPane::PlaylistsPane(PlaylistController& controller, const Commands& commands, QWidget* parent)
    : QWidget(parent)
    , controller_(controller)
    , model_(new PlaylistsModel(controller.library(), controller.playlistEditing(), controller.preferences(), this)) {
    makeTable();
    hint_ = new DropHint(tr("Drop folders here,\neach becomes a playlist"), table_);

    auto* add = new QToolButton(this);
    auto* addMenu = new QMenu(add);
    for (const char* id : {"session.newPlaylist", "session.newSmartlist", "session.newFolderlist", "session.newDivider",
                           "session.newDatedDivider"})
        addMenu->addAction(commands.action(QString::fromLatin1(id)));
    add->setDefaultAction(commands.action(QStringLiteral("session.newPlaylist")));
    letOpen(*add, addMenu, QToolButton::MenuButtonPopup);
    add->setToolButtonStyle(Qt::ToolButtonIconOnly);
    add->setAutoRaise(true);
    add->setMinimumSize(36, 24);
    add->setFocusPolicy(Qt::TabFocus);
    add->setAccessibleName(tr("New playlist, smartlist, folder list or divider"));
    QToolButton* remove = commands.button(QStringLiteral("playlists.remove"), this);

    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(4, 4, 4, 4);
    buttons->setSpacing(4);
    buttons->addWidget(add);
    buttons->addWidget(remove);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(table_);
    layout->addLayout(buttons);

    Library& library = controller_.library();
    connect(&library, &Library::playlistSelectionChanged, this, &PlaylistsPane::showLibrarySelection);
    connect(model_, &QAbstractItemModel::modelReset, this, [this] {
        showLibrarySelection();
        refreshHint();
    });
    connect(&controller_.fileStates(), &FileStates::updated, model_, &PlaylistsModel::refreshAll);
    connect(&controller_.playlistEditing(), &PlaylistEditing::playlistAdded, this, [this](qsizetype row) {
        table_->scrollTo(model_->index(int(row), 0));
        table_->setFocus();
    });
    showLibrarySelection();
    refreshHint();
}

void PlaylistsPane::makeTable() {
    auto* table =
        new ReorderView<QTableView>(QStringLiteral("application/x-daylark-playlist-rows"), false, this);
    table_ = table;
    table->setObjectName(QStringLiteral("playlistTable"));
    table->setAccessibleName(tr("Playlists"));
    table->setModel(model_);
    table->setItemDelegate(new PlaylistDelegate(table));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setTabKeyNavigation(false);
    table->setFrameShape(QFrame::NoFrame);
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(PlaylistDelegate::rowHeight());
    QHeaderView* header = table->horizontalHeader();
    header->setSectionsClickable(false);
    header->setHighlightSections(false);
    header->setMinimumSectionSize(40);
    header->setSectionResizeMode(PlaylistsModel::nameColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(PlaylistsModel::countColumn, QHeaderView::Fixed);
    header->resizeSection(PlaylistsModel::countColumn,
                          std::max(56, table->fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 16));
    header->hide();

    table->filesDropped = [this](const QStringList& files) {
        controller_.mediaAdding().dropOnPlaylists(files);
        controller_.find().closeFindPanel();
        controller_.bringLibraryToFront();
    };
    table->rowsDropped = [this](const std::vector<qsizetype>& rows, qsizetype gap) {
        controller_.library().movePlaylists(rows, gap);
        controller_.find().closeFindPanel();
    };
    table->ontoType = ItemsPane::dragType;
    table->takesOnto = [this](qsizetype row) {
        return controller_.library().playlists()[size_t(row)]->isType(playlistType::list);
    };
    table->rowsDroppedOnto = [this](const std::vector<qsizetype>& rows, qsizetype onto, Qt::KeyboardModifiers held) {
        const auto& playlists = controller_.library().playlists();
        if (size_t(onto) >= playlists.size() || !draggedItems) return;
        const bool modified = held & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
        controller_.itemTransfer().dropOnPlaylist(draggedItems(rows), playlists[size_t(onto)], modified);
    };
    table->pictureOf = [this](const std::vector<qsizetype>& rows) {
        const QString name = model_->index(int(rows.front()), PlaylistsModel::nameColumn).data().toString();
        return dragPicture({}, name, qsizetype(rows.size()), devicePixelRatio());
    };
    connect(table, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
        Q_EMIT menuRequested(table_->viewport()->mapToGlobal(position), table_->indexAt(position).isValid());
    });
    connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!following_) controller_.library().selectPlaylists(RowDrag::selectedRows(*table_));
    });
}

void PlaylistsPane::showLibrarySelection() {
    const Library::Rows& rows = controller_.library().selectedPlaylistRows();
    if (model_->rowCount() != int(controller_.library().playlists().size()) ||
        rows == RowDrag::selectedRows(*table_))
        return;
    following_ = true;
    QItemSelection selection;
    for (const qsizetype row : rows)
        selection.select(model_->index(int(row), 0),
                         model_->index(int(row), PlaylistsModel::columnTotal - 1));
    table_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (!rows.empty()) {
        const QModelIndex first = model_->index(int(rows.front()), 0);
        table_->selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
        table_->scrollTo(first);
    }
    following_ = false;
}

void PlaylistsPane::editSelectedName() {
    const Library::Rows& rows = controller_.library().selectedPlaylistRows();
    if (rows.empty()) return;
    table_->setFocus();
    table_->edit(model_->index(int(rows.front()), PlaylistsModel::nameColumn));
}

void PlaylistsPane::refreshHint() {
    const bool wanted = controller_.preferences().showDropText();
    hint_->setVisible(wanted && controller_.library().playlists().empty());
}

} // namespace daylark
