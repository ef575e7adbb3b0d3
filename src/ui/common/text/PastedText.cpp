#include "ui/common/text/PastedText.h"

#include <QCoreApplication>
#include <QMimeData>
#include <QRegularExpression>
#include <QTextBlock>

#include <algorithm>

namespace daylark {

namespace {

constexpr qsizetype mostMarkUp = qsizetype(1) << 20; // units of mark-up that are read as such
constexpr qsizetype mostTags = 10'000;

QString tr(const char* text) {
    return QCoreApplication::translate("PastedText", text);
}

/// Tables become lines, since a nest of them takes for ever; what is no text goes. Counts the pictures.
QString simplified(QString html, int& pictures) {
    static const QRegularExpression picture(
        QStringLiteral("<(?:img|picture|svg|object|embed|video)\\b[^>]*>"), QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression table(QStringLiteral("<(/?)(?:table|thead|tbody|tfoot|tr|td|th|caption|ul|ol|li)\\b[^>]*>"),
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression other(QStringLiteral("<(?:link|base|meta|colgroup|col)\\b[^>]*>"),
                                          QRegularExpression::CaseInsensitiveOption);
    pictures += int(html.count(picture));
    return html.remove(picture).remove(other).replace(table, QStringLiteral("<\\1div>"));
}

TextAttributes emphasisOf(const QTextCharFormat& format) {
    TextAttributes kept;
    kept.bold = format.hasProperty(QTextFormat::FontWeight) && format.fontWeight() >= QFont::DemiBold;
    kept.italic = format.fontItalic();
    kept.underline = format.fontUnderline();
    return kept;
}

AttributedString readMarkUp(const QString& html, int& pictures) {
    ClosedDocument document;
    document.setUndoRedoEnabled(false);
    document.setHtml(simplified(html, pictures));
    AttributedString text;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.position() > 0) text.append(QStringLiteral("\n"), emphasisOf(block.charFormat()));
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            QString piece = at.fragment().text();
            text.append(piece.remove(QChar::ObjectReplacementCharacter), emphasisOf(at.fragment().charFormat()));
        }
    }
    return text;
}

/// Its beginning, not in the middle of a character of two units.
AttributedString beginningOf(const AttributedString& text, qsizetype most) {
    if (most > 0 && text.string()[most - 1].isHighSurrogate()) --most;
    AttributedString kept;
    qsizetype from = 0;
    for (const AttributedString::Run& run : text.runs()) {
        if (from >= most) break;
        kept.append(text.string().mid(from, std::min(run.length, most - from)), run.attributes);
        from += run.length;
    }
    return kept;
}

} // namespace

PastedText PastedText::from(const QMimeData& source, qsizetype most) {
    PastedText pasted;
    const QString html = source.hasHtml() ? source.html() : QString();
    const bool isReadable = !html.isEmpty() && html.size() <= mostMarkUp && html.count(u'<') <= mostTags;
    if (isReadable)
        pasted.text = readMarkUp(html, pasted.pictures);
    else
        pasted.text = AttributedString(source.text().left(most + 1));
    if (source.hasImage() && pasted.pictures == 0) pasted.pictures = 1;
    if (pasted.text.length() > most) {
        pasted.text = beginningOf(pasted.text, most);
        pasted.isCut = true;
    }
    return pasted;
}

QString PastedText::leftOut() const {
    QStringList words;
    if (pictures == 1) words << tr("A picture was left out: notes hold text");
    if (pictures > 1) words << tr("%1 pictures were left out: notes hold text").arg(pictures);
    if (isCut) words << tr("The text was cut: it is longer than notes can take at once");
    return words.join(QStringLiteral(". "));
}

} // namespace daylark
