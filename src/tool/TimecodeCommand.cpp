#include "media/facts/TimecodeTrack.h"
#include "model/runs/MovieRun.h"
#include "tool/MediaArgument.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <memory>

namespace daylark::tool {

namespace {

constexpr int negativeMark = 128; // in the minutes

QJsonObject sampleJson(const SmpteTime& time) {
    const bool negative = time.minutes & negativeMark;
    const QString text = QString::asprintf("%s%02d:%02d:%02d:%02d", negative ? "-" : "", time.hours,
                                           time.minutes & ~negativeMark, time.seconds, time.frames);
    return {{QStringLiteral("hours"), time.hours},      {QStringLiteral("minutes"), time.minutes},
            {QStringLiteral("seconds"), time.seconds},  {QStringLiteral("frames"), time.frames},
            {QStringLiteral("flags"), int(time.flags)}, {QStringLiteral("text"), text}};
}

void printTimecode(ToolContext& context, const std::string& file) {
    const std::optional<QString> media = mediaArgument(context, file);
    if (!media) return;
    const QString path = *media;
    const QFileInfo info(path);
    if (!RunAddress::of(path) && (!info.isFile() || !info.isReadable()))
        return context.fail(path, info.exists() ? QStringLiteral("cannot be read")
                                                : QStringLiteral("no such file"));
    QJsonArray samples;
    for (const SmpteTime& time : AVTimecodeReader(path).readTimecodeSamples())
        samples.append(sampleJson(time));
    context.print(QJsonDocument(samples));
}

} // namespace

void addTimecodeCommand(CLI::App& app, ToolContext& context) {
    const auto file = std::make_shared<std::string>();
    CLI::App* timecode = app.add_subcommand(
        "timecode", "The samples of the first timecode track, or the start timecode that the file states");
    timecode->footer(
        "Example: daylark-tool timecode shot_010.mov\n"
        "A movie without timecode prints an empty array. In a negative time, minutes are marked by 128.");
    timecode->add_option("FILE", *file)->required();
    timecode->callback([=, &context] { printTimecode(context, *file); });
}

} // namespace daylark::tool
