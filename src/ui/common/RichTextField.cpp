#include "ui/common/RichTextField.h"

#include "base/PlainText.h"
#include "ui/common/Theme.h"
#include "ui/common/text/PastedText.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <utility>

namespace daylark {

namespace {

/// On a block: the characters that separated it from the block before, when they were not a line feed.
constexpr int separatorProperty = QTextFormat::UserProperty + 1;
/// On a character: its colour, when another is shown in its place.
constexpr int colourProperty = QTextFormat::UserProperty + 2;

bool isReadable(const QColor& colour) {
    return 0.2126 * colour.redF() + 0.7152 * colour.greenF() + 0.0722 * colour.blueF() >= 0.32;
}

QColor readable(const QColor& colour) {
    if (isReadable(colour)) return colour;
    if (colour.hslSaturationF() < 0.1F) return theme::text;
    return QColor::fromHslF(colour.hslHueF(), colour.hslSaturationF(), 0.7F);
}

void applyColour(QTextCharFormat& format, const QColor& colour) {
    format.clearForeground();
    format.clearProperty(colourProperty);
    if (!colour.isValid()) return;
    format.setForeground(readable(colour));
    format.setProperty(colourProperty, colour);
}

QTextCharFormat formatOf(const TextAttributes& attributes) {
    QTextCharFormat format;
    if (attributes.bold) format.setFontWeight(QFont::Bold);
    if (attributes.italic) format.setFontItalic(true);
    if (attributes.underline) format.setFontUnderline(true);
    if (!attributes.fontFamily.isNull()) format.setFontFamilies({attributes.fontFamily});
    if (attributes.pointSize > 0) format.setFontPointSize(attributes.pointSize);
    applyColour(format, attributes.colour);
    return format;
}

TextAttributes attributesOf(const QTextCharFormat& format) {
    TextAttributes attributes;
    attributes.bold = format.hasProperty(QTextFormat::FontWeight) && format.fontWeight() >= QFont::DemiBold;
    attributes.italic = format.fontItalic();
    attributes.underline = format.fontUnderline();
    const QStringList families = format.fontFamilies().toStringList();
    if (!families.isEmpty()) attributes.fontFamily = families.first();
    if (format.hasProperty(QTextFormat::FontPointSize)) attributes.pointSize = format.fontPointSize();
    if (format.hasProperty(colourProperty))
        attributes.colour = format.property(colourProperty).value<QColor>();
    else if (format.hasProperty(QTextFormat::ForegroundBrush))
        attributes.colour = format.foreground().color();
    return attributes;
}

/// How many characters from `at` part two lines: "\r\n" is one separator.
qsizetype separatorLength(QStringView text, qsizetype at) {
    if (text[at] == u'\r') return at + 1 < text.size() && text[at + 1] == u'\n' ? 2 : 1;
    return text[at] == u'\n' || text[at] == QChar::ParagraphSeparator ? 1 : 0;
}

void insertRun(QTextCursor& cursor, const QString& run, const QTextCharFormat& format) {
    qsizetype from = 0;
    for (qsizetype at = 0; at <= run.size(); ++at) {
        const qsizetype length = at < run.size() ? separatorLength(run, at) : 0;
        if (at < run.size() && length == 0) continue;
        if (at > from) cursor.insertText(run.mid(from, at - from), format);
        if (at == run.size()) break;
        QTextBlockFormat block;
        if (const QString separator = run.mid(at, length); separator != QLatin1String("\n"))
            block.setProperty(separatorProperty, separator);
        cursor.insertBlock(block, format);
        at += length - 1;
        from = at + 1;
    }
}

void insertAttributed(QTextCursor& cursor, const AttributedString& text) {
    qsizetype from = 0;
    for (const AttributedString::Run& run : text.runs()) {
        insertRun(cursor, text.string().mid(from, run.length), formatOf(run.attributes));
        from += run.length;
    }
}

AttributedString attributedFrom(const QTextDocument& document) {
    AttributedString text;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.position() > 0) {
            const QVariant separator = block.blockFormat().property(separatorProperty);
            text.append(separator.isValid() ? separator.toString() : QStringLiteral("\n"),
                        attributesOf(block.charFormat()));
        }
        for (auto at = block.begin(); !at.atEnd(); ++at)
            text.append(at.fragment().text(), attributesOf(at.fragment().charFormat()));
    }
    return text;
}

/// What is laid out without being felt.
constexpr qsizetype shownOfTooLong = 2'000;
constexpr qsizetype mostUnits = 200'000, mostPieces = 5'000, mostLines = 10'000;

