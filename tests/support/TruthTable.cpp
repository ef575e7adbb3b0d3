#include "support/TruthTable.h"

#include "support/MxfChanges.h"
#include "support/TruthMaking.h"

#include <QDir>

#include <algorithm>

namespace daylark::truth {
namespace {

struct Rate {
    int num = 24, den = 1;
};
constexpr Rate r12{25, 2}, film{24000, 1001}, r24{24, 1}, r25{25, 1}, ntsc{30000, 1001}, r30{30, 1},
    r48{48, 1}, r60{60000, 1001};

using Options = std::map<QString, QString>;

/// A line of the table.
struct Row {
    const char* name;
    const char* extension;
    const char* encoder;
    Rate rate;
    int group, bFrames;
    Options options = {};
    int frames = 72;
    const char* pixels = "yuv420p";
    QSize size{256, 144};
    Making make = asEncoded();
    std::function<void(MovieSpec&)> adjust = {};
};

Options x264(const char* parameters) {
    return {{QStringLiteral("x264-params"), QString::fromLatin1(parameters)}};
}
Options x265(const QByteArray& parameters) {
    return {{QStringLiteral("preset"), QStringLiteral("ultrafast")},
            {QStringLiteral("x265-params"), QString::fromLatin1("log-level=none:scenecut=0:" + parameters)}};
}
const Options fastVpx{{QStringLiteral("deadline"), QStringLiteral("realtime")},
                      {QStringLiteral("cpu-used"), QStringLiteral("8")}};
/// Pictures that are only referred to stand between those that are shown.
const Options hiddenVpx{{QStringLiteral("deadline"), QStringLiteral("good")},
                        {QStringLiteral("cpu-used"), QStringLiteral("5")},
                        {QStringLiteral("auto-alt-ref"), QStringLiteral("1")},
                        {QStringLiteral("lag-in-frames"), QStringLiteral("16")}};
const Options fastAom{{QStringLiteral("cpu-used"), QStringLiteral("8")},
                      {QStringLiteral("usage"), QStringLiteral("good")},
                      {QStringLiteral("lag-in-frames"), QStringLiteral("19")}};
const Options fastSvt{{QStringLiteral("preset"), QStringLiteral("12")}};
const Options squeezed{{QStringLiteral("profile"), QStringLiteral("dnxhr_sq")}};
const Options closed{{QStringLiteral("flags"), QStringLiteral("+cgop")},
                     {QStringLiteral("sc_threshold"), QStringLiteral("1000000000")}};

std::function<void(MovieSpec&)> muxed(const char* key, const char* value) {
    return [=](MovieSpec& spec) { spec.muxerOptions[QString::fromLatin1(key)] = QString::fromLatin1(value); };
}
std::function<void(MovieSpec&)> turned(int degrees) {
    return [=](MovieSpec& spec) { spec.rotation = degrees; };
}
std::function<void(MovieSpec&)> fields() {
    return [](MovieSpec& spec) { spec.interlaced = true; };
}
/// With sound in between, and a timecode where the container has one.
std::function<void(MovieSpec&)> heard() {
    return [](MovieSpec& spec) {
        spec.sound = true;
        if (spec.path == QLatin1String("mov")) spec.timecode = QStringLiteral("10:00:00:00");
    };
}
std::function<void(MovieSpec&)> aspect(int num, int den) {
    return [=](MovieSpec& spec) {
        spec.pixelAspectNum = num;
        spec.pixelAspectDen = den;
    };
}
std::function<void(MovieSpec&)> late(int frames) {
    return [=](MovieSpec& spec) {
        for (int n = 0; n < spec.frames; ++n)
            spec.ticks.push_back(n + frames);
    };
}
/// Three lengths of frame in turn, in milliseconds, which every container can say.
std::function<void(MovieSpec&)> varied() {
    return [](MovieSpec& spec) {
        spec.rateNum = 1000;
        qint64 at = 0;
        for (int n = 0; n < spec.frames; ++n, at += n % 3 == 0 ? 83 : n % 3 == 1 ? 33 : 42)
            spec.ticks.push_back(at);
    };
}

const char* const x = "libx264";

std::vector<Row> h264() {
    return {
        {"H264Mov24", "mov", x, r24, 12, 2},
        {"H264Mp4Film", "mp4", x, film, 30, 3},
        {"H264LongGroup", "mov", x, r25, 240, 2, {}, 300, "yuv420p", {192, 108}},
        {"H264LongGroupPyramid",
         "mp4",
         x,
         r24,
         240,
         3,
         x264("b-pyramid=normal:scenecut=0"),
         250,
         "yuv420p",
         {192, 108}},
        {"H264OpenGroups", "mp4", x, r25, 10, 3, x264("open-gop=1:scenecut=0")},
        {"H264OpenGroupsMkv", "mkv", x, ntsc, 16, 3, x264("open-gop=1:scenecut=0:b-pyramid=normal")},
        {"H264Pyramid", "mkv", x, ntsc, 24, 7, x264("b-adapt=0:b-pyramid=normal")},
        {"H264PyramidStrict", "mov", x, r48, 24, 4, x264("b-adapt=0:b-pyramid=strict")},
        {"H264IntraRefreshMp4", "mp4", x, r25, 20, 0, {{u"intra-refresh"_qs, u"1"_qs}}},
        {"H264IntraRefreshTs", "ts", x, r25, 20, 0, {{u"intra-refresh"_qs, u"1"_qs}}},
        {"H264IntraRefreshMkv", "mkv", x, r30, 24, 2, {{u"intra-refresh"_qs, u"1"_qs}}},
        {"H264FieldsMov", "mov", x, ntsc, 15, 2, {}, 72, "yuv420p", {256, 160}, asEncoded(), fields()},
        {"H264FieldsTs", "ts", x, r25, 12, 2, {}, 72, "yuv420p", {256, 160}, asEncoded(), fields()},
        {"H264FieldsMkv",
         "mkv",
         x,
         r25,
         12,
         3,
         x264("open-gop=1"),
         72,
         "yuv420p",
         {256, 160},
         asEncoded(),
         fields()},
        {"H264FieldPicturesMp4", "mp4", "field pictures", r25, 12, 2, {}, 60, "yuv420p", {256, 160}},
        {"H264FieldPicturesMkv", "mkv", "field pictures", ntsc, 15, 2, {}, 60, "yuv420p", {256, 160}},
        {"H264FieldPicturesTs", "ts", "field pictures", r25, 12, 2, {}, 60, "yuv420p", {256, 160}},
        {"H264FieldPicturesTsInOrder", "ts", "field pictures", ntsc, 12, 0, {}, 60, "yuv420p", {256, 160}},
        {"H264IntraCavlcMov", "mov", x, film, 1, 0, x264("cabac=0"), 48, "yuv422p10le"},
        {"H264IntraCavlcMxf", "mxf", x, r25, 1, 0, x264("cabac=0"), 48, "yuv422p10le"},
        {"H264TenBit", "mov", x, r24, 12, 2, {}, 72, "yuv422p10le"},
        {"H264Ts", "ts", x, r25, 12, 2},
        {"H264TsRate48", "ts", x, r48, 12, 2},
        {"H264M2tsOpen", "m2ts", x, film, 12, 3, x264("open-gop=1")},
        {"H264Avi", "avi", x, r25, 12, 2},
        {"H264AviNtscPyramid", "avi", x, ntsc, 24, 3, x264("b-pyramid=normal")},
        {"H264Flash", "flv", x, r30, 12, 2},
        {"H264Mxf", "mxf", x, r25, 12, 2},
        {"H264Rate12", "mov", x, r12, 12, 2},
        {"H264Rate12Mkv", "mkv", x, r12, 12, 2},
        {"H264Rate60", "mp4", x, r60, 30, 3},
        {"H264Rate60Mkv", "mkv", x, r60, 30, 3},
        {"H264Fragments",
         "mp4",
         x,
         r24,
         12,
         2,
         {},
         72,
         "yuv420p",
         {256, 144},
         asEncoded(),
         muxed("movflags", "frag_keyframe+empty_moov")},
        {"H264NegativeOffsets",
         "mov",
         x,
         r30,
         12,
         2,
         {},
         72,
         "yuv420p",
         {256, 144},
         asEncoded(),
         muxed("movflags", "negative_cts_offsets")},
        {"H264NoEditList",
         "mov",
         x,
         r25,
         12,
         2,
         {},
         72,
         "yuv420p",
         {256, 144},
         asEncoded(),
         muxed("use_editlist", "0")},
        {"H264HeaderInFront",
         "mp4",
         x,
         film,
         12,
         2,
         {},
         72,
         "yuv420p",
         {256, 144},
         asEncoded(),
         muxed("movflags", "faststart")},
        {"H264SoundAndTimecodeMov",
         "mov",
         x,
         r25,
         12,
         2,
         {},
         72,
         "yuv420p",
         {256, 144},
         asEncoded(),
         heard()},
        {"H264SoundMkv", "mkv", x, film, 12, 2, {}, 72, "yuv420p", {256, 144}, asEncoded(), heard()},
        {"H264SoundTs", "ts", x, r25, 12, 2, {}, 72, "yuv420p", {256, 144}, asEncoded(), heard()},
        {"H264OddSize444", "mov", x, r24, 12, 2, {}, 72, "yuv444p", {321, 183}},
        {"H264SizeCropped", "mkv", x, film, 12, 2, {}, 72, "yuv420p", {322, 182}},
    };
}

std::vector<Row> otherCodecs() {
    return {
        {"HevcMp4", "mp4", "libx265", r24, 12, 3, x265("open-gop=0")},
        {"HevcOpenMkv", "mkv", "libx265", r25, 12, 4, x265("open-gop=1:b-pyramid=1")},
        {"HevcOpenMp4", "mp4", "libx265", ntsc, 12, 3, x265("open-gop=1")},
        {"HevcTenBitMov", "mov", "libx265", film, 24, 3, x265("open-gop=0"), 72, "yuv420p10le"},
        {"HevcTs", "ts", "libx265", r60, 20, 3, x265("open-gop=1")},
        {"Mpeg2Program", "mpg", "mpeg2video", r25, 12, 2},
        {"Mpeg2ProgramClosed", "mpg", "mpeg2video", r24, 12, 2, closed},
        {"Mpeg2Ts", "ts", "mpeg2video", ntsc, 15, 2},
        {"Mpeg2TsFieldsClosed",
         "ts",
         "mpeg2video",
         r25,
         12,
         2,
         closed,
         72,
         "yuv420p",
         {256, 160},
         asEncoded(),
         fields()},
        {"Mpeg2Mxf", "mxf", "mpeg2video", r25, 12, 2},
        {"Mpeg2MxfFields422",
         "mxf",
         "mpeg2video",
         ntsc,
         12,
         2,
         {},
         72,
         "yuv422p",
         {256, 160},
         asEncoded(),
         fields()},
        {"Mpeg2SoundMxf",
         "mxf",
         "mpeg2video",
         r25,
         12,
         2,
         {},
         72,
         "yuv420p",
         {256, 144},
         asEncoded(),
         heard()},
        {"Mpeg4SoundAvi", "avi", "mpeg4", r30, 12, 2, {}, 72, "yuv420p", {256, 144}, asEncoded(), heard()},
        {"Mpeg2Mov", "mov", "mpeg2video", film, 12, 2},
        {"Mpeg2Mkv", "mkv", "mpeg2video", r60, 15, 2},
        {"Mpeg1Program", "mpg", "mpeg1video", r25, 12, 2},
        {"Mpeg4Mov", "mov", "mpeg4", r25, 12, 2},
        {"Mpeg4Mp4Odd", "mp4", "mpeg4", r12, 24, 2, {}, 72, "yuv420p", {321, 183}},
        {"Mpeg4Avi", "avi", "mpeg4", r25, 12, 2},
        {"Mpeg4AviPacked", "avi", "mpeg4", r25, 24, 1, {}, 72, "yuv420p", {256, 144}, packedBFrames()},
        {"Vp8Webm", "webm", "libvpx", r30, 16, 0, hiddenVpx, 72, "yuv420p", {192, 108}},
        {"Vp9Webm", "webm", "libvpx-vp9", r24, 16, 0, fastVpx},
        {"Vp9HiddenWebm", "webm", "libvpx-vp9", r25, 32, 0, hiddenVpx},
        {"Vp9HiddenMkvOdd", "mkv", "libvpx-vp9", r60, 32, 0, hiddenVpx, 72, "yuv420p", {321, 183}},
        {"Vp9Mp4", "mp4", "libvpx-vp9", film, 24, 0, hiddenVpx},
        {"Av1AomMp4", "mp4", "libaom-av1", r24, 32, 0, fastAom, 72, "yuv420p", {192, 108}},
        {"Av1AomWebmOdd", "webm", "libaom-av1", r25, 24, 0, fastAom, 60, "yuv420p", {193, 109}},
        {"Av1SvtMkv", "mkv", "libsvtav1", r30, 32, 0, fastSvt, 72, "yuv420p", {192, 108}},
        {"Av1SvtMp4", "mp4", "libsvtav1", film, 16, 0, fastSvt, 72, "yuv420p", {192, 108}},
        {"TheoraOgg", "ogv", "libtheora", r24, 12, 0},
        {"WindowsMedia", "wmv", "wmv2", r25, 12, 0},
    };
}

std::vector<Row> eachPictureForItself() {
    return {
        {"ProRes422", "mov", "prores_ks", film, 1, 0, {}, 60, "yuv422p10le"},
        {"ProRes422Fields",
         "mov",
         "prores_ks",
         ntsc,
         1,
         0,
         {},
         48,
         "yuv422p10le",
         {256, 144},
         asEncoded(),
         fields()},
        {"ProRes422Rate60", "mov", "prores_ks", r60, 1, 0, {}, 60, "yuv422p10le"},
        {"ProRes422Mxf", "mxf", "prores_ks", r24, 1, 0, {}, 48, "yuv422p10le"},
        {"ProRes422Mkv", "mkv", "prores_ks", r25, 1, 0, {}, 48, "yuv422p10le"},
        {"ProRes4444Alpha", "mov", "prores_ks", r24, 1, 0, {{u"profile"_qs, u"4444"_qs}}, 48, "yuva444p10le"},
        {"ProRes4444Rate12",
         "mov",
         "prores_ks",
         r12,
         1,
         0,
         {{u"profile"_qs, u"4444"_qs}},
         48,
         "yuva444p10le"},
        {"DnxhdMov", "mov", "dnxhd", r25, 1, 0, {{u"b"_qs, u"36M"_qs}}, 20, "yuv422p", {1920, 1080}},
        {"DnxhrMov", "mov", "dnxhd", r48, 1, 0, squeezed, 40, "yuv422p"},
        {"DnxhrTenBitMov", "mov", "dnxhd", film, 1, 0, {{u"profile"_qs, u"dnxhr_hqx"_qs}}, 40, "yuv422p10le"},
        {"DnxhrMxf", "mxf", "dnxhd", film, 1, 0, squeezed, 40, "yuv422p"},
        {"DnxhrTenBitMxf", "mxf", "dnxhd", r60, 1, 0, {{u"profile"_qs, u"dnxhr_hqx"_qs}}, 40, "yuv422p10le"},
        {"MotionJpegMov", "mov", "mjpeg", r24, 1, 0, {}, 60, "yuvj420p"},
        {"MotionJpegAviOdd", "avi", "mjpeg", film, 1, 0, {}, 60, "yuvj420p", {321, 183}},
        {"MotionJpegMkv", "mkv", "mjpeg", r48, 1, 0, {}, 60, "yuvj422p"},
        {"PngMov", "mov", "png", r24, 1, 0, {}, 48, "rgb24"},
        {"PngMovOddAlpha", "mov", "png", r30, 1, 0, {}, 48, "rgba", {321, 183}},
        {"AnimationMov", "mov", "qtrle", r25, 12, 0, {}, 60, "rgb24"},
        {"AnimationMovAlpha", "mov", "qtrle", r12, 24, 0, {}, 60, "argb", {320, 180}},
        {"UncompressedV210", "mov", "v210", film, 1, 0, {}, 30, "yuv422p10le"},
        {"UncompressedAvi", "avi", "rawvideo", r25, 1, 0, {}, 30, "yuv420p"},
        {"CineformMov", "mov", "cfhd", r24, 1, 0, {}, 40, "yuv422p10le", {256, 160}},
        {"ProRes422LongSoundMxf",
         "mxf",
         "prores_ks",
         ntsc,
         1,
         0,
         {},
         300,
         "yuv422p10le",
         {128, 64},
         asEncoded(),
         heard()},
        {"DnxhdSoundMxf",
         "mxf",
         "dnxhd",
         r25,
         1,
         0,
         {{u"b"_qs, u"36M"_qs}},
         12,
         "yuv422p",
         {1920, 1080},
         asEncoded(),
         heard()},
        {"Jpeg2000Mxf", "mxf", "jpeg2000", r24, 1, 0, {}, 30, "yuv422p"},
        {"Ffv1Mkv", "mkv", "ffv1", r30, 12, 0, {}, 48, "yuv422p10le"},
        {"AnimatedGif", "gif", "gif", r25, 1, 0, {}, 20, "rgb8"},
    };
}

std::vector<Row> cutAndTurned() {
    const QSize usual{256, 144};
    const auto cut = [](std::initializer_list<Edit> edits) { return edited(edits); };
    return {
        {"EditsCutHead", "mov", x, r24, 12, 2, {}, 72, "yuv420p", usual, cut({{55, 17}})},
        {"EditsCutHeadOpen", "mp4", x, r25, 10, 3, x264("open-gop=1:scenecut=0"), 72, "yuv420p", usual,
         cut({{49, 23}})},
        {"EditsCutBothEnds", "mp4", x, r30, 24, 3, {}, 72, "yuv420p", usual, cut({{40, 5}})},
        {"EditsEmptyFirst", "mov", x, r25, 12, 2, {}, 72, "yuv420p", usual, cut({{8, -1}, {72, 0}})},
        {"EditsEmptyThenCut", "mov", x, r24, 12, 2, {}, 72, "yuv420p", usual, cut({{5, -1}, {60, 12}})},
        {"EditsMiddleOut", "mov", x, r24, 12, 2, {}, 72, "yuv420p", usual, cut({{20, 0}, {30, 40}})},
        {"EditsRepeat", "mov", x, r24, 12, 2, {}, 72, "yuv420p", usual, cut({{36, 0}, {40, 20}})},
        {"EditsSwapped", "mov", x, r24, 12, 0, {}, 72, "yuv420p", usual, cut({{20, 36}, {30, 0}})},
        {"EditsCutHeadProRes", "mov", "prores_ks", r25, 1, 0, {}, 48, "yuv422p10le", usual, cut({{30, 11}})},
        {"EditsRepeatProRes",
         "mov",
         "prores_ks",
         r24,
         1,
         0,
         {},
         48,
         "yuv422p10le",
         usual,
         cut({{20, 0}, {30, 10}})},
        {"EditsCutHeadHevc", "mp4", "libx265", r24, 12, 3, x265("open-gop=1"), 72, "yuv420p", usual,
         cut({{50, 22}})},
        {"LateStartMkv", "mkv", x, r24, 12, 2, {}, 60, "yuv420p", usual, asEncoded(), late(240)},
        {"LateStartMp4", "mp4", x, r25, 12, 2, {}, 60, "yuv420p", usual, asEncoded(), late(50)},
        {"LateStartTs", "ts", x, r30, 12, 2, {}, 60, "yuv420p", usual, asEncoded(), late(3000)},
        {"LateStartProRes",
         "mov",
         "prores_ks",
         r24,
         1,
         0,
         {},
         40,
         "yuv422p10le",
         usual,
         asEncoded(),
         late(24)},
        {"VariableRateMp4", "mp4", x, r24, 12, 2, {}, 72, "yuv420p", usual, asEncoded(), varied()},
        {"VariableRateMkv", "mkv", x, r24, 12, 2, {}, 72, "yuv420p", usual, asEncoded(), varied()},
        {"VariableRateProRes",
         "mov",
         "prores_ks",
         r24,
         1,
         0,
         {},
         40,
         "yuv422p10le",
         usual,
         asEncoded(),
         varied()},
        {"VariableRateWebm", "webm", "libvpx-vp9", r24, 24, 0, fastVpx, 60, "yuv420p", usual, asEncoded(),
         varied()},
        {"Turned90", "mov", x, r24, 12, 2, {}, 48, "yuv420p", {320, 180}, asEncoded(), turned(90)},
        {"Turned180", "mp4", x, r30, 12, 2, {}, 48, "yuv420p", {320, 180}, asEncoded(), turned(180)},
        {"Turned270",
         "mov",
         "prores_ks",
         r25,
         1,
         0,
         {},
         40,
         "yuv422p10le",
         {320, 180},
         asEncoded(),
         turned(270)},
        {"Turned90Mp4Hevc",
         "mp4",
         "libx265",
         film,
         12,
         3,
         x265("open-gop=0"),
         48,
         "yuv420p",
         {320, 180},
         asEncoded(),
         turned(90)},
        {"PixelAspectMov", "mov", x, r25, 12, 2, {}, 48, "yuv420p", {240, 192}, asEncoded(), aspect(64, 45)},
        {"PixelAspectMkv", "mkv", x, r24, 12, 2, {}, 48, "yuv420p", {192, 160}, asEncoded(), aspect(2, 1)},
        {"PixelAspectMpeg2",
         "mpg",
         "mpeg2video",
         r25,
         12,
         2,
         {},
         48,
         "yuv420p",
         {240, 192},
         asEncoded(),
         aspect(16, 15)},
    };
}

std::vector<Row> broken() {
    const QSize usual{256, 144};
    const char pattern = 0x55;
    return {
        {"NoFirstKeyMkv", "mkv", x, r24, 12, 2, {}, 60, "yuv420p", usual, withoutFirstSamples(1)},
        {"NoFirstKeyTs", "ts", x, r25, 12, 2, {}, 60, "yuv420p", usual, withoutFirstSamples(1)},
        {"NoFirstKeyMp4", "mp4", x, r25, 12, 2, {}, 60, "yuv420p", usual, withoutFirstSamples(3)},
        {"NoFirstKeyMpeg2", "ts", "mpeg2video", r25, 12, 2, closed, 60, "yuv420p", usual,
         withoutFirstSamples(1)},
        {"NoFirstKeyHevc", "mkv", "libx265", r24, 12, 3, x265("open-gop=0"), 60, "yuv420p", usual,
         withoutFirstSamples(1)},
        {"NoFirstKeyVp9", "webm", "libvpx-vp9", r24, 12, 0, fastVpx, 60, "yuv420p", usual,
         withoutFirstSamples(1)},
        {"CutOffMkv", "mkv", x, r24, 12, 2, {}, 72, "yuv420p", usual, truncated(0.6, CutFile::readable)},
        {"CutOffAvi",
         "avi",
         "mjpeg",
         r25,
         1,
         0,
         {},
         60,
         "yuvj420p",
         usual,
         truncated(0.6, CutFile::readable)},
        {"CutOffMxf", "mxf", "dnxhd", r25, 1, 0, squeezed, 40, "yuv422p", usual,
         truncated(0.6, CutFile::readable)},
        {"CutOffTs", "ts", x, r25, 12, 0, {}, 72, "yuv420p", usual, truncated(0.6, CutFile::packed)},
        {"CutOffTsMpeg2",
         "ts",
         "mpeg2video",
         r25,
         12,
         2,
         {},
         72,
         "yuv420p",
         usual,
         truncated(0.6, CutFile::packed)},
        {"CutOffMp4", "mp4", x, r24, 12, 2, {}, 72, "yuv420p", usual, truncated(0.6, CutFile::headerInFront)},
        {"CutOffProRes",
         "mov",
         "prores_ks",
         r24,
         1,
         0,
         {},
         48,
         "yuv422p10le",
         usual,
         truncated(0.6, CutFile::headerInFront)},
        {"LyingMxfTooShort",
         "mxf",
         "prores_ks",
         r24,
         1,
         0,
         {},
         48,
         "yuv422p10le",
         usual,
         lyingFile([](QByteArray& file) { return changeMxfDurations(file, 48, 40); })},
        {"LyingMxfIndexLacksOne",
         "mxf",
         "prores_ks",
         r24,
         1,
         0,
         {},
         48,
         "yuv422p10le",
         usual,
         lyingFile([](QByteArray& file) { return leaveOutOfMxfIndex(file, 20); })},
        {"DamagedMotionJpeg",
         "mov",
         "mjpeg",
         r24,
         1,
         0,
         {},
         48,
         "yuvj420p",
         usual,
         damaged({{11, 12, 30}, 0})},
        {"DamagedProRes",
         "mov",
         "prores_ks",
         r25,
         1,
         0,
         {},
         48,
         "yuv422p10le",
         usual,
         damaged({{8, 25, 26}, 0})},
        {"DamagedProResMxf",
         "mxf",
         "prores_ks",
         r25,
         1,
         0,
         {},
         48,
         "yuv422p10le",
         usual,
         damaged({{8, 25}, 0})},
        {"DamagedRun",
         "mov",
         "prores_ks",
         r24,
         1,
         0,
         {},
         48,
         "yuv422p10le",
         usual,
         damaged({{1, 2, 20, 21, 22, 23, 24, 25, 47, 48}, 0})},
        {"DamagedPng", "mov", "png", r24, 1, 0, {}, 48, "rgb24", usual, damaged({{20, 33}, 0})},
        {"DamagedDnxhr", "mov", "dnxhd", r24, 1, 0, squeezed, 40, "yuv422p", usual,
         damaged({{9, 10, 20}, 0})},
        {"DamagedHalfProRes",
         "mov",
         "prores_ks",
         r24,
         1,
         0,
         {},
         40,
         "yuv422p10le",
         usual,
         damaged({{8, 25, 26}, 0, 0, false, true})},
        {"DamagedPartDnxhr", "mov", "dnxhd", r24, 1, 0, squeezed, 40, "yuv422p", usual,
         damaged({{9, 10, 20}, 1200, char(0xff)})},
        {"DamagedEverySample",
         "mov",
         "mjpeg",
         r24,
         1,
         0,
         {},
         5,
         "yuvj420p",
         usual,
         damaged({{1, 2, 3, 4, 5}, 0, char(0xff), false, true})},
        {"DamagedHalfPng",
         "mov",
         "png",
         r24,
         1,
         0,
         {},
         40,
         "rgb24",
         usual,
         damaged({{20, 33}, 0, 0, false, true})},
        {"DamagedHalfMotionJpeg",
         "mov",
         "mjpeg",
         r24,
         1,
         0,
         {},
         40,
         "yuvj420p",
         usual,
         damaged({{11, 12}, 0, char(0xff), false, true})},
        {"DamagedHalfH264", "mov", x, r24, 12, 2, x264("b-adapt=0:b-pyramid=none:scenecut=0"), 72, "yuv420p",
         usual, damaged({{3, 29, 57}, 0, 0, false, true})},
        {"DamagedH264Lone", "mov", x, r24, 12, 2, x264("b-adapt=0:b-pyramid=none:scenecut=0"), 72, "yuv420p",
         usual, damaged({{3, 29, 57}, 6})},
        {"DamagedH264Referred", "mp4", x, r24, 12, 2, x264("b-adapt=0:scenecut=0"), 72, "yuv420p", usual,
         damaged({{16}, 6, 0, true})},
        {"DamagedH264Key", "mkv", x, r24, 12, 2, x264("b-adapt=0:scenecut=0"), 72, "yuv420p", usual,
         damaged({{37}, 6, 0, true})},
        {"DamagedH264Ts", "ts", x, r25, 12, 2, x264("b-adapt=0:scenecut=0"), 72, "yuv420p", usual,
         damaged({{28}, 40, pattern, true})},
        {"LostInTransport", "ts", x, r25, 12, 2, x264("b-adapt=0:scenecut=0"), 72, "yuv420p", usual,
         lostInTransport(25)},
        {"LostInTransportMpeg2", "ts", "mpeg2video", r25, 12, 2, closed, 72, "yuv420p", usual,
         lostInTransport(21)},
        {"DamagedHevc", "mp4", "libx265", r24, 12, 3, x265("open-gop=0:b-adapt=0"), 72, "yuv420p", usual,
         damaged({{29}, 8, 0, true})},
        {"DamagedMpeg2", "ts", "mpeg2video", r25, 12, 2, closed, 72, "yuv420p", usual,
         damaged({{16}, 40, pattern, true})},
        {"DamagedVp9", "webm", "libvpx-vp9", r24, 12, 0, fastVpx, 60, "yuv420p", usual,
         damaged({{20}, 4, char(0xff), true, false, true})},
    };
}

Clip clipOf(const Row& row) {
    MovieSpec spec;
    spec.path = QString::fromLatin1(row.extension);
    spec.encoder = QString::fromLatin1(row.encoder);
    spec.size = row.size;
    spec.rateNum = row.rate.num;
    spec.rateDen = row.rate.den;
    spec.frames = row.frames;
    spec.groupSize = row.group;
    spec.bFrames = row.bFrames;
    spec.pixelFormat = QString::fromLatin1(row.pixels);
    spec.encoderOptions = row.options;
    if (row.adjust) row.adjust(spec);
    return {row.name, spec, row.make};
}

} // namespace

qint64 Expectation::frameAt(qint64 ticks, qint64 timeScale) const {
    // starts[n] / scale <= ticks / timeScale, in whole numbers
    const auto after = std::partition_point(starts.begin(), starts.end(),
                                            [&](qint64 start) { return start * timeScale <= ticks * scale; });
    return std::max<qint64>(0, after - starts.begin() - 1);
}

Result<Expectation> Clip::makeIn(const QString& folder, QString& path) const {
    MovieSpec made = spec;
    made.path = path = QDir(folder).filePath(QString::fromStdString(name) + QLatin1Char('.') + spec.path);
    return make(made);
}

std::ostream& operator<<(std::ostream& out, const Clip& clip) {
    return out << clip.name;
}

std::vector<Clip> clips() {
    std::vector<Clip> all;
    for (const std::vector<Row>& rows :
         {h264(), otherCodecs(), eachPictureForItself(), cutAndTurned(), broken()})
        for (const Row& row : rows)
            all.push_back(clipOf(row));
    return all;
}

} // namespace daylark::truth
