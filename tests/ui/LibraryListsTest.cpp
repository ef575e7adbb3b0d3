#include "LibraryFixture.h"

#include "ui/commands/Commands.h"
#include "ui/common/ReorderView.h"
#include "ui/library/DragPicture.h"
#include "ui/library/ItemsPane.h"
#include "ui/library/MoviesModel.h"
#include "ui/library/PlaylistsModel.h"
#include "ui/library/PlaylistsPane.h"
#include "ui/library/StatusStrip.h"
#include "ui/library/search/FindPanel.h"
#include "ui/library/search/SmartRulesPanel.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include <optional>
#include <set>

namespace daylark {

using namespace Qt::StringLiterals;
using Rows = Library::Rows;

/// Smartlists, filters, find and drags in the real window, by key, mouse and drop.
class LibraryListsTest : public LibraryFixture {
protected:
    template<class Widget>
    Widget* part(const char* name) const {
        auto* found = window->findChild<Widget*>(QLatin1String(name));
        EXPECT_TRUE(found) << name;
        return found;
    }
    QToolButton* filterButton() const { return part<QToolButton>("moreFiltersButton"); }
    QLineEdit* searchField() const { return part<QLineEdit>("movieSearchField"); }
    QLineEdit* findField() const { return part<QLineEdit>("findField"); }
    bool findIsShown() const { return part<QWidget>("findPanel")->isVisible(); }
    void pickFilter(const QString& title) const {
        for (QAction* action : filterButton()->menu()->actions())
            if (action->text() == title) return action->trigger();
        FAIL() << qPrintable(title);
    }
    /// By the arrow keys.
    static void choose(QComboBox* box, const QString& text) {
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Home);
        for (int at = 0; at < box->count() && box->currentText() != text; ++at)
            QTest::keyClick(box, Qt::Key_Down);
        EXPECT_EQ(box->currentText(), text);
    }
    /// Items dragged onto a playlist's row.
    bool dropOnPlaylist(int row, Qt::KeyboardModifiers held = Qt::NoModifier, std::optional<QPoint> inAt = {}) {
        const auto data = dragOf(window->itemsPane().activeView(), "application/x-daylark-item-rows");
        const QPoint place = middleOf(playlists(), row, 0);
        QDragEnterEvent enter(inAt.value_or(place), Qt::CopyAction, data.get(), Qt::LeftButton, held);
        QApplication::sendEvent(playlists()->viewport(), &enter);
        if (inAt && !enter.isAccepted()) return false; // and hears nothing more
        QDragMoveEvent move(place, Qt::CopyAction, data.get(), Qt::LeftButton, held);
        QApplication::sendEvent(playlists()->viewport(), &move);
        if (!move.isAccepted()) return false;
        QDropEvent dropped(place, Qt::CopyAction, data.get(), Qt::LeftButton, held);
        QApplication::sendEvent(playlists()->viewport(), &dropped);
        QCoreApplication::processEvents();
        return dropped.isAccepted();
    }
};

