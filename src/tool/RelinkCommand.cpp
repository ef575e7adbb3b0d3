#include "app/files/FileStates.h"
#include "app/files/Thumbnails.h"
#include "app/playlists/Library.h"
#include "app/program/ProgressBoard.h"
#include "app/relinking/Relinking.h"
#include "platform/Alerts.h"
#include "platform/Panels.h"
#include "tool/SessionItem.h"
#include "tool/ToolContext.h"
#include "tool/WaitFor.h"

#include <CLI/CLI.hpp>

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <memory>

namespace daylark::tool {
namespace {

struct Arguments {
    std::string file, root, out;
    int playlist = 0; ///< 0: all
    bool force = false;
};

/// The library itself does it, so that the session is what the library would have.
void relink(ToolContext& context, const Arguments& arguments) {
    const QString path = QString::fromStdString(arguments.file);
    const QString root = QDir().absoluteFilePath(QString::fromStdString(arguments.root));
    const Result<SessionContents> contents = readSessionFile(path);
    if (!contents) return context.fail(path, contents.error().text);
    if (!QFileInfo(root).isDir()) return context.fail(root, QStringLiteral("is no folder"));
    if (arguments.playlist && !findPlaylist(context, *contents, path, arguments.playlist)) return;
    ReviewStore store;
    Library library(store);
    library.setPlaylists(contents->playlists);
    ProgressBoard progress;
    ScriptedAlerts alerts;
    ScriptedPanels panels;
    Thumbnails thumbnails(library, context.preferences(), progress);
    FileStates fileStates(library, context.preferences(), progress);
    Relinking relinking({library, context.preferences(), alerts, panels, progress, fileStates, thumbnails});
    const auto settle = [&] {
        waitFor(relinking, &Relinking::busyChanged, [&] { return !relinking.isBusy() && !relinking.isSearchingByItself(); });
        waitFor(fileStates, &FileStates::updated, [&] { return !fileStates.isUpdating(); });
        waitFor(thumbnails, &Thumbnails::idle, [&] { return thumbnails.isIdle(); });
    };
    Library::Rows rows;
    for (qsizetype row = 0; row < qsizetype(library.playlists().size()); ++row)
        if (!arguments.playlist || row + 1 == arguments.playlist) rows.push_back(row);
    library.selectPlaylists(rows);
    context.preferences().overrideForThisRun(context.preferences().autoSearchForMissingMedia.key(), QStringLiteral("0"));
    fileStates.updateAllFilePaths();
    settle();
    alerts.answers = {Alerts::firstButton};
    panels.openAnswers = {{root}};
    if (arguments.force) relinking.forcelinkSelectedPlaylists();
    else if (arguments.playlist) relinking.autolinkSelectedPlaylists();
    else relinking.autolinkCurrentSession();
    settle();
    SessionContents session;
    session.playlists = library.playlists();
    session.colourConfiguration = contents->colourConfiguration;
    writeSession(context, QString::fromStdString(arguments.out), session);
    QJsonObject json{{QStringLiteral("found"), relinking.lastReport().found},
                     {QStringLiteral("missing"), relinking.lastReport().missing}};
    if (!alerts.shown.empty()) {
        const Alert& report = alerts.shown.front();
        json[QStringLiteral("title")] = report.message;
        json[QStringLiteral("text")] = report.informativeText;
        json[QStringLiteral("details")] = report.details;
    }
    context.print(QJsonDocument(json));
}

} // namespace

void addRelinkCommand(CLI::App& app, ToolContext& context) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* command = app.add_subcommand("relink", "Links items to files of their names under a folder");
    command->footer("Example: daylark-tool relink day.dls --root /mnt/dailies --out found.dls");
    command->add_option("FILE", arguments->file, "the session file")->required();
    command->add_option("--root", arguments->root, "the folder to search, with all below it")->required();
    command->add_option("--out", arguments->out, "the session file to write")->required();
    command->add_option("--playlist", arguments->playlist, "one playlist alone, counted from 1; default: all")
        ->check(CLI::PositiveNumber);
    command->add_flag("--force", arguments->force, "items whose file is there, too");
    command->callback([=, &context] { relink(context, *arguments); });
}

} // namespace daylark::tool
