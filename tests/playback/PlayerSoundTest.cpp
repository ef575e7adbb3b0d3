#include "playback/sound/SoundOutput.h"
#include "playback/sound/SoundReadAhead.h"

#include "support/PlayerBench.h"
#include "support/WaveFile.h"

#include <QDataStream>
#include <QFile>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <random>
#include <thread>

namespace daylark {
namespace {

using bench::settledPicture;
using bench::waitUntil;

/// An output whose position a test sets by hand.
class HandSound : public SoundOutput {
public:
    void setMovie(const QString& path, std::shared_ptr<const SampleIndex> pictures,
                  const MovieSound& sound) override {
        movie = pictures ? path : QString();
        kind = sound.kind;
        playing.reset();
        heard.reset();
    }
    void play(double seconds, float atRate, Start start) override {
        playing = seconds;
        heard = available && start == Start::waits ? playing : std::nullopt;
        rate = atRate;
        ++starts;
    }
    void setRate(float value) override { rate = value; }
    void stop() override { playing.reset(); }
    void fade() override {
        playing.reset();
        ++fades;
    }
    void setLap(const SoundLap& value) override { lap = value; }
    void setVolume(float value) override { volume = value; }
    std::optional<double> position() const override { return heard; }

    QString movie;
    MovieSound::Kind kind = MovieSound::Kind::none;
    std::optional<double> playing, heard;
    float volume = -1, rate = 0;
    int starts = 0, fades = 0;
    bool available = true;
    SoundLap lap;
};

class PlayerSoundTest : public ::testing::Test {
protected:
    void SetUp() override {
        QSignalSpy opened(&player, &Player::opened);
        path = bench::movie({.frames = 48, .group = 12});
        player.open(path);
        ASSERT_TRUE(waitUntil([&] { return opened.count() == 1; }));
        ASSERT_EQ(settledPicture(player), 1);
    }
    void start(float rate) {
        player.setRate(rate);
        ASSERT_TRUE(waitUntil([&] { return player.isRolling(); }));
    }
    void turn(double frames) {
        clock.now += qint64(frames * 1e9 / 24) + 1;
        player.tick();
    }
    void hear(double frames) {
        sound.heard = frames / 24 + 1e-6;
        player.tick();
    }

