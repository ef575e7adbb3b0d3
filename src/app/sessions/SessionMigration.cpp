#include "app/sessions/SessionMigration.h"

#include "app/files/FileStates.h"
#include "app/files/Thumbnails.h"
#include "app/playlists/Library.h"
#include "app/sessions/SessionFiles.h"
#include "media/facts/TimecodeTrack.h"
#include "platform/Alerts.h"
#include "preferences/Preferences.h"

#include <algorithm>
#include <utility>

namespace daylark {

namespace {

/// What the program brings up to date; no step.
const EditInfo byItself{{}, EditKind::background};

bool isOlder(const std::shared_ptr<Movie>& movie) {
    return movie->bookmarkStore.isNil;
}

float knownRate(const Movie& movie) {
    if (movie.mMovieFPS > 0) return movie.mMovieFPS;
    return movie.frameRate ? float(numberToDouble(*movie.frameRate)) : 0.0F;
}

void takeRate(Bookmark& bookmark, float fps, const std::optional<SmpteTime>& start = std::nullopt) {
    bookmark.fps = fps;
    bookmark.computeTimecodeWithFrameNumber(bookmark.firstFrame, fps, start);
}

std::shared_ptr<Bookmark> bookmarkOfOlder(const MovieBookmark& older, float fps) {
    const qint64 frame = older.mFrameNumber ? numberToInt64(*older.mFrameNumber) : 0;
    auto bookmark = std::make_shared<Bookmark>(frame, 1, fps);
    bookmark->overlayString = older.mDescription;
    bookmark->overlayString2 = older.mNotes;
    takeRate(*bookmark, fps);
    return bookmark;
}

} // namespace

void updatePlaylistsWithNewVariables(Library& library) {
    for (const auto& playlist : library.playlists()) {
        playlist->updateCount();
        if (!playlist->playlistType.isNull()) continue;
        const bool divider = playlist->isDivider && numberToBool(*playlist->isDivider);
        library.store().modify(playlist, byItself, [divider](Playlist& list) {
            list.playlistType = divider ? QStringLiteral("divider") : QStringLiteral("playlist");
        });
    }
}

std::shared_ptr<Movie> updateMovieClass(const Movie& older) {
    // The file's own mark is carried over: making one again would have to look at the disk.
    auto movie = std::make_shared<Movie>(older.filepathString, older.filepathBookmarkData);
    movie->setGrade(older.grade());
    movie->gradeIcon = older.gradeIcon;
    movie->flag = older.flag;
    movie->flagString = older.flagString;
    movie->mLastFrameVisited = older.mLastFrameVisited;
    movie->thumbnail = older.thumbnail;
    movie->sortOrder = older.sortOrder;
    movie->notes = older.notes;
    movie->notes2 = older.notes2;
    movie->notesIcon = older.notesIcon;
    for (const auto& bookmark : older.mMovieBookmarkArray)
        movie->bookmarkStore.push_back(bookmarkOfOlder(*bookmark, knownRate(older)));
    movie->displayBookmarkIcon();
    movie->displayGradeIcon();
    movie->displayNotesIcon();
    movie->displayDrawingIcon();
    return movie;
}

SessionMigration::SessionMigration(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings) {
    connect(&surroundings_.library, &Library::movieUpdated, this, &SessionMigration::takeRateFromProbe);
}

SessionMigration::~SessionMigration() {
    cancel_ = true;
}

bool SessionMigration::hasOlderMovies() const {
    const auto& playlists = surroundings_.library.playlists();
    return std::any_of(playlists.begin(), playlists.end(), [](const auto& playlist) {
        return std::any_of(playlist->movieList.begin(), playlist->movieList.end(), isOlder);
    });
}

bool SessionMigration::checkForModifiedAudio() const {
    const auto& playlists = surroundings_.library.playlists();
    return std::any_of(playlists.begin(), playlists.end(), [](const auto& playlist) {
        return std::any_of(playlist->movieList.begin(), playlist->movieList.end(),
                           [](const auto& movie) { return movie->isModified; });
    });
}

void SessionMigration::checkMovies() {
    // While one question is open, what comes in is covered by its answer.
    if (asking_ || !hasOlderMovies()) return;
    Preferences& preferences = surroundings_.preferences;
    const bool networkMode = preferences.networkMode();
    preferences.networkMode.set(true); // no more work on the old items' media until there is an answer
    Alert question;
    question.message = tr(
        "Some items in this session were created with an older version of Daylark.\n\nClick \"Update\" below "
        "to update them. Drawings in these movies will be lost.");
    question.buttons = QStringList{tr("Update"), tr("Start New Session")};
    question.style = AlertStyle::informational;
    question.tellsDismissal = true;
    asking_ = true;
    const int answer = surroundings_.alerts.run(question);
    asking_ = false;
    switch (answer) { // only an update gives the network mode back: without one the files stay untouched
    case Alerts::firstButton:
        updateMovies();
        preferences.networkMode.set(networkMode);
        break;
    case Alerts::secondButton:
        surroundings_.sessionFiles.clearSession();
        break;
    default:
        Q_EMIT questionDismissed();
    }
}

void SessionMigration::updateMovies() {
    Library& library = surroundings_.library;
    Library::Movies updated;
    const Library::Playlists playlists = library.playlists();
    for (size_t row = 0; row < playlists.size(); ++row) {
        library.selectPlaylist(qsizetype(row)); // the last one stays selected, as after every update before
        Library::Movies older, replacements;
        for (const auto& movie : library.arrangedMovies()) {
            if (!isOlder(movie)) continue;
            older.push_back(movie);
            replacements.push_back(updateMovieClass(
                *movie)); // each list gets its own: instances part here, as in every session updated before
        }
        if (older.empty()) continue;
        const ReviewStore::Group update(library.store(), {tr("Update"), EditKind::final});
        library.addMovies(playlists[row], replacements);
        library.removeMovies(playlists[row], older);
        updated.insert(updated.end(), replacements.begin(), replacements.end());
    }
    for (const auto& movie : updated) {
        if (movie->bookmarkStore.empty()) continue;
        if (movie->bookmarkStore.front()->fps <= 0) withoutRate_.push_back({movie, {}});
        readTimecodeTrack(movie);
    }
    surroundings_.thumbnails.probeAndThumbnail(updated);
    surroundings_.fileStates.updateAllFilePaths(); // the new records have not been looked for yet
}

std::vector<SessionMigration::WithoutRate>::iterator
SessionMigration::findWithoutRate(const std::shared_ptr<Movie>& movie) {
    return std::find_if(withoutRate_.begin(), withoutRate_.end(),
                        [&movie](const WithoutRate& waiting) { return waiting.movie.lock() == movie; });
}

/// An item that never was read has no rate until its probe is there.
void SessionMigration::takeRateFromProbe(const std::shared_ptr<Movie>& movie) {
    if (withoutRate_.empty() || movie->mMovieFPS <= 0) return;
    const auto found = findWithoutRate(movie);
    if (found == withoutRate_.end()) return;
    const std::optional<SmpteTime> start = found->start;
    withoutRate_.erase(found);
    for (const auto& bookmark : movie->bookmarkStore)
        if (bookmark->fps <= 0)
            surroundings_.library.store().modify(
                movie, bookmark, byItself, [&](Bookmark& b) { takeRate(b, movie->mMovieFPS, start); });
}

void SessionMigration::readTimecodeTrack(const std::shared_ptr<Movie>& movie) {
    timecodeTracks_.run([this, path = movie->mediaAddress(), weak = std::weak_ptr<Movie>(movie)] {
        if (cancel_) return;
        const std::optional<SmpteTime> first = firstTimecodeOf(path, &cancel_);
        if (!first) return;
        WorkQueue::deliver(this, [this, weak, start = *first] {
            if (const std::shared_ptr<Movie> still = weak.lock()) takeTimecodeStart(still, start);
        });
    });
}

void SessionMigration::takeTimecodeStart(const std::shared_ptr<Movie>& movie, const SmpteTime& start) {
    if (const auto waiting = findWithoutRate(movie); waiting != withoutRate_.end()) {
        waiting->start = start;
        return;
    }
    for (const auto& bookmark : movie->bookmarkStore) // a longer one was edited meanwhile
        if (bookmark->fps > 0 && bookmark->firstFrame == bookmark->lastFrame)
            surroundings_.library.store().modify(movie, bookmark, byItself,
                                                 [&](Bookmark& b) { takeRate(b, b.fps, start); });
}

} // namespace daylark
