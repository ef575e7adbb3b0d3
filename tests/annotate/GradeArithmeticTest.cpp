#include "annotate/GradeArithmetic.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <vector>

namespace daylark {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;

Grade gradeOf(const std::function<void(Grade&)>& change) {
    Grade grade;
    change(grade);
    return grade;
}

/// Both forms; each expectation holds for both.
std::vector<Rgb> bothForms(const Rgb& colour, const Grade& grade) {
    return {graded(colour, grade), transformed(colour, colourTransformOf(grade))};
}

void expectGraded(const Rgb& colour, const Grade& grade, const Rgb& wanted) {
    for (const Rgb& seen : bothForms(colour, grade))
        EXPECT_THAT(seen, ElementsAre(DoubleNear(wanted[0], 1e-9), DoubleNear(wanted[1], 1e-9),
                                      DoubleNear(wanted[2], 1e-9)));
}

TEST(GradeArithmeticTest, EachOperationDoesItsOwnThing) {
    const Rgb colour{0.25, 0.5, 0.75};
    const double luma = 0.2125 * 0.25 + 0.7154 * 0.5 + 0.0721 * 0.75;
    expectGraded(colour, Grade{}, colour);
    expectGraded(colour, gradeOf([](Grade& g) { g.exposure = 1; }), {0.5, 1, 1.5});
    expectGraded(colour, gradeOf([](Grade& g) { g.exposure = -2; }), {0.0625, 0.125, 0.1875});
    expectGraded(colour, gradeOf([](Grade& g) { g.gamma = 2; }), {0.5, std::sqrt(0.5), std::sqrt(0.75)});
    expectGraded(colour, gradeOf([](Grade& g) { g.gamma = 0.5; }), {0.0625, 0.25, 0.5625});
    expectGraded(colour, gradeOf([](Grade& g) { g.saturation = 0; }), {luma, luma, luma});
    expectGraded(colour, gradeOf([&](Grade& g) { g.saturation = 2; }), {0.5 - luma, 1 - luma, 1.5 - luma});
    expectGraded(colour, gradeOf([](Grade& g) { g.contrast = 2; }), {0, 0.5, 1});
    expectGraded(colour, gradeOf([](Grade& g) { g.brightness = 0.1; }), {0.35, 0.6, 0.85});
    expectGraded(colour, gradeOf([](Grade& g) { g.redChannel = 2, g.greenChannel = 0, g.blueChannel = -1; }),
                 {0.5, 0, -0.75});
}

TEST(GradeArithmeticTest, OperationsFollowEachOtherUnclamped) {
    Grade grade;
    grade.redChannel = 2;
    grade.gamma = 2;
    grade.exposure = 1;
    expectGraded({0.32, 0.64, 0.64}, grade, {1.6, 1.6, 1.6});
    grade.saturation = 0; // a grey stays
    grade.contrast = 0.5; // (1.6 - 0.5) / 2 + 0.5
    grade.brightness = -0.25;
    expectGraded({0.32, 0.64, 0.64}, grade, {0.8, 0.8, 0.8});
    // Beyond white and back again: nothing was lost on the way.
    expectGraded({0.9, 0.9, 0.9}, gradeOf([](Grade& g) { g.exposure = 1, g.contrast = 0.25; }),
                 {0.825, 0.825, 0.825});
    // Below black: only a power makes it 0.
    expectGraded({-0.5, -0.5, -0.5}, gradeOf([](Grade& g) { g.exposure = 1, g.brightness = 2; }), {1, 1, 1});
    expectGraded({-0.5, -0.5, -0.5}, gradeOf([](Grade& g) { g.gamma = 2, g.brightness = 2; }), {2, 2, 2});
}

TEST(GradeArithmeticTest, ShortFormEqualsTheSixOperationsForEveryGrade) {
    std::mt19937 random(7);
    const auto anyOf = [&](const std::vector<double>& values) { return values[random() % values.size()]; };
    const std::vector<double> gains{0, 0.5, 1, 1, 1.7, 4, -1, 1000};
    std::vector<Rgb> colours;
    for (double r : {-0.2, 0.0, 0.004, 0.5, 1.0, 1.1})
        for (double g : {-0.1, 0.0, 0.3, 1.0})
            for (double b : {0.0, 0.02, 0.9, 1.09})
                colours.push_back({r, g, b});
    for (int i = 0; i < 3000; ++i) {
        Grade grade;
        grade.exposure = anyOf({0, 0, 1, -1, 0.33, 10, -10, 30});
        grade.gamma = anyOf({1, 1, 2, 0.5, 0, 10, 0.1, -1, 1e-9, 2.2});
        grade.saturation = anyOf({1, 1, 0, 2, 0.5, -1, 100});
        grade.contrast = anyOf({1, 1, 0, 2, 0.25, 4, -1, 50});
        grade.brightness = anyOf({0, 0, 0.25, -0.5, 1, -1, 10});
        grade.redChannel = anyOf(gains);
        grade.greenChannel = anyOf(gains);
        grade.blueChannel = anyOf(gains);
        const ColourTransform transform = colourTransformOf(grade);
        for (const Rgb& colour : colours) {
            const Rgb steps = graded(colour, grade), shortForm = transformed(colour, transform);
            // Rounding goes by the largest numbers on the way.
            Grade upToExposure = grade;
            upToExposure.saturation = upToExposure.contrast = 1;
            upToExposure.brightness = 0;
            double reach = 1;
            for (const double value : graded(colour, upToExposure))
                reach = std::max(reach, std::abs(value));
            reach *= (1 + std::abs(grade.saturation)) * (1 + std::abs(grade.contrast));
            for (size_t c = 0; c < 3; ++c)
                ASSERT_NEAR(steps[c], shortForm[c], 1e-14 * reach + 1e-12) << i << " " << c;
        }
    }
}

TEST(GradeArithmeticTest, NeutralIsIdentityAndWhatHasNoPowerHasNoCurve) {
    EXPECT_TRUE(colourTransformOf(Grade{}) == ColourTransform{});
    const Grade linear = gradeOf([](Grade& g) { g.exposure = 2, g.redChannel = 0.5, g.contrast = 1.5; });
    EXPECT_FALSE(colourTransformOf(linear).hasCurve());
    EXPECT_TRUE(colourTransformOf(gradeOf([](Grade& g) { g.gamma = 1.1; })).hasCurve());
}

TEST(GradeArithmeticTest, GammaZeroLeavesWhiteWhiteAndMakesTheRestBlack) {
    const Grade grade = gradeOf([](Grade& g) { g.gamma = 0; });
    for (const Rgb& seen : bothForms({0, 0.5, 254.0 / 255}, grade))
        EXPECT_THAT(seen, ElementsAre(0, DoubleNear(0, 1e-6), DoubleNear(0, 1e-6)));
    for (const Rgb& seen : bothForms({1, 1, 1.01}, grade)) {
        EXPECT_EQ(seen[0], 1);
        EXPECT_GT(seen[2], 1);
        EXPECT_TRUE(std::isfinite(seen[2]));
    }
}

TEST(GradeArithmeticTest, AnyNumbersGiveFinitePictures) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const std::vector<double> odd{std::nan(""), infinity, -infinity, 1e308, -1e308, 5e-324, -0.0, 0};
    double Grade::*const members[] = {&Grade::exposure,     &Grade::contrast,   &Grade::saturation,
                                      &Grade::gamma,        &Grade::brightness, &Grade::redChannel,
                                      &Grade::greenChannel, &Grade::blueChannel};
    std::mt19937 random(3);
    for (int i = 0; i < 2000; ++i) {
        Grade grade;
        for (double Grade::*const member : members)
            if (random() % 3 == 0) grade.*member = odd[random() % odd.size()];
        for (const Rgb& seen : bothForms({-0.1, 0.5, 1.1}, grade))
            for (const double value : seen)
                ASSERT_LT(std::abs(value), 1e30) << i; // single precision has room for it
    }
    for (double Grade::*const member : members) {
        Grade grade;
        grade.*member = std::nan("");
        EXPECT_TRUE(colourTransformOf(grade) == ColourTransform{});
    }
}

} // namespace
} // namespace daylark
