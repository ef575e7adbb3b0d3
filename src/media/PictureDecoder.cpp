#include "media/PictureDecoder.h"

#include "media/VideoFrameData.h"

#include <algorithm>

namespace daylark {

PictureDecoder::PictureDecoder(av::CodecPtr codec, PacketSource& source, const SampleTable& table,
                               bool standsAlone)
    : codec_(std::move(codec))
    , source_(source)
    , table_(table)
    , standsAlone_(standsAlone)
    , disposable_(*source.file().video()->codecpar)
    , packet_(av_packet_alloc()) {}

void PictureDecoder::startAt(qint64 place, qint64 firstValid) {
    avcodec_flush_buffers(codec_.get());
    started_ = true;
    draining_ = Draining::no;
    place_ = place;
    firstValid_ = firstValid;
    dropped_ = -1;
    shown_ = {};
    ahead_.reset();
}

VideoFrame PictureDecoder::nearest() const {
    return shown_.number >= 0 ? shown_.frame : ahead_ ? ahead_->frame : VideoFrame();
}

PictureDecoder::Found PictureDecoder::decodeTo(qint64 n, const FramePassed& passed, OnTheWay onTheWay) {
    for (;;) {
        if (ahead_) {
            if (ahead_->number > n) return Found::missing;
            shown_ = std::move(*ahead_);
            ahead_.reset();
            if (shown_.number == n) return Found::exact;
        }
        const int code = receive(passed);
        if (code == AVERROR_EOF && !goesOnAfterDraining(n)) return Found::missing;
        if (code == AVERROR(EAGAIN) && !feed(n, onTheWay)) return Found::stopped;
    }
}

/// Nothing more comes out; where pictures stand for themselves the decoder goes on behind the one drained
/// for.
bool PictureDecoder::goesOnAfterDraining(qint64 target) {
    const bool goesOn = standsAlone_ && draining_ == Draining::forTarget;
    if (!goesOn) {
        started_ = false;
        return false;
    }
    avcodec_flush_buffers(codec_.get());
    draining_ = Draining::no;
    return place_ <= table_.packetOfFrame[size_t(target)];
}

QString PictureDecoder::name() const {
    const QString name = QString::fromUtf8(codec_->codec->name);
    const int threads = codec_->active_thread_type != 0 ? codec_->thread_count : 1;
    return threads > 1 ? QStringLiteral("%1, %2 threads").arg(name).arg(threads) : name;
}

/// Takes one picture from the decoder into ahead_ (unless it is none of ours).
int PictureDecoder::receive(const FramePassed& passed) {
    av::FramePtr frame(av_frame_alloc());
    const int code = avcodec_receive_frame(codec_.get(), frame.get());
    // A decoder that reports damage wants the next packet.
    if (code < 0) return code == AVERROR_EOF ? AVERROR_EOF : AVERROR(EAGAIN);
    const qint64 number = frame->pts;
    const bool damaged = frame->decode_error_flags != 0;
    if (number < firstValid_ || number >= table_.index.count() || number <= shown_.number || damaged)
        return 0;
    auto data = std::make_shared<VideoFrame::Data>();
    data->pixelAspect = pixelAspectOf(source_.file().format(), source_.file().video(), frame.get());
    data->rotation = rotationOf(*source_.file().video());
    data->frame = std::move(frame);
    ahead_ = Picture{number, VideoFrame(std::move(data))};
    if (passed) passed(number, ahead_->frame);
    return 0;
}

void PictureDecoder::drain(Draining why) {
    avcodec_send_packet(codec_.get(), nullptr);
    draining_ = why;
}

bool PictureDecoder::isToDrop(qint64 target, const AVPacket& packet) const {
    const qint32 number = table_.packets[size_t(place_)].frame;
    return number >= 0 && number < target && !table_.halves && disposable_.is(packet);
}

/// Is this the last packet that a read of the target needs?
bool PictureDecoder::endsWith(qint64 place, qint64 target, OnTheWay onTheWay) const {
    if (onTheWay == OnTheWay::neededOnly)
        return standsAlone_ && table_.packets[size_t(place)].frame == target;
    if (onTheWay != OnTheWay::allAndEnd) return false;
    constexpr qint64 deepest = 16; // what is shown before the target may stand behind it in the file
    qint64 last = -1;
    for (qint64 n = std::max<qint64>(0, target - deepest); n <= target; ++n)
        last = std::max<qint64>(last, table_.packetOfFrame[size_t(n)]);
    return place >= last;
}

/// Hands the decoder one more packet, or the end; false when cancelled.
bool PictureDecoder::feed(qint64 target, OnTheWay onTheWay) {
    if (draining_ != Draining::no) return true;
    for (;;) {
        const int code = source_.read(place_, packet_.get());
        if (code == AVERROR_EXIT || source_.file().cancelled()) return false;
        if (code < 0) {
            drain(Draining::atEnd);
            return true;
        }
        if (onTheWay != OnTheWay::neededOnly || !isToDrop(target, *packet_)) break;
        dropped_ = std::max<qint64>(dropped_, table_.packets[size_t(place_)].frame);
        ++place_;
    }
    const qint32 number = table_.packets[size_t(place_)].frame;
    packet_->pts = packet_->dts = number >= 0 ? number : AV_NOPTS_VALUE;
    avcodec_send_packet(codec_.get(), packet_.get()); // damage shows as a missing picture
    av_packet_unref(packet_.get());
    // A decoder that is told that nothing follows gives the picture at once.
    if (endsWith(place_++, target, onTheWay)) drain(Draining::forTarget);
    return !source_.file().cancelled();
}

} // namespace daylark
