// daylark-demo-review DAILIES OUT: a whole review on the real program in a real window, by a robot's hands:
// drop the folders, open the viewer, play, step, flag, note, bookmark, close, export, save, start again.
// Every step is checked; the exit status is 0 only if each was as it should be. (daylark-demo-review
// --drag-source FOLDER... is the desktop that they are dragged from.)
#include "support/MovieMaker.h"
#include "support/Robot.h"

#include "app/PlaylistController.h"
#include "model/Session.h"
#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "ui/commands/Commands.h"
#include "ui/common/Theme.h"
#include "ui/controls/ViewChoiceButton.h"
#include "ui/desktop/DesktopProgram.h"
#include "ui/library/ItemsPane.h"
#include "ui/library/LibraryWindow.h"
#include "ui/library/PlaylistsPane.h"
#include "ui/panels/BookmarkPanel.h"
#include "ui/panels/GradingPanel.h"
#include "ui/panels/NotesPanel.h"
#include "ui/picture/PictureView.h"
#include "ui/viewer/ViewerWindow.h"
#include "viewer/display/ViewerColour.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDrag>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QSlider>
#include <QTableView>
#include <QTextEdit>
#include <QTimer>
#include <QToolButton>
#include <QUrl>

#include <cstdio>

using namespace daylark;
using namespace daylark::demo;

namespace {

/// A piece of desktop with folders on it, to drag from.
class DragSource : public QLabel {
public:
    explicit DragSource(const QStringList& folders)
        : folders_(folders) {
        setWindowTitle(QStringLiteral("Folders"));
        setWindowFlag(Qt::WindowStaysOnTopHint);
        setAlignment(Qt::AlignCenter);
        QStringList names;
        for (const QString& folder : folders)
            names << QFileInfo(folder).fileName();
        setText(names.join(QLatin1Char('\n')));
        setGeometry(1500, 760, 240, 120);
    }

    /// Says on standard output where it can be taken hold of, once it stands on the screen.
    void announce() {
        const QPoint middle = mapToGlobal(rect().center());
        std::printf("%d %d\n", middle.x(), middle.y());
        std::fflush(stdout);
    }

protected:
    void mouseMoveEvent(QMouseEvent*) override {
        auto* drag = new QDrag(this);
        auto* urlsDragged = new QMimeData;
        QList<QUrl> urls;
        for (const QString& folder : folders_)
            urls << QUrl::fromLocalFile(folder);
        urlsDragged->setUrls(urls);
        drag->setMimeData(urlsDragged);
        drag->exec(Qt::CopyAction);
    }

private:
    QStringList folders_;
};

int runDragSource(const QStringList& folders) {
    DragSource source(folders);
    source.show();
    QTimer::singleShot(500, &source, &DragSource::announce);
    return QApplication::exec();
}

class Review {
public:
    Review(QDir dailies, QDir out)
        : dailies_(std::move(dailies))
        , out_(std::move(out)) {}
    int run();

private:
    void check(bool good, const QString& what);
    void shot(const QString& name);
    void startProgram();
    void dropFolders();
    void lookAround();
    void reviewInViewer();
    void drawAndGrade();
    void undoAndRedo();
    void workWithLists();
    void findAndFilter();
    void dragItems();
    void removeDuplicates();
    void exportAndSave();
    void findMovedFolder();
    void handOn();
    void startAgain();
    void checkFiles();
    void reviewEffects();
    void switchViews();
    void lookIntoGap();
    void goToNumber(const QString& number);
    void saveInPanel(const QString& keys, const QString& path);
    void chooseInPanel(const QString& keys, const QString& path);
    void answering(const QString& button, const std::function<void()>& act, const QString& picture = {});
    void hold(QWidget& window, QRect geometry);
    void clickButton(QMainWindow& window, const QString& command);
    [[nodiscard]] QPoint itemMiddle(const QAbstractItemView* view, int row, int column = 0);
    [[nodiscard]] QImage pictureOnScreen();
    [[nodiscard]] std::optional<int> numberOnScreen();
    [[nodiscard]] Movie& firstMovie() {
        return *controller().library().playlists().front()->movieList.front();
    }
    [[nodiscard]] PlaylistController& controller() { return program_->controller(); }
    [[nodiscard]] LibraryWindow& library() { return program_->libraryWindow(); }
    [[nodiscard]] ViewerWindow& viewer() { return program_->viewerWindow(); }

