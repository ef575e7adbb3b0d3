#include "model/Movie.h"
#include "model/Playlist.h"
#include "model/Session.h"
#include "model/StatusCodes.h"
#include "platform/FileBookmark.h"

#include "support/RecordSamples.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

TEST(MovieTest, NewRecordIsNeutralUnflaggedAndLastInOrder) {
    const Movie movie(u"/day 1/A 100%.mov"_s, "mark");
    EXPECT_EQ(movie.filenameString, u"A 100%.mov"_s);
    EXPECT_EQ(movie.filepathURL.toLocalFile(), movie.filepathString);
    EXPECT_EQ(Movie(u"/day 1/reel.r3d//"_s, {}).filenameString, u"reel.r3d"_s);
    EXPECT_EQ(Movie(u"/"_s, {}).filenameString, u"/"_s);
    EXPECT_EQ(movie.flagString, u"900"_s);
    EXPECT_TRUE(movie.flag.isNil() && movie.instanceIcon.isNil() && movie.gradeIcon.isNil());
    EXPECT_EQ(movie.grabIcon.name(), u"dl-grabIcon-01.png"_s);
    EXPECT_EQ(movie.sortOrder, 99999);
    EXPECT_EQ(movie.mThumbnailFrame, -1);
    EXPECT_EQ(movie.mLastFrameVisited, (MediaTime{0, 600, 0}));
    EXPECT_TRUE(movie.grade().isNeutral() && movie.applyGrade);
    EXPECT_TRUE(movie.notes && movie.notes2 && !movie.bookmarkStore.isNil &&
                !movie.mMovieBookmarkArray.isNil);
    EXPECT_FALSE(movie.creatingThumbnailText.isNull());
}

TEST(MovieTest, FlagImageFollowsTheCodeAndUnknownTagsLeaveIt) {
    Movie movie(u"/a.mov"_s);
    const QStringList images{u"flag_Green.png"_s, u"flag_Yellow.png"_s, u"flag_Orange.png"_s,
                             u"flag_Red.png"_s,   u"flag_Purple.png"_s, u"flag_Blue.png"_s,
                             u"flag_Grey.png"_s};
    for (int tag = 901; tag <= 907; ++tag) {
        movie.setFlag(tag);
        EXPECT_EQ(movie.flag.name(), images[tag - 901]);
    }
    movie.setFlag(42);
    EXPECT_EQ(movie.flagString, u"42"_s);
    EXPECT_EQ(movie.flag.name(), u"flag_Grey.png"_s);
    movie.setFlag(900);
    EXPECT_TRUE(movie.flag.isNil());
    EXPECT_TRUE(status::flagImageName(u"900"_s).isEmpty());
}

TEST(MovieTest, InstanceCountNeverGoesBelowZero) {
    Movie movie(u"/a.mov"_s);
    movie.addICount();
    movie.addICount();
    movie.removeICount();
    EXPECT_EQ(movie.iCount, 1);
    EXPECT_EQ(movie.instanceIcon.name(), u"copy 03 white.png"_s);
    movie.removeICount();
    EXPECT_TRUE(movie.instanceIcon.isNil());
    movie.instanceIcon = Image::named(u"copy 03 white.png"_s);
    movie.removeICount();
    EXPECT_EQ(movie.iCount, 0);
    EXPECT_TRUE(movie.instanceIcon.isNil()) << "an icon left over is cleared";
}

TEST(MovieTest, GradeIconShowsAtTheSmallestDifference) {
    Movie movie(u"/a.mov"_s);
    movie.contrast = 1.0000001;
    movie.applyGrade = false;
    movie.displayGradeIcon();
    EXPECT_EQ(movie.gradeIcon.name(), u"dl-levelsActive-01.png"_s);
    EXPECT_FALSE(movie.applyGrade);
    movie.contrast = 1;
    movie.displayGradeIcon();
    EXPECT_TRUE(movie.gradeIcon.isNil() && movie.applyGrade);
}

