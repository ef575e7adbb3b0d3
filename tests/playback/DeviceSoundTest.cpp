#include "playback/sound/DeviceSound.h"

#include "support/PlayerBench.h"
#include "support/ScriptedSound.h"

#include <gtest/gtest.h>

#include <cmath>

namespace daylark {
namespace {

using bench::waitUntil;

constexpr int rate = SoundDevice::samplesASecond;

/// A movie of four seconds with a beep in the first tenth of each.
class DeviceSoundTest : public ::testing::Test {
protected:
    void SetUp() override {
        MovieSpec spec;
        spec.path = folder.filePath(QStringLiteral("movie.mov"));
        spec.size = QSize(128, 96);
        spec.frames = 96;
        spec.sound = true;
        ASSERT_TRUE(makeMovie(spec));
        auto pictures = std::make_shared<SampleIndex>();
        pictures->timeScale = 24;
        pictures->endTicks = 96;
        sound.setVolume(1);
        sound.setMovie(spec.path, pictures, {});
    }
    bool waitForPlayed(double seconds) {
        return waitUntil([&] { return desk.played >= seconds; });
    }
    std::vector<double> beeps() { return desk.beeps(); }

    QTemporaryDir folder;
    bench::Desk desk;
    DeviceSound sound{desk.maker()};
};

TEST_F(DeviceSoundTest, BeepsReachTheDeviceWhenTheRateSaysAndThePositionFollowsTheDevice) {
    for (const float speed : {1.0f, 0.5f, 2.0f}) {
        SCOPED_TRACE(speed);
        const int starts = desk.starts;
        sound.play(0.6, speed, SoundOutput::Start::waits);
        ASSERT_TRUE(waitUntil([&] { return desk.starts > starts; }));
        ASSERT_TRUE(waitForPlayed(1.2));
        const auto position = sound.position();
        ASSERT_TRUE(position);
        EXPECT_NEAR(*position, 0.6 + desk.played * double(speed), 0.06 * double(speed) + 0.02);
        const auto found = beeps();
        ASSERT_FALSE(found.empty());
        EXPECT_NEAR(0.6 + found[0] * double(speed), 1, speed == 1.0f ? 0.001 : 0.04);
        sound.stop();
        EXPECT_FALSE(sound.position());
    }
}

TEST_F(DeviceSoundTest, ChangesOfRateGoOnInTheSameRunWithoutABreak) {
    sound.play(0.2, 1, SoundOutput::Start::waits);
    ASSERT_TRUE(waitForPlayed(0.3));
    sound.setRate(2);
    double last = 0;
    ASSERT_TRUE(waitUntil([&] {
        const double now = sound.position().value_or(-1);
        EXPECT_GE(now, last - 0.065); // as far as it reckons beyond the device's word
        last = now;
        return desk.played >= 1.3;
    }));
    EXPECT_EQ(desk.starts, 1);
    EXPECT_EQ(desk.stops, 0);
    // From 0.2 s at rate 1 until some 0.3 to 0.4 s of the device, then at rate 2: beeps half a second apart.
    const auto found = beeps();
    ASSERT_GE(found.size(), 2u);
    EXPECT_NEAR(found[1] - found[0], 0.5, 0.02);
    EXPECT_GT(found[0], 0.5);
    EXPECT_LT(found[0], 0.75);
}

TEST_F(DeviceSoundTest, SoundThatJoinsComesInWhereThePictureIs) {
    ASSERT_TRUE(waitUntil([&] { return desk.made == 1; })); // its file is open
    const auto begun = std::chrono::steady_clock::now();
    const auto picture = [&] {
        return 0.3 + std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
    };
    sound.play(0.3, 1, SoundOutput::Start::joins);
    EXPECT_FALSE(sound.position());
    std::optional<double> heard;
    double seen = 0;
    ASSERT_TRUE(waitUntil([&] {
        seen = picture();
        return (heard = sound.position()).has_value();
    }));
    EXPECT_NEAR(*heard, seen, 0.1);
    ASSERT_TRUE(waitUntil([&] { return beeps().size() == 1 && desk.played > beeps()[0] + 0.05; }));
    const double shift = *sound.position() - desk.played;
    EXPECT_NEAR(beeps()[0] + shift, 1, 0.06) << "what is said to be heard is what is heard";
}

TEST_F(DeviceSoundTest, FadingEndsSoftlyAndStoppingAtOnce) {
    sound.play(1, 1, SoundOutput::Start::waits); // within a beep
    ASSERT_TRUE(waitForPlayed(0.01));
    sound.fade();
    EXPECT_FALSE(sound.position());
    ASSERT_TRUE(waitUntil([&] { return desk.stops == 1; }));
    const auto written = desk.copy();
    EXPECT_LT(std::abs(written.back()), 1e-4f);
    float step = 0;
    for (size_t i = 1; i < written.size(); ++i)
        step = std::max(step, std::abs(written[i] - written[i - 1]));
    EXPECT_LT(step, 1.15f * 0.5f * 2 * float(M_PI) * 1000 / rate) << "not steeper than the tone itself";
    sound.play(1, 1, SoundOutput::Start::waits);
    ASSERT_TRUE(waitUntil([&] { return desk.starts == 2; }));
    ASSERT_TRUE(waitForPlayed(0.02));
    sound.stop();
    EXPECT_TRUE(waitUntil([&] { return desk.stops == 2; }));
}

TEST_F(DeviceSoundTest, ADeviceThatIsLostOrMissingIsNoClockAndSoundComesInAgainByItselfWhereThePictureIs) {
    double told = 0;
    std::chrono::steady_clock::time_point toldAt;
    const auto isHeard = [&] {
        const auto position = sound.position();
        if (!position) return false;
        told = *position;
        toldAt = std::chrono::steady_clock::now();
        return true;
    };
    const auto expectSoundAgainWhereThePictureIs = [&] {
        desk.present = true;
        const double last = told;
        const auto lastAt = toldAt;
        ASSERT_TRUE(waitUntil(isHeard));
        const double picture = last + std::chrono::duration<double>(toldAt - lastAt).count();
        EXPECT_NEAR(told, picture, 0.1);
        ASSERT_TRUE(waitUntil([&] { return !beeps().empty() && desk.played > beeps()[0] + 0.05; }));
        const double moment = *sound.position() - desk.played + beeps()[0];
        EXPECT_NEAR(moment, std::round(moment), 0.1) << "what is said to be heard is what is heard";
    };
    sound.setLap({0, 60});
    ASSERT_TRUE(waitUntil([&] { return desk.made == 1; })); // its file is open
    desk.present = false;
    desk.lost = true; // while nothing plays
    told = 0.5;
    toldAt = std::chrono::steady_clock::now();
    sound.play(told, 1, SoundOutput::Start::waits);
    ASSERT_TRUE(waitUntil([&] { return !isHeard(); }));
    desk.lost = false;
    expectSoundAgainWhereThePictureIs();
    EXPECT_EQ(desk.made, 2);
    desk.present = false;
    desk.lost = true; // in the middle of a run
    ASSERT_TRUE(waitUntil([&] { return !isHeard(); }));
    desk.lost = false;
    expectSoundAgainWhereThePictureIs();
    EXPECT_EQ(desk.made, 3);
}

TEST_F(DeviceSoundTest, AMovieWithoutSoundIsNoClock) {
    sound.setMovie(folder.filePath(u"nowhere.mov"_qs), std::make_shared<SampleIndex>(), {});
    sound.play(0, 1, SoundOutput::Start::waits);
    EXPECT_TRUE(waitUntil([&] { return !sound.position(); }));
    EXPECT_EQ(desk.starts, 0);
}

} // namespace
} // namespace daylark
