#pragma once

#include "support/TruthTable.h"

namespace daylark::truth {

/// Reads a file forwards, backwards and in jumps, and holds number, times, shape and every picture against what
/// must be there. `jumps`: how many.
void lookThrough(const QString& path, const Expectation& expected, int jumps, Tally& tally);

} // namespace daylark::truth
