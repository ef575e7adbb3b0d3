#pragma once

#include "export/NotesDocument.h"
#include "platform/Sender.h"

#include <QObject>
#include <QStringList>

#include <memory>

namespace daylark {

class Alerts;
class Library;
class Panels;
class Preferences;

/// What the preferences say about the notes export; looks flag labels up as long as `preferences` lives.
[[nodiscard]] NotesOptions notesOptions(const Preferences& preferences);

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
    [[nodiscard]] static QStringList formatTitles();

Q_SIGNALS:
    void exported(const QString& path); ///< the file has been written

private:
    QString askForPath();
    void write(const QString& path, const QByteArray& bytes);

    Surroundings surroundings_;
    class Writer;
    std::unique_ptr<Writer> writer_;
};

} // namespace daylark
