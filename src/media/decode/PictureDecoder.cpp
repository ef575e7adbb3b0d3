#include "media/decode/PictureDecoder.h"

#include "media/decode/VideoFrameData.h"

#include <algorithm>

namespace daylark {

namespace {

/// So near its start a decoder loses little when it is drained and has to begin again.
constexpr int fewPackets = 4;
constexpr int manyPackets = 16; ///< more than a decoder holds

/// These decoders give the next picture that they hold for an empty packet, and go on undisturbed afterwards
/// (others let go of pictures that are still referred to). The library has no other way but to end the
/// stream.
bool givesHeldPictures(const AVCodecContext& codec, const SampleTable& table) {
    return (codec.codec_id == AV_CODEC_ID_H264 || codec.codec_id == AV_CODEC_ID_HEVC) &&
           codec.active_thread_type == FF_THREAD_FRAME && !table.halves;
}

} // namespace

PictureDecoder::PictureDecoder(av::CodecPtr codec, PacketSource& source, const SampleTable& table,
                               bool standsAlone)
    : codec_(std::move(codec))
    , source_(source)
    , table_(table)
    , standsAlone_(standsAlone)
    , disposable_(*source.file().video()->codecpar)
    , alpha_(source.file())
    , packet_(av_packet_alloc())
    , canBeAsked_(givesHeldPictures(*codec_, table)) {}

void PictureDecoder::startAt(qint64 place, qint64 firstValid) {
    avcodec_flush_buffers(codec_.get());
    alpha_.flush();
    started_ = true;
    draining_ = Draining::no;
    place_ = seam_ = place;
    firstValid_ = firstValid;
    dropped_ = -1;
    shown_ = {};
    made_.clear();
    startedAgo_ = askedAgo_ = 0;
    askedPlace_ = 0;
}

VideoFrame PictureDecoder::nearest() const {
    return shown_.number >= 0 ? shown_.frame : made_.empty() ? VideoFrame() : made_.begin()->second;
}

PictureDecoder::Found PictureDecoder::decodeTo(qint64 n, const FramePassed& passed, OnTheWay onTheWay,
                                               Arrival arrival) {
    asked_ = 0;
    for (;;) {
        if (takeMade(n)) {
            // Drained near its start it begins again when it is needed.
            if (draining_ == Draining::forTarget && !standsAlone_) started_ = false;
            return Found::exact;
        }
        if (isOvertaken(n)) return Found::missing;
        const int code = receive(passed);
        if (code == AVERROR_EOF && !goesOnAfterDraining(n)) return Found::missing;
        if (code == AVERROR(EAGAIN) && !feed(n, onTheWay, arrival)) return Found::stopped;
    }
}

/// Shows what is made of the way to frame n; true when that is reached.
bool PictureDecoder::takeMade(qint64 n) {
    while (!made_.empty() && made_.begin()->first <= n) {
        shown_ = {made_.begin()->first, std::move(made_.begin()->second)};
        made_.erase(made_.begin());
    }
    return shown_.number == n;
}

/// Has a picture come that cannot come before frame n?
bool PictureDecoder::isOvertaken(qint64 n) const {
    if (made_.empty()) return false;
    const bool nWasFedBeforeAsking = table_.packetOfFrame[size_t(n)] < askedPlace_;
    return nWasFedBeforeAsking || std::any_of(made_.begin(), made_.end(), [&](const auto& picture) {
               return table_.packetOfFrame[size_t(picture.first)] >= askedPlace_;
           });
}

/// Nothing more comes out; where pictures stand for themselves the decoder goes on behind the one drained
/// for.
bool PictureDecoder::goesOnAfterDraining(qint64 target) {
    const bool isAtSeam = draining_ == Draining::atSeam;
    const bool goesOn = isAtSeam || (standsAlone_ && draining_ == Draining::forTarget);
    if (!goesOn) {
        started_ = false;
        return false;
    }
    avcodec_flush_buffers(codec_.get());
    alpha_.flush();
    draining_ = Draining::no;
    return isAtSeam || place_ <= table_.packetOfFrame[size_t(target)];
}

/// An edit list goes back in the file here: to a decoder that counts pictures these have numbers that it knows already.
bool PictureDecoder::isSeam(qint64 place) const {
    if (codec_->codec_id != AV_CODEC_ID_HEVC || place <= 0 || place == seam_ || size_t(place) >= table_.packets.size())
        return false;
    const SampleTable::Packet &before = table_.packets[size_t(place) - 1], &packet = table_.packets[size_t(place)];
    return packet.key && packet.position >= 0 && packet.position <= before.position;
}

QString PictureDecoder::name() const {
    const QString name = QString::fromUtf8(codec_->codec->name);
    const int threads = codec_->active_thread_type != 0 ? codec_->thread_count : 1;
    return threads > 1 ? QStringLiteral("%1, %2 threads").arg(name).arg(threads) : name;
}

/// Takes one picture from the decoder into made_ (unless it is none of ours).
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
    data->orientation = orientationOf(*source_.file().video());
    alpha_.addTo(*frame, number);
    data->frame = std::move(frame);
    const VideoFrame& picture = made_[number] = VideoFrame(std::move(data));
    if (passed) passed(number, picture);
    return 0;
}

