#pragma once

#include "model/runs/FrameRun.h"

#include <QStringList>

#include <vector>

namespace daylark {

/// A run and the numbers of it that there are names of, ascending.
struct NamedRun {
    FrameRun run;
    std::vector<qint64> numbers;
};

/// The names of one folder, taken apart: which of them are runs, and which stand alone. A number is the last group of digits
/// that neither belongs to a version ("v002") nor to the extension, else one before it; so versions, layers and shots come
/// apart, and so do runs that differ only in how their numbers are filled up. Three pictures make a run, or two that follow
/// each other; numbers too far apart for what is there are none. Pure; any thread.
struct FolderNames {
    std::vector<NamedRun> runs; ///< by name
    QStringList others;         ///< in the order given
};
[[nodiscard]] FolderNames takeApart(const QStringList& names);

} // namespace daylark
