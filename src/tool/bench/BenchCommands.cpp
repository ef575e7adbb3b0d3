#include "model/Session.h"
#include "tool/bench/DragBench.h"
#include "tool/bench/MemoryBench.h"
#include "tool/bench/PlayBench.h"
#include "tool/bench/PlaybackBenches.h"
#include "tool/ToolContext.h"

#include <CLI/CLI.hpp>
#include <plist/plist.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <cstring>
#include <memory>
#include <random>

namespace daylark::tool {
namespace {

/// A thumbnail that doesn't compress to nothing, another for every movie.
Image madeThumbnail(std::mt19937& random) {
    QImage picture(100, 56, QImage::Format_RGB32);
    const int hue = int(random() % 360);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixelColor(x, y,
                                  QColor::fromHsv((hue + x) % 360, 120, (x * y + int(random() % 24)) % 256));
    return Image::fromQImage(picture);
}

Drawing madeDrawing(std::mt19937& random) {
    Drawing drawing;
    for (int stroke = 0; stroke < 3; ++stroke) {
        std::vector<QPointF> points;
        for (int point = 0; point < 40; ++point)
            points.emplace_back(double(random() % 19200) / 10, double(random() % 10800) / 10);
        drawing.strokes.push_back({points, 1, Qt::yellow, 10, 1});
    }
    return drawing;
}

/// Movies with a thumbnail and two bookmarks each, every tenth bookmark with a drawing.
SessionContents madeSession(int count) {
    std::mt19937 random(1);
    SessionContents session;
    session.hasPlaylists = true;
    const auto playlist = std::make_shared<Playlist>();
    int bookmarks = 0;
    for (int i = 0; i < count; ++i) {
        const auto movie = std::make_shared<Movie>(QStringLiteral("/shows/lark/dailies/reel_%1.mov").arg(i));
        movie->thumbnail = madeThumbnail(random);
        movie->sortOrder = i + 1;
        movie->mMovieFPS = 24;
        movie->mMovieDurationFrames = 240;
        movie->notes = AttributedString(QStringLiteral("Note of movie %1.").arg(i));
        for (const qint64 first : {qint64(10), qint64(100)}) {
            const auto bookmark = std::make_shared<Bookmark>(first, 24, 24.0f);
            bookmark->firstTC = timecodeText(first, 24);
            bookmark->lastTC = timecodeText(first + 23, 24);
            bookmark->overlayString = QStringLiteral("Bookmark %1 of %2").arg(first).arg(i);
            if (bookmarks++ % 10 == 0) bookmark->addDrawingToBookmark(madeDrawing(random));
            movie->bookmarkStore.push_back(bookmark);
        }
        movie->displayBookmarkIcon();
        movie->displayDrawingIcon();
        movie->displayNotesIcon();
        playlist->movieList.push_back(movie);
    }
    session.playlists.push_back(playlist);
    return session;
}

double peakMemoryMiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').front().toDouble() / 1024;
    return 0;
}

/// libplist alone on the same bytes; in a process of its own, as the reading is.
void parseSession(ToolContext& context, const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return context.fail(path, file.errorString());
    const QByteArray bytes = file.readAll();
    QElapsedTimer timer;
    timer.start();
    plist_t root = nullptr;
    plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &root);
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    plist_free(root);
    context.print(QJsonDocument(QJsonObject{{QStringLiteral("parseSeconds"), seconds}}));
}

/// In a process of its own, so that its peak memory is the reading's alone.
void loadSession(ToolContext& context, const QString& path) {
    QElapsedTimer timer;
    timer.start();
    const Result<SessionContents> session = readSessionFile(path);
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    if (!session) return context.fail(path, session.error().text);
    const double loadPeak = peakMemoryMiB();
    timer.restart();
    const QByteArray bytes = encodeSession(*session);
    const Result<void> written = writeSessionFile(path + QStringLiteral(".saved"), bytes);
    const double saveSeconds = double(timer.nsecsElapsed()) / 1e9;
    if (!written) return context.fail(path, written.error().text);
    context.print(QJsonDocument(QJsonObject{{QStringLiteral("loadSeconds"), seconds},
                                            {QStringLiteral("saveSeconds"), saveSeconds},
                                            {QStringLiteral("loadPeakMiB"), loadPeak},
                                            {QStringLiteral("peakMemoryMiB"), peakMemoryMiB()}}));
}

