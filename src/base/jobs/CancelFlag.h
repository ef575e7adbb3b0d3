#pragma once

#include <atomic>

namespace daylark {

/// Set from any thread to make slow work elsewhere end soon; whoever works looks at it between pieces. Never
/// taken back: the next work gets a flag of its own. Shared where either side may go first.
using CancelFlag = std::atomic<bool>;

} // namespace daylark
