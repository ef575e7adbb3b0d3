#include "ui/common/text/NameText.h"

#include <QPainter>

#include <algorithm>

namespace daylark::nameText {

namespace {

bool breaksBehind(QChar character) {
    return character == u'_' || character == u'-' || character == u'.' || character == u' ';
}

/// How much of the text fits: up to the last separator that does, else as many letters as do.
qsizetype fitting(const QString& text, const QFontMetrics& metrics, int width) {
    qsizetype letters = text.size();
    while (letters > 1 && metrics.horizontalAdvance(text.left(letters)) > width)
        --letters;
    if (letters == text.size()) return letters;
    for (qsizetype at = letters; at > letters / 2; --at)
        if (breaksBehind(text[at - 1])) return at;
    return letters > 1 && text[letters - 1].isHighSurrogate() ? letters - 1 : letters;
}

std::vector<Line> broken(const QString& text, qsizetype common, const QFontMetrics& metrics, int width, int mostLines) {
    std::vector<Line> lines;
    qsizetype from = 0;
    while (from < text.size() && int(lines.size()) < mostLines) {
        const QString rest = text.mid(from);
        const bool last = int(lines.size()) + 1 == mostLines;
        const qsizetype taken = last ? rest.size() : fitting(rest, metrics, width);
        lines.push_back({rest.left(taken), std::clamp<qsizetype>(common - from, 0, taken)});
        from += taken;
    }
    return lines;
}

bool fits(const std::vector<Line>& lines, const QFontMetrics& metrics, int width) {
    return std::all_of(lines.begin(), lines.end(),
                       [&](const Line& line) { return metrics.horizontalAdvance(line.text) <= width; });
}

} // namespace

std::vector<Line> layOut(const ShownName& name, const QFontMetrics& metrics, int width, int mostLines) {
    std::vector<Line> lines = broken(name.text, name.common, metrics, width, mostLines);
    if (fits(lines, metrics, width)) return lines;
    if (name.common > 0) {
        lines = broken(QChar(0x2026) + name.text.mid(name.common), 1, metrics, width, mostLines);
        if (fits(lines, metrics, width)) return lines;
    }
    if (lines.empty()) return lines;
    lines.back().text = metrics.elidedText(lines.back().text, Qt::ElideMiddle, width);
    lines.back().dimmed = std::min(lines.back().dimmed, lines.back().text.size());
    return lines;
}

void paint(QPainter& painter, const QRect& place, const ShownName& name, int mostLines, const QColor& colour,
           const QColor& dimmed, Qt::AlignmentFlag vertical) {
    const QFontMetrics metrics = painter.fontMetrics();
    const std::vector<Line> lines = layOut(name, metrics, place.width(), mostLines);
    const int height = metrics.height();
    int top = place.top();
    if (vertical == Qt::AlignVCenter) top += (place.height() - int(lines.size()) * height) / 2;
    for (const Line& line : lines) {
        const QString common = line.text.left(line.dimmed);
        const int own = metrics.horizontalAdvance(common);
        painter.setPen(dimmed);
        painter.drawText(QRect(place.left(), top, place.width(), height), Qt::AlignLeft | Qt::AlignVCenter, common);
        painter.setPen(colour);
        painter.drawText(QRect(place.left() + own, top, place.width() - own, height), Qt::AlignLeft | Qt::AlignVCenter,
                         line.text.mid(line.dimmed));
        top += height;
    }
}

} // namespace daylark::nameText
