#include "picture/PictureRenderer.h"
#include "playback/run/Player.h"

#include "support/PlayerBench.h"
#include "support/TruthTable.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace daylark {
namespace {

using truth::Expectation;
using truth::Tally;

/// Every clip of the truth table in the player itself, its clock turned by hand. Every picture that is shown
/// is looked at, on the way as well.
class PlaybackTruthTest : public ::testing::TestWithParam<truth::Clip> {
protected:
    void SetUp() override {
        QString path;
        Result<Expectation> made = GetParam().makeIn(folder_.path(), path);
        ASSERT_TRUE(made) << made.error().text.toStdString();
        expected_ = std::move(*made);
        // Some clips have to do with a cache of a few pictures only.
        const bool small = std::hash<std::string>()(GetParam().name) % 3 == 0;
        player_ = std::make_unique<Player>(clock_, nullptr, small ? 1'500'000 : 0);
        QObject::connect(player_.get(), &Player::frameShown, player_.get(),
                         [this](const VideoFrame& frame, qint64 number) { look(number - 1, frame); });
        QSignalSpy opened(player_.get(), &Player::opened), failed(player_.get(), &Player::openFailed);
        QObject::connect(player_.get(), &Player::opened, player_.get(),
                         [this] { count_ = player_->index().count(); });
        player_->open(path);
        ASSERT_TRUE(bench::waitUntil([&] { return opened.count() + failed.count() == 1; }))
            << "opened " << opened.count() << " times, failed " << failed.count() << " times\n" << bench::whereThreadsStand();
        ASSERT_EQ(opened.count(), 1) << failed.value(0).value(0).toString().toStdString();
        tally_.setFrames(count_);
        ASSERT_LE(count_, expected_.count());
        ASSERT_GE(count_, std::max<qint64>(1, expected_.count() - expected_.mayLack));
    }
    void TearDown() override {
        player_.reset();
        truth::report("player", tally_);
    }

    /// A picture that has been read once is known again by its address, as long as it is kept.
    void look(qint64 n, const VideoFrame& frame) {
        int& drawn = read_.try_emplace(frame.data(), std::pair{frame, -2}).first->second.second;
        if (drawn == -2)
            drawn = readBarCode(renderFrame(frame, QSize(192, 96))).value_or(-1);
        const int wanted =
            n >= count_ - expected_.looseEnd ? Expectation::any : expected_.pictures[size_t(n)];
        tally_.look(n, wanted, !frame.isNull(), drawn < 0 ? std::nullopt : std::optional(drawn), manner_);
        constexpr size_t most = 400;
        if (read_.size() > most) read_.clear();
    }
    /// The player must stand on frame n, and its picture must come.
    void settleOn(qint64 n) {
        constexpr int patience = 3;
        if (hung_ == patience) return;
        if (player_->currentFrame() != n + 1)
            tally_.fail(QStringLiteral("%1: stands on %2, not on %3")
                            .arg(QString::fromLatin1(manner_))
                            .arg(player_->currentFrame() - 1)
                            .arg(n));
        else if (!bench::waitUntil([&] { return player_->pictureIsCurrent(); }, 10000) && ++hung_)
            tally_.fail(QStringLiteral("%1: no picture for %2").arg(QString::fromLatin1(manner_)).arg(n));
        else
            look(n, player_->shownFrame());
    }
    void goTo(qint64 n) {
        player_->setCurrentTime({expected_.starts[size_t(n)], expected_.scale});
        settleOn(n);
    }
    void slideTo(qint64 ticks);
    void slide();
    void step();
    void run(float rate, qint64 from);
    /// Turns the clock by the length of a frame, and no more than that.
    void turn(qint64 n) {
        const bool last = n == count_ - 1;
        const SampleIndex& index = player_->index(); // where the file ends is its own to say
        const qint64 length = last ? index.endTicks - index.timeOf(n).value
                                   : expected_.starts[size_t(n) + 1] - expected_.starts[size_t(n)];
        clock_.now += length * 1'000'000'000 / (last ? index.timeScale : expected_.scale) + 1;
        player_->tick();
    }

    QTemporaryDir folder_;
    Expectation expected_;
    bench::HandClock clock_;
    std::unique_ptr<Player> player_;
    qint64 count_ = 0;
    int hung_ = 0; ///< pictures that never came
    std::map<const VideoFrame::Data*, std::pair<VideoFrame, int>> read_;
    const char* manner_ = "opening";
    Tally tally_{GetParam().name, GetParam().spec.encoder.toStdString(), GetParam().spec.path.toStdString()};
};

void PlaybackTruthTest::slideTo(qint64 ticks) {
    const SampleIndex& index = player_->index();
    ticks = std::clamp<qint64>(ticks, 0, index.endTicks);
    player_->setCurrentTime({ticks, index.timeScale});
    settleOn(std::min(expected_.frameAt(ticks, index.timeScale), count_ - 1));
}

/// A slider gives times on the player's clock: every frame's own, one tick before and one after, and
/// anywhere.
void PlaybackTruthTest::slide() {
    manner_ = "slider";
    const SampleIndex& index = player_->index();
    for (qint64 n = 0; n < count_; ++n) {
        const qint64 start = expected_.starts[size_t(n)] * index.timeScale / expected_.scale;
        for (const qint64 by : {-1, 0, 1})
            slideTo(start + by);
    }
    std::mt19937 random(3);
    for (int time = 0; time < 40; ++time)
        slideTo(qint64(random() % quint64(index.endTicks + 1)));
}

void PlaybackTruthTest::step() {
    manner_ = "step forwards";
    goTo(0);
    for (qint64 n = 1; n <= count_; ++n) {
        player_->stepForward();
        settleOn(std::min(n, count_ - 1));
    }
    manner_ = "step backwards";
    for (qint64 n = count_ - 2; n >= -1; --n) {
        player_->stepBackward();
        settleOn(std::max<qint64>(n, 0));
    }
}

/// The whole movie and some frames beyond the end, where it goes on from the other one.
void PlaybackTruthTest::run(float rate, qint64 from) {
    manner_ = rate > 0 ? "play forwards" : "play backwards";
    goTo(from);
    player_->setRate(rate);
    if (!bench::waitUntil([&] { return player_->isRolling(); }, 10000))
        return tally_.fail(QStringLiteral("%1: never starts").arg(QString::fromLatin1(manner_)));
    const qint64 by = rate > 0 ? 1 : -1, beyond = std::min<qint64>(8, count_ / 2);
    qint64 n = from;
    for (qint64 turns = 0; turns < count_ + beyond; ++turns) {
        turn(n);
        n = (n + by + count_) % count_;
        settleOn(n);
    }
    player_->setRate(0);
}

TEST_P(PlaybackTruthTest, EveryPictureIsItsOwnOnTheSliderInStepsAndInPlay) {
    settleOn(0);
    slide();
    step();
    player_->setLoops(true);
    run(1, 0);
    run(-1, count_ - 1);
    EXPECT_EQ(tally_.wrong(), 0) << tally_.firstWrong();
}

INSTANTIATE_TEST_SUITE_P(Table, PlaybackTruthTest, ::testing::ValuesIn(truth::clips()),
                         [](const auto& tested) { return tested.param.name; });

} // namespace
} // namespace daylark
