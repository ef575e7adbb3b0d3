#include "ViewerWindowFixture.h"

#include "ui/controls/PositionSlider.h"
#include "ui/controls/RangeIndicator.h"
#include "ui/common/notice/PassingLine.h"

#include <QLabel>
#include <QTemporaryDir>

namespace daylark {

class ViewerRangeTest : public ViewerWindowFixture {
protected:
    void goByHand(int frame) {
        goTo(frame);
        EXPECT_SHOWN(frame);
    }
    [[nodiscard]] RangeIndicator* bar() const { return child<RangeIndicator>("rangeIndicator"); }
    [[nodiscard]] QString text(const char* label) const { return child<QLabel>(label)->text(); }
};

TEST_F(ViewerRangeTest, AMovieShorterThanItsHandlesIsSaidInPassingUnlessAPersonAsked) {
    first = record(bench::movie({.frames = 48, .group = 12}));
    second = record(bench::movie({.frames = 12, .group = 12})); // less than nine and eight
    show({first, second});
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    key(Qt::Key_R);
    EXPECT_TRUE(preferences.trimHandles());
    key(Qt::Key_PageDown);
    ASSERT_TRUE(settled());
    ASSERT_TRUE(bench::waitUntil([this] { return child<QWidget>("passingLine")->isVisible(); }));
    EXPECT_TRUE(child<PassingLine>("passingLine")->text().startsWith(u"Handles are longer than movie"));
    EXPECT_TRUE(alerts.shown.empty());
    EXPECT_FALSE(preferences.trimHandles());
    const qint64 at = player.currentFrame();
    key(Qt::Key_Left); // no question has the keys
    EXPECT_EQ(player.currentFrame(), at - 1);
    key(Qt::Key_R);
    ASSERT_TRUE(bench::waitUntil([this] { return alerts.shown.size() == 1; }));
    EXPECT_EQ(alerts.shown.back().message, QStringLiteral("Handles are longer than movie"));
}

TEST_F(ViewerRangeTest, KeysMarkTheRangeAndTheBarUnderTheSliderShowsIt) {
    openFrames(100);
    EXPECT_FALSE(bar()->isVisible());
    goByHand(21);
    key(Qt::Key_I);
    goByHand(60);
    key(Qt::Key_U);
    EXPECT_TRUE(bar()->isVisible());
    EXPECT_EQ(bar()->rangeStart(), 21);
    EXPECT_EQ(bar()->rangeEnd(), 60);
    key(Qt::Key_Home);
    EXPECT_SHOWN(21);
    key(Qt::Key_End);
    EXPECT_SHOWN(60);
    key(Qt::Key_R);
    EXPECT_FALSE(bar()->isVisible());
    key(Qt::Key_Home);
    EXPECT_SHOWN(1);
    key(Qt::Key_R, Qt::ShiftModifier); // default handles; trimming stays off
    EXPECT_EQ(preferences.handleHead(), 9);
    EXPECT_FALSE(bar()->isVisible());
    EXPECT_FALSE(window->commands().action(QStringLiteral("viewer.trimHandles"))->isChecked());
}

TEST_F(ViewerRangeTest, BarLiesWhereItsFramesDo) {
    openFrames(100);
    preferences.handleHead.set(8);
    preferences.handleTail.set(8);
    key(Qt::Key_R);
    ASSERT_TRUE(bar()->isVisible());
    const auto width = float(bar()->width());
    EXPECT_EQ(bar()->rangeBarGeometry(), QRect(int(8 * (width / 99)), 0, int(83 * (width / 99)), 4));
    const QImage drawn = bar()->grab().toImage();
    EXPECT_NE(drawn.pixelColor(drawn.width() / 2, 2), drawn.pixelColor(2, 2));
    window->resize(window->width() + 200, window->height());
    ASSERT_TRUE(bench::waitUntil([&] { return float(bar()->width()) > width; }));
    EXPECT_EQ(bar()->rangeBarGeometry().right(),
              int(8 * (float(bar()->width()) / 99)) + int(83 * (float(bar()->width()) / 99)) - 1);
}

TEST_F(ViewerRangeTest, TheOneFrameOfAStillIsItsWholeRange) {
    openFrames(1);
    preferences.handleHead.set(0);
    preferences.handleTail.set(0);
    key(Qt::Key_R);
    EXPECT_TRUE(bar()->isVisible());
    EXPECT_EQ(bar()->rangeBarGeometry(), bar()->rect());
}

TEST_F(ViewerRangeTest, PlaybackComesBackIntoTheRangeWithinASecondOrSo) {
    openFrames(100);
    ASSERT_TRUE(bench::waitUntil([this] { return first->mMovieHasBeenVisited; }));
    key(Qt::Key_R);
    goTo(95);
    key(Qt::Key_Space); // the clock stands; the look once a second goes on
    ASSERT_TRUE(bench::waitUntil([this] { return player.currentFrame() == 10; }));
    key(Qt::Key_K);
    EXPECT_SHOWN(10);
}

TEST_F(ViewerRangeTest, CounterSetToOneShowsOnStripAndPicture) {
    openFrames(100);
    goByHand(33);
    window->commands().action(QStringLiteral("viewer.counterToOne"))->trigger();
    EXPECT_EQ(text("counter"), QStringLiteral("0001 / 0068"));
    EXPECT_EQ(window->picture()->scene().readOuts.counter, QStringLiteral("0001"));
    key(Qt::Key_Right);
    EXPECT_EQ(text("counter"), QStringLiteral("0002 / 0068"));
    EXPECT_EQ(pictureOnScreen(), 34);
}

TEST_F(ViewerRangeTest, TextsAndSliderFollowEveryPicture) {
    QTemporaryDir folder;
    MovieSpec spec;
    spec.path = folder.filePath(QStringLiteral("coded.mov"));
    spec.frames = 72;
    spec.timecode = QStringLiteral("09:59:59:12");
    ASSERT_TRUE(makeMovie(spec));
    first = record(spec.path);
    show({first});
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    ASSERT_TRUE(bench::waitUntil([this] { return text("timecode") == QStringLiteral("TC 09:59:59:12"); }));
    for (int frame = 2; frame <= 72; ++frame) {
        key(Qt::Key_Right);
        ASSERT_EQ(pictureOnScreen(), frame);
        const int count = 59 * 24 + 12 + frame - 1; // from 09:59:00:00
        const QString expected = QString::asprintf("TC %02d:%02d:%02d:%02d", count < 1440 ? 9 : 10,
                                                   count < 1440 ? 59 : 0, count / 24 % 60, count % 24);
        ASSERT_EQ(text("timecode"), expected);
        ASSERT_EQ(counterOnStrip(), frame);
        ASSERT_EQ(text("elapsed"), QString::asprintf("00:%02d", (frame - 1) / 24));
        ASSERT_EQ(window->slider()->value(), frame);
    }
}

} // namespace daylark
