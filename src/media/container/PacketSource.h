#pragma once

#include "media/index/SampleTable.h"

namespace daylark {

/// A movie's packets by their place in file order: the next one costs a read, any other one a seek. Where a
/// container's seeking ends is checked against the table, never trusted. Internal to media/; owned by the
/// reader; one thread at a time. A read that was given up leaves nothing behind: the next one seeks anew.
class PacketSource {
public:
    PacketSource(MediaFile file, const SampleTable& table)
        : file_(std::move(file))
        , table_(table)
        , end_(qint64(table.packets.size())) {}

    [[nodiscard]] const MediaFile& file() const { return file_; }
    /// 0, AVERROR_EOF beyond what can be read, AVERROR_EXIT when cancelled, AVERROR(ESPIPE) when the file
    /// cannot be wound there.
    [[nodiscard]] int read(qint64 place, AVPacket* packet);

private:
    bool windTo(qint64 place, int attempt, AVPacket* packet);
    bool seekDirectly(qint64 place);

    MediaFile file_;
    const SampleTable& table_;
    qint64 next_ = -1; ///< the place of the packet that the file gives next; -1 unknown
    qint64 end_ = 0;   ///< nothing can be read from this place on: the file was cut short
};

} // namespace daylark
