#include "ui/ViewerWindow.h"

#include "model/Movie.h"
#include "platform/UserDefaults.h"
#include "playback/Player.h"
#include "ui/BookmarkPanel.h"
#include "ui/Commands.h"
#include "ui/DrawingOverlay.h"
#include "ui/DrawingPanel.h"
#include "ui/FlagPopUp.h"
#include "ui/GradingPanel.h"
#include "ui/KeysDialog.h"
#include "ui/NotesPanel.h"
#include "ui/PictureView.h"
#include "ui/PlaybackReadOut.h"
#include "ui/PlaylistDrawer.h"
#include "ui/PositionSlider.h"
#include "ui/RangeIndicator.h"
#include "ui/ReadyStrip.h"
#include "ui/RichTextField.h"
#include "ui/SnapshotFlash.h"
#include "ui/Theme.h"
#include "ui/TransportBar.h"
#include "ui/ViewerCommands.h"
#include "ui/ViewerPanelHost.h"
#include "ui/ViewerSizing.h"
#include "viewer/MoviePlayerController.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenuBar>
#include <QScreen>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>

namespace daylark {

namespace {

constexpr int arrangementVersion = 2;
const QString geometryKey = QStringLiteral("viewerWindow_geometry"),
              arrangementKey = QStringLiteral("viewerWindow_panels");

} // namespace

ViewerWindow::ViewerWindow(MoviePlayerController& controller, QWidget* parent)
    : QMainWindow(parent)
    , controller_(controller)
    , commands_(std::make_unique<Commands>(this))
    , panelHost_(new ViewerPanelHost(*this, controller.panels()))
    , picture_(new PictureView(this))
    , notes_(new NotesPanel(controller.edits(), controller.defaults(), this))
    , drawer_(new PlaylistDrawer(controller.list(), controller.edits(), controller.defaults(), this)) {
    setObjectName(QStringLiteral("viewerWindow"));
    setAttribute(Qt::WA_QuitOnClose, false); // the program ends with the library's window
    setWindowTitle(tr("Viewer"));
    addCommands();
    buildLayout();
    connectController();
    connectPreferences();
    readOut_ = new PlaybackReadOut(controller.player(), *picture_, controller.defaults(), this);
    picture_->chooseRenderer(controller.defaults().stringForKey(QStringLiteral("pictureRenderer")));
    restoreArrangement();
    movieChanged();
}

ViewerWindow::~ViewerWindow() {
    notes_->flush();
    if (isVisible()) saveArrangement();
    // Panels announce that they go, after the commands have gone.
    panelHost_->stop();
}

void ViewerWindow::addCommands() {
    ViewerWindowActions actions;
    const auto toggle = [this](ViewerPanel panel) {
        return [this, panel] { controller_.panels().toggle(panel); };
    };
    const auto shown = [this](ViewerPanel panel) {
        return [this, panel] { return controller_.panels().isVisible(panel); };
    };
    actions.toggleNotes = [this] {
        controller_.panels().toggle(ViewerPanel::notes);
        if (controller_.panels().isVisible(ViewerPanel::notes)) notes_->focusNotes();
    };
    actions.toggleBookmarks = toggle(ViewerPanel::bookmarks);
    actions.togglePlaylistDrawer = toggle(ViewerPanel::playlistDrawer);
    actions.toggleFullScreen = [this] { toggleFullScreen(); };
    actions.notesShown = shown(ViewerPanel::notes);
    actions.bookmarksShown = shown(ViewerPanel::bookmarks);
    actions.playlistDrawerShown = shown(ViewerPanel::playlistDrawer);
    actions.isFullScreen = [this] { return isFullScreen(); };
    actions.leave = [this] { leaveTextOrFullScreen(); };
    actions.close = [this] { close(); };
    actions.goToSelectedBookmark = [this] { bookmarks_->goToSelected(); };
    actions.deleteSelectedBookmark = [this] { bookmarks_->deleteSelected(); };
    actions.showKeys = [this] { showKeys(); };
    actions.makeThumbnail = [this](const QString& choice) { Q_EMIT thumbnailWanted(choice); };
    addViewerCommands(*commands_, controller_, actions);
    buildViewerMenus(*menuBar(), *commands_);
}

// The strip spans the whole foot, below the panels on either side.
void ViewerWindow::buildLayout() {
    setCentralWidget(picture_);
    setDockNestingEnabled(true);

    auto* foot = new QWidget(this);
    slider_ = new PositionSlider(foot);
    bar_ = new TransportBar(controller_, *commands_, foot);
    auto* rows = new QVBoxLayout(foot);
    rows->setContentsMargins(0, 4, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(slider_);
    auto* rangeRow = new QHBoxLayout; // as wide as the slider's track
    rangeRow->setContentsMargins(PositionSlider::sliderMargin, 0, PositionSlider::sliderMargin, 0);
    rangeRow->addWidget(new RangeIndicator(controller_.range(), foot));
    rows->addLayout(rangeRow);
    rows->addWidget(bar_);
    auto* strip = new QToolBar(tr("Controls"), this);
    strip->setObjectName(QStringLiteral("viewerControls"));
    strip->setMovable(false);
    strip->setContextMenuPolicy(Qt::PreventContextMenu);
    strip->toggleViewAction()->setEnabled(false);
    strip->setStyleSheet(
        QStringLiteral("QToolBar { border: none; padding: 0; margin: 0; spacing: 0; background: %1; }")
            .arg(theme::window.name()));
    strip->addWidget(foot);
    foot->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    addToolBar(Qt::BottomToolBarArea, strip);
    setContextMenuPolicy(Qt::PreventContextMenu);

    bookmarks_ = new BookmarkPanel(controller_.bookmarks(), *commands_, controller_.defaults(), this);
    using Place = ViewerPanelHost::Place;
    QDockWidget* notes =
        panelHost_->addPanel(ViewerPanel::notes, tr("Notes"), notes_, Place::docked, Qt::LeftDockWidgetArea);
    QDockWidget* bookmarks = panelHost_->addPanel(ViewerPanel::bookmarks, tr("Bookmarks"), bookmarks_,
                                                  Place::docked, Qt::BottomDockWidgetArea);
    drawer_->view()->setContextMenuPolicy(Qt::ActionsContextMenu);
    for (const char* id : {"viewer.reveal", "viewer.copyPath", "viewer.copyFilename"})
        drawer_->view()->addAction(commands_->action(QLatin1String(id)));
    QDockWidget* drawer = panelHost_->addPanel(ViewerPanel::playlistDrawer, tr("Playlist"), drawer_,
                                               Place::docked, Qt::RightDockWidgetArea);
    panelHost_->addPanel(ViewerPanel::grading, tr("Colour Correction"),
                         new GradingPanel(controller_, *commands_, this), Place::floating);
    auto* drawing = new DrawingPanel(controller_, *commands_, this);
    panelHost_->addPanel(ViewerPanel::drawing, tr("Drawing Tools"), drawing, Place::floating);
    connect(panelHost_, &ViewerPanelHost::colourPanelCloseWanted, drawing, &DrawingPanel::closeColourDialog);
    new ViewerSizing(*this, *picture_, controller_.geometry()); // the window owns it
    resizeDocks({notes, drawer}, {280, 280}, Qt::Horizontal);
    resizeDocks({bookmarks}, {168}, Qt::Vertical);
    connect(panelHost_, &ViewerPanelHost::visibilityChanged, this, [this] { commands_->refresh(); });
    setTabOrder(picture_, slider_);
    setTabOrder(slider_, bar_);
    picture_->setFocus();

    new ReadyStrip(controller_.player(), *slider_, this);
    slider_->setDescription([this](double ticks) {
        const SampleIndex& index = controller_.player().index();
        const qint64 frame = index.frameAt({qint64(ticks) + index.step / 2, index.timeScale}) + 1;
        return tr("Frame %1\n%2").arg(frame).arg(controller_.time().computeTimecodeFromFrameNumber(frame));
    });
    connect(slider_, &PositionSlider::sought, this,
            [this](double ticks) { controller_.transport().setSliderTime(ticks); });
    connect(slider_, &PositionSlider::frameSought, this, [this](qint64 frame) {
        controller_.transport().setSliderTime(double(controller_.player().index().timeOf(frame - 1).value));
    });
}

void ViewerWindow::connectController() {
    connect(&controller_.grade(), &ViewerGrade::transformChanged, this,
            [this] { picture_->setColourTransform(controller_.grade().transform()); });
    new DrawingOverlay(controller_, *picture_); // the picture owns it
    controller_.snapshots().setArea(
        {[this] { return picture_->devicePixels(); },
         [this](QSize size) { return picture_->renderArea(size, PictureView::Layers::all); }});
    connect(&controller_.snapshots(), &Snapshots::flash, this,
            [flash = new SnapshotFlash(picture_)] { flash->flash(); });
    connect(&controller_, &MoviePlayerController::windowOpened, this, &ViewerWindow::windowOpened);
    connect(&controller_, &MoviePlayerController::windowClosed, this, &ViewerWindow::windowClosed);
    connect(&controller_, &MoviePlayerController::movieLoading, this, &ViewerWindow::showLoading);
    connect(&controller_, &MoviePlayerController::movieShown, this, &ViewerWindow::movieChanged);
    connect(&controller_, &MoviePlayerController::movieProbed, drawer_, &PlaylistDrawer::movieUpdated);
    connect(&controller_.player(), &Player::frameShown, this,
            [this](const VideoFrame& frame) { picture_->setFrame(frame); });
    connect(&controller_.player(), &Player::positionChanged, this, &ViewerWindow::showPosition);
    connect(&controller_.time(), &TimeDisplay::changed, this, &ViewerWindow::showPosition);
    connect(&controller_.transport(), &Transport::stateChanged, this, [this] {
        picture_->setMoving(controller_.transport().isRunning());
        bar_->showState();
        commands_->refresh();
    });
    connect(&controller_.list(), &ViewerList::selectionChanged, commands_.get(), &Commands::refresh);
    connect(&controller_.list(), &ViewerList::moviesChanged, commands_.get(), &Commands::refresh);
    connect(&controller_.list(), &ViewerList::selectedMoviesChanged, commands_.get(), &Commands::refresh);
    connect(&controller_.bookmarks(), &ViewerBookmarks::bookmarksChanged, this, [this] {
        showBookmarkBars();
        commands_->refresh();
    });
    connect(&controller_.bookmarks(), &ViewerBookmarks::activeBookmarksChanged, this, [this] {
        showBookmarkBars();
        showHeadsUp();
        commands_->refresh();
    });
    connect(&controller_, &MoviePlayerController::onscreenTextColourChanged, this,
            &ViewerWindow::showHeadsUp);
    connect(&controller_.edits(), &ReviewEdits::movieChanged, this,
            [this](const std::shared_ptr<Movie>& movie, const QString& field) {
                if (movie != controller_.currentMovie() || !field.startsWith(QLatin1String("flag"))) return;
                bar_->showFlag();
                commands_->refresh();
            });
}

void ViewerWindow::connectPreferences() {
    connect(&controller_.defaults(), &UserDefaults::changed, this, [this](const QString& key) {
        if (key == QLatin1String("repeatType")) bar_->showRepeatType();
        if (key == QLatin1String("pictureRenderer"))
            picture_->chooseRenderer(controller_.defaults().stringForKey(key));
        if (key == QLatin1String("trimHandles")) commands_->refresh();
        if (key == QLatin1String("rateMultiplier")) bar_->showState();
        if (key.startsWith(QLatin1String("display")) || key == QLatin1String("counterStartFrame")) {
            controller_.time().setOverlayInfoDynamic();
            showPosition();
            commands_->refresh();
        }
        if (key.size() == 3 && key.startsWith(u'9')) {
            renameFlagCommands(*commands_, controller_);
            bar_->showFlag();
        }
    });
}

void ViewerWindow::toggleFullScreen() {
    const bool enter = !isFullScreen();
    menuBar()->setVisible(!enter);
    setWindowState(enter ? windowState() | Qt::WindowFullScreen : windowState() & ~Qt::WindowFullScreen);
    commands_->action(QStringLiteral("viewer.fullScreen"))
        ->setIcon(theme::icon(enter ? QStringLiteral("leaveFullScreen") : QStringLiteral("fullScreen")));
}

void ViewerWindow::leaveTextOrFullScreen() {
    QWidget* focus = QApplication::focusWidget();
    if (qobject_cast<QTextEdit*>(focus) || qobject_cast<QLineEdit*>(focus)) {
        activateWindow();
        picture_->setFocus();
    } else if (isFullScreen()) {
        toggleFullScreen();
    }
}

void ViewerWindow::showKeys() {
    KeysDialog dialog(*commands_, tr("Keys of the Viewer"), this);
    dialog.exec();
}

void ViewerWindow::windowOpened() {
    const bool wasHidden = isHidden();
    if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    if (!wasHidden) return;
    controller_.panels().restoreOpenPanels();
    picture_->setFocus();
}

void ViewerWindow::windowClosed() {
    notes_->setMovie(nullptr);
    saveArrangement();
    if (isFullScreen()) toggleFullScreen();
    panelHost_->hideAll(); // a floating panel is a window of its own and does not hide with this one
    hide();
    picture_->clear();
    movieChanged();
}

void ViewerWindow::saveArrangement() {
    UserDefaults& defaults = controller_.defaults();
    if (!isFullScreen()) defaults.set(geometryKey, QString::fromLatin1(saveGeometry().toBase64()));
    defaults.set(arrangementKey, QString::fromLatin1(saveState(arrangementVersion).toBase64()));
}

void ViewerWindow::restoreArrangement() {
    const UserDefaults& defaults = controller_.defaults();
    const auto stored = [&](const QString& key) {
        return QByteArray::fromBase64(defaults.stringForKey(key).toLatin1());
    };
    if (!restoreGeometry(stored(geometryKey))) {
        const QSize room = screen()->availableSize() * 0.9;
        resize(QSize(1360, 900).boundedTo(room));
    }
    restoreState(stored(arrangementKey), arrangementVersion);
    panelHost_->hideAll();
}

void ViewerWindow::closeEvent(QCloseEvent* event) {
    notes_->flush(); // before the session is saved
    if (!controller_.isOpen()) return event->accept();
    if (!controller_.windowShouldClose()) return event->ignore();
    controller_.close();
    event->accept();
}

// Lists keep these two keys for themselves, so they are not shortcuts.
void ViewerWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Up)
        commands_->action(QStringLiteral("viewer.playForwards"))->trigger();
    else if (event->key() == Qt::Key_Down)
        commands_->action(QStringLiteral("viewer.playBackwards"))->trigger();
    else
        QMainWindow::keyPressEvent(event);
}

