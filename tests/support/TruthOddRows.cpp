#include "support/TruthRows.h"

namespace daylark::truth {
namespace {

const char* const x = "libx264";
const QSize usual{256, 144};
constexpr Rate slow{1, 1}, slower{1, 3}, vast{2000, 1};

std::function<void(MovieSpec&)> mirrored(int degrees) {
    return [=](MovieSpec& spec) {
        spec.rotation = degrees;
        spec.mirrored = true;
    };
}

/// 25 frames a second, and three seconds' gap now and then.
std::function<void(MovieSpec&)> gapped() {
    return [](MovieSpec& spec) {
        spec.rateNum = 1000;
        qint64 at = 0;
        for (int n = 0; n < spec.frames; ++n, at += n % 7 == 6 ? 3000 : 40)
            spec.ticks.push_back(at);
    };
}

/// The first frame stands for three seconds: what comes later on the screen is decoded long before.
std::function<void(MovieSpec&)> lateSecond() {
    return [](MovieSpec& spec) {
        for (int n = 0; n < spec.frames; ++n)
            spec.ticks.push_back(n + (n > 0 ? 3 * spec.rateNum : 0));
    };
}

Making cut(std::initializer_list<Edit> edits) {
    return edited(edits);
}

/// Lists that begin in the middle of a group: what it needs stands before it, hidden.
std::vector<Row> midGroup() {
    const Options hevc = x265("open-gop=0"), open = x265("open-gop=1");
    return {
        {"EditsMidGroupHevc", "mp4", "libx265", r24, 24, 3, hevc, 100, "yuv420p", usual, cut({{80, 13}})},
        {"EditsMidGroupHevcOpen", "mov", "libx265", r25, 24, 3, open, 100, "yuv420p", usual, cut({{60, 31}})},
        {"EditsMidGroupTwiceHevc", "mp4", "libx265", r24, 24, 3, hevc, 100, "yuv420p", usual,
         cut({{20, 5}, {25, 40}})},
        {"EditsCloseTogetherH264", "mov", x, r25, 32, 3, {}, 53, "yuv420p", {178, 126}, cut({{4, 37}, {3, 48}})},
        {"EditsMidGroupTwiceVp9", "mp4", "libvpx-vp9", r24, 24, 0, fastVpx, 90, "yuv420p", usual,
         cut({{20, 5}, {25, 40}})},
        {"EditsEmptyMidGroupHevc", "mp4", "libx265", r24, 24, 3, hevc, 90, "yuv420p", usual,
         cut({{6, -1}, {60, 17}})},
        {"EditsMidGroupVp9", "mp4", "libvpx-vp9", r25, 24, 0, hiddenVpx, 72, "yuv420p", usual, cut({{50, 13}})},
        {"EditsMidGroupAv1", "mp4", "libsvtav1", r25, 32, 0, fastSvt, 72, "yuv420p", {192, 108},
         cut({{45, 15}})},
        {"EditsMidGroupMpeg2", "mov", "mpeg2video", r25, 12, 2, closed, 72, "yuv420p", usual, cut({{40, 17}})},
        {"EditsMidGroupMpeg4", "mp4", "mpeg4", r25, 24, 2, {}, 72, "yuv420p", usual, cut({{40, 31}})},
        {"EditsThreeProRes", "mov", "prores_ks", r24, 1, 0, {}, 48, "yuv422p10le", usual,
         cut({{10, 3}, {12, 20}, {6, 40}})},
        {"EditsBetweenEmptyH264", "mov", x, r24, 12, 2, {}, 72, "yuv420p", usual,
         cut({{7, -1}, {20, 3}, {25, 40}})},
        // The same group for several parts: its pictures have the same numbers each time.
        {"EditsShareGroupHevc", "mp4", "libx265", r25, 8, 3, x265("open-gop=1"), 44, "yuv420p10le", {264, 102},
         cut({{18, 21}, {1, 40}, {2, 41}})},
        {"EditsShareShortGroupHevc", "mp4", "libx265", r24, 3, 2, x265("open-gop=1"), 54, "yuv420p10le", {152, 122},
         cut({{21, 20}, {1, 50}, {2, 52}})},
        // A seek goes to either of two copies of a stretch, and the file ends behind the later one.
        {"EditsShareGroupAv1", "mp4", "libsvtav1", slow, 29, 0, fastSvt, 15, "yuv420p", {158, 172},
         cut({{4, -1}, {9, 1}, {4, 10}})},
        // Both parts with the times of the file itself: nothing tells the copies apart but what each hides.
        {"EditsGoOnHevc", "mp4", "libx265", r48, 28, 0, x265("open-gop=0"), 10, "yuv420p", {154, 104}, cut({{2, 2}, {2, 4}})},
        {"EditsDwellH264", "mov", x, r24, 12, 2, {}, 72, "yuv420p", usual, cut({{10, 0}, {12, 20, 0}, {10, 40}})},
        {"EditsDwellAtEndProRes", "mov", "prores_ks", r25, 1, 0, {}, 48, "yuv422p10le", usual, cut({{20, 3}, {15, 22, 0}})},
        {"EditsHalfSpeedHevc", "mp4", "libx265", r24, 24, 3, open, 100, "yuv420p", usual, cut({{10, 3}, {20, 40, 0.5}})},
        {"EditsHalfSpeedAloneMpeg4", "mp4", "mpeg4", r25, 24, 2, {}, 72, "yuv420p", usual, cut({{40, 13, 0.5}})},
    };
}

/// Far apart in time: what comes earlier on the screen lies seconds back, and no clock has begun anew.
std::vector<Row> slowAndGapped() {
    const auto encoded = asEncoded();
    return {
        {"SlowH264Mov", "mov", x, slow, 24, 3, {}, 40},
        {"SlowerH264Mp4", "mp4", x, slower, 24, 3, {}, 40},
        {"SlowerH264Mkv", "mkv", x, slower, 24, 3, x264("b-pyramid=normal"), 40},
        {"SlowerH264Ts", "ts", x, slower, 24, 3, {}, 40},
        {"SlowerHevcMp4", "mp4", "libx265", slower, 24, 4, x265("b-pyramid=1"), 60},
        {"SlowHevcMkv", "mkv", "libx265", slow, 24, 4, x265("open-gop=1"), 60},
        {"GappedH264Mp4", "mp4", x, r25, 24, 3, {}, 60, "yuv420p", usual, encoded, gapped()},
        {"GappedH264Mkv", "mkv", x, r25, 24, 3, {}, 60, "yuv420p", usual, encoded, gapped()},
        {"GappedH264Ts", "ts", x, r25, 24, 3, {}, 60, "yuv420p", usual, encoded, gapped()},
        {"GappedHevcMov", "mov", "libx265", r25, 24, 3, x265("open-gop=0"), 60, "yuv420p", usual, encoded,
         gapped()},
    };
}

/// And here one has.
std::vector<Row> clocksBegunAnew() {
    const auto encoded = asEncoded();
    constexpr int wrap = 2386092; // where 33 bits of 90 kHz end, in frames at 25 a second
    return {
        {"JoinedTs", "ts", x, r25, 12, 2, {}, 72, "yuv420p", usual, joined(2)},
        {"JoinedThriceTsHevc", "ts", "libx265", r24, 24, 3, x265("open-gop=0"), 60, "yuv420p", usual, joined(3)},
        {"JoinedShortTs", "ts", x, r25, 12, 2, {}, 10, "yuv420p", usual, joined(4)},
        {"JoinedSlowTs", "ts", x, slower, 12, 3, {}, 24, "yuv420p", usual, joined(2)},
        {"JoinedUnevenTs", "ts", x, r25, 12, 2, {}, 40, "yuv420p", usual, joined(2), lateSecond()},
        {"JoinedTsMpeg2", "ts", "mpeg2video", r25, 12, 2, closed, 60, "yuv420p", usual, joined(2)},
        {"JoinedProgramMpeg2", "mpg", "mpeg2video", r25, 12, 2, closed, 60, "yuv420p", usual, joined(2)},
        {"WrapTs", "ts", x, r25, 12, 2, {}, 60, "yuv420p", usual, encoded, late(wrap - 70)},
        {"WrapTsHevc", "ts", "libx265", r25, 24, 3, x265("open-gop=1"), 60, "yuv420p", usual, encoded,
         late(wrap - 65)},
        {"WrapTsSlow", "ts", x, slow, 12, 2, {}, 120, "yuv420p", {128, 96}, encoded, late(95443 - 90)},
    };
}

/// What the container's header says of the picture is not what the picture says.
std::vector<Row> shapes() {
    const auto encoded = asEncoded();
    return {
        {"DnxhrMxfPadded", "mxf", "dnxhd", r25, 1, 0, squeezed, 20, "yuv422p", {256, 152}},
        {"DnxhrMxf1080", "mxf", "dnxhd", r24, 1, 0, squeezed, 6, "yuv422p", {1920, 1080}},
        {"ProResMxfPadded", "mxf", "prores_ks", r24, 1, 0, {}, 20, "yuv422p10le", {256, 152}},
        {"ProResMov1080", "mov", "prores_ks", r24, 1, 0, {}, 6, "yuv422p10le", {1920, 1080}},
        {"Jpeg2000MxfPadded", "mxf", "jpeg2000", r24, 1, 0, {}, 12, "yuv422p", {256, 152}},
        {"H264Mov1080", "mov", x, r24, 12, 2, {}, 12, "yuv420p", {1920, 1080}},
        {"HevcMp4Padded", "mp4", "libx265", r24, 12, 3, x265("open-gop=0"), 24, "yuv420p", {322, 182}},
        {"Mirrored", "mov", x, r24, 12, 2, {}, 24, "yuv420p", {320, 180}, encoded, mirrored(0)},
        {"MirroredTurned90", "mp4", x, r24, 12, 2, {}, 24, "yuv420p", {320, 180}, encoded, mirrored(90)},
        {"MirroredTurned180", "mov", "prores_ks", r25, 1, 0, {}, 24, "yuv422p10le", {320, 180}, encoded,
         mirrored(180)},
        {"MirroredTurned270", "mp4", "libx265", r24, 12, 3, x265("open-gop=0"), 24, "yuv420p", {320, 180},
         encoded, mirrored(270)},
    };
}

/// Containers that say less than is needed, or it twice.
std::vector<Row> littleSaid() {
    return {
        {"DecodingTimesOnlyH264", "mov", x, r24, 24, 3, {}, 72, "yuv420p", usual, withoutCompositionTimes()},
        {"DecodingTimesOnlyPyramid", "mov", x, r25, 24, 7, x264("b-adapt=0:b-pyramid=normal"), 72, "yuv420p",
         usual, withoutCompositionTimes()},
        {"DecodingTimesOnlyHevc", "mp4", "libx265", r24, 24, 4, x265("open-gop=0:b-pyramid=1"), 72, "yuv420p",
         usual, withoutCompositionTimes()},
        {"DecodingTimesOnlyMpeg4", "mov", "mpeg4", r25, 12, 2, {}, 72, "yuv420p", usual,
         withoutCompositionTimes()},
        {"DecodingTimesOnlyThree", "mov", x, r24, 24, 1, x264("b-adapt=0"), 3, "yuv420p", usual, withoutCompositionTimes()},
        {"DecodingTimesOnlyInOrder", "mov", x, r25, 12, 0, {}, 48, "yuv420p", usual, withoutCompositionTimes()},
        {"ShortMkv24", "mkv", "libvpx", r24, 34, 0, fastVpx, 9},
        {"ShortMkv60", "mkv", x, {60, 1}, 35, 1, {}, 6},
        {"ShortMkvNtsc", "mkv", x, ntsc, 35, 1, {}, 6},
        {"ShortMkv125", "mkv", x, {125, 1}, 35, 0, {}, 3}, // on milliseconds others would do as well
        {"ShortFlvNtsc", "flv", x, ntsc, 20, 3, {}, 7, "yuv420p", usual, asEncoded(), fields()}, // the claim in few digits
        {"ShortFlv60", "flv", x, r60, 27, 0, {}, 3},
        {"SlowSoundMkv", "mkv", x, slow, 13, 3, {}, 27, "yuv420p", {230, 158}, asEncoded(), heard()},
        // Several pictures in one packet of the stream, and the time is the next one's.
        {"PackedMpeg2Program", "mpg", "mpeg2video", ntsc, 16, 0, closed, 68, "yuv420p", {272, 112}},
        {"PackedReorderedMpeg2Program", "mpg", "mpeg2video", ntsc, 13, 2, closed, 37, "yuv420p", {222, 104}},
        {"FilmMpeg2Program", "mpg", "mpeg2video", film, 34, 2, closed, 58, "yuv420p", {258, 142}},
        {"SameTimesMotionJpeg", "mkv", "mjpeg", vast, 1, 0, {}, 60, "yuvj420p", usual, onMilliseconds()},
        {"TwoDescriptions", "mov", x, r24, 12, 2, {}, 36, "yuv420p", usual,
         inTwoDescriptions(x264("cabac=0:8x8dct=0:ref=1:weightp=0"), 0)},
        {"TwoDescriptionsReordered", "mov", x, r25, 12, 3, x264("cabac=0"), 36, "yuv420p", usual,
         inTwoDescriptions(x264("b-pyramid=normal:ref=4"), 3)},
        {"AlphaVp9Webm", "webm", "libvpx-vp9", r24, 16, 0, fastVpx, 40, "yuva420p"},
        {"AlphaVp8Webm", "webm", "libvpx", r24, 16, 0, {{u"auto-alt-ref"_qs, u"0"_qs}}, 40, "yuva420p"},
    };
}

} // namespace

std::vector<Row> oddRows() {
    std::vector<Row> all;
    for (const std::vector<Row>& rows :
         {midGroup(), slowAndGapped(), clocksBegunAnew(), shapes(), littleSaid()})
        all.insert(all.end(), rows.begin(), rows.end());
    return all;
}

} // namespace daylark::truth
