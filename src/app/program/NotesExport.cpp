#include "app/program/NotesExport.h"

#include "app/playlists/Library.h"
#include "base/work/WorkQueue.h"
#include "export/NotesDocument.h"
#include "platform/Alerts.h"
#include "platform/Panels.h"
#include "preferences/Preferences.h"

#include <QFile>

namespace daylark {

namespace {

const QString csvFormat = QStringLiteral("CSV (Comma Separated Values)");
const QString richTextFormat = QStringLiteral("RTF (Rich Text)");

/// Null for a setting that is no format.
QString extensionOfFormat(const QString& format) {
    if (format == csvFormat) return QStringLiteral("csv");
    if (format == richTextFormat) return QStringLiteral("rtf");
    return {};
}

QString notesFileName(const QString& playlistName, const QString& format) {
    const QString extension = extensionOfFormat(format);
    if (extension.isNull()) return {};
    QString name = playlistName;
    name.replace(QLatin1Char('/'), QLatin1Char(':')); // a name, not a path
    return name + QLatin1String("_notes.") + extension;
}

QString withExtensionOfFormat(const QString& name, const QString& format) {
    const qsizetype stop = name.lastIndexOf(QLatin1Char('.'));
    return (stop > 0 ? name.left(stop) : name) + QLatin1Char('.') + extensionOfFormat(format);
}

} // namespace

NotesOptions notesOptions(const Preferences& preferences) {
    NotesOptions options;
    options.printBookmarksInNotes = preferences.printBookmarksInNotes();
    options.hideFileExtensionInNotes = preferences.hideFileExtensionInNotes();
    options.notes1Title = preferences.notes1Title();
    options.notes2Title = preferences.notes2Title();
    options.flagLabel = [&preferences](const QString& code) { return preferences.statusName(code); };
    return options;
}

class NotesExport::Writer {
public:
    WorkQueue work;
};

NotesExport::NotesExport(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings)
    , writer_(std::make_unique<Writer>()) {}

NotesExport::~NotesExport() = default;

QStringList NotesExport::formatTitles() {
    return {csvFormat, richTextFormat};
}

void NotesExport::exportNotes(const Sender& sender) {
    Library& library = surroundings_.library;
    std::vector<std::shared_ptr<Movie>> movies;
    if (sender.title == QLatin1String("Export Movie Notes...")) movies = library.selectedMovies();
    if (sender.title == QLatin1String("Export Playlist Notes...")) movies = library.arrangedMovies();
    if (movies.empty()) {
        Alert alert;
        alert.message = QStringLiteral("No movies found to export");
        alert.buttons = QStringList{QStringLiteral("Okay")};
        alert.style = AlertStyle::informational;
        surroundings_.alerts.show(alert);
        return;
    }
    const QString path = askForPath();
    const QString format = surroundings_.preferences.notesExportFormat();
    if (!path.isEmpty() && format == csvFormat) {
        write(path, notesCsv(movies, notesOptions(surroundings_.preferences)));
    } else if (!path.isEmpty() && format == richTextFormat) {
        Alert alert;
        alert.message = QStringLiteral("Rich text notes can't be exported yet");
        alert.informativeText = QStringLiteral("Choose \"%1\" and try again").arg(csvFormat);
        alert.buttons = QStringList{QStringLiteral("Okay")};
        alert.style = AlertStyle::informational;
        surroundings_.alerts.show(alert);
    }
    library.setSort(QStringLiteral("sortOrder"), true);
}

QString NotesExport::askForPath() {
    Preferences& preferences = surroundings_.preferences;
    const auto playlist = surroundings_.library.selectedPlaylist();
    SavePanel panel;
    panel.title = QStringLiteral("Export Notes");
    panel.prompt = QStringLiteral("Save");
    panel.allowedTypes = QStringList{QStringLiteral("csv"), QStringLiteral("rtf")};
    panel.accessoryLabel = QStringLiteral("Format:");
    panel.accessoryTitles = formatTitles();
    panel.accessoryCurrent = preferences.notesExportFormat();
    panel.proposedName = notesFileName(playlist ? playlist->name : QString(), panel.accessoryCurrent);
    panel.accessoryChosen = [&preferences](const QString& title, const QString& name) {
        preferences.notesExportFormat.set(title);
        return withExtensionOfFormat(name, title);
    };
    return surroundings_.panels.runSave(panel);
}

void NotesExport::write(const QString& path, const QByteArray& bytes) {
    writer_->work.run([this, path, bytes] {
        QFile file(path); // written in place, not beside and renamed; wanted
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
            return;
        if (!file.flush()) return;
        file.close();
        WorkQueue::deliver(this, [this, path] { Q_EMIT exported(path); });
    });
}

} // namespace daylark