void ViewerWindow::showLoading(bool loading) {
    loading_ = loading;
    movieChanged();
}

void ViewerWindow::movieChanged() {
    const auto movie = controller_.currentMovie();
    notes_->setMovie(movie);
    setWindowTitle(movie
                       ? QString(movie->filenameString).replace(QLatin1String("[*]"), QLatin1String("[*][*]"))
                       : tr("Viewer"));
    // The last picture stays until the next movie's first one is there.
    if (movie && !loading_ && !controller_.player().isOpen()) picture_->clear();
    bar_->showFlag();
    bar_->showState();
    showBookmarkBars();
    showPosition();
    commands_->refresh();
}

void ViewerWindow::showPosition() {
    const TimeDisplay& time = controller_.time();
    const Player& player = controller_.player();
    const bool open = player.isOpen();
    slider_->setMovie(open ? time.sliderMaximum() : 0, open ? double(player.index().endTicks) : 0,
                      open ? player.index().count() : 0, open ? time.tickCount() : 0);
    slider_->setPosition(open ? time.sliderTime() : 0, player.currentFrame());
    bar_->showTimes();
    showHeadsUp();
}

void ViewerWindow::showHeadsUp() {
    const auto movie = controller_.currentMovie();
    const UserDefaults& defaults = controller_.defaults();
    const auto shown = [&](const char* key) { return movie && defaults.boolForKey(QLatin1String(key)); };
    PictureView::HeadsUp headsUp;
    if (shown("displayFrameCounter")) headsUp.counter = controller_.time().currentFrameNumberForDisplay();
    if (shown("displayFilename")) headsUp.filename = movie->filenameString;
    if (shown("displayTimecode") &&
        defaults.stringForKey(QStringLiteral("timecodeDisplayType")) == QLatin1String("Fixed"))
        headsUp.timecode = controller_.time().currentTimeCodeForDisplay();
    if (shown("displayBookmarkText"))
        headsUp.overlayText = controller_.bookmarks().overlayTextData().trimmed();
    headsUp.overlayColour = controller_.onscreenTextColour();
    if (!headsUp.overlayColour.isValid()) headsUp.overlayColour = Qt::yellow;
    if (movie && !loading_ && !controller_.player().isOpen())
        headsUp.message = tr("File not found\n%1").arg(movie->filenameString);
    picture_->setHeadsUp(headsUp);
}

void ViewerWindow::showBookmarkBars() {
    std::vector<PositionSlider::Bar> bars;
    if (controller_.player().isOpen()) {
        const SampleIndex& index = controller_.player().index();
        const auto& active = controller_.bookmarks().activeBookmarks();
        for (const auto& bookmark : controller_.bookmarks().bookmarks()) {
            if (!bookmark || bookmark->firstFrame > index.count()) continue;
            PositionSlider::Bar bar;
            bar.from = double(index.timeOf(bookmark->firstFrame - 1).value);
            bar.to = double(index.timeOf(bookmark->lastFrame - 1).value);
            bar.muted = bookmark->mute;
            bar.active = std::find(active.begin(), active.end(), bookmark) != active.end();
            bars.push_back(bar);
        }
    }
    slider_->setBars(std::move(bars));
}

} // namespace daylark
