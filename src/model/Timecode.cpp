#include "model/Timecode.h"

#include <cmath>
#include <limits>

namespace daylark {

namespace {

/// Truncates; beyond 64 bits (only damaged records get there) 0 stands for it.
qint64 truncatedTo64(float value) {
    constexpr float limit = 9.2e18F;
    return value > -limit && value < limit ? qint64(value) : 0;
}

/// Wraps at 64 bits: frame numbers of damaged records may be anything.
qint64 wrappingSum(qint64 a, qint64 b) {
    return qint64(quint64(a) + quint64(b));
}

qint64 wrappingProduct(qint64 a, qint64 b) {
    return qint64(quint64(a) * quint64(b));
}

/// The printing is unsigned, so a negative remainder shows as a huge number: wanted, older texts have it.
QString timecodeOfCount(qint64 count, float rate) {
    const qint64 whole = truncatedTo64(float(count) / rate);
    const qint64 hours = (whole / 3600) % 24, minutes = (whole / 60) % 60, seconds = whole % 60;
    // Seconds come from single precision and frames from whole numbers; far into a long movie they may part,
    // as in every note exported so far.
    const auto rateInt = qint64(rate);
    const qint64 frames = rateInt == -1 ? 0 : count % rateInt; // which the processor would not divide at the end of its range
    using Unsigned = unsigned long;
    return QString::asprintf("%02lu:%02lu:%02lu:%02lu", Unsigned(hours), Unsigned(minutes), Unsigned(seconds),
                             Unsigned(frames));
}

} // namespace

QString timecodeText(qint64 frame, float fps, const std::optional<SmpteTime>& start, qint64 step) {
    const float rate = std::round(fps); // no drop frame: 29.97 counts as 30
    if (!(std::fabs(rate) >= 1.0F) || std::fabs(rate) > float(std::numeric_limits<qint32>::max()))
        return QStringLiteral("00:00:00:00");
    qint64 count = wrappingSum(frame, -1);
    if (start) {
        const int seconds = start->hours * 3600 + start->minutes * 60 + start->seconds;
        const float offset = float(start->frames) / rate + float(seconds); // single precision: wanted
        count = wrappingSum(truncatedTo64(offset * rate), wrappingProduct(count, step));
    }
    return timecodeOfCount(count, rate);
}

QString durationTextOf(float seconds) {
    constexpr float limit = 2147483520.0F; // the largest float below 2^31
    const int whole = seconds >= -limit && seconds <= limit ? int(seconds) : 0;
    const int minutes = (whole / 60) % 60;
    if (whole >= -3599 && whole <= 3599) return QString::asprintf("%02i:%02i", minutes, whole % 60);
    return QString::asprintf("%i:%02i:%02i", whole / 3600, minutes, whole % 60);
}

} // namespace daylark
