#pragma once

#include "playback/sound/SoundDevice.h"

#include <memory>

namespace daylark {

/// What came of asking for a sound server that speaks PulseAudio's protocol.
struct PulseServer {
    bool isThere = false;                ///< something serves under the address that the environment gives
    std::unique_ptr<SoundDevice> device; ///< null: it doesn't answer, or refuses
};

/// A device that names no output of the server's: the server moves its sound to whatever the person prefers
/// or plugs in. It tells its progress by the server's own time stamps. Lost when the server goes, or takes
/// away the last output. Waits for the server's answer, at most a second or two.
[[nodiscard]] PulseServer connectToPulseServer();

} // namespace daylark
