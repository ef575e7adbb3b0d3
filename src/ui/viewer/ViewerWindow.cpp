#include "ui/viewer/ViewerWindow.h"

#include "base/PlainText.h"
#include "commands/viewer/ViewerCommands.h"
#include "model/Movie.h"
#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "review/ManyChanges.h"
#include "ui/commands/Commands.h"
#include "ui/commands/KeysDialog.h"
#include "ui/commands/ViewerKeys.h"
#include "ui/common/FailedWritesBar.h"
#include "ui/common/notice/PassingLine.h"
#include "ui/common/FlagPopUp.h"
#include "ui/common/RichTextField.h"
#include "ui/common/Theme.h"
#include "ui/common/ToolPanel.h"
#include "ui/controls/PlaybackReadOut.h"
#include "ui/controls/PositionSlider.h"
#include "ui/controls/PositionSliderLink.h"
#include "ui/controls/RangeIndicator.h"
#include "ui/controls/TransportBar.h"
#include "ui/controls/VolumeButton.h"
#include "ui/panels/BookmarkPanel.h"
#include "ui/panels/ColourPanel.h"
#include "ui/panels/ControlsPanel.h"
#include "ui/panels/DrawingPanel.h"
#include "ui/panels/GradingPanel.h"
#include "ui/panels/NotesPanel.h"
#include "ui/panels/OptionsPanel.h"
#include "ui/panels/ScopesPanel.h"
#include "ui/picture/PicturePointer.h"
#include "ui/picture/PictureView.h"
#include "ui/picture/PixelPlate.h"
#include "ui/viewer/FloatingTimecode.h"
#include "ui/viewer/FullScreen.h"
#include "ui/viewer/GoToFrame.h"
#include "ui/viewer/LostScreens.h"
#include "ui/viewer/PlaylistDrawer.h"
#include "ui/viewer/SnapshotFlash.h"
#include "ui/viewer/ViewerPanelHost.h"
#include "ui/viewer/ViewerSizing.h"
#include "viewer/MoviePlayerController.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>

