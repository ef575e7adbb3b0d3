#pragma once

#include "base/jobs/CancelFlag.h"
#include "base/jobs/WorkQueue.h"
#include "export/relink/MediaSearch.h"
#include "export/relink/RelinkReport.h"
#include "model/Playlist.h"
#include "review/Edit.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

namespace daylark {

class Alerts;
class FileStates;
class Library;
class Panels;
class Preferences;
class ProgressBoard;
class Thumbnails;

/// Links items to files again: one by hand, those missing under a folder that a person chooses, all of a folder by force, or
/// by itself under the folder of the preferences. Disks are workers'; what they found is put on the records here, as one
/// step that can be taken back (by itself: no step). Facts and thumbnails of linked items are read again, also when a step
/// is taken back. Interface thread.
class Relinking : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        Preferences& preferences;
        Alerts& alerts;
        Panels& panels;
        ProgressBoard& progress;
        FileStates& fileStates;
        Thumbnails& thumbnails;
    };
    using Movies = std::vector<std::shared_ptr<Movie>>;
    explicit Relinking(const Surroundings& surroundings, QObject* parent = nullptr);
    ~Relinking() override; ///< ends what is under way

    /// The selected item, to a file that a person chooses. Any picture of a run stands for the run.
    void linkMovieToFile();
    void autolinkSelectedPlaylists();  ///< what is missing in the selected lists
    void autolinkCurrentSession();     ///< and in all of them
    void forcelinkSelectedPlaylists(); ///< every item of the selected lists, missing or not
    void setAutoSearchPath();
    /// What is missing under the folder of the preferences, without a word. Nothing while one is under way.
    void autoLinkMissingMediaOnNewThread();

    /// A person's search is under way: another has to wait.
    [[nodiscard]] bool isBusy() const { return busy_; }
    [[nodiscard]] bool isSearchingByItself() const { return searchesByItself_; }
    [[nodiscard]] const RelinkReport& lastReport() const { return lastReport_; } ///< of a person's search

Q_SIGNALS:
    void busyChanged();  ///< a search of either kind began or ended
    void relinked(const std::vector<std::shared_ptr<daylark::Movie>>& movies); ///< their files are others now

private:
    enum class Scope { selected, session, forced, byItself };
    struct Search;
    void lookUnderFolder(Scope scope);
    void start(const std::shared_ptr<Search>& search);
    void finish(const std::shared_ptr<Search>& search, const std::optional<MediaSearchResult>& result);
    void report(Scope scope, const MediaSearchResult& result);
    void again(Scope scope);
    void link(const Movies& movies, const std::vector<MediaLink>& links, EditKind kind);
    void linkTo(const std::shared_ptr<Movie>& movie, const QString& path);
    void linkByHand(const std::weak_ptr<Movie>& movie, const MediaLink& made);
    void filesAreOthers(const Movies& movies);
    void followSteps(const Edit& edit);
    void statesAreFresh();
    void setBusy(bool busy);
    [[nodiscard]] std::vector<std::shared_ptr<Playlist>> playlistsOf(Scope scope) const;
    [[nodiscard]] bool anyMissing(Scope scope) const;
    [[nodiscard]] QString alertWithoutMissing(Scope scope) const;

    Surroundings surroundings_;
    bool busy_ = false, searchesByItself_ = false;
    bool waitsForStates_ = false; ///< a search of the selected lists begins with fresh states
    RelinkReport lastReport_;
    std::shared_ptr<CancelFlag> cancelled_, cancelledByItself_;
    WorkQueue work_, workByItself_{1, WorkQueue::Pace::background};
};

} // namespace daylark
