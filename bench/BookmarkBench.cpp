#include "support/MovieMaker.h"
#include "model/Session.h"
#include "review/ReviewEdits.h"
#include "platform/Alerts.h"
#include "platform/Desktop.h"
#include "platform/FailedWrites.h"
#include "platform/Panels.h"
#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "viewer/MoviePlayerController.h"

#include <benchmark/benchmark.h>

#include <QEventLoop>
#include <QGuiApplication>
#include <QTemporaryDir>

// What a movie with many bookmarks costs with every picture shown: which of them are active, their texts and
// drawings together. `lookUp` is the record's part of it, `frameShown` all that follows a change of position
// in the viewer: the difference between a movie without and with bookmarks is theirs.

using namespace daylark;

namespace {

std::vector<std::shared_ptr<Bookmark>> bookmarksOver(int frames, int count) {
    std::vector<std::shared_ptr<Bookmark>> made;
    for (int at = 0; at < count; ++at) {
        made.push_back(std::make_shared<Bookmark>(1 + at % frames, 1 + at % 24, 24.0F));
        made.back()->overlayString = QStringLiteral("text %1").arg(at);
        if (at % 10 == 0) {
            made.back()->drawings.strokes.assign(
                3, {std::vector<QPointF>(40, QPointF(1, 2)), 1, Qt::red, 4.0, 1.0});
        }
    }
    return made;
}

void lookUp(benchmark::State& state) {
    Movie movie(QStringLiteral("/nowhere.mov"));
    const auto made = bookmarksOver(240, int(state.range(0)));
    movie.bookmarkStore.assign(made.begin(), made.end());
    qint64 frame = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(movie.bookmarksForFrame(1 + frame++ % 240));
}
BENCHMARK(lookUp)->Arg(10)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);

class NoPasteboard : public Pasteboard {
public:
    void setText(const QString&) override {}
    void setRichText(const QString&, const QString&) override {}
    [[nodiscard]] QString text() const override { return {}; }
};
class NoBrowser : public FileBrowser {
public:
    void reveal(const QStringList&) override {}
};

/// A viewer without a window on a movie of 240 frames.
struct Viewer {
    Viewer() {
        MovieSpec spec;
        spec.path = folder.filePath(QStringLiteral("a.mov"));
        spec.frames = 240;
        spec.size = QSize(256, 144);
        if (!makeMovie(spec)) std::abort();
        movie = std::make_shared<Movie>(spec.path);
        QEventLoop loop;
        QObject::connect(&controller, &MoviePlayerController::movieShown, &loop, &QEventLoop::quit,
                         Qt::QueuedConnection);
        controller.open({movie}, 0);
        loop.exec();
    }
    QTemporaryDir folder;
    MonotonicClock clock;
    Player player{clock};
    Preferences preferences;
    ScriptedAlerts alerts;
    ScriptedPanels panels;
    NoPasteboard pasteboard;
    NoBrowser browser;
    ReviewEdits edits;
    FailedWrites failedWrites;
    MoviePlayerController controller{{preferences, alerts, pasteboard, browser, edits, player, panels, failedWrites}};
    std::shared_ptr<Movie> movie;
};

void frameShown(benchmark::State& state) {
    Viewer viewer;
    viewer.edits.addBookmarks(viewer.movie, bookmarksOver(240, int(state.range(0))));
    qint64 frame = 0;
    for (auto _ : state)
        viewer.player.setCurrentTime(viewer.player.index().timeOf(frame++ % 240));
}
BENCHMARK(frameShown)->Arg(0)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond)->Iterations(500);

void invertMutes(benchmark::State& state) {
    Viewer viewer;
    viewer.edits.addBookmarks(viewer.movie, bookmarksOver(240, int(state.range(0))));
    for (auto _ : state)
        viewer.controller.bookmarks().setMuteValues({QStringLiteral("Invert Muted Bookmarks"), 0});
}
BENCHMARK(invertMutes)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

void addAndTakeBack(benchmark::State& state) {
    Viewer viewer;
    viewer.edits.addBookmarks(viewer.movie, bookmarksOver(240, int(state.range(0))));
    for (auto _ : state) {
        viewer.controller.bookmarks().addBookmark();
        viewer.edits.history().undo();
    }
}
BENCHMARK(addAndTakeBack)->Arg(0)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// The interface thread's part of a save is the snapshot; the bytes are a worker's.
void save(benchmark::State& state) {
    auto movie = std::make_shared<Movie>(QStringLiteral("/nowhere.mov"));
    const auto made = bookmarksOver(240, int(state.range(0)));
    movie->bookmarkStore.assign(made.begin(), made.end());
    auto list = std::make_shared<Playlist>();
    list->movieList.push_back(movie);
    SessionContents contents;
    contents.playlists = {list};
    contents.hasPlaylists = true;
    const bool isWhole = state.range(1) == 1;
    for (auto _ : state) {
        if (isWhole)
            benchmark::DoNotOptimize(encodeSession(contents));
        else
            benchmark::DoNotOptimize(snapshotOf(contents));
    }
}
BENCHMARK(save)
    ->ArgNames({"bookmarks", "bytes"})
    ->Args({1000, 0})->Args({100000, 0})->Args({100000, 1})->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
