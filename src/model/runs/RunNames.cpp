#include "model/runs/RunNames.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <map>
#include <numeric>
#include <utility>

namespace daylark {

namespace {

struct DigitGroup {
    qsizetype at = 0, size = 0;
};

/// A name with one of its numbers taken for the frame's.
struct Reading {
    QString prefix, suffix;
    int digits = 0;
    bool isFilled = false; ///< with zeros
    bool isNegative = false;
    qint64 number = 0;
    QString name;
};

constexpr qsizetype longestNumber = 9;
constexpr qint64 widestHole = 10'000; ///< what lies beyond is another run

bool isFigure(QChar letter) {
    return letter >= QLatin1Char('0') && letter <= QLatin1Char('9');
}

/// "v002", but not the end of a word.
bool isVersion(const QString& name, qsizetype at) {
    if (at == 0 || name[at - 1].toLower() != QLatin1Char('v')) return false;
    return at == 1 || !name[at - 2].isLetter();
}

/// The groups that can be a frame's number, the last first.
std::vector<DigitGroup> groupsOf(const QString& name) {
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    const qsizetype end = dot < 0 ? name.size() : dot;
    std::vector<DigitGroup> groups;
    for (qsizetype at = end; at > 0;) {
        if (!isFigure(name[at - 1])) {
            --at;
            continue;
        }
        const qsizetype behind = at;
        while (at > 0 && isFigure(name[at - 1]))
            --at;
        if (behind - at <= longestNumber && !isVersion(name, at)) groups.push_back({at, behind - at});
    }
    return groups;
}

Reading readingOf(const QString& name, const DigitGroup& group) {
    static const QString joints = QStringLiteral("._ ");
    Reading reading;
    reading.name = name;
    reading.prefix = name.left(group.at);
    reading.suffix = name.mid(group.at + group.size);
    reading.digits = int(group.size);
    const QStringView figures = QStringView(name).mid(group.at, group.size);
    reading.number = figures.toLongLong();
    reading.isFilled = group.size > 1 && figures.front() == QLatin1Char('0');
    // No run writes a minus before nothing.
    const bool mayBeMinus = group.at == 1 || (group.at > 1 && joints.contains(name[group.at - 2]));
    if (reading.number > 0 && mayBeMinus && reading.prefix.endsWith(QLatin1Char('-'))) {
        reading.isNegative = true;
        reading.prefix.chop(1);
        reading.number = -reading.number;
    }
    return reading;
}

qint64 stepOf(const std::vector<qint64>& numbers) {
    constexpr qint64 smallStep = 10;
    constexpr size_t many = 10;
    qint64 common = 0, least = FrameRun::largestNumber;
    for (size_t i = 1; i < numbers.size(); ++i) {
        const qint64 gap = numbers[i] - numbers[i - 1];
        common = std::gcd(common, gap);
        least = std::min(least, gap);
    }
    // A wide step among few pictures is more likely the beginning of a run that is being made.
    const bool isLikely = common == least && numbers.size() >= 3 && (common <= smallStep || numbers.size() >= many);
    return isLikely ? std::max<qint64>(1, common) : 1;
}

class Taker {
public:
    explicit Taker(const QStringList& names) {
        for (const QString& name : names)
            waiting_.push_back({name, groupsOf(name)});
    }

    FolderNames taken() {
        for (size_t place = 0; !waiting_.empty(); ++place)
            takeRunsBy(place);
        std::sort(names_.runs.begin(), names_.runs.end(), [](const NamedRun& a, const NamedRun& b) {
            return a.run.nameOf(a.run.first) < b.run.nameOf(b.run.first);
        });
        return std::move(names_);
    }
    [[nodiscard]] const QSet<QString>& inRuns() const { return inRuns_; }

private:
    struct Waiting {
        QString name;
        std::vector<DigitGroup> groups;
    };
    using Readings = std::vector<Reading>;

    void takeRunsBy(size_t place) {
        std::map<std::pair<QString, QString>, Readings> families;
        std::vector<Waiting> left;
        for (const Waiting& each : waiting_) {
            if (place >= each.groups.size()) continue; // stands alone
            Reading reading = readingOf(each.name, each.groups[place]);
            families[{reading.prefix, reading.suffix}].push_back(std::move(reading));
        }
        for (auto& [key, readings] : families)
            takeFamily(readings);
        for (Waiting& each : waiting_)
            if (place + 1 < each.groups.size() && !inRuns_.contains(each.name)) left.push_back(std::move(each));
        waiting_ = std::move(left);
    }

    /// Of -001 beside 0001 the minus is one of the digits.
    static bool countsItsSign(const Reading& reading, const QSet<int>& filled) {
        return reading.isNegative && !filled.contains(reading.digits) && filled.contains(reading.digits + 1);
    }

