#include "ViewerWindowFixture.h"

#include "ui/common/FlagPopUp.h"
#include "ui/common/RichTextField.h"
#include "ui/panels/BookmarkPanel.h"
#include "ui/panels/BookmarkTable.h"
#include "ui/panels/NotesPanel.h"
#include "ui/viewer/PlaylistDrawer.h"

#include <QLineEdit>
#include <QListView>
#include <QTableView>

namespace daylark {

class ViewerReviewTest : public ViewerWindowFixture {
protected:
    void typeInto(QWidget* field, const char* text) {
        ASSERT_TRUE(bench::waitUntil([field] { return field->hasFocus(); }));
        QTest::keyClicks(field, QLatin1String(text));
    }
};

/// What the second note held when the session was saved.
class NoteWhenSaved : public RememberingLibrary {
public:
    explicit NoteWhenSaved(const Movie& movie)
        : movie_(movie) {}
    void saveTempSession() override { note = movie_.notes2.value_or(AttributedString()).string(); }
    QString note;

private:
    const Movie& movie_;
};

TEST_F(ViewerReviewTest, NoteTypedJustBeforeTheMovieChangesStaysWithItsMovie) {
    openTwo();
    key(Qt::Key_N, Qt::ControlModifier);
    RichTextField* field = window->notes()->field(NotesField::notes);
    typeInto(field, "too dark, l f b");
    EXPECT_FALSE(transport.isRunning()) << "a blank in a text field plays nothing";
    EXPECT_TRUE(first->bookmarkStore.empty());
    controller.list().setSelectionIndex(1);
    ASSERT_TRUE(first->notes.has_value());
    EXPECT_EQ(first->notes->string(), QStringLiteral("too dark, l f b"));
    EXPECT_EQ(second->notes.value_or(AttributedString()).length(), 0);
    EXPECT_TRUE(field->toPlainText().isEmpty());
    ASSERT_TRUE(settled());
    key(Qt::Key_Escape); // out of the text: the keys play again
    ASSERT_TRUE(bench::waitUntil([this] { return window->picture()->hasFocus(); }));
    key(Qt::Key_Right);
    EXPECT_SHOWN(2);
}

TEST_F(ViewerReviewTest, ANoteIsTypedOnWhileTheMoviePlaysStepsAndChanges) {
    openTwo();
    key(Qt::Key_N, Qt::ControlModifier);
    RichTextField* field = window->notes()->field(NotesField::notes);
    typeInto(field, "one");
    key(Qt::Key_Right, Qt::AltModifier);
    key(Qt::Key_Right, Qt::AltModifier);
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_SHOWN(2);
    key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_TRUE(transport.isRunning());
    key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_FALSE(transport.isRunning());
    key(Qt::Key_PageDown, Qt::ControlModifier);
    ASSERT_TRUE(settled());
    EXPECT_EQ(controller.currentMovie(), second);
    EXPECT_TRUE(field->hasFocus());
    QTest::keyClicks(field, QStringLiteral("two"));
    key(Qt::Key_PageUp, Qt::ControlModifier);
    ASSERT_TRUE(settled());
    EXPECT_TRUE(field->hasFocus());
    EXPECT_EQ(field->toPlainText(), QStringLiteral("one"));
    EXPECT_EQ(second->notes.value_or(AttributedString()).string(), QStringLiteral("two"));
}

TEST_F(ViewerReviewTest, ARangeBecomesABookmark) {
    openFrames(48);
    preferences.handleHead.set(9);
    preferences.handleTail.set(18);
    key(Qt::Key_M, Qt::ShiftModifier);
    EXPECT_TRUE(first->bookmarkStore.empty()) << "no range yet";
    key(Qt::Key_R);
    key(Qt::Key_M, Qt::ShiftModifier);
    ASSERT_EQ(first->bookmarkStore.size(), 1U);
    const Bookmark& bookmark = *first->bookmarkStore.front();
    EXPECT_EQ(std::tuple(bookmark.firstFrame, bookmark.lastFrame, bookmark.duration), std::tuple(10, 30, 21));
    EXPECT_EQ(bookmark.lastTC, QStringLiteral("00:00:01:05"));
    EXPECT_EQ(preferences.bookmarkDuration(), 1);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(first->bookmarkStore.empty());
}

TEST_F(ViewerReviewTest, NotesReachTheRecordAMomentAfterTheLastKeyAndBeforeClosing) {
    openTwo();
    int changes = 0; // of the notes; what was found in the file is told as well
    QObject::connect(
        &edits, &ReviewEdits::movieChanged, window.get(),
        [&changes](const auto&, const QString& field) { changes += field == QLatin1String("notes"); });
    key(Qt::Key_N, Qt::ControlModifier);
    typeInto(window->notes()->field(NotesField::notes), "abc");
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(bench::waitUntil([&] { return changes > 0; }));
    EXPECT_EQ(changes, 1) << "one edit for a burst of keys";
    key(Qt::Key_Tab);
    typeInto(window->notes()->field(NotesField::notes2), "second");
    NoteWhenSaved saved(*first);
    controller.setLibrary(&saved);
    key(Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(saved.note, QStringLiteral("second"));
}

TEST_F(ViewerReviewTest, BoldKeyStylesWhatIsTypedNext) {
    openTwo();
    key(Qt::Key_N, Qt::ControlModifier);
    RichTextField* field = window->notes()->field(NotesField::notes);
    typeInto(field, "a");
    QTest::keyClick(field, Qt::Key_B, Qt::ControlModifier);
    typeInto(field, "b");
    window->notes()->flush();
    AttributedString expected(QStringLiteral("a"));
    TextAttributes bold;
    bold.bold = true;
    expected.append(QStringLiteral("b"), bold);
    EXPECT_EQ(first->notes, expected);
}

TEST_F(ViewerReviewTest, BookmarkKeyMarksTheFrameOnScreen) {
    openFrames(48);
    preferences.bookmarkDuration.set(12);
    for (int step = 1; step < 10; ++step)
        key(Qt::Key_Right);
    key(Qt::Key_Semicolon);
    ASSERT_EQ(first->bookmarkStore.size(), 1U);
    const auto bookmark = *first->bookmarkStore.begin();
    EXPECT_EQ(bookmark->firstFrame, 10);
    EXPECT_EQ(bookmark->lastFrame, 21);

    key(Qt::Key_B);
    QTableView* table = window->bookmarks()->table();
    ASSERT_TRUE(table->isVisible());
    const auto cell = [&](int column) { return table->model()->index(0, column); };
    EXPECT_EQ(cell(BookmarkRows::firstFrameColumn).data().toInt(), 10);
    EXPECT_TRUE(cell(0).data(Qt::BackgroundRole).isValid()) << "covers the frame on screen";
    key(Qt::Key_Home);
    EXPECT_FALSE(cell(0).data(Qt::BackgroundRole).isValid());
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                      table->visualRect(cell(BookmarkRows::firstTCColumn)).center());
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {},
                       table->visualRect(cell(BookmarkRows::firstTCColumn)).center());
    EXPECT_SHOWN(10);
}

