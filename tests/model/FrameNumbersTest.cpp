#include "model/runs/FrameNumbers.h"

#include "model/Movie.h"

#include <gtest/gtest.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

TEST(FrameNumbersTest, TheHandComesBeforeThePicturesAndThesePreferAnythingUsual) {
    Movie movie(u"/shots/a.mov"_s);
    EXPECT_FALSE(frameNumbersOf(movie, 1).areOwn());
    EXPECT_EQ(frameNumbersOf(movie, 1001).numberOf(1), 1001);
    movie.frameRun = MovieRun{{u"a."_s, u".exr"_s, 4, false, 990, 1010, 2}, {}, false, {}};
    FrameNumbers numbers = frameNumbersOf(movie, 1001);
    EXPECT_EQ(numbers.numberOf(1), 990);
    EXPECT_EQ(numbers.numberOf(11), 1010);
    EXPECT_EQ(numbers.frameOf(1010), 11);
    EXPECT_FALSE(numbers.frameOf(1009)); // every second one
    movie.firstFrameNumber = Number(qint64(1));
    numbers = frameNumbersOf(movie, 1001);
    EXPECT_EQ(numbers.numberOf(3), 5);
    movie.frameRun.reset();
    EXPECT_FALSE(frameNumbersOf(movie, 1001).areOwn()); // by hand as the program counts
    movie.firstFrameNumber = Number(1e300); // a stranger's
    EXPECT_EQ(frameNumbersOf(movie, 1).numberOf(2), 1);
}

TEST(FrameNumbersTest, WhereNobodyGaveOneTheTimecodeTellsItIfThatIsWanted) {
    Movie movie(u"/shots/a.mov"_s);
    movie.mMovieFPS = 25;
    SmpteTime start;
    start.hours = 10, start.frames = 3;
    EXPECT_TRUE(isNumberedByTimecode(movie, {}));
    EXPECT_EQ(frameNumbersOf(movie, {}, start).numberOf(2), 10 * 3600 * 25 + 4);
    EXPECT_EQ(frameNumbersOf(movie, {}, start, 24).numberOf(2), 10 * 3600 * 24 + 4) << "at the rate that is known better";
    EXPECT_FALSE(frameNumbersOf(movie, {}).areOwn()) << "no timecode";
    EXPECT_EQ(frameNumbersOf(movie, -5, start).first, -5);
    EXPECT_FALSE(isNumberedByTimecode(movie, 1));
    movie.firstFrameNumber = Number(qint64(7));
    EXPECT_FALSE(isNumberedByTimecode(movie, {}));
    EXPECT_EQ(frameNumbersOf(movie, {}, start).first, 7);
    movie.mMovieFPS = 0; // nobody knows its rate
    EXPECT_EQ(numbersByTimecode(start, 0).first, 1);
}

TEST(FrameNumbersTest, FilesMadeOfARunAreCalledWithoutItsNumbers) {
    const auto title = [](const QString& prefix, const QString& suffix) {
        return FrameRun{prefix, suffix, 4, false, 1001, 1100, 1}.title();
    };
    EXPECT_EQ(title(u"sh010."_s, u".exr"_s), u"sh010"_s);
    EXPECT_EQ(title(u"sh010_comp_v002_"_s, u".dpx"_s), u"sh010_comp_v002"_s);
    EXPECT_EQ(title({}, u".exr"_s), u"1001"_s);
    EXPECT_EQ(title(u"._"_s, {}), u"._1001"_s);
    Movie movie(u"/shots/clip.v2.mov"_s);
    EXPECT_EQ(movie.fileTitle(), u"clip.v2"_s);
}

TEST(FrameNumbersTest, APlaceIsANumberATimecodeOrSoManyFramesOn) {
    FrameEntry entry;
    entry.current = 40, entry.count = 100, entry.fps = 23.976F;
    const auto frame = [&entry](const char* text) { return entry.frameOf(QString::fromLatin1(text)).value_or(-1); };
    EXPECT_EQ(frame("12"), 12);
    EXPECT_EQ(frame(" #12 "), 12);
    EXPECT_EQ(frame("+8"), 48);
    EXPECT_EQ(frame("-39"), 1);
    EXPECT_EQ(frame("+1:00"), 64);
    EXPECT_EQ(frame("-1:00"), 16);
    EXPECT_EQ(frame("00:00:01:05"), 30);
    EXPECT_EQ(frame("2:00"), 49);
    EXPECT_EQ(frame("2;00"), 49);
    for (const char* nowhere : {"", "0", "101", "-40", "+61", "1:24", "1:60:00", "1:2:3:4:5", "twelve", "+", "#", "+-3", "--3",
                                "9999999999999999999999", "00:00:04:04", "1::2"})
        EXPECT_EQ(frame(nowhere), -1) << nowhere;

    entry.numbers.first = 1001;
    EXPECT_EQ(frame("1012"), 12);
    EXPECT_EQ(frame("#12"), 12);
    EXPECT_EQ(frame("12"), -1); // no frame that the production calls so
    EXPECT_EQ(frame("+8"), 48);
    entry.numbers.first = -10;
    EXPECT_EQ(frame("-9"), 2);
    EXPECT_EQ(frame("+8"), 48);
    entry.numbers = {};

    entry.start = SmpteTime();
    entry.start->hours = 23, entry.start->minutes = 59, entry.start->seconds = 59;
    EXPECT_EQ(frame("23:59:59:03"), 4);
    EXPECT_EQ(frame("00:00:00:02"), 27); // over midnight
    EXPECT_EQ(frame("01:00:00:00"), -1);
    entry.fps = 0; // not known
    EXPECT_EQ(frame("23:59:59:03"), -1);
    EXPECT_EQ(frame("7"), 7);
    // What is shown is what can be typed, in runs of every second or third number as well.
    for (const float fps : {24.0F, 25.0F, 29.97F, 59.94F})
        for (entry.timecodeStep = 1; entry.timecodeStep <= 3; ++entry.timecodeStep) {
            entry.fps = fps;
            for (qint64 n = 1; n <= 100; ++n)
                EXPECT_EQ(entry.frameOf(timecodeText(n, fps, entry.start, entry.timecodeStep)), n) << fps << ' ' << n;
        }
    entry.fps = 24, entry.timecodeStep = 2;
    EXPECT_EQ(frame("23:59:59:03"), -1) << "between two pictures";
    EXPECT_EQ(frame("+1:00"), 52);
    entry.start.reset(); // counted from zero, picture by picture
    EXPECT_EQ(frame("00:00:00:03"), 4);
}

} // namespace
} // namespace daylark
