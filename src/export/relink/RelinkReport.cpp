#include "export/relink/RelinkReport.h"

namespace daylark {

QString RelinkReport::title() const {
    if (found == 0) return tr("No Files Found");
    return allFound() ? tr("All Files Found") : tr("Some Files Found");
}

QString RelinkReport::text() const {
    if (found == 0) return tr("No matching files were found in this location.");
    const auto counted = [](qint64 count, const QString& words) {
        return QString::number(count) + QLatin1Char(' ') + words;
    };
    const QString linked = counted(found, found == 1 ? tr("matching file has been relinked.")
                                                     : tr("matching files have been relinked."));
    if (allFound()) return linked;
    return linked + QLatin1String("  ") +
           counted(missing - found, missing - found == 1 ? tr("file was not found.") : tr("files were not found."));
}

} // namespace daylark