TEST_F(ViewerReviewTest, BookmarkTextTypedInTheTableStandsOverThePictureAndDeleteRemovesIt) {
    openFrames(48);
    key(Qt::Key_Semicolon);
    key(Qt::Key_B);
    QTableView* table = window->bookmarks()->table();
    const QModelIndex text = table->model()->index(0, BookmarkRows::descriptionColumn);
    takeKeyboard(table);
    table->setCurrentIndex(text);
    QTest::keyClick(table, Qt::Key_F2);
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("boom in l f"));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_TRUE(bench::waitUntil(
        [&] { return (*first->bookmarkStore.begin())->overlayString == QLatin1String("boom in l f"); }));
    EXPECT_EQ(window->picture()->scene().readOuts.overlayText, QStringLiteral("boom in l f"));
    preferences.displayBookmarkText.set(false);
    EXPECT_TRUE(window->picture()->scene().readOuts.overlayText.isEmpty());
    takeKeyboard(table);
    key(Qt::Key_Delete);
    EXPECT_TRUE(first->bookmarkStore.empty());
}

TEST_F(ViewerReviewTest, FlagKeysFlagTheMovieAndThePopUpShowsTheNameOfThePreference) {
    openTwo();
    preferences.statusNames[3].set(QStringLiteral("Redo & Resend"));
    key(Qt::Key_4, Qt::ControlModifier);
    EXPECT_EQ(first->flagString, QStringLiteral("904"));
    EXPECT_EQ(first->flag.name(), QStringLiteral("flag_Red.png"));
    EXPECT_EQ(second->flagString, QStringLiteral("900"));
    EXPECT_TRUE(child<FlagPopUp>("flagPopUp")->toolTip().contains(QStringLiteral("Redo &amp; Resend")));
    key(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(first->flagString, QStringLiteral("900"));
    EXPECT_TRUE(first->flag.isNil());
}

TEST_F(ViewerReviewTest, ClosingStoresTheFrameAndTheNextOpeningComesBackToIt) {
    openFrames(48);
    preferences.loadFrame.set(StartFrame::lastVisited);
    for (int step = 1; step < 17; ++step)
        key(Qt::Key_Right);
    EXPECT_SHOWN(17);
    key(Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(library.calls,
              QStringList({QStringLiteral("saveTempSession"), QStringLiteral("bringLibraryToFront")}));
    show({first});
    EXPECT_TRUE(window->isVisible());
    EXPECT_SHOWN(17);
}

TEST_F(ViewerReviewTest, DrawerShowsAMovieByClickAndComesBackAtTheNextOpening) {
    openTwo();
    key(Qt::Key_P);
    EXPECT_EQ(preferences.restorePlaylistDrawer(), 1);
    QListView* list = window->drawer()->view();
    ASSERT_TRUE(list->isVisible());
    const QModelIndex row = list->model()->index(1, 0);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(row).center());
    ASSERT_TRUE(settled());
    EXPECT_EQ(controller.currentMovie(), second);
    key(Qt::Key_PageUp);
    EXPECT_EQ(list->currentIndex().row(), 0);
    key(Qt::Key_W, Qt::ControlModifier);
    show({first, second});
    EXPECT_TRUE(list->isVisible());
}

TEST_F(ViewerReviewTest, ReadOutsOverThePictureFollowThePreferences) {
    openFrames(48);
    EXPECT_TRUE(window->picture()->scene().readOuts.counter.isEmpty());
    preferences.displayFrameCounter.set(true);
    preferences.counterStartFrame.set(1001);
    EXPECT_EQ(window->picture()->scene().readOuts.counter, QStringLiteral("1001"));
    preferences.displayTimecode.set(true);
    EXPECT_TRUE(window->picture()->scene().readOuts.timecode.endsWith(QStringLiteral("00:00:00:00")));
    preferences.displayFilename.set(true);
    EXPECT_EQ(window->picture()->scene().readOuts.filename, first->filenameString);
}

TEST(RichText, GoesThroughTheFieldWithoutLoss) {
    TextAttributes bold, black, red;
    bold.bold = bold.underline = true;
    bold.fontFamily = QStringLiteral("Gill Sans");
    bold.pointSize = 14.5;
    black.colour = QColor(0, 0, 0); // shown lighter, kept black
    black.italic = true;
    red.colour = QColor::fromRgbF(0.9F, 0.1F, 0.2F, 0.5F);
    AttributedString text(QStringLiteral("\nplain\u00a0text\t\u2028"));
    text.append(QStringLiteral("bold\r\nnext\n\n"), bold);
    text.append(QStringLiteral("black"), black);
    text.append(QStringLiteral("\rred \U0001F3AC\n"), red);
    RichTextField field;
    QSignalSpy edited(&field, &RichTextField::edited);
    field.setAttributed(text);
    EXPECT_EQ(field.attributed(), text);
    EXPECT_EQ(edited.count(), 0);
    field.setAttributed({});
    EXPECT_EQ(field.attributed(), AttributedString());

    field.setAttributed(text);
    field.selectAll();
    field.setColour(QColor(1, 2, 3));
    const AttributedString coloured = field.attributed();
    for (const auto& run : coloured.runs())
        EXPECT_EQ(run.attributes.colour, QColor(1, 2, 3));
    field.setColour({});
    const AttributedString plain = field.attributed();
    for (const auto& run : plain.runs())
        EXPECT_FALSE(run.attributes.colour.isValid());
    EXPECT_EQ(plain.string(), text.string());
}

} // namespace daylark
