#pragma once

#include "model/Session.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace daylark {

class Alerts;
class Library;
class Panels;
class ReviewEdits;
class UserDefaults;

/// Save, Save As, Import, the temporary session, the current path and the window's title. Files are read and written on a
/// worker, one job at a time in order; the interface goes on. A write that fails leaves file and memory as they were and is
/// not reported. Interface thread.
class SessionFiles : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        UserDefaults& defaults;
        Alerts& alerts;
        Panels& panels;
        QString temporarySessionPath; ///< "<application support>/<login>_daylarkSession.dls"
    };
    explicit SessionFiles(const Surroundings& surroundings, QObject* parent = nullptr);
    ~SessionFiles() override; ///< waits for writes under way

    void saveSession();
    void saveSessionAs();
    void importSession();
    void dragSessionImport(const QString& path);
    void clearSession(); ///< every playlist goes, without a question; the current path is forgotten

    void saveTempSession();
    void finishWriting();    ///< waits; for termination
    void loadTempSession();  ///< reads on a worker; `temporarySessionLoaded` follows

    [[nodiscard]] QString currentSessionPath() const { return currentSessionPath_; } ///< null when none
    void setCurrentSessionPath(const QString& path); ///< stores "Session Path" too
    [[nodiscard]] QString windowTitle() const { return title_; }
    void setSessionTitle(const QString& title);      ///< stores "Session Title" and shows it
    [[nodiscard]] bool sessionIsModified() const { return modified_; }
    void setSessionIsModified(bool modified);

Q_SIGNALS:
    void temporarySessionLoaded();
    void sessionImported();      ///< the conversions and the found-state refresh follow
    void bringToFront();
    void titleChanged(const QString& title);
    void modifiedChanged(bool modified);

private:
    void write(const QString& path, const SessionContents& contents);
    void read(const QString& path, std::function<void(Result<SessionContents>)> then);
    void appendImported(SessionContents contents);

    class Queue;
    Surroundings surroundings_;
    std::unique_ptr<Queue> queue_;
    QString currentSessionPath_, title_;
    bool modified_ = false;
};

} // namespace daylark
