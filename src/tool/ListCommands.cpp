#include "app/arrangement/Find.h"
#include "app/files/DuplicateRemoval.h"
#include "app/playlists/Library.h"
#include "platform/Alerts.h"
#include "review/ReviewEdits.h"
#include "tool/SessionItem.h"
#include "tool/ToolContext.h"

#include <CLI/CLI.hpp>

#include <QJsonArray>
#include <QJsonObject>

#include <map>
#include <memory>

namespace daylark::tool {
namespace {

/// The library itself with one playlist shown, so that what is said is what a person is told.
struct ShownPlaylist {
    explicit ShownPlaylist(const SessionContents& contents, int number)
        : library(edits.store()) {
        library.setPlaylists(contents.playlists);
        library.selectPlaylist(number - 1);
    }
    ReviewEdits edits;
    Library library;
    ScriptedAlerts alerts;
};

/// Which of the items are there no longer, counted from 1. Of one that stood there twice the last goes first.
QJsonArray gone(const Library::Movies& before, const Library::Movies& after) {
    std::map<std::shared_ptr<Movie>, int> left;
    for (const auto& movie : after)
        ++left[movie];
    QJsonArray numbers;
    for (size_t at = 0; at < before.size(); ++at)
        if (left[before[at]]-- <= 0) numbers.append(qint64(at) + 1);
    return numbers;
}

void duplicates(ToolContext& context, const QString& path, int playlistNumber, int answer, const QString& out) {
    QJsonObject json;
    QJsonArray removes;
    // Each button on a session of its own.
    for (int button = 1, buttons = 1; button <= buttons; ++button) {
        const Result<SessionContents> contents = readSessionFile(path);
        if (!contents) return context.fail(path, contents.error().text);
        if (!findPlaylist(context, *contents, path, playlistNumber)) return;
        ShownPlaylist shown(*contents, playlistNumber);
        const Library::Movies before = shown.library.arrangedMovies();
        shown.alerts.answers = {Alerts::firstButton + button - 1};
        DuplicateRemoval(shown.library, shown.edits, shown.alerts).removeDuplicateItems();
        if (shown.alerts.shown.empty()) return context.fail(path, QStringLiteral("the playlist takes no items"));
        const Alert& said = shown.alerts.shown.back();
        buttons = int(said.buttons.size());
        json[QStringLiteral("message")] = said.message;
        json[QStringLiteral("buttons")] = QJsonArray::fromStringList(said.buttons);
        removes.append(gone(before, shown.library.arrangedMovies()));
        if (button != answer) continue;
        SessionContents session;
        session.playlists = shown.library.playlists();
        session.colourConfiguration = contents->colourConfiguration;
        writeSession(context, out, session);
    }
    if (answer > removes.size()) context.fail(path, QStringLiteral("there is no button %1").arg(answer));
    json[QStringLiteral("removes")] = removes;
    context.print(QJsonDocument(json));
}

void find(ToolContext& context, const QString& path, const QString& text) {
    const Result<SessionContents> contents = readSessionFile(path);
    if (!contents) return context.fail(path, contents.error().text);
    ShownPlaylist shown(*contents, 1);
    Find search(shown.library, context.preferences());
    search.setFindString(text);
    // Found are items of ordinary playlists, in the order of both.
    QJsonArray matches;
    auto next = search.foundMovies().begin();
    const auto end = search.foundMovies().end();
    for (size_t row = 0; row < shown.library.playlists().size(); ++row) {
        const Playlist& playlist = *shown.library.playlists()[row];
        if (!playlist.isType(playlistType::list)) continue;
        const Library::Movies items = shown.library.itemsOf(playlist);
        for (size_t at = 0; at < items.size() && next != end; ++at)
            if (items[at] == *next) {
                matches.append(QJsonArray{qint64(row) + 1, qint64(at) + 1});
                ++next;
            }
    }
    context.print(QJsonDocument(
        QJsonObject{{QStringLiteral("matches"), matches}, {QStringLiteral("text"), search.foundText()}}));
}

} // namespace

void addListCommands(CLI::App& app, ToolContext& context) {
    struct Arguments {
        std::string file, text, scope, out;
        int playlist = 1, answer = 0;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* same = app.add_subcommand("duplicates", "What is asked of repeated media, and what each answer removes");
    same->footer("Example: daylark-tool duplicates day.dls --playlist 1 --answer 1 --out clean.dls");
    same->add_option("FILE", arguments->file, "the session file")->required();
    same->add_option("--playlist", arguments->playlist, "which playlist, counted from 1")->required();
    CLI::Option* answer = same->add_option("--answer", arguments->answer, "carries out this button, counted from 1");
    CLI::Option* out = same->add_option("--out", arguments->out, "the session file to write then");
    answer->check(CLI::Range(1, 3))->needs(out);
    out->needs(answer);
    same->callback([=, &context] {
        duplicates(context, QString::fromStdString(arguments->file), arguments->playlist, arguments->answer,
                   QString::fromStdString(arguments->out));
    });

    CLI::App* finding = app.add_subcommand("find", "Items of all playlists whose names or paths hold a text");
    finding->footer("Example: daylark-tool find day.dls A002 --scope \"Search Filenames\"");
    finding->add_option("FILE", arguments->file, "the session file")->required();
    finding->add_option("TEXT", arguments->text, "what is looked for")->required();
    std::vector<std::string> scopes;
    for (const char* word : PreferenceWords<FindInput>::spelt)
        scopes.emplace_back(word);
    finding->add_option("--scope", arguments->scope, "where; default: as in the library")->check(CLI::IsMember(scopes));
    finding->callback([=, &context] {
        if (!arguments->scope.empty())
            context.preferences().overrideForThisRun(context.preferences().findInputScope.key(),
                                                     QString::fromStdString(arguments->scope));
        find(context, QString::fromStdString(arguments->file), QString::fromStdString(arguments->text));
    });
}

} // namespace daylark::tool
