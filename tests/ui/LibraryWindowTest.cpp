#include "LibraryFixture.h"

#include "ui/commands/Commands.h"
#include "ui/library/ItemsPane.h"
#include "ui/library/MoviesModel.h"
#include "ui/library/PlaylistsModel.h"
#include "ui/library/PlaylistsPane.h"
#include "ui/common/ReorderView.h"
#include "ui/library/StatusStrip.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QScreen>
#include <QSlider>

#include <iostream>

namespace daylark {

using namespace Qt::StringLiterals;
using Rows = Library::Rows;
using bench::waitUntil;

class LibraryWindowTest : public LibraryFixture {};

TEST_F(LibraryWindowTest, NameIsEditedInPlaceByKeysAndByDoubleClick) {
    openWindow();
    trigger("session.newPlaylist");
    EXPECT_TRUE(playlists()->hasFocus());
    key(Qt::Key_F2);
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_TRUE(editor);
    EXPECT_EQ(editor->text(), u"Untitled Playlist"_s);
    key(Qt::Key_A, Qt::ControlModifier); // all of the name, not all of the playlists
    type(u"Day 1 selects"_s);
    key(Qt::Key_Return); // ends the editing and opens no viewer
    EXPECT_EQ(library().playlists().front()->name, u"Day 1 selects"_s);
    EXPECT_FALSE(controller->playerWindow().isOpen());

    doubleClick(playlists(), 0, 0);
    ASSERT_TRUE(qobject_cast<QLineEdit*>(QApplication::focusWidget()));
    type(u"x"_s);
    key(Qt::Key_Escape);
    EXPECT_EQ(library().playlists().front()->name, u"Day 1 selects"_s);
}

TEST_F(LibraryWindowTest, FolderDroppedOnPlaylistsBecomesOneAndIsShown) {
    openWindow();
    const QString day = movieFolder(u"Day 4"_s, {u"b.mov"_s, u"a.mov"_s});
    EXPECT_TRUE(dropFiles(playlists(), {day}));
    settleAdding();
    settleThumbnails();
    EXPECT_EQ(playlistNames(), QStringList{u"Day 4"_s});
    EXPECT_EQ(shownNames(), (QStringList{u"a.mov"_s, u"b.mov"_s}));
    ASSERT_EQ(tiles()->model()->rowCount(), 2);
    const auto cell = [this](int column) { return tiles()->model()->index(0, column).data().toString(); };
    EXPECT_EQ(cell(Column::frames), u"24"_s);
    EXPECT_EQ(cell(Column::rate), u"24"_s);
    EXPECT_EQ(cell(Column::resolution), u"256 x 144"_s);
    EXPECT_FALSE(window->itemsPane().model()->thumbnailAt(0).isNull());
    EXPECT_EQ(playlists()->model()->index(0, PlaylistsModel::countColumn).data().toString(), u"2"_s);
    EXPECT_EQ(window->statusStrip().text(), u"2 items · 1 selected"_s);

    // Loose files on the items go into the selected playlist; text is refused.
    EXPECT_TRUE(dropFiles(tiles(), {makeFile(u"c.mov"_s)}));
    settleAdding();
    EXPECT_EQ(library().arrangedMovies().size(), 3u);
    QMimeData text;
    text.setText(u"/not/a/file"_s);
    EXPECT_FALSE(drop(tiles(), text, {20, 20}));
}

TEST_F(LibraryWindowTest, BothViewsShowOneSelection) {
    openWindow();
    addPlaylist(u"P"_s, {u"1.mov"_s, u"2.mov"_s, u"3.mov"_s, u"4.mov"_s});
    click(tiles(), 1, Column::name);
    click(tiles(), 3, Column::name, Qt::ControlModifier);
    EXPECT_EQ(library().selectedMovieRows(), (Rows{1, 3}));
    trigger("view.list");
    EXPECT_FALSE(window->itemsPane().tilesShown());
    EXPECT_EQ(RowDrag::selectedRows(*table()), (Rows{1, 3}));
    table()->setFocus();
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(library().selectedMovieRows(), (Rows{0, 1, 2, 3}));
    click(table(), 2, Column::name);
    key(Qt::Key_T, Qt::ControlModifier);
    EXPECT_TRUE(window->itemsPane().tilesShown());
    EXPECT_EQ(RowDrag::selectedRows(*tiles()), (Rows{2}));

    // What the viewer selects shows in both; what is edited keeps it.
    library().selectMovies({0});
    EXPECT_EQ(RowDrag::selectedRows(*tiles()), (Rows{0}));
    EXPECT_EQ(RowDrag::selectedRows(*table()), (Rows{0}));
    library().setSort(u"filenameString"_s, false);
    EXPECT_EQ(RowDrag::selectedRows(*tiles()), (Rows{3}));
}

TEST_F(LibraryWindowTest, FlagsAreSetByKeyAndByContextMenuUnderTheUsersNames) {
    openWindow();
    addPlaylist(u"P"_s, {u"1.mov"_s, u"2.mov"_s});
    preferences->statusNames[1].set(u"Good & Cheap"_s);
    click(tiles(), 0, Column::name);
    key(Qt::Key_4, Qt::ControlModifier);
    EXPECT_EQ(library().arrangedMovies()[0]->flagString, u"904"_s);
    click(tiles(), 1, Column::name);
    EXPECT_EQ(command("item.flag.902")->text(), u"Good && Cheap"_s);
    pickInMenu(tiles()->viewport(), middleOf(tiles(), 1, Column::name), u"For Review"_s);
    EXPECT_EQ(library().arrangedMovies()[1]->flagString, u"906"_s);
    EXPECT_EQ(library().arrangedMovies()[0]->flagString, u"904"_s);
    EXPECT_EQ(window->itemsPane().model()->flagName(*library().arrangedMovies()[1]), u"For Review"_s);
    key(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(library().arrangedMovies()[1]->flagString, u"900"_s);
    EXPECT_TRUE(window->isWindowModified());
}

TEST_F(LibraryWindowTest, HeaderClicksSortUpDownAndBackToThePlaylistsOrder) {
    openWindow();
    addPlaylist(u"P"_s, {u"b.mov"_s, u"c.mov"_s, u"a.mov"_s});
    trigger("view.list");
    QHeaderView* header = table()->horizontalHeader();
    const auto clickName = [&] {
        const int x = header->sectionViewportPosition(Column::name) + 20;
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, {x, header->height() / 2});
    };
    clickName();
    EXPECT_EQ(shownNames(), (QStringList{u"a.mov"_s, u"b.mov"_s, u"c.mov"_s}));
    EXPECT_EQ(header->sortIndicatorSection(), int(Column::name));
    clickName();
    EXPECT_EQ(shownNames(), (QStringList{u"c.mov"_s, u"b.mov"_s, u"a.mov"_s}));
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::DescendingOrder);
    clickName();
    EXPECT_EQ(shownNames(), (QStringList{u"b.mov"_s, u"c.mov"_s, u"a.mov"_s}));
    EXPECT_FALSE(header->isSortIndicatorShown());
}

