#include "app/program/NotesExport.h"

#include "app/playlists/Library.h"
#include "app/program/ExportWriter.h"
#include "export/notes/ExportTexts.h"
#include "platform/Alerts.h"
#include "platform/Panels.h"
#include "preferences/Preferences.h"

namespace daylark {

namespace {

QString withExtension(const QString& name, const QString& extension) {
    const qsizetype stop = name.lastIndexOf(QLatin1Char('.'));
    return (stop > 0 ? name.left(stop) : name) + QLatin1Char('.') + extension;
}

} // namespace

NotesExport::NotesExport(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings)
    , formats_(std::make_shared<const NotesFormats>()) {}

QString NotesExport::extensionOf(const QString& formatTitle) const {
    const NotesFormat* format = formats_->titled(formatTitle);
    return format ? format->extension() : QString();
}

QStringList NotesExport::formatTitles() {
    const NotesFormats formats;
    QStringList titles;
    for (const auto& format : formats.all())
        titles << format->title();
    return titles;
}

void NotesExport::exportNotes(const Sender& sender) {
    Library& library = surroundings_.library;
    std::vector<std::shared_ptr<Movie>> movies;
    if (sender.title == QLatin1String("Export Movie Notes...")) movies = library.selectedMovies();
    if (sender.title == QLatin1String("Export Playlist Notes...")) movies = library.arrangedMovies();
    if (movies.empty()) {
        Alert alert;
        alert.message = tr("No movies found to export");
        alert.buttons = QStringList{tr("Okay")};
        alert.style = AlertStyle::informational;
        surroundings_.alerts.show(alert);
        return;
    }
    const QString path = askForPath();
    const NotesFormat* format = formats_->titled(surroundings_.preferences.notesExportFormat());
    if (!path.isEmpty() && format) write(path, *format, movies); // a setting that is no format writes nothing
    library.setSort(QStringLiteral("sortOrder"), true);
}

QString NotesExport::askForPath() {
    const Preferences& preferences = surroundings_.preferences;
    const auto playlist = surroundings_.library.selectedPlaylist();
    SavePanel panel;
    panel.title = tr("Export Notes");
    panel.prompt = tr("Save");
    panel.allowedTypes = QStringList{QStringLiteral("csv"), QStringLiteral("rtf")};
    const QString extension = extensionOf(preferences.notesExportFormat());
    if (extension == QLatin1String("rtf")) panel.allowedTypes.swapItemsAt(0, 1); // what a name without one gets
    panel.accessoryLabel = tr("Format:");
    panel.accessoryTitles = formatTitles();
    panel.accessoryCurrent = preferences.notesExportFormat();
    if (!extension.isNull())
        panel.proposedName = exportFileName(playlist ? playlist->name : QString(), QLatin1String("_notes.") + extension);
    panel.accessoryChosen = [this](const QString& title, const QString& name) {
        surroundings_.preferences.notesExportFormat.set(title);
        return withExtension(name, extensionOf(title));
    };
    return surroundings_.panels.runSave(panel);
}

/// The order in which bookmarks were said becomes the movies' own: later exports and the viewer's table show
/// it.
void NotesExport::keepOrder(const NotesMovies& movies, BookmarkOrder order) {
    ReviewStore& store = surroundings_.library.store();
    const EditInfo info{tr("Order of Bookmarks")};
    const ReviewStore::Group together(store, info);
    for (const auto& movie : movies)
        store.setBookmarks(movie, bookmarksInOrder(*movie, order), info);
}

void NotesExport::write(const QString& path, const NotesFormat& format, const NotesMovies& movies) {
    const NotesReport report = notesReport(movies, surroundings_.preferences, format.bookmarkOrder());
    if (format.bookmarkOrderStays() && report.printsBookmarks) keepOrder(movies, format.bookmarkOrder());
    surroundings_.writer.write(tr("Notes"), path,
                               [report, formats = formats_, &format] {
                                   NotesReport whole = report;
                                   if (format.saysProductionNumbers()) readNumbersByTimecode(whole);
                                   return format.write(whole);
                               });
}

} // namespace daylark
