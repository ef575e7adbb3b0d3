#include "media/index/MovEdits.h"

#include "media/container/MovBoxes.h"

#include <algorithm>
#include <map>
#include <optional>

namespace daylark {
namespace {

constexpr auto fourCc = MovBoxes::fourCc;
using Boxes = std::initializer_list<MovBoxes::Type>;

/// A part of the list that shows something; in ticks of the media.
struct Part {
    qint64 from = 0;   ///< of the media
    qint64 until = 0;  ///< likewise, as the demuxer hands it out: it takes every part for one at full rate
    qint64 start = 0;  ///< in the movie
    qint64 length = 0; ///< likewise
    quint32 rate = 0;  ///< of the media in the movie, in 65536ths; 0: one picture stands still
    std::optional<qint64> only = {}; ///< the time of that picture

    [[nodiscard]] bool isUsual() const { return rate == usualRate; }
    [[nodiscard]] bool shows(qint64 time) const {
        return isUsual() || (rate == 0 ? time == only : time < from + av_rescale(length, rate, usualRate));
    }
    [[nodiscard]] qint64 timeOf(qint64 time) const {
        return start + (isUsual() ? time - from : rate == 0 ? 0 : av_rescale(time - from, usualRate, rate));
    }
    static constexpr quint32 usualRate = 1 << 16;
};

BoxBytes tableOf(QByteArrayView content, Boxes path) {
    return BoxBytes(MovBoxes::find(content, path).value_or(QByteArrayView()));
}

quint32 movieScale(const MovBoxes& boxes) {
    BoxBytes header = tableOf(boxes.movie(), {fourCc("mvhd")});
    header.skip(header.u32() >> 24 == 1 ? 16 : 8);
    return header.u32();
}

/// Empty where there is no list that can be followed.
std::vector<Part> partsOf(const MovBoxes& boxes, const MovBoxes::Track& track) {
    BoxBytes list = tableOf(track.content, {fourCc("edts"), fourCc("elst")});
    const bool wide = list.u32() >> 24 == 1;
    const quint32 count = list.u32(), scale = movieScale(boxes);
    std::vector<Part> parts;
    constexpr quint32 most = 10'000;
    if (list.failed() || count > most || scale == 0 || track.timeScale == 0) return {};
    qint64 at = 0;
    for (quint32 i = 0; i < count; ++i) {
        const qint64 length = wide ? qint64(list.u64()) : list.u32(), from = wide ? list.i64() : list.i32();
        const quint32 rate = list.u32();
        // Of a faster one the demuxer leaves out what lies beyond its length at full rate: it is shown as that.
        if (list.failed() || length < 0 || (from >= 0 && rate > Part::usualRate)) return {};
        const qint64 start = av_rescale(at, track.timeScale, scale);
        at += length;
        const qint64 end = av_rescale(at, track.timeScale, scale);
        if (from >= 0) parts.push_back({from, from + end - start, start, end - start, rate});
    }
    return parts;
}

/// When each sample of the media is shown in it; empty where the tables say something else.
std::vector<qint64> mediaTimes(const MovBoxes::Track& track, size_t count) {
    std::vector<qint64> times;
    const Boxes steps{fourCc("mdia"), fourCc("minf"), fourCc("stbl"), fourCc("stts")};
    const Boxes offsets{fourCc("mdia"), fourCc("minf"), fourCc("stbl"), fourCc("ctts")};
    BoxBytes stts = tableOf(track.content, steps);
    stts.skip(4);
    qint64 at = 0;
    for (quint32 runs = stts.u32(); runs > 0 && !stts.failed(); --runs) {
        const quint32 samples = stts.u32(), step = stts.u32();
        for (quint32 i = 0; i < samples && times.size() < count; ++i, at += step)
            times.push_back(at);
    }
    if (times.size() != count) return {};
    if (!MovBoxes::find(track.content, offsets)) return times;
    BoxBytes ctts = tableOf(track.content, offsets);
    ctts.skip(4);
    size_t next = 0;
    for (quint32 runs = ctts.u32(); runs > 0 && !ctts.failed(); --runs) {
        const quint32 samples = ctts.u32();
        const qint32 offset = ctts.i32();
        for (quint32 i = 0; i < samples && next < count; ++i)
            times[next++] += offset;
    }
    return next == count ? times : std::vector<qint64>();
}

/// The time of the picture that is seen at this moment of the media.
std::optional<qint64> pictureAt(const std::vector<qint64>& media, qint64 moment) {
    std::optional<qint64> at;
    for (const qint64 time : media)
        if (time <= moment && (!at || time > *at)) at = time;
    return at;
}

/// The parts as the demuxer goes through them: each is a run of samples on end.
class Walk {
public:
    explicit Walk(const std::vector<Part>& parts)
        : parts_(parts) {}

