#include "playback/sound/TimeStretch.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace daylark {
namespace {

constexpr int rate = 48000;

/// A movie's sound as a function of its sample, the same on both sides.
class TimeStretchTest : public ::testing::Test {
protected:
    explicit TimeStretchTest() = default;
    void begin(std::function<float(double seconds)> sound, double seconds, double speed) {
        sound_ = std::move(sound);
        next_ = std::llround(seconds * rate);
        stretch.begin(next_, speed);
    }
    /// Takes in uneven pieces, as devices do; notes for each sample which moment it is said to belong to.
    void take(double seconds) {
        for (qint64 left = std::llround(seconds * rate); left > 0;) {
            const qint64 count = std::min<qint64>(left, 300 + left % 701);
            std::vector<float> pairs(size_t(count) * 2);
            const double from = stretch.position();
            stretch.give(pairs.data(), count);
            const double until = stretch.position();
            for (qint64 i = 0; i < count; ++i) {
                given.push_back(pairs[size_t(i) * 2]);
                ASSERT_EQ(pairs[size_t(i) * 2], pairs[size_t(i) * 2 + 1]);
                moments.push_back((from + double(i) * (until - from) / double(count)) / rate);
            }
            left -= count;
        }
    }
    /// By the upward zero crossings of that part of what was given.
    double pitch(double from, double until) const {
        double first = -1, last = -1;
        int waves = -1;
        for (auto i = size_t(from * rate) + 1; i < size_t(until * rate); ++i) {
            if (given[i - 1] >= 0 || given[i] < 0) continue;
            last = double(i) + double(given[i]) / double(given[i - 1] - given[i]);
            if (++waves == 0) first = last;
        }
        return waves * rate / (last - first);
    }
    double greatestStep() const {
        float most = 0;
        for (size_t i = 1; i < given.size(); ++i)
            most = std::max(most, std::abs(given[i] - given[i - 1]));
        return double(most);
    }

    std::vector<float> given;
    std::vector<double> moments;
    TimeStretch stretch{rate, [this](float* pairs, qint64 count) {
                            for (qint64 i = 0; i < count; ++i, ++next_)
                                pairs[i * 2] = pairs[i * 2 + 1] = sound_(double(next_) / rate);
                        }};

private:
    std::function<float(double)> sound_;
    qint64 next_ = 0;
};

float tone(double seconds) {
    return float(0.5 * std::sin(2 * M_PI * 440 * seconds));
}

/// A click in the middle of each quarter of a second, over a hiss as no two places have it alike.
float clicks(double seconds) {
    const double within = seconds * 4 - std::floor(seconds * 4);
    const double hiss = std::sin(seconds * 91711.3) * std::sin(seconds * seconds * 3001);
    return float(0.05 * hiss + (std::abs(within - 0.5) < 0.008 ? 0.8 : 0));
}

TEST_F(TimeStretchTest, AtSpeedOneNothingIsTouched) {
    begin(tone, 3, 1);
    take(1);
    for (size_t i = 0; i < given.size(); ++i)
        ASSERT_EQ(given[i], tone(3 + double(i) / rate));
    EXPECT_EQ(stretch.position(), 4.0 * rate);
}

TEST_F(TimeStretchTest, EverySpeedKeepsThePitchAndThePlace) {
    for (const double speed : {0.25, 0.5, 0.75, 1.25, 1.5, 2.0}) {
        SCOPED_TRACE(speed);
        given.clear();
        begin(tone, 5, speed);
        take(3);
        EXPECT_NEAR(pitch(0.2, 3), 440, 1);
        EXPECT_NEAR(stretch.position() / rate, 5 + 3 * speed, 0.04);

        given.clear();
        moments.clear();
        begin(clicks, 0, speed);
        take(6);
        double sum = 0;
        int found = 0;
        for (size_t i = 1; i < given.size(); ++i) {
            if (given[i] < 0.4f || given[i - 1] >= 0.4f) continue;
            const double expected = std::floor(moments[i] * 4) / 4 + 0.125;
            EXPECT_NEAR(moments[i], expected - 0.002, 0.03) << "no click far from its moment";
            sum += moments[i] - (expected - 0.002);
            ++found;
        }
        ASSERT_GT(found, int(6 * speed * 4) - 3);
        EXPECT_LT(std::abs(sum / found), 0.008 * std::max(1.0, speed)) << "and none to one side";
    }
}

TEST_F(TimeStretchTest, SoundIsHeardToItsEndAndThenNoMore) {
    for (const double speed : {0.25, 0.5, 0.75, 1.0, 1.25, 1.5, 2.0}) {
        SCOPED_TRACE(speed);
        given.clear();
        moments.clear();
        begin([](double seconds) { return seconds < 1 ? tone(seconds) : 0.0f; }, 0, speed);
        take(1.5 / speed);
        size_t last = given.size();
        while (last > 0 && std::abs(given[last - 1]) < 0.1f)
            --last;
        ASSERT_GT(last, 0u);
        EXPECT_NEAR(double(last) / rate, 1 / speed, 0.04);
        EXPECT_NEAR(moments[last - 1], 1, 0.03) << "nor does the picture end before its sound";
    }
}

TEST_F(TimeStretchTest, ChangesOfSpeedNeitherClickNorJump) {
    begin(tone, 0, 1);
    double expected = 0;
    for (const double speed : {1.0, 1.5, 1.0, 0.5, 0.7, 2.0, 1.9, 1.0}) {
        stretch.setSpeed(speed);
        const double before = stretch.position() / rate;
        EXPECT_NEAR(before, expected, 0.08) << "what is made already keeps its speed";
        expected = before + 0.4 * speed;
        take(0.4);
    }
    const double steepest = 0.5 * 2 * M_PI * 440 / rate;
    EXPECT_LT(greatestStep(), 1.15 * steepest);
    EXPECT_NEAR(pitch(0, 3.2), 440, 2);
    for (size_t i = 1; i < moments.size(); ++i)
        ASSERT_LT(std::abs(moments[i] - moments[i - 1]), 0.03);
    for (size_t i = 0; i + 4800 < given.size(); i += 4800) { // no gap in the tone either
        const float loudest = *std::max_element(given.begin() + long(i), given.begin() + long(i) + 4800);
        ASSERT_GT(loudest, 0.45f);
    }
}

} // namespace
} // namespace daylark