TEST(MovieTest, IconsFollowNotesBookmarksAndDrawings) {
    Movie movie(u"/a.mov"_s);
    movie.notes.reset();
    movie.displayNotesIcon();
    EXPECT_TRUE(movie.notesIcon.isNil());
    movie.notes2 = AttributedString(u"x"_s);
    movie.displayNotesIcon();
    EXPECT_EQ(movie.notesIcon.name(), u"dl-notesActive-03.png"_s);

    movie.displayBookmarkIcon();
    EXPECT_TRUE(movie.bookmarkIcon.isNil());
    movie.bookmarkStore = {std::make_shared<Bookmark>(1, 1, 25.0F), std::make_shared<Bookmark>(2, 1, 25.0F)};
    movie.displayBookmarkIcon();
    EXPECT_EQ(movie.bookmarkIcon.name(), u"bookmark_on.png"_s);

    movie.addDrawingToMovie(test::sampleDrawing(1), u"3"_s);
    EXPECT_TRUE(movie.drawingIcon.isNil()) << "the older store shows no icon";
    movie.bookmarkStore[1]->drawings = test::sampleDrawing(1);
    movie.displayDrawingIcon();
    EXPECT_EQ(movie.drawingIcon.name(), u"dl-brushActive-01.png"_s);
}

TEST(MovieTest, DrawingsOfAFrameAreAppended) {
    Movie movie(u"/a.mov"_s);
    movie.addDrawingToMovie(test::sampleDrawing(2), u"3"_s);
    movie.addDrawingToMovie(test::sampleDrawing(1), u"3"_s);
    movie.addDrawingToMovie(test::sampleDrawing(1), u"4"_s);
    ASSERT_EQ(movie.mMovieDrawings.size(), 2U);
    const Drawing& drawing = movie.mMovieDrawings.at(u"3"_s);
    EXPECT_EQ(drawing.strokes.size(), 3U);
    EXPECT_TRUE(drawing.strokes[0].erases() && !drawing.strokes[1].erases() && drawing.strokes[2].erases());
    movie.removeDrawingFromMovieForFrame(u"3"_s);
    EXPECT_EQ(movie.mMovieDrawings.count(u"3"_s), 0U);
}

TEST(MovieTest, LastStrokeIsTakenFromTheLastBookmarkThatHasOne) {
    std::vector<std::shared_ptr<Bookmark>> bookmarks;
    for (const int strokes : {2, 1, 0}) {
        bookmarks.push_back(std::make_shared<Bookmark>(1, 1, 25.0F));
        bookmarks.back()->drawings = test::sampleDrawing(strokes);
    }
    Movie::removeLastStrokesFromBookmarks(bookmarks);
    EXPECT_FALSE(bookmarks[1]->hasDrawings());
    EXPECT_TRUE(bookmarks[1]->drawings.hasKeys) << "the five lists stay";
    Movie::removeLastStrokesFromBookmarks(bookmarks);
    EXPECT_EQ(bookmarks[0]->drawings, test::sampleDrawing(1));
    Movie::removeLastStrokesFromBookmarks({});
}

TEST(MovieTest, FileCheckMarksMissingFilesAndFollowsMovedOnes) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"ä.mov"_s), moved = folder.filePath(u"b.mov"_s);
    ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
    Movie movie(path, createFileBookmark(path));
    EXPECT_TRUE(movie.fileIsFound(true) && movie.fileIsFound(false));
    ASSERT_TRUE(QFile::rename(path, moved));
    EXPECT_FALSE(movie.fileIsFound(true));
    EXPECT_EQ(movie.creatingThumbnailText, u"File Not    Found"_s);
    EXPECT_EQ(movie.statusColour.rgb(), QColor(255, 128, 0).rgb());
    EXPECT_EQ(movie.filepathString, path) << "the path stays as it was";
    EXPECT_TRUE(movie.fileIsFound(false));
    EXPECT_EQ(movie.filepathString, moved);
    EXPECT_EQ(movie.filepathURL, QUrl::fromLocalFile(moved));
    EXPECT_EQ(movie.filenameString, u"b.mov"_s);
    EXPECT_EQ(movie.creatingThumbnailText, u""_s);
    EXPECT_EQ(movie.statusColour, QColor(Qt::white));
    EXPECT_TRUE(movie.fileIsFound(true));
}

