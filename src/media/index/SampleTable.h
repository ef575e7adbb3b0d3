#pragma once

#include "media/container/MediaFile.h"
#include "media/container/SampleIndex.h"

#include <vector>

namespace daylark {

/// The samples of a video stream twice over: in file order, as the reader feeds them to the decoder, and in
/// presentation order, as the sample index. Internal to media/. A plain value once built.
struct SampleTable {
    struct Packet {
        qint64 stamp = 0;     ///< presentation time, or decoding time where the container has no other
        qint64 position = -1; ///< byte offset in the file; -1 unknown
        quint32 content = 0;  ///< a check sum of the data; 0 unknown
        qint32 frame = -1;    ///< presentation number; -1: decoded, but not shown
        bool key = false;
        quint16 description = 0; ///< 0: the stream's own, else from 1 in `descriptions`
    };
    std::vector<Packet> packets;          ///< file order
    std::vector<qint32> packetOfFrame;    ///< frame number to place in `packets`
    std::vector<QByteArray> descriptions; ///< other parameter sets that some samples are to be decoded by
    SampleIndex index;
    int reorderDepth = 0;
    bool halves = false; ///< some pictures come as two packets, one a field

    bool stampsHold =
        true; ///< the stamps are the file's own; else they were inferred and differ after a seek
    bool readThrough = false; ///< the whole file had to be read for it

    /// Does this packet stand at that place? Judged by file position, content, and time stamp where that is
    /// the file's own.
    [[nodiscard]] bool isAt(size_t place, const AVPacket& packet) const;
    /// Is there only one place that `isAt` can mean?
    [[nodiscard]] bool canRecognise(size_t place) const;
};

/// Reads through the file, which must be as it was opened (or through the index in its header, where that is
/// as exact), and leaves it at an unspecified position. A stream without any sample gives an empty table.
/// Fails when cancelled.
[[nodiscard]] Result<SampleTable> buildSampleTable(const MediaFile& file);

} // namespace daylark
