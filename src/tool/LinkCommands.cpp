#include "app/files/Thumbnails.h"
#include "app/links/LinkOpening.h"
#include "app/links/ReviewLink.h"
#include "app/playlists/Library.h"
#include "app/program/ProgressBoard.h"
#include "platform/Alerts.h"
#include "tool/SessionItem.h"
#include "tool/ToolContext.h"
#include "tool/WaitFor.h"

#include <CLI/CLI.hpp>

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>

#include <cstdio>
#include <memory>

namespace daylark::tool {
namespace {

/// The text that the library's commands copy. Items have a link each, ended by its own carriage return.
void printLink(ToolContext& context, const QString& path, int playlistNumber, const std::vector<int>& numbers) {
    const auto items = findItems(context, path, playlistNumber, numbers);
    if (!items) return;
    QStringList paths;
    for (const auto& movie : items->movies)
        paths << movie->linkPath();
    QString text;
    if (numbers.empty()) text = playlistLink(items->playlist->name, paths) + QLatin1Char('\n');
    else
        for (const QString& item : paths)
            text += movieLink(item);
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
}

/// A link longer than a command line may be comes on standard input.
QString linkFrom(const std::string& argument) {
    if (argument != "-") return QString::fromStdString(argument);
    QFile input;
    return input.open(stdin, QIODevice::ReadOnly) ? QString::fromUtf8(input.readAll()) : QString();
}

/// The library itself opens it, so that the session is what the library would have.
void openLink(ToolContext& context, const QString& link, const QString& path, const QString& out) {
    const Result<SessionContents> contents = readSessionFile(path);
    if (!contents) return context.fail(path, contents.error().text);
    ReviewStore store;
    Library library(store);
    library.setPlaylists(contents->playlists);
    ProgressBoard progress;
    ScriptedAlerts alerts;
    Thumbnails thumbnails(library, context.preferences(), progress);
    LinkOpening opening({library, alerts, progress, thumbnails});
    opening.handleURLEvent(link);
    waitFor(opening, &LinkOpening::finished, [&] { return !opening.isBusy(); });
    waitFor(thumbnails, &Thumbnails::idle, [&] { return thumbnails.isIdle(); });
    QJsonArray messages, added;
    for (const Alert& alert : alerts.shown)
        messages.append(alert.message);
    for (const auto& playlist : library.playlists())
        for (const auto& movie : playlist->movieList)
            if (opening.cameByLink(*movie)) added.append(movie->filepathString);
    SessionContents session;
    session.playlists = library.playlists();
    session.colourConfiguration = contents->colourConfiguration;
    writeSession(context, out, session);
    QJsonObject json{{QStringLiteral("alerts"), messages}, {QStringLiteral("added"), added}};
    if (const auto playlist = library.selectedPlaylist()) json[QStringLiteral("playlist")] = playlist->name;
    context.print(QJsonDocument(json));
}

} // namespace

void addLinkCommands(CLI::App& app, ToolContext& context) {
    struct Arguments {
        std::string file, out, link;
        int playlist = 1;
        std::vector<int> items;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* link = app.add_subcommand("link", "The playlist's link, or those of some of its items, as text");
    link->footer("Example: daylark-tool link day.dls --playlist 1 --items 1,3");
    link->add_option("FILE", arguments->file, "the session file")->required();
    link->add_option("--playlist", arguments->playlist, "which playlist, counted from 1")->required();
    link->add_option("--items", arguments->items, "which items of it, e.g. 1,3: a link each")->delimiter(',');
    link->callback([=, &context] {
        printLink(context, QString::fromStdString(arguments->file), arguments->playlist, arguments->items);
    });

    CLI::App* open = app.add_subcommand("open-link", "What opening a link does to a session");
    open->footer("Example: daylark-tool open-link 'daylark://link/dailies/a.mov' --session day.dls --out new.dls");
    open->add_option("URL", arguments->link, "the link; - reads it from standard input")->required();
    open->add_option("--session", arguments->file, "the session file")->required();
    open->add_option("--out", arguments->out, "the session file to write")->required();
    open->callback([=, &context] {
        openLink(context, linkFrom(arguments->link), QString::fromStdString(arguments->file),
                 QString::fromStdString(arguments->out));
    });
}

} // namespace daylark::tool
