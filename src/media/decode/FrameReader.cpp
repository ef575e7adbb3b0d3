#include "media/decode/FrameReader.h"

#include "media/decode/PictureDecoder.h"
#include "media/index/SampleTables.h"
#include "media/sequence/RunReader.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <set>

namespace daylark {
namespace {

constexpr int mostEarlierGroups = 2;
constexpr int aRun = 4;      // reads in order after which more are to be expected
constexpr qint64 nearby = 8; // so many packets ahead of a decoder nothing is left out: the next reads want it
constexpr size_t mostStandingDecoders = 6; // where memory allows

/// Several decoders may stand in different places of one movie, so that a jump ahead within a group that one
/// of them has begun goes on from there, and filling the cache behind the playhead doesn't lose the place
/// ahead of it.
class DecodingReader final : public FrameReader {
public:
    DecodingReader(MediaFile file, SampleTables::Table table, av::CodecPtr codec)
        : shared_(std::move(table))
        , table_(*shared_)
        , source_(std::move(file), table_) {
        for (qint64 n = 0; n < table_.index.count(); ++n)
            if (table_.index.samples[size_t(n)].key) keyFrames_.push_back(n);
        for (const qint64 key : keyFrames_)
            keyPlaces_.push_back(placeOf(key));
        std::sort(keyPlaces_.begin(), keyPlaces_.end());
        standsAlone_ = qint64(keyFrames_.size()) == qint64(table_.packets.size());
        jumpsBySlices_ = standsAlone_ && source_.file().hasEvenSlices();
        mostDecoders_ = jumpsBySlices_ ? 2 : standsAlone_ ? 1 : mostStandingDecoders;
        strict_ = codec->err_recognition & AV_EF_EXPLODE;
        addDecoder(std::move(codec));
    }

    const SampleIndex& index() const override { return table_.index; }
    QString decoderName() const override { return decoders_.back()->name(); }
    Result<VideoFrame> read(qint64 n, const CancelFlag* cancel) override {
        return readThrough(n, {}, cancel);
    }
    Result<VideoFrame> readThrough(qint64 n, const FramePassed& passed, const CancelFlag* cancel) override;
    qint64 keyFrameBefore(qint64 n) const override;
    qint64 pictureBytes() const override { return qint64(source_.file().pictures().byteCount()); }
    void limitDecoders(qint64 bytes) override;

private:
    using Found = PictureDecoder::Found;
    using OnTheWay = PictureDecoder::OnTheWay;
    using Arrival = PictureDecoder::Arrival;

    qint64 placeOf(qint64 n) const { return table_.packetOfFrame[size_t(n)]; }
    qint64 startFor(qint64 key, int groups) const;
    int groupsBefore(qint64 key) const {
        const auto known = earlierGroups_.find(key);
        return known == earlierGroups_.end() ? 0 : known->second;
    }
    void addDecoder(av::CodecPtr codec) {
        decoders_.push_back(
            std::make_unique<PictureDecoder>(std::move(codec), source_, table_, standsAlone_));
    }
    bool suits(const PictureDecoder& decoder) const {
        return !jumpsBySlices_ || decoder.sharesSlices() == (inOrder_ < aRun);
    }
    qint64 worth(const PictureDecoder& decoder) const;
    std::optional<size_t> leastWorth() const;
    void chooseDecoder(qint64 n, qint64 key);
    qint64 mostStanding() const;
    MediaFile::Sharing sharing() const {
        return jumpsBySlices_ && inOrder_ < aRun ? MediaFile::Sharing::slices : MediaFile::Sharing::pictures;
    }
    PictureDecoder& decoder() { return *decoders_.back(); }
    void startAt(qint64 keyFrame);
    Result<VideoFrame> findFrame(qint64 n, const FramePassed& passed);
    Found readAnew(qint64 key, int groups, qint64 n, Arrival arrival, const FramePassed& passed) {
        startAt(startFor(key, groups));
        return decoder().decodeTo(n, passed, OnTheWay::all, arrival);
    }
    Found tryEarlierGroups(qint64 key, qint64 n, const FramePassed& passed);
    Result<VideoFrame> standIn(qint64 n, const FramePassed& passed);
    Result<VideoFrame> readLeniently(qint64 n, const FramePassed& passed);
    static Error stopped() { return {QStringLiteral("cancelled")}; }

