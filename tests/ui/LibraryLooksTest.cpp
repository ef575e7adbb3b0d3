#include "LibraryFixture.h"

#include "app/sessions/RecentSessions.h"
#include "support/MovieMaker.h"
#include "ui/commands/Commands.h"
#include "ui/common/notice/PassingLine.h"
#include "ui/common/text/NameText.h"
#include "ui/library/ItemInformation.h"
#include "ui/library/ItemsPane.h"
#include "ui/library/MoviesModel.h"
#include "ui/library/PlaylistsPane.h"

#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QToolButton>

namespace daylark {

using namespace Qt::StringLiterals;
using Rows = Library::Rows;
using bench::waitUntil;

class LibraryLooksTest : public LibraryFixture {
protected:
    QString informationText() const {
        QStringList lines;
        for (const auto* label : window->findChild<ItemInformation*>()->findChildren<QLabel*>())
            if (label->isVisible() && !label->text().isEmpty()) lines << label->text();
        return lines.join(u'\n');
    }
    QMenu* recentMenu() const {
        for (QObject* shown : command("session.clearRecent")->associatedObjects())
            if (auto* menu = qobject_cast<QMenu*>(shown)) return menu;
        return nullptr;
    }
};

TEST(NameText, LeavesOutWhatAllHaveInCommonBeforeWhatTellsThemApart) {
    const QFontMetrics metrics{QFont()};
    const auto wide = [&](const QString& text) { return metrics.horizontalAdvance(text) + 1; };
    const auto texts = [&](const ShownName& name, int width, int lines) {
        QStringList shown;
        for (const nameText::Line& line : nameText::layOut(name, metrics, width, lines)) {
            EXPECT_LE(metrics.horizontalAdvance(line.text), width) << line.text.toStdString();
            EXPECT_LE(line.dimmed, line.text.size());
            shown << line.text;
        }
        return shown;
    };
    const ShownName name{u"DAY03_SC012_SH0040_v002"_s, 12};
    EXPECT_EQ(texts(name, wide(name.text), 2), QStringList{name.text});
    EXPECT_EQ(texts(name, wide(u"DAY03_SC012_"_s), 2), (QStringList{u"DAY03_SC012_"_s, u"SH0040_v002"_s}));
    EXPECT_EQ(texts(name, wide(u"…SH0040_"_s), 2), (QStringList{u"…SH0040_"_s, u"v002"_s}));
    EXPECT_EQ(texts(name, wide(u"…SH0040_v002"_s), 1), QStringList{u"…SH0040_v002"_s});
    // Narrower than that: from the middle of what tells it apart, never more than there is room for.
    for (int width = wide(u"…"_s); width < wide(name.text); width += 3)
        for (const int lines : {1, 2, 3})
            EXPECT_LE(texts(name, width, lines).size(), lines);
}

TEST_F(LibraryLooksTest, ExtensionsAreHiddenByChoiceInBothViewsAndKeptForReaders) {
    openWindow();
    addPlaylist(u"Day"_s, {u"shot_1.mov"_s, u"shot_2.mov"_s});
    const auto cell = [this](int role) { return table()->model()->index(0, Column::name).data(role).toString(); };
    EXPECT_EQ(cell(Qt::DisplayRole), u"shot_1.mov"_s);
    EXPECT_EQ(window->itemsPane().model()->shownName(*library().movieAt(0)).common, 5);
    preferences->displayFileExtensions.set(false);
    EXPECT_EQ(cell(Qt::DisplayRole), u"shot_1"_s);
    EXPECT_TRUE(cell(Qt::ToolTipRole).contains(u"shot_1.mov"_s));
    preferences->dimCommonBeginnings.set(false);
    EXPECT_EQ(window->itemsPane().model()->shownName(*library().movieAt(0)).common, 0);
}

TEST_F(LibraryLooksTest, TheNameColumnTakesTheFreeWidthAndKeepsWhatAPersonGaveIt) {
    openWindow();
    addPlaylist(u"Day"_s, {u"a.mov"_s});
    trigger("view.list");
    QHeaderView* header = table()->horizontalHeader();
    const auto isFull = [&] { return header->length() == table()->viewport()->width(); };
    header->setSectionHidden(Column::path, true);
    window->resize(1800, 700);
    ASSERT_TRUE(waitUntil(isFull)) << header->length() << " of " << table()->viewport()->width();
    const int wide = header->sectionSize(Column::name);
    header->resizeSection(Column::frames, header->sectionSize(Column::frames) + 40);
    EXPECT_TRUE(isFull());
    EXPECT_EQ(header->sectionSize(Column::name), wide - 40);
    window->resize(760, 700); // no room: the name stays readable, and one scrolls
    ASSERT_TRUE(waitUntil([&] { return table()->viewport()->width() < 600; }));
    EXPECT_GE(header->sectionSize(Column::name), 160);
    header->resizeSection(Column::name, 333);
    closeWindow();
    openWindow();
    trigger("view.list");
    EXPECT_GE(table()->columnWidth(Column::name), 333);
    EXPECT_TRUE(table()->isColumnHidden(Column::path));
}

TEST_F(LibraryLooksTest, ManyFlagsAtOnceAreToldInPassingAndTakenBackThere) {
    openWindow();
    addPlaylist(u"Day"_s, {u"a.mov"_s, u"b.mov"_s, u"c.mov"_s});
    auto* line = window->findChild<PassingLine*>();
    ASSERT_TRUE(line);
    library().selectMovies({0});
    trigger("item.flag.904");
    EXPECT_TRUE(line->text().isEmpty());
    library().selectMovies({0, 1, 2});
    trigger("item.flag.901");
    EXPECT_EQ(line->text(), u"3 flags changed"_s);
    EXPECT_TRUE(line->parentWidget()->rect().contains(line->geometry()));
    auto* undo = line->findChild<QToolButton*>(u"passingLineButton"_s);
    EXPECT_EQ(undo->text(), u"Undo"_s);
    QTest::mouseClick(undo, Qt::LeftButton);
    EXPECT_EQ(library().movieAt(0)->flagString, u"904"_s);
    EXPECT_EQ(library().movieAt(2)->flagString, u"900"_s);
    EXPECT_TRUE(line->text().isEmpty());
    preferences->tellOfManyChanges.set(false);
    library().selectMovies({0, 1, 2});
    trigger("item.flag.901");
    EXPECT_TRUE(line->text().isEmpty());
}

TEST_F(LibraryLooksTest, QuestionsThatRemoveNameThePlaylistAndReturnKeeps) {
    openWindow();
    addPlaylist(u"Day 12"_s, {u"a.mov"_s, u"b.mov"_s});
    library().selectMovies({0});
    alerts.answers = {Alerts::secondButton};
    trigger("items.remove");
    ASSERT_EQ(alerts.shown.size(), 1u);
    EXPECT_EQ(alerts.shown[0].subject, u"Day 12"_s);
    EXPECT_EQ(alerts.shown[0].buttons[alerts.shown[0].defaultButton], u"Cancel"_s);
    EXPECT_EQ(alerts.shown[0].buttons[0], u"Remove Movie"_s); // their order stays
    addPlaylist(u"Day 13"_s, {u"c.mov"_s});
    library().selectPlaylists({0, 1});
    alerts.answers = {Alerts::secondButton};
    trigger("playlists.remove");
    EXPECT_EQ(alerts.shown.back().subject, u"2 playlists: Day 12, Day 13"_s);
    EXPECT_EQ(alerts.shown.back().defaultButton, 1);
}

TEST_F(LibraryLooksTest, RecentSessionsStandInTheFileMenuWithTheirPathsAndAreOpenedFromThere) {
    openWindow();
    addPlaylist(u"Day"_s, {u"a.mov"_s});
    for (const QString& name : {u"first & best.dls"_s, u"second.dls"_s}) {
        panels.saveAnswers = {path(name)};
        sessionFiles().saveSessionAs();
        settleFiles();
    }
    const QList<QAction*> entries = recentMenu()->actions();
    ASSERT_EQ(entries.size(), 4);
    EXPECT_EQ(entries[0]->text(), u"second"_s);
    EXPECT_TRUE(entries[0]->isChecked());
    EXPECT_EQ(entries[1]->text(), u"first && best"_s);
    EXPECT_TRUE(entries[1]->toolTip().contains(path(u"first & best.dls"_s).toHtmlEscaped()) ||
                entries[1]->toolTip().contains(path(u"first & best.dls"_s)));
    auto* name = window->findChild<QLabel*>(u"sessionName"_s);
    EXPECT_TRUE(name->isVisible());
    EXPECT_TRUE(name->toolTip().contains(u"second.dls"_s));
    addPlaylist(u"More"_s, {});
    alerts.answers = {Alerts::firstButton}; // "Replace Session"
    entries[1]->trigger();
    ASSERT_TRUE(waitUntil([this] { return sessionFiles().currentSessionPath() == path(u"first & best.dls"_s); }));
    EXPECT_EQ(playlistNames(), QStringList{u"Day"_s});
    trigger("session.clearRecent");
    EXPECT_EQ(recentMenu()->actions().size(), 2); // a line and the command, which is off now
    EXPECT_FALSE(command("session.clearRecent")->isEnabled());
}

TEST_F(LibraryLooksTest, TilesOrListAsLeftIsAChoice) {
    openWindow();
    trigger("view.list");
    closeWindow();
    openWindow();
    EXPECT_TRUE(window->itemsPane().tilesShown()) << "the choice is tiles";
    preferences->initialTabItem.set(2);
    trigger("view.list");
    closeWindow();
    openWindow();
    EXPECT_FALSE(window->itemsPane().tilesShown());
    trigger("view.tiles");
    closeWindow();
    openWindow();
    EXPECT_TRUE(window->itemsPane().tilesShown());
}

TEST_F(LibraryLooksTest, InformationFollowsTheSelectionAndSaysWhatSeveralItemsShare) {
    QStringList files;
    for (const QString& name : {u"a.mov"_s, u"b.mov"_s}) {
        MovieSpec spec;
        spec.path = path(name);
        spec.sound = name == u"a.mov"_s;
        spec.timecode = u"01:00:00:00"_s;
        ASSERT_TRUE(makeMovie(spec));
        files << spec.path;
    }
    openWindow();
    preferences->firstFrameNumber.set(FirstFrameNumber::timecode);
    addPlaylist(u"Day"_s, {});
    controller->mediaAdding().addMediaFilesToSelectedPlaylist(files);
    settleAdding();
    settleThumbnails();
    trigger("view.information");
    library().selectMovies({0});
    ASSERT_TRUE(waitUntil([this] { return informationText().contains(u"H.264"_s); })) << informationText().toStdString();
    for (const QString& fact : {u"stereo"_s, u"01:00:00:00"_s, u"86400"_s, u"yuv420p"_s, u"320 x 180"_s})
        EXPECT_TRUE(informationText().contains(fact)) << fact.toStdString();
    library().selectMovies({1});
    ASSERT_TRUE(waitUntil([this] { return informationText().contains(u"No sound"_s); }));
    library().selectMovies({0, 1});
    ASSERT_TRUE(waitUntil([this] { return informationText().contains(u"H.264"_s); }));
    EXPECT_TRUE(informationText().contains(u"320 x 180"_s));
    EXPECT_TRUE(informationText().contains(u"96"_s)); // frames in all
    EXPECT_FALSE(informationText().contains(u"No sound"_s)); // not shared
    trigger("view.list");
    ASSERT_TRUE(waitUntil([this] { return table()->model()->index(1, Column::sound).data().toString() == u"No sound"_s; }));
    EXPECT_EQ(table()->model()->index(0, Column::sound).data().toString(), u"stereo"_s);
}

} // namespace daylark