void benchSession(ToolContext& context, int count) {
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("bench.dls"));
    const QByteArray bytes = encodeSession(madeSession(count));
    const Result<void> written = writeSessionFile(path, bytes);
    if (!written) return context.fail(path, written.error().text);
    const auto inItsOwnProcess = [](const QString& command, const QString& file) {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("bench"), command, file});
        process.waitForFinished(-1);
        return QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    };
    // In turn and three times over, the best of each: the machine's other work falls on one as on the other.
    QJsonObject figures, parsed, saved;
    const auto keepBest = [](QJsonObject& best, const QJsonObject& run, const QString& key) {
        if (best.isEmpty() || run[key].toDouble() < best[key].toDouble()) best = run;
    };
    for (int round = 0; round < 3; ++round) {
        const QJsonObject run = inItsOwnProcess(QStringLiteral("session-load"), path);
        keepBest(figures, run, QStringLiteral("loadSeconds"));
        keepBest(saved, run, QStringLiteral("saveSeconds"));
        keepBest(parsed, inItsOwnProcess(QStringLiteral("session-parse"), path),
                 QStringLiteral("parseSeconds"));
    }
    if (figures.isEmpty() || parsed.isEmpty())
        return context.fail(path, QStringLiteral("could not be read back"));
    figures[QStringLiteral("saveSeconds")] = saved[QStringLiteral("saveSeconds")];
    figures[QStringLiteral("parseSeconds")] = parsed[QStringLiteral("parseSeconds")];
    figures[QStringLiteral("bytes")] = bytes.size();
    const double fileMiB = double(bytes.size()) / (1024 * 1024);
    figures[QStringLiteral("loadToParse")] = figures[QStringLiteral("loadSeconds")].toDouble() /
                                             figures[QStringLiteral("parseSeconds")].toDouble();
    figures[QStringLiteral("saveToLoad")] =
        figures[QStringLiteral("saveSeconds")].toDouble() / figures[QStringLiteral("loadSeconds")].toDouble();
    figures[QStringLiteral("peakToFile")] = figures[QStringLiteral("peakMemoryMiB")].toDouble() / fileMiB;
    context.print(QJsonDocument(figures));
}

} // namespace

void addBenchCommands(CLI::App& app, ToolContext& context) {
    struct Arguments {
        int count = 0;
        std::string file;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* bench = app.add_subcommand("bench", "Measures, and prints the figures");
    bench->require_subcommand(1);
    addPlaybackBenches(*bench, context);
    addPlayBenches(*bench, context);
    addDragBench(*bench, context);
    addMemoryBenches(*bench, context);
    CLI::App* session = bench->add_subcommand("session", "Saving and loading a made session of COUNT movies");
    session->footer("Example: daylark-tool bench session 10000");
    session->add_option("COUNT", arguments->count)->required()->check(CLI::Range(1, 1000000));
    session->callback([=, &context] { benchSession(context, arguments->count); });
    CLI::App* load =
        bench->add_subcommand("session-load", "Reads a session and saves it beside itself")->group("");
    load->add_option("FILE", arguments->file)->required();
    CLI::App* parse =
        bench->add_subcommand("session-parse", "Parses a session with libplist alone")->group("");
    parse->add_option("FILE", arguments->file)->required();
    parse->callback([=, &context] { parseSession(context, QString::fromStdString(arguments->file)); });
    load->callback([=, &context] { loadSession(context, QString::fromStdString(arguments->file)); });
}

} // namespace daylark::tool
