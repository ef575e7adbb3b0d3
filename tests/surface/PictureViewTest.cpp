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
    void expectScreenIsRenderedArea(const char* what) {
        EXPECT_LE(worstDifference(screen(), view.renderArea(), view.rect()), 1) << what;
    }
    PictureView view;
};

TEST_P(PictureViewTest, ScreenIsTheRenderedAreaWhereverThePictureLies) {
    expectScreenIsRenderedArea("nothing");
    view.setFrame(madeFrame({"yuv420p10le", {231, 133}}));
    EXPECT_GT(qGray(screen().pixel(200, 150)) + qGray(screen().pixel(201, 150)), 0);
    EXPECT_EQ(view.pictureRect(), QRectF(0, 35, 400, 230));
    expectScreenIsRenderedArea("fitted");
    view.setMirroring(true, false);
    const QImage mirrored = screen();
    view.setMirroring(false, false);
    EXPECT_LE(worstDifference(mirrored.mirrored(true, false), screen(), view.rect()), 1);
    view.setPictureRect(QRectF(-1500, -700, 3000, 2000));
    expectScreenIsRenderedArea("zoomed");
    view.setPictureRect(QRectF(350, 250, 90, 70));
    EXPECT_EQ(qGray(screen().pixel(200, 150)), 0) << "the earlier picture is gone";
    expectScreenIsRenderedArea("over the edge");
    view.setPictureRect(QRectF(500, 0, 90, 70));
    expectScreenIsRenderedArea("beyond the edge");
    view.setPictureRect(std::nullopt);
    ColourTransform colour;
    colour.gain = {0, 1, 1};
    view.setColourTransform(colour);
    EXPECT_EQ(qRed(screen().pixel(200, 150)), 0);
    expectScreenIsRenderedArea("graded");
    view.resize(260, 320);
    ASSERT_TRUE(bench::waitUntil([&] { return screen().size() == QSize(260, 320); }));
    expectScreenIsRenderedArea("resized");
    view.clear();
    expectScreenIsRenderedArea("cleared");
}

TEST_P(PictureViewTest, LayersLieAboveThePictureAndReadOutsAboveThem) {
    view.setFrame(madeFrame({"gray", {400, 300}}));
    QColor paint = Qt::red;
    // A stroke comes as an image, as the viewer's do: painted piece by piece its edges would differ by the
    // clipping.
    QImage stroke(view.size(), QImage::Format_ARGB32_Premultiplied);
    stroke.fill(Qt::transparent);
    QPainter pen(&stroke);
    pen.setPen(QPen(QColor(0, 200, 0, 160), 9));
    pen.setRenderHint(QPainter::Antialiasing);
    pen.drawLine(QPointF(210.5, 20), QPointF(370, 270));
    pen.end();
    view.setOverlayPainter([&](QPainter& painter) {
        painter.fillRect(QRect(0, 0, 200, 100), paint);
        painter.drawImage(0, 0, stroke);
    });
    EXPECT_EQ(screen().pixelColor(199, 99), QColor(Qt::red));
    EXPECT_NE(screen().pixelColor(200, 100), QColor(Qt::red));
    expectScreenIsRenderedArea("layer");
    paint = Qt::blue;
    view.refreshOverlay();
    EXPECT_EQ(screen().pixelColor(199, 99), QColor(Qt::blue));

    const QImage without = screen();
    PictureView::HeadsUp texts;
    texts.counter = u"0042"_s;
    texts.overlayText = u"too dark"_s;
    texts.overlayColour = Qt::yellow;
    view.setHeadsUp(texts);
    EXPECT_NE(screen().pixelColor(20, 20), QColor(Qt::blue)) << "the counter's plate";
    EXPECT_EQ(screen().pixelColor(4, 4), QColor(Qt::blue));
    EXPECT_LE(worstDifference(view.renderArea(), without, view.rect()), 1) << "no read-outs in it";
    view.setHeadsUp({});
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
    view.setFrame(frames[0]);
    EXPECT_EQ(number(), 1);
    view.setMoving(true);
    int last = 1;
    for (size_t i = 1; i < 47; ++i) {
        view.setFrame(frames[i]);
        if (i % 3 == 0) QTest::qWait(5); // the others come faster than they can be made
        const int now = number();
        EXPECT_GE(now, last);
        EXPECT_LE(now, int(i) + 1);
        last = now;
    }
    EXPECT_TRUE(bench::waitUntil([&] { return number() == 47; })) << "the newest is made in the end";
    view.setFrame(frames[47]);
    view.setFrame(frames[30]);
    view.setMoving(false);
    EXPECT_EQ(number(), 31) << "standing, at once";
    QTest::qWait(50);
    EXPECT_EQ(number(), 31) << "what was still being made does not come after it";
}

TEST_P(PictureViewTest, OfStandingPicturesTheLastStandsWithItsTextsAndItsGrade) {
    auto opened = FrameReader::open(bench::movie({.frames = 24, .group = 12}));
    ASSERT_TRUE(opened);
    view.setFrame(*(*opened)->read(0));
    const QImage first = screen();
    for (const int frame : {5, 9, 14, 20}) // faster than they can be made
        view.setFrame(*(*opened)->read(frame));
    PictureView::HeadsUp texts;
    texts.counter = u"0021"_s;
    view.setHeadsUp(texts);
    const auto all = PictureView::Layers::all;
    EXPECT_NE(screen(), first);
    EXPECT_LE(worstDifference(screen(), view.renderArea({}, all), view.rect()), 1);
    ColourTransform colour;
    colour.gain = {0, 1, 1};
    view.setColourTransform(colour);
    view.setMirroring(true, false); // another place: at once
    EXPECT_TRUE(view.isDrawn());
    EXPECT_LE(worstDifference(screen(), view.renderArea({}, all), view.rect()), 1);
}

TEST_P(PictureViewTest, PictureTooLargeForTheDeviceIsDrawnInSoftware) {
    if (QLatin1String(GetParam()) != QLatin1String("OpenGL")) GTEST_SKIP();
    view.setFrame(madeFrame({"gray", {70000, 2}}));
    ASSERT_TRUE(bench::waitUntil([&] { return view.rendererName().startsWith(u"Software (OpenGL"_s); }));
    view.setFrame(madeFrame({"gray", {70, 50}}));
    expectScreenIsRenderedArea("after falling back");
}

INSTANTIATE_TEST_SUITE_P(Renderers, PictureViewTest, ::testing::Values("Software", "OpenGL"),
                         [](const auto& renderer) { return std::string(renderer.param); });

} // namespace
} // namespace daylark
