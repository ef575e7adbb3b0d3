#include "app/arrangement/ShownNames.h"

#include "base/PlainText.h"

#include <algorithm>

namespace daylark {

namespace {

constexpr qsizetype leastCommon = 3;      // less is no hindrance
constexpr qsizetype longestExtension = 5; // ".r3d", ".mxf", ".jpeg"; "v2.final cut" has none

QStringView withoutExtension(QStringView name) {
    const qsizetype stop = name.lastIndexOf(u'.');
    const qsizetype length = name.size() - stop - 1;
    return stop > 0 && length > 0 && length <= longestExtension ? name.left(stop) : name;
}

bool isSeparator(QChar character) {
    return character == u'_' || character == u'-' || character == u'.' || character == u' ';
}

qsizetype alike(QStringView one, QStringView other, qsizetype most) {
    const qsizetype end = std::min({one.size(), other.size(), most});
    qsizetype at = 0;
    while (at < end && one[at] == other[at])
        ++at;
    return at;
}

/// Back to where a person would cut: behind a separator; in a name without one, before the number.
qsizetype cutBack(QStringView name, qsizetype common, qsizetype shortest) {
    for (qsizetype at = std::min(common, shortest - 1); at > 0; --at)
        if (isSeparator(name[at - 1])) return at;
    if (common >= shortest) return 0; // nothing would be left of one of them
    while (common > 0 && (name[common - 1].isDigit() || name[common - 1].isSurrogate()))
        --common;
    return common;
}

} // namespace

ShownNames::ShownNames(const QStringList& names, const Looks& looks)
    : looks_(looks) {
    if (!looks.common || names.size() < 2) return;
    const QStringView first = withoutExtension(names.front());
    qsizetype common = first.size();
    qsizetype shortest = first.size();
    for (const QString& name : names) {
        const QStringView each = withoutExtension(name);
        common = alike(first, each, common);
        shortest = std::min(shortest, each.size());
        if (common < leastCommon) return;
    }
    common = cutBack(first, common, shortest);
    if (common >= leastCommon) common_ = common;
}

ShownName ShownNames::shown(const QString& name) const {
    ShownName shown{plain::line(looks_.extensions ? name : withoutExtension(name).toString()), 0};
    if (common_ < shown.text.size()) shown.common = common_;
    return shown;
}

} // namespace daylark
