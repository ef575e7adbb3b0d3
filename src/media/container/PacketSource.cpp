#include "media/container/PacketSource.h"

#include <algorithm>

namespace daylark {
namespace {

constexpr int fromBeginning = 4; // the last attempt reads the file from its beginning

} // namespace

int PacketSource::read(qint64 place, AVPacket* packet) {
    if (place >= end_) return AVERROR_EOF;
    const bool isNext = place == next_;
    next_ = -1;
    if (isNext) {
        const int code = file_.readPacket(packet);
        if (code == AVERROR_EXIT) return code;
        // A container's index may be wrong where nobody has looked: that costs a seek, never a picture. And where an edit list
        // shows a stretch twice, a seek may have gone to the later one, behind which the file ends.
        const qint64 expected = table_.packets[size_t(place)].position;
        if (code >= 0 && (expected < 0 || packet->pos < 0 || expected == packet->pos)) {
            next_ = place + 1;
            return code;
        }
    }
    for (int attempt = 0; attempt <= fromBeginning; ++attempt) {
        if (file_.cancelled()) return AVERROR_EXIT;
        if (windTo(place, attempt, packet)) {
            next_ = place + 1;
            return 0;
        }
    }
    return file_.cancelled() ? AVERROR_EXIT : AVERROR(ESPIPE);
}

/// Where the container's index knows every packet, straight to this one.
bool PacketSource::seekDirectly(qint64 place) {
    const AVIndexEntry* entry = avformat_index_get_entry(file_.video(), int(place));
    const qint64 position = table_.packets[size_t(place)].position;
    return entry && position >= 0 && entry->pos == position &&
           av_seek_frame(file_.format(), file_.video()->index, entry->timestamp, AVSEEK_FLAG_ANY) >= 0;
}

bool PacketSource::windTo(qint64 place, int attempt, AVPacket* packet) {
    const int stream = file_.video()->index;
    const bool byBytes = file_.format()->iformat->flags & AVFMT_TS_DISCONT;
    qint64 patience = 32; // packets between where a seek may land and the goal
    if (attempt == 0) {
        if (byBytes || !seekDirectly(place)) return false;
    } else if (attempt < fromBeginning) {
        constexpr qint64 stepsBack[] = {0, 60, 600};
        qint64 earlier = std::max<qint64>(0, place - stepsBack[attempt - 1]);
        while (byBytes && earlier > 0 && table_.packets[size_t(earlier)].position < 0)
            --earlier;
        const SampleTable::Packet& target = table_.packets[size_t(earlier)];
        patience = 400 + place - earlier + stepsBack[attempt - 1];
        const int code = byBytes ? av_seek_frame(file_.format(), stream, target.position, AVSEEK_FLAG_BYTE)
                                 : av_seek_frame(file_.format(), stream, target.stamp, AVSEEK_FLAG_BACKWARD);
        if (code < 0) return false;
    } else {
        Result<MediaFile> fresh = file_.reopened();
        if (!fresh) return false;
        file_ = std::move(*fresh);
        patience = place + 1;
    }
    if (attempt < fromBeginning && !table_.canRecognise(size_t(place))) return false;
    for (; patience > 0; --patience) {
        if (file_.readPacket(packet) < 0) {
            if (attempt == fromBeginning && !file_.cancelled()) end_ = place;
            return false;
        }
        // Counted from the beginning needs no recognising.
        if (attempt == fromBeginning ? patience == 1 : table_.isAt(size_t(place), *packet)) return true;
    }
    return false;
}

} // namespace daylark
