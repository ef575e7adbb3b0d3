#pragma once

namespace CLI {
class App;
}

namespace daylark::tool {

class ToolContext;

/// `bench memory` and `bench list`: what the process holds while one movie is played, jumped and stepped in,
/// and while a long list is gone through. Main thread; a movie that cannot be opened is the context's
/// failure.
void addMemoryBenches(CLI::App& bench, ToolContext& context);

} // namespace daylark::tool
