#pragma once

#include "base/jobs/WorkQueue.h"
#include "media/facts/MovieProbe.h"
#include "model/Movie.h"
#include "review/ReviewEdits.h"
#include "platform/Sender.h"
#include "viewer/CurrentMovie.h"
#include "viewer/ViewerInput.h"
#include "viewer/display/PixelReadOut.h"
#include "viewer/display/Snapshots.h"
#include "viewer/display/ViewerColour.h"
#include "viewer/display/ViewerGeometry.h"
#include "viewer/display/ViewerPanels.h"
#include "viewer/display/ViewerScene.h"
#include "viewer/display/ViewerScopes.h"
#include "viewer/review/DrawingTools.h"
#include "viewer/review/DrawingVisibility.h"
#include "viewer/review/FrameDrawings.h"
#include "viewer/review/ViewerBookmarks.h"
#include "viewer/review/ViewerGrade.h"
#include "viewer/review/ViewerList.h"
#include "viewer/sound/MovieAudio.h"
#include "viewer/transport/NeighbourMovies.h"
#include "viewer/transport/PlaybackRange.h"
#include "viewer/transport/TimeDisplay.h"
#include "viewer/transport/Transport.h"
#include "viewer/transport/ViewerRun.h"

#include <QColor>
#include <QObject>
#include <QTimer>

#include <memory>

namespace daylark {

class Alerts;
class FailedWrites;
class FileBrowser;
class LibraryLink;
class Panels;
class Pasteboard;
class Player;
class Preferences;

/// The viewer: a thin owner of its parts, which do the work. There is one for the program's life; its window
/// is a view that renders the parts' state. Interface thread.
class MoviePlayerController : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Preferences& preferences;
        Alerts& alerts;
        Pasteboard& pasteboard;
        FileBrowser& fileBrowser;
        ReviewEdits& edits;
        Player& player;
        Panels& panels;
        FailedWrites& failedWrites;
    };
    explicit MoviePlayerController(const Surroundings& surroundings, QObject* parent = nullptr);
    ~MoviePlayerController() override; ///< ends a probing under way and waits for it (a second at most)

    void setLibrary(LibraryLink* library); ///< before the first `open`

    /// Shows the window on these movies at this position.
    void open(std::vector<std::shared_ptr<Movie>> movies, qsizetype selectionIndex);
    [[nodiscard]] bool isOpen() const { return open_; }
    /// There is a movie on screen that can be played, as far as is known; while it is being opened, too.
    [[nodiscard]] bool isPlayable() const {
        return current_.state() == CurrentMovie::State::opening || current_.state() == CurrentMovie::State::shown;
    }
    [[nodiscard]] bool windowShouldClose(); ///< stores where the movie was left; always true
    void close(); ///< after `windowShouldClose`; saves the temporary session, library to the front

    [[nodiscard]] ViewerList& list() { return list_; }
    [[nodiscard]] Transport& transport() { return transport_; }
    [[nodiscard]] TimeDisplay& time() { return time_; }
    [[nodiscard]] PlaybackRange& range() { return range_; }
    [[nodiscard]] ViewerBookmarks& bookmarks() { return bookmarks_; }
    [[nodiscard]] ViewerPanels& panels() { return panels_; }
    [[nodiscard]] DrawingTools& drawingTools() { return tools_; }
    [[nodiscard]] DrawingVisibility& drawingVisibility() { return visibility_; }
    [[nodiscard]] FrameDrawings& drawings() { return drawings_; }
    [[nodiscard]] ViewerGrade& grade() { return grade_; }
    [[nodiscard]] ViewerGeometry& geometry() { return geometry_; }
    [[nodiscard]] ViewerColour& colour() { return colour_; }
    [[nodiscard]] ViewerScene& scene() { return scene_; }
    [[nodiscard]] PixelReadOut& pixels() { return pixels_; }
    [[nodiscard]] ViewerScopes& scopes() { return scopes_; }
    [[nodiscard]] ViewerRun& run() { return run_; }
    [[nodiscard]] Snapshots& snapshots() { return snapshots_; }
    [[nodiscard]] MovieAudio& audio() { return audio_; }
    [[nodiscard]] ViewerInput& input() { return input_; }
    [[nodiscard]] Player& player() { return surroundings_.player; }
    [[nodiscard]] ReviewEdits& edits() { return surroundings_.edits; }
    [[nodiscard]] Preferences& preferences() { return surroundings_.preferences; }
    [[nodiscard]] Panels& panelsOfDesktop() { return surroundings_.panels; }
    [[nodiscard]] FailedWrites& failedWrites() { return surroundings_.failedWrites; }
    [[nodiscard]] std::shared_ptr<Movie> currentMovie() const { return current_.movie(); }

    /// Their files are others now: one on screen is opened anew, at the frame where it stands.
    void followFiles(const std::vector<std::shared_ptr<daylark::Movie>>& movies);
    void displayCurrentMovie(); ///< shows the movie now selected in the list
    // On every movie selected in the list.
    void setFlagImage(const Sender& sender); ///< the tag's flag
    void revealInFinder();
    void copyPath(); ///< one a line
    void copyFilename();
    void copyTimecode(); ///< does nothing
    void updateMovieIcons();
    void followMovieSound(); ///< after the record's sound has changed; at the latest `updateGUI` sees it
    void updateGUI();        ///< once a second

    /// Colours of the drawing tool and of the texts over the picture; from the preferences, written back at
    /// `close`.
    [[nodiscard]] QColor brushColour() const { return tools_.brushColour(); }
    void setBrushColour(const QColor& colour) { tools_.setBrushColour(colour); }
    [[nodiscard]] QColor onscreenTextColour() const { return onscreenTextColour_; }
    void setOnscreenTextColour(const QColor& colour);

