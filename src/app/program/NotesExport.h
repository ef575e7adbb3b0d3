#pragma once

#include "export/notes/NotesFormat.h"
#include "platform/Sender.h"

#include <QObject>
#include <QStringList>

#include <memory>

namespace daylark {

class Alerts;
class ExportWriter;
class Library;
class Panels;
class Preferences;

/// "Export Movie Notes..." and "Export Playlist Notes...": scope, dialog, document, file. Interface thread;
/// the file is the writer's, and a failed write raises no alert.
class NotesExport : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        Preferences& preferences;
        Alerts& alerts;
        Panels& panels;
        ExportWriter& writer;
    };
    explicit NotesExport(const Surroundings& surroundings, QObject* parent = nullptr);

    void exportNotes(const Sender& sender);
    [[nodiscard]] static QStringList formatTitles(); ///< as the save dialog offers them

private:
    QString askForPath();
    void write(const QString& path, const NotesFormat& format, const NotesMovies& movies);
    void keepOrder(const NotesMovies& movies, BookmarkOrder order);
    [[nodiscard]] QString
    extensionOf(const QString& formatTitle) const; ///< null for a setting that is no format

    Surroundings surroundings_;
    std::shared_ptr<const NotesFormats> formats_; ///< the writer's jobs hold them too
};

} // namespace daylark
