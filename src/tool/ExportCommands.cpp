#include "export/notes/NotesFormat.h"
#include "export/notes/PlaylistManifest.h"
#include "platform/AtomicFile.h"
#include "tool/SessionItem.h"
#include "tool/ToolContext.h"

#include <CLI/CLI.hpp>

#include <QJsonArray>
#include <QJsonObject>

#include <memory>

namespace daylark::tool {
namespace {

void writeNotes(ToolContext& context, const QString& path, int playlistNumber,
                const std::vector<int>& numbers, const QString& formatName, const QString& out) {
    const auto items = findItems(context, path, playlistNumber, numbers);
    if (!items) return;
    const NotesFormats formats;
    const NotesFormat& format = *formats.named(formatName); // the command line takes no other
    NotesReport report = notesReport(items->movies, context.preferences(), format.bookmarkOrder());
    if (format.saysProductionNumbers()) readNumbersByTimecode(report);
    const Result<void> written = writeFileAtomically(out, format.write(report));
    if (!written) context.fail(out, written.error().text);
}

void listFormats(ToolContext& context) {
    const NotesFormats formats;
    QJsonArray list;
    for (const auto& format : formats.all())
        list.append(QJsonObject{{QStringLiteral("name"), format->name()},
                                {QStringLiteral("title"), format->title()},
                                {QStringLiteral("extension"), format->extension()}});
    context.print(QJsonDocument(list));
}

/// The items in the playlist's own order, as the library shows them without a filter.
void writeManifest(ToolContext& context, const QString& path, int playlistNumber, const QString& title, const QString& out) {
    const auto items = findItems(context, path, playlistNumber);
    if (!items) return;
    QStringList filenames;
    for (const auto& movie : items->movies)
        filenames << movie->filenameString;
    const Result<void> written = writeFileAtomically(out, playlistManifest(filenames, items->playlist->name, title));
    if (!written) context.fail(out, written.error().text);
}

void addManifestCommand(CLI::App& app, ToolContext& context) {
    struct Arguments {
        std::string file, title, out;
        int playlist = 1;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* manifest = app.add_subcommand("manifest", "The manifest of a playlist");
    manifest->footer("Example: daylark-tool manifest day.dls --playlist 1 --title Review --out manifest.csv");
    manifest->add_option("FILE", arguments->file, "the session file")->required();
    manifest->add_option("--playlist", arguments->playlist, "which playlist, counted from 1")->required();
    manifest->add_option("--title", arguments->title, "what the session is called")->required();
    manifest->add_option("--out", arguments->out, "the file to write")->required();
    manifest->callback([=, &context] {
        writeManifest(context, QString::fromStdString(arguments->file), arguments->playlist,
                      QString::fromStdString(arguments->title), QString::fromStdString(arguments->out));
    });
}

} // namespace

void addExportCommands(CLI::App& app, ToolContext& context) {
    addManifestCommand(app, context);
    struct Arguments {
        std::string file, out, format;
        int playlist = 1;
        std::vector<int> items;
    };
    const auto arguments = std::make_shared<Arguments>();
    const NotesFormats formats;
    std::vector<std::string> names;
    for (const auto& format : formats.all())
        names.push_back(format->name().toStdString());
    CLI::App* notes = app.add_subcommand("notes", "The notes export of a playlist");
    notes->footer("Example: daylark-tool notes day.dls --playlist 1 --format csv --out notes.csv");
    CLI::Option* list = notes->add_flag("--formats")->description("lists the formats instead");
    std::vector<CLI::Option*> needed{
        notes->add_option("FILE", arguments->file, "the session file"),
        notes->add_option("--playlist", arguments->playlist, "which playlist, counted from 1"),
        notes->add_option("--format", arguments->format, "which format")->check(CLI::IsMember(names)),
        notes->add_option("--out", arguments->out, "the file to write")};
    notes->add_option("--items", arguments->items, "which items of it, e.g. 1,3; default: all")
        ->delimiter(',');
    notes->callback([=, &context] {
        if (list->count() > 0) return listFormats(context);
        for (const CLI::Option* option : needed)
            if (option->count() == 0) throw CLI::RequiredError(option->get_name());
        writeNotes(context, QString::fromStdString(arguments->file), arguments->playlist, arguments->items,
                   QString::fromStdString(arguments->format), QString::fromStdString(arguments->out));
    });
}

} // namespace daylark::tool