    QDir dailies_, out_;
    Robot robot_;
    std::unique_ptr<DesktopProgram> program_;
    int passed_ = 0, failed_ = 0;
};

const QString demoNote = QStringLiteral("Sun is a touch too warm, otherwise lovely.");

void Review::check(bool good, const QString& what) {
    ++(good ? passed_ : failed_);
    std::printf("%s %s\n", good ? "  ok  " : "FAILED", qUtf8Printable(what));
    std::fflush(stdout);
}

void Review::shot(const QString& name) {
    robot_.rest(250);
    const QString path = out_.filePath(name);
    check(robot_.shot(path), QStringLiteral("screenshot %1").arg(path));
}

void Review::hold(QWidget& window, QRect geometry) {
    window.setGeometry(geometry);
    window.raise();
    window.activateWindow();
    robot_.rest(300);
}

QPoint Review::itemMiddle(const QAbstractItemView* view, int row, int column) {
    return view->viewport()->mapToGlobal(view->visualRect(view->model()->index(row, column)).center());
}

QImage Review::pictureOnScreen() {
    const PictureView* picture = viewer().picture();
    const QRect place = picture->pictureRect().toAlignedRect();
    const QPoint corner = picture->mapToGlobal(place.topLeft());
    return QGuiApplication::primaryScreen()->grabWindow(0, corner.x(), corner.y(), place.width(), place.height()).toImage();
}

/// What stands on the screen, read back from the screen.
std::optional<int> Review::numberOnScreen() {
    return readBarCode(pictureOnScreen());
}

/// A window's button that is bound to a command.
void Review::clickButton(QMainWindow& window, const QString& command) {
    for (const QToolButton* button : window.findChildren<QToolButton*>())
        if (button->isVisible() && button->defaultAction() &&
            button->defaultAction()->objectName() == command)
            return robot_.click(button);
    check(false, QStringLiteral("there is a button for %1").arg(command));
}

void Review::startProgram() {
    program_ = std::make_unique<DesktopProgram>(DesktopProgram::Places::current());
    program_->start({});
    check(robot_.waitFor([&] { return library().isVisible(); }), QStringLiteral("the library shows"));
    hold(library(), QRect(40, 60, 1280, 720));
}

void Review::dropFolders() {
    shot(QStringLiteral("library-empty.png"));
    const QStringList folders{dailies_.filePath(QStringLiteral("Day 1")),
                              dailies_.filePath(QStringLiteral("Day 2"))};
    QProcess desktop;
    desktop.start(QCoreApplication::applicationFilePath(),
                  QStringList{QStringLiteral("--drag-source")} + folders);
    check(robot_.waitFor([&] { return desktop.canReadLine(); }), QStringLiteral("there are folders to drag"));
    const QList<QByteArray> place = desktop.readLine().trimmed().split(' ');
    const QPoint handle(place.value(0).toInt(), place.value(1).toInt());
    const QWidget* table = library().playlistsPane().table()->viewport();
    robot_.drag(handle, Robot::middleOf(table));
    Library& items = controller().library();
    check(robot_.waitFor([&] { return items.playlists().size() == 2; }),
          QStringLiteral("two folders dropped are two playlists"));
    check(robot_.waitFor(
              [&] { return controller().thumbnails().isIdle() && !controller().mediaAdding().isBusy(); },
              60000),
          QStringLiteral("thumbnails and properties have arrived"));
    desktop.kill();
    desktop.waitForFinished();
    if (items.playlists().size() != 2) return;
    check(items.playlists()[0]->count() == 4 && items.playlists()[1]->count() == 3,
          QStringLiteral("4 items in Day 1, 3 in Day 2"));
    bool complete = true;
    for (const auto& playlist : items.playlists())
        for (const auto& movie : playlist->movieList)
            complete = complete && !movie->thumbnail.isNil() && movie->mMovieDurationFrames > 0;
    check(complete, QStringLiteral("every item has a thumbnail and a length"));
}

void Review::lookAround() {
    hold(library(), QRect(40, 60, 1280, 720));
    robot_.click(itemMiddle(library().playlistsPane().table(), 0, 1));
    robot_.click(itemMiddle(library().itemsPane().activeView(), 0));
    shot(QStringLiteral("library-tiles.png"));
    clickButton(library(), QStringLiteral("view.list"));
    check(!library().itemsPane().tilesShown(), QStringLiteral("the list button shows the list"));
    shot(QStringLiteral("library-list.png"));
    clickButton(library(), QStringLiteral("view.tiles"));
    check(library().itemsPane().tilesShown(), QStringLiteral("the tiles button shows the tiles"));
    check(controller().library().selectedMovieRows() == Library::Rows{0},
          QStringLiteral("a click selects the first item"));
}

void Review::reviewInViewer() {
    robot_.click(itemMiddle(library().itemsPane().activeView(), 0), 2);
    MoviePlayerController& player = controller().playerWindow();
    check(robot_.waitFor([&] { return viewer().isVisible() && player.player().pictureIsCurrent(); }),
          QStringLiteral("a double click opens the viewer"));
    hold(viewer(), QRect(20, 40, 1440, 900));

    robot_.key(QStringLiteral("Home"));
    check(robot_.waitFor([&] { return numberOnScreen() == 1; }), QStringLiteral("Home shows frame 1"));
    robot_.key(QStringLiteral("space"));
    check(robot_.waitFor([&] { return player.player().currentFrame() > 24; }), QStringLiteral("Space plays"));
    robot_.key(QStringLiteral("space"));
    check(
        robot_.waitFor([&] { return !player.transport().isRunning() && player.player().pictureIsCurrent(); }),
        QStringLiteral("Space pauses"));
    const qint64 paused = player.player().currentFrame();
    check(robot_.waitFor([&] { return numberOnScreen() == int(paused); }),
          QStringLiteral("the frame on screen is the frame counted: %1").arg(paused));
    bool exact = true;
    for (qint64 step = 1; step <= 5; ++step) {
        robot_.key(QStringLiteral("Right"));
        exact = exact && robot_.waitFor([&] { return numberOnScreen() == int(paused + step); });
    }
    check(exact, QStringLiteral("five steps forwards show the five next frames"));
    robot_.key(QStringLiteral("Left"));
    check(robot_.waitFor([&] { return numberOnScreen() == int(paused + 4); }),
          QStringLiteral("a step back shows the one before"));

    robot_.key(QStringLiteral("ctrl+1"));
    check(robot_.waitFor([&] { return firstMovie().flagString == QLatin1String("901"); }),
          QStringLiteral("Ctrl+1 approves"));
    robot_.key(QStringLiteral("semicolon"));
    check(robot_.waitFor([&] { return firstMovie().bookmarkStore.size() == 1; }),
          QStringLiteral("a semicolon adds a bookmark"));
    if (!firstMovie().bookmarkStore.empty())
        check(firstMovie().bookmarkStore.front()->firstFrame == paused + 4,
              QStringLiteral("the bookmark stands on the frame shown"));

    robot_.key(QStringLiteral("b"));
    const auto* table = viewer().bookmarks()->findChild<QTableView*>(QStringLiteral("bookmarkTable"));
    check(robot_.waitFor([&] { return viewer().bookmarks()->isVisible() && table->model()->rowCount() == 1; },
                         5000),
          QStringLiteral("the bookmark panel lists it"));

    robot_.key(QStringLiteral("n"));
    check(robot_.waitFor([&] { return viewer().notes()->isVisible(); }), QStringLiteral("N opens the notes"));
    const auto* field = viewer().notes()->findChild<QTextEdit*>();
    check(field != nullptr, QStringLiteral("there is a notes field"));
    if (field) {
        robot_.click(field);
        robot_.type(demoNote);
        robot_.key(QStringLiteral("Escape"));
    }
    const Image before = firstMovie().thumbnail;
    viewer().commands().action(QStringLiteral("viewer.thumbnail.SetThumbnailImage"))->trigger();
    check(robot_.waitFor(
              [&] { return !firstMovie().thumbnail.isNil() && !(firstMovie().thumbnail == before); }),
          QStringLiteral("Set Thumbnail Image takes the picture shown"));
    shot(QStringLiteral("viewer.png"));
    drawAndGrade();
    undoAndRedo();
    robot_.key(QStringLiteral("ctrl+w"));
    check(robot_.waitFor([&] { return !viewer().isVisible() && library().isVisible(); }),
          QStringLiteral("Ctrl+W closes the viewer"));
    check(firstMovie().notes && firstMovie().notes->string() == demoNote,
          QStringLiteral("the note typed is the note kept"));
}

/// A stroke on the bookmark's frame, a warmer picture, and all panels away again.
void Review::drawAndGrade() {
    PictureView* picture = viewer().picture();
    const auto onPicture = [picture](double x, double y) {
        const QRectF rect = picture->pictureRect();
        return picture->mapToGlobal(
            (rect.topLeft() + QPointF(rect.width() * x, rect.height() * y)).toPoint());
    };
    robot_.click(onPicture(0.9, 0.9)); // out of the text
    robot_.key(QStringLiteral("d"));
    MoviePlayerController& player = controller().playerWindow();
    check(robot_.waitFor([&] { return player.panels().isVisible(ViewerPanel::drawing); }),
          QStringLiteral("D opens the drawing tools"));
    robot_.drag(onPicture(0.25, 0.5), onPicture(0.45, 0.65));
    robot_.drag(onPicture(0.45, 0.65), onPicture(0.65, 0.3));
    check(robot_.waitFor([&] {
        return !firstMovie().bookmarkStore.empty() &&
               firstMovie().bookmarkStore.front()->drawings.strokes.size() == 2;
    }),
          QStringLiteral("two strokes lie on the bookmark"));
    robot_.key(QStringLiteral("ctrl+z"));
    check(robot_.waitFor([&] { return firstMovie().bookmarkStore.front()->drawings.strokes.size() == 1; }),
          QStringLiteral("Ctrl+Z takes one back"));
    robot_.key(QStringLiteral("c"));
    const auto* grading = viewer().findChild<GradingPanel*>();
    check(robot_.waitFor([&] { return grading && grading->isVisible(); }),
          QStringLiteral("C opens the grade"));
    if (!grading) return;
    const QSlider* blue = grading->slider(ViewerGrade::blue);
    robot_.click(blue->mapToGlobal(QPoint(6, blue->height() / 2)));
    check(robot_.waitFor([&] { return firstMovie().blueChannel < 1; }),
          QStringLiteral("the blue slider moves the grade"));
    robot_.key(QStringLiteral("o"));
    robot_.rest(600);
    shot(QStringLiteral("viewer-panels.png"));
    robot_.key(QStringLiteral("h"));
    check(robot_.waitFor([&] {
        return !player.panels().isVisible(ViewerPanel::drawing) &&
               !player.panels().isVisible(ViewerPanel::notes);
    }),
          QStringLiteral("H puts all panels away"));
    shot(QStringLiteral("viewer-alone.png"));
}

/// Back to before the flag and forth again, a step at a time, by the keyboard.
void Review::undoAndRedo() {
    const UndoHistory& history = controller().edits().history();
    const auto strokes = [this] {
        const auto& bookmarks = firstMovie().bookmarkStore;
        return bookmarks.empty() ? size_t(0) : bookmarks.front()->drawings.strokes.size();
    };
    const QString flag = firstMovie().flagString;
    check(history.undoText() == QLatin1String("Undo Grade"), QStringLiteral("the last step is the grade"));
    robot_.key(QStringLiteral("ctrl+z"));
    check(robot_.waitFor([&] { return firstMovie().grade().isNeutral(); }),
          QStringLiteral("Ctrl+Z takes the grade back"));
    robot_.key(QStringLiteral("ctrl+z"));
    check(robot_.waitFor([&] { return strokes() == 0; }), QStringLiteral("then the stroke"));
    int steps = 2;
    for (; steps < 10 && firstMovie().flagString == flag && history.canUndo(); ++steps) {
        const QString text = history.undoText();
        robot_.key(QStringLiteral("ctrl+z"));
        static_cast<void>(robot_.waitFor([&] { return history.undoText() != text; }));
    }
    check(firstMovie().flagString == QLatin1String("900") && firstMovie().bookmarkStore.empty(),
          QStringLiteral("and in the end the flag, with note and bookmark gone before it"));
    shot(QStringLiteral("viewer-undone.png"));
    for (; steps > 0; --steps) {
        const QString text = history.redoText();
        robot_.key(QStringLiteral("ctrl+shift+z"));
        static_cast<void>(robot_.waitFor([&] { return history.redoText() != text; }));
    }
    check(firstMovie().flagString == flag && strokes() == 1 && !firstMovie().grade().isNeutral() &&
              firstMovie().notes && firstMovie().notes->string() == demoNote,
          QStringLiteral("Ctrl+Shift+Z brings everything back"));
}

/// Sends the keys and answers the save panel that they open. The panel runs a loop of its own inside the
/// key's, so the answer comes from a timer.
void Review::saveInPanel(const QString& keys, const QString& path) {
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, &answer, [&] {
        if (!QApplication::activeModalWidget()) return;
        answer.stop();
        robot_.rest(400);
        robot_.key(QStringLiteral("ctrl+a"));
        robot_.type(path);
        shot(QFileInfo(path).completeBaseName() + QStringLiteral("-panel.png"));
        robot_.key(QStringLiteral("Return"));
    });
    answer.start(100);
    robot_.key(keys);
    check(robot_.waitFor([&] { return QFileInfo::exists(path); }),
          QStringLiteral("%1 saves %2").arg(keys, QFileInfo(path).fileName()));
}

