#include "viewer/transport/StartPosition.h"

#include "model/Bookmark.h"
#include "preferences/Preferences.h"

#include <algorithm>

namespace daylark {

MediaTime timeWithin(const SampleIndex& index, qint64 frame, double fraction) {
    const qint64 n = std::clamp<qint64>(frame, 1, std::max<qint64>(1, index.count())) - 1;
    const qint64 start = index.timeOf(n).value;
    const qint64 end = n + 1 < index.count() ? index.timeOf(n + 1).value : index.endTicks;
    return {start + qint64(double(end - start) * fraction), index.timeScale};
}

StartPosition::StartPosition(const Preferences& preferences) {
    if (!preferences.trimHandles()) return;
    head_ = preferences.handleHead();
    tail_ = preferences.handleTail();
}

StartPosition StartPosition::atFirstFrame(const Preferences& preferences) {
    StartPosition start(preferences);
    start.rule_ = Rule::firstFrame;
    return start;
}

StartPosition::StartPosition(const Movie& movie, const Preferences& preferences, const Previous& previous)
    : StartPosition(preferences) {
    const StartFrame start = preferences.loadFrame();
    if (start == StartFrame::first) rule_ = Rule::firstFrame;
    if (start == StartFrame::second) rule_ = Rule::secondFrame;
    if (start == StartFrame::middle) rule_ = Rule::middle;
    if (start == StartFrame::current || start == StartFrame::lastVisited) {
        rule_ = Rule::time;
        time_ = start == StartFrame::current ? previous.time : movie.mLastFrameVisited;
    }
    // Versions are compared by their frames, whatever their rates; the first movie starts where it was left.
    if (start == StartFrame::sameFrame) {
        rule_ = previous.frame > 0 ? Rule::sameFrame : Rule::time;
        frame_ = previous.frame;
        time_ = movie.mLastFrameVisited;
    }
    if (start != StartFrame::firstBookmark) return;
    const auto first = std::find_if(movie.bookmarkStore.begin(), movie.bookmarkStore.end(),
                                    [](const auto& bookmark) { return bookmark && !bookmark->mute; });
    if (first == movie.bookmarkStore.end()) return;
    rule_ = Rule::frame;
    frame_ = (*first)->firstFrame;
}

std::optional<MediaTime> StartPosition::timeIn(const SampleIndex& index) const {
    constexpr double wellInside = 0.4; // of a frame, however times round
    switch (rule_) {
    case Rule::asLoaded:
        return std::nullopt;
    case Rule::firstFrame:
        return head_ > 0 ? index.timeOf(head_) : MediaTime{0, 1};
    case Rule::secondFrame:
        return index.timeOf(head_ + 1);
    case Rule::middle:
        return MediaTime{index.endTicks / 2, index.timeScale};
    case Rule::time:
        return time_;
    case Rule::frame:
        return frame_ > index.count() ? index.timeOf(index.count() - 1 - tail_)
                                      : timeWithin(index, frame_, wellInside);
    case Rule::sameFrame:
        return timeWithin(index, frame_, wellInside);
    }
    return std::nullopt;
}

qint64 StartPosition::frameIn(const SampleIndex& index, bool running) const {
    const std::optional<MediaTime> time = timeIn(index);
    const qint64 frame = time ? index.frameAt(*time) + 1 : 1;
    return running && frame >= index.count() ? 1 + head_ : frame;
}

} // namespace daylark
