#pragma once

#include "tool/ToolContext.h"

#include <optional>
#include <string>

namespace daylark::tool {

/// What a command opens of what was typed: a file's path, or the address of the run that a name with marks
/// ("sh010.####.exr") or a folder stands for. None: told, the command has failed.
[[nodiscard]] std::optional<QString> mediaArgument(ToolContext& context, const std::string& typed, const std::string& layer = {});
/// The frame (from 1) that a run's own number means; none: told.
[[nodiscard]] std::optional<qint64> frameOfNumber(ToolContext& context, const QString& media, qint64 number);

} // namespace daylark::tool
