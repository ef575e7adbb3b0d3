#include "support/MadeFrame.h"
#include "support/PlayerBench.h"

#include "media/decode/FrameReader.h"
#include "ui/picture/PictureView.h"

#include <QGuiApplication>
#include <QPainter>
#include <QTest>

#include <gtest/gtest.h>

namespace daylark {

using namespace Qt::StringLiterals;

namespace {

int worstDifference(const QImage& a, const QImage& b, const QRect& part) {
    int worst = a.rect().contains(part) && b.rect().contains(part) ? 0 : 256;
    for (int y = part.top(); y <= part.bottom() && worst < 256; ++y)
        for (int x = part.left(); x <= part.right(); ++x) {
            const QRgb left = a.pixel(x, y), right = b.pixel(x, y);
            worst = std::max({worst, std::abs(qRed(left) - qRed(right)),
                              std::abs(qGreen(left) - qGreen(right)), std::abs(qBlue(left) - qBlue(right))});
        }
    return worst;
}

/// Both renderers, in a window; OpenGL only where windows have it (the suite runs this program once more in
/// an X server).
class PictureViewTest : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        const QString wanted = QLatin1String(GetParam());
        if (wanted == u"OpenGL"_s && QGuiApplication::platformName() == u"offscreen"_s)
            GTEST_SKIP() << "no OpenGL in windows that are not shown";
        view.resize(400, 300);
        view.chooseRenderer(valueOfWord<RendererChoice>(wanted));
        ASSERT_TRUE(bench::waitUntil([&] { return view.rendererName().startsWith(wanted); }));
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
        if (wanted == u"OpenGL"_s) {
            ASSERT_TRUE(bench::waitUntil([&] { return view.rendererName().size() > 10; }));
        }
    }
    [[nodiscard]] QImage screen() {
        EXPECT_TRUE(bench::waitUntil([&] { return view.isDrawn(); }));
        return view.grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
    [[nodiscard]] QImage rendered() const {
        return renderScene(view.scene(), view.devicePixels(), view.devicePixelRatioF());
    }
    void expectScreenIsRenderedArea(const char* what) {
        EXPECT_LE(worstDifference(screen(), rendered(), view.rect()), 1) << what;
    }
    void show(const VideoFrame& frame) {
        scene.frame = frame;
        show();
    }
    void show() {
        scene.geometry.setArea(view.size());
        view.setScene(scene);
    }
    /// The whole picture there, in the area's points from its upper left.
    void place(const QRectF& rect) {
        scene.geometry = {};
        scene.geometry.setArea(rect.size());
        scene.geometry.setMovie(int(rect.width()), int(rect.height()), float(rect.width() / rect.height()));
        const QSizeF area = view.size();
        scene.geometry.moveViewTo(
            {rect.x() - (area.width() - rect.width()) / 2,
             area.height() - rect.y() - rect.height() - (area.height() - rect.height()) / 2});
        show();
    }
    PictureView view;
    Scene scene;
};

TEST_P(PictureViewTest, ScreenIsTheRenderedAreaWhereverThePictureLies) {
    expectScreenIsRenderedArea("nothing");
    show(madeFrame({"yuv420p10le", {231, 133}}));
    EXPECT_GT(qGray(screen().pixel(200, 150)) + qGray(screen().pixel(201, 150)), 0);
    EXPECT_EQ(view.pictureRect(), QRectF(0, 35, 400, 230));
    expectScreenIsRenderedArea("fitted");
    scene.mirrorLeftRight = true;
    show();
    const QImage mirrored = screen();
    scene.mirrorLeftRight = false;
    show();
    EXPECT_LE(worstDifference(mirrored.mirrored(true, false), screen(), view.rect()), 1);
    place(QRectF(-1500, -700, 3000, 2000));
    expectScreenIsRenderedArea("zoomed");
    place(QRectF(350, 250, 90, 70));
    EXPECT_EQ(qGray(screen().pixel(200, 150)), 0) << "the earlier picture is gone";
    expectScreenIsRenderedArea("over the edge");
    place(QRectF(500, 0, 90, 70));
    expectScreenIsRenderedArea("beyond the edge");
    scene.geometry.fit();
    scene.colour.gain = {0, 1, 1};
    show();
    EXPECT_EQ(qRed(screen().pixel(200, 150)), 0);
    expectScreenIsRenderedArea("graded");
    view.resize(260, 320);
    ASSERT_TRUE(bench::waitUntil([&] { return screen().size() == QSize(260, 320); }));
    expectScreenIsRenderedArea("resized");
    show(VideoFrame());
    expectScreenIsRenderedArea("cleared");
}

TEST_P(PictureViewTest, LayersLieAboveThePictureAndReadOutsAboveThem) {
    show(madeFrame({"gray", {400, 300}}));
    const auto canvas = std::make_shared<DrawingCanvas>();
    canvas->beginStroke({0, 250}, DrawingCanvas::brush, Qt::red, 100, 1);
    canvas->endStroke({200, 250});
    canvas->beginStroke({210.5, 280}, DrawingCanvas::brush, QColor(0, 200, 0), 9, 0.6);
    canvas->endStroke({370, 30});
    scene.drawing = canvas;
    scene.movieSize = {400, 300};
    show();
    EXPECT_EQ(screen().pixelColor(150, 50), QColor(Qt::red));
    EXPECT_NE(screen().pixelColor(150, 120), QColor(Qt::red));
    expectScreenIsRenderedArea("drawing");
    canvas->beginStroke({0, 250}, DrawingCanvas::brush, Qt::blue, 100, 1);
    for (const bool finished : {false, true}) { // at the pen, and when it is lifted
        finished ? canvas->endStroke({220, 250}) : canvas->continueStroke({200, 250});
        view.showStrokes(false);
        EXPECT_EQ(screen().pixelColor(150, 50), QColor(Qt::blue));
    }
    canvas->setStrokes(canvas->shown());
    view.showStrokes(true);
    expectScreenIsRenderedArea("replaced by the same");
    scene.maskRatio = 2.35;
    scene.maskOpacity = 0.7;
    scene.background = SceneBackground::white;
    show();
    EXPECT_EQ(screen().pixelColor(380, 150), QColor(Qt::white));
    expectScreenIsRenderedArea("mask and background");

    const QImage without = screen();
    scene.readOuts.counter = u"0042"_s;
    scene.readOuts.overlayText = u"too dark"_s;
    scene.readOuts.overlayColour = Qt::yellow;
    show();
    EXPECT_NE(screen().pixelColor(20, 20), without.pixelColor(20, 20)) << "the counter's plate";
    EXPECT_EQ(screen().pixelColor(4, 4), without.pixelColor(4, 4));
    expectScreenIsRenderedArea("read-outs");
    scene.readOuts = {};
    show();
    EXPECT_EQ(screen(), without) << "read-outs leave nothing behind";
}

TEST_P(PictureViewTest, PicturesOfARunComeInOrderAndTheLastOneStands) {
    auto opened = FrameReader::open(bench::movie({.frames = 48, .group = 12}));
    ASSERT_TRUE(opened);
    std::vector<VideoFrame> frames;
    for (int i = 0; i < 48; ++i)
        frames.push_back(*(*opened)->read(i));
    const auto number = [&] {
        return readBarCode(view.grab(view.pictureRect().toAlignedRect()).toImage()).value_or(-1);
    };
    show(frames[0]);
    EXPECT_EQ(number(), 1);
    view.setMoving(true);
    int last = 1;
    for (size_t i = 1; i < 47; ++i) {
        show(frames[i]);
        if (i % 3 == 0) QTest::qWait(5); // the others come faster than they can be made
        const int now = number();
        EXPECT_GE(now, last);
        EXPECT_LE(now, int(i) + 1);
        last = now;
    }
    EXPECT_TRUE(bench::waitUntil([&] { return number() == 47; })) << "the newest is made in the end";
    show(frames[47]);
    show(frames[30]);
    view.setMoving(false);
    EXPECT_EQ(number(), 31) << "standing, at once";
    QTest::qWait(50);
    EXPECT_EQ(number(), 31) << "what was still being made does not come after it";
}

TEST_P(PictureViewTest, OfStandingPicturesTheLastStandsWithItsTextsAndItsGrade) {
    auto opened = FrameReader::open(bench::movie({.frames = 24, .group = 12}));
    ASSERT_TRUE(opened);
    show(*(*opened)->read(0));
    const QImage first = screen();
    for (const int frame : {5, 9, 14, 20}) // faster than they can be made
        show(*(*opened)->read(frame));
    scene.readOuts.counter = u"0021"_s;
    show();
    EXPECT_NE(screen(), first);
    EXPECT_LE(worstDifference(screen(), rendered(), view.rect()), 1);
    scene.colour.gain = {0, 1, 1};
    show();
    scene.mirrorLeftRight = true; // another place: at once
    show();
    EXPECT_TRUE(view.isDrawn());
    EXPECT_LE(worstDifference(screen(), rendered(), view.rect()), 1);
}

TEST_P(PictureViewTest, PictureTooLargeForTheDeviceIsDrawnInSoftware) {
    if (QLatin1String(GetParam()) != QLatin1String("OpenGL")) GTEST_SKIP();
    show(madeFrame({"gray", {70000, 2}}));
    ASSERT_TRUE(bench::waitUntil([&] { return view.rendererName().startsWith(u"Software (OpenGL"_s); }));
    show(madeFrame({"gray", {70, 50}}));
    expectScreenIsRenderedArea("after falling back");
}

INSTANTIATE_TEST_SUITE_P(Renderers, PictureViewTest, ::testing::Values("Software", "OpenGL"),
                         [](const auto& renderer) { return std::string(renderer.param); });

} // namespace
} // namespace daylark
