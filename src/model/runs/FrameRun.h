#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace daylark {

/// A run of numbered pictures that is one movie: how the names are made of the numbers, and which numbers it reaches over.
/// Frame n (from 0) is the number first + n * step, whether its file is there or not, so that a missing picture never moves the
/// others. Names only; where they lie is said beside it. A value; any thread.
///
///     sh010.1001.exr ... sh010.1100.exr      prefix "sh010.", suffix ".exr", padding 4, 1001 to 1100 by 1
struct FrameRun {
    static constexpr qint64 mostFrames = 1'000'000, largestNumber = 999'999'999;

    QString prefix, suffix;
    int padding = 0;          ///< digits at least, filled up with zeros; 0: as the number is
    bool countsSign = false;  ///< the minus is one of the digits: -001, where others write -0001
    qint64 first = 1, last = 1, step = 1;

    /// 1 or more, and neither more frames nor larger numbers than can be.
    [[nodiscard]] bool isValid() const;
    [[nodiscard]] qint64 count() const { return (last - first) / step + 1; }
    [[nodiscard]] qint64 numberAt(qint64 frame) const { return first + frame * step; } ///< frame from 0
    [[nodiscard]] std::optional<qint64> frameOf(qint64 number) const; ///< none: beyond the ends, or between two steps
    [[nodiscard]] QString nameOf(qint64 number) const;
    /// The number of a file of this name; none for a name that this run would not give. The ends are not looked at.
    [[nodiscard]] std::optional<qint64> numberIn(QStringView name) const;
    [[nodiscard]] bool hasNamesOf(const FrameRun& other) const; ///< whatever their ends
    /// For people and for typing in: "sh010.1001-1100#.exr", "sh010.1001-1099x2@@@.exr".
    [[nodiscard]] QString text() const;
    /// The same for addresses, where "#" has a meaning of its own: "sh010.1001-1100@@@@.exr".
    [[nodiscard]] QString addressText() const;
    /// What files made of it are called after: "sh010", the name without its numbers; never empty.
    [[nodiscard]] QString title() const;
    bool operator==(const FrameRun&) const = default;
};

/// A name that stands for many: `sh010.%04d.exr`, `sh010.####.exr`, `sh010.1001-1100#.exr`, `sh010.@@@.exr`.
struct RunPattern {
    FrameRun run;           ///< its ends are 1 and 1 where none are named
    bool hasRange = false;
    bool anyPadding = false; ///< one mark alone: four digits, or however many there are
};

/// None where the name has no mark. The last mark counts; "#" alone means four digits, "@" alone any.
[[nodiscard]] std::optional<RunPattern> runPatternOf(const QString& name);

} // namespace daylark