TEST(MovieTest, AddedSoundAndSilencedSoundAreIndependentAndOnlyARealChangeMarksTheMovie) {
    const QTemporaryDir folder;
    const QString sound = folder.filePath(u"mix.wav"_s);
    ASSERT_TRUE(QFile(sound).open(QIODevice::WriteOnly));
    Movie movie(u"/a.mov"_s);
    movie.removeAddedMovieAudio();
    movie.revertToOriginalMovieAudio();
    EXPECT_FALSE(movie.movieHasUserAudio() || movie.isModified) << "there was nothing to take off";

    movie.removeOriginalMovieAudio();
    movie.addAudioFile(createFileBookmark(sound));
    EXPECT_TRUE(movie.movieHasUserAudio() && movie.shouldRemoveAudioTracks && movie.isModified);
    const auto resolved = resolveFileBookmark(movie.mUserAudioTrackBookmarkData, {});
    EXPECT_EQ(resolved ? *resolved : QString(), sound);

    const auto saved = copyMovies({std::make_shared<Movie>(movie)}).at(0);
    EXPECT_TRUE(saved->movieHasUserAudio() && saved->shouldRemoveAudioTracks);
    EXPECT_FALSE(saved->isModified);
    saved->removeOriginalMovieAudio(); // as whenever it is opened
    EXPECT_FALSE(saved->isModified);
    saved->removeAddedMovieAudio();
    EXPECT_FALSE(saved->movieHasUserAudio());
    EXPECT_TRUE(saved->shouldRemoveAudioTracks && saved->isModified) << "its own sound stays silent";

    movie.revertToOriginalMovieAudio();
    EXPECT_FALSE(movie.movieHasUserAudio() || movie.shouldRemoveAudioTracks);
}

TEST(MovieTest, AnotherFileReplacesPathUrlNameAndBookmarkAndIsFollowedFromThenOn) {
    const QTemporaryDir folder;
    const QString old = folder.filePath(u"v1.mov"_s), next = folder.filePath(u"v2 #3.mov"_s),
                  moved = folder.filePath(u"moved.mov"_s);
    for (const QString& path : {old, next})
        ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
    Movie movie(old, createFileBookmark(old));
    movie.setFlag(903);
    movie.addVideoFile(next, createFileBookmark(next));
    EXPECT_EQ(movie.filepathString, next);
    EXPECT_EQ(movie.filepathURL.toLocalFile(), next) << "a # in a name is no fragment";
    EXPECT_EQ(movie.filenameString, u"v2 #3.mov"_s);
    EXPECT_EQ(movie.flagString, u"903"_s);
    EXPECT_FALSE(movie.isModified) << "the mark is for sound";
    ASSERT_TRUE(QFile::rename(next, moved));
    EXPECT_TRUE(movie.fileIsFound(false));
    EXPECT_EQ(movie.filepathString, moved);
}

TEST(PlaylistTest, CountAndMissingStateFollowTheList) {
    Playlist playlist;
    playlist.updateCount();
    EXPECT_EQ(playlist.itemCount, u""_s);
    EXPECT_EQ(playlist.statusForMissing(0), 0);
    for (int i = 0; i < 3; ++i)
        playlist.movieList.push_back(std::make_shared<Movie>(u"/a.mov"_s));
    playlist.updateCount();
    EXPECT_EQ(playlist.itemCount, u"3"_s);
    EXPECT_EQ(playlist.statusForMissing(0), 0);
    EXPECT_EQ(playlist.statusForMissing(1), 1);
    EXPECT_EQ(playlist.statusForMissing(3), 2);
}

} // namespace
} // namespace daylark
