#include "export/notes/NotesFormat.h"

#include <QStringList>

#include <algorithm>

namespace daylark {

namespace {

/// The notes as spreadsheets of today read them (RFC 4180): every field quoted and whole, a row a bookmark with the item's
/// own fields in each, a byte-order mark so that accents arrive. Where an item's frames have numbers of the production's,
/// they stand in two columns behind the others.
class Utf8CsvNotes : public NotesFormat {
public:
    [[nodiscard]] QString name() const override { return QStringLiteral("csv-utf8"); }
    [[nodiscard]] QString title() const override { return QStringLiteral("CSV (UTF-8, quoted)"); }
    [[nodiscard]] QString extension() const override { return QStringLiteral("csv"); }
    [[nodiscard]] BookmarkOrder bookmarkOrder() const override { return BookmarkOrder::byFirstTimecode; }
    [[nodiscard]] QByteArray write(const NotesReport& report) const override;
};

/// What a spreadsheet would take for a formula gets an apostrophe in front, which it shows as text.
QString harmless(const QString& field) {
    static const QString starts = QStringLiteral("=+-@\t\r\n");
    return !field.isEmpty() && starts.contains(field.front()) ? QLatin1Char('\'') + field : field;
}

QString quoted(QString field) {
    field = harmless(field.remove(QChar::Null)); // which no reader takes
    return QLatin1Char('"') + field.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

QString row(const QStringList& fields) {
    QStringList cells;
    cells.reserve(fields.size());
    for (const QString& field : fields)
        cells.append(quoted(field));
    return cells.join(QLatin1Char(',')) + QLatin1String("\r\n");
}

QStringList cellsOf(const NotesReport::Bookmark& bookmark) {
    return {bookmark.firstTC,
            bookmark.lastTC,
            QString::number(bookmark.firstFrame),
            QString::number(bookmark.lastFrame),
            bookmark.description,
            bookmark.note};
}

QStringList prodOf(const NotesReport::Bookmark& bookmark, const FrameNumbers& numbers) {
    if (!numbers.areOwn()) return {QString(), QString()};
    return {QString::number(numbers.numberOf(bookmark.firstFrame)), QString::number(numbers.numberOf(bookmark.lastFrame))};
}

QByteArray Utf8CsvNotes::write(const NotesReport& report) const {
    QStringList header{QStringLiteral("Filename"), report.notes1Title, report.notes2Title, QStringLiteral("Flag")};
    QStringList noBookmark;
    if (report.printsBookmarks) {
        header << QStringLiteral("Bookmark Timecode Start") << QStringLiteral("Bookmark Timecode End")
               << QStringLiteral("Bookmark First Frame") << QStringLiteral("Bookmark Last Frame")
               << QStringLiteral("Bookmark Description") << QStringLiteral("Bookmark Note");
        noBookmark.resize(6);
    }
    const bool withProd = report.printsBookmarks && std::any_of(report.items.begin(), report.items.end(), [](const auto& item) {
                              return item.numbers.areOwn();
                          });
    if (withProd) {
        header << QStringLiteral("Bookmark First Prod") << QStringLiteral("Bookmark Last Prod");
        noBookmark.resize(8);
    }
    QString text = QChar(QChar::ByteOrderMark) + row(header);
    for (const NotesReport::Item& item : report.items) {
        const QStringList own{item.shownName, item.notes.string(), item.notes2.string(), item.flag};
        for (const NotesReport::Bookmark& bookmark : item.bookmarks)
            text += row(own + cellsOf(bookmark) + (withProd ? prodOf(bookmark, item.numbers) : QStringList()));
        if (item.bookmarks.empty()) text += row(own + noBookmark);
    }
    return text.toUtf8();
}

} // namespace

std::unique_ptr<NotesFormat> utf8CsvNotesFormat() {
    return std::make_unique<Utf8CsvNotes>();
}

} // namespace daylark