    struct Place {
        qint64 time = 0; ///< in the movie
        bool shown = false;
        size_t part = 0;
    };
    /// Where this sample of the media stands in the movie; none where it fits no part.
    std::optional<Place> placeOf(qint64 number, qint64 time, bool shown) {
        const bool another = last_ >= 0 && number != last_ + 1;
        const bool beyond = shown && !isIn(at_, time) && isIn(at_ + 1, time);
        last_ = number;
        if (another || beyond) ++at_;
        if (at_ >= parts_.size() || (shown && !isIn(at_, time))) return std::nullopt;
        const Part& part = parts_[at_];
        return Place{part.timeOf(std::max(time, part.from)), shown && part.shows(time), at_};
    }
    [[nodiscard]] bool isInLast() const { return at_ + 1 == parts_.size(); }

private:
    [[nodiscard]] bool isIn(size_t part, qint64 time) const {
        return part < parts_.size() && time >= parts_[part].from && time < parts_[part].until;
    }

    const std::vector<Part>& parts_;
    size_t at_ = 0;
    qint64 last_ = -1;
};

} // namespace

void placeByEdits(const MediaFile& file, std::vector<RawSample>& samples) {
    if (!QByteArray(file.format()->iformat->name).contains("mov")) return;
    const Result<MovBoxes> boxes = MovBoxes::read(file.path());
    if (!boxes || boxes->isFragmented()) return;
    const std::vector<MovBoxes::Track> tracks = boxes->tracks();
    const auto track = std::find_if(tracks.begin(), tracks.end(),
                                    [&](const auto& t) { return qint64(t.id) == file.video()->id; });
    if (track == tracks.end() || qint64(track->timeScale) != file.video()->time_base.den) return;
    std::vector<Part> parts = partsOf(*boxes, *track);
    const bool allUsual = std::all_of(parts.begin(), parts.end(), [](const Part& part) { return part.isUsual(); });
    if (parts.empty() || (parts.size() < 2 && allUsual)) return;
    const auto places = boxes->samples(*track);
    if (!places) return;
    const std::vector<qint64> media = mediaTimes(*track, places->size());
    std::map<qint64, qint64> numbers;
    for (size_t i = 0; i < places->size(); ++i)
        numbers[qint64((*places)[i].position)] = qint64(i);
    for (Part& part : parts)
        part.only = pictureAt(media, part.from);
    Walk walk(parts);
    std::vector<Walk::Place> found;
    std::vector<bool> seen(parts.size());
    for (const RawSample& sample : samples) {
        const auto number = numbers.find(sample.position);
        if (number == numbers.end() || media.empty()) return;
        const auto place = walk.placeOf(number->second, media[size_t(number->second)], sample.shown);
        if (!place) return;
        seen[place->part] = seen[place->part] || place->shown;
        found.push_back(*place);
    }
    if (!walk.isInLast() || std::find(seen.begin(), seen.end(), false) != seen.end()) return;
    for (size_t i = 0; i < samples.size(); ++i) {
        samples[i].pts = found[i].time;
        samples[i].shown = found[i].shown;
        const Part& part = parts[found[i].part];
        samples[i].still = part.rate == 0;
        if (!part.isUsual())
            samples[i].duration = part.rate == 0 ? part.length : av_rescale(samples[i].duration, Part::usualRate, part.rate);
    }
}

} // namespace daylark
