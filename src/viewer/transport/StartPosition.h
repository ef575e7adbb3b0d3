#pragma once

#include "media/container/SampleIndex.h"
#include "model/Movie.h"

#include <optional>

namespace daylark {

class Preferences;

/// The time that lies the fraction of a frame into the frame (from 1, clamped): where bookmarks and start
/// positions put the playhead.
[[nodiscard]] MediaTime timeWithin(const SampleIndex& index, qint64 frame, double fraction);

/// Where a movie starts once it is shown, by the preference "loadFrame" and the handles. Decided here once:
/// for the transport, which goes there, and for the movies beside the current one, whose first pictures are
/// made ready. A plain value that holds what it depends on; any thread.
class StartPosition {
public:
    /// Where the movie before it stands: its time, and its frame from 1 (0: there was none).
    struct Previous {
        MediaTime time;
        qint64 frame = 0;
    };
    StartPosition(const Movie& movie, const Preferences& preferences, const Previous& previous);
    [[nodiscard]] static StartPosition
    atFirstFrame(const Preferences& preferences); ///< whatever is preferred

    /// None: it stays where loading put it.
    [[nodiscard]] std::optional<MediaTime> timeIn(const SampleIndex& index) const;
    /// The frame that is shown first, from 1. `running`: a run forwards goes on in it, so that it starts anew
    /// where it would stand at its end.
    [[nodiscard]] qint64 frameIn(const SampleIndex& index, bool running) const;
    bool operator==(const StartPosition&) const = default;

private:
    enum class Rule { asLoaded, firstFrame, secondFrame, middle, time, frame, sameFrame };
    explicit StartPosition(const Preferences& preferences);

    Rule rule_ = Rule::asLoaded;
    qint64 head_ = 0, tail_ = 0; ///< frames that are trimmed
    MediaTime time_;             ///< for `time`
    qint64 frame_ = 0;           ///< for `frame` and `sameFrame`
};

} // namespace daylark
