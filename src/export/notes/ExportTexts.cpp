#include "export/notes/ExportTexts.h"

namespace daylark {

QString nameWithoutExtension(const QString& name) {
    const qsizetype stop = name.lastIndexOf(QLatin1Char('.'));
    return stop > 0 && stop < name.size() - 1 ? name.left(stop) : name;
}

QString exportFileName(const QString& listName, const QString& ending) {
    QString name = listName;
    return name.replace(QLatin1Char('/'), QLatin1Char(':')) + ending;
}

QByteArray utf8CutToUnits(const QString& text) {
    return text.toUtf8().left(text.size());
}

} // namespace daylark
