#pragma once

#include "media/container/MediaFile.h"
#include "media/sound/SoundTrack.h"

#include <memory>
#include <utility>
#include <vector>

namespace daylark {

/// The sound tracks of a file that are heard, decoded together from one pass: any stretch may be asked for, in order it is
/// decoded once, elsewhere the file is wound, exactly. Internal to media/; owned by a reader; one thread at a time. Damage in
/// the middle is a gap.
class SoundSource {
public:
    using Tracks = std::vector<std::pair<int, std::unique_ptr<SoundTrack>>>; ///< with the stream's number

    /// `origin`: seconds in the file at which position 0 stands. `rate`: of all tracks. Fails where nothing can be decoded.
    [[nodiscard]] static Result<std::unique_ptr<SoundSource>> open(MediaFile file, Tracks tracks, double origin, int rate);

    [[nodiscard]] int rate() const { return rate_; }
    [[nodiscard]] qint64 start() const { return start_; }
    [[nodiscard]] const Tracks& tracks() const { return tracks_; }
    /// The file has been decoded to its end, which lies before this position.
    [[nodiscard]] bool endsBefore(qint64 position) const { return ended_ && heldUntil() <= position; }
    /// Makes the tracks hold all that stands there, which they do until the next call. Fails only when cancelled.
    [[nodiscard]] Result<void> reach(qint64 position, qint64 count, const CancelFlag* cancel);

private:
    enum class Step { more, end, cancelled };

    SoundSource(MediaFile file, Tracks tracks, double origin, int rate);
    [[nodiscard]] Result<void> findStart();
    void deliver();
    void drop();
    [[nodiscard]] qint64 heldFrom() const;
    [[nodiscard]] qint64 heldUntil() const;
    [[nodiscard]] Result<void> seekTo(qint64 position);
    bool wind(qint64 position, int attempt);
    [[nodiscard]] bool standsBefore(qint64 position) const;
    Step decodeMore();

    MediaFile file_;
    const Tracks tracks_;
    const double origin_; ///< seconds
    const int rate_;
    av::PacketPtr packet_;
    bool started_ = false; ///< the file stands where reading can go on
    bool ended_ = false;
    qint64 start_ = 0;
};

} // namespace daylark
