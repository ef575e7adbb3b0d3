#include "media/encode/SoundExport.h"
#include "tool/ToolContext.h"

#include <CLI/CLI.hpp>

#include <QJsonArray>
#include <QJsonObject>

#include <memory>

namespace daylark::tool {
namespace {

void saveSound(ToolContext& context, const QString& path, const QString& out) {
    const Result<SavedSound> saved = saveSoundAsWave(path, {}, out);
    QJsonObject json{{QStringLiteral("copiedBytes"), saved ? saved->bytes : 0}};
    QJsonArray failed;
    if (saved) {
        json[QStringLiteral("samples")] = saved->frames;
        json[QStringLiteral("rate")] = saved->form.rate;
        json[QStringLiteral("channels")] = saved->form.channels;
        json[QStringLiteral("bits")] = bytesOf(saved->form.depth) * 8;
        json[QStringLiteral("float")] = isFloat(saved->form.depth);
    } else {
        failed.append(QJsonObject{{QStringLiteral("path"), path}, {QStringLiteral("reason"), saved.error().text}});
        context.fail(path, saved.error().text);
    }
    json[QStringLiteral("failed")] = failed;
    context.print(QJsonDocument(json));
}

} // namespace

void addAudioCommand(CLI::App& app, ToolContext& context) {
    struct Arguments {
        std::string file, out;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* audio = app.add_subcommand("audio", "The movie's sound as a WAVE file: its own rate, depth and channels");
    audio->footer("Example: daylark-tool audio shot_010.mov shot_010.wav");
    audio->add_option("FILE", arguments->file, "the movie")->required();
    audio->add_option("OUT", arguments->out, "the WAVE file to write")->required();
    audio->callback([=, &context] {
        saveSound(context, QString::fromStdString(arguments->file), QString::fromStdString(arguments->out));
    });
}

} // namespace daylark::tool