TEST_F(LibraryListsTest, ButtonMenuAndFieldShowOneFilterAndTheLineCounts) {
    openWindow();
    addPlaylist(u"P"_s, {u"a/1.mov"_s, u"a/2.mov"_s, u"b/3.mov"_s});
    EXPECT_EQ(filterButton()->text(), u"More Filters"_s);
    key(Qt::Key_K, Qt::ControlModifier);
    ASSERT_EQ(QApplication::focusWidget(), searchField());
    type(u"/A/"_s);
    EXPECT_EQ(shownNames(), (QStringList{u"1.mov"_s, u"2.mov"_s}));
    EXPECT_EQ(tiles()->model()->rowCount(), 2);
    EXPECT_TRUE(window->statusStrip().text().startsWith(u"2 of 3 items"_s)) << qPrintable(window->statusStrip().text());
    pickFilter(u"Unflagged"_s);
    EXPECT_EQ(searchField()->text(), QString());
    EXPECT_EQ(filterButton()->text(), u"Unflagged"_s);
    EXPECT_TRUE(command("filter.unflagged")->isChecked());
    EXPECT_EQ(shownNames().size(), 3);
    click(tiles(), 0, Column::name);
    key(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(shownNames(), (QStringList{u"2.mov"_s, u"3.mov"_s}));
    pickFilter(u"Approved"_s);
    EXPECT_EQ(filterButton()->text(), u"Flagged"_s);
    EXPECT_EQ(shownNames(), QStringList{u"1.mov"_s});
    pickFilter(u"With Colour Correction"_s);
    EXPECT_EQ(filterButton()->text(), u"CCs"_s);
    EXPECT_TRUE(window->statusStrip().text().startsWith(u"0 of 3 items"_s));
    bool told = false; // an empty list says why
    for (const QWidget* hint : tiles()->viewport()->findChildren<QWidget*>())
        told |= !hint->isHidden() && hint->accessibleName().startsWith(u"The filter hides"_s);
    EXPECT_TRUE(told);
    key(Qt::Key_K, Qt::ControlModifier);
    type(u"3"_s);
    EXPECT_EQ(filterButton()->text(), u"More Filters"_s);
    EXPECT_EQ(shownNames(), QStringList{u"3.mov"_s});
    key(Qt::Key_Escape);
    EXPECT_TRUE(tiles()->hasFocus());
    EXPECT_EQ(shownNames().size(), 3);
    EXPECT_TRUE(window->statusStrip().text().startsWith(u"3 items"_s));
}

TEST_F(LibraryListsTest, FindGoesByItsFieldAndByF3AndClosesByEscape) {
    openWindow();
    addPlaylist(u"P"_s, {u"x_1.mov"_s, u"y.mov"_s, u"x_2.mov"_s});
    addPlaylist(u"Q"_s, {u"z.mov"_s, u"x_3.mov"_s});
    preferences->findInputScope.set(FindInput::filenames);
    EXPECT_FALSE(findIsShown());
    key(Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(findIsShown());
    ASSERT_EQ(QApplication::focusWidget(), findField());
    type(u"X_"_s);
    bool told = false;
    for (const QLabel* label : part<QWidget>("findPanel")->findChildren<QLabel*>())
        told |= label->text() == u"3 Matches"_s;
    EXPECT_TRUE(told);
    EXPECT_EQ(library().selectedPlaylistRows(), Rows{0});
    key(Qt::Key_Return);
    EXPECT_EQ(RowDrag::selectedRows(*tiles()), Rows{2});
    key(Qt::Key_F3);
    EXPECT_EQ(library().selectedPlaylistRows(), Rows{1});
    EXPECT_EQ(RowDrag::selectedRows(*playlists()), Rows{1});
    EXPECT_EQ(RowDrag::selectedRows(*table()), Rows{1});
    key(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(library().selectedMovieRows(), Rows{2});
    click(tiles(), 0, Column::name);
    key(Qt::Key_F3, Qt::ShiftModifier); // from where somebody clicked
    EXPECT_EQ(library().selectedPlaylistRows(), Rows{1});
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(findField()->selectedText(), u"X_"_s);
    key(Qt::Key_Escape);
    EXPECT_FALSE(findIsShown());
    EXPECT_TRUE(tiles()->hasFocus());

    key(Qt::Key_F, Qt::ControlModifier);
    QTest::mouseClick(part<QToolButton>("foundPlaylistButton"), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(library().playlists().back()->name, u"Instances of \"X_\""_s);
    EXPECT_EQ(library().playlists().back()->movieList[2]->iCount, 1);
    EXPECT_FALSE(findIsShown());
    EXPECT_FALSE(command("find.next")->isEnabled());
}

TEST_F(LibraryListsTest, ItemsDroppedOnAPlaylistAskAndTheRowUnderThePointerIsMarked) {
    openWindow();
    addPlaylist(u"Target"_s, {});
    addPlaylist(u"Source"_s, {u"1.mov"_s, u"2.mov"_s, u"3.mov"_s});
    trigger("session.newSmartlist");
    for (auto* panel : window->findChildren<SmartRulesPanel*>())
        panel->close();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    library().selectPlaylist(1);
    click(tiles(), 0, Column::name);
    click(tiles(), 2, Column::name, Qt::ControlModifier);
    alerts.answers = {Alerts::firstButton, Alerts::secondButton, Alerts::firstButton};
    EXPECT_TRUE(dropOnPlaylist(0, Qt::NoModifier, playlists()->viewport()->rect().bottomLeft() + QPoint(20, -3)))
        << "in below the last row, then up to one";
    EXPECT_EQ(library().playlists()[0]->count(), 2);
    click(tiles(), 1, Column::name);
    EXPECT_TRUE(dropOnPlaylist(0));
    EXPECT_EQ(shownNames(), (QStringList{u"1.mov"_s, u"3.mov"_s}));
    click(tiles(), 0, Column::name);
    EXPECT_TRUE(dropOnPlaylist(0, Qt::AltModifier));
    EXPECT_EQ(library().playlists()[0]->movieList[3], library().arrangedMovies()[0]);
    EXPECT_EQ(MoviesModel::iconNames(*library().arrangedMovies()[0]), std::vector<QString>{u"copy 03 white.png"_s});
    EXPECT_FALSE(dropOnPlaylist(2)) << "a smartlist takes nothing";

    const auto data = dragOf(tiles(), "application/x-daylark-item-rows");
    const auto grab = [this] { return playlists()->viewport()->grab().toImage(); };
    const QImage before = grab();
    QDragEnterEvent enter(middleOf(playlists(), 0, 0), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(playlists()->viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    const QImage marked = grab();
    EXPECT_NE(marked, before);
    EXPECT_EQ(marked.copy(playlists()->visualRect(playlists()->model()->index(1, 0)).adjusted(0, 2, 0, 0)),
              before.copy(playlists()->visualRect(playlists()->model()->index(1, 0)).adjusted(0, 2, 0, 0)));
    QDragLeaveEvent leave; // as Escape ends it
    QApplication::sendEvent(playlists()->viewport(), &leave);
    EXPECT_EQ(grab(), before);
}

TEST_F(LibraryListsTest, RulesAreEditedInAPanelAndAnsweredWhileItStandsOpen) {
    openWindow();
    addPlaylist(u"P"_s, {u"1.mov"_s, u"2.mov"_s});
    click(tiles(), 1, Column::name);
    key(Qt::Key_1, Qt::ControlModifier);
    key(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    auto* panel = part<SmartRulesPanel>("smartRulesPanel");
    ASSERT_TRUE(panel && panel->isVisible());
    EXPECT_EQ(panel->windowTitle(), u"Rules of Untitled Smartlist"_s);
    EXPECT_EQ(shownNames(), QStringList{u"2.mov"_s}) << "the first rule asks for what is approved";
    EXPECT_EQ(playlists()->model()->index(1, PlaylistsModel::countColumn).data().toString(), u"1"_s);

    QTest::mouseClick(panel->findChild<QToolButton*>(u"addRuleButton"_s), Qt::LeftButton);
    auto* row = panel->findChildren<SmartRuleRow*>().last();
    auto* subject = row->findChildren<QComboBox*>().first();
    choose(subject, u"File name"_s);
    ASSERT_TRUE(bench::waitUntil([&] { return row->findChild<QLineEdit*>() != nullptr; }));
    auto* relation = row->findChildren<QComboBox*>(Qt::FindDirectChildrenOnly).at(1);
    ASSERT_TRUE(bench::waitUntil([relation] { return relation->width() >= relation->sizeHint().width(); }))
        << "\"" << qPrintable(relation->currentText()) << "\" is cut";
    QTest::keyClicks(row->findChild<QLineEdit*>(), u"1"_s);
    QCoreApplication::processEvents();
    EXPECT_TRUE(shownNames().isEmpty()) << "both must hold";
    auto* match = panel->findChildren<QComboBox*>(Qt::FindDirectChildrenOnly).first();
    choose(match, u"any"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(shownNames(), (QStringList{u"1.mov"_s, u"2.mov"_s}));
    EXPECT_EQ(library().playlists()[1]->smartRules.rules.size(), 2u);
    QTest::mouseClick(row->removeButton(), Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(shownNames(), QStringList{u"2.mov"_s});

    controller->playlistEditing().removeSelectedPlaylistsWithoutWarning();
    QCoreApplication::processEvents();
    EXPECT_TRUE(!panel->isVisible()) << "its list has gone";
    controller->edits().history().undo();
    library().selectPlaylist(1);
    EXPECT_EQ(shownNames(), QStringList{u"2.mov"_s});
    trigger("playlists.editRules");
    QCoreApplication::processEvents();
    EXPECT_TRUE(part<SmartRulesPanel>("smartRulesPanel"));
}

TEST_F(LibraryListsTest, ADragOfManyShowsHowMany) {
    const QPixmap one = dragPicture({}, u"Day 1"_s, 1, 1.0), many = dragPicture({}, u"Day 1"_s, 200, 1.0);
    EXPECT_GT(many.width(), one.width());
    EXPECT_NE(dragPicture({}, u"Day 1"_s, 201, 1.0).toImage(), many.toImage());
    std::vector<QPixmap> pictures(3, QPixmap(100, 56));
    for (QPixmap& picture : pictures)
        picture.fill(Qt::green);
    EXPECT_GT(dragPicture(pictures, {}, 200, 2.0).width(), 2 * dragPicture({pictures[0]}, {}, 1, 1.0).width() - 1);
}

TEST_F(LibraryListsTest, EveryControlIsReachedByTabAndHasAName) {
    openWindow();
    addPlaylist(u"P"_s, {u"1.mov"_s});
    key(Qt::Key_F, Qt::ControlModifier);
    tiles()->setFocus();
    std::set<QWidget*> reached;
    for (int step = 0; step < 80; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        if (!reached.insert(QApplication::focusWidget()).second) break;
    }
    for (QWidget* widget : {static_cast<QWidget*>(filterButton()), static_cast<QWidget*>(searchField()),
                            static_cast<QWidget*>(findField()), static_cast<QWidget*>(tiles()),
                            static_cast<QWidget*>(playlists()), static_cast<QWidget*>(part<QToolButton>("foundPlaylistButton"))})
        EXPECT_TRUE(reached.contains(widget) || !widget->isEnabled()) << qPrintable(widget->objectName());
    for (const QWidget* widget : reached)
        EXPECT_FALSE(widget->accessibleName().isEmpty())
            << widget->metaObject()->className() << " " << qPrintable(widget->objectName());
}

} // namespace daylark
