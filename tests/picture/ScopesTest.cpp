#include "picture/scopes/Histogram.h"
#include "picture/scopes/ScopeTrace.h"
#include "picture/scopes/Vectorscope.h"
#include "picture/scopes/Waveform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numeric>
#include <random>

namespace daylark {
namespace {

QImage painted(QSize size, const std::function<QRgb(int x, int y)>& colour) {
    QImage picture(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            picture.setPixel(x, y, colour(x, y));
    return picture;
}

QImage noise(QSize size) {
    std::mt19937 random(3);
    return painted(size, [&](int, int) { return 0xff000000 | QRgb(random() & 0xffffff); });
}

/// The bars of a test picture, so much of each.
QImage bars(double amount) {
    return painted({60, 10}, [amount](int x, int) {
        const VectorscopeTarget& bar = vectorscopeTargets[size_t(x / 10)];
        const auto part = [amount](int on) { return int(std::lround(on * amount * 255)); };
        return qRgb(part(bar.red), part(bar.green), part(bar.blue));
    });
}

/// Where colour differences lie on the plane.
QPoint cellOf(QPointF differences) {
    constexpr int middle = Vectorscope::side / 2;
    return {int(std::lround(middle + differences.x() * 2 * middle)), int(std::lround(middle - differences.y() * 2 * middle))};
}

TEST(ScopesTest, AGreyRampIsADiagonalAndFoldsIntoFewerColumns) {
    const QImage ramp = painted({256, 8}, [](int x, int) { return qRgb(x, x, x); });
    const Waveform waveform = waveformOf(ramp, ScopeChannel::luma, 1000);
    ASSERT_EQ(waveform.columns, 256);
    for (int x = 0; x < 256; ++x)
        for (int level = 0; level < scopeLevels; ++level)
            ASSERT_EQ(waveform.at(x, level), level == x ? 8U : 0U) << x << ", " << level;
    const Waveform folded = waveformOf(ramp, ScopeChannel::luma, 64);
    ASSERT_EQ(folded.columns, 64);
    for (int x = 0; x < 64; ++x)
        for (int level = 0; level < scopeLevels; ++level)
            ASSERT_EQ(folded.at(x, level), level / 4 == x ? 8U : 0U) << x << ", " << level;
}

TEST(ScopesTest, ChannelsAreCountedApart) {
    const QImage crossing = painted({256, 2}, [](int x, int) { return qRgb(x, 255 - x, 40); });
    const Waveform red = waveformOf(crossing, ScopeChannel::red, 256), green = waveformOf(crossing, ScopeChannel::green, 256),
                   blue = waveformOf(crossing, ScopeChannel::blue, 256);
    for (int x = 0; x < 256; ++x) {
        EXPECT_EQ(red.at(x, x), 2U);
        EXPECT_EQ(green.at(x, 255 - x), 2U);
        EXPECT_EQ(blue.at(x, 40), 2U);
    }
    EXPECT_EQ(levelOf(qRgb(255, 0, 0), ScopeChannel::luma), 54); // 21 %
    EXPECT_EQ(levelOf(qRgb(255, 255, 255), ScopeChannel::luma), 255);
}

TEST(ScopesTest, AHistogramsCountsAreAllPixels) {
    const QImage picture = noise({97, 53});
    const Histogram histogram = histogramOf(picture);
    for (const Histogram::Counts* counts : {&histogram.luma, &histogram.red, &histogram.green, &histogram.blue})
        EXPECT_EQ(std::accumulate(counts->begin(), counts->end(), 0U), 97U * 53U);
    const QImage clipped = painted({10, 10}, [](int x, int) { return x < 7 ? 0xff000000 : x < 9 ? 0xffffffff : qRgb(9, 9, 9); });
    EXPECT_EQ(histogramOf(clipped).red[0], 70U);
    EXPECT_EQ(histogramOf(clipped).highestInside(), 10U);
}

TEST(ScopesTest, BarsHitTheirTargetsAndSkinItsLine) {
    for (const double amount : {0.75, 1.0}) {
        const Vectorscope scope = vectorscopeOf(bars(amount));
        quint32 hits = 0;
        for (const VectorscopeTarget& target : vectorscopeTargets) {
            const QPoint cell = cellOf(targetAt(target, std::lround(amount * 255) / 255.0));
            EXPECT_EQ(scope.at(cell), 100U) << target.name << " of " << amount;
            const QPoint marked = cellOf(targetAt(target, amount));
            EXPECT_LE((cell - marked).manhattanLength(), 1) << target.name;
            hits += scope.at(cell);
        }
        EXPECT_EQ(hits, 600U);
    }
    // By the standard's own numbers.
    EXPECT_NEAR(colourDifferences(0, 0, 1).x(), 0.5, 1e-12);
    EXPECT_NEAR(colourDifferences(1, 0, 0).y(), 0.5, 1e-12);
    EXPECT_NEAR(colourDifferences(1, 0, 0).x(), -0.1146, 1e-4);
    EXPECT_NEAR(colourDifferences(0, 1, 0).y(), -0.4542, 1e-4);
    const QPoint middle(Vectorscope::side / 2, Vectorscope::side / 2);
    const QImage greys = painted({4, 4}, [](int x, int y) { return qRgb(16 * x * y, 16 * x * y, 16 * x * y); });
    EXPECT_EQ(vectorscopeOf(greys).at(middle), 16U);
    const auto degrees = [](QPointF at) { return std::atan2(at.y(), at.x()) * 180 / M_PI; };
    for (const QRgb skin : {qRgb(224, 172, 140), qRgb(141, 85, 60), qRgb(198, 134, 102)})
        EXPECT_NEAR(degrees(colourDifferences(qRed(skin), qGreen(skin), qBlue(skin))), degrees(skinLine()), 9);
}

TEST(ScopesTest, TracesLightUpWhereThePictureIsAndStandEmptyAndTinyPictures) {
    const QImage grey = painted({100, 40}, [](int, int) { return qRgb(128, 128, 128); });
    const QImage waveform = waveformTrace(grey);
    ASSERT_EQ(waveform.size(), QSize(100, scopeLevels));
    for (int y = 0; y < waveform.height(); ++y)
        EXPECT_EQ(waveform.pixel(50, y) != scopeDark, y == scopeLevels - 1 - 128) << y;
    EXPECT_GT(qRed(waveform.pixel(50, scopeLevels - 1 - 128)), 200);
    const QImage parade = paradeTrace(painted({320, 40}, [](int, int) { return qRgb(255, 128, 0); }));
    ASSERT_EQ(parade.width(), 3 * paradeColumns + 2 * paradeGap);
    EXPECT_NE(parade.pixel(10, 0), scopeDark);
    EXPECT_NE(parade.pixel(paradeColumns + paradeGap, scopeLevels - 1 - 128), scopeDark);
    EXPECT_NE(parade.pixel(parade.width() - 1, scopeLevels - 1), scopeDark);
    EXPECT_EQ(parade.pixel(paradeColumns + 1, 0), scopeDark); // between them
    const QImage vectors = vectorscopeTrace(grey);
    EXPECT_NE(vectors.pixel(Vectorscope::side / 2, Vectorscope::side / 2), scopeDark);
    EXPECT_EQ(vectors.pixel(3, 3), scopeDark);
    const QImage histogram = histogramTrace(grey);
    EXPECT_NE(histogram.pixel(128, 5), scopeDark);
    EXPECT_EQ(histogram.pixel(127, histogram.height() - 1), scopeDark);
    const QImage one = painted({1, 1}, [](int, int) { return qRgb(3, 200, 7); });
    for (const auto trace : {waveformTrace, paradeTrace, vectorscopeTrace, histogramTrace}) {
        EXPECT_TRUE(trace({}).isNull());
        EXPECT_FALSE(trace(one).isNull());
        EXPECT_FALSE(trace(noise({481, 3})).isNull());
    }
    EXPECT_EQ(waveformOf({}, ScopeChannel::luma, 100).columns, 0);
    EXPECT_TRUE(vectorscopeOf({}).counts.empty());
}

} // namespace
} // namespace daylark
