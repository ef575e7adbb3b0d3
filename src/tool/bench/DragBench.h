#pragma once

namespace CLI {
class App;
}

namespace daylark::tool {

class ToolContext;

/// `bench drag`: a hand on the slider, in real time. Main thread; a movie that cannot be opened is the
/// context's failure.
void addDragBench(CLI::App& bench, ToolContext& context);

} // namespace daylark::tool
