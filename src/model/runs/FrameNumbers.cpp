#include "model/runs/FrameNumbers.h"

#include "model/Movie.h"

#include <QStringList>

#include <cmath>

namespace daylark {

namespace {

constexpr qint64 largestNumber = 1'000'000'000'000; // far beyond any production's, and safe to compute with

std::optional<qint64> wholeNumber(const QString& text) {
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    if (!isNumber || number < -largestNumber || number > largestNumber) return {};
    return number;
}

} // namespace

std::optional<qint64> FrameNumbers::frameOf(qint64 number) const {
    if (step == 0 || (number - first) % step != 0) return {};
    return (number - first) / step + 1;
}

bool isNumberedByTimecode(const Movie& movie, std::optional<qint64> usualFirst) {
    return !usualFirst && !movie.firstFrameNumber && !movie.frameRun;
}

FrameNumbers numbersByTimecode(const std::optional<SmpteTime>& start, float fps) {
    return {start ? framesOfTimecode(timecodeText(1, fps, start), fps).value_or(1) : 1, 1};
}

FrameNumbers frameNumbersOf(const Movie& movie, std::optional<qint64> usualFirst, const std::optional<SmpteTime>& start,
                            float fps) {
    FrameNumbers numbers =
        usualFirst ? FrameNumbers{*usualFirst, 1} : numbersByTimecode(start, fps > 0 ? fps : movie.mMovieFPS);
    if (movie.frameRun) numbers = {movie.frameRun->run.first, movie.frameStep()};
    if (movie.firstFrameNumber)
        numbers.first = qBound(-largestNumber, numberToInt64(*movie.firstFrameNumber), largestNumber);
    return numbers;
}

std::optional<qint64> framesOfTimecode(const QString& text, float fps) {
    const float rounded = std::round(fps);
    if (!(rounded >= 1) || rounded > 100000) return {};
    QString even = text;
    even.replace(QLatin1Char(';'), QLatin1Char(':')).replace(QLatin1Char('.'), QLatin1Char(':'));
    QStringList parts = even.split(QLatin1Char(':'));
    if (parts.size() < 2 || parts.size() > 4) return {};
    while (parts.size() < 4)
        parts.prepend(QStringLiteral("0"));
    const auto rate = qint64(rounded);
    const qint64 limits[] = {24, 60, 60, rate}, worth[] = {3600 * rate, 60 * rate, rate, 1};
    qint64 frames = 0;
    for (qsizetype i = 0; i < 4; ++i) {
        const std::optional<qint64> part = wholeNumber(parts[i]);
        if (!part || *part < 0 || *part >= limits[i]) return {};
        frames += *part * worth[i];
    }
    return frames;
}

std::optional<qint64> FrameEntry::frameOf(const QString& text) const {
    QString entry = text.simplified().remove(QLatin1Char(' '));
    if (entry.isEmpty() || count < 1) return {};
    const auto inside = [this](std::optional<qint64> frame) {
        return frame && *frame >= 1 && *frame <= count ? frame : std::nullopt;
    };
    const bool isTimecode = entry.contains(QLatin1Char(':')) || entry.contains(QLatin1Char(';'));
    const qint64 step = start ? qMax<qint64>(1, timecodeStep) : 1;
    const QChar sign = entry.front();
    // A minus is a step back, but where the numbers themselves are below zero.
    const bool isNumberBelowZero = sign == QLatin1Char('-') && !isTimecode && numbers.first < 0 && numbers.areOwn();
    if ((sign == QLatin1Char('+') || sign == QLatin1Char('-')) && !isNumberBelowZero) {
        entry.remove(0, 1);
        std::optional<qint64> distance = isTimecode ? framesOfTimecode(entry, fps) : wholeNumber(entry);
        if (distance && isTimecode) *distance /= step;
        if (!distance || *distance < 0) return {};
        return inside(sign == QLatin1Char('+') ? current + *distance : current - *distance);
    }
    if (isTimecode) {
        const std::optional<qint64> wanted = framesOfTimecode(entry, fps);
        const std::optional<qint64> first = framesOfTimecode(timecodeText(1, fps, start), fps);
        if (!wanted || !first) return {};
        const qint64 day = 24 * 3600 * qint64(std::round(fps));
        const qint64 distance = (*wanted - *first + day) % day; // over midnight too
        return distance % step == 0 ? inside(distance / step + 1) : std::nullopt;
    }
    const bool fromOne = sign == QLatin1Char('#');
    if (fromOne) entry.remove(0, 1);
    const std::optional<qint64> number = wholeNumber(entry);
    if (!number) return {};
    return inside(fromOne ? number : numbers.frameOf(*number));
}

} // namespace daylark
