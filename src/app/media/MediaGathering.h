#pragma once

#include "app/program/PartJobs.h"
#include "export/media/GatheredMedia.h"
#include "platform/Sender.h"

#include <QObject>

namespace daylark {

class Alerts;
class FailedWrites;
class Library;
class Panels;
class Preferences;

/// "Gather Selected Media..." and its like: copies movies' files into one folder. The session isn't changed: the movies keep
/// the files that they had. The list is the one of the moment in which it was asked for; copies are a worker's, one gathering
/// after the other. What fails is among the failed writes. Interface thread.
class MediaGathering : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        Preferences& preferences;
        Alerts& alerts;
        Panels& panels;
        ProgressBoard& progress;
        FailedWrites& failedWrites;
    };
    explicit MediaGathering(const Surroundings& surroundings, QObject* parent = nullptr);

    /// The sender's title tells selected movies from selected playlists; other titles, nothing.
    void gatherMediaFiles(const Sender& sender);
    void gatherSelectedFiles();

    void copySelectedFilesToURL(const QString& folder);
    void copyPlaylistFilesToURL(const QString& folder); ///< says when it is done

    [[nodiscard]] bool isBusy() const { return jobs_.isBusy(); }

private:
    enum class Scope { selected, playlists };
    using Sources = std::vector<GatherSource>;
    void copy(Scope scope, const Sources& sources, const QString& folder, bool again);
    void say(int job, Scope scope, size_t done, size_t count);
    void ended(int job, Scope scope, const Sources& sources, const QString& folder, const GatherReport& report, bool again);
    [[nodiscard]] QString askForFolder();

    Surroundings surroundings_;
    std::map<int, QString> bytes_; ///< what is said of a job's bytes
    PartJobs jobs_;
};

} // namespace daylark
