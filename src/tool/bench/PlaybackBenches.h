#pragma once

namespace CLI {
class App;
}

namespace daylark::tool {

class ToolContext;

/// `bench decode`, `bench seek` and `bench step`: the player's reading (decode thread, cache, reader) without
/// its clock and without a picture on screen. Main thread; a movie that cannot be opened is the context's
/// failure.
void addPlaybackBenches(CLI::App& bench, ToolContext& context);

} // namespace daylark::tool
