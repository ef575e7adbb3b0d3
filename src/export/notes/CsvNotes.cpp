#include "export/notes/ExportTexts.h"
#include "export/notes/NotesFormat.h"

#include <QStringList>

namespace daylark {

namespace {

/// Comma-separated text as spreadsheets of older productions read it: no field is quoted, commas go instead,
/// lines end in a carriage return. Its files are compared with those of other makers byte for byte, so every
/// oddity stays, and nothing is added: neither a run's whole name nor the production's frame numbers.
class CsvNotes : public NotesFormat {
public:
    [[nodiscard]] QString name() const override { return QStringLiteral("csv"); }
    [[nodiscard]] QString title() const override { return QStringLiteral("CSV (Comma Separated Values)"); }
    [[nodiscard]] QString extension() const override { return QStringLiteral("csv"); }
    [[nodiscard]] BookmarkOrder bookmarkOrder() const override { return BookmarkOrder::byFirstTimecode; }
    [[nodiscard]] bool bookmarkOrderStays() const override { return true; }
    [[nodiscard]] bool saysProductionNumbers() const override { return false; }
    [[nodiscard]] QByteArray write(const NotesReport& report) const override;
};

QString withoutCommas(QString text) {
    return text.remove(QLatin1Char(','));
}

QString plainNotes(const AttributedString& notes) {
    QString text = notes.string();
    return withoutCommas(text.replace(QLatin1Char('\n'), QLatin1String(". ")));
}

/// Commas vanish from names and notes, but become " -" here.
QString bookmarkText(QString text) {
    return text.replace(QLatin1Char(','), QLatin1String(" -"));
}

QString bookmarkBlock(const std::vector<NotesReport::Bookmark>& bookmarks) {
    QStringList rows;
    rows.reserve(qsizetype(bookmarks.size()));
    for (const NotesReport::Bookmark& bookmark : bookmarks) {
        const QStringList cells{bookmark.firstTC,
                                bookmark.lastTC,
                                QString::number(quint64(bookmark.firstFrame)),
                                QString::number(quint64(bookmark.lastFrame)),
                                bookmarkText(bookmark.description),
                                bookmarkText(bookmark.note)};
        rows.append(cells.join(QLatin1Char(',')));
    }
    // Further bookmarks stand under the bookmark columns.
    return rows.join(QLatin1String("\r,,,,"));
}

/// One movie's lines, each ended by a carriage return.
QString createCSVDataForMovie(const NotesReport::Item& item, bool printsBookmarks) {
    QStringList cells{withoutCommas(item.name), plainNotes(item.notes), plainNotes(item.notes2), item.flag};
    if (printsBookmarks) cells.append(bookmarkBlock(item.bookmarks));
    return cells.join(QLatin1Char(',')) + QLatin1Char('\r');
}

QByteArray CsvNotes::write(const NotesReport& report) const {
    QString text = QLatin1String("Filename,") + report.notes1Title + QLatin1Char(',') + report.notes2Title +
                   QLatin1String(",Flag");
    if (report.printsBookmarks)
        text += QLatin1String(
            ",Bookmark Timecode Start,Bookmark Timecode End,Bookmark First Frame,Bookmark Last Frame,"
            "Bookmark Description,Bookmark Note");
    text += QLatin1String("\r\r"); // an empty line stands under the header
    for (const NotesReport::Item& item : report.items)
        text += createCSVDataForMovie(item, report.printsBookmarks);
    return utf8CutToUnits(text);
}

} // namespace

std::unique_ptr<NotesFormat> csvNotesFormat() {
    return std::make_unique<CsvNotes>();
}

} // namespace daylark
