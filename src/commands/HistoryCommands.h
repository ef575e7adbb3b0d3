#pragma once

#include "commands/CommandSet.h"

#include <functional>

namespace daylark {

class UndoHistory;

/// "edit.undo" and "edit.redo" of a window: their texts say what the history would take back or do again.
/// `isFree`: whether nothing is under way that must end first; none: always.
void bindHistoryCommands(CommandSet& commands, UndoHistory& history, std::function<bool()> isFree = {});

} // namespace daylark
