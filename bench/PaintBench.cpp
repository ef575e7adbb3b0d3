#include "platform/Alerts.h"
#include "platform/Desktop.h"
#include "platform/FailedWrites.h"
#include "platform/Panels.h"
#include "preferences/Preferences.h"
#include "support/PlayerBench.h"
#include "ui/picture/PicturePointer.h"
#include "ui/picture/PictureView.h"
#include "viewer/MoviePlayerController.h"

#include <QApplication>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>
#include <cstdio>

/// Milliseconds from a pen's event to the repainted screen on an area of 3840 x 2160, with no stroke and with
/// 500 strokes standing, and their ratio; how long a drawing of 500 strokes takes to appear, and what a step
/// of the hand tool costs. Software renderer; a window in memory.
namespace daylark {

namespace {

class BenchPasteboard : public Pasteboard {
public:
    void setText(const QString& text) override { content = text; }
    [[nodiscard]] QString text() const override { return content; }
    QString content;
};

class BenchBrowser : public FileBrowser {
public:
    void reveal(const QStringList&) override {}
};

constexpr QSize paintArea(3840, 2160);
constexpr int pointsOfStroke = 120;

/// A curl somewhere on the picture, as a hand makes it.
std::vector<QPointF> curl(int number, const QSizeF& size) {
    std::vector<QPointF> points;
    const QPointF centre(size.width() * (0.15 + 0.7 * std::fmod(number * 0.618, 1.0)),
                         size.height() * (0.15 + 0.7 * std::fmod(number * 0.377, 1.0)));
    for (int i = 0; i < pointsOfStroke; ++i) {
        const double turn = i * 0.06, reach = (0.02 + 0.0008 * i) * size.height();
        points.push_back(centre + QPointF(std::cos(turn), std::sin(turn)) * reach);
    }
    return points;
}

Drawing drawingOf(int strokes, const QSizeF& movie) {
    Drawing drawing;
    for (int i = 0; i < strokes; ++i) {
        drawing.strokes.push_back({curl(i, movie), i % 10 == 9 ? 0 : 1,
                                   QColor::fromHsv(i * 37 % 360, 200, 255), movie.height() / 270,
                                   i % 3 ? 1.0 : 0.5});
    }
    return drawing;
}

class PaintBench {
public:
    PaintBench() {
        preferences_.brushWidth.set(1);
        preferences_.eraserWidth.set(1);
        preferences_.brushColour.set(QColor(Qt::yellow));
        preferences_.loadFrame.set(StartFrame::first);
        view_.resize(paintArea);
        view_.show();
        movie_ = std::make_shared<Movie>(bench::movie({.frames = 12}));
        new PicturePointer(controller_, view_);
        view_.follow(controller_.scene());
        controller_.open({movie_}, 0);
        bench::waitUntil([this] { return player_.isOpen() && player_.pictureIsCurrent(); });
        size_ = player_.shownFrame().displaySize();
        paintNow();
    }

    /// Median and longest, of the events of one stroke, with so many strokes standing.
    std::pair<double, double> penEvents(int strokes, const char* tool) {
        load(strokes);
        controller_.drawingTools().setInteractiveModeState(QStringLiteral("off"));
        controller_.drawingTools().chooseInteractiveTool({QLatin1String(tool)});
        std::vector<double> times;
        const std::vector<QPointF> path = curl(7, paintArea);
        send(QEvent::MouseButtonPress, path.front());
        for (const QPointF& at : path)
            times.push_back(timed([&] { send(QEvent::MouseMove, at); }));
        lastRelease_ = timed([&] { send(QEvent::MouseButtonRelease, path.back()); });
        std::sort(times.begin(), times.end());
        return {times[times.size() / 2], times.back()};
    }
    [[nodiscard]] double lastRelease() const { return lastRelease_; }

    double appears(int strokes) {
        load(0);
        paintNow();
        return timed([&] { load(strokes); });
    }

    double handStep(int strokes) {
        load(strokes);
        for (int i = 0; i < 3; ++i)
            controller_.geometry().scaleMovie({QStringLiteral("Zoom In")});
        paintNow();
        std::vector<double> times;
        const QPointF start(1900, 1000);
        send(QEvent::MouseButtonPress, start);
        for (int i = 1; i <= 12; ++i)
            times.push_back(timed([&] { send(QEvent::MouseMove, start + QPointF(7 * i, 4 * i)); }));
        send(QEvent::MouseButtonRelease, start);
        controller_.geometry().scaleMovieToFitViewer();
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    }

private:
    template<class Work>
    double timed(Work work) {
        paintNow();
        QElapsedTimer timer;
        timer.start();
        work();
        paintNow();
        return double(timer.nsecsElapsed()) / 1e6;
    }
    static void paintNow() {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    void load(int strokes) {
        movie_->bookmarkStore.clear();
        auto bookmark = std::make_shared<Bookmark>(1, 1, 24.0F);
        bookmark->drawings = drawingOf(strokes, size_);
        movie_->bookmarkStore = {bookmark};
        auto list = std::make_shared<Playlist>();
        list->movieList.push_back(movie_);
        edits_.store().replaceSession({list}); // whose records are drawn on
        controller_.bookmarks().loadActiveBookmarks();
        const size_t shown = controller_.drawings().canvas().shown().strokes.size();
        if (shown != size_t(strokes)) std::printf("only %zu strokes are shown\n", shown);
    }
    void send(QEvent::Type type, const QPointF& at) {
        const bool moves = type == QEvent::MouseMove;
        QMouseEvent event(type, at, view_.mapToGlobal(at), moves ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&view_, &event);
    }

    bench::HandClock clock_;
    Player player_{clock_};
    Preferences preferences_;
    ScriptedAlerts alerts_;
    ScriptedPanels panels_;
    BenchPasteboard pasteboard_;
    BenchBrowser browser_;
    ReviewEdits edits_;
    FailedWrites failedWrites_;
    MoviePlayerController controller_{
        {preferences_, alerts_, pasteboard_, browser_, edits_, player_, panels_, failedWrites_}};
    PictureView view_;
    std::shared_ptr<Movie> movie_;
    QSizeF size_;
    double lastRelease_ = 0;
};

} // namespace

} // namespace daylark

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    daylark::PaintBench bench;
    bench.penEvents(0, "Draw"); // warms up
    for (const char* tool : {"Draw", "Erase"}) {
        const auto bare = bench.penEvents(0, tool);
        const double bareRelease = bench.lastRelease();
        const auto full = bench.penEvents(500, tool);
        std::printf("%-6s ms an event: no stroke %.2f (longest %.2f), 500 strokes %.2f (longest %.2f), "
                    "ratio %.2f; pen up %.2f and %.2f\n",
                    tool, bare.first, bare.second, full.first, full.second, full.first / bare.first,
                    bareRelease, bench.lastRelease());
    }
    std::printf("a drawing of 500 strokes appears in %.1f ms\n", bench.appears(500));
    std::printf("a step of the hand: no stroke %.2f ms, 500 strokes %.2f ms\n", bench.handStep(0),
                bench.handStep(500));
    return 0;
}