    const SampleTables::Table shared_;
    const SampleTable& table_;
    PacketSource source_;
    std::vector<std::unique_ptr<PictureDecoder>> decoders_; ///< the one used last stands last
    size_t mostDecoders_ = 1;
    bool standsAlone_ = false;
    bool jumpsBySlices_ = false; ///< one decoder for jumps, another for reading in order
    int inOrder_ = 0;            ///< so many of the last reads followed the one before
    qint64 limit_ = std::numeric_limits<qint64>::max(); ///< bytes that may stand in decoders
    bool strict_ = false; ///< the decoders give no picture that is damaged in part
    std::vector<qint64> keyFrames_;
    std::vector<qint64> keyPlaces_;       ///< of the same, in file order
    std::map<qint64, int> earlierGroups_; ///< key frames whose group needs a start so many groups earlier
    std::set<qint64> damagedGroups_;      ///< key frames whose group lacks pictures for good
    std::map<qint64, qint64> standIns_;   ///< frames that cannot be decoded, and the ones shown instead
    qint64 answered_ = -1;                ///< frame number of the last answer
    VideoFrame answer_;                   ///< which for a damaged sample is an earlier picture
};

qint64 DecodingReader::keyFrameBefore(qint64 n) const {
    n = std::clamp<qint64>(n, 0, std::max<qint64>(0, table_.index.count() - 1));
    auto key = std::upper_bound(keyFrames_.begin(), keyFrames_.end(), n);
    while (key != keyFrames_.begin())
        if (--key; placeOf(*key) <= placeOf(n)) return *key;
    return 0;
}

Result<VideoFrame> DecodingReader::readThrough(qint64 n, const FramePassed& passed,
                                               const CancelFlag* cancel) {
    if (n < 0 || n >= table_.index.count()) return Error{QStringLiteral("no such frame")};
    if (n == answered_) return answer_;
    inOrder_ = n == answered_ + 1 ? std::min(inOrder_ + 1, aRun) : 0;
    source_.file().setCancel(cancel);
    Result<VideoFrame> result = findFrame(n, passed);
    if (result) {
        answered_ = n;
        answer_ = *result;
    }
    source_.file().setCancel(nullptr);
    return result;
}

qint64 DecodingReader::mostStanding() const {
    constexpr qint64 held = 10; // pictures of a decoder whose pictures refer to others
    const qint64 bytes = held * qint64(answer_.byteCount());
    const auto most = qint64(mostDecoders_);
    return jumpsBySlices_ || bytes == 0 ? most : std::min(most, 1 + limit_ / bytes);
}

void DecodingReader::limitDecoders(qint64 bytes) {
    limit_ = bytes;
    source_.file().pictures().limitIdle(size_t(std::max<qint64>(0, bytes / 4)));
    while (qint64(decoders_.size()) > mostStanding())
        decoders_.erase(decoders_.begin());
}

/// How much a jump into the group where this decoder stands is likely to gain by it: the more of the group it
/// has behind it, and the more before it up to the next decoder.
qint64 DecodingReader::worth(const PictureDecoder& decoder) const {
    if (decoder.isIdle()) return 0;
    const auto next = std::lower_bound(keyPlaces_.begin(), keyPlaces_.end(), decoder.place());
    const qint64 begin = next == keyPlaces_.begin() ? 0 : *std::prev(next);
    qint64 end = next == keyPlaces_.end() ? qint64(table_.packets.size()) : *next;
    for (const auto& other : decoders_)
        if (!other->isIdle() && other->place() > decoder.place()) end = std::min(end, other->place());
    return (decoder.place() - begin) * (end - decoder.place());
}

/// Of the suitable decoders the one to begin anew elsewhere; of several that of the earliest use.
std::optional<size_t> DecodingReader::leastWorth() const {
    std::optional<size_t> least;
    for (size_t i = 0; i < decoders_.size(); ++i)
        if (suits(*decoders_[i]) && (!least || worth(*decoders_[i]) < worth(*decoders_[*least]))) least = i;
    return least;
}

/// Puts the decoder last that gets to frame n with the least work; started.
void DecodingReader::chooseDecoder(qint64 n, qint64 key) {
    size_t best = decoders_.size();
    for (size_t i = 0; i < decoders_.size(); ++i)
        if (suits(*decoders_[i]) && decoders_[i]->reaches(n, placeOf(key)) &&
            (best == decoders_.size() || decoders_[i]->place() > decoders_[best]->place()))
            best = i;
    const bool found = best < decoders_.size();
    if (!found) {
        const auto spare = leastWorth();
        best = spare.value_or(0);
        const bool anyIdle = spare && decoders_[best]->isIdle();
        const bool another = !anyIdle && (!jumpsBySlices_ || !spare);
        if (another && qint64(decoders_.size()) < mostStanding())
            if (auto codec = source_.file().openDecoder(table_.reorderDepth, strict_, sharing())) {
                addDecoder(std::move(*codec));
                best = decoders_.size() - 1;
            }
    }
    std::rotate(decoders_.begin() + qsizetype(best), decoders_.begin() + qsizetype(best) + 1,
                decoders_.end());
    if (!found) startAt(startFor(key, groupsBefore(key)));
}

Result<VideoFrame> DecodingReader::findFrame(qint64 n, const FramePassed& passed) {
    if (const auto known = standIns_.find(n); known != standIns_.end()) n = known->second;
    const qint64 key = keyFrameBefore(n);
    chooseDecoder(n, key);
    const bool mayLeaveOut = placeOf(n) - decoder().place() > nearby && !damagedGroups_.contains(key);
    // Where the pictures on the way are wanted the target isn't waited for alone.
    const bool isAwaited = !passed && (answered_ < 0 || inOrder_ == 0 ||
                                       (standsAlone_ && decoder().shownNumber() < 0 && inOrder_ < aRun));
    Found found = decoder().decodeTo(n, passed, mayLeaveOut ? OnTheWay::neededOnly : OnTheWay::all,
                                     isAwaited ? Arrival::atOnce : Arrival::inStep);
    // After damage a decoder may hold a good picture back, beyond later ones; or it was left out on the way.
    if (found == Found::missing) found = readAnew(key, groupsBefore(key), n, Arrival::atEnd, passed);
    if (found == Found::missing) found = tryEarlierGroups(key, n, passed);
    if (found == Found::exact) return decoder().shown();
    return found == Found::missing ? standIn(n, passed) : stopped();
}

/// The decoder left the picture out: because the sample is damaged, or because it could not make it without
/// the group before (a stream refreshed bit by bit). An earlier start tells, and what it tells is remembered.
DecodingReader::Found DecodingReader::tryEarlierGroups(qint64 key, qint64 n, const FramePassed& passed) {
    if (key <= 0 || standsAlone_ || damagedGroups_.contains(key)) return Found::missing;
    for (int groups = groupsBefore(key) + 1; groups <= mostEarlierGroups; ++groups) {
        const Found found = readAnew(key, groups, n, Arrival::inStep, passed);
        if (found == Found::exact) earlierGroups_[key] = groups;
        if (found != Found::missing) return found;
    }
    damagedGroups_.insert(key);
    return Found::missing;
}

/// The nearest earlier picture of a frame that cannot be decoded; before the first one that can, that one.
Result<VideoFrame> DecodingReader::standIn(qint64 n, const FramePassed& passed) {
    qint64 key = keyFrameBefore(n), target = n;
    std::vector<qint64> hole;
    const auto remember = [&](qint64 shown) {
        for (const qint64 missing : hole)
            standIns_[missing] = shown;
    };
    for (;;) {
        hole.push_back(target);
        const Found found = readAnew(key, groupsBefore(key), target, Arrival::atEnd, passed);
        if (found == Found::stopped) return stopped();
        if (const qint64 shown = decoder().shownNumber(); shown >= 0) {
            if (found == Found::exact) hole.pop_back();
            remember(shown);
            return decoder().shown();
        }
        if (key <= 0) break;
        target = key - 1;
        if (const auto known = standIns_.find(target); known != standIns_.end()) {
            remember(known->second);
            return findFrame(known->second, passed);
        }
        key = keyFrameBefore(target);
    }
    if (readAnew(0, 0, n, Arrival::inStep, passed) == Found::stopped) return stopped();
    if (const VideoFrame frame = decoder().nearest(); !frame.isNull()) return frame;
    return strict_ ? readLeniently(n, passed) : Error{QStringLiteral("no picture can be decoded")};
}

/// Rather half a picture than none in the whole movie.
Result<VideoFrame> DecodingReader::readLeniently(qint64 n, const FramePassed& passed) {
    strict_ = false;
    Result<av::CodecPtr> codec = source_.file().openDecoder(table_.reorderDepth, strict_);
    if (!codec) return codec.error();
    decoders_.clear();
    addDecoder(std::move(*codec));
    standIns_.clear();
    return findFrame(n, passed);
}

qint64 DecodingReader::startFor(qint64 key, int groups) const {
    for (; groups > 0 && key > 0; --groups)
        key = keyFrameBefore(key - 1);
    return key;
}

void DecodingReader::startAt(qint64 keyFrame) {
    // Before the first key frame there may be pictures that the decoder makes all the same.
    const bool fromBeginning = keyFrames_.empty() || keyFrame <= keyFrames_.front();
    decoder().startAt(fromBeginning ? 0 : placeOf(keyFrame), fromBeginning ? 0 : keyFrame);
}

} // namespace

Result<std::unique_ptr<FrameReader>> FrameReader::open(const QString& path, const CancelFlag* cancel,
                                                       SampleTables* tables) {
    if (const std::optional<RunAddress> run = RunAddress::of(path)) return openRun(*run, cancel);
    Result<MediaFile> file = MediaFile::open(path, cancel);
    if (!file) return file.error();
    if (!file->video()) return file->noPicture();
    SampleTables own;
    Result<SampleTables::Table> table = (tables ? *tables : own).tableOf(*file);
    if (!table) return table.error();
    if ((*table)->packetOfFrame.empty()) return Error{QStringLiteral("no picture")};
    Result<av::CodecPtr> codec = file->openDecoder((*table)->reorderDepth, true, MediaFile::Sharing::slices);
    if (!codec) return codec.error();
    file->setCancel(nullptr);
    return std::unique_ptr<FrameReader>(
        std::make_unique<DecodingReader>(std::move(*file), std::move(*table), std::move(*codec)));
}

} // namespace daylark
