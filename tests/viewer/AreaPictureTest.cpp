#include "viewer/display/AreaPicture.h"

#include "annotate/GradeArithmetic.h"
#include "demo/MovieMaker.h"
#include "media/decode/FrameReader.h"

#include <QPainter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace daylark {
namespace {

/// A movie of one picture: red at the left, blue at the right, green along the foot.
VideoFrame colouredFrame() {
    static const VideoFrame frame = [] {
        const QTemporaryDir folder;
        MovieSpec spec;
        spec.path = folder.filePath(QStringLiteral("colours.mov"));
        spec.encoder = QStringLiteral("png");
        spec.pixelFormat = QStringLiteral("rgb24");
        spec.size = QSize(320, 180);
        spec.frames = 1;
        spec.barCode = false;
        spec.paint = [](QPainter& painter, int) {
            painter.fillRect(0, 0, 160, 180, QColor(200, 0, 0));
            painter.fillRect(160, 0, 160, 180, QColor(0, 0, 200));
            painter.fillRect(0, 150, 320, 30, QColor(0, 200, 0));
        };
        if (!makeMovie(spec)) return VideoFrame();
        auto reader = FrameReader::open(spec.path);
        auto picture = reader ? (*reader)->read(0) : Result<VideoFrame>(reader.error());
        return picture ? *picture : VideoFrame();
    }();
    return frame;
}

AreaPicture areaOf(const QSizeF& points) {
    AreaPicture area;
    area.frame = colouredFrame();
    area.geometry.setArea(points);
    area.geometry.setMovie(320, 180, 320.0f / 180);
    area.movieSize = QSizeF(320, 180);
    return area;
}

TEST(AreaPictureTest, PictureMirroringGradeAndMaskLieAsOnTheScreen) {
    AreaPicture area = areaOf({400, 180}); // 40 points of black on either side
    QImage image = renderAreaPicture(area, {400, 180});
    EXPECT_EQ(image.pixelColor(20, 90), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(100, 90), QColor(200, 0, 0));
    EXPECT_EQ(image.pixelColor(300, 90), QColor(0, 0, 200));
    EXPECT_EQ(image.pixelColor(200, 170), QColor(0, 200, 0));
    EXPECT_EQ(renderAreaPicture(area, {200, 90}).pixelColor(50, 45), QColor(200, 0, 0));

    area.mirrorLeftRight = true;
    EXPECT_EQ(renderAreaPicture(area, {400, 180}).pixelColor(100, 90), QColor(0, 0, 200));
    area.mirrorUpsideDown = true;
    EXPECT_EQ(renderAreaPicture(area, {400, 180}).pixelColor(200, 10), QColor(0, 200, 0));
    area.mirrorLeftRight = area.mirrorUpsideDown = false;

    area.colour = colourTransformOf({.redChannel = 0.5});
    EXPECT_EQ(renderAreaPicture(area, {400, 180}).pixelColor(100, 90), QColor(100, 0, 0));
    area.mask = area.geometry.maskBars(2.35);
    area.maskOpacity = 0.5;
    image = renderAreaPicture(area, {400, 180});
    EXPECT_NEAR(image.pixelColor(300, 10).blue(), 100, 1);
    EXPECT_EQ(image.pixelColor(300, 90).blue(), 200);
    EXPECT_EQ(renderAreaPicture({}, {10, 10}).pixelColor(5, 5), QColor(Qt::black));
}

TEST(AreaPictureTest, StrokesStayOnTheSameDetailAtAnySizeZoomAndMirroring) {
    AreaPicture area = areaOf({320, 180});
    area.strokes.strokesArray = {{{60, 100}, {100, 100}}}; // 80 pixels below the top, on the red
    area.strokes.brushTypeArray = {1};
    area.strokes.colourArray = {QColor(Qt::yellow)};
    area.strokes.widthArray = {10};
    area.strokes.opacityArray = {1};
    const auto pixel = [&](const QSize& size, double x, double y) {
        return renderAreaPicture(area, size)
            .pixelColor(int(size.width() * x / 320), int(size.height() * y / 180));
    };
    for (const QSize size : {QSize(320, 180), QSize(640, 360), QSize(160, 90)}) {
        EXPECT_EQ(pixel(size, 80, 80), QColor(Qt::yellow)) << size.width();
        EXPECT_EQ(pixel(size, 80, 60), QColor(200, 0, 0)) << size.width();
    }
    area.mirrorLeftRight = true;
    EXPECT_EQ(pixel({320, 180}, 240, 80), QColor(Qt::yellow));
    area.mirrorLeftRight = false;
    area.geometry.zoomIn();
    EXPECT_EQ(pixel({320, 180}, 160 - 80 * 1.2, 90 - 10 * 1.2), QColor(Qt::yellow));
    // An eraser lets the picture through.
    area.geometry.fit();
    area.strokes.strokesArray.push_back({{80, 60}, {80, 140}});
    area.strokes.brushTypeArray.push_back(0);
    area.strokes.widthArray.push_back(10);
    EXPECT_EQ(pixel({320, 180}, 80, 80), QColor(200, 0, 0));
    EXPECT_EQ(pixel({320, 180}, 65, 80), QColor(Qt::yellow));
}

} // namespace
} // namespace daylark
