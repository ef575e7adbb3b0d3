#pragma once

#include "export/media/GatheredMedia.h"
#include "platform/Sender.h"

#include <QObject>

#include <memory>

namespace daylark {

class Alerts;
class FailedWrites;
class Library;
class Panels;
class Preferences;
class ProgressBoard;

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
    ~MediaGathering() override; ///< ends what is under way

    /// The sender's title tells selected movies from selected playlists; other titles, nothing.
    void gatherMediaFiles(const Sender& sender);
    void gatherSelectedFiles();

    void copySelectedFilesToURL(const QString& folder);
    void copyPlaylistFilesToURL(const QString& folder); ///< says when it is done

    [[nodiscard]] bool isBusy() const;

private:
    enum class Scope { selected, playlists };
    using Sources = std::vector<GatherSource>;
    void copy(Scope scope, const Sources& sources, const QString& folder, bool again);
    void say(int job, Scope scope, size_t done, size_t count);
    void ended(int job, Scope scope, const Sources& sources, const QString& folder, const GatherReport& report, bool again);
    [[nodiscard]] QString askForFolder();

    class Worker;
    Surroundings surroundings_;
    std::unique_ptr<Worker> worker_;
};

} // namespace daylark
