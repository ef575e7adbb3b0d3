#pragma once

#include <QString>

namespace daylark {

/// What a read-out says about how playing goes; a value.
struct PlayerStatistics {
    double rateReached = 0; ///< pictures shown a second, over the last second of a run; 0 standing
    qint64 shown = 0,
           dropped = 0;     ///< of the current run or the last one: pictures shown, frames passed without
    qint64 cacheBytes = 0;  ///< decoded pictures held, those in decoders and of neighbouring movies included
    qint64 cacheBudget = 0; ///< what they may take
    QString decoder;        ///< for people: the decoder's name and how it works; empty when none is open
};

} // namespace daylark
