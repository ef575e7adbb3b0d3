#include "picture/scene/Scene.h"
#include "picture/scene/ReadOutPlates.h"

#include "annotate/GradeArithmetic.h"
#include "support/MovieMaker.h"
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

/// A yellow line on the left half, so many pixels above the foot.
Drawing lineAt(double y) {
    Drawing drawing;
    drawing.strokes = {{{{60, y}, {100, y}}, 1, Qt::yellow, 10, 1}};
    return drawing;
}

Scene areaOf(const QSizeF& points) {
    Scene area;
    area.frame = colouredFrame();
    area.geometry.setArea(points);
    area.geometry.setMovie(320, 180, 320.0f / 180);
    area.movieSize = QSizeF(320, 180);
    return area;
}

TEST(SceneTest, PictureMirroringGradeAndMaskLieAsOnTheScreen) {
    Scene area = areaOf({400, 180}); // 40 points of black on either side
    QImage image = renderScene(area, {400, 180});
    EXPECT_EQ(image.pixelColor(20, 90), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(100, 90), QColor(200, 0, 0));
    EXPECT_EQ(image.pixelColor(300, 90), QColor(0, 0, 200));
    EXPECT_EQ(image.pixelColor(200, 170), QColor(0, 200, 0));
    EXPECT_EQ(renderScene(area, {200, 90}).pixelColor(50, 45), QColor(200, 0, 0));

    area.mirrorLeftRight = true;
    EXPECT_EQ(renderScene(area, {400, 180}).pixelColor(100, 90), QColor(0, 0, 200));
    area.mirrorUpsideDown = true;
    EXPECT_EQ(renderScene(area, {400, 180}).pixelColor(200, 10), QColor(0, 200, 0));
    area.mirrorLeftRight = area.mirrorUpsideDown = false;

    area.colour = colourTransformOf({.redChannel = 0.5});
    EXPECT_EQ(renderScene(area, {400, 180}).pixelColor(100, 90), QColor(100, 0, 0));
    area.maskRatio = 2.35;
    area.maskOpacity = 0.5;
    image = renderScene(area, {400, 180});
    EXPECT_NEAR(image.pixelColor(300, 10).blue(), 100, 1);
    EXPECT_EQ(image.pixelColor(300, 90).blue(), 200);
    EXPECT_EQ(renderScene({}, {10, 10}).pixelColor(5, 5), QColor(Qt::black));
}

TEST(SceneTest, ReadOutsAtTheFootLieBesideOrOverEachOther) {
    ReadOuts texts;
    texts.timecode = QStringLiteral("TC 01:00:00:00");
    texts.overlayText = QStringLiteral("The edge flickers where the paint stands");
    for (const char* looking : {"Looking at exposure +2.0",
                                "The session's colour configuration cannot be used, the picture is shown raw: "
                                "/shows/somewhere/else/entirely/show.ocio: no such file"})
        for (const QSize size : {QSize(640, 360), QSize(1280, 720), QSize(1920, 1080)}) {
            texts.looking = QString::fromLatin1(looking);
            ReadOutPlates plates;
            plates.setTexts(texts, size);
            const std::vector<PictureLayer> layers = plates.layers(1);
            ASSERT_EQ(layers.size(), 3u);
            for (size_t one = 0; one < layers.size(); ++one)
                for (size_t other = 0; other < one; ++other)
                    EXPECT_FALSE(QRect(layers[one].at, layers[one].image.size())
                                     .intersects(QRect(layers[other].at, layers[other].image.size())))
                        << size.width() << ' ' << looking << ' ' << one << ' ' << other;
        }
}

TEST(SceneTest, ABackgroundTakesThePicturesPlaceBelowMaskDrawingAndReadOuts) {
    Scene area = areaOf({400, 180});
    const auto canvas = std::make_shared<DrawingCanvas>();
    canvas->setStrokes(lineAt(100));
    area.drawing = canvas;
    area.background = SceneBackground::white;
    area.maskRatio = 2.35;
    QImage image = renderScene(area, {400, 180});
    EXPECT_EQ(image.pixelColor(300, 90), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(20, 90), QColor(Qt::white)); // all of the area
    EXPECT_EQ(image.pixelColor(120, 80), QColor(Qt::yellow));
    EXPECT_EQ(image.pixelColor(300, 4), QColor(Qt::black));
    area.background = SceneBackground::black;
    EXPECT_EQ(renderScene(area, {400, 180}).pixelColor(300, 90), QColor(Qt::black));
    area.background = SceneBackground::picture;
    EXPECT_EQ(renderScene(area, {400, 180}).pixelColor(300, 90), QColor(0, 0, 200));
    area.drawing = nullptr;
    EXPECT_EQ(renderScene(area, {400, 180}).pixelColor(120, 80), QColor(200, 0, 0));
}

TEST(SceneTest, StrokesStayOnTheSameDetailAtAnySizeZoomAndMirroring) {
    Scene area = areaOf({320, 180});
    const auto canvas = std::make_shared<DrawingCanvas>();
    canvas->setStrokes(lineAt(100)); // 80 pixels below the top, on the red
    area.drawing = canvas;
    const auto pixel = [&](const QSize& size, double x, double y) {
        return renderScene(area, size).pixelColor(int(size.width() * x / 320), int(size.height() * y / 180));
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
    canvas->beginStroke({80, 60}, DrawingCanvas::eraser, Qt::black, 10, 1);
    canvas->endStroke({80, 140});
    EXPECT_EQ(pixel({320, 180}, 80, 80), QColor(200, 0, 0));
    EXPECT_EQ(pixel({320, 180}, 65, 80), QColor(Qt::yellow));
}

} // namespace
} // namespace daylark
