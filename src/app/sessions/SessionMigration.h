#pragma once

#include "base/jobs/CancelFlag.h"
#include "base/jobs/WorkQueue.h"
#include "model/Timecode.h"

#include <QObject>

#include <memory>
#include <optional>
#include <vector>

namespace daylark {

class Alerts;
class FileStates;
class Library;
class Movie;
class SessionFiles;
class Thumbnails;
class Preferences;

/// Gives every playlist of an older session its type (and its shown count), after every load. Interface
/// thread.
void updatePlaylistsWithNewVariables(Library& library);

/// A record of today's shape for an item of an older one (told by its absent `bookmarkStore`): review data is
/// carried over, its simple bookmarks become bookmarks of one frame, drawings are left behind. Touches no
/// disk: properties are for a probe to read.
[[nodiscard]] std::shared_ptr<Movie> updateMovieClass(const Movie& older);

/// Brings items that older versions wrote up to date, once the person has agreed; at the end of start-up and
/// after an import. Owned by the library's controller; interface thread. `checkMovies` returns when its
/// question is answered, while the windows stay alive behind it. Reports no errors.
class SessionMigration : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        Preferences& preferences;
        Alerts& alerts;
        SessionFiles& sessionFiles;
        FileStates& fileStates;
        Thumbnails& thumbnails;
    };
    explicit SessionMigration(const Surroundings& surroundings, QObject* parent = nullptr);
    ~SessionMigration() override; ///< ends the reading of timecode tracks

    void checkMovies();
    [[nodiscard]] bool checkForModifiedAudio() const; ///< some item's sound was changed in this run

Q_SIGNALS:
    void questionDismissed(); ///< closed without an answer: the program is to end

private:
    [[nodiscard]] bool hasOlderMovies() const;
    void updateMovies();
    void takeRateFromProbe(const std::shared_ptr<Movie>& movie);
    void readTimecodeTrack(const std::shared_ptr<Movie>& movie);
    void takeTimecodeStart(const std::shared_ptr<Movie>& movie, const SmpteTime& start);

    /// Converted with bookmarks before their rate was known.
    struct WithoutRate {
        std::weak_ptr<Movie> movie;
        std::optional<SmpteTime> start; ///< of its timecode track, once read
    };
    [[nodiscard]] std::vector<WithoutRate>::iterator findWithoutRate(const std::shared_ptr<Movie>& movie);

    Surroundings surroundings_;
    std::vector<WithoutRate> withoutRate_;
    bool asking_ = false;
    CancelFlag cancel_ = false;
    WorkQueue timecodeTracks_{1, WorkQueue::Pace::background}; ///< last: waits for its work
};

} // namespace daylark