    QString path;
    bench::HandClock clock;
    HandSound sound;
    Player player{clock, nullptr, 0, &sound};
};

TEST_F(PlayerSoundTest, SoundThatIsHeardIsTheClock) {
    EXPECT_EQ(sound.movie, path);
    start(1);
    EXPECT_EQ(sound.playing, 0.0);
    turn(10);
    EXPECT_EQ(player.currentFrame(), 1) << "the sound has not begun";
    hear(5);
    EXPECT_EQ(player.currentFrame(), 6);
    hear(3);
    EXPECT_EQ(player.currentFrame(), 6) << "never back";
    hear(7);
    EXPECT_EQ(player.currentFrame(), 8);
    sound.heard.reset(); // the device is gone
    player.tick();
    turn(4);
    EXPECT_EQ(player.currentFrame(), 12) << "the clock goes on from where the sound fell silent";
    QSignalSpy ended(&player, &Player::didEnd);
    hear(48);
    EXPECT_EQ(ended.count(), 1);
    EXPECT_FALSE(sound.playing);
}

TEST_F(PlayerSoundTest, WithoutADeviceTheClockRuns) {
    sound.available = false;
    start(1);
    for (int n = 2; n <= 20; ++n) {
        turn(1);
        ASSERT_EQ(player.currentFrame(), n);
    }
}

TEST_F(PlayerSoundTest, OnlyForwardsUpToTwiceTheNaturalRateIsHeard) {
    for (const float rate : {2.1f, 8.0f, -0.5f, -1.0f}) {
        player.setCurrentTime(player.index().timeOf(24));
        start(rate);
        EXPECT_FALSE(sound.playing);
        turn(4);
        EXPECT_NE(player.currentFrame(), 25) << "the clock moves it";
        player.setRate(0);
    }
    for (const float rate : {0.25f, 1.0f, 2.0f}) {
        player.setCurrentTime(player.index().timeOf(24));
        start(rate);
        EXPECT_EQ(sound.playing, 1.0);
        EXPECT_EQ(sound.rate, rate);
        hear(30);
        EXPECT_EQ(player.currentFrame(), 31) << "the sound moves it";
        player.setRate(0);
        EXPECT_FALSE(sound.playing);
    }
}

TEST_F(PlayerSoundTest, ChangesOfRateKeepTheRunOfSoundOrJoinTheOneOfPictures) {
    player.setCurrentTime(player.index().timeOf(12));
    start(3);
    turn(1);
    EXPECT_EQ(player.currentFrame(), 16);
    player.setRate(1);
    ASSERT_TRUE(sound.playing);
    EXPECT_NEAR(*sound.playing, 15.0 / 24, 1e-6);
    turn(3);
    EXPECT_EQ(player.currentFrame(), 19) << "the picture does not wait for what comes in later";
    hear(17.5);
    EXPECT_EQ(player.currentFrame(), 19) << "nor turns back";
    hear(20);
    EXPECT_EQ(player.currentFrame(), 21);
    player.setRate(2);
    EXPECT_EQ(sound.rate, 2.0f);
    EXPECT_EQ(sound.starts, 1);
    turn(4);
    EXPECT_EQ(player.currentFrame(), 21) << "what is heard stays the clock";
    hear(25);
    player.setRate(4);
    EXPECT_EQ(sound.fades, 1);
    EXPECT_FALSE(sound.playing);
    turn(1);
    EXPECT_EQ(player.currentFrame(), 30);
}

TEST_F(PlayerSoundTest, PauseSeekAndCloseBeginTheSoundAnewAndALoopDoesNot) {
    start(1);
    hear(9.5);
    player.setRate(0);
    EXPECT_FALSE(sound.playing);
    EXPECT_EQ(player.currentFrame(), 10);
    start(1);
    EXPECT_NEAR(*sound.playing, 9.0 / 24, 1e-6) << "from the frame's beginning";
    player.setCurrentTime(player.index().timeOf(30));
    ASSERT_TRUE(waitUntil([&] { return player.isRolling(); }));
    EXPECT_NEAR(*sound.playing, 30.0 / 24, 1e-6);
    player.setLoops(true);
    EXPECT_EQ(sound.lap, (SoundLap{0, 2}));
    hear(48.5);
    EXPECT_EQ(player.currentFrame(), 1);
    hear(53);
    EXPECT_EQ(player.currentFrame(), 6) << "the sound counts on beyond the end";
    hear(96 + 7);
    EXPECT_EQ(player.currentFrame(), 8);
    EXPECT_EQ(sound.starts, 3);
    player.setVolume(0.25f);
    EXPECT_EQ(sound.volume, 0.25f);
    player.close();
    EXPECT_TRUE(sound.movie.isNull());
}

TEST_F(PlayerSoundTest, TheSoundOfARangeTurnsWithIt) {
    player.setRange(11, 15);
    player.setCurrentTime(player.index().timeOf(10));
    start(1);
    EXPECT_EQ(sound.lap, (SoundLap{10 / 24.0, 15 / 24.0}));
    hear(14.5);
    EXPECT_EQ(player.currentFrame(), 15);
    hear(15.5);
    EXPECT_EQ(player.currentFrame(), 11);
    hear(10 + 3 * 5 + 2.5);
    EXPECT_EQ(player.currentFrame(), 13);
    EXPECT_EQ(sound.starts, 1);
    player.setRange(11, 20); // in the middle of the run: what was read ahead goes by the old range
    EXPECT_EQ(sound.starts, 2);
    EXPECT_NEAR(*sound.playing, 12.5 / 24, 1e-3);
    EXPECT_EQ(sound.lap, (SoundLap{10 / 24.0, 20 / 24.0}));
    EXPECT_EQ(player.currentFrame(), 13);
    EXPECT_TRUE(player.isRolling());
}

TEST_F(PlayerSoundTest, AnotherSoundComesInWhereThePictureIs) {
    EXPECT_EQ(sound.kind, MovieSound::Kind::own);
    start(1);
    hear(10.5);
    const MovieSound added{MovieSound::Kind::added, u"added.wav"_qs, {}};
    player.setSound(added);
    EXPECT_EQ(sound.kind, MovieSound::Kind::added);
    ASSERT_TRUE(sound.playing);
    EXPECT_NEAR(*sound.playing, 10.5 / 24, 1e-4);
    turn(3);
    EXPECT_EQ(player.currentFrame(), 14) << "the picture goes on meanwhile";
    player.setSound(added);
    EXPECT_EQ(sound.starts, 2) << "the same again is no change";
    player.setRate(0);
    player.setSound({MovieSound::Kind::none, {}, {}});
    EXPECT_FALSE(sound.playing);
    player.open(path, added);
    ASSERT_TRUE(waitUntil([&] { return player.isOpen(); }));
    EXPECT_EQ(sound.kind, MovieSound::Kind::added);
}

TEST(SoundReadAheadTest, WhatIsTakenGoesOnEvenlyAndStandsWhereItBelongs) {
    const QTemporaryDir folder;
    MovieSpec spec;
    spec.path = folder.filePath(QStringLiteral("movie.mov"));
    spec.size = QSize(128, 96);
    spec.frames = 96;
    spec.sound = true;
    ASSERT_TRUE(makeMovie(spec));
    constexpr int rate = 48000;
    const auto loudAt = [](const std::vector<float>& pairs) {
        size_t i = 0;
        while (i < pairs.size() / 2 && std::abs(pairs[i * 2]) < 0.2f)
            ++i;
        return double(i) / rate;
    };
    SoundReadAhead readAhead(rate, [] {});
    const auto isReady = [&] { return readAhead.state() == SoundReadAhead::State::ready; };
    EXPECT_EQ(readAhead.state(), SoundReadAhead::State::none);
    readAhead.setMovie(spec.path, std::make_shared<SampleIndex>(), {});
    readAhead.start(1, rate / 2); // before it is known whether there is sound
    ASSERT_TRUE(waitUntil(isReady));
    std::vector<float> pairs(size_t(rate) * 2);
    for (qint64 done = 0; done < rate; done += 480) {
        ASSERT_TRUE(waitUntil(isReady));
        readAhead.take(1, pairs.data() + done * 2, 480);
    }
    EXPECT_NEAR(loudAt(pairs), 0.5, 0.001);
    readAhead.start(2, rate * 3 / 2); // begins anew, and far too much is taken before anything is ready
    std::vector<float> missed(size_t(rate) * 4, 1.0f);
    readAhead.take(1, missed.data(), rate / 4); // an old run takes nothing away
    EXPECT_EQ(missed[0], 0.0f);
    readAhead.take(2, missed.data(), rate / 4);
    ASSERT_TRUE(waitUntil(isReady));
    for (qint64 done = 0; done < rate / 2; done += 480) {
        ASSERT_TRUE(waitUntil(isReady));
        readAhead.take(2, pairs.data() + done * 2, 480);
    }
    EXPECT_NEAR(loudAt(pairs), 0.25, 0.001) << "what came too late is left out";
    auto pictures = std::make_shared<SampleIndex>();
    pictures->timeScale = 24000; // 2.6 s, a lap that is no whole number of anything
    pictures->endTicks = 62401;
    readAhead.setLap({0, 62401 / 24000.0});
    readAhead.setMovie(spec.path, pictures, {});
    readAhead.start(3, rate * 2);
    ASSERT_TRUE(waitUntil(isReady));
    readAhead.skipTo(3, rate * 11 / 5); // within what is held
    for (qint64 done = 0; done < rate; done += 480) {
        ASSERT_TRUE(waitUntil(isReady));
        readAhead.take(3, pairs.data() + done * 2, 480);
    }
    EXPECT_NEAR(loudAt(pairs), 0.4, 0.001) << "the movie's beginning again";
    spec.sound = false;
    spec.path = folder.filePath(QStringLiteral("silent.mov"));
    ASSERT_TRUE(makeMovie(spec));
    readAhead.setMovie(spec.path, std::make_shared<SampleIndex>(), {});
    EXPECT_TRUE(waitUntil([&] { return readAhead.state() == SoundReadAhead::State::none; }));
    readAhead.take(2, missed.data(), rate);
    EXPECT_EQ(missed[0], 0.0f);
}

TEST(SoundReadAheadTest, ALapIsCutToTheSampleHoweverOftenItComesRound) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("saw.wav"));
    constexpr int rate = 48000, period = 32000;
    const auto level = [](qint64 position) { return int(position % period); };
    ASSERT_TRUE(writeWave(path, rate, rate * 4, level));
    SoundReadAhead readAhead(rate, [] {});
    readAhead.setMovie(path, std::make_shared<SampleIndex>(), {MovieSound::Kind::added, path, {}});
    // Five frames of 23.976 a second: 10010 samples, from a moment before it.
    const double frame = 1001.0 / 24000;
    readAhead.setLap({20 * frame, 25 * frame});
    const auto isReady = [&] { return readAhead.state() == SoundReadAhead::State::ready; };
    readAhead.start(1, 10 * 2002);
    std::vector<float> pair(2);
    for (qint64 n = 10 * 2002; n < rate * 4; ++n) {
        if ((n - 20020) % 480 == 0) {
            ASSERT_TRUE(waitUntil(isReady));
        }
        readAhead.take(1, pair.data(), 1);
        const qint64 moment = n < 50050 ? n : 40040 + (n - 50050) % 10010;
        ASSERT_NEAR(pair[0] * 32768, level(moment), 1) << n;
    }
}

