#pragma once

#include <QString>

#include <vector>

namespace daylark::truth {

/// One line of a QuickTime edit list, in frames of a movie of constant rate.
struct Edit {
    int frames = 0; ///< how long it is shown
    int from = 0;   ///< first frame of the media shown, from 0; -1: an empty edit
    double rate = 1; ///< of the media; 0: that frame stands still
};

/// Replaces the edit list of a mov or mp4 file whose header stands behind the pictures. `mediaTicks` and
/// `movieTicks`: of one frame on the track's and on the movie's time scale. What the muxer's own list skips
/// in front (the delay of B-frames) stays skipped. False: not such a file.
[[nodiscard]] bool replaceEditList(const QString& path, const std::vector<Edit>& edits, int mediaTicks,
                                   int movieTicks);

} // namespace daylark::truth
