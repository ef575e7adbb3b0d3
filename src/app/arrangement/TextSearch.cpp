#include "app/arrangement/TextSearch.h"

#include <algorithm>

namespace daylark {

namespace {

bool isAscii(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar letter) { return letter.unicode() < 0x80; });
}

char16_t lower(QChar letter) {
    const char16_t unit = letter.unicode();
    return unit >= u'A' && unit <= u'Z' ? char16_t(unit + 0x20) : unit;
}

/// `sought` is in lower case already.
bool isInAscii(QStringView text, QStringView sought) {
    return std::search(text.begin(), text.end(), sought.begin(), sought.end(), [&](QChar a, QChar b) {
               return lower(a) == b.unicode();
           }) != text.end();
}

} // namespace

TextSearch::TextSearch(const QString& text)
    : sought_(folded(text))
    , ascii_(isAscii(sought_)) {}

/// Only what is not ASCII goes through the tables, which cost ten times as much.
QString TextSearch::folded(const QString& text) {
    QString plain;
    plain.reserve(text.size());
    for (qsizetype at = 0; at < text.size();) {
        if (text[at].unicode() < 0x80) {
            plain += QChar(lower(text[at++]));
            continue;
        }
        const qsizetype from = at;
        while (at < text.size() && text[at].unicode() >= 0x80)
            ++at;
        QString others = text.mid(from, at - from).normalized(QString::NormalizationForm_KD);
        others.removeIf([](QChar letter) { return letter.category() == QChar::Mark_NonSpacing; });
        plain += others.toCaseFolded();
    }
    return plain;
}

bool TextSearch::isIn(const QString& text) const {
    if (sought_.isEmpty()) return true;
    if (isAscii(text)) return ascii_ && isInAscii(text, sought_);
    return folded(text).contains(sought_);
}

} // namespace daylark