/// As above for a panel that asks for a folder.
void Review::chooseInPanel(const QString& keys, const QString& path) {
    QTimer answer;
    bool answered = false;
    QObject::connect(&answer, &QTimer::timeout, &answer, [&] {
        if (!QApplication::activeModalWidget() || answered) return;
        answered = true;
        answer.stop();
        robot_.rest(400);
        robot_.key(QStringLiteral("ctrl+a"));
        robot_.type(path);
        robot_.key(QStringLiteral("Return"));
    });
    answer.start(100);
    robot_.key(keys);
    check(robot_.waitFor([&] { return answered; }), QStringLiteral("%1 asks where").arg(keys));
}

/// What `act` asks is answered by a click on this button, as soon as it stands there. The question runs a loop of its own,
/// so the answer comes from a timer.
void Review::answering(const QString& button, const std::function<void()>& act, const QString& picture) {
    QTimer answer;
    bool answered = false;
    QObject::connect(&answer, &QTimer::timeout, &answer, [&] {
        const QWidget* alert = QApplication::activeModalWidget();
        if (!alert || answered) return;
        for (const auto* each : alert->findChildren<QPushButton*>()) {
            if (each->text() != button) continue;
            answered = true;
            answer.stop();
            robot_.rest(300);
            if (!picture.isEmpty()) shot(picture);
            robot_.click(each);
            return;
        }
    });
    answer.start(100);
    act();
    check(robot_.waitFor([&] { return answered && !QApplication::activeModalWidget(); }),
          QStringLiteral("\"%1\" is asked for").arg(button));
    robot_.rest(200);
}

