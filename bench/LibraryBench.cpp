#include "app/PlaylistController.h"
#include "platform/Alerts.h"
#include "platform/Desktop.h"
#include "platform/Panels.h"
#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "ui/common/Theme.h"
#include "ui/library/ItemsPane.h"
#include "ui/library/LibraryWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

// What a person waits for in the library with thousands of items: each letter in the search field and in find, until the
// interface thread is free again, painting included; and a flag while a filter is on. Milliseconds, against a frame of 16.
// LibraryBench [ITEMS]

using namespace daylark;

namespace {

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

struct Bench {
    explicit Bench(int items) {
        auto playlist = std::make_shared<Playlist>();
        controller.library().appendPlaylist(playlist, true);
        Library::Movies movies;
        for (int at = 0; at < items; ++at) {
            const QString name = QStringLiteral("/show/dailies/2026-11-%1/%2_%3_comp_v%4.mov")
                                     .arg(1 + at % 28, 2, 10, QLatin1Char('0'))
                                     .arg(at % 3 ? QStringLiteral("SEQ") : QStringLiteral("Séq"))
                                     .arg(at, 5, 10, QLatin1Char('0'))
                                     .arg(1 + at % 9, 3, 10, QLatin1Char('0'));
            movies.push_back(std::make_shared<Movie>(name));
            movies.back()->sortOrder = at + 1;
        }
        controller.library().addMovies(playlist, movies);
        window.resize(1280, 720);
        window.show();
        settle();
    }
    static void settle() {
        for (int round = 0; round < 5; ++round)
            QCoreApplication::processEvents();
    }
    /// From the event until there is nothing left to do.
    template<class Action>
    static double milliseconds(Action&& action) {
        QElapsedTimer timer;
        timer.start();
        action();
        QCoreApplication::processEvents();
        return double(timer.nsecsElapsed()) / 1e6;
    }

    QTemporaryDir folder;
    Preferences preferences;
    ScriptedAlerts alerts;
    ScriptedPanels panels;
    NoPasteboard pasteboard;
    NoBrowser browser;
    MonotonicClock clock;
    Player player{clock};
    FailedWrites failedWrites;
    PlaylistController controller{{preferences, alerts, panels, pasteboard, browser,
                                   {QStringLiteral("bench"), folder.path(), folder.path()}, player, failedWrites}};
    LibraryWindow window{controller};
};

/// Every letter typed and taken back again, several times.
void typeInto(Bench& bench, QLineEdit* field, const char* what) {
    field->setFocus();
    const QString text = QStringLiteral("séq_00012");
    std::vector<double> taken;
    for (int round = 0; round < 5; ++round) {
        for (qsizetype length = 1; length <= text.size(); ++length)
            taken.push_back(Bench::milliseconds([&] {
                field->setText(text.left(length));
                Q_EMIT field->textEdited(field->text());
            }));
        for (qsizetype length = text.size() - 1; length >= 0; --length)
            taken.push_back(Bench::milliseconds([&] {
                field->setText(text.left(length));
                Q_EMIT field->textEdited(field->text());
            }));
        bench.settle();
    }
    std::sort(taken.begin(), taken.end());
    std::printf("%-28s median %6.2f ms   worst %6.2f ms   (%zu letters)\n", what, taken[taken.size() / 2], taken.back(),
                taken.size());
}

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    theme::apply(application);
    Bench bench(argc > 1 ? std::max(1, std::atoi(argv[1])) : 10000);
    auto* search = bench.window.findChild<QLineEdit*>(QStringLiteral("movieSearchField"));
    auto* find = bench.window.findChild<QLineEdit*>(QStringLiteral("findField"));
    for (const bool tiles : {true, false}) {
        bench.window.itemsPane().showTiles(tiles);
        bench.settle();
        std::printf("%zu items as %s\n", bench.controller.library().unfilteredMovies().size(), tiles ? "tiles" : "a list");
        typeInto(bench, search, "  search, a letter");
        bench.controller.find().showFindPanel();
        typeInto(bench, find, "  find, a letter");
        bench.controller.find().closeFindPanel();
        bench.controller.library().setFilter(MovieFilter::withChoice(MovieFilter::choices()[1]));
        bench.settle();
        const auto movie = bench.controller.library().arrangedMovies()[5];
        std::printf("%-28s %13.2f ms\n", "  a flag under a filter",
                    Bench::milliseconds([&] { bench.controller.edits().setFlag({movie}, 904); }));
        bench.controller.edits().setFlag({movie}, 900);
        bench.controller.library().setFilter({});
        bench.settle();
    }
    return 0;
}
