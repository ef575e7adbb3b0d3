#include "playback/run/Renewal.h"

#include <algorithm>
#include <iterator>

namespace daylark {

namespace {

bool isIn(const std::vector<qint64>& frames, qint64 frame) {
    return std::binary_search(frames.begin(), frames.end(), frame);
}

/// The frame whose picture is held where this one's is missing; -1: none is there.
qint64 heldFor(const SampleIndex& index, qint64 frame) {
    for (qint64 at = frame; at >= 0; --at)
        if (!isIn(index.missing, at)) return at;
    for (qint64 at = frame; at < index.count(); ++at)
        if (!isIn(index.missing, at)) return at;
    return -1;
}

} // namespace

std::vector<qint64> framesToReadAnew(const SampleIndex& before, const SampleIndex& after, std::vector<qint64> changed) {
    std::sort(changed.begin(), changed.end());
    std::vector<qint64> standIns = before.missing, anew = changed;
    standIns.insert(standIns.end(), after.missing.begin(), after.missing.end());
    std::sort(standIns.begin(), standIns.end());
    standIns.erase(std::unique(standIns.begin(), standIns.end()), standIns.end());
    for (const qint64 frame : standIns) {
        if (frame >= before.count()) continue;
        const qint64 now = heldFor(after, frame);
        if (isIn(before.missing, frame) != isIn(after.missing, frame) || now != heldFor(before, frame) || isIn(changed, now))
            anew.push_back(frame);
    }
    for (qint64 frame = after.count(); frame < before.count(); ++frame)
        anew.push_back(frame);
    std::sort(anew.begin(), anew.end());
    anew.erase(std::unique(anew.begin(), anew.end()), anew.end());
    return anew;
}

bool hasSameTimes(const SampleIndex& before, const SampleIndex& after) {
    return before.count() == after.count() && before.timeScale == after.timeScale && before.step == after.step &&
           before.endTicks == after.endTicks;
}

} // namespace daylark
