#include "archive/PublicEncoding.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace daylark {

namespace {

QByteArray shortestNumber(double value) {
    return QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
}

std::vector<float> colourComponents(const QByteArray& text) {
    std::vector<float> components;
    const QByteArray clean = text.left(200).split('\0').constFirst().simplified();
    for (const QByteArray& part : clean.split(' ')) {
        const double value = part.toDouble();
        components.push_back(std::isfinite(value) ? float(std::clamp(value, 0.0, 1.0)) : 0.0F);
    }
    return clean.isEmpty() ? std::vector<float>() : components;
}

} // namespace

QByteArray colourText(const QColor& colour) {
    const QColor rgb = colour.toRgb();
    QByteArray text;
    for (const float component : {rgb.redF(), rgb.greenF(), rgb.blueF()})
        text += QByteArray::number(component, 'g', 9) + ' ';
    text.chop(1);
    if (rgb.alphaF() < 1) text += ' ' + QByteArray::number(rgb.alphaF(), 'g', 9);
    return text + '\0';
}

QColor colourFromText(const QByteArray& text, int space) {
    const std::vector<float> parts = colourComponents(text);
    const auto alpha = [&parts](size_t index) { return parts.size() > index ? parts[index] : 1.0F; };
    if ((space == 1 || space == 2) && parts.size() >= 3)
        return QColor::fromRgbF(parts[0], parts[1], parts[2], alpha(3));
    if ((space == 3 || space == 4) && !parts.empty())
        return QColor::fromRgbF(parts[0], parts[0], parts[0], alpha(1));
    if (space == 5 && parts.size() >= 4)
        return QColor::fromCmykF(parts[0], parts[1], parts[2], parts[3], alpha(4)).toRgb();
    return {};
}

QString pairText(double first, double second) {
    return QString::fromLatin1('{' + shortestNumber(first) + ", " + shortestNumber(second) + '}');
}

std::optional<QPointF> pairFromText(QStringView text) {
    text = text.trimmed();
    if (!text.startsWith(u'{') || !text.endsWith(u'}')) return std::nullopt;
    text = text.mid(1, text.size() - 2);
    const qsizetype comma = text.indexOf(u',');
    if (comma < 0) return std::nullopt;
    bool firstIsNumber = false;
    bool secondIsNumber = false;
    const double first = text.left(comma).trimmed().toDouble(&firstIsNumber);
    const double second = text.mid(comma + 1).trimmed().toDouble(&secondIsNumber);
    if (!firstIsNumber || !secondIsNumber || !std::isfinite(first) || !std::isfinite(second))
        return std::nullopt;
    return QPointF(first, second);
}

QSize sizeFromText(QStringView text) {
    constexpr double largest = 1e6;
    const std::optional<QPointF> pair = pairFromText(text);
    if (!pair || pair->x() < 0 || pair->y() < 0 || pair->x() > largest || pair->y() > largest) return {};
    return {qRound(pair->x()), qRound(pair->y())};
}

QString fontName(const TextAttributes& attributes) {
    QString name = attributes.fontFamily.isEmpty() ? u"Helvetica"_s : attributes.fontFamily;
    if (attributes.bold && attributes.italic) return name + "-BoldOblique"_L1;
    if (attributes.bold) return name + "-Bold"_L1;
    if (attributes.italic) return name + "-Oblique"_L1;
    // A family whose own name reads like a style says that it isn't one.
    TextAttributes readBack;
    applyFontName(name, readBack);
    if (readBack.fontFamily != attributes.fontFamily || readBack.bold || readBack.italic)
        name += "-Regular"_L1;
    return name;
}

void applyFontName(const QString& name, TextAttributes& attributes) {
    const qsizetype dash = name.lastIndexOf(u'-');
    const bool system = name.startsWith(u'.'); // the system's own font: no family to ask for by name
    const QStringView style = system     ? QStringView(name)
                              : dash < 0 ? QStringView()
                                         : QStringView(name).mid(dash + 1);
    attributes.bold = style.contains("bold"_L1, Qt::CaseInsensitive);
    attributes.italic =
        style.contains("italic"_L1, Qt::CaseInsensitive) || style.contains("oblique"_L1, Qt::CaseInsensitive);
    const bool styled = attributes.bold || attributes.italic || style == "Regular"_L1 || style == "Roman"_L1;
    const QString family = system ? QString() : styled ? name.left(dash) : name;
    attributes.fontFamily = family.isEmpty() || family == "Helvetica"_L1 ? QString() : family;
}

QByteArray runIndexData(const std::vector<RunIndex>& runs) {
    QByteArray data;
    const auto append = [&data](quint64 value) {
        for (; value >= 0x80; value >>= 7)
            data.append(char(0x80 | (value & 0x7F)));
        data.append(char(value));
    };
    for (const RunIndex& run : runs) {
        append(run.length);
        append(run.attributes);
    }
    return data;
}

std::vector<RunIndex> runIndicesFromData(const QByteArray& data, quint64 limit) {
    std::vector<RunIndex> runs;
    qsizetype at = 0;
    const auto next = [&data, &at](quint64& value) {
        value = 0;
        for (int shift = 0; at < data.size() && shift < 63; shift += 7) {
            const auto byte = uchar(data[at++]);
            value |= quint64(byte & 0x7F) << shift;
            if (byte < 0x80) return true;
        }
        return false;
    };
    for (quint64 covered = 0; covered < limit;) {
        RunIndex run;
        if (!next(run.length) || !next(run.attributes)) break;
        run.length = std::min(run.length, limit - covered);
        covered += run.length;
        if (run.length > 0) runs.push_back(run);
    }
    return runs;
}

} // namespace daylark
