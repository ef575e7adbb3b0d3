#include "media/FrameReader.h"

#include "media/SampleTable.h"
#include "media/VideoFrameData.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace daylark {
namespace {

constexpr int mostEarlierGroups = 2;

using FramePassed = std::function<void(qint64, const VideoFrame&)>;

/// The decoder is fed in file order and every packet carries its frame number in place of its time stamp, so
/// each picture comes out with the number it is to be shown under, whatever reordering, threads or losses lie
/// between.
class DecodingReader final : public FrameReader {
public:
    DecodingReader(MediaFile file, SampleTable table, av::CodecPtr codec)
        : file_(std::move(file))
        , table_(std::move(table))
        , codec_(std::move(codec))
        , packet_(av_packet_alloc()) {
        for (qint64 n = 0; n < table_.index.count(); ++n)
            if (table_.index.samples[size_t(n)].key) keyFrames_.push_back(n);
    }

    const SampleIndex& index() const override { return table_.index; }
    Result<VideoFrame> read(qint64 n, const CancelFlag* cancel) override {
        return readThrough(n, {}, cancel);
    }
    Result<VideoFrame> readThrough(qint64 n, const FramePassed& passed, const CancelFlag* cancel) override;
    qint64 keyFrameBefore(qint64 n) const override;
    QString decoderName() const override;

private:
    struct Picture {
        qint64 number = -1;
        VideoFrame frame;
    };
    enum class Found { exact, missing, stopped };

    qint64 placeOf(qint64 n) const { return table_.packetOfFrame[size_t(n)]; }
    qint64 startFor(qint64 key, int groups) const;
    int groupsBefore(qint64 key) const {
        const auto known = earlierGroups_.find(key);
        return known == earlierGroups_.end() ? 0 : known->second;
    }
    Result<VideoFrame> findFrame(qint64 n, const FramePassed& passed);
    Result<void> startAt(qint64 keyFrame);
    bool windTo(qint64 place, int attempt);
    Found decodeTo(qint64 n, const FramePassed& passed);
    bool feed();
    int receive(const FramePassed& passed);
    Result<VideoFrame> afterMissing(qint64 n, const FramePassed& passed);
    VideoFrame nearest() const {
        return shown_.number >= 0 ? shown_.frame : ahead_ ? ahead_->frame : VideoFrame();
    }

