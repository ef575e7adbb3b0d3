#include "LibraryFixture.h"

#include "model/Session.h"
#include "support/MovieMaker.h"
#include "ui/common/RichTextField.h"
#include "ui/library/ItemsPane.h"
#include "ui/library/MoviesModel.h"
#include "ui/viewer/ViewerWindow.h"

#include <QAbstractEventDispatcher>
#include <QHelpEvent>
#include <QLabel>
#include <QTextDocument>
#include <QToolTip>

#include <sys/stat.h>

#include <ctime>
#include <iostream>
#include <optional>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;
using bench::waitUntil;

/// The interface thread's longest turn, by its own processor time: what other programs take does not count.
class BusyWatch {
public:
    BusyWatch() {
        dispatcher_ = QAbstractEventDispatcher::instance();
        awake_ = QObject::connect(dispatcher_, &QAbstractEventDispatcher::awake, [this] { turn(); });
        asleep_ = QObject::connect(dispatcher_, &QAbstractEventDispatcher::aboutToBlock, [this] { turn(); });
        since_ = now();
    }
    ~BusyWatch() {
        QObject::disconnect(awake_);
        QObject::disconnect(asleep_);
    }
    /// What was done without the loop is a turn too.
    double longestMs() {
        turn();
        return longest_;
    }

private:
    static double now() {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
    }
    void turn() {
        const double at = now();
        longest_ = std::max(longest_, at - std::exchange(since_, at));
    }
    QAbstractEventDispatcher* dispatcher_;
    QMetaObject::Connection awake_, asleep_;
    double since_ = 0, longest_ = 0;
};

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(NDEBUG)
constexpr double mostBusyMs = 1000; // checks of the build, not of a person
#else
constexpr double mostBusyMs = 100;
#endif
/// Thousands of pieces in one record: looked through at once here and there, so twice as long on a slow machine.
constexpr double muchBusyMs = 2 * mostBusyMs;

/// Sessions as a stranger may send them, in the real window: shown as tiles and rows, scrolled, hovered, asked for their
/// information, opened in the viewer with its panels, closed.
class HostileGalleryTest : public LibraryFixture {
protected:
    HostileGalleryTest() { followed = false; } // the replica's copies would be counted as the program's time

    static std::shared_ptr<Movie> item(const QString& path) {
        auto movie = std::make_shared<Movie>(path);
        movie->sortOrder = 1;
        movie->bookmarkStore.isNil = false;
        movie->fileSizeText = u"1.0"_s; // was read once: nothing is read again
        return movie;
    }
    static std::shared_ptr<Bookmark> bookmark(const QString& text, qint64 first = 1) {
        auto made = std::make_shared<Bookmark>(first, 3, 24.0F);
        made->overlayString = made->overlayString2 = made->firstTC = text;
        return made;
    }
    QString session(const QString& name, const std::vector<std::shared_ptr<Movie>>& movies, const QString& listName) {
        auto list = std::make_shared<Playlist>();
        list->name = listName;
        list->movieList.assign(movies.begin(), movies.end());
        SessionContents contents;
        contents.playlists = {list};
        contents.hasPlaylists = true;
        const QString file = path(name + u".dls"_s);
        EXPECT_TRUE(writeSessionFile(file, encodeSession(contents)));
        return file;
    }
    QString movieFile() {
        if (movie_.isEmpty()) movie_ = bench::movie({.frames = 48, .group = 12});
        return movie_;
    }
    static void hover(QAbstractItemView* view) {
        for (int column = 0; column < view->model()->columnCount(); ++column) {
            const QPoint at = middleOf(view, 0, column);
            QHelpEvent help(QEvent::ToolTip, at, view->viewport()->mapToGlobal(at));
            QCoreApplication::sendEvent(view->viewport(), &help);
            QCoreApplication::processEvents();
        }
        QToolTip::hideText();
    }
    void scroll(QAbstractItemView* view) {
        view->scrollToBottom();
        QCoreApplication::processEvents();
        view->scrollToTop();
        QCoreApplication::processEvents();
    }

    /// The longest turn in milliseconds.
    double goThrough(const QString& file) {
        BusyWatch watch;
        sessionFiles().dragSessionImport(file);
        EXPECT_TRUE(waitUntil([this] { return !library().playlists().empty(); }));
        library().selectPlaylist(0);
        library().selectMovies({0});
        for (const char* look : {"view.tiles", "view.list"}) {
            trigger(look);
            QCoreApplication::processEvents();
            scroll(window->itemsPane().activeView());
            hover(window->itemsPane().activeView());
        }
        hover(playlists());
        if (!window->itemsPane().informationShown()) trigger("view.information");
        for (int turn = 0; turn < 5; ++turn)
            QCoreApplication::processEvents();
        goThroughViewer();
        return watch.longestMs();
    }
    void goThroughViewer() {
        ViewerWindow viewer(controller->playerWindow());
        viewer.resize(1000, 700);
        controller->loadMovieWindow();
        QCoreApplication::processEvents();
        for (const ViewerPanel panel : {ViewerPanel::notes, ViewerPanel::bookmarks, ViewerPanel::playlistDrawer}) {
            controller->playerWindow().panels().show(panel, true); // one key each
            QCoreApplication::processEvents();
        }
        for (int turn = 0; turn < 30; ++turn)
            QTest::qWait(10);
        for (auto* view : viewer.findChildren<QAbstractItemView*>())
            if (view->isVisible() && view->model()) {
                scroll(view);
                hover(view);
            }
        viewer.close();
        QCoreApplication::processEvents();
    }
    void run(const QString& name, const std::vector<std::shared_ptr<Movie>>& movies,
             const QString& listName = u"List"_s, double most = mostBusyMs) {
        const QString file = session(name, movies, listName);
        openWindow();
        const double busy = goThrough(file);
        std::cout << "gallery: " << name.toStdString() << ": longest turn " << busy << " ms\n";
        EXPECT_LT(busy, most) << name.toStdString();
        closeWindow();
    }

