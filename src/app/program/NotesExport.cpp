#include "app/program/NotesExport.h"

#include "app/playlists/Library.h"
#include "base/jobs/WorkQueue.h"
#include "platform/Alerts.h"
#include "platform/Panels.h"
#include "preferences/Preferences.h"

#include <QFile>

namespace daylark {

namespace {

// Offered since every version knows it by this title; nothing writes it yet.
const QString richTextFormat = QStringLiteral("RTF (Rich Text)");

QString notesFileName(const QString& playlistName, const QString& extension) {
    if (extension.isNull()) return {};
    QString name = playlistName;
    name.replace(QLatin1Char('/'), QLatin1Char(':')); // a name, not a path
    return name + QLatin1String("_notes.") + extension;
}

QString withExtension(const QString& name, const QString& extension) {
    const qsizetype stop = name.lastIndexOf(QLatin1Char('.'));
    return (stop > 0 ? name.left(stop) : name) + QLatin1Char('.') + extension;
}

} // namespace

class NotesExport::Writer {
public:
    WorkQueue work;
};

NotesExport::NotesExport(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings)
    , writer_(std::make_unique<Writer>()) {}

NotesExport::~NotesExport() = default;

QString NotesExport::extensionOf(const QString& formatTitle) const {
    if (const NotesFormat* format = formats_.titled(formatTitle)) return format->extension();
    return formatTitle == richTextFormat ? QStringLiteral("rtf") : QString();
}

QStringList NotesExport::formatTitles() {
    const NotesFormats formats;
    QStringList titles;
    for (const auto& format : formats.all())
        titles << format->title();
    return titles << richTextFormat;
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
    const QString chosen = surroundings_.preferences.notesExportFormat();
    if (const NotesFormat* format = formats_.titled(chosen); !path.isEmpty() && format) {
        write(path, *format, movies);
    } else if (!path.isEmpty() && chosen == richTextFormat) {
        Alert alert;
        alert.message = tr("Rich text notes can't be exported yet");
        alert.informativeText =
            tr("Choose \"%1\" and try again").arg(formats_.all().front()->title());
        alert.buttons = QStringList{tr("Okay")};
        alert.style = AlertStyle::informational;
        surroundings_.alerts.show(alert);
    }
    library.setSort(QStringLiteral("sortOrder"), true);
}

QString NotesExport::askForPath() {
    const Preferences& preferences = surroundings_.preferences;
    const auto playlist = surroundings_.library.selectedPlaylist();
    SavePanel panel;
    panel.title = tr("Export Notes");
    panel.prompt = tr("Save");
    panel.allowedTypes = QStringList{QStringLiteral("csv"), QStringLiteral("rtf")};
    panel.accessoryLabel = tr("Format:");
    panel.accessoryTitles = formatTitles();
    panel.accessoryCurrent = preferences.notesExportFormat();
    panel.proposedName =
        notesFileName(playlist ? playlist->name : QString(), extensionOf(panel.accessoryCurrent));
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
    const EditInfo info{tr("Order of Bookmarks"), EditKind::background};
    const ReviewStore::Group together(store, info);
    for (const auto& movie : movies)
        store.setBookmarks(movie, bookmarksInOrder(*movie, order), info);
}

void NotesExport::write(const QString& path, const NotesFormat& format, const NotesMovies& movies) {
    const NotesReport report = notesReport(movies, surroundings_.preferences, format.bookmarkOrder());
    if (format.bookmarkOrderStays() && report.printsBookmarks) keepOrder(movies, format.bookmarkOrder());
    writer_->work.run([this, path, report, &format] {
        const QByteArray bytes = format.write(report);
        // Written in place, not beside and renamed: whatever watches the file sees it grow, as it always did.
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
            return;
        if (!file.flush()) return;
        file.close();
        WorkQueue::deliver(this, [this, path] { Q_EMIT exported(path); });
    });
}

} // namespace daylark