/// A smartlist of what is approved, answered while the flags change.
void Review::workWithLists() {
    hold(library(), QRect(40, 60, 1280, 720));
    Library& lists = controller().library();
    robot_.key(QStringLiteral("ctrl+shift+n"));
    check(robot_.waitFor([&] { return lists.playlists().size() == 3 && lists.arrangedMovies().size() == 1; }),
          QStringLiteral("a new smartlist asks for what is approved and finds the item flagged"));
    const auto* rules = library().findChild<QWidget*>(QStringLiteral("smartRulesPanel"));
    check(rules && rules->isVisible(), QStringLiteral("its rules stand open"));
    shot(QStringLiteral("library-smartlist.png"));
    robot_.key(QStringLiteral("Escape"));
    hold(library(), QRect(40, 60, 1280, 720));
    robot_.click(itemMiddle(library().playlistsPane().table(), 1, 1));
    robot_.click(itemMiddle(library().itemsPane().activeView(), 0));
    robot_.key(QStringLiteral("ctrl+1"));
    robot_.click(itemMiddle(library().playlistsPane().table(), 2, 1));
    check(robot_.waitFor([&] { return lists.arrangedMovies().size() == 2; }),
          QStringLiteral("an item approved elsewhere is in the smartlist"));
    robot_.key(QStringLiteral("ctrl+z"));
    check(robot_.waitFor([&] {
        robot_.rest(20);
        return lists.playlists()[1]->movieList[0]->flagString == QLatin1String("900");
    }),
          QStringLiteral("and leaves it when that is taken back"));
    findAndFilter();
    dragItems();
    removeDuplicates();
}

