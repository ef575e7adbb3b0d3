#pragma once

#include "media/decode/AlphaPictures.h"
#include "media/decode/DisposablePicture.h"
#include "media/decode/FrameReader.h"
#include "media/container/PacketSource.h"

#include <functional>
#include <map>

namespace daylark {

using FramePassed = std::function<void(qint64, const VideoFrame&)>;

/// A decoder that stands somewhere in the movie and goes forwards. It is fed in file order and every packet
/// carries its frame number in place of its time stamp, so each picture comes out with the number it is to be
/// shown under, whatever reordering, threads or losses lie between. Internal to media/; owned by the reader;
/// one thread at a time. A damaged picture is left out. A read that is given up leaves it standing where it
/// was.
class PictureDecoder {
public:
    enum class Found { exact, missing, stopped };
    enum class OnTheWay {
        all,
        neededOnly, ///< pictures before the target that no other refers to are left out
    };
    /// A decoder holds pictures back for those that may come before them and for its threads.
    enum class Arrival {
        inStep, ///< the target comes when packets behind it have pushed it out: nothing waits for it alone
        atOnce, ///< the decoder is made to give it as soon as it is decoded
        atEnd,  ///< the same, and with all that is shown before it: the decoder is told that nothing follows
    };

    /// `standsAlone`: every picture of the movie can be decoded without the others.
    PictureDecoder(av::CodecPtr codec, PacketSource& source, const SampleTable& table, bool standsAlone);

    /// Goes on from this packet; pictures below `firstValid` refer to what is not decoded.
    void startAt(qint64 place, qint64 firstValid);
    [[nodiscard]] bool isIdle() const { return !started_; } ///< stands nowhere
    /// Reaches frame n by decoding on, without leaving out its key frame.
    [[nodiscard]] bool reaches(qint64 n, qint64 keyPlace) const {
        return started_ && n > shown_.number && n >= firstValid_ && keyPlace <= place_ && n > dropped_;
    }
    [[nodiscard]] bool sharesSlices() const { return codec_->active_thread_type == FF_THREAD_SLICE; }
    [[nodiscard]] QString name() const;                   ///< for people: which decoder works here, and how
    [[nodiscard]] qint64 place() const { return place_; } ///< of the next packet, in file order
    /// `passed` (may be empty) gets every picture made on the way, the target and perhaps some beyond.
    Found decodeTo(qint64 n, const FramePassed& passed, OnTheWay onTheWay, Arrival arrival);
    [[nodiscard]] const VideoFrame& shown() const { return shown_.frame; } ///< the last picture found
    /// The last picture found, or the first one after; null: none.
    [[nodiscard]] VideoFrame nearest() const;
    [[nodiscard]] qint64 shownNumber() const { return shown_.number; } ///< -1: none yet

private:
    struct Picture {
        qint64 number = -1;
        VideoFrame frame;
    };
    enum class Draining { no, forTarget, atSeam, atEnd };
    bool takeMade(qint64 n);
    [[nodiscard]] bool isOvertaken(qint64 n) const;
    bool feed(qint64 target, OnTheWay onTheWay, Arrival arrival);
    [[nodiscard]] bool isToDrop(qint64 target, const AVPacket& packet) const;
    [[nodiscard]] bool isLast(qint64 place, qint64 target, Arrival arrival) const;
    int receive(const FramePassed& passed);
    void drain(Draining why);
    bool goesOnAfterDraining(qint64 target);
    [[nodiscard]] bool mayDrain() const;
    [[nodiscard]] bool mayAsk(qint64 target) const;
    void ask();
    void describe(AVPacket& packet);
    [[nodiscard]] bool isSeam(qint64 place) const;

    av::CodecPtr codec_;
    PacketSource& source_;
    const SampleTable& table_;
    const bool standsAlone_;
    DisposablePicture disposable_;
    AlphaPictures alpha_;
    av::PacketPtr packet_;
    bool started_ = false;
    Draining draining_ = Draining::no;
    qint64 place_ = 0;
    qint64 seam_ = -1; ///< the last one passed
    quint16 description_ = 0; ///< which parameter sets the codec has
    qint64 firstValid_ = 0;
    qint64 dropped_ = -1; ///< the highest frame that was not decoded because it was not asked for
    Picture shown_;
    std::map<qint64, VideoFrame> made_; ///< decoded already, beyond what was asked for

    const bool canBeAsked_; ///< for what it holds back, in the middle of the stream
    int startedAgo_ = 0;    ///< packets decoded since the start,
    int askedAgo_ = 0;      ///< since the start or the last time it was asked for another target,
    int asked_ = 0;         ///< and how often it was asked for this one
    qint64 askedPlace_ = 0; ///< frames from here on may come after ones that follow them
};

} // namespace daylark
