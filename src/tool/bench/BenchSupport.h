#pragma once

#include <QElapsedTimer>
#include <QString>

#include <functional>
#include <vector>

namespace daylark {
class Player;
}

namespace daylark::tool {

class ToolContext;

// What the benches that run a player share. Main thread.

[[nodiscard]] double msOf(const QElapsedTimer& timer); ///< since it was started
/// Runs events for that long; sleeps between them, since what is measured wants the processor.
void runFor(double milliseconds);
/// Runs events until the condition holds; false when it has not come true for very long.
[[nodiscard]] bool awaited(const std::function<bool()>& condition, double limitMs = 120000);
/// Opens the movie and waits for its first picture; false, and the context's failure, when there is none.
[[nodiscard]] bool shownFirst(ToolContext& context, Player& player, const QString& path);

[[nodiscard]] double processorSeconds(); ///< of this process, all threads
[[nodiscard]] double peakResidentMiB();
[[nodiscard]] double residentMiB(); ///< now

/// The value below which that part of them lies (0: the least, 1: the most); 0 of none.
[[nodiscard]] double quantile(std::vector<double> values, double part);
[[nodiscard]] double meanOf(const std::vector<double>& values);

} // namespace daylark::tool
