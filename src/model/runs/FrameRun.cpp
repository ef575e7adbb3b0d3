#include "model/runs/FrameRun.h"

#include <QRegularExpression>

#include <algorithm>

namespace daylark {

namespace {

constexpr int mostDigits = 9; // of a number in a name; longer ones are dates and check sums

bool isDigit(QChar letter) {
    return letter >= QLatin1Char('0') && letter <= QLatin1Char('9');
}

bool allDigits(QStringView text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), isDigit);
}

/// How many figures a run's names have, the minus left out.
QString figuresOf(qint64 number, const FrameRun& run) {
    const bool negative = number < 0;
    const QString figures = QString::number(negative ? -number : number);
    const int wanted = run.padding - (negative && run.countsSign ? 1 : 0);
    return (negative ? QStringLiteral("-") : QString()) + figures.rightJustified(wanted, QLatin1Char('0'));
}

QString rangeOf(const FrameRun& run) {
    const QString range = figuresOf(run.first, run) + QLatin1Char('-') + figuresOf(run.last, run);
    return run.step > 1 ? range + QLatin1Char('x') + QString::number(run.step) : range;
}

/// A hyphen is a minus where nothing that it could join stands before it.
bool canBeMinus(QStringView before) {
    static const QString joints = QStringLiteral("._ ");
    return before.isEmpty() || joints.contains(before.back());
}

void takeRange(RunPattern& pattern) {
    static const QRegularExpression range(QStringLiteral("(-?)([0-9]{1,9})-(-?)([0-9]{1,9})(?:x([0-9]{1,4}))?\\z"));
    const QRegularExpressionMatch match = range.match(pattern.run.prefix);
    if (!match.hasMatch()) return;
    const QStringView before = QStringView(pattern.run.prefix).left(match.capturedStart());
    const bool isNegative = match.capturedLength(1) > 0 && canBeMinus(before);
    FrameRun run = pattern.run;
    run.first = match.capturedView(2).toLongLong() * (isNegative ? -1 : 1);
    run.last = match.capturedView(4).toLongLong() * (match.capturedLength(3) > 0 ? -1 : 1);
    run.step = match.capturedLength(5) > 0 ? match.capturedView(5).toLongLong() : 1;
    run.prefix = before.toString() + (match.capturedLength(1) > 0 && !isNegative ? QStringLiteral("-") : QString());
    if (!run.isValid()) return;
    pattern.run = run;
    pattern.hasRange = true;
}

} // namespace

bool FrameRun::isValid() const {
    return step >= 1 && step <= largestNumber && first >= -largestNumber && last <= largestNumber && first <= last &&
           count() <= mostFrames && padding >= 0 && padding <= mostDigits && !prefix.contains(QLatin1Char('/')) &&
           !suffix.contains(QLatin1Char('/')) && !prefix.contains(QChar(u'\0')) && !suffix.contains(QChar(u'\0'));
}

std::optional<qint64> FrameRun::frameOf(qint64 number) const {
    if (number < first || number > last || (number - first) % step != 0) return std::nullopt;
    return (number - first) / step;
}

QString FrameRun::nameOf(qint64 number) const {
    return prefix + figuresOf(number, *this) + suffix;
}

std::optional<qint64> FrameRun::numberIn(QStringView name) const {
    if (name.size() <= prefix.size() + suffix.size() || !name.startsWith(prefix) || !name.endsWith(suffix))
        return std::nullopt;
    const QStringView figures = name.mid(prefix.size(), name.size() - prefix.size() - suffix.size());
    const bool negative = figures.front() == QLatin1Char('-');
    const QStringView digits = negative ? figures.mid(1) : figures;
    if (digits.size() > mostDigits || !allDigits(digits)) return std::nullopt;
    const qint64 number = digits.toLongLong() * (negative ? -1 : 1);
    return figuresOf(number, *this) == figures ? std::optional(number) : std::nullopt;
}

bool FrameRun::hasNamesOf(const FrameRun& other) const {
    return prefix == other.prefix && suffix == other.suffix && padding == other.padding && countsSign == other.countsSign;
}

QString FrameRun::text() const {
    return padding == 4 ? prefix + rangeOf(*this) + QLatin1Char('#') + suffix : addressText();
}

QString FrameRun::title() const {
    qsizetype end = prefix.size();
    while (end > 0 && QStringLiteral("._- ").contains(prefix[end - 1]))
        --end;
    if (end > 0) return prefix.left(end);
    const QString name = nameOf(first);
    const qsizetype stop = name.lastIndexOf(QLatin1Char('.'));
    return stop > 0 ? name.left(stop) : name;
}

QString FrameRun::addressText() const {
    return prefix + rangeOf(*this) + QString(std::max(1, padding), QLatin1Char('@')) + suffix;
}

std::optional<RunPattern> runPatternOf(const QString& name) {
    static const QRegularExpression marks(QStringLiteral("#{1,9}|@{1,9}|%(?:0([1-9]))?d"));
    QRegularExpressionMatch last;
    for (auto each = marks.globalMatch(name); each.hasNext();)
        last = each.next();
    if (!last.hasMatch()) return std::nullopt;
    RunPattern pattern;
    pattern.run.prefix = name.left(last.capturedStart());
    pattern.run.suffix = name.mid(last.capturedEnd());
    const QStringView mark = last.capturedView();
    if (mark.front() == QLatin1Char('%')) {
        pattern.run.padding = last.capturedView(1).toInt();
        pattern.run.countsSign = true; // as the C library counts
    } else if (mark.size() == 1) {
        pattern.run.padding = mark.front() == QLatin1Char('#') ? 4 : 0;
        pattern.anyPadding = true;
    } else {
        pattern.run.padding = int(mark.size());
    }
    takeRange(pattern);
    return pattern.run.isValid() ? std::optional(pattern) : std::nullopt;
}

} // namespace daylark
