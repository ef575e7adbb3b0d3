#pragma once

namespace daylark {

/// The program's last seconds: from here on everything that was to be written is written, and a worker that a dead share
/// holds up must not hold up the end. Beyond the limit the process ends as it stands, with this exit status. Made once,
/// by main, at the end.
class EndInTime {
public:
    EndInTime(unsigned seconds, int status);
};

} // namespace daylark
