#pragma once

#include "media/decode/FrameReader.h"
#include "model/Timecode.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

namespace daylark {

/// A sample of a timecode track as it is stored, with what its sample description says of it.
struct TimecodeSampleBuffer {
    enum Flag : quint32 { dropFrame = 1, twentyFourHourMax = 2, negativeTimesOk = 4 };
    quint32 mediaSubtype = 0; ///< four characters, "tmcd" or "tc64"
    quint32 frameQuanta = 0;  ///< whole frames a second
    quint32 flags = 0;
    QByteArray data; ///< a big-endian frame number
    /// The rate that the description states beside the quanta; 0 of either: none.
    quint32 timeScale = 0, frameDuration = 0;
};

/// The time of one sample; none for a cut one, another subtype or 0 frames a second. Any thread.
[[nodiscard]] std::optional<SmpteTime> smpteTimeOf(const TimecodeSampleBuffer& sample);
/// "01:00:00:00", with any of : ; . , before the frames; none for anything else. Any thread.
[[nodiscard]] std::optional<SmpteTime> smpteTimeOfText(QStringView text);

/// Reads the source timecode of a movie: every sample of its first timecode track, or where the container has
/// no such tracks the one start timecode that it states. Blocks on the disk, so a worker's; one thread at a
/// time. What cannot be read gives no samples; a malformed sample is passed over.
class AVTimecodeReader {
public:
    /// `cancel`, if given, ends a reading early; it outlives the reader.
    explicit AVTimecodeReader(const QString& sourceAsset, const CancelFlag* cancel = nullptr)
        : sourceAsset_(sourceAsset)
        , cancel_(cancel) {}

    [[nodiscard]] std::vector<SmpteTime> readTimecodeSamples();

private:
    [[nodiscard]] bool readTrack();
    void readStartTimecode();
    void outputTimecodeDescriptionForSampleBuffer(const TimecodeSampleBuffer& sample);
    [[nodiscard]] bool cancelled() const { return cancel_ && cancel_->load(); }

    QString sourceAsset_;
    const CancelFlag* cancel_;
    std::vector<SmpteTime> timecodeSamples_;
};

/// The first of them, from which every frame's is counted; none where there is none. As the reader.
[[nodiscard]] std::optional<SmpteTime> firstTimecodeOf(const QString& sourceAsset, const CancelFlag* cancel = nullptr);

} // namespace daylark
