#pragma once

#include "export/notes/NotesFormat.h"
#include "platform/Sender.h"

#include <QObject>
#include <QStringList>

#include <memory>

namespace daylark {

class Alerts;
class Library;
class Panels;
class Preferences;

/// "Export Movie Notes..." and "Export Playlist Notes...": scope, dialog, document, file. Interface thread;
/// the file is written by a worker, and a failed write is not reported.
class NotesExport : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        Preferences& preferences;
        Alerts& alerts;
        Panels& panels;
    };
    explicit NotesExport(const Surroundings& surroundings, QObject* parent = nullptr);
    ~NotesExport() override; ///< waits for a write under way

    void exportNotes(const Sender& sender);
    [[nodiscard]] static QStringList formatTitles(); ///< as the save dialog offers them

Q_SIGNALS:
    void exported(const QString& path); ///< the file has been written

private:
    QString askForPath();
    void write(const QString& path, const NotesFormat& format, const NotesMovies& movies);
    void keepOrder(const NotesMovies& movies, BookmarkOrder order);
    [[nodiscard]] QString
    extensionOf(const QString& formatTitle) const; ///< null for a setting that is no format

    Surroundings surroundings_;
    NotesFormats formats_;
    class Writer;
    std::unique_ptr<Writer> writer_;
};

} // namespace daylark