Q_SIGNALS:
    void windowOpened(); ///< show the window, bring it to the front
    void windowClosed(); ///< hide the window and its panels
    void movieShown();   ///< another movie is on screen (or none)
    void movieLoading(bool loading);
    void onscreenTextColourChanged();
    void
    movieProbed(const std::shared_ptr<daylark::Movie>& movie); ///< the record's properties were read anew

private:
    void movieOpened();
    void movieOpenFailed(const QString& reason);
    void leaveCurrentMovie();
    void openCurrentMovie();
    [[nodiscard]] QString mediaOf(const Movie& movie) const; ///< what opens it
    void storeLastFrameVisited();
    void showPlace(const ReviewPlace& place);
    void firstPictureShown();
    void renewRun(const std::vector<qint64>& frames);
    void runRenewed();
    void loadTimeCodeData();
    void leaveTimecode();
    [[nodiscard]] QString selectedTexts(QString Movie::*field) const; ///< one a line
    void probed(const std::weak_ptr<Movie>& movie, const Result<ProbeResult>& result);

    Surroundings surroundings_;
    LibraryLink* library_ = nullptr;
    ViewerList list_;
    CurrentMovie current_; ///< before the parts, which hear of another movie in this order
    Transport transport_;
    TimeDisplay time_;
    PlaybackRange range_;
    ViewerBookmarks bookmarks_;
    ViewerPanels panels_;
    DrawingTools tools_;
    DrawingVisibility visibility_;
    FrameDrawings drawings_;
    ViewerGrade grade_;
    ViewerGeometry geometry_;
    ViewerColour colour_;
    ViewerScene scene_;
    PixelReadOut pixels_;
    ViewerScopes scopes_;
    Snapshots snapshots_;
    MovieAudio audio_;
    ViewerInput input_;
    ViewerRun run_;
    NeighbourMovies neighbours_;
    QTimer timer_;
    StartPosition::Previous previous_; ///< where the movie before stood
    qint64 frameOfStep_ = -1; ///< to show once the movie of a step stands
    bool open_ = false;
    quint64 opening_ = 0; ///< counts the movies shown, so that a late answer is told from the newest one
    bool probeDue_ = false; ///< the movie's properties are read once its first picture stands
    QColor onscreenTextColour_;
    CancelFlag probeCancel_ = false;
    std::shared_ptr<CancelFlag> timecodeCancel_; ///< of the reading for the movie on screen
    // Last: each waits for its work before what that uses goes.
    WorkQueue timecodeWork_; ///< not behind a probing, which may take long
    WorkQueue probeWork_;
    WorkQueue fileWork_; ///< looks where a movie's file is
};

} // namespace daylark