TEST(SoundReadAheadTest, AReadThatARestartOvertookGivesNothingToTheNextRun) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("saw.wav"));
    constexpr int rate = 48000, seconds = 20, period = 32000;
    const auto level = [](qint64 position) { return int(position % period); };
    ASSERT_TRUE(writeWave(path, rate, rate * seconds, level));

    SoundReadAhead readAhead(rate, [] {});
    readAhead.setMovie(path, std::make_shared<SampleIndex>(), {MovieSound::Kind::added, path, {}});
    ASSERT_TRUE(waitUntil([&] { return readAhead.state() == SoundReadAhead::State::filling; }));
    std::mt19937 random(5);
    std::uniform_int_distribution<int> microseconds(0, 800);
    quint64 run = 0;
    std::vector<float> pairs(2048 * 2);
    for (int jump = 0; jump < 500; ++jump) {
        readAhead.start(++run, rate * 15 + jump * 57);
        const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(microseconds(random));
        while (std::chrono::steady_clock::now() < end) {} // any moment of a read
        const qint64 position = rate * 5 + jump * 101; // what comes late would lie ahead
        readAhead.start(++run, position);
        while (readAhead.state() != SoundReadAhead::State::ready)
            std::this_thread::yield();
        readAhead.take(run, pairs.data(), 2048);
        for (qint64 n = 0; n < 2048; ++n)
            ASSERT_NEAR(pairs[size_t(n) * 2] * 32768, level(position + n), 1) << jump << ' ' << n;
    }
}

} // namespace
} // namespace daylark