    MediaFile file_;
    SampleTable table_;
    av::CodecPtr codec_;
    av::PacketPtr packet_;
    std::vector<qint64> keyFrames_;
    std::map<qint64, int> earlierGroups_; ///< key frames whose group needs a start so many groups earlier
    std::set<qint64> damagedGroups_;      ///< key frames whose group lacks pictures for good
    bool started_ = false;
    bool packetWaits_ = false; ///< packet_ holds the next packet already
    bool draining_ = false;
    qint64 place_ = 0;             ///< of the next packet, in file order
    qint64 firstValid_ = 0;        ///< pictures below refer to what was not decoded
    Picture shown_;                ///< the last picture given
    std::optional<Picture> ahead_; ///< decoded already, beyond what was asked for
    Picture answer_;               ///< the last answer, which for a damaged sample is an earlier picture
};

qint64 DecodingReader::keyFrameBefore(qint64 n) const {
    n = std::clamp<qint64>(n, 0, std::max<qint64>(0, table_.index.count() - 1));
    auto key = std::upper_bound(keyFrames_.begin(), keyFrames_.end(), n);
    while (key != keyFrames_.begin())
        if (--key; placeOf(*key) <= placeOf(n)) return *key;
    return 0;
}

QString DecodingReader::decoderName() const {
    const QString name = QString::fromUtf8(codec_->codec->name);
    const int threads = codec_->active_thread_type != 0 ? codec_->thread_count : 1;
    return threads > 1 ? QStringLiteral("%1, %2 threads").arg(name).arg(threads) : name;
}

Result<VideoFrame> DecodingReader::readThrough(qint64 n, const FramePassed& passed,
                                               const CancelFlag* cancel) {
    if (n < 0 || n >= table_.index.count()) return Error{QStringLiteral("no such frame")};
    if (n == answer_.number) return answer_.frame;
    file_.setCancel(cancel);
    Result<VideoFrame> result = findFrame(n, passed);
    if (result)
        answer_ = {n, *result};
    else
        started_ = false; // interrupted within a packet, the file stands beyond what place_ says
    file_.setCancel(nullptr);
    return result;
}

Result<VideoFrame> DecodingReader::findFrame(qint64 n, const FramePassed& passed) {
    const qint64 key = keyFrameBefore(n);
    const bool onTheWay = started_ && n > shown_.number && n >= firstValid_ && placeOf(key) <= place_;
    if (!onTheWay)
        if (const auto done = startAt(startFor(key, groupsBefore(key))); !done) return done.error();
    switch (decodeTo(n, passed)) {
    case Found::exact:
        return shown_.frame;
    case Found::missing:
        return afterMissing(n, passed);
    case Found::stopped:
        break;
    }
    return Error{QStringLiteral("cancelled")};
}

/// The decoder left the picture out: because the sample is damaged, or because it could not make it without
/// the group before (a stream refreshed bit by bit). An earlier start tells, and what it tells is remembered.
Result<VideoFrame> DecodingReader::afterMissing(qint64 n, const FramePassed& passed) {
    const qint64 key = keyFrameBefore(n);
    if (key > 0 && !damagedGroups_.contains(key)) {
        for (int groups = earlierGroups_[key] + 1; groups <= mostEarlierGroups; ++groups) {
            if (const auto done = startAt(startFor(key, groups)); !done) return done.error();
            const Found found = decodeTo(n, passed);
            if (found == Found::stopped) return Error{QStringLiteral("cancelled")};
            if (found == Found::exact) {
                earlierGroups_[key] = groups;
                return shown_.frame;
            }
        }
        damagedGroups_.insert(key);
    } else if (key > 0 && shown_.number < 0) {
        // The group is known to begin with damage: its earlier picture stands in the group before.
        if (const auto done = startAt(startFor(key, 1)); !done) return done.error();
        if (decodeTo(n, passed) == Found::stopped) return Error{QStringLiteral("cancelled")};
    }
    if (const VideoFrame frame = nearest(); !frame.isNull()) return frame;
    return Error{QStringLiteral("no picture can be decoded")};
}

qint64 DecodingReader::startFor(qint64 key, int groups) const {
    for (; groups > 0 && key > 0; --groups)
        key = keyFrameBefore(key - 1);
    return key;
}

Result<void> DecodingReader::startAt(qint64 keyFrame) {
    // Before the first key frame there may be pictures that the decoder makes all the same.
    const bool fromBeginning = keyFrames_.empty() || keyFrame <= keyFrames_.front();
    const qint64 place = fromBeginning ? 0 : placeOf(keyFrame);
    avcodec_flush_buffers(codec_.get());
    started_ = draining_ = packetWaits_ = false;
    shown_ = {};
    ahead_.reset();
    firstValid_ = fromBeginning ? 0 : keyFrame;
    for (int attempt = 0; attempt < 4; ++attempt) {
        if (file_.cancelled()) break;
        if (windTo(place, attempt)) {
            place_ = place;
            started_ = packetWaits_ = true;
            return {};
        }
    }
    return Error{file_.cancelled() ? QStringLiteral("cancelled")
                                   : QStringLiteral("the file cannot be wound to a frame")};
}

/// Brings the packet at `place` into packet_. Where a container's seeking ends is checked, never trusted; the
/// last attempt reads the file from its beginning.
bool DecodingReader::windTo(qint64 place, int attempt) {
    const int stream = file_.video()->index;
    const bool byBytes = file_.format()->iformat->flags & AVFMT_TS_DISCONT;
    int code = -1;
    qint64 patience = 400; // packets between where a seek may land and the goal
    if (attempt < 3) {
        constexpr qint64 stepsBack[] = {0, 60, 600};
        qint64 earlier = std::max<qint64>(0, place - stepsBack[attempt]);
        while (byBytes && earlier > 0 && table_.packets[size_t(earlier)].position < 0)
            --earlier;
        const SampleTable::Packet& target = table_.packets[size_t(earlier)];
        patience += place - earlier + stepsBack[attempt];
        code = byBytes ? av_seek_frame(file_.format(), stream, target.position, AVSEEK_FLAG_BYTE)
                       : av_seek_frame(file_.format(), stream, target.stamp, AVSEEK_FLAG_BACKWARD);
    } else {
        Result<MediaFile> fresh = file_.reopened();
        if (!fresh) return false;
        file_ = std::move(*fresh);
        patience = place + 1;
        code = 0;
    }
    if (code < 0) return false;
    if (attempt < 3 && !table_.canRecognise(size_t(place))) return false;
    for (; patience > 0; --patience) {
        if (file_.readPacket(packet_.get()) < 0) return false;
        if (attempt == 3 && patience > 1) continue; // counted from the beginning, which needs no recognising
        if (attempt == 3 || table_.isAt(size_t(place), *packet_)) return true;
    }
    return false;
}

DecodingReader::Found DecodingReader::decodeTo(qint64 n, const FramePassed& passed) {
    for (;;) {
        if (ahead_) {
            if (ahead_->number > n) return Found::missing;
            shown_ = std::move(*ahead_);
            ahead_.reset();
            if (shown_.number == n) return Found::exact;
        }
        const int code = receive(passed);
        if (code == AVERROR_EOF) return Found::missing;
        if (code == AVERROR(EAGAIN) && !feed()) return Found::stopped;
    }
}

/// Takes one picture from the decoder into ahead_ (unless it is none of ours).
int DecodingReader::receive(const FramePassed& passed) {
    av::FramePtr frame(av_frame_alloc());
    const int code = avcodec_receive_frame(codec_.get(), frame.get());
    // A decoder that reports damage wants the next packet.
    if (code < 0) return code == AVERROR_EOF ? AVERROR_EOF : AVERROR(EAGAIN);
    const qint64 number = frame->pts;
    const bool damaged = frame->decode_error_flags != 0;
    if (number < firstValid_ || number >= table_.index.count() || number <= shown_.number || damaged)
        return 0;
    auto data = std::make_shared<VideoFrame::Data>();
    data->pixelAspect = pixelAspectOf(file_.format(), file_.video(), frame.get());
    data->rotation = rotationOf(*file_.video());
    data->frame = std::move(frame);
    ahead_ = Picture{number, VideoFrame(std::move(data))};
    if (passed) passed(number, ahead_->frame);
    return 0;
}

/// Hands the decoder one more packet, or the end; false when cancelled.
bool DecodingReader::feed() {
    if (draining_) return true;
    if (!packetWaits_) {
        const int code = file_.readPacket(packet_.get());
        if (code == AVERROR_EXIT) return false;
        if (code < 0 || place_ >= qint64(table_.packets.size())) {
            avcodec_send_packet(codec_.get(), nullptr);
            draining_ = true;
            return true;
        }
    }
    packetWaits_ = false;
    const qint32 number = table_.packets[size_t(place_++)].frame;
    packet_->pts = packet_->dts = number >= 0 ? number : AV_NOPTS_VALUE;
    avcodec_send_packet(codec_.get(), packet_.get()); // damage shows as a missing picture
    av_packet_unref(packet_.get());
    return !file_.cancelled();
}

} // namespace

Result<std::unique_ptr<FrameReader>> FrameReader::open(const QString& path, const CancelFlag* cancel) {
    Result<MediaFile> file = MediaFile::open(path, cancel);
    if (!file) return file.error();
    Result<SampleTable> table = buildSampleTable(*file);
    if (!table) return table.error();
    if (table->packetOfFrame.empty()) return Error{QStringLiteral("no picture")};
    Result<av::CodecPtr> codec = file->openDecoder(table->reorderDepth);
    if (!codec) return codec.error();
    file->setCancel(nullptr);
    return std::unique_ptr<FrameReader>(
        std::make_unique<DecodingReader>(std::move(*file), std::move(*table), std::move(*codec)));
}

} // namespace daylark
