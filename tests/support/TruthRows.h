#pragma once

#include "support/TruthMaking.h"

namespace daylark::truth {

/// What the lines of the truth table are put together from.

struct Rate {
    int num = 24, den = 1;
};
inline constexpr Rate r12{25, 2}, film{24000, 1001}, r24{24, 1}, r25{25, 1}, ntsc{30000, 1001}, r30{30, 1},
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

inline Options x264(const char* parameters) {
    return {{QStringLiteral("x264-params"), QString::fromLatin1(parameters)}};
}
inline Options x265(const QByteArray& parameters) {
    return {{QStringLiteral("preset"), QStringLiteral("ultrafast")},
            {QStringLiteral("x265-params"), QString::fromLatin1("log-level=none:scenecut=0:" + parameters)}};
}
inline const Options fastVpx{{QStringLiteral("deadline"), QStringLiteral("realtime")},
                      {QStringLiteral("cpu-used"), QStringLiteral("8")}};
/// Pictures that are only referred to stand between those that are shown.
inline const Options hiddenVpx{{QStringLiteral("deadline"), QStringLiteral("good")},
                        {QStringLiteral("cpu-used"), QStringLiteral("5")},
                        {QStringLiteral("auto-alt-ref"), QStringLiteral("1")},
                        {QStringLiteral("lag-in-frames"), QStringLiteral("16")}};
inline const Options fastAom{{QStringLiteral("cpu-used"), QStringLiteral("8")},
                      {QStringLiteral("usage"), QStringLiteral("good")},
                      {QStringLiteral("lag-in-frames"), QStringLiteral("19")}};
inline const Options fastSvt{{QStringLiteral("preset"), QStringLiteral("12")}};
inline const Options squeezed{{QStringLiteral("profile"), QStringLiteral("dnxhr_sq")}};
inline const Options closed{{QStringLiteral("flags"), QStringLiteral("+cgop")},
                     {QStringLiteral("sc_threshold"), QStringLiteral("1000000000")}};

inline std::function<void(MovieSpec&)> muxed(const char* key, const char* value) {
    return [=](MovieSpec& spec) { spec.muxerOptions[QString::fromLatin1(key)] = QString::fromLatin1(value); };
}
inline std::function<void(MovieSpec&)> turned(int degrees) {
    return [=](MovieSpec& spec) { spec.rotation = degrees; };
}
inline std::function<void(MovieSpec&)> fields() {
    return [](MovieSpec& spec) { spec.interlaced = true; };
}
/// With sound in between, and a timecode where the container has one.
inline std::function<void(MovieSpec&)> heard() {
    return [](MovieSpec& spec) {
        spec.sound = true;
        if (spec.path == QLatin1String("mov")) spec.timecode = QStringLiteral("10:00:00:00");
    };
}
inline std::function<void(MovieSpec&)> aspect(int num, int den) {
    return [=](MovieSpec& spec) {
        spec.pixelAspectNum = num;
        spec.pixelAspectDen = den;
    };
}
inline std::function<void(MovieSpec&)> late(int frames) {
    return [=](MovieSpec& spec) {
        for (int n = 0; n < spec.frames; ++n)
            spec.ticks.push_back(n + frames);
    };
}
/// Three lengths of frame in turn, in milliseconds, which every container can say.
inline std::function<void(MovieSpec&)> varied() {
    return [](MovieSpec& spec) {
        spec.rateNum = 1000;
        qint64 at = 0;
        for (int n = 0; n < spec.frames; ++n, at += n % 3 == 0 ? 83 : n % 3 == 1 ? 33 : 42)
            spec.ticks.push_back(at);
    };
}

/// Files that are odd but valid: how third-party programs write them.
[[nodiscard]] std::vector<Row> oddRows();
/// Runs of numbered pictures of every kind, gappy, half written and oddly numbered ones among them.
[[nodiscard]] std::vector<Clip> runClips();

} // namespace daylark::truth