namespace daylark {

namespace {} // namespace

ViewerWindow::ViewerWindow(MoviePlayerController& controller, QWidget* parent)
    : QMainWindow(parent)
    , controller_(controller)
    , commandSet_(viewerTable(), controller.preferences())
    , keys_(controller.preferences())
    , keyboard_(commandSet_, keys_, controller)
    , panelHost_(new ViewerPanelHost(*this, controller.panels()))
    , picture_(new PictureView(this))
    , goToFrame_(new GoToFrame(controller, *picture_))
    , notes_(new NotesPanel(controller.edits(), controller.preferences(), this))
    , drawer_(new PlaylistDrawer(controller.list(), controller.edits(), controller.preferences(), this)) {
    setObjectName(QStringLiteral("viewerWindow"));
    setAttribute(Qt::WA_QuitOnClose, false); // the program ends with the library's window
    setWindowTitle(tr("Viewer"));
    addCommands();
    buildLayout();
    connectController();
    connectPreferences();
    connectInput();
    readOut_ = new PlaybackReadOut(controller.player(), *picture_, controller.preferences(), this);
    picture_->chooseRenderer(controller.preferences().pictureRenderer());
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
    actions.toggleFullScreen = [this] { fullScreen_->toggle(); };
    actions.isFullScreen = [this] { return isFullScreen(); };
    actions.leave = [this] { leaveTextOrFullScreen(); };
    actions.close = [this] { close(); };
    actions.goToSelectedBookmark = [this] {
        if (isBookmarkSelected()) bookmarks_->goToSelected();
    };
    actions.deleteSelectedBookmark = [this] {
        if (isBookmarkSelected()) bookmarks_->deleteSelected();
    };
    actions.editBookmarkText = [this] { editBookmarkText(); };
    actions.loopBookmark = [this] {
        if (!isOnBookmark()) return;
        const bool rangeHeld = controller_.preferences().trimHandles() && controller_.range().isLooping();
        bookmarks_->toggleLoop();
        if (rangeHeld && !controller_.range().isLooping()) // a second press is what loops
            passing_->say(tr("The range is off; once more loops the bookmark"));
    };
    actions.writeNotes = [this] { writeNotes(); };
    actions.goToFrame = [this] { goToFrame_->ask(); };
    actions.showKeys = [this] { showKeys(); };
    actions.makeThumbnail = [this](const QString& choice) { Q_EMIT thumbnailWanted(choice); };
    actions.bringForward = [this] { bringForward(); };
    fullScreenShown_ = &bindViewerCommands(commandSet_, controller_, actions).fullScreen;
    commands_ = std::make_unique<Commands>(commandSet_, keys_, this);
    commands_->fill(*menuBar(), viewerMenus());
}

// The strip spans the whole foot, below the panels on either side.
void ViewerWindow::buildLayout() {
    setCentralWidget(picture_);
    setDockNestingEnabled(true);
    // The tall ones stand at the sides.
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
    ReviewEdits& edits = controller_.edits();
    passing_ = new PassingLine(*picture_);
    tellOf(*new ManyChanges(edits.store(), edits.history(), this), *passing_,
           [this] { return controller_.preferences().tellOfManyChanges(); });

    auto* foot = new QWidget(this);
    slider_ = new PositionSlider(foot);
    new PositionSliderLink(controller_, *slider_); // the slider owns it
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
    rows->addWidget(new FailedWritesBar(controller_.failedWrites(), foot, 1)); // the picture is worth more than further lines
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
    fullScreen_ = new FullScreen(*this, *picture_, *strip, *panelHost_, controller_);
    setContextMenuPolicy(Qt::PreventContextMenu);

    bookmarks_ = new BookmarkPanel(controller_.bookmarks(), *commands_, controller_.preferences(), this);
    drawer_->view()->setContextMenuPolicy(Qt::ActionsContextMenu);
    for (const char* id : {"viewer.reveal", "viewer.copyPath", "viewer.copyFilename"})
        drawer_->view()->addAction(commands_->action(QLatin1String(id)));
    addPanels();
    auto* sizing = new ViewerSizing(*this, *picture_, controller_.geometry()); // the window owns it
    connect(panelHost_, &ViewerPanelHost::viewerFrameWanted, sizing, &ViewerSizing::takeWholeFrame);
    connect(panelHost_, &ViewerPanelHost::visibilityChanged, &controller_.panels(),
            &ViewerPanels::visibilityChanged);
    connect(&controller_.drawingTools(), &DrawingTools::viewerWanted, panelHost_,
            &ViewerPanelHost::bringKeyboardToViewer);
    connect(&controller_.drawingVisibility(), &DrawingVisibility::viewerWanted, panelHost_,
            &ViewerPanelHost::bringKeyboardToViewer);
    connect(&controller_.drawings(), &FrameDrawings::viewerWanted, panelHost_,
            &ViewerPanelHost::bringKeyboardToViewer);
    setTabOrder(picture_, slider_);
    setTabOrder(slider_, bar_);
    picture_->setFocus();
}

void ViewerWindow::addPanels() {
    using Place = ViewerPanelHost::Place;
    panelHost_->addPanel(ViewerPanel::notes, tr("Notes"), notes_, Place::floating, Qt::LeftDockWidgetArea);
    panelHost_->addPanel(ViewerPanel::bookmarks, tr("Bookmarks"), bookmarks_, Place::floating,
                         Qt::BottomDockWidgetArea);
    panelHost_->addPanel(ViewerPanel::grading, tr("Colour Correction"),
                         new GradingPanel(controller_, *commands_, this), Place::floating);
    panelHost_->addPanel(ViewerPanel::colour, tr("Colour Management"), new ColourPanel(controller_, this),
                         Place::floating);
    panelHost_->addPanel(ViewerPanel::scopes, tr("Scopes"), new ScopesPanel(controller_, this), Place::floating);
    auto* drawing = new DrawingPanel(controller_, *commands_, this);
    panelHost_->addPanel(ViewerPanel::drawing, tr("Drawing Tools"), drawing, Place::floating);
    connect(panelHost_, &ViewerPanelHost::colourPanelCloseWanted, drawing, &DrawingPanel::closeColourDialog);
    auto* options = new OptionsPanel(controller_, *commands_, this);
    ToolPanel* optionsWindow =
        panelHost_->addPanel(ViewerPanel::options, tr("Viewer Options"), options, Place::floating);
    connect(options, &OptionsPanel::keyboardUnused, optionsWindow, &ToolPanel::keyboardUnused);
    panelHost_->addPanel(ViewerPanel::controls, tr("Playback Controls"),
                         new ControlsPanel(controller_, *commands_, this), Place::floating);
    ToolPanel* drawer =
        panelHost_->addPanel(ViewerPanel::playlistDrawer, tr("Playlist"), drawer_, Place::docked);
    resizeDocks({drawer}, {280}, Qt::Horizontal);
    for (const auto& [panel, word] :
         {std::pair{ViewerPanel::grading, tr("Grade")}, std::pair{ViewerPanel::colour, tr("Colour")},
          std::pair{ViewerPanel::drawing, tr("Drawing")}, std::pair{ViewerPanel::options, tr("Options")}})
        panelHost_->window(panel)->setTabWord(word);
}

void ViewerWindow::connectController() {
    new PicturePointer(controller_, *picture_); // the picture owns it, and the next one
    new PixelPlate(controller_.pixels(), *picture_);
    picture_->follow(controller_.scene());
    controller_.snapshots().setArea({[this] { return picture_->devicePixels(); },
                                     [this](QSize size) -> Snapshots::Making {
                                         const double ratio =
                                             size == picture_->devicePixels() ? picture_->devicePixelRatioF() : 0;
                                         return [scene = detached(controller_.scene().scene()), size, ratio] {
                                             return renderScene(scene, size, ratio);
                                         };
                                     },
                                     [this]() -> Snapshots::Making {
                                         const Scene scene = detached(filledByPicture(controller_.scene().scene()));
                                         if (scene.frame.isNull()) return {};
                                         return [scene] { return renderScene(scene, scene.frame.displaySize()); };
                                     }});
    connect(&controller_.snapshots(), &Snapshots::flash, this,
            [flash = new SnapshotFlash(picture_)] { flash->flash(); });
    connect(&controller_, &MoviePlayerController::windowOpened, this, &ViewerWindow::windowOpened);
    connect(&controller_, &MoviePlayerController::windowClosed, this, &ViewerWindow::windowClosed);
    connect(&controller_, &MoviePlayerController::movieLoading, this, &ViewerWindow::showLoading);
    connect(&controller_, &MoviePlayerController::movieShown, this, &ViewerWindow::movieChanged);
    connect(&controller_, &MoviePlayerController::movieProbed, drawer_, &PlaylistDrawer::movieUpdated);
    connect(&controller_.player(), &Player::positionChanged, this, &ViewerWindow::showPosition);
    connect(&controller_.time(), &TimeDisplay::changed, this, &ViewerWindow::showPosition);
    connect(&controller_.colour(), &ViewerColour::changed, this, &ViewerWindow::showReadOuts);
    connect(&controller_.transport(), &Transport::stateChanged, this, [this] {
        picture_->setMoving(controller_.transport().isRunning());
        bar_->showState();
    });
    connect(&controller_.range(), &PlaybackRange::handlesTooLong, this,
            [this](const QString& message) { passing_->say(tr("%1: trimming is off").arg(message)); });
    connect(&controller_.transport(), &Transport::soughtBySlider, bookmarks_, &BookmarkPanel::clearSelection);
    connect(&controller_.bookmarks(), &ViewerBookmarks::activeBookmarksChanged, this,
            &ViewerWindow::showReadOuts);
    connect(&controller_, &MoviePlayerController::onscreenTextColourChanged, this,
            &ViewerWindow::showReadOuts);
    connect(&controller_.edits(), &ReviewEdits::movieChanged, this,
            [this](const std::shared_ptr<Movie>& movie, const QString& field) {
                if (movie != controller_.currentMovie()) return;
                if (field.startsWith(QLatin1String("flag"))) bar_->showFlag();
                if (field == QLatin1String("frameRun") || field == QLatin1String("filenameString")) showName();
            });
}

void ViewerWindow::connectPreferences() {
    const Preferences& preferences = controller_.preferences();
    const auto on = [this](const PreferenceItem& item, auto follow) {
        connect(&item, &PreferenceItem::changed, this, follow);
    };
    on(preferences.repeatType, [this] { bar_->showRepeatType(); });
    on(preferences.pictureRenderer,
       [this] { picture_->chooseRenderer(controller_.preferences().pictureRenderer()); });
    on(preferences.rateMultiplier, [this] { bar_->showState(); });
    for (const PreferenceItem* item : std::initializer_list<const PreferenceItem*>{
             &preferences.displayTimecode, &preferences.displayFrameCounter, &preferences.displayFilename,
             &preferences.displayBookmarkText, &preferences.displayDrawings,
             &preferences.displayDrawingsOptions, &preferences.displayPlaybackStatistics,
             &preferences.counterStartFrame, &preferences.timecodeDisplayType})
        on(*item, [this] {
            controller_.time().setOverlayInfoDynamic();
            showPosition();
        });
    for (const Preference<QString>& name : preferences.statusNames)
        on(name, [this] { bar_->showFlag(); });
}

void ViewerWindow::connectInput() {
    timecode_ = new FloatingTimecode(controller_.preferences(), this);
    connect(timecode_, &FloatingTimecode::closed, this,
            [this] { controller_.preferences().displayTimecode.set(false); });
    connect(fullScreen_, &FullScreen::changed, fullScreenShown_, &Condition::look);
    connect(&controller_.input(), &ViewerInput::showMovieList, &controller_.panels(),
            &ViewerPanels::visibilityChanged);
    connect(picture_, &PictureView::pressed, &controller_.input(), &ViewerInput::mouseDown);
    connect(picture_, &PictureView::wheelTurned, &controller_.input(), &ViewerInput::scrollWheel);
    connect(picture_, &PictureView::wheelZoomed, this, [this](double deltaY, const QPointF& at) {
        controller_.input().zoomWheel(deltaY, {at.x(), picture_->height() - at.y()}); // the area's y goes up
    });
    const auto volumeButtons = findChildren<VolumeButton*>();
    for (VolumeButton* volume : volumeButtons) {
        connect(&controller_.input(), &ViewerInput::hideVolume, volume, &VolumeButton::hidePopUp);
        connect(&controller_.input(), &ViewerInput::hidePopUps, volume, &VolumeButton::hidePopUp);
    }
    new ViewerKeys(*this, keyboard_); // the window owns it
    addMenuBelow("viewer.fullScreen", fullScreen_->screensMenu());
    addMenuBelow("viewer.lastFrame", bar_->repeatMenu()); // the strip may have folded it away
}

/// At the foot of the menu that has this command.
void ViewerWindow::addMenuBelow(const char* command, QMenu* below) {
    const auto places = commands_->action(QLatin1String(command))->associatedObjects();
    for (QObject* place : places)
        if (auto* menu = qobject_cast<QMenu*>(place)) menu->addMenu(below);
}

void ViewerWindow::writeNotes() {
    controller_.panels().show(ViewerPanel::notes, true);
    notes_->window()->activateWindow();
    notes_->focusNotes();
}

/// What a key does to a bookmark, or why it does nothing.
bool ViewerWindow::isOnBookmark() {
    if (bookmarks_->hasRowForKeys()) return true;
    const QString key = keys_.label(QStringLiteral("viewer.addBookmark"));
    passing_->say(key.isEmpty() ? tr("No bookmark at this frame, and none is selected")
                                : tr("No bookmark at this frame, and none is selected (%1 adds one)").arg(key));
    return false;
}

bool ViewerWindow::isBookmarkSelected() {
    if (!bookmarks_->hasSelection()) passing_->say(tr("No bookmark is selected"));
    return bookmarks_->hasSelection();
}

void ViewerWindow::editBookmarkText() {
    if (!isOnBookmark()) return;
    controller_.panels().show(ViewerPanel::bookmarks, true);
    bookmarks_->editText();
}

// It also leaves a table or a slider.
void ViewerWindow::leaveTextOrFullScreen() {
    const QWidget* focus = QApplication::focusWidget();
    if (!qobject_cast<const QTextEdit*>(focus) && !qobject_cast<const QLineEdit*>(focus))
        fullScreen_->leave();
    activateWindow();
    picture_->setFocus();
}

void ViewerWindow::bringForward() {
    raise();
    activateWindow();
    picture_->setFocus();
}

void ViewerWindow::showKeys() {
    const KeysDialog::Lines pointer{{tr("Next or previous frame"), tr("Wheel")},
                                    {tr("Next or previous bookmark"), tr("Ctrl+Wheel")},
                                    {tr("Zoom at the pointer"), tr("Shift+Wheel")},
                                    {tr("Full screen: the playlist"), tr("Right edge")},
                                    {tr("Full screen: the controls"), tr("Lower edge")},
                                    {tr("Full screen: both away"), tr("Click")}};
    auto* keys = new KeysDialog(*commands_, viewerMenus(), tr("Keys of the Viewer"), this, pointer);
    keys->setAttribute(Qt::WA_DeleteOnClose);
    keys->show();
}

void ViewerWindow::windowOpened() {
    const bool wasHidden = isHidden();
    if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
    if (wasHidden && LostScreens::isLost(geometry()))
        setGeometry(ViewerPanelHost::broughtOntoAScreen(geometry()));
    show();
    raise();
    activateWindow();
    if (!wasHidden) return;
    controller_.panels().restoreOpenPanels();
    picture_->setFocus();
}

void ViewerWindow::windowClosed() {
    notes_->setMovie(nullptr);
    fullScreen_->leave();
    saveArrangement();
    panelHost_->closeColourPanel();
    panelHost_->hideAll(); // a floating panel is a window of its own and does not hide with this one
    hide();
    movieChanged();
}

void ViewerWindow::saveArrangement() {
    Preferences& preferences = controller_.preferences();
    if (isFullScreen()) return; // neither frame nor strips are those to come back to
    preferences.viewerWindowGeometry.set(QString::fromLatin1(saveGeometry().toBase64()));
    preferences.viewerWindowPanels.set(QString::fromLatin1(panelHost_->arrangement().toBase64()));
}

void ViewerWindow::restoreArrangement() {
    const Preferences& preferences = controller_.preferences();
    const auto stored = [](const Preference<QString>& text) {
        return QByteArray::fromBase64(text().toLatin1());
    };
    if (!restoreGeometry(stored(preferences.viewerWindowGeometry))) {
        const QSize room = screen()->availableSize() * 0.9;
        resize(QSize(1360, 900).boundedTo(room));
    }
    panelHost_->restoreArrangement(stored(preferences.viewerWindowPanels));
}

void ViewerWindow::closeEvent(QCloseEvent* event) {
    notes_->flush(); // before the session is saved
    if (!controller_.isOpen()) return event->accept();
    if (!controller_.windowShouldClose()) return event->ignore();
    controller_.close();
    event->accept();
}

void ViewerWindow::showLoading(bool loading) {
    loading_ = loading;
    movieChanged();
}

void ViewerWindow::movieChanged() {
    notes_->setMovie(controller_.currentMovie());
    showName();
    bar_->showFlag();
    bar_->showState();
    showPosition();
}

/// A run that grows is called by its new end.
void ViewerWindow::showName() {
    const auto movie = controller_.currentMovie();
    setWindowTitle(movie ? plain::windowTitle(movie->shownName()) : tr("Viewer"));
    picture_->setAccessibleDescription(movie ? plain::line(movie->shownName()) : QString());
    panelHost_->window(ViewerPanel::controls)
        ->setTitle(movie ? plain::line(movie->shownName()) : tr("Playback Controls"));
    showReadOuts();
}

void ViewerWindow::showPosition() {
    bar_->showTimes();
    notes_->setFrame(controller_.currentMovie() ? controller_.time().frameAndProductionText() : QString());
    showReadOuts();
}

void ViewerWindow::showReadOuts() {
    const auto movie = controller_.currentMovie();
    const Preferences& preferences = controller_.preferences();
    const auto shown = [&](const Preference<bool>& wanted) { return movie && wanted(); };
    ReadOuts readOuts;
    readOuts.words = picture_->font();
    readOuts.numbers = theme::numberFont();
    readOuts.text = theme::text;
    readOuts.dimText = theme::dimText;
    if (shown(preferences.displayFrameCounter))
        readOuts.counter = QStringList{controller_.time().currentFrameNumberForDisplay(), controller_.time().productionText()}
                               .join(QStringLiteral("   "))
                               .trimmed();
    if (movie) readOuts.looking = controller_.colour().problem();
    if (movie && readOuts.looking.isEmpty()) readOuts.looking = controller_.colour().lookingText();
    if (shown(preferences.displayFilename)) readOuts.filename = movie->shownName();
    const bool fixed = preferences.timecodeDisplayType() == TimecodePlace::fixed;
    if (shown(preferences.displayTimecode) && fixed)
        readOuts.timecode = controller_.time().currentTimeCodeForDisplay();
    if (shown(preferences.displayBookmarkText))
        readOuts.overlayText = controller_.bookmarks().overlayTextData().trimmed();
    readOuts.overlayColour = controller_.onscreenTextColour();
    if (!readOuts.overlayColour.isValid()) readOuts.overlayColour = Qt::yellow;
    if (movie && !loading_ && !controller_.player().isOpen())
        readOuts.message = tr("File not found\n%1").arg(movie->shownName());
    controller_.scene().setReadOuts(readOuts);
    timecode_->showText(controller_.time().currentTimeCodeForDisplay(), readOuts.overlayColour);
    timecode_->setShown(shown(preferences.displayTimecode) && !fixed && isVisible());
}

} // namespace daylark
