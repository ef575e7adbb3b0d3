#pragma once

#include "picture/colour/ColourConfig.h"

#include <memory>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace daylark {
class VideoFrame;
}

namespace daylark::tool {

class ToolContext;

/// How a command that shows pictures is told to bring them to a display. Without a word of it movies are shown as they are.
struct ColourArguments {
    std::string inputSpace, display, view;
    void addTo(CLI::App& command); ///< --input-space, --display, --view

    /// What this picture goes through; null: its numbers are shown as they are. None: told, the command has failed.
    /// `source.ownWord` and `source.isLight` are read off the picture; `byHand` is what the item's record says.
    [[nodiscard]] std::optional<std::shared_ptr<const DisplayProcessor>>
    processorFor(ToolContext& context, const VideoFrame& frame, ColourConfig::Source source, const QString& byHand = {}) const;
};

} // namespace daylark::tool
