#pragma once

#include "app/sessions/TemporarySession.h"
#include "model/Session.h"
#include "review/Edit.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace daylark {

class Alerts;
class FailedWrites;
class Library;
class Panels;
class Preferences;

/// Save, Save As, Import, the temporary session, the current path and the window's title. Files are read and
/// written on a worker, one job at a time in order; the interface goes on. A write that fails leaves file and
/// memory as they were and is among the failed writes until the session is written, there or elsewhere.
/// Interface thread.
class SessionFiles : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        Preferences& preferences;
        Alerts& alerts;
        Panels& panels;
        FailedWrites& failedWrites;
        QString temporarySessionPath; ///< "<application support>/<login>_daylarkSession.dls"
    };
    explicit SessionFiles(const Surroundings& surroundings, QObject* parent = nullptr);
    ~SessionFiles() override; ///< waits for writes under way

    void saveSession();
    void saveSessionAs();
    void importSession();
    /// A copy of the whole session under a name of its own. The window and the title are called like it from then on, while a
    /// later Save still goes to the session's own file; wanted.
    void exportSessionAsReviewed();
    void exportSelectedPlaylistsAsSession(); ///< in their order; nothing changes here
    void dragSessionImport(const QString& path);
    void clearSession(); ///< every playlist goes, without a question; the current path is forgotten

    /// What outlives the program; see there. Does nothing before `temporarySessionLoaded`.
    void saveTempSession();
    void finishWriting(); ///< waits; for termination
    /// After `finishWriting`: whether what was edited is in memory alone, since nothing could be written.
    [[nodiscard]] bool isInMemoryAlone() const { return inMemoryAlone_; }
    /// Writes what the temporary session would hold into this folder, for want of its own place; the path. Waits.
    [[nodiscard]] Result<QString> rescueTo(const QString& folder);
    /// Reads on a worker; `temporarySessionLoaded` follows. Without `restore` the library stays empty.
    void loadTempSession(bool restore);
    [[nodiscard]] TemporarySession& temporarySession() { return temporary_; }

    [[nodiscard]] QString currentSessionPath() const { return currentSessionPath_; } ///< null when none
    void setCurrentSessionPath(const QString& path); ///< stores "Session Path" too
    /// The path of the last run, whose session was not restored: what it holds is not what stands here, so the first
    /// Save asks.
    void setPathOfOtherSession(const QString& path);
    void forgetCurrentSessionPath(); ///< what is stored stays until the temporary session is written
    [[nodiscard]] QString windowTitle() const { return title_; }
    void setSessionTitle(const QString& title); ///< stores "Session Title" and shows it
    [[nodiscard]] bool sessionIsModified() const { return modified_; }
    void setSessionIsModified(bool modified);

Q_SIGNALS:
    void temporarySessionLoaded(bool restored);
    void sessionImported(); ///< the conversions and the found-state refresh follow
    void bundleChosen(const QString& bundle); ///< to be imported is what is no session: a movie's bundle
    void bringToFront();
    void titleChanged(const QString& title);
    void pathChanged(const QString& path); ///< the current one's; null: none
    void modifiedChanged(bool modified);

private:
    struct WriteOutcome {
        bool folderExists = false, written = false;
        QString reason; ///< why it is not written
    };
    struct ReadOutcome {
        bool exists = false, readable = false;
        SessionContents contents;
    };
    void write(const QString& path, const SessionContents& contents, std::function<void(WriteOutcome)> then);
    void read(const QString& path, std::function<void(ReadOutcome)> then);
    void writeSession(const QString& path, std::function<void(WriteOutcome)> then);
    void tellOfSession(const QString& path, const WriteOutcome& outcome);
    void exportPlaylists(const QString& path, const std::vector<std::shared_ptr<Playlist>>& playlists);
    [[nodiscard]] QString askForPath(const QString& title, const QString& proposedName);
    void askAndSave();
    [[nodiscard]] bool mayWriteOverOtherSession(); ///< asks, or saves elsewhere
    void storeSessionPath();
    void startNextImport();
    void importContents(const QString& path, ReadOutcome outcome);
    void appendImported(const SessionContents& contents, EditKind kind);

    class Queue;
    Surroundings surroundings_;
    std::unique_ptr<Queue> queue_;
    QString currentSessionPath_, title_ = QStringLiteral("Untitled Session");
    QStringList imports_; ///< the first is under way
    QStringList unwritten_; ///< paths at which the session was to be, among the failed writes
    quint64 edits_ = 0;   ///< counts what was edited, to tell whether a save holds it
    bool modified_ = false;
    bool panelOpen_ = false;
    bool pathIsOfOtherSession_ = false;
    bool inMemoryAlone_ = false;
    TemporarySession temporary_;
};

} // namespace daylark
