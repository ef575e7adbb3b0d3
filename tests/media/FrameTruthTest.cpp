#include "media/decode/FrameReader.h"

#include "support/MovieMaker.h"
#include "picture/PictureRenderer.h"
#include "support/RandomClips.h"
#include "support/TruthReading.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>

namespace daylark {
namespace {

using truth::Expectation;
using truth::Tally;

/// Reads the bar code off a small rendering; turned and stretched pictures are upright and whole by then.
std::optional<int> numberIn(const VideoFrame& frame) {
    return readBarCode(renderFrame(frame, QSize(192, 96)));
}

class FrameTruthTest : public ::testing::TestWithParam<truth::Clip> {
protected:
    void SetUp() override {
        QString path;
        Result<Expectation> made = GetParam().makeIn(folder_.path(), path);
        ASSERT_TRUE(made) << made.error().text.toStdString();
        expected_ = std::move(*made);
        path_ = path;
    }
    void TearDown() override { truth::report("reader", tally_); }

    void open() {
        auto reader = FrameReader::open(path_);
        ASSERT_TRUE(reader) << reader.error().text.toStdString();
        reader_ = std::move(*reader);
    }
    [[nodiscard]] qint64 count() const { return reader_->index().count(); }
    [[nodiscard]] int expectedAt(qint64 n) const {
        return n >= count() - expected_.looseEnd ? Expectation::any : expected_.pictures[size_t(n)];
    }
    void look(qint64 n, const Result<VideoFrame>& frame, const char* manner) {
        const bool there = frame && !frame->isNull();
        tally_.look(n, expectedAt(n), there, there ? numberIn(*frame) : std::nullopt, manner);
    }
    void expectTimes();
    void jump(std::mt19937& random, qint64& at);

    QTemporaryDir folder_;
    QString path_;
    Expectation expected_;
    std::unique_ptr<FrameReader> reader_;
    Tally tally_{GetParam().name};
};

void FrameTruthTest::expectTimes() {
    const SampleIndex& index = reader_->index();
    const auto same = [&](qint64 ticks, qint64 start) {
        return ticks * expected_.scale == start * index.timeScale;
    };
    qint64 unlike = -1;
    for (qint64 n = 0; n < count() - expected_.looseEnd && unlike < 0; ++n)
        if (!same(index.samples[size_t(n)].ticks, expected_.starts[size_t(n)])) unlike = n;
    if (unlike >= 0)
        tally_.fail(QStringLiteral("frame %1 begins at %2 of %3 a second")
                        .arg(unlike)
                        .arg(index.samples[size_t(unlike)].ticks)
                        .arg(index.timeScale));
    if (expected_.end > 0 && count() == expected_.count() && !same(index.endTicks, expected_.end))
        tally_.fail(QStringLiteral("ends at %1 of %2 a second").arg(index.endTicks).arg(index.timeScale));
}

/// Far, or a few frames on or back, or with all pictures on the way: what is left over from one read must
/// not spoil the next.
void FrameTruthTest::jump(std::mt19937& random, qint64& at) {
    const unsigned kind = random() % 10;
    const qint64 by = 1 + random() % 5;
    at = kind < 6 ? qint64(random() % quint64(count())) : kind < 8 ? at + by : at - by;
    at = std::clamp<qint64>(at, 0, count() - 1);
    if (random() % 4) return look(at, reader_->read(at), "jump");
    const auto passed = [&](qint64 n, const VideoFrame& frame) { look(n, frame, "on the way"); };
    look(at, reader_->readThrough(at, passed), "jump with pictures on the way");
}

TEST_P(FrameTruthTest, EveryPictureIsItsOwnForwardsBackwardsAndInJumps) {
    open();
    if (!reader_) return;
    tally_.setFrames(count());
    ASSERT_LE(count(), expected_.count());
    ASSERT_GE(count(), expected_.count() - expected_.mayLack);
    expectTimes();
    for (qint64 n = 0; n < count(); ++n)
        look(n, reader_->read(n), "forwards");
    open();
    for (qint64 n = count() - 1; n >= 0; --n)
        look(n, reader_->read(n), "backwards");
    open();
    std::mt19937 random(7);
    qint64 at = 0;
    for (int time = 0; time < 200; ++time)
        jump(random, at);
    EXPECT_FALSE(reader_->read(count()));
    EXPECT_EQ(tally_.wrong(), 0) << tally_.firstWrong();
}

/// Whatever a read was doing when it was given up, the next ones show their own pictures.
TEST(FrameReaderTest, ReadsGivenUpAtAnyMomentLeaveLaterOnesExact) {
    const QTemporaryDir folder;
    const auto shown = [](FrameReader& reader, qint64 n) {
        const Result<VideoFrame> frame = reader.read(n);
        return frame ? numberIn(*frame).value_or(-1) : -2;
    };
    for (const char* extension : {"mov", "mkv", "ts"}) {
        MovieSpec spec;
        spec.path = folder.filePath(QStringLiteral("movie.") + QLatin1String(extension));
        spec.size = QSize(256, 144);
        spec.frames = 120;
        spec.groupSize = 40;
        ASSERT_TRUE(makeMovie(spec));
        const auto reader = FrameReader::open(spec.path);
        ASSERT_TRUE(reader);
        std::mt19937 random(11);
        int givenUp = 0;
        for (int round = 0; round < 60; ++round) {
            CancelFlag cancel = false;
            const auto pause = std::chrono::microseconds(random() % 6000);
            std::thread hand([&] {
                std::this_thread::sleep_for(pause);
                cancel = true;
            });
            const qint64 n = random() % quint64(spec.frames - 1);
            givenUp += !(*reader)->read(n, &cancel);
            hand.join();
            const qint64 next = round % 2 ? qint64(random() % quint64(spec.frames)) : n + 1;
            ASSERT_EQ(shown(**reader, next), next + 1) << extension << " round " << round;
            ASSERT_EQ(shown(**reader, n), n + 1) << extension << " round " << round;
        }
        EXPECT_GT(givenUp, 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Table, FrameTruthTest, ::testing::ValuesIn(truth::clips()),
                         [](const auto& tested) { return tested.param.name; });

} // namespace
} // namespace daylark
