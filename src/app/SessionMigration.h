#pragma once

#include <QObject>

#include <memory>
#include <vector>

namespace daylark {

class Alerts;
class FileStates;
class Library;
class Movie;
class SessionFiles;
class Thumbnails;
class UserDefaults;

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
        UserDefaults& defaults;
        Alerts& alerts;
        SessionFiles& sessionFiles;
        FileStates& fileStates;
        Thumbnails& thumbnails;
    };
    explicit SessionMigration(const Surroundings& surroundings, QObject* parent = nullptr);

    void checkMovies();
    [[nodiscard]] bool checkForModifiedAudio() const; ///< some item's sound was changed in this run

Q_SIGNALS:
    void questionDismissed(); ///< closed without an answer: the program is to end

private:
    [[nodiscard]] bool hasOlderMovies() const;
    void updateMovies();
    void takeRateFromProbe(const std::shared_ptr<Movie>& movie);

    Surroundings surroundings_;
    std::vector<std::weak_ptr<Movie>> withoutRate_; ///< converted with bookmarks before their rate was known
    bool asking_ = false;
};

} // namespace daylark
