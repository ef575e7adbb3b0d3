#include "playback/read/Neighbours.h"

#include "support/PlayerBench.h"

#include <QFile>

#include <gtest/gtest.h>

namespace daylark {
namespace {

using bench::waitUntil;

class NeighboursTest : public ::testing::Test {
protected:
    static constexpr qint64 pictureBytes = 256 * 144 * 3 / 2;

    void SetUp() override { neighbours.setBudget(1000 * pictureBytes); }
    /// Notes when it is asked where it starts: it is open then, and its next picture is being read.
    NeighbourMovie from(const QString& path, qint64 frame) {
        return {path, [this, frame](const SampleIndex&) {
                    lastStart = frame;
                    return frame;
                }};
    }
    [[nodiscard]] bool holds(qint64 pictures) {
        return waitUntil([&] { return held >= pictures * pictureBytes; });
    }

    const QString one = bench::movie({.frames = 30, .group = 12, .bFrames = 2});
    const QString other = bench::movie({.frames = 12, .group = 5});
    CancelFlag never = false;
    std::atomic<qint64> lastStart = 0;
    std::atomic<qint64> held = 0;
    Neighbours neighbours{[this](qint64 bytes) { held += bytes; }};
};

TEST_F(NeighboursTest, TheStartOfEachIsReadyAndHandedOverOnce) {
    neighbours.want({from(one, 20), from(other, 12)});
    ASSERT_TRUE(waitUntil([&] { return lastStart == 12; })) << "the first is done";
    const auto movie = neighbours.take(one, never);
    ASSERT_TRUE(movie);
    EXPECT_EQ(movie->index->count(), 30);
    ASSERT_EQ(movie->pictures.size(), 4u);
    for (qint64 frame = 19; frame < 23; ++frame)
        EXPECT_EQ(readBarCode(renderFrame(movie->pictures.at(frame))), frame + 1);
    EXPECT_EQ(neighbours.take(one, never), nullptr);
    EXPECT_TRUE(neighbours.take(other, never));
    EXPECT_EQ(held, 0) << "whoever takes them counts them now";
}

TEST_F(NeighboursTest, OtherWishesLetGoWhatIsNotWantedAndMoveTheStart) {
    neighbours.want({from(one, 1), from(other, 1)});
    ASSERT_TRUE(holds(8));
    neighbours.want({from(one, 9)});
    ASSERT_TRUE(waitUntil([&] { return lastStart == 9; }));
    const auto movie = neighbours.take(one, never);
    ASSERT_TRUE(movie);
    ASSERT_EQ(movie->pictures.count(8), 1u);
    EXPECT_EQ(movie->pictures.count(0), 0u);
    EXPECT_EQ(neighbours.take(other, never), nullptr);
    EXPECT_EQ(held, 0);
}

TEST_F(NeighboursTest, NothingIsDoneWhileTheCurrentMovieIsDecoded) {
    neighbours.setResting(false);
    neighbours.want({from(one, 1)});
    EXPECT_EQ(neighbours.take(one, never), nullptr);
    neighbours.want({from(one, 1)});
    neighbours.setResting(true);
    EXPECT_TRUE(holds(1));
}

TEST_F(NeighboursTest, PicturesTakeAQuarterOfTheBudgetAtMost) {
    neighbours.setBudget(1);
    neighbours.want({from(one, 1), from(QStringLiteral("/nowhere/at/all.mov"), 1), from(other, 2)});
    ASSERT_TRUE(waitUntil([&] { return lastStart == 2; }))
        << "opened all the same, behind one that cannot be";
    const auto movie = neighbours.take(other, never);
    ASSERT_TRUE(movie);
    EXPECT_TRUE(movie->pictures.empty());
    neighbours.want({});
    EXPECT_TRUE(waitUntil([&] { return held == 0; })) << "decoders hold something all the same, until then";
}

TEST_F(NeighboursTest, AFileWhoseSizeOrTimeChangedSinceIsNotHandedOver) {
    QTemporaryDir folder;
    const auto taken = [&](const char* name, bool grows, bool ages) {
        const QString path = folder.filePath(QLatin1String(name));
        EXPECT_TRUE(QFile::copy(other, path));
        const QDateTime time = QFileInfo(path).lastModified();
        lastStart = 0;
        neighbours.want({from(path, 1)});
        EXPECT_TRUE(waitUntil([&] { return lastStart == 1; }));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::Append));
        if (grows) file.write("more");
        file.flush();
        file.setFileTime(ages ? time.addSecs(-60) : time, QFileDevice::FileModificationTime);
        file.close();
        const bool handedOver = neighbours.take(path, never) != nullptr;
        EXPECT_EQ(held, 0);
        return handedOver;
    };
    EXPECT_TRUE(taken("untouched.mov", false, false));
    EXPECT_FALSE(taken("grown.mov", true, false));
    EXPECT_FALSE(taken("rendered again.mov", false, true));
}

} // namespace
} // namespace daylark