bool isTooLong(const AttributedString& text) {
    return text.length() > mostUnits || qsizetype(text.runs().size()) > mostPieces ||
           std::count_if(text.string().begin(), text.string().end(), [](QChar c) {
               return c == u'\n' || c == u'\r' || c == QChar::ParagraphSeparator;
           }) > mostLines;
}

} // namespace

RichTextField::RichTextField(QWidget* parent)
    : QTextEdit(parent) {
    setTabChangesFocus(true);
    setDocument(new ClosedDocument(this));
    setUndoRedoEnabled(false); // one history over everything: the window's
    connect(document(), &QTextDocument::contentsChange, this, [this] {
        if (loading_) return;
        say({});
        Q_EMIT edited();
    });
}

void RichTextField::setAttributed(const AttributedString& text) {
    loading_ = true;
    document()->clear();
    QTextCursor cursor(document());
    cursor.setCharFormat({});
    whole_.reset();
    if (isTooLong(text)) {
        whole_ = text;
        insertAttributed(cursor, AttributedString(plain::paragraph(text.string(), shownOfTooLong)));
    } else {
        insertAttributed(cursor, text);
    }
    setReadOnly(whole_.has_value());
    moveCursor(whole_ ? QTextCursor::Start : QTextCursor::End);
    loading_ = false;
    say(whole_ ? tr("This text is too long to be shown: its beginning, to be read only") : QString());
}

AttributedString RichTextField::attributed() const {
    return whole_ ? *whole_ : attributedFrom(*document());
}

void RichTextField::say(const QString& words) {
    if (std::exchange(said_, words) != words) Q_EMIT said(words);
}

QVariant RichTextField::loadResource(int, const QUrl&) {
    return {};
}

void RichTextField::toggleBold() {
    setFontWeight(fontWeight() >= QFont::DemiBold ? QFont::Normal : QFont::Bold);
}

void RichTextField::toggleItalic() {
    setFontItalic(!fontItalic());
}

void RichTextField::toggleUnderline() {
    setFontUnderline(!fontUnderline());
}

void RichTextField::setColour(const QColor& colour) {
    QTextCursor cursor = textCursor();
    // Piece by piece, because taking a colour off cannot be merged into other styles.
    const int from = cursor.selectionStart(), to = cursor.selectionEnd();
    cursor.beginEditBlock();
    for (int at = from; at < to;) {
        QTextCursor piece(document());
        piece.setPosition(at + 1);
        QTextCharFormat format = piece.charFormat();
        int end = at + 1;
        for (; end < to; ++end) {
            piece.setPosition(end + 1);
            if (piece.charFormat() != format) break;
        }
        applyColour(format, colour);
        piece.setPosition(at);
        piece.setPosition(end, QTextCursor::KeepAnchor);
        piece.setCharFormat(format);
        at = end;
    }
    cursor.endEditBlock();
    if (from == to) {
        QTextCharFormat format = currentCharFormat();
        applyColour(format, colour);
        setCurrentCharFormat(format);
    }
    setFocus();
}

bool RichTextField::event(QEvent* event) {
    // Keys that write or move belong to the text while it has the focus, whatever they do elsewhere in the
    // window.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
            event->ignore(); // the window's
            return true;
        }
        const bool plain = !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
        const bool style = key->modifiers() == Qt::ControlModifier &&
                           (key->key() == Qt::Key_B || key->key() == Qt::Key_I || key->key() == Qt::Key_U);
        if ((plain && key->key() != Qt::Key_Escape) || style) {
            event->accept();
            return true;
        }
    }
    return QTextEdit::event(event);
}

void RichTextField::keyPressEvent(QKeyEvent* event) {
    if (event->modifiers() == Qt::ControlModifier) {
        if (event->key() == Qt::Key_B) return toggleBold();
        if (event->key() == Qt::Key_I) return toggleItalic();
        if (event->key() == Qt::Key_U) return toggleUnderline();
    }
    QTextEdit::keyPressEvent(event);
}

bool RichTextField::canInsertFromMimeData(const QMimeData* source) const {
    return !isReadOnly() && (source->hasText() || source->hasHtml() || source->hasImage()); // a picture, to be told of it
}

void RichTextField::insertFromMimeData(const QMimeData* source) {
    const PastedText pasted = PastedText::from(
        *source, std::clamp<qsizetype>(mostUnits - document()->characterCount(), 0, PastedText::mostUnits));
    if (pasted.text.length() > 0) {
        QTextCursor cursor = textCursor();
        cursor.beginEditBlock();
        cursor.removeSelectedText();
        insertAttributed(cursor, pasted.text);
        cursor.endEditBlock();
        setTextCursor(cursor);
        ensureCursorVisible();
    }
    say(pasted.leftOut());
}

} // namespace daylark
