#include "picture/scene/DisplayGeometry.h"

#include <gtest/gtest.h>

namespace daylark {
namespace {

DisplayGeometry geometryOf(QSizeF area, int width, int height) {
    DisplayGeometry geometry;
    geometry.setArea(area);
    geometry.setMovie(width, height, float(width) / float(height));
    return geometry;
}

TEST(DisplayGeometryTest, FittedPicturesFillTheAreaInTheirOwnShapeAndFollowIt) {
    DisplayGeometry geometry = geometryOf({1000, 500}, 1920, 1080);
    EXPECT_EQ(geometry.view(), QRectF(0, 0, 1000, 500));
    EXPECT_NEAR(geometry.picture().width(), 500 * 16.0 / 9, 1e-3);
    EXPECT_NEAR(geometry.picture().center().x(), 500, 1e-6);
    geometry.setArea({400, 500});
    EXPECT_NEAR(geometry.picture().height(), 400 * 9.0 / 16, 1e-3);
    EXPECT_EQ(geometry.viewerScaleX(), 1);
}

TEST(DisplayGeometryTest, ZoomStepsGoOnWithoutLimitAboutTheCentreAndComeBack) {
    DisplayGeometry geometry = geometryOf({1280, 720}, 1920, 1080);
    for (int step = 0; step < 40; ++step)
        geometry.zoomIn();
    EXPECT_FALSE(geometry.isFitted());
    EXPECT_NEAR(geometry.view().width(), 1280 * std::pow(1.2, 40), 1);
    EXPECT_NEAR(geometry.view().center().x() / geometry.view().width(), 640 / geometry.view().width(), 1e-5);
    for (int step = 0; step < 40; ++step)
        geometry.zoomOut();
    EXPECT_NEAR(geometry.view().width(), 1280, 1e-3);
    EXPECT_NEAR(geometry.view().x(), 0, 1);
    for (int step = 0; step < 60; ++step)
        geometry.zoomOut();
    EXPECT_GT(geometry.view().width(), 0);
    EXPECT_LT(geometry.view().width(), 0.1);
}

TEST(DisplayGeometryTest, ActualPixelsKeepTheCentreToWholePointsAndAWiderAreaKeepsTheSize) {
    DisplayGeometry geometry = geometryOf({1001, 701}, 1920, 1080);
    geometry.actualPixels();
    EXPECT_EQ(geometry.view(), QRectF(-459, -189, 1920, 1080)); // halves 459.5 and 189.5, cut
    geometry.setArea({1101, 701});
    EXPECT_EQ(geometry.view(), QRectF(-409, -189, 1920, 1080));
    geometry.moveViewTo({5, 6});
    EXPECT_EQ(geometry.toTopLeft(geometry.view()).y(), 701 - 6 - 1080);
    geometry.fit();
    EXPECT_EQ(geometry.view(), QRectF(0, 0, 1101, 701));
}

TEST(DisplayGeometryTest, MaskBarsStandOnlyWhereThePictureIsNotWiderThanTheMask) {
    DisplayGeometry geometry = geometryOf({1280, 720}, 1920, 1080);
    EXPECT_FALSE(geometry.maskBars(1.66));
    const auto bars = geometry.maskBars(2.35);
    ASSERT_TRUE(bars);
    EXPECT_EQ(bars->bottom, QRectF(0, 0, 1280, 88)); // (720 - 544) / 2
    EXPECT_EQ(bars->top, QRectF(0, 632, 1280, 88));
    DisplayGeometry pillarBoxed = geometryOf({2000, 720}, 1920, 1080);
    EXPECT_EQ(pillarBoxed.maskBars(2.35)->bottom.height(), 88); // by the picture's width, not the view's
    EXPECT_EQ(pillarBoxed.maskBars(2.35)->bottom.width(), 2000);
    EXPECT_FALSE(DisplayGeometry().maskBars(2.35));
}

TEST(DisplayGeometryTest, WindowSizesFollowTheMovieAndNeverGetNarrowerThanTheControls) {
    const auto frame = [](int width, int height, const char* title) {
        return geometryOf({800, 450}, width, height).windowFrame(QLatin1String(title));
    };
    EXPECT_EQ(frame(400, 300, "1:1 (Actual Size)")->size, QSize(440, 386));
    EXPECT_EQ(frame(2048, 1152, "1:1 (Actual Size)")->size, QSize(2048, 1208));
    EXPECT_EQ(frame(2048, 1152, "1:1 (Actual Size)")->origin, QPoint(100, -1000));
    EXPECT_FALSE(frame(1919, 1080, "1:1 (Actual Size)")->origin);
    EXPECT_EQ(frame(879, 494, "1:2 (Half Size)")->size.width(), 440);
    EXPECT_EQ(frame(1921, 1081, "1:2 (Half Size)")->size, QSize(960, 596));
    EXPECT_EQ(frame(1439, 809, "1:3 (Third Size)")->size.width(), 440);
    EXPECT_EQ(frame(1921, 1081, "1:3 (Third Size)")->size, QSize(640, 416));
    EXPECT_FALSE(frame(1920, 1080, "1:4"));
    EXPECT_EQ(geometryOf({800, 450}, 1600, 900).constrainedWindow(), QSize(801, 507));
}

} // namespace
} // namespace daylark
