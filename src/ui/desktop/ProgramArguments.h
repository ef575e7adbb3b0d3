#pragma once

#include <QStringList>

class QDir;

namespace daylark {

/// What a command line asks to be opened: paths as they are and links as they came, and one line for everything that is
/// neither. Looks at the disk; before the event loop turns.
struct ProgramArguments {
    QStringList toOpen;
    QStringList failures; ///< "<what was given>: <what is wrong>"

    [[nodiscard]] static ProgramArguments read(const QStringList& given, const QDir& folder);
    [[nodiscard]] bool nothingLeft() const { return toOpen.isEmpty() && !failures.isEmpty(); }
};

} // namespace daylark
