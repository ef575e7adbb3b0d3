#include "media/sound/SoundSource.h"

#include <algorithm>
#include <limits>

namespace daylark {
namespace {

constexpr double longestLag = 2; // seconds that a track's packets may come later in the file than another's

} // namespace

Result<std::unique_ptr<SoundSource>> SoundSource::open(MediaFile file, Tracks tracks, double origin, int rate) {
    std::unique_ptr<SoundSource> source(new SoundSource(std::move(file), std::move(tracks), origin, rate));
    if (const auto found = source->findStart(); !found) return found.error();
    return source;
}

SoundSource::SoundSource(MediaFile file, Tracks tracks, double origin, int rate)
    : file_(std::move(file))
    , tracks_(std::move(tracks))
    , origin_(origin)
    , rate_(rate)
    , packet_(av_packet_alloc()) {
    deliver();
}

/// Only the packets of the tracks that are heard.
void SoundSource::deliver() {
    for (unsigned i = 0; i < file_.format()->nb_streams; ++i) {
        const bool heard = std::any_of(tracks_.begin(), tracks_.end(),
                                       [&](const auto& track) { return track.first == int(i); });
        file_.format()->streams[i]->discard = heard ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
}

void SoundSource::drop() {
    for (const auto& [stream, track] : tracks_)
        track->drop();
    started_ = ended_ = false;
}

/// Everything is held from here on; before it something has been forgotten.
qint64 SoundSource::heldFrom() const {
    qint64 from = std::numeric_limits<qint64>::min();
    for (const auto& [stream, track] : tracks_)
        if (track->isPlaced() && (!track->start || track->first() > *track->start))
            from = std::max(from, track->first());
    return from;
}

/// Up to here nothing more will come: a track that lags far behind another one is silent there.
qint64 SoundSource::heldUntil() const {
    constexpr qint64 nothing = std::numeric_limits<qint64>::min() / 2;
    qint64 least = std::numeric_limits<qint64>::max(), most = nothing;
    for (const auto& [stream, track] : tracks_) {
        const qint64 until = track->isPlaced() ? track->heldUntil() : nothing;
        least = std::min(least, until);
        most = std::max(most, until);
    }
    return std::max(least, most - qint64(longestLag * rate_));
}

/// The first frame tells where a track begins: headers don't count what a decoder leaves out.
Result<void> SoundSource::findStart() {
    const auto isKnown = [](const auto& track) {
        return track.second->isPlaced() && track.second->heldUntil() > track.second->first();
    };
    const auto isLong = [this](const auto& track) {
        return track.second->heldUntil() - track.second->first() > qint64(longestLag * rate_);
    };
    while (!std::all_of(tracks_.begin(), tracks_.end(), isKnown) &&
           std::none_of(tracks_.begin(), tracks_.end(), isLong)) {
        const Step step = decodeMore();
        if (step == Step::cancelled) return Error{QStringLiteral("cancelled")};
        if (step == Step::end) break;
    }
    start_ = std::numeric_limits<qint64>::max();
    for (const auto& [stream, track] : tracks_) {
        if (!track->isPlaced()) continue;
        track->start = track->first();
        start_ = std::min(start_, track->first());
    }
    if (start_ == std::numeric_limits<qint64>::max()) return Error{QStringLiteral("no sound can be decoded")};
    started_ = true;
    file_.setCancel(nullptr);
    return {};
}

Result<void> SoundSource::reach(qint64 position, qint64 count, const CancelFlag* cancel) {
    file_.setCancel(cancel);
    for (const auto& [stream, track] : tracks_)
        track->forgetBefore(std::min(position, track->heldUntil()));
    const qint64 wanted = std::max(position, start_), end = position + count;
    Result<void> result;
    // A short way ahead is decoded, a long one wound.
    if (wanted < end && (!started_ || wanted < heldFrom() || (wanted > heldUntil() + rate_ && !ended_)))
        result = seekTo(wanted);
    while (result && wanted < end && heldUntil() < end && !ended_) {
        for (const auto& [stream, track] : tracks_)
            track->forgetBefore(wanted);
        if (decodeMore() == Step::cancelled) result = Error{QStringLiteral("cancelled")};
    }
    if (!result) started_ = false; // interrupted within a packet, the file stands anywhere
    file_.setCancel(nullptr);
    return result;
}

/// Leaves the reader decoding from at or before the position. Where a container's seeking ends is checked by
/// what comes out; the last attempt reads the file from its beginning.
Result<void> SoundSource::seekTo(qint64 position) {
    constexpr int attempts = 4;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        drop();
        if (!wind(position, attempt)) continue;
        Step step = Step::more;
        while (step == Step::more && !standsBefore(position) && heldUntil() <= position)
            step = decodeMore();
        if (step == Step::cancelled) return Error{QStringLiteral("cancelled")};
        const bool beyondEnd = ended_ && attempt == attempts - 2 && heldUntil() < position;
        if (standsBefore(position) || beyondEnd || attempt == attempts - 1) {
            started_ = true;
            return {};
        }
        if (file_.cancelled()) break;
    }
    return Error{QStringLiteral("cancelled")};
}

/// Whether nothing of what stands at the position has been passed over; a track that has not come up yet
/// counts where another shows that it will not before the position.
bool SoundSource::standsBefore(qint64 position) const {
    bool any = false;
    for (const auto& [stream, track] : tracks_) {
        if (!track->isPlaced()) {
            if (heldUntil() <= position && !ended_) return false;
            continue;
        }
        any = true;
        if (track->start && track->first() > std::max(position, *track->start)) return false;
    }
    return any;
}

bool SoundSource::wind(qint64 position, int attempt) {
    if (attempt == 3) {
        Result<MediaFile> fresh = file_.reopened();
        if (!fresh) return false;
        file_ = std::move(*fresh);
        deliver();
        return true;
    }
    // Decoders need a few frames to come to their full voice.
    constexpr double stepsBack[] = {0.15, 1.5, 8.0};
    const int stream = tracks_.front().first;
    const double seconds = origin_ + double(position) / rate_ - stepsBack[attempt];
    const auto stamp = int64_t(seconds / av_q2d(file_.format()->streams[stream]->time_base));
    return av_seek_frame(file_.format(), stream, stamp, AVSEEK_FLAG_BACKWARD) >= 0;
}

/// Decodes the file's next packet that matters. A read error in the middle is the end of what can be read.
SoundSource::Step SoundSource::decodeMore() {
    if (ended_) return Step::end;
    for (;;) {
        if (file_.cancelled()) return Step::cancelled;
        const int code = av_read_frame(file_.format(), packet_.get());
        if (code == AVERROR(EAGAIN)) continue;
        if (code < 0) break;
        const auto track = std::find_if(tracks_.begin(), tracks_.end(), [this](const auto& candidate) {
            return candidate.first == packet_->stream_index;
        });
        if (track != tracks_.end()) track->second->decode(packet_.get());
        av_packet_unref(packet_.get());
        if (track != tracks_.end()) return Step::more;
    }
    if (file_.cancelled()) return Step::cancelled;
    for (const auto& [stream, track] : tracks_)
        track->decode(nullptr);
    ended_ = true;
    return Step::end;
}

} // namespace daylark
