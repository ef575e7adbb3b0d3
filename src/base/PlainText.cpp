#include "base/PlainText.h"

namespace daylark::plain {

namespace {

constexpr QChar ellipsis(0x2026);
constexpr qsizetype widestToolTip = 100; // characters; more of them are wrapped

/// Its beginning, not in the middle of a character of two units.
QString beginning(const QString& text, qsizetype most) {
    if (text.size() <= most) return text;
    if (most > 0 && text[most - 1].isHighSurrogate()) --most;
    return text.left(most) + ellipsis;
}

bool isLineEnd(QChar character) {
    return character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

/// Besides control characters those that turn the direction of what follows them, beyond the text's own end.
bool isUnseen(QChar character) {
    const ushort code = character.unicode();
    return character.category() == QChar::Other_Control || (code >= 0x202A && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

QString seen(QString text, bool keepsLines) {
    for (QChar& character : text) {
        if (keepsLines && isLineEnd(character))
            character = u'\n';
        else if (isLineEnd(character) || isUnseen(character))
            character = u' ';
    }
    return text;
}

} // namespace

QString line(const QString& text, qsizetype most) {
    return seen(beginning(text, most), false);
}

QString paragraph(const QString& text, qsizetype most) {
    QString shown = beginning(text, most);
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    shown = seen(shown, true);
    qsizetype at = -1;
    for (int lines = 0; lines < paragraphLines; ++lines) {
        at = shown.indexOf(u'\n', at + 1);
        if (at < 0) return shown;
    }
    return shown.left(at) + ellipsis;
}

QString markUp(const QString& text) {
    return paragraph(text).toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
}

QString toolTip(const QString& text) {
    const QString shown = paragraph(text);
    const bool looksPlain = !shown.contains(u'<') && !shown.contains(u'&');
    return looksPlain && shown.size() <= widestToolTip ? shown : QStringLiteral("<qt>%1</qt>").arg(markUp(text));
}

QString menuTitle(const QString& text) {
    return line(text).replace(u'&', QStringLiteral("&&"));
}

QString windowTitle(const QString& text) {
    return line(text).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

} // namespace daylark::plain
