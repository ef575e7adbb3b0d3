#include "export/notes/PlaylistManifest.h"

#include "export/notes/ExportTexts.h"

namespace daylark {

QByteArray playlistManifest(const QStringList& filenames, const QString& playlistName, const QString& sessionName) {
    QString text = QStringLiteral("Review Order,Version Name,Playlist Name,Session Name\r");
    qsizetype place = 0;
    for (const QString& filename : filenames)
        text += QString::number(++place) + QLatin1Char(',') + nameWithoutExtension(filename) + QLatin1Char(',') +
                playlistName + QLatin1Char(',') + sessionName + QLatin1Char('\r');
    return utf8CutToUnits(text);
}

} // namespace daylark