TEST_F(LibraryWindowTest, RowsDraggedToAGapAreMovedAndNumbered) {
    openWindow();
    addPlaylist(u"P"_s, {u"0.mov"_s, u"1.mov"_s, u"2.mov"_s, u"3.mov"_s, u"4.mov"_s});
    trigger("view.list");
    click(table(), 1, Column::name);
    click(table(), 3, Column::name, Qt::ControlModifier);
    const auto items = dragOf(table(), "application/x-daylark-item-rows");
    EXPECT_TRUE(drop(table(), *items, {40, 2}));
    EXPECT_EQ(shownNames(), (QStringList{u"1.mov"_s, u"3.mov"_s, u"0.mov"_s, u"2.mov"_s, u"4.mov"_s}));
    EXPECT_EQ(shownNumbers(), (std::vector<qint64>{1, 2, 3, 4, 5}));

    // Tiles: behind the last of a line is the gap after it, beside everything the end.
    trigger("view.tiles");
    click(tiles(), 0, Column::name);
    const QRect third = tiles()->visualRect(tiles()->model()->index(2, Column::name));
    EXPECT_TRUE(
        drop(tiles(), *dragOf(tiles(), "application/x-daylark-item-rows"), third.center() + QPoint(20, 0)));
    EXPECT_EQ(shownNames(), (QStringList{u"3.mov"_s, u"0.mov"_s, u"1.mov"_s, u"2.mov"_s, u"4.mov"_s}));
    key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(shownNames(), (QStringList{u"3.mov"_s, u"0.mov"_s, u"2.mov"_s, u"1.mov"_s, u"4.mov"_s}));

    addPlaylist(u"Q"_s, {});
    click(playlists(), 1, 0);
    EXPECT_TRUE(drop(playlists(), *dragOf(playlists(), "application/x-daylark-playlist-rows"), {40, 2}));
    EXPECT_EQ(playlistNames(), (QStringList{u"Q"_s, u"P"_s}));
}

