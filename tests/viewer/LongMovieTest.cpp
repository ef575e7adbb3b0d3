#include "picture/PictureRenderer.h"
#include "support/LongMovie.h"
#include "viewer/ViewerFixture.h"

#include <QTemporaryDir>

#include <array>
#include <random>

namespace daylark {
namespace {

using test::LongMovie;

struct LongRate {
    quint32 num, den, counted; ///< frames a second, and as timecode counts them
};

/// Two hours of tiny pictures at a fractional rate. With DAYLARK_EVERY_FRAME set, every single frame.
class LongMovieTest : public ViewerFixture, public ::testing::WithParamInterface<LongRate> {
protected:
    static constexpr int hours = 2;

    void showTwoHours() {
        const LongMovie movie{qint64(hours) * 3600 * GetParam().num / GetParam().den, GetParam().num,
                              GetParam().den};
        frames = movie.frames;
        const QString path = folder.filePath(QStringLiteral("long.mov"));
        ASSERT_TRUE(movie.write(path));
        QObject::connect(&player, &Player::frameShown, &player,
                         [this](const VideoFrame& picture, qint64 number) {
                             if (readBarCode(renderFrame(picture)) != LongMovie::codeOf(number))
                                 ++wrongPictures;
                         });
        show({record(path)});
        ASSERT_TRUE(bench::waitUntil([this] { return controller.currentMovie()->mMovieHasBeenVisited; }));
        ASSERT_EQ(player.index().count(), frames);
        EXPECT_EQ(controller.currentMovie()->mMovieDurationFrames, frames);
    }
    /// The picture on screen, the number and every text say that this is the frame.
    [[nodiscard]] bool stands(qint64 frame) {
        if (bench::settledPicture(player) != LongMovie::codeOf(frame)) return false;
        const auto rate = qint64(GetParam().counted);
        const qint64 count = frame - 1, seconds = count / rate;
        const QString timecode =
            QString::asprintf("%02d:%02d:%02d:%02d", int(seconds / 3600), int(seconds / 60 % 60),
                              int(seconds % 60), int(count % rate));
        const QString elapsed =
            seconds >= 3600 ? QString::number(seconds / 3600) + timecode.mid(2, 6) : timecode.mid(3, 5);
        return time.currentFrameNumber() == frame && time.stripFrameNumber().toLongLong() == frame &&
               time.stripTimecode() == timecode && time.currentTimeForDisplay() == elapsed;
    }
    /// Every way that a hand has to get to a frame.
    void goBySeveralWays(qint64 frame) {
        goTo(frame);
        EXPECT_TRUE(stands(frame)) << "by time, " << frame;
        const double ticks = time.sliderTime();
        goTo(frame > frames / 2 ? 1 : frames);
        transport.setSliderTime(ticks);
        EXPECT_TRUE(stands(frame)) << "by the slider, " << frame;
        transport.goToFrame(frame > frames / 2 ? 1 : frames, 0.5);
        bookmarks.goToFrame(frame);
        EXPECT_TRUE(stands(frame)) << "by a bookmark, " << frame;
    }
    void stepForwards(qint64 from, qint64 to) {
        goTo(from);
        EXPECT_TRUE(stands(from));
        for (qint64 frame = from + 1; frame <= to && !HasFailure(); ++frame) {
            transport.jumpToNextFrame();
            EXPECT_TRUE(stands(frame)) << "by steps, " << frame;
        }
    }

    QTemporaryDir folder;
    qint64 frames = 0;
    int wrongPictures = 0;
};

TEST_P(LongMovieTest, NumberPictureAndTextsAgreeAtEveryFrame) {
    showTwoHours();
    if (qEnvironmentVariableIsSet("DAYLARK_EVERY_FRAME")) {
        stepForwards(1, frames);
    } else {
        constexpr qint64 near = 40;
        for (const qint64 from : {qint64(1), frames / 2, LongMovie::codes - near / 2, frames - near})
            stepForwards(from, from + near);
        std::mt19937_64 random(5994);
        for (int turn = 0; turn < 60; ++turn)
            goBySeveralWays(std::uniform_int_distribution<qint64>(1, frames)(random));
    }
    for (const qint64 edge : {qint64(1), qint64(2), frames - 1, frames})
        goBySeveralWays(edge);
    EXPECT_EQ(wrongPictures, 0) << "pictures shown under another number, on the way included";
}

INSTANTIATE_TEST_SUITE_P(FractionalRates, LongMovieTest,
                         ::testing::Values(LongRate{24000, 1001, 24}, LongRate{30000, 1001, 30},
                                           LongRate{60000, 1001, 60}),
                         [](const auto& rate) { return "Rate" + std::to_string(rate.param.num); });

} // namespace
} // namespace daylark
