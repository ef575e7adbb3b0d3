#include "app/program/NotesExport.h"
#include "export/NotesDocument.h"
#include "platform/AtomicFile.h"
#include "tool/SessionItem.h"
#include "tool/ToolContext.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace daylark::tool {
namespace {

void writeNotes(ToolContext& context, const QString& path, int playlistNumber,
                const std::vector<int>& numbers, const QString& out) {
    const Result<SessionContents> contents = readSessionFile(path);
    if (!contents) return context.fail(path, contents.error().text);
    const auto playlist = findPlaylist(context, *contents, path, playlistNumber);
    if (!playlist) return;
    const auto items = itemsOf(context, *playlist, path, numbers);
    if (!items) return;
    const Result<void> written =
        writeFileAtomically(out, notesCsv(*items, notesOptions(context.preferences())));
    if (!written) context.fail(out, written.error().text);
}

} // namespace

void addExportCommands(CLI::App& app, ToolContext& context) {
    struct Arguments {
        std::string file, out, format = "csv";
        int playlist = 1;
        std::vector<int> items;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* notes = app.add_subcommand("notes", "The notes export of a playlist");
    notes->footer("Example: daylark-tool notes day.dls --playlist 1 --format csv --out notes.csv");
    notes->add_option("FILE", arguments->file, "the session file")->required();
    notes->add_option("--playlist", arguments->playlist, "which playlist, counted from 1")->required();
    notes->add_option("--items", arguments->items, "which items of it, e.g. 1,3; default: all")
        ->delimiter(',');
    notes->add_option("--format", arguments->format)->check(CLI::IsMember({"csv"}))->required();
    notes->add_option("--out", arguments->out)->required();
    notes->callback([=, &context] {
        writeNotes(context, QString::fromStdString(arguments->file), arguments->playlist, arguments->items,
                   QString::fromStdString(arguments->out));
    });
}

} // namespace daylark::tool
