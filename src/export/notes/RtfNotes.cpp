#include "export/notes/NotesFormat.h"

#include <QStringList>

namespace daylark {

namespace {

/// A rich-text document: titles, each item under a heading, its notes with their own styling in the first notes' red and the
/// second's blue, its bookmarks in dark grey.
class RtfNotes : public NotesFormat {
public:
    [[nodiscard]] QString name() const override { return QStringLiteral("rtf"); }
    [[nodiscard]] QString title() const override { return QStringLiteral("RTF (Rich Text)"); }
    [[nodiscard]] QString extension() const override { return QStringLiteral("rtf"); }
    [[nodiscard]] QByteArray write(const NotesReport& report) const override;
};

constexpr double textSize = 12;
const QString textFamily = QStringLiteral("Helvetica");

/// Numbers in the document's colour table, which begins with the reader's own colour.
enum class Ink { none, red, blue, darkGrey };
constexpr auto colourTable =
    "{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue255;\\red85\\green85\\blue85;}\n";

void addUnit(QByteArray& out, QChar unit) {
    // Signed, with a question mark for readers that know none: spelt so, since some pass over the whole word behind it.
    out += "\\u" + QByteArray::number(qint16(unit.unicode())) + "\\'3f";
}

/// The text in the document's words. A character beyond the first plane is two units, as in the text itself; half a one is
/// nothing that a reader could show.
QByteArray escaped(const QString& text) {
    QByteArray out;
    out.reserve(text.size() + text.size() / 8);
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar unit = text[at];
        const bool pair = unit.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        if (pair) {
            addUnit(out, unit);
            addUnit(out, text[++at]);
        } else if (unit.isSurrogate()) {
            addUnit(out, QChar::ReplacementCharacter);
        } else if (unit == u'\r' || unit == u'\n' || unit == QChar::ParagraphSeparator) {
            if (unit == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n') ++at;
            out += "\\par\n";
        } else if (unit == QChar::LineSeparator) {
            out += "\\line ";
        } else if (unit == u'\t') {
            out += "\\tab ";
        } else if (unit == u'\\' || unit == u'{' || unit == u'}') {
            out += '\\';
            out += unit.toLatin1();
        } else if (unit.unicode() < 0x20 || unit == QChar::ObjectReplacementCharacter) {
            continue; // controls, and pictures that the notes can't hold
        } else if (unit.unicode() < 0x7f) {
            out += unit.toLatin1();
        } else {
            addUnit(out, unit);
        }
    }
    return out;
}

class RtfWriter {
public:
    void add(const QString& text, const TextAttributes& style, Ink ink = Ink::none) {
        if (text.isEmpty()) return;
        QByteArray words = "\\f" + QByteArray::number(fontNumber(style.fontFamily)) + "\\fs" +
                           QByteArray::number(qRound(2 * (style.pointSize > 0 ? style.pointSize : textSize)));
        if (style.bold) words += "\\b";
        if (style.italic) words += "\\i";
        if (style.underline) words += "\\ul";
        if (ink != Ink::none) words += "\\cf" + QByteArray::number(int(ink));
        body_ += '{' + words + ' ' + escaped(text) + '}';
    }
    /// With its own styles, but all of it in this colour.
    void add(const AttributedString& text, Ink ink) {
        qsizetype from = 0;
        for (const AttributedString::Run& run : text.runs()) {
            add(text.string().mid(from, run.length), run.attributes, ink);
            from += run.length;
        }
    }
    void separate(int times = 1) { body_ += QByteArray("\\par\n").repeated(times); }

    [[nodiscard]] QByteArray document() const {
        QByteArray fonts = "{\\fonttbl";
        for (qsizetype at = 0; at < families_.size(); ++at) {
            QString family = families_[at];
            fonts += "{\\f" + QByteArray::number(at) + (at == 0 ? "\\fswiss" : "\\fnil") + "\\fcharset0 " +
                     escaped(family.remove(QLatin1Char(';'))) + ";}";
        }
        return "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\n" + fonts + "}\n" + colourTable + "\\pard\\f0\\fs24 " + body_ +
               "}\n";
    }

private:
    qsizetype fontNumber(const QString& family) {
        if (family.isEmpty()) return 0;
        if (const qsizetype known = families_.indexOf(family); known >= 0) return known;
        families_.append(family);
        return families_.size() - 1;
    }

    QByteArray body_;
    QStringList families_{textFamily};
};

QString lineOf(const NotesReport::Bookmark& bookmark, const FrameNumbers& numbers) {
    QString line = bookmark.firstTC + QLatin1String(" - ") + bookmark.lastTC + QLatin1String("  :  ") +
                   QLatin1String("Frames ") + QString::number(bookmark.firstFrame) + QLatin1String(" - ") +
                   QString::number(bookmark.lastFrame);
    if (numbers.areOwn())
        line += QLatin1String("  :  Prod ") + QString::number(numbers.numberOf(bookmark.firstFrame)) + QLatin1String(" - ") +
                QString::number(numbers.numberOf(bookmark.lastFrame));
    if (!bookmark.description.isNull()) line += QLatin1String("  :  ") + bookmark.description;
    if (!bookmark.note.isNull()) line += QLatin1String("  :  (") + bookmark.note + QLatin1Char(')');
    return line;
}

void addItem(RtfWriter& rtf, const NotesReport::Item& item) {
    QString heading = item.shownName;
    heading.remove(QLatin1Char(','));
    if (!item.flag.isNull()) heading += QLatin1String("  -  ") + item.flag;
    TextAttributes headingStyle;
    headingStyle.bold = headingStyle.underline = true;
    headingStyle.pointSize = 12;
    rtf.add(heading, headingStyle);
    for (const auto& [notes, ink] : {std::pair(&item.notes, Ink::red), std::pair(&item.notes2, Ink::blue)}) {
        if (notes->length() == 0) continue;
        rtf.separate();
        rtf.add(*notes, ink);
    }
    rtf.separate();
    for (const NotesReport::Bookmark& bookmark : item.bookmarks) {
        rtf.add(lineOf(bookmark, item.numbers), {}, Ink::darkGrey);
        rtf.separate();
    }
    rtf.separate();
}

QByteArray RtfNotes::write(const NotesReport& report) const {
    RtfWriter rtf;
    TextAttributes titleStyle;
    titleStyle.bold = true;
    titleStyle.pointSize = 14;
    rtf.add(QStringLiteral("Notes"), titleStyle);
    rtf.separate();
    rtf.add(report.notes1Title, {}, Ink::red);
    rtf.separate();
    rtf.add(report.notes2Title, {}, Ink::blue);
    rtf.separate(3);
    for (const NotesReport::Item& item : report.items)
        addItem(rtf, item);
    return rtf.document();
}

} // namespace

std::unique_ptr<NotesFormat> rtfNotesFormat() {
    return std::make_unique<RtfNotes>();
}

} // namespace daylark
