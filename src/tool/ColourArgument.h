#pragma once

#include "picture/colour/StillColours.h"

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

    /// What an item's record and its session say.
    struct Known {
        QString inputSpace, configuration;
    };
    /// What this picture goes through; null: its numbers are shown as they are. None: told, the command has failed.
    /// `source.ownWord` and `source.isLight` are read off the picture.
    [[nodiscard]] std::optional<std::shared_ptr<const DisplayProcessor>>
    processorFor(ToolContext& context, const VideoFrame& frame, ColourConfig::Source source, const Known& known = {}) const;
    /// The same for thumbnails. None: told, the command has failed.
    [[nodiscard]] std::optional<StillColour> stillColour(ToolContext& context) const;

private:
    [[nodiscard]] ColourChoice choice(ToolContext& context, const QString& sessionConfiguration) const;
    /// None: told. Else the configuration, which has what the arguments name.
    [[nodiscard]] std::shared_ptr<const ColourConfig> configFor(ToolContext& context, const ColourChoice& choice) const;
};

} // namespace daylark::tool