    /// Names that differ in their numbers alone: a run for every way of filling them up.
    void takeFamily(const Readings& readings) {
        if (readings.size() < 2) return;
        QSet<int> filled;
        for (const Reading& each : readings)
            if (each.isFilled && !each.isNegative) filled.insert(each.digits);
        const bool hasFilledWhole = !filled.isEmpty();
        for (const Reading& each : readings)
            if (each.isFilled && !(hasFilledWhole && countsItsSign(each, filled))) filled.insert(each.digits);
        std::map<int, Readings> byPadding;
        int least = longestNumber, most = 0;
        for (const Reading& each : readings) {
            if (each.isFilled) {
                byPadding[each.digits + (countsItsSign(each, filled) ? 1 : 0)].push_back(each);
                continue;
            }
            least = std::min(least, each.digits);
            most = std::max(most, each.digits);
        }
        for (const Reading& each : readings)
            if (!each.isFilled) byPadding[paddingOf(each, filled, least == most ? least : 0)].push_back(each);
        for (const auto& [padding, members] : byPadding)
            takePadded(padding, members);
    }

    /// Of a number that no zero fills up: as wide as those that one does, or one too large for them, else its own way.
    static int paddingOf(const Reading& reading, const QSet<int>& filled, int otherwise) {
        if (countsItsSign(reading, filled)) return reading.digits + 1;
        if (filled.contains(reading.digits)) return reading.digits;
        int narrower = 0;
        for (const int digits : filled)
            if (digits < reading.digits) narrower = std::max(narrower, digits);
        return narrower > 0 ? narrower : filled.isEmpty() ? otherwise : 0;
    }

    void takePadded(int padding, const Readings& members) {
        FrameRun run;
        run.prefix = members.front().prefix;
        run.suffix = members.front().suffix;
        run.padding = padding;
        run.countsSign = std::any_of(members.begin(), members.end(), [padding](const Reading& each) {
            return each.isNegative && each.digits == padding - 1;
        });
        std::map<qint64, QString> byNumber;
        for (const Reading& each : members)
            if (run.nameOf(each.number) == each.name) byNumber.emplace(each.number, each.name); // of -05 beside -1 one alone
        std::vector<qint64> numbers;
        for (const auto& [number, name] : byNumber) {
            if (!numbers.empty() && number - numbers.back() > widestHole)
                takeNumbers(run, byNumber, std::exchange(numbers, {}));
            numbers.push_back(number);
        }
        takeNumbers(run, byNumber, std::move(numbers));
    }

    /// Of numbers that no zero fills up and that are all as long: 1001 to 1100 is "####" by custom. Else 0.
    static int commonDigits(const std::vector<qint64>& numbers, const std::map<qint64, QString>& byNumber,
                            const FrameRun& run) {
        const qsizetype length = byNumber.at(numbers.front()).size(), digits = length - run.prefix.size() - run.suffix.size();
        const bool isCommon = numbers.front() > 0 && std::all_of(numbers.begin(), numbers.end(), [&](qint64 number) {
                                  return byNumber.at(number).size() == length;
                              });
        return isCommon && digits > 1 ? int(digits) : 0;
    }

    void takeNumbers(const FrameRun& run, const std::map<qint64, QString>& byNumber, std::vector<qint64> numbers,
                     int deep = 0) {
        constexpr qint64 sparsest = 50, slack = 100;
        const auto count = qint64(numbers.size());
        const bool isPair = count == 2 && numbers[1] - numbers[0] == 1;
        if (count < 3 && !isPair) return;
        NamedRun named{run, {}};
        named.run.first = numbers.front();
        named.run.last = numbers.back();
        named.run.step = stepOf(numbers);
        if (run.padding == 0) named.run.padding = commonDigits(numbers, byNumber, run);
        if (!named.run.isValid() || named.run.count() > count * sparsest + slack) {
            // Two runs, or none: parted where they are farthest. Numbers drawn by lot are parted for ever.
            constexpr int deepest = 40;
            if (deep == deepest) return;
            auto widest = numbers.begin() + 1;
            for (auto at = widest; at != numbers.end(); ++at)
                if (*at - at[-1] > *widest - widest[-1]) widest = at;
            takeNumbers(run, byNumber, {numbers.begin(), widest}, deep + 1);
            takeNumbers(run, byNumber, {widest, numbers.end()}, deep + 1);
            return;
        }
        for (const qint64 number : numbers)
            inRuns_.insert(byNumber.at(number));
        named.numbers = std::move(numbers);
        names_.runs.push_back(std::move(named));
    }

    std::vector<Waiting> waiting_;
    QSet<QString> inRuns_;
    FolderNames names_;
};

} // namespace

FolderNames takeApart(const QStringList& names) {
    Taker taker(names);
    FolderNames result = taker.taken();
    for (const QString& name : names)
        if (!taker.inRuns().contains(name)) result.others.append(name);
    return result;
}

} // namespace daylark