TEST_F(LibraryWindowTest, DeleteRemovesWhatHasTheFocusAndAsks) {
    openWindow();
    addPlaylist(u"P"_s, {u"1.mov"_s, u"2.mov"_s});
    click(tiles(), 0, Column::name);
    alerts.answers = {Alerts::secondButton, Alerts::firstButton};
    key(Qt::Key_Delete);
    EXPECT_EQ(shownNames().size(), 2);
    key(Qt::Key_Delete);
    EXPECT_EQ(shownNames(), QStringList{u"2.mov"_s});
    EXPECT_EQ(alerts.shown.at(0).message, u"Remove Selected Movie?"_s);
    click(playlists(), 0, 0);
    alerts.answers = {Alerts::firstButton};
    key(Qt::Key_Backspace);
    EXPECT_TRUE(library().playlists().empty());
    EXPECT_EQ(alerts.shown.back().message, u"Remove Selected Playlist?"_s);
}

TEST_F(LibraryWindowTest, ReturnSpaceAndDoubleClickOpenTheViewerAtTheSelectedItem) {
    openWindow();
    preferences->hideMainWindowWhenPlayerLaunches.set(false);
    dropFiles(playlists(), {movieFolder(u"Day"_s, {u"1.mov"_s, u"2.mov"_s, u"3.mov"_s})});
    settleAdding();
    MoviePlayerController& viewer = controller->playerWindow();
    const auto shownAndClosed = [&viewer] {
        const qsizetype shown = viewer.isOpen() ? viewer.list().selectionIndex() : -1;
        viewer.close();
        return shown;
    };
    click(tiles(), 1, Column::name);
    key(Qt::Key_Return);
    EXPECT_EQ(shownAndClosed(), 1);
    trigger("view.list");
    click(table(), 0, Column::name);
    key(Qt::Key_Space);
    EXPECT_EQ(shownAndClosed(), 0);
    doubleClick(table(), 2, Column::name);
    EXPECT_EQ(shownAndClosed(), 2);
}

TEST_F(LibraryWindowTest, LibraryHidesBehindTheViewerAndComesBack) {
    openWindow();
    dropFiles(playlists(), {movieFolder(u"Day"_s, {u"1.mov"_s})});
    settleAdding();
    trigger("item.open");
    EXPECT_FALSE(window->isVisible());
    controller->playerWindow().close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(library().selectedMovieRows(), Rows{0});
}

TEST_F(LibraryWindowTest, LooksComeBackAtTheNextStart) {
    openWindow();
    addPlaylist(u"P"_s, {u"1.mov"_s});
    window->resize(1100, 640);
    auto* slider = window->findChild<QSlider*>(u"tileSizeSlider"_s);
    const int before = tiles()->gridSize().width();
    slider->setFocus();
    key(Qt::Key_PageUp);
    EXPECT_EQ(window->itemsPane().tileSize(), 150);
    EXPECT_NEAR(tiles()->gridSize().width(), before * 1.5, 4);
    QHeaderView* header = table()->horizontalHeader();
    header->resizeSection(Column::name, 333);
    header->setSectionHidden(Column::size, true);
    header->moveSection(header->visualIndex(Column::rate), 1);
    closeWindow();
    openWindow();
    EXPECT_EQ(window->itemsPane().tileSize(), 150);
    header = table()->horizontalHeader();
    EXPECT_EQ(header->sectionSize(Column::name), 333);
    EXPECT_TRUE(header->isSectionHidden(Column::size));
    EXPECT_EQ(header->visualIndex(Column::rate), 1);
    EXPECT_EQ(playlistNames(), QStringList{u"P"_s});
    EXPECT_EQ(library().selectedPlaylistRows(), Rows{0});
}

TEST_F(LibraryWindowTest, WindowAndItsFrameFitTheScreen) {
    openWindow();
    const QRect available = window->screen()->availableGeometry();
    window->setGeometry(QRect(available.topLeft(), available.size() - QSize(16, 8)));
    closeWindow();
    openWindow();
    EXPECT_LE(window->height(), available.height() - 32) << "its title or its foot stands beyond the screen";
}