void Review::findAndFilter() {
    Library& lists = controller().library();
    robot_.click(itemMiddle(library().playlistsPane().table(), 0, 1));
    robot_.click(itemMiddle(library().itemsPane().activeView(), 1));
    const size_t all = lists.arrangedMovies().size();
    robot_.key(QStringLiteral("ctrl+k"));
    robot_.type(lists.arrangedMovies()[1]->filenameString.left(12)); // the shot's number with it
    check(robot_.waitFor([&] { return lists.filter().isOn() && lists.arrangedMovies().size() < all; }),
          QStringLiteral("letters typed into the search field leave what they name"));
    shot(QStringLiteral("library-filter.png"));
    robot_.key(QStringLiteral("Escape"));
    check(robot_.waitFor([&] { return lists.arrangedMovies().size() == all; }),
          QStringLiteral("Escape brings the others back"));
    robot_.key(QStringLiteral("ctrl+f"));
    robot_.type(lists.playlists()[1]->movieList[0]->filenameString);
    check(robot_.waitFor([&] { return lists.selectedPlaylistRows() == Library::Rows{1}; }),
          QStringLiteral("find goes to the playlist with the match"));
    shot(QStringLiteral("library-find.png"));
    robot_.key(QStringLiteral("Escape"));
    check(robot_.waitFor([&] { return !controller().find().panelIsShown(); }),
          QStringLiteral("Escape closes the find panel"));
}

/// From the first playlist onto the second: a copy, a move, and an instance with Ctrl held.
void Review::dragItems() {
    Library& lists = controller().library();
    const QTableView* rows = library().playlistsPane().table();
    const auto drop = [&](int item, const QString& answer, const QString& held = {}) {
        robot_.click(itemMiddle(rows, 0, 1));
        const QAbstractItemView* items = library().itemsPane().activeView();
        robot_.click(itemMiddle(items, item));
        robot_.rest(QApplication::doubleClickInterval() + 200); // two presses, no double click
        answering(answer, [&] { robot_.carry(itemMiddle(items, item), itemMiddle(rows, 1), held); });
    };
    const auto counts = [&] {
        return QStringLiteral("%1 %2").arg(lists.playlists()[0]->count()).arg(lists.playlists()[1]->count());
    };
    check(counts() == QLatin1String("4 3"), QStringLiteral("4 and 3 items before"));
    drop(0, QStringLiteral("Copy"));
    check(robot_.waitFor([&] { return counts() == QLatin1String("4 4"); }), QStringLiteral("a copy stands in both"));
    drop(1, QStringLiteral("Move"));
    check(robot_.waitFor([&] { return counts() == QLatin1String("3 5"); }), QStringLiteral("a move takes it out"));
    drop(0, QStringLiteral("Instance"), QStringLiteral("ctrl"));
    check(robot_.waitFor([&] { return counts() == QLatin1String("3 6"); }) &&
              lists.playlists()[0]->movieList[0] == lists.playlists()[1]->movieList[5],
          QStringLiteral("an instance is the same item"));
    shot(QStringLiteral("library-instance.png"));
}

