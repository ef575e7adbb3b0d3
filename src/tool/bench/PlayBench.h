#pragma once

namespace CLI {
class App;
}

namespace daylark::tool {

class ToolContext;

/// `bench play` and `bench next`: the player as it is, with its clock, in real time. Main
/// thread; a movie that cannot be opened is the context's failure.
void addPlayBenches(CLI::App& bench, ToolContext& context);

} // namespace daylark::tool