TEST_F(LibraryWindowTest, NotesAreExportedThroughThePanel) {
    openWindow();
    addPlaylist(u"Day 1"_s, {u"a.mov"_s, u"b.mov"_s});
    controller->edits().setNotes(library().arrangedMovies()[1], NotesField::notes,
                                 AttributedString(u"too dark, again"_s));
    click(tiles(), 1, Column::name);
    const QString file = path(u"notes.csv"_s);
    panels.saveAnswers = {file};
    const auto written = [&file] { return QFileInfo::exists(file); }; // whole as soon as it is there
    trigger("notes.exportMovie");
    ASSERT_TRUE(waitUntil(written));
    EXPECT_EQ(panels.savesShown.at(0).proposedName, u"Day 1_notes.csv"_s);
    QFile made(file);
    ASSERT_TRUE(made.open(QIODevice::ReadOnly));
    EXPECT_TRUE(made.readAll().endsWith("\r\rb,too dark again,,,\r"));
    panels.saveAnswers = {file};
    made.close();
    ASSERT_TRUE(made.remove());
    trigger("notes.exportPlaylist");
    ASSERT_TRUE(waitUntil(written));
    ASSERT_TRUE(made.open(QIODevice::ReadOnly));
    EXPECT_TRUE(made.readAll().contains("\ra,,,,\r"));
}

TEST_F(LibraryWindowTest, HintsStandInEmptyListsOnlyAndOnlyIfWanted) {
    openWindow();
    const auto hints = [this] {
        int visible = 0;
        for (const QWidget* view : {playlists()->viewport(), tiles()->viewport()})
            for (const QWidget* hint : view->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
                visible += hint->accessibleName().startsWith(u"Drop"_s) && !hint->isHidden();
        return visible;
    };
    EXPECT_EQ(hints(), 2);
    addPlaylist(u"P"_s, {});
    EXPECT_EQ(hints(), 1);
    preferences->showDropText.set(false);
    EXPECT_EQ(hints(), 0);
    preferences->showDropText.set(true);
    addPlaylist(u"Q"_s, {u"1.mov"_s});
    EXPECT_EQ(hints(), 0);
}

TEST_F(LibraryWindowTest, MissingFilesAreCountedAndMarked) {
    openWindow();
    addPlaylist(u"P"_s, {u"1.mov"_s, u"2.mov"_s});
    makeFile(u"1.mov"_s);
    controller->fileStates().updateAllFilePaths();
    EXPECT_TRUE(waitUntil([this] { return window->statusStrip().text().endsWith(u"1 missing"_s); }));
    EXPECT_TRUE(waitUntil([this] { return playlists()->model()->index(0, 0).data(PlaylistsModel::statusRole).toInt() == 1; }));
    const QString hint = tiles()->model()->index(1, Column::name).data(Qt::ToolTipRole).toString();
    EXPECT_TRUE(hint.contains(u"File Not Found"_s));
}

TEST_F(LibraryWindowTest, PathsAndNamesAreCopiedAndRevealed) {
    openWindow();
    addPlaylist(u"P"_s, {u"1.mov"_s, u"2.mov"_s});
    click(tiles(), 1, Column::name);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(pasteboard.content.contains(path(u"2.mov"_s)));
    key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(pasteboard.content.contains(u"2.mov"_s));
    EXPECT_FALSE(pasteboard.content.contains(folder.path()));
}

TEST_F(LibraryWindowTest, TheInterfaceGoesOnWhileFiveHundredItemsArrive) {
    openWindow();
    const QString folderPath = path(u"Many"_s);
    QDir().mkpath(folderPath);
    const QString made = bench::movie({.frames = 24, .group = 12});
    for (int number = 0; number < 500; ++number)
        ASSERT_TRUE(QFile::link(made, folderPath + u"/shot_%1.mov"_s.arg(number, 4, 10, QLatin1Char('0'))));
    bool shownWhole = false;
    ASSERT_TRUE(dropFiles(playlists(), {folderPath}));
    ASSERT_TRUE(waitUntil(
        [&] {
            shownWhole = shownWhole ||
                         (library().arrangedMovies().size() == 500 && !controller->thumbnails().isIdle());
            if (shownWhole) // a person scrolls meanwhile
                tiles()->verticalScrollBar()->setValue((tiles()->verticalScrollBar()->value() + 40) %
                                                       std::max(1, tiles()->verticalScrollBar()->maximum()));
            return shownWhole && controller->thumbnails().isIdle();
        },
        300000));
    EXPECT_EQ(library().arrangedMovies()[499]->mMovieDurationFrames, 24);
    EXPECT_FALSE(window->itemsPane().model()->thumbnailAt(499).isNull());
}

} // namespace daylark