/// The copy and the instance have one name; then everything is taken back.
void Review::removeDuplicates() {
    Library& lists = controller().library();
    robot_.click(itemMiddle(library().playlistsPane().table(), 1, 1));
    answering(QStringLiteral("Remove All Duplicates"), [&] { robot_.key(QStringLiteral("ctrl+alt+u")); });
    check(robot_.waitFor([&] { return lists.playlists()[1]->count() == 5; }),
          QStringLiteral("of copy and instance one stays"));
    for (int steps = 0; steps < 12 && lists.playlists().size() == 3; ++steps) {
        const QString text = controller().edits().history().undoText();
        robot_.key(QStringLiteral("ctrl+z"));
        static_cast<void>(robot_.waitFor([&] { return controller().edits().history().undoText() != text; }));
    }
    check(lists.playlists().size() == 2 && lists.playlists()[0]->count() == 4 && lists.playlists()[1]->count() == 3 &&
              lists.playlists()[0]->movieList[0]->iCount == 0,
          QStringLiteral("Ctrl+Z takes duplicates, drags and smartlist back"));
}

void Review::exportAndSave() {
    hold(library(), QRect(40, 60, 1280, 720));
    robot_.click(itemMiddle(library().playlistsPane().table(), 0, 1));
    saveInPanel(QStringLiteral("ctrl+shift+e"), out_.filePath(QStringLiteral("Day 1_notes.csv")));
    controller().preferences().notesExportFormat.set(QStringLiteral("RTF (Rich Text)"));
    saveInPanel(QStringLiteral("ctrl+shift+e"), out_.filePath(QStringLiteral("Day 1_notes.rtf")));
    saveInPanel(QStringLiteral("ctrl+alt+e"), out_.filePath(QStringLiteral("Day 1_manifest.csv")));
    findMovedFolder();
    handOn();
    saveInPanel(QStringLiteral("ctrl+shift+s"), out_.filePath(QStringLiteral("review.dls")));
    shot(QStringLiteral("library-reviewed.png"));
}

/// A day is moved away on the disk, missed, and found again under another folder.
void Review::findMovedFolder() {
    Library& lists = controller().library();
    const QString moved = out_.filePath(QStringLiteral("moved"));
    QDir(moved).removeRecursively(); // of an earlier run
    out_.mkpath(QStringLiteral("moved/further"));
    check(QDir().rename(dailies_.filePath(QStringLiteral("Day 2")), moved + QStringLiteral("/further/Day 2")),
          QStringLiteral("a folder of dailies is moved away"));
    robot_.key(QStringLiteral("F5"));
    check(robot_.waitFor([&] { return lists.playlists()[1]->status == 2 && lists.playlists()[0]->status == 0; }),
          QStringLiteral("F5 sees that all of the second day is missing"));
    robot_.click(itemMiddle(library().playlistsPane().table(), 1, 1));
    shot(QStringLiteral("library-missing.png"));
    answering(QStringLiteral("Okay"), [&] { chooseInPanel(QStringLiteral("ctrl+alt+m"), moved); },
              QStringLiteral("library-relinked.png"));
    check(robot_.waitFor([&] { return lists.playlists()[1]->status == 0 && controller().thumbnails().isIdle(); }) &&
              lists.playlists()[1]->movieList[0]->filepathString.startsWith(moved),
          QStringLiteral("a search under its new place finds everything"));
    shot(QStringLiteral("library-found.png"));
    robot_.click(itemMiddle(library().playlistsPane().table(), 0, 1));
}

/// The first day's media in one folder, and its first movie with the review as a bundle that is opened again.
void Review::handOn() {
    Library& lists = controller().library();
    const QString gathered = out_.filePath(QStringLiteral("gathered")), bundle = out_.filePath(QStringLiteral("first.dlm"));
    QDir(gathered).removeRecursively(); // of an earlier run
    QDir(bundle).removeRecursively();
    out_.mkpath(QStringLiteral("gathered"));
    answering(QStringLiteral("Okay"), [&] { chooseInPanel(QStringLiteral("ctrl+alt+g"), gathered); });
    check(QDir(gathered).entryList(QDir::Files).size() == 4, QStringLiteral("four movies are gathered"));
    robot_.click(itemMiddle(library().itemsPane().activeView(), 0));
    saveInPanel(QStringLiteral("ctrl+alt+b"), bundle);
    check(robot_.waitFor([&] { return !controller().bundleExport().isBusy(); }) &&
              QFileInfo::exists(bundle + QStringLiteral("/data.dls")) &&
              QFileInfo(bundle + u'/' + firstMovie().filenameString).size() > 0,
          QStringLiteral("the bundle holds the record and the movie"));
    chooseInPanel(QStringLiteral("ctrl+alt+d"), bundle);
    check(robot_.waitFor([&] { return lists.arrangedMovies().size() == 5; }) &&
              lists.arrangedMovies().back()->filepathString.startsWith(bundle) &&
              lists.arrangedMovies().back()->flagString == firstMovie().flagString,
          QStringLiteral("it opens with its flag and its own copy of the movie"));
    check(robot_.waitFor([&] { return controller().thumbnails().isIdle(); }), QStringLiteral("and is looked at"));
    shot(QStringLiteral("library-bundle.png"));
    robot_.key(QStringLiteral("ctrl+z"));
    check(robot_.waitFor([&] { return lists.arrangedMovies().size() == 4; }), QStringLiteral("and is taken back"));
}