void PictureDecoder::drain(Draining why) {
    avcodec_send_packet(codec_.get(), nullptr);
    draining_ = why;
}

bool PictureDecoder::isToDrop(qint64 target, const AVPacket& packet) const {
    const qint32 number = table_.packets[size_t(place_)].frame;
    const bool asDescribed = table_.descriptions.empty(); // units are told apart by the stream's own parameters
    return number >= 0 && number < target && !table_.halves && asDescribed && disposable_.is(packet);
}

/// Is this the last packet that a read of the target needs?
bool PictureDecoder::isLast(qint64 place, qint64 target, Arrival arrival) const {
    qint64 last = table_.packetOfFrame[size_t(target)];
    if (arrival == Arrival::atEnd) {
        constexpr qint64 deepest = 16; // what is shown before the target may stand behind it in the file
        for (qint64 n = std::max<qint64>(0, target - deepest); n < target; ++n)
            last = std::max<qint64>(last, table_.packetOfFrame[size_t(n)]);
    }
    return place >= last;
}

/// Does the decoder give the target, drained behind its packet, and lose little? Where packets are no
/// pictures of their own (fields, what an edit list hides) it may want more of them.
bool PictureDecoder::mayDrain() const {
    return standsAlone_ || (startedAgo_ <= fewPackets && !table_.halves);
}

/// Only while every thread has a picture to give: otherwise they would work one after the other from then on.
bool PictureDecoder::mayAsk(qint64 target) const {
    const int held = codec_->thread_count + table_.reorderDepth;
    return canBeAsked_ && place_ > table_.packetOfFrame[size_t(target)] && asked_ <= held &&
           (asked_ > 0 || askedAgo_ >= held);
}

void PictureDecoder::ask() {
    ++asked_;
    askedAgo_ = 0;
    askedPlace_ = place_;
    // Without data, but not empty: that would be the end of the stream.
    if (uint8_t* text = av_packet_new_side_data(packet_.get(), AV_PKT_DATA_STRINGS_METADATA, 2))
        text[0] = text[1] = 0;
    avcodec_send_packet(codec_.get(), packet_.get());
    av_packet_unref(packet_.get());
}

/// Where other parameter sets hold than those that the decoder had last, the packet brings them along: what the
/// demuxer announces goes to whoever reads next, which may have been another decoder.
void PictureDecoder::describe(AVPacket& packet) {
    const quint16 wanted = table_.packets[size_t(place_)].description;
    if (wanted == description_) return;
    const AVCodecParameters& own = *source_.file().video()->codecpar;
    const QByteArray sets = wanted == 0 ? QByteArray(reinterpret_cast<const char*>(own.extradata), own.extradata_size)
                                        : table_.descriptions[size_t(wanted) - 1];
    uint8_t* data = av_packet_new_side_data(&packet, AV_PKT_DATA_NEW_EXTRADATA, size_t(sets.size()));
    if (!data) return;
    std::copy(sets.cbegin(), sets.cend(), reinterpret_cast<char*>(data));
    description_ = wanted;
}

/// Hands the decoder one more packet, or the end, or asks for what it holds; false when cancelled, and it can
/// go on.
bool PictureDecoder::feed(qint64 target, OnTheWay onTheWay, Arrival arrival) {
    if (draining_ != Draining::no) return true;
    if (arrival == Arrival::atOnce && mayAsk(target)) {
        ask();
        return !source_.file().cancelled();
    }
    for (;;) {
        if (source_.file().cancelled()) return false;
        if (isSeam(place_)) {
            seam_ = place_;
            drain(Draining::atSeam);
            return true;
        }
        const int code = source_.read(place_, packet_.get());
        if (code == AVERROR_EXIT) return false;
        if (code < 0) {
            drain(Draining::atEnd);
            return true;
        }
        if (onTheWay == OnTheWay::all || !isToDrop(target, *packet_)) break;
        dropped_ = std::max<qint64>(dropped_, table_.packets[size_t(place_)].frame);
        ++place_;
    }
    const qint32 number = table_.packets[size_t(place_)].frame;
    packet_->pts = packet_->dts = number >= 0 ? number : AV_NOPTS_VALUE;
    // The table says what is shown: of a stretch that edits show in parts each copy hides the others' pictures, and a seek goes
    // to any copy.
    packet_->flags &= ~AV_PKT_FLAG_DISCARD;
    describe(*packet_);
    alpha_.feed(*packet_, packet_->pts);
    avcodec_send_packet(codec_.get(), packet_.get()); // damage shows as a missing picture
    av_packet_unref(packet_.get());
    startedAgo_ += number >= 0 ? 1 : fewPackets + 1;
    askedAgo_ += number >= 0 ? 1 : -manyPackets;
    const bool toEnd = arrival == Arrival::atEnd || (arrival == Arrival::atOnce && mayDrain());
    if (toEnd && isLast(place_, target, arrival)) drain(Draining::forTarget);
    ++place_;
    return !source_.file().cancelled();
}

} // namespace daylark
