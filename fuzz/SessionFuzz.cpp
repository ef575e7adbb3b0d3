// Session files from strangers: read, every record used as the program would, written again and read again.
#include "model/Session.h"

#include "SeedFolder.h"

#include <QColor>
#include <QImage>

#include <cstdint>
#include <cstdlib>
#include <limits>

using namespace daylark;

namespace {

void useBookmark(const Bookmark& read) {
    Bookmark bookmark = read;
    bookmark.computeTimecodeWithOffset();
    bookmark.updateFirstFrame();
    bookmark.updateLastFrame();
    bookmark.updateDuration();
    bookmark.muteBookmark();
    bookmark.removeLastStrokeFromDrawing();
    bookmark.drawings.append(bookmark.drawings);
}

void useMovie(Movie& movie) {
    movie.displayGradeIcon();
    movie.displayNotesIcon();
    movie.displayDrawingIcon();
    movie.displayBookmarkIcon();
    static_cast<void>(movie.fileReference(true));
    static_cast<void>(movie.mLastFrameVisited.seconds());
    static_cast<void>(durationTextOf(movie.mMovieDurationSeconds));
    static_cast<void>(timecodeText(movie.mMovieDurationFrames, movie.mMovieFPS));
    for (const qint64 frame : {qint64(1), movie.mThumbnailFrame, std::numeric_limits<qint64>::max()}) {
        static_cast<void>(movie.bookmarksForFrame(frame));
        static_cast<void>(movie.previousBookmarkFrameNumber(frame));
        static_cast<void>(movie.nextBookmarkFrameNumber(frame));
        static_cast<void>(movie.frameIsBookmarked(frame));
    }
    for (const auto& bookmark : movie.bookmarkStore)
        useBookmark(*bookmark);
    static_cast<void>(movie.thumbnail.decode());
}

std::shared_ptr<Movie> seedMovie() {
    auto movie = std::make_shared<Movie>(QStringLiteral("/dailies/A001.mov"), QByteArray("bookmark"));
    movie->setFlag(904);
    QImage picture(4, 3, QImage::Format_RGB32);
    picture.fill(Qt::red);
    movie->thumbnail = Image::fromQImage(picture);
    AttributedString notes(QStringLiteral("plain "));
    TextAttributes bold;
    bold.bold = true;
    notes.append(QStringLiteral("bold"), bold);
    movie->notes = notes;
    auto bookmark = std::make_shared<Bookmark>(10, 24, 25.0F);
    Drawing drawing;
    drawing.strokes = {{{QPointF(1, 2), QPointF(3.5, -4)}, 1, Qt::yellow, 10, 1}};
    bookmark->drawings = drawing;
    movie->bookmarkStore.push_back(bookmark);
    movie->mMovieBookmarkArray.push_back(
        std::make_shared<MovieBookmark>(QStringLiteral("01:00:00:00"), qint64(25), QStringLiteral("old")));
    movie->addDrawingToMovie(drawing, QStringLiteral("12"));
    return movie;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    auto playlist = std::make_shared<Playlist>();
    const auto movie = seedMovie();
    playlist->movieList = {movie, movie};
    SessionContents contents;
    contents.playlists = {playlist};
    contents.lastSelectedPlaylistIndex = 0;
    contents.version = SessionContents::Version();
    fuzz::seedCorpus(*argc, *argv, "session", encodeSession(contents));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const Result<SessionContents> read =
        decodeSession(QByteArray(reinterpret_cast<const char*>(bytes), qsizetype(size)));
    if (!read) return 0;
    const QByteArray written = encodeSession(*read);
    const Result<SessionContents> again = decodeSession(written);
    if (!again || again->playlists.size() != read->playlists.size())
        std::abort(); // what was read is a session, so what is written must be
    const SessionContents snapshot = snapshotOf(*read);
    int used = 0;
    constexpr int mostUsed = 1000; // one movie may stand in lists any number of times
    for (const auto& playlist : snapshot.playlists) {
        playlist->updateCount();
        for (const auto& movie : playlist->movieList)
            if (++used <= mostUsed) useMovie(*movie);
    }
    return 0;
}
