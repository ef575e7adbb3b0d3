#include "app/arrangement/TextSearch.h"

#include <algorithm>

namespace daylark {

namespace {

bool isAscii(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar letter) { return letter.unicode() < 0x80; });
}

/// `sought` is in lower case already.
bool isInAscii(QStringView text, QStringView sought) {
    const auto lower = [](QChar letter) {
        const char16_t unit = letter.unicode();
        return unit >= u'A' && unit <= u'Z' ? char16_t(unit + 0x20) : unit;
    };
    return std::search(text.begin(), text.end(), sought.begin(), sought.end(), [&](QChar a, QChar b) {
               return lower(a) == b.unicode();
           }) != text.end();
}

} // namespace

TextSearch::TextSearch(const QString& text)
    : sought_(folded(text))
    , ascii_(isAscii(sought_)) {}

QString TextSearch::folded(const QString& text) {
    QString plain = text.normalized(QString::NormalizationForm_KD);
    plain.removeIf([](QChar letter) { return letter.category() == QChar::Mark_NonSpacing; });
    return plain.toCaseFolded();
}

bool TextSearch::isIn(const QString& text) const {
    if (sought_.isEmpty()) return true;
    if (isAscii(text)) return ascii_ && isInAscii(text, sought_);
    return folded(text).contains(sought_);
}

} // namespace daylark
