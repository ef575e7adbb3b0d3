#include "app/program/ManifestExport.h"

#include "app/playlists/Library.h"
#include "app/program/ExportWriter.h"
#include "app/sessions/SessionFiles.h"
#include "export/notes/ExportTexts.h"
#include "export/notes/PlaylistManifest.h"
#include "platform/Panels.h"

namespace daylark {

ManifestExport::ManifestExport(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings) {}

void ManifestExport::exportPlaylistManifest() {
    const Library& library = surroundings_.library;
    const auto playlist = library.selectedPlaylist();
    if (!playlist) return;
    QStringList filenames;
    for (const auto& movie : library.arrangedMovies())
        filenames << movie->filenameString;
    const QByteArray bytes =
        playlistManifest(filenames, playlist->name, surroundings_.sessionFiles.windowTitle());
    SavePanel panel;
    panel.title = tr("Save As...");
    panel.prompt = tr("Save");
    panel.allowedTypes = QStringList{QStringLiteral("csv")};
    panel.proposedName = exportFileName(playlist->name, QStringLiteral("_manifest.csv"));
    const QString path = surroundings_.panels.runSave(panel);
    if (!path.isEmpty()) surroundings_.writer.write(tr("Manifest"), path, [bytes] { return bytes; });
}

} // namespace daylark
