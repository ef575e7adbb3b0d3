#include "annotate/StrokeLayer.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>

namespace daylark {
namespace {

const QSize area(320, 180);

PictureMapping plain() {
    return {QRectF(0, 0, 320, 180), QSizeF(640, 360), false, false};
}

/// What the layer shows over mid grey.
QImage shown(const StrokeLayer& layer) {
    QImage picture(area, QImage::Format_RGB32);
    picture.fill(QColor(128, 128, 128));
    QPainter painter(&picture);
    layer.paint(painter, QRectF(QPointF(0, 0), QSizeF(area)));
    return picture;
}

QImage shownAtOnce(const DrawingCanvas& canvas, const PictureMapping& mapping) {
    StrokeLayer layer;
    static_cast<void>(layer.update(canvas, mapping, area, 1));
    return shown(layer);
}

int largestDifference(const QImage& a, const QImage& b) {
    int largest = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QColor one = a.pixelColor(x, y), other = b.pixelColor(x, y);
            largest = std::max({largest, std::abs(one.red() - other.red()),
                                std::abs(one.green() - other.green()), std::abs(one.blue() - other.blue())});
        }
    return largest;
}

void draw(DrawingCanvas& canvas, const std::vector<QPointF>& points, DrawingCanvas::Brush brush,
          double opacity = 1) {
    canvas.beginStroke(points.front(), brush, Qt::yellow, 20, opacity);
    for (size_t i = 1; i + 1 < points.size(); ++i)
        canvas.continueStroke(points[i]);
    canvas.endStroke(points.back());
}

TEST(PictureMappingTest, MirroredPointsLandWhereTheyAreSeenAndComeBack) {
    const QPointF topLeft(10, 20);
    PictureMapping mapping = plain();
    mapping.picture = QRectF(5, 10, 160, 90);
    EXPECT_EQ(mapping.toMovie(topLeft), QPointF(20, 320)); // the movie's origin is the lower left
    mapping.mirrorX = mapping.mirrorY = true;
    EXPECT_EQ(mapping.toMovie(topLeft), QPointF(620, 40)); // drawn at the top left, kept at the bottom right
    for (const bool x : {false, true})
        for (const bool y : {false, true}) {
            mapping.mirrorX = x;
            mapping.mirrorY = y;
            const QPointF back = mapping.toArea(mapping.toMovie(topLeft));
            EXPECT_NEAR(back.x(), topLeft.x(), 1e-9);
            EXPECT_NEAR(back.y(), topLeft.y(), 1e-9);
        }
}

TEST(StrokeLayerTest, StrokesLieWhereTheyWereDrawnAndErasersClearOnlyTheLayer) {
    DrawingCanvas canvas;
    draw(canvas, {{100, 180}, {540, 180}}, DrawingCanvas::brush);
    draw(canvas, {{320, 100}, {320, 260}}, DrawingCanvas::eraser, 0.25);
    const QImage picture = shownAtOnce(canvas, plain());
    EXPECT_EQ(picture.pixelColor(80, 90), QColor(Qt::yellow));
    EXPECT_EQ(picture.pixelColor(160, 90), QColor(128, 128, 128)); // the picture, not black
    EXPECT_EQ(picture.pixelColor(80, 60), QColor(128, 128, 128));
    PictureMapping mirrored = plain();
    mirrored.mirrorY = true;
    DrawingCanvas left;
    draw(left, {{20, 40}, {120, 40}}, DrawingCanvas::brush);
    EXPECT_EQ(shownAtOnce(left, plain()).pixelColor(30, 160), QColor(Qt::yellow));
    EXPECT_EQ(shownAtOnce(left, mirrored).pixelColor(289, 160), QColor(Qt::yellow));
}

TEST(StrokeLayerTest, AStrokeInProgressLooksAsItWillWhenFinished) {
    for (const auto brush : {DrawingCanvas::brush, DrawingCanvas::eraser}) {
        DrawingCanvas canvas;
        StrokeLayer layer;
        draw(canvas, {{40, 60}, {600, 300}}, DrawingCanvas::brush, 0.8);
        EXPECT_EQ(layer.update(canvas, plain(), area, 1), QRectF(0, 0, 320, 180));
        canvas.beginStroke({100, 300}, brush, Qt::red, 24, 0.5);
        QRectF changed = layer.update(canvas, plain(), area, 1);
        EXPECT_TRUE(changed.isEmpty()); // one point draws nothing
        for (int step = 1; step <= 40; ++step) {
            // Across itself: the line must not get denser where it does.
            canvas.continueStroke({100 + step * 10.0, 180 + 100 * std::cos(step * 0.6)});
            changed = layer.update(canvas, plain(), area, 1);
            EXPECT_LT(changed.width(), 60) << "only the new piece is painted anew";
        }
        const QImage growing = shown(layer);
        canvas.endStroke({500, 180 + 100 * std::cos(40 * 0.6)});
        static_cast<void>(layer.update(canvas, plain(), area, 1));
        // Edges differ a little: piece by piece against all at once.
        EXPECT_LE(largestDifference(growing, shown(layer)), 40);
        EXPECT_EQ(growing.pixelColor(10, 10), shown(layer).pixelColor(10, 10));
        EXPECT_EQ(largestDifference(shown(layer), shownAtOnce(canvas, plain())), 0);
    }
}

/// Many, so that several threads paint; with sharp turns, some erasing, some thin.
DrawingCanvas fullCanvas() {
    DrawingCanvas canvas;
    for (int stroke = 0; stroke < 60; ++stroke) {
        std::vector<QPointF> points;
        for (int i = 0; i < 120; ++i)
            points.emplace_back(std::fmod(stroke * 97.0 + i * 5, 640),
                                40 + stroke * 5 + (i % 20 < 10 ? i : -i) * 0.4);
        draw(canvas, points, stroke % 7 == 6 ? DrawingCanvas::eraser : DrawingCanvas::brush,
             stroke % 2 ? 0.5 : 1);
    }
    return canvas;
}

TEST(StrokeLayerTest, AMovedPictureAndStrokesTakenBackLookAsIfPaintedAfresh) {
    DrawingCanvas canvas = fullCanvas();
    StrokeLayer layer;
    PictureMapping mapping = plain();
    static_cast<void>(layer.update(canvas, mapping, area, 1));
    for (const QPointF& by :
         {QPointF(17, 9), QPointF(-60, 4), QPointF(0, -33), QPointF(2.5, 1), QPointF(900, 0)}) {
        mapping.picture.translate(by);
        EXPECT_EQ(layer.update(canvas, mapping, area, 1), QRectF(0, 0, 320, 180));
        EXPECT_EQ(largestDifference(shown(layer), shownAtOnce(canvas, mapping)), 0) << by.x();
    }
    mapping = plain();
    static_cast<void>(layer.update(canvas, mapping, area, 1));
    // Taken back, changed in the middle, put back: only that is painted anew, and all looks right.
    Drawing fewer = canvas.shown();
    for (int taken = 0; taken < 3; ++taken)
        fewer.removeLastStroke();
    const Drawing before = canvas.shown();
    Drawing other = before;
    other.strokes[57].colour = Qt::green;
    for (const Drawing& drawing : {fewer, before, other, Drawing{}, fewer}) {
        canvas.setStrokes(drawing);
        layer.strokesChanged();
        const QRectF changed = layer.update(canvas, mapping, area, 1);
        EXPECT_FALSE(changed.isEmpty());
        EXPECT_EQ(largestDifference(shown(layer), shownAtOnce(canvas, mapping)), 0);
        layer.strokesChanged();
        EXPECT_TRUE(layer.update(canvas, mapping, area, 1).isEmpty()) << "the same strokes once more";
    }
}

/// Given no time at all, each update does a part; what comes of them is what is painted at once.
TEST(StrokeLayerTest, ThousandsOfStrokesComeInPartsAndWhatIsPaintedOverStandsUntilItIsWhole) {
    const QDeadlineTimer noTime(0);
    const auto finish = [&](StrokeLayer& layer, const DrawingCanvas& canvas, const PictureMapping& mapping) {
        int updates = 0;
        do
            static_cast<void>(layer.update(canvas, mapping, area, 1, noTime));
        while (++updates < 100 && layer.isBehind());
        return updates;
    };
    Drawing many;
    for (int at = 0; at < 3000; ++at)
        many.strokes.push_back({.points = {{at % 600 + 0.0, at / 10 + 0.0}, {at % 600 + 20.0, at / 10 + 30.0}},
                                .brushType = at % 7 == 0 ? 0 : 1, .colour = QColor::fromHsv(at % 360, 255, 255),
                                .width = 4, .opacity = 0.5});
    DrawingCanvas canvas;
    canvas.setStrokes(many);
    PictureMapping mapping = plain();
    StrokeLayer layer;
    EXPECT_GT(finish(layer, canvas, mapping), 3);
    EXPECT_EQ(largestDifference(shown(layer), shownAtOnce(canvas, mapping)), 0);

    // The last one, over everything, is taken back: it stays until the rest has been painted again.
    many.strokes.push_back({.points = {{0, 0}, {640, 360}}, .colour = Qt::white, .width = 300});
    canvas.setStrokes(many);
    finish(layer, canvas, mapping);
    const QImage before = shown(layer);
    many.strokes.pop_back();
    canvas.setStrokes(many);
    layer.strokesChanged();
    EXPECT_TRUE(layer.update(canvas, mapping, area, 1, noTime).isEmpty());
    EXPECT_TRUE(layer.isBehind());
    EXPECT_EQ(largestDifference(shown(layer), before), 0);

    // Meanwhile the picture moves twice and is zoomed, and strokes go on coming and going.
    mapping.picture.translate(30, -20);
    static_cast<void>(layer.update(canvas, mapping, area, 1, noTime));
    mapping.picture.translate(-10, 5);
    many.strokes.erase(many.strokes.begin() + 5);
    canvas.setStrokes(many);
    layer.strokesChanged();
    static_cast<void>(layer.update(canvas, mapping, area, 1, noTime));
    draw(canvas, {{10, 10}, {300, 200}}, DrawingCanvas::brush);
    EXPECT_GT(finish(layer, canvas, mapping), 1);
    EXPECT_EQ(largestDifference(shown(layer), shownAtOnce(canvas, mapping)), 0);
    mapping.picture.setSize({400, 225});
    EXPECT_GT(finish(layer, canvas, mapping), 3);
    EXPECT_EQ(largestDifference(shown(layer), shownAtOnce(canvas, mapping)), 0);
}

TEST(StrokeLayerTest, SharpTurnsAreRoundAndAStrokeIsNoDenserThere) {
    DrawingCanvas canvas;
    draw(canvas, {{100, 100}, {300, 100}, {300, 300}}, DrawingCanvas::brush, 0.5);
    const QImage picture = shownAtOnce(canvas, plain());
    EXPECT_EQ(picture.pixelColor(150, 130), picture.pixelColor(80, 130)); // at the corner as along the line
    EXPECT_NE(picture.pixelColor(80, 130), QColor(128, 128, 128));
    EXPECT_EQ(picture.pixelColor(154, 134), QColor(128, 128, 128)); // outside the round corner
}

TEST(DrawingCanvasTest, AClearedViewKeepsTheOtherListsAndStrokesDrawnOnItComeBehindThem) {
    const auto counts = [](const DrawingCanvas& canvas) {
        const Value lists = canvas.currentStrokesDictionary();
        std::vector<size_t> found;
        for (const auto key :
             {u"strokesArray", u"colourArray", u"widthArray", u"opacityArray", u"brushTypeArray"})
            found.push_back(lists[key].array()->size());
        return found;
    };
    DrawingCanvas canvas;
    EXPECT_EQ(counts(canvas), (std::vector<size_t>{0, 0, 0, 0, 0}));
    draw(canvas, {{0, 1}, {5, 1}}, DrawingCanvas::brush, 0.5);
    draw(canvas, {{0, 9}, {5, 9}}, DrawingCanvas::eraser, 0.25);
    canvas.clearViewOfStrokes();
    EXPECT_FALSE(canvas.shown().hasStrokes());
    EXPECT_EQ(counts(canvas), (std::vector<size_t>{0, 2, 2, 2, 2}));
    EXPECT_EQ((*canvas.currentStrokesDictionary()[u"colourArray"].array())[0].colour(), QColor(Qt::yellow));
    canvas.clearViewOfStrokes(); // once more takes nothing away
    canvas.beginStroke({7, 7}, DrawingCanvas::brush, Qt::red, 3, 1);
    EXPECT_EQ(counts(canvas), (std::vector<size_t>{1, 3, 3, 3, 3}));
    EXPECT_EQ((*canvas.currentStrokesDictionary()[u"colourArray"].array())[2].colour(), QColor(Qt::red));
    EXPECT_EQ(canvas.shown().strokes[0].opacity, 0.5); // the first line goes with the first entry
    canvas.setStrokes({});
    EXPECT_EQ(counts(canvas), (std::vector<size_t>{0, 0, 0, 0, 0}));
}

TEST(StrokeLayerTest, StrokesOfDefaultsOrWithoutPointsAreShownAndDrawnOn) {
    Drawing odd;
    odd.strokes = {{.points = {{0, 180}, {640, 180}}, .width = 8}, {}, {.points = {{0, 90}}}};
    DrawingCanvas canvas;
    canvas.setStrokes(odd);
    EXPECT_EQ(shownAtOnce(canvas, plain()).pixelColor(160, 90), QColor(Qt::black));
    draw(canvas, {{0, 270}, {640, 270}}, DrawingCanvas::brush);
    EXPECT_EQ(shownAtOnce(canvas, plain()).pixelColor(160, 45), QColor(Qt::yellow));
    canvas.setStrokes({});
    draw(canvas, {{0, 180}, {640, 180}}, DrawingCanvas::eraser);
    draw(canvas, {{0, 270}, {640, 270}}, DrawingCanvas::brush);
    EXPECT_EQ(shownAtOnce(canvas, plain()).pixelColor(160, 45), QColor(Qt::yellow));
    EXPECT_EQ(shownAtOnce(canvas, plain()).pixelColor(160, 90), QColor(128, 128, 128));
    EXPECT_FALSE(PictureMapping().isValid());
    EXPECT_EQ(shownAtOnce(canvas, {}).pixelColor(160, 45), QColor(128, 128, 128));
}

} // namespace
} // namespace daylark
