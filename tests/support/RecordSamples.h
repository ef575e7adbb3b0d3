#pragma once

#include "model/Session.h"

namespace daylark::test {

inline Drawing sampleDrawing(int strokes) {
    Drawing drawing;
    for (int i = 0; i < strokes; ++i) {
        drawing.strokes.push_back({{QPointF(i, 0.5), QPointF(-3.25, 1e-3 * i)},
                                   i % 2,
                                   QColor(10 * (i % 25), 20, 255, 128),
                                   10.5 + i,
                                   0.25});
    }
    return drawing;
}

/// A movie whose every archived field holds something, told apart from every other field's.
inline std::shared_ptr<Movie> sampleMovie() {
    using namespace Qt::StringLiterals;
    auto movie = std::make_shared<Movie>(u"/dailies/day 1/A001 ü.mov"_s, QByteArray("bookmark"));
    movie->filenameURL = QUrl(u"file:///older/name.mov"_s);
    movie->fileCreationDate = Date{123456789.25};
    QImage picture(12, 8, QImage::Format_ARGB32);
    picture.fill(QColor(200, 100, 50));
    movie->thumbnail = Image::fromQImage(picture);
    movie->instanceIcon = Image::named(u"copy 03 white.png"_s);
    movie->gradeIcon = Image::named(u"dl-levelsActive-01.png"_s);
    movie->notesIcon = Image::named(u"dl-notesActive-03.png"_s);
    movie->drawingIcon = Image::named(u"dl-brushActive-01.png"_s);
    movie->bookmarkIcon = Image::named(u"bookmark_on.png"_s);
    movie->setFlag(904);
    movie->creatingThumbnailText = u"Creating"_s;
    movie->statusColour = QColor::fromRgbF(1.0F, 0.5F, 0.0F);
    AttributedString notes(u"plain "_s);
    TextAttributes bold;
    bold.bold = true;
    bold.colour = QColor(Qt::red);
    notes.append(u"red ☂"_s, bold);
    movie->notes = notes;
    movie->notes2 = AttributedString(u"second"_s);
    movie->mMovieDrawings = {{u"12"_s, sampleDrawing(2)}};
    movie->mMovieBookmarkArray.push_back(
        std::make_shared<MovieBookmark>(u"01:00:00:00"_s, qint64(25), u"old"_s));
    movie->bookmarkStore.push_back(std::make_shared<Bookmark>(10, 24, 23.976F));
    movie->bookmarkStore.front()->drawings = sampleDrawing(3);
    movie->bookmarkStore.front()->overlayString = u"text"_s;
    movie->bookmarkStore.front()->overlayString2 = u""_s;
    movie->bookmarkStore.front()->computeTimecodeWithOffset();
    movie->sortOrder = 17;
    movie->iCount = 2;
    movie->mMovieHasBeenVisited = true;
    movie->mLastFrameVisited = {1001, (qint64(1) << 32) + 24000, 0};
    movie->mThumbnailFrame = 48;
    movie->mMovieWidth = 1920;
    movie->mMovieHeight = 1080;
    movie->mMovieAspectRatio = 1920.0F / 1080.0F;
    movie->mMovieResolutionString = u"1920 x 1080"_s;
    movie->mMovieDurationSeconds = 4.004F;
    movie->mMovieDurationFrames = qint64(1) << 33;
    movie->mMovieAdjustedDurationTimeValue = 96096;
    movie->mMovieFPS = 23.976F;
    movie->mMovieTimeValuePerStep = 1001;
    movie->movieAspectRatio = Number(1.78);
    movie->frameRate = Number(qint64(24));
    movie->duration = Number(4.004);
    movie->movieAspectRatioString = u"1.78"_s;
    movie->fileSizeText = u"12.3"_s;
    movie->frameRateText = u"24"_s;
    movie->durationText = u"00:04"_s;
    movie->setGrade({0.5, 1.1, 0.9, 1.2, -0.1, 1.01, 1.02, 1.03});
    movie->shouldRemoveAudioTracks = true;
    movie->removeVideoTracks = true;
    movie->mUserAudioTrack = u"/sound/a.wav"_s;
    movie->mUserAudioTrackBookmarkData = "sound bookmark";
    movie->isOneFrame = true;
    return movie;
}

inline std::shared_ptr<Playlist> samplePlaylist(const std::vector<std::shared_ptr<Movie>>& movies) {
    auto playlist = std::make_shared<Playlist>();
    playlist->movieList.assign(movies.begin(), movies.end());
    playlist->directoryPath = QUrl::fromLocalFile(QStringLiteral("/dailies/day 1"));
    playlist->status = 1;
    return playlist;
}

inline SessionContents sessionOf(const std::vector<std::shared_ptr<Playlist>>& playlists) {
    SessionContents contents;
    contents.playlists = playlists;
    contents.hasPlaylists = true;
    return contents;
}

} // namespace daylark::test