void Review::startAgain() {
    program_.reset();
    startProgram();
    check(robot_.waitFor([&] { return controller().library().playlists().size() == 2; }),
          QStringLiteral("the next start finds the playlists"));
    if (controller().library().playlists().size() != 2) return;
    check(firstMovie().flagString == QLatin1String("901") && firstMovie().notes &&
              firstMovie().notes->string() == demoNote && firstMovie().bookmarkStore.size() == 1 &&
              !firstMovie().thumbnail.isNil(),
          QStringLiteral("flag, note, bookmark and thumbnail are there again"));
    program_.reset();
}

void Review::checkFiles() {
    const Result<SessionContents> session = readSessionFile(out_.filePath(QStringLiteral("review.dls")));
    check(bool(session), QStringLiteral("the session file reads"));
    if (session) {
        const auto& movie = session->playlists.at(0)->movieList.at(0);
        check(session->playlists.size() == 2 && movie->flagString == QLatin1String("901") &&
                  movie->notes->string() == demoNote,
              QStringLiteral("the session file holds the review"));
    }
    QFile notes(out_.filePath(QStringLiteral("Day 1_notes.csv")));
    check(notes.open(QIODevice::ReadOnly), QStringLiteral("the notes file reads"));
    const QString text = QString::fromUtf8(notes.readAll());
    check(text.startsWith(QStringLiteral("Filename,Notes 1,Notes 2,Flag,Bookmark Timecode Start,")) &&
              text.count(QLatin1Char('\r')) == 2 + 4 && text.contains(QStringLiteral(",Approved,")) &&
              text.contains(QString(demoNote).remove(QLatin1Char(','))),
          QStringLiteral("the notes file holds four movies, the flag and the note"));
    QFile rich(out_.filePath(QStringLiteral("Day 1_notes.rtf"))), manifest(out_.filePath(QStringLiteral("Day 1_manifest.csv")));
    check(rich.open(QIODevice::ReadOnly) && rich.readAll().contains("\\cf1 " + demoNote.toLatin1()),
          QStringLiteral("the rich text has the note in red"));
    check(manifest.open(QIODevice::ReadOnly) && manifest.readAll().count('\r') == 1 + 4,
          QStringLiteral("the manifest lists four versions"));
    for (const char* name : {"library-empty.png", "library-tiles.png", "library-list.png", "viewer.png",
                             "viewer-panels.png", "library-reviewed.png"}) {
        const QImage picture(out_.filePath(QString::fromLatin1(name)));
        check(picture.size() == QSize(1920, 1080),
              QStringLiteral("%1 is a whole screen").arg(QString::fromLatin1(name)));
    }
}

/// The effects shot, chosen by its name with marks: numbers of its own, a gap, and light that views make pictures of.
void Review::reviewEffects() {
    startProgram();
    Library& lists = controller().library();
    robot_.click(itemMiddle(library().playlistsPane().table(), 0, 1));
    chooseInPanel(QStringLiteral("ctrl+o"), dailies_.filePath(QStringLiteral("Effects/DLK_030_0010_comp_v003.####.exr")));
    check(robot_.waitFor([&] { return lists.arrangedMovies().size() == 5 && controller().thumbnails().isIdle(); }),
          QStringLiteral("a name with marks adds the effects shot as one item"));
    if (lists.arrangedMovies().size() != 5) return;
    Movie& movie = *lists.arrangedMovies().back();
    QAbstractItemView* items = library().itemsPane().activeView();
    check(robot_.waitFor([&] { return items->model()->rowCount() == 5; }), QStringLiteral("and stands behind the others"));
    robot_.click(itemMiddle(items, 0));
    robot_.key(QStringLiteral("End"));
    check(robot_.waitFor([&] { return lists.selectedMovies() == Library::Movies{lists.arrangedMovies().back()}; }),
          QStringLiteral("End selects it"));
    robot_.key(QStringLiteral("Return"));
    MoviePlayerController& player = controller().playerWindow();
    check(robot_.waitFor([&] { return viewer().isVisible() && player.player().pictureIsCurrent(); }),
          QStringLiteral("Return opens it"));
    hold(viewer(), QRect(20, 40, 1440, 900));

    goToNumber(QStringLiteral("1012"));
    check(robot_.waitFor([&] { return numberOnScreen() == 1012; }), QStringLiteral("G goes to number 1012"));
    robot_.key(QStringLiteral("semicolon"));
    check(robot_.waitFor([&] { return movie.bookmarkStore.size() == 1; }) && movie.bookmarkStore.front()->firstFrame == 12,
          QStringLiteral("its bookmark stands on the twelfth frame"));
    switchViews();
    lookIntoGap();

    goToNumber(QStringLiteral("1012"));
    check(robot_.waitFor([&] { return numberOnScreen() == 1012; }), QStringLiteral("and back to the bookmark"));
    const QString name = QStringLiteral("DLK_030_0010_comp_v003.0012_prod1012.jpg");
    QString proposed;
    QTimer reading;
    QObject::connect(&reading, &QTimer::timeout, &reading, [&] {
        const QWidget* panel = QApplication::activeModalWidget();
        const auto* field = panel ? panel->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")) : nullptr;
        if (field && proposed.isEmpty()) proposed = field->text();
    });
    reading.start(20);
    saveInPanel(QStringLiteral("ctrl+t"), out_.filePath(name));
    check(proposed == name, QStringLiteral("a snapshot is named after the number: %1").arg(proposed));
    check(robot_.waitFor([&] { return readBarCode(QImage(out_.filePath(name))) == 1012; }),
          QStringLiteral("and shows it"));
    program_.reset();
}

