#include "media/index/SampleOrder.h"

#include "media/index/SampleReading.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <numeric>
#include <optional>
#include <utility>

namespace daylark {
namespace {

constexpr int usualDepth = 4; ///< what a decoder holds back, where its stream doesn't say

/// The samples' places in the order in which the decoder gives their pictures; one that it doesn't give back
/// comes after the sample before it in the file.
Result<std::vector<qint32>> orderOfDecoder(const MediaFile& file, size_t count) {
    Result<MediaFile> fresh = file.reopened();
    if (!fresh) return fresh.error();
    std::vector<double> rank(count, -1);
    double given = 0;
    const auto done = decodeFromStart(*fresh, usualDepth, [&](qint64 place) {
        if (place >= 0 && place < qint64(count) && rank[size_t(place)] < 0) rank[size_t(place)] = given++;
        return true;
    });
    if (!done) return done.error();
    for (size_t place = 0; place < count; ++place)
        if (rank[place] < 0) rank[place] = (place ? rank[place - 1] : -1.0) + 0.001;
    std::vector<qint32> places(count);
    std::iota(places.begin(), places.end(), 0);
    std::stable_sort(places.begin(), places.end(),
                     [&](qint32 a, qint32 b) { return rank[size_t(a)] < rank[size_t(b)]; });
    return places;
}

/// For containers that give decoding times only: the decoder tells the order, the decoding times the times.
Result<void> orderByDecoding(const MediaFile& file, std::vector<RawSample>& samples) {
    const Result<std::vector<qint32>> places = orderOfDecoder(file, samples.size());
    if (!places) return places.error();
    std::vector<qint64> times;
    for (const RawSample& sample : samples)
        times.push_back(sample.dts);
    std::sort(times.begin(), times.end());
    for (size_t i = 0; i < places->size(); ++i)
        samples[size_t((*places)[i])].pts = times[i];
    return {};
}

/// Among the first pictures of an H.264 stream is one of the kind that others may come before.
bool beginsWithBPictures(const MediaFile& file) {
    const Result<MediaFile> fresh = file.reopened();
    AVCodecParserContext* parser = av_parser_init(AV_CODEC_ID_H264);
    const av::CodecPtr codec(avcodec_alloc_context3(nullptr));
    bool found = false;
    if (fresh && parser && avcodec_parameters_to_context(codec.get(), file.video()->codecpar) >= 0) {
        parser->flags |= PARSER_FLAG_COMPLETE_FRAMES;
        constexpr int looked = 48;
        const av::PacketPtr packet(av_packet_alloc());
        for (int i = 0; i < looked && !found && fresh->readPacket(packet.get()) >= 0; ++i) {
            uint8_t* data = nullptr;
            int size = 0;
            av_parser_parse2(parser, codec.get(), &data, &size, packet->data, packet->size, packet->pts,
                             packet->dts, packet->pos);
            found = parser->pict_type == AV_PICTURE_TYPE_B;
        }
    }
    if (parser) av_parser_close(parser);
    return found;
}

/// Can pictures be shown in another order than they are stored?
bool mayReorder(const MediaFile& file) {
    const AVCodecParameters& parameters = *file.video()->codecpar;
    if (parameters.video_delay > 0) return true;
    if (parameters.codec_id == AV_CODEC_ID_H264) return beginsWithBPictures(file);
    const Result<av::CodecPtr> codec = file.openDecoder(0); // reads the parameter sets
    return codec && (*codec)->has_b_frames > 0;
}

/// Of the first pictures some come out of the decoder in another order than they stand in the file.
Result<bool> beginsReordered(const MediaFile& file) {
    Result<MediaFile> fresh = file.reopened();
    if (!fresh) return fresh.error();
    constexpr qint64 looked = 48;
    qint64 last = -1;
    bool reordered = false;
    const auto done = decodeFromStart(*fresh, usualDepth, [&](qint64 place) {
        reordered = reordered || place < last;
        last = place;
        return !reordered && place < looked;
    });
    if (!done) return done.error();
    return reordered;
}

/// The MXF demuxer passes the file's order off as the presentation's where the file's index has no more, and
/// QuickTime files from before B-frames were thought of have one time for both.
Result<bool> hasDecodingTimesOnly(const MediaFile& file, const std::vector<RawSample>& samples) {
    const AVFormatContext* format = file.format();
    const bool reorders =
        (codecProperties(*file.video()) & AV_CODEC_PROP_REORDER) || file.video()->codecpar->video_delay > 0;
    if (!reorders || samples.size() < 3) return false;
    if (!std::all_of(samples.begin(), samples.end(), [](const RawSample& s) { return s.pts == s.dts; }))
        return false;
    if (std::strcmp(format->iformat->name, "mxf") == 0) return file.video()->codecpar->video_delay > 0;
    const bool isBroadcast = format->iformat->flags & AVFMT_TS_DISCONT; // its packets state both times
    if (isBroadcast || !mayReorder(file)) return false;
    return beginsReordered(file);
}

/// Where in the file another recording begins.
std::vector<size_t> restartsOf(const AVStream& stream, const std::vector<RawSample>& samples) {
    const qint64 farBack = std::max<qint64>(1, av_rescale_q(1, {1, 2}, stream.time_base));
    const bool inOrder = !(codecProperties(stream) & AV_CODEC_PROP_REORDER);
    std::vector<size_t> restarts;
    qint64 begin = unknownTime, last = unknownTime;
    for (size_t i = 0; i < samples.size(); ++i) {
        const RawSample& sample = samples[i];
        const qint64 time = sample.dts != unknownTime || !inOrder ? sample.dts : sample.pts;
        if (time == unknownTime) continue;
        const bool back = last != unknownTime && time < last;
        const bool anew = back && (time < last - farBack || (sample.key && time <= begin));
        if (anew) restarts.push_back(i);
        if (anew || last == unknownTime) begin = time;
        last = time;
    }
    return restarts;
}

/// When these samples begin and end to be shown.
std::optional<std::pair<qint64, qint64>> spanOf(const std::vector<RawSample>& samples, size_t begin, size_t end) {
    qint64 first = std::numeric_limits<qint64>::max(), last = std::numeric_limits<qint64>::min();
    qint64 firstDecoded = first, lastDecoded = last;
    bool allKnown = true;
    for (size_t i = begin; i < end; ++i) {
        const RawSample& sample = samples[i];
        const qint64 length = std::max<qint64>(1, sample.duration);
        if (sample.dts != unknownTime) {
            firstDecoded = std::min(firstDecoded, sample.dts);
            lastDecoded = std::max(lastDecoded, sample.dts + length);
        }
        allKnown = allKnown && sample.pts != unknownTime;
        if (sample.pts == unknownTime) continue;
        first = std::min(first, sample.pts);
        last = std::max(last, sample.pts + length);
    }
    if (first > last) return std::nullopt;
    // The last one may not say when it is shown: as much later than it is decoded as the first one.
    if (!allKnown && lastDecoded >= firstDecoded) last = std::max(last, lastDecoded + first - firstDecoded);
    return std::pair(first, last);
}

} // namespace

void evenOutRunsAhead(const MediaFile& file, std::vector<RawSample>& samples) {
    if (std::strcmp(file.format()->iformat->name, "mpeg") != 0 || samples.empty()) return;
    const qint64 step = samples[0].duration;
    constexpr size_t longest = 64; // pictures in one packet of the stream
    const auto isEven = [step](const RawSample& sample) { return sample.duration == step && sample.dts != unknownTime; };
    if (step <= 0 || !std::all_of(samples.begin(), samples.end(), isEven)) return;
    for (size_t at = 1; at < samples.size(); ++at) {
        const qint64 before = samples[at - 1].dts;
        if (samples[at].dts <= before + step) continue;
        // Where is it back on the steps that it had before?
        const size_t end = std::min(samples.size(), at + longest);
        size_t back = at + 1;
        while (back < end && samples[back].dts != before + step * qint64(back - at + 1))
            ++back;
        if (back == end) continue;
        for (size_t i = at; i < back; ++i) {
            const qint64 ahead = samples[i].dts - (before + step * qint64(i - at + 1));
            samples[i].dts -= ahead;
            if (samples[i].pts != unknownTime) samples[i].pts -= ahead;
        }
    }
}

Result<void> completeTimes(const MediaFile& file, std::vector<RawSample>& samples) {
    const Result<bool> decodingTimesOnly = hasDecodingTimesOnly(file, samples);
    if (!decodingTimesOnly) return decodingTimesOnly.error();
    if (*decodingTimesOnly)
        for (RawSample& sample : samples)
            sample.pts = unknownTime;
    const auto lacksPts = [](const RawSample& sample) { return sample.pts == unknownTime; };
    if (std::none_of(samples.begin(), samples.end(), lacksPts)) return {};
    qint64 next = 0;
    for (RawSample& sample : samples) {
        if (sample.dts == unknownTime) sample.dts = sample.pts != unknownTime ? sample.pts : next;
        next = sample.dts + std::max<qint64>(1, sample.duration);
    }
    const bool reorders = (codecProperties(*file.video()) & AV_CODEC_PROP_REORDER) &&
                          (*decodingTimesOnly || file.video()->codecpar->video_delay > 0);
    if (reorders) return orderByDecoding(file, samples);
    for (RawSample& sample : samples)
        if (sample.pts == unknownTime) sample.pts = sample.dts;
    return {};
}

void joinRestarts(const MediaFile& file, std::vector<RawSample>& samples) {
    // Only where each packet brings its decoding time along. What a header or a whole file's clock says of times
    // is one recording's, however its edits jump about, and decoding times that are inferred may go back.
    if (!(file.format()->iformat->flags & AVFMT_TS_DISCONT)) return;
    std::vector<size_t> ends = restartsOf(*file.video(), samples);
    if (ends.empty()) return;
    ends.push_back(samples.size());
    size_t begin = 0;
    qint64 until = unknownTime; // where what came before ends
    for (const size_t end : ends) {
        const std::optional<std::pair<qint64, qint64>> span = spanOf(samples, begin, end);
        const qint64 offset = until == unknownTime || !span ? 0 : until - span->first;
        for (size_t i = begin; i < end; ++i)
            for (qint64* const time : {&samples[i].pts, &samples[i].dts})
                if (*time != unknownTime) *time += offset;
        if (span) until = span->second + offset;
        begin = end;
    }
}

Result<void> dropUndecodableStart(const MediaFile& file, std::vector<RawSample>& samples) {
    // One that an edit list hides serves as well: what follows it can be decoded.
    const auto key = std::find_if(samples.begin(), samples.end(), [](const RawSample& s) { return s.key; });
    if (key == samples.end()) return {};
    // This decoder makes grey pictures where it lacks what they refer to; the others leave them out.
    if (file.video()->codecpar->codec_id == AV_CODEC_ID_HEVC)
        std::for_each(samples.begin(), key, [](RawSample& sample) { sample.shown = false; });
    const qint64 keyTime = key->pts;
    const auto leads = [&](const RawSample& s) { return s.shown && s.pts < keyTime; };
    if (std::none_of(samples.begin(), samples.end(), leads)) return {};
    Result<MediaFile> fresh = file.reopened();
    if (!fresh) return fresh.error();
    std::vector<bool> decoded(samples.size(), false);
    const auto done = decodeFromStart(*fresh, usualDepth, [&](qint64 place) {
        if (place < 0 || place >= qint64(samples.size())) return true;
        decoded[size_t(place)] = true;
        return samples[size_t(place)].pts <= keyTime;
    });
    if (!done) return done;
    for (size_t place = 0; place < samples.size(); ++place)
        if (leads(samples[place]) && !decoded[place]) samples[place].shown = false;
    return {};
}

Result<std::vector<qint32>> orderOfShown(const MediaFile& file, const std::vector<RawSample>& samples) {
    std::vector<qint32> order;
    for (size_t place = 0; place < samples.size(); ++place)
        if (samples[place].shown && !samples[place].secondField) order.push_back(qint32(place));
    const auto timeOf = [&](qint32 place) { return samples[size_t(place)].pts; };
    const auto sort = [&] {
        std::stable_sort(order.begin(), order.end(),
                         [&](qint32 a, qint32 b) { return timeOf(a) < timeOf(b); });
    };
    sort();
    const bool shared = std::adjacent_find(order.begin(), order.end(), [&](qint32 a, qint32 b) {
                            return timeOf(a) == timeOf(b);
                        }) != order.end();
    if (!shared || !(codecProperties(*file.video()) & AV_CODEC_PROP_REORDER)) return order;
    const Result<std::vector<qint32>> decoded = orderOfDecoder(file, samples.size());
    if (!decoded) return decoded.error();
    std::vector<qint32> rank(samples.size());
    for (size_t i = 0; i < decoded->size(); ++i)
        rank[size_t((*decoded)[i])] = qint32(i);
    std::sort(order.begin(), order.end(), [&](qint32 a, qint32 b) {
        return std::pair(timeOf(a), rank[size_t(a)]) < std::pair(timeOf(b), rank[size_t(b)]);
    });
    return order;
}

} // namespace daylark