    QString movie_;
};

TEST_F(HostileGalleryTest, MarkUpInEveryText) {
    const QByteArray pipe = QFile::encodeName(path(u"pipe"_s));
    ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
    const QString images = u"<img src=\"file:///dev/zero\"><img src=\"file://%1\"><b>name</b>"_s.arg(QFile::decodeName(pipe));
    auto movie = item(movieFile());
    movie->filenameString = images;
    movie->durationText = movie->frameRateText = movie->mMovieResolutionString = images;
    movie->creatingThumbnailText = images;
    movie->notes = movie->notes2 = AttributedString(images);
    movie->bookmarkStore.push_back(bookmark(images));
    run(u"pictures"_s, {movie}, images);
}

TEST_F(HostileGalleryTest, NestsOfTables) {
    const QString nest = u"<table><tr><td>"_s.repeated(80);
    auto movie = item(movieFile());
    movie->filenameString = nest;
    movie->notes = movie->notes2 = AttributedString(nest);
    movie->bookmarkStore.push_back(bookmark(nest));
    run(u"tables"_s, {movie}, nest);
}

TEST_F(HostileGalleryTest, TextsOfMegabytes) {
    const QString line = u"a note that goes on and on "_s.repeated(200'000); // 5 million letters
    auto movie = item(movieFile());
    movie->filenameString = movie->durationText = movie->creatingThumbnailText = line;
    movie->notes = AttributedString(line);
    movie->notes2 = AttributedString(u"line\n"_s.repeated(400'000));
    movie->bookmarkStore.push_back(bookmark(line));
    run(u"megabytes"_s, {movie}, line, muchBusyMs);
}

TEST_F(HostileGalleryTest, PicturesThatAreNone) {
    auto movie = item(movieFile());
    movie->thumbnail = Image::fromEncoded("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"8\" height=\"8\"><image "
                                          "href=\"file:///dev/zero\"/></svg>",
                                          {8, 8});
    run(u"vector thumbnail"_s, {movie});
}

TEST_F(HostileGalleryTest, NumbersThatNoMovieHas) {
    std::vector<std::shared_ptr<Movie>> movies;
    using Limits = std::numeric_limits<float>;
    for (const float rate : {-1.0F, 0.0F, 1e30F, Limits::quiet_NaN(), Limits::infinity()})
        for (const qint64 frame : {std::numeric_limits<qint64>::min(), qint64(-1), std::numeric_limits<qint64>::max()}) {
            auto movie = item(movieFile());
            movie->mMovieFPS = rate;
            movie->mMovieDurationFrames = movie->mThumbnailFrame = frame;
            movie->mLastFrameVisited = {frame, frame, 0};
            movie->mMovieWidth = movie->mMovieHeight = qint32(frame);
            auto mark = std::make_shared<Bookmark>(frame, frame, rate);
            mark->lastFrame = -frame / 2;
            movie->bookmarkStore.push_back(mark);
            movies.push_back(movie);
        }
    run(u"numbers"_s, movies);
}

TEST_F(HostileGalleryTest, ThousandsOfBookmarks) {
    auto movie = item(movieFile());
    for (int at = 0; at < 20'000; ++at)
        movie->bookmarkStore.push_back(bookmark(u"b"_s, 1 + at % 48));
    run(u"20,000 bookmarks"_s, {movie}, u"List"_s, muchBusyMs);
}

TEST_F(HostileGalleryTest, ThousandsOfStrokesOnAFrame) {
    auto movie = item(movieFile());
    auto mark = bookmark(u"strokes"_s);
    for (int at = 0; at < 20'000; ++at) {
        Stroke stroke;
        for (int point = 0; point < 8; ++point)
            stroke.points.emplace_back(at % 300 + point * 3, at / 150 + point * 2);
        stroke.width = 5 + at % 20;
        stroke.colour = Qt::yellow;
        mark->drawings.strokes.push_back(stroke);
    }
    mark->drawings.hasKeys = true;
    movie->bookmarkStore.push_back(mark);
    run(u"20,000 strokes"_s, {movie}, u"List"_s, muchBusyMs);
}

TEST_F(HostileGalleryTest, FilesThatAreNoMovies) {
    const QByteArray pipe = QFile::encodeName(path(u"pipe.mov"_s));
    ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"folder.mov"_s));
    const QByteArray itself = "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nlist.mov\n";
    const std::vector<std::shared_ptr<Movie>> movies{item(path(u"pipe.mov"_s)), item(path(u"folder.mov"_s)),
                                                     item(u"/dev/zero"_s), item(makeFile(u"list.mov"_s, itself))};
    for (const auto& movie : movies)
        movie->fileSizeText.clear(); // to be read
    run(u"no movies"_s, movies);
}

} // namespace
} // namespace daylark
