#pragma once

#include "base/Result.h"
#include "base/jobs/CancelFlag.h"
#include "base/jobs/WorkQueue.h"
#include "media/encode/ExportWatch.h"
#include "media/sound/MovieSound.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace daylark {

class Alerts;
class CurrentMovie;
class FailedWrites;
class LibraryLink;
class Movie;
class Panels;
class Player;
class ReviewEdits;

/// An added file takes the place of the movie's own sound; its own may be silenced.
[[nodiscard]] MovieSound soundOf(const Movie& movie);

/// The sound of the movie on screen: which one it is heard with, as steps that can be undone, and files of it. Files are written
/// by a worker, one after the other, while the viewer goes on; the library shows how far they are. A WAVE file that cannot be
/// written is told by an alert, a movie that cannot stands among the failed writes. Owned by the viewer's controller; interface
/// thread. The destructor gives up what is being written.
class MovieAudio : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        CurrentMovie& current;
        ReviewEdits& edits;
        Player& player;
        Panels& panels;
        Alerts& alerts;
        FailedWrites& failedWrites;
    };
    explicit MovieAudio(const Surroundings& surroundings, QObject* parent = nullptr);
    ~MovieAudio() override;
    void setLibrary(LibraryLink* library) { library_ = library; }

    void saveMovieAudioTracks();   ///< what is heard, as a WAVE file
    void saveMovieAs();            ///< the movie with it, as a file of its own
    void addAudioTrack();          ///< another file's sound instead of its own
    void revertMovieAudioTracks(); ///< its own sound, as it came
    void removeMovieAudioTracks(); ///< silence

    [[nodiscard]] bool isChanged() const;  ///< it isn't heard with its own sound
    [[nodiscard]] bool isSilenced() const; ///< by a person
    [[nodiscard]] bool isHeard() const;    ///< there is a sound to be heard, as far as is known
    [[nodiscard]] bool isBusy() const { return lookedAt_ > 0 || !running_.empty(); }

Q_SIGNALS:
    void soundKnown(); ///< whether the movie's file has a sound of its own

private:
    void lookForSound(const std::shared_ptr<Movie>& movie);
    /// A file to be written of a movie as it is now.
    struct Export {
        QString movie;
        MovieSound sound;
        QString path;
    };
    using Writer = std::function<Result<void>(const Export&, const ExportWatch&)>;
    [[nodiscard]] Export exportTo(const QString& path) const;
    [[nodiscard]] QString askForMoviePath(const QString& proposedName);
    void saveMovie(const Export& job);
    void start(const QString& title, const Export& job, const Writer& write,
               const std::function<void(const Result<void>&)>& done);

    Surroundings surroundings_;
    LibraryLink* library_ = nullptr;
    std::vector<std::shared_ptr<CancelFlag>> running_; ///< of the files to be written
    int lookedAt_ = 0;
    bool hasOwnSound_ = false; ///< the file of the movie on screen, or nobody knows yet
    std::shared_ptr<CancelFlag> listening_ = std::make_shared<CancelFlag>(false); ///< of the look into it
    // Last: each waits for its work before what that uses goes.
    WorkQueue looking_; ///< at a file that is linked
    WorkQueue hearing_; ///< whether the movie's own file has a sound
    WorkQueue writing_;
};

} // namespace daylark
