#include "ui/library/LibraryWindow.h"

#include "app/PlaylistController.h"
#include "app/playlists/SmartQuestion.h"
#include "base/PlainText.h"
#include "commands/library/LibraryCommands.h"
#include "preferences/Preferences.h"
#include "review/ManyChanges.h"
#include "ui/commands/Commands.h"
#include "ui/commands/KeysDialog.h"
#include "ui/commands/LibraryKeys.h"
#include "ui/common/FailedWritesBar.h"
#include "ui/common/Theme.h"
#include "ui/common/notice/PassingLine.h"
#include "ui/library/ItemsPane.h"
#include "ui/library/MoviesModel.h"
#include "ui/library/PlaylistsPane.h"
#include "ui/library/ProgressWindow.h"
#include "ui/library/RecentSessionsMenu.h"
#include "ui/library/StatusStrip.h"
#include "ui/library/search/SmartRulesPanel.h"
#include "ui/preferences/PreferencesWindow.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

namespace daylark {

LibraryWindow::LibraryWindow(PlaylistController& controller, QWidget* parent)
    : QMainWindow(parent)
    , controller_(controller)
    , commandSet_(libraryTable(), controller.preferences())
    , keys_(controller.preferences()) {
    setObjectName(QStringLiteral("libraryWindow"));
    addCommands();
    makeCentre();
    new LibraryKeys(*this, *commands_, *playlists_->table(), *items_); // the window owns it
    progress_ = new ProgressWindow(controller_.progress(), this);
    connectController();
    restoreLooks();
    showTab();
    setWindowTitle(plain::windowTitle(controller_.sessionFiles().windowTitle()) + QStringLiteral("[*]"));
}

LibraryWindow::~LibraryWindow() {
    // The panes store how they looked when they go, which reads the controller.
    delete takeCentralWidget();
}

void LibraryWindow::makeCentre() {
    auto* centre = new QWidget(this);
    splitter_ = new QSplitter(Qt::Horizontal, centre);
    splitter_->setChildrenCollapsible(false);
    splitter_->setHandleWidth(1);
    playlists_ = new PlaylistsPane(controller_, *commands_, splitter_);
    playlists_->setMinimumWidth(160);
    items_ = new ItemsPane(controller_, *commands_, splitter_);
    items_->setMinimumWidth(420);
    splitter_->addWidget(playlists_);
    splitter_->addWidget(items_);
    splitter_->setStretchFactor(0, 0);
    splitter_->setStretchFactor(1, 1);
    status_ = new StatusStrip(controller_, centre);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(splitter_, 1);
    layout->addWidget(new FailedWritesBar(controller_.failedWrites(), centre));
    layout->addWidget(status_);
    setCentralWidget(centre);
    ReviewEdits& edits = controller_.edits();
    auto* passing = new PassingLine(*items_);
    tellOf(*new ManyChanges(edits.store(), edits.history(), this), *passing,
           [this] { return controller_.preferences().tellOfManyChanges(); });
    connect(&controller_, &PlaylistController::namesLeftOut, passing, [passing](const QString& text) { passing->say(text); });

    connect(splitter_, &QSplitter::splitterMoved, this,
            [this] { controller_.preferences().playlistViewWidth.set(playlists_->width()); });
    for (Condition* state : {tilesShown_, informationShown_}) {
        state->follows(*items_, &ItemsPane::looksChanged);
        state->look();
    }
    connect(items_, &ItemsPane::openRequested, this, [this] { controller_.loadMovieWindow(); });
    connect(items_, &ItemsPane::menuRequested, this, &LibraryWindow::showItemsMenu);
    connect(playlists_, &PlaylistsPane::menuRequested, this, &LibraryWindow::showPlaylistsMenu);
    playlists_->draggedItems = [this](const std::vector<qsizetype>& rows) { return items_->draggedItems(rows); };
    connect(&controller_.playlistEditing(), &PlaylistEditing::smartlistAdded, this, &LibraryWindow::showNewRules);
}

void LibraryWindow::addCommands() {
    LibraryWindowActions actions;
    actions.selectAll = [this] {
        (playlists_->table()->hasFocus() ? playlists_->table() : items_->activeView())->selectAll();
    };
    actions.renamePlaylist = [this] { playlists_->editSelectedName(); };
    actions.showTiles = [this](bool tiles) { items_->showTiles(tiles); };
    actions.enlargeTiles = [this](int percent) { items_->setTileSize(items_->tileSize() + percent); };
    actions.toggleInformation = [this] { items_->setInformationShown(!items_->informationShown()); };
    actions.showPlaylistOrder = [this] {
        controller_.library().setSort(QStringLiteral("sortOrder"), true);
        items_->showSortIndicator();
    };
    actions.goToPlaylists = [this] { playlists_->table()->setFocus(); };
    actions.goToItems = [this] { items_->activeView()->setFocus(); };
    actions.searchItems = [this] { items_->goToSearch(); };
    actions.editRules = [this] { showRules(); };
    actions.minimise = [this] { showMinimized(); };
    actions.close = [this] { close(); };
    actions.showPreferences = [this] { showPreferences(); };
    actions.showKeys = [this] { showShortcuts(); };
    actions.showAbout = [this] { showAbout(); };
    actions.tilesShown = [this] { return items_ && items_->tilesShown(); };
    actions.informationShown = [this] { return items_ && items_->informationShown(); };
    const LibraryWindowState state = bindLibraryCommands(commandSet_, controller_, actions);
    tilesShown_ = &state.tilesShown;
    informationShown_ = &state.informationShown;
    commands_ = new Commands(commandSet_, keys_, this);
    commands_->fill(*menuBar(), libraryMenus());
    new RecentSessionsMenu(controller_, *commands_->action(QStringLiteral("session.clearRecent"))); // its menu owns it
}

void LibraryWindow::connectController() {
    SessionFiles& session = controller_.sessionFiles();
    connect(&session, &SessionFiles::titleChanged, this,
            [this](const QString& title) { setWindowTitle(plain::windowTitle(title) + QStringLiteral("[*]")); });
    connect(&session, &SessionFiles::modifiedChanged, this, &QWidget::setWindowModified);
    connect(&session, &SessionFiles::bringToFront, this, &LibraryWindow::bringToFront);
    connect(&controller_, &PlaylistController::libraryToFront, this, &LibraryWindow::bringToFront);
    connect(&controller_, &PlaylistController::libraryHidden, this, &QWidget::hide);
    connect(&controller_, &PlaylistController::terminate, this, &QWidget::close, Qt::QueuedConnection);
    connect(&controller_, &PlaylistController::started, this, [this] { playlists_->table()->setFocus(); });
    connectPreferences();
}

void LibraryWindow::connectPreferences() {
    const Preferences& preferences = controller_.preferences();
    connect(&preferences.initialTabItem, &PreferenceItem::changed, this, &LibraryWindow::showTab);
    connect(&preferences.showDropText, &PreferenceItem::changed, this, [this] {
        items_->refreshHints();
        playlists_->refreshHint();
    });
    for (const Preference<QString>& name : preferences.statusNames)
        connect(&name, &PreferenceItem::changed, this, [this] { items_->model()->refreshAll(); });
}

void LibraryWindow::showTab() {
    const Preferences& preferences = controller_.preferences();
    const int wanted = preferences.initialTabItem();
    constexpr int tiles = 1, asLeft = 2;
    items_->showTiles(wanted == asLeft ? !preferences.libraryWindowShowsList() : wanted == tiles);
}

void LibraryWindow::restoreLooks() {
    const Preferences& preferences = controller_.preferences();
    const QByteArray geometry = preferences.libraryWindowGeometry();
    if (geometry.isEmpty() || !restoreGeometry(geometry)) resize(1280, 720);
    // The screen may have become smaller since; and the frame, which isn't there yet, takes its place, too.
    const QRect available = screen()->availableGeometry();
    const QSize most = available.size() - QSize(8, 40);
    const bool fits = available.contains(frameGeometry()) && width() <= most.width() && height() <= most.height();
    if (!isMaximized() && !isFullScreen() && !fits) {
        resize(size().boundedTo(most));
        move(std::clamp(x(), available.left(), std::max(available.left(), available.right() - width())),
             std::clamp(y(), available.top(), std::max(available.top(), available.bottom() - height() - 32)));
    }
    const int stored = preferences.playlistViewWidth();
    const int left = stored > 0 ? stored : 250;
    splitter_->setSizes({left, std::max(420, width() - left)});
}

void LibraryWindow::storeLooks() {
    controller_.preferences().libraryWindowGeometry.set(saveGeometry());
    controller_.preferences().libraryWindowShowsList.set(!items_->tilesShown());
}

void LibraryWindow::bringToFront() {
    if (closing_) return; // the program is ending: the viewer that closes with it brings nothing back
    if (isMinimized()) showNormal();
    show();
    raise();
    activateWindow();
}

PreferencesWindow& LibraryWindow::preferencesWindow() {
    if (preferencesWindow_) return *preferencesWindow_;
    preferencesWindow_ = new PreferencesWindow(controller_.preferences(), this);
    connect(preferencesWindow_, &PreferencesWindow::searchFolderWanted, this,
            [this] { commandSet_.run(QStringLiteral("relink.root")); });
    return *preferencesWindow_;
}

void LibraryWindow::showPreferences() {
    preferencesWindow().show();
    preferencesWindow().raise();
    preferencesWindow().activateWindow();
}

void LibraryWindow::showRules() {
    const auto smartlist = controller_.library().selectedPlaylist();
    if (!smartlist || !smartlist->isType(playlistType::smart)) return;
    for (auto* open : findChildren<SmartRulesPanel*>()) {
        if (open->smartlist() != smartlist || !open->isVisible()) continue;
        open->raise();
        open->activateWindow();
        return;
    }
    auto* panel = new SmartRulesPanel(controller_, smartlist, this);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->show();
}

/// A smartlist begins with a rule, so that there is something to change.
void LibraryWindow::showNewRules() {
    if (const auto smartlist = controller_.library().selectedPlaylist())
        controller_.playlistEditing().setRules(
            smartlist, {false, {smartQuestion::firstRule(smartQuestion::subjects().front())}});
    showRules();
}

void LibraryWindow::showShortcuts() {
    auto* keys = new KeysDialog(*commands_, libraryMenus(), tr("Keys of the Library"), this);
    keys->setAttribute(Qt::WA_DeleteOnClose);
    keys->show();
}

void LibraryWindow::showAbout() {
    QMessageBox about(this);
    about.setWindowTitle(tr("About Daylark"));
    about.setIconPixmap(theme::icon(QStringLiteral("daylark")).pixmap(QSize(64, 64), devicePixelRatio()));
    about.setText(QStringLiteral("<b>Daylark</b><br>Version %1").arg(QCoreApplication::applicationVersion()));
    about.setInformativeText(
        QStringLiteral("A review player for film dailies.\n\n"
                       "Built on Qt %1 and FFmpeg. Licensed under the Apache License 2.0.")
            .arg(QString::fromLatin1(qVersion())));
    about.exec();
}

void LibraryWindow::showPlaylistsMenu(const QPoint& position, bool onPlaylist) {
    QMenu menu(this);
    commands_->fill(menu, playlistMenu(onPlaylist));
    menu.exec(position);
}

void LibraryWindow::showItemsMenu(const QPoint& position, bool onItem) {
    QMenu menu(this);
    commands_->fill(menu, itemMenu(onItem));
    menu.exec(position);
}

void LibraryWindow::closeEvent(QCloseEvent* event) {
    storeLooks();
    if (preferencesWindow_) preferencesWindow_->hide();
    closing_ = true;
    event->accept();
    Q_EMIT closed();
}

} // namespace daylark