void Review::goToNumber(const QString& number) {
    robot_.key(QStringLiteral("g"));
    check(robot_.waitFor([] { return qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr; }),
          QStringLiteral("G asks where to go"));
    robot_.type(number);
    robot_.key(QStringLiteral("Return"));
}

/// Another view of the colour configuration, from the button's list, which runs a loop of its own.
void Review::switchViews() {
    const ViewerColour& colour = controller().playerWindow().colour();
    check(robot_.waitFor([&] { return colour.isManaged() && colour.processor(); }),
          QStringLiteral("its light goes through a view"));
    robot_.rest(600);
    shot(QStringLiteral("effects-view.png"));
    const QImage before = pictureOnScreen();
    const QString view = colour.transform().view;
    QTimer choosing;
    QObject::connect(&choosing, &QTimer::timeout, &choosing, [&] {
        const auto* list = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!list) return;
        choosing.stop();
        robot_.rest(300);
        for (QAction* each : list->actions())
            if (each->text() == QLatin1String("Raw"))
                return robot_.click(list->mapToGlobal(list->actionGeometry(each).center()));
    });
    choosing.start(100);
    for (const ViewChoiceButton* button : viewer().findChildren<ViewChoiceButton*>())
        if (button->isVisible() && button->text() == view) robot_.click(button);
    check(robot_.waitFor([&] { return colour.transform().view == QLatin1String("Raw"); }),
          QStringLiteral("the button's list has other views than %1").arg(view));
    const auto otherPixels = [&] {
        const QImage now = pictureOnScreen();
        qint64 count = 0;
        for (int y = now.height() / 4; y < now.height(); y += 4)
            for (int x = 0; x < now.width(); x += 4)
                count += std::abs(qGray(now.pixel(x, y)) - qGray(before.pixel(x, y))) > 4;
        return count * 100 / std::max<qint64>(1, qint64(now.width() / 4) * (now.height() * 3 / 16));
    };
    check(robot_.waitFor([&] { return otherPixels() > 20; }), QStringLiteral("and the picture looks different by it"));
    shot(QStringLiteral("effects-other-view.png"));
}

/// Held, then told of by a slate.
void Review::lookIntoGap() {
    goToNumber(QStringLiteral("1009"));
    check(robot_.waitFor([&] { return numberOnScreen() == 1008; }), QStringLiteral("in the gap the picture before it is held"));
    shot(QStringLiteral("effects-gap.png"));
    controller().preferences().missingPictures.set(MissingPictures::slate);
    check(robot_.waitFor([&] { return !numberOnScreen(); }), QStringLiteral("or a slate stands there"));
    shot(QStringLiteral("effects-slate.png"));
    goToNumber(QStringLiteral("1011"));
    check(robot_.waitFor([&] { return numberOnScreen() == 1011; }), QStringLiteral("and behind it the pictures go on"));
}

int Review::run() {
    startProgram();
    dropFolders();
    if (failed_ == 0) {
        lookAround();
        reviewInViewer();
        workWithLists();
        exportAndSave();
        startAgain();
        checkFiles();
        reviewEffects();
    }
    std::printf("%s: %d checks as they should be, %d not\n", qUtf8Printable(out_.path()), passed_, failed_);
    return failed_ == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Daylark"));
    QApplication::setApplicationDisplayName(QStringLiteral("Daylark"));
    QApplication::setQuitOnLastWindowClosed(false);
    theme::apply(application);
    const QStringList arguments = QApplication::arguments().mid(1);
    if (arguments.value(0) == QLatin1String("--drag-source")) return runDragSource(arguments.mid(1));
    if (arguments.size() != 2) {
        std::fprintf(stderr, "usage: daylark-demo-review DAILIES OUT\n");
        return 2;
    }
    return Review(QDir(arguments[0]), QDir(arguments[1])).run();
}
