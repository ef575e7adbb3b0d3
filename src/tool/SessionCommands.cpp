#include "app/files/FileStates.h"
#include "app/playlists/Library.h"
#include "app/adding/MediaAdding.h"
#include "app/program/ProgressBoard.h"
#include "app/sessions/SessionFiles.h"
#include "app/files/Thumbnails.h"
#include "media/facts/TimecodeTrack.h"
#include "media/sequence/RunFiles.h"
#include "review/ReviewEdits.h"
#include "platform/Alerts.h"
#include "platform/FailedWrites.h"
#include "platform/Panels.h"
#include "tool/RecordJson.h"
#include "tool/SessionItem.h"
#include "tool/ToolContext.h"
#include "tool/WaitFor.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>

#include <map>
#include <memory>

namespace daylark::tool {
namespace {

struct NamedPaths {
    QString name;
    QStringList paths;
};

/// "--playlist NAME PATH... --playlist NAME PATH..." in the order given.
std::vector<NamedPaths> playlistsFrom(const std::vector<std::vector<std::string>>& groups) {
    std::vector<NamedPaths> playlists;
    for (const auto& group : groups) {
        NamedPaths named{QString::fromStdString(group.front()), {}};
        for (size_t i = 1; i < group.size(); ++i)
            named.paths.append(QFileInfo(QString::fromStdString(group[i])).absoluteFilePath());
        playlists.push_back(named);
    }
    return playlists;
}

/// The library itself adds the files, so that the tool's sessions are the library's.
void makeSession(ToolContext& context, const QString& out, const std::vector<NamedPaths>& playlists) {
    ReviewStore store;
    Library library(store);
    ProgressBoard progress;
    ScriptedAlerts alerts;
    ScriptedPanels panels;
    Thumbnails thumbnails(library, context.preferences(), progress);
    FailedWrites failedWrites;
    SessionFiles files({library, context.preferences(), alerts, panels, failedWrites, QString()});
    FileStates fileStates(library, context.preferences(), progress);
    MediaAdding adding({library, context.preferences(), panels, files, progress, thumbnails, fileStates,
                        failedWrites});
    QObject::connect(&adding, &MediaAdding::namesLeftOut, &adding, [&context](const LeftOutNames& names) {
        context.fail(names.list(), QStringLiteral("%1 left out, not named in UTF-8").arg(names.count));
    });
    for (const NamedPaths& named : playlists) {
        const auto playlist = std::make_shared<Playlist>();
        playlist->name = named.name;
        library.appendPlaylist(playlist, true);
        QStringList folders, loose;
        for (const QString& path : named.paths) {
            if (!QFileInfo::exists(path) && !runMeantBy(path)) context.fail(path, QStringLiteral("no such file or folder"));
            if (lostName(path)) continue;
            (QFileInfo(path).isDir() ? folders : loose).append(path);
        }
        if (!folders.isEmpty()) adding.addMediaFoldersToSelectedPlaylist(folders);
        waitFor(adding, &MediaAdding::finished, [&] { return !adding.isBusy(); });
        if (!loose.isEmpty()) adding.addMediaFilesToSelectedPlaylist(loose);
        waitFor(adding, &MediaAdding::finished, [&] { return !adding.isBusy(); });
    }
    waitFor(thumbnails, &Thumbnails::idle, [&] { return thumbnails.isIdle(); });
    SessionContents contents;
    contents.playlists = library.playlists();
    contents.hasPlaylists = true;
    writeSession(context, out, contents);
}

std::optional<bool> booleanFrom(const QString& text) {
    if (text == QLatin1String("YES") || text == QLatin1String("true") || text == QLatin1String("1"))
        return true;
    if (text == QLatin1String("NO") || text == QLatin1String("false") || text == QLatin1String("0"))
        return false;
    return std::nullopt;
}

/// One "key=value" onto a movie; false when the key or the value is not to be had.
bool setField(ReviewEdits& edits, const std::shared_ptr<Movie>& movie, const QString& key,
              const QString& value) {
    static const std::map<QString, double Grade::*> gradeFields{
        {QStringLiteral("exposure"), &Grade::exposure},
        {QStringLiteral("contrast"), &Grade::contrast},
        {QStringLiteral("saturation"), &Grade::saturation},
        {QStringLiteral("gamma"), &Grade::gamma},
        {QStringLiteral("brightness"), &Grade::brightness},
        {QStringLiteral("redChannel"), &Grade::redChannel},
        {QStringLiteral("greenChannel"), &Grade::greenChannel},
        {QStringLiteral("blueChannel"), &Grade::blueChannel}};
    bool ok = true;
    if (key == QLatin1String("flagString")) {
        const int tag = value.toInt(&ok);
        if (ok) edits.setFlag({movie}, tag);
    } else if (key == QLatin1String("notes")) {
        edits.setNotes(movie, NotesField::notes, AttributedString(value));
    } else if (key == QLatin1String("notes2")) {
        edits.setNotes(movie, NotesField::notes2, AttributedString(value));
    } else if (key == QLatin1String("applyGrade")) {
        const std::optional<bool> apply = booleanFrom(value);
        ok = apply.has_value();
        if (ok) edits.setApplyGrade(movie, *apply);
    } else if (const auto field = gradeFields.find(key); field != gradeFields.end()) {
        Grade grade = movie->grade();
        grade.*(field->second) = value.toDouble(&ok);
        if (ok) edits.setGrade(movie, grade);
    } else {
        ok = false;
    }
    return ok;
}

void setFields(ToolContext& context, const SessionItemArguments& item, const QString& out,
               const std::vector<std::string>& assignments) {
    const std::optional<SessionItem> found = findItem(context, item);
    if (!found) return;
    ReviewEdits edits;
    for (const std::string& assignment : assignments) {
        const QString text = QString::fromStdString(assignment);
        const qsizetype equals = text.indexOf(QLatin1Char('='));
        if (equals < 1 || !setField(edits, found->movie, text.left(equals), text.mid(equals + 1)))
            return context.fail(QString::fromStdString(item.file),
                                QStringLiteral("cannot set \"%1\"").arg(text));
    }
    writeSession(context, out, found->session);
}

struct NewBookmark {
    qint64 first = 1;
    qint64 duration = 0; ///< 0: the preference
    std::string overlay, note;
};

void addBookmark(ToolContext& context, const SessionItemArguments& item, const QString& out,
                 const NewBookmark& wanted) {
    const std::optional<SessionItem> found = findItem(context, item);
    if (!found) return;
    const qint64 duration = wanted.duration > 0 ? wanted.duration : context.preferences().bookmarkDuration();
    const float fps = found->movie->mMovieFPS;
    const auto bookmark = std::make_shared<Bookmark>(wanted.first, duration, fps);
    const std::optional<SmpteTime> start = firstTimecodeOf(found->movie->mediaAddress());
    const qint64 step = found->movie->frameStep();
    bookmark->firstTC = timecodeText(wanted.first, fps, start, step);
    bookmark->lastTC = timecodeText(wanted.first + duration - 1, fps, start, step);
    if (!wanted.overlay.empty()) bookmark->overlayString = QString::fromStdString(wanted.overlay);
    if (!wanted.note.empty()) bookmark->overlayString2 = QString::fromStdString(wanted.note);
    ReviewEdits edits;
    edits.addBookmarks(found->movie, {bookmark});
    edits.sortBookmarks(found->movie);
    writeSession(context, out, found->session);
}

} // namespace

void addSessionCommands(CLI::App& app, ToolContext& context) {
    struct Arguments {
        SessionItemArguments item;
        std::string out;
        std::vector<std::vector<std::string>> playlists;
        std::vector<std::string> assignments;
        NewBookmark bookmark;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* session = app.add_subcommand("session", "Makes, shows and edits session files");
    session->require_subcommand(1);

    CLI::App* make = session->add_subcommand("new", "A session of playlists with these files and folders");
    make->footer("Example: daylark-tool session new day.dls --playlist \"Day 1\" \"dailies/Day 1\" "
                 "--playlist Selects a.mov");
    make->add_option("OUT", arguments->out)->required();
    make->add_option("--playlist", arguments->playlists, "a name and its files and folders; repeatable")
        ->required()
        ->type_name("NAME PATH...");
    make->callback([=, &context] {
        makeSession(context, QString::fromStdString(arguments->out), playlistsFrom(arguments->playlists));
    });

    CLI::App* show = session->add_subcommand("show", "The session as JSON");
    show->footer("Example: daylark-tool session show day.dls");
    show->add_option("FILE", arguments->item.file)->required();
    show->callback([=, &context] {
        const QString path = QString::fromStdString(arguments->item.file);
        const Result<SessionContents> contents = readSessionFile(path);
        if (!contents) return context.fail(path, contents.error().text);
        if (!contents->hasPlaylists && !contents->lonePlaylist)
            return context.fail(path, QStringLiteral("is no session: the archive holds no playlists"));
        context.print(QJsonDocument(sessionJson(*contents, context.preferences())));
    });

    CLI::App* list = session->add_subcommand("list", "The items as the library lists them, as JSON");
    list->footer("Example: daylark-tool session list day.dls");
    list->add_option("FILE", arguments->item.file)->required();
    list->callback([=, &context] {
        const QString path = QString::fromStdString(arguments->item.file);
        const Result<SessionContents> contents = readSessionFile(path);
        if (!contents) return context.fail(path, contents.error().text);
        context.print(QJsonDocument(listedItemsJson(*contents, context.preferences())));
    });

    CLI::App* set = session->add_subcommand(
        "set", "Edits one movie: flagString, notes, notes2, the grade's values, applyGrade");
    set->footer("Example: daylark-tool session set day.dls --out new.dls --playlist 1 --item 2 "
                "flagString=901 \"notes=Nice.\"");
    arguments->item.addTo(*set);
    set->add_option("--out", arguments->out)->required();
    set->add_option("ASSIGNMENT", arguments->assignments, "key=value")->required();
    set->callback([=, &context] {
        setFields(context, arguments->item, QString::fromStdString(arguments->out), arguments->assignments);
    });

    CLI::App* bookmark = app.add_subcommand("bookmark", "Bookmarks of a movie");
    bookmark->require_subcommand(1);
    CLI::App* add = bookmark->add_subcommand("add", "Adds a bookmark as the viewer would");
    add->footer("Example: daylark-tool bookmark add day.dls --out new.dls --playlist 1 --item 2 --first 10 "
                "--duration 24");
    arguments->item.addTo(*add);
    add->add_option("--out", arguments->out)->required();
    add->add_option("--first", arguments->bookmark.first, "first frame, counted from 1")->required();
    add->add_option("--duration", arguments->bookmark.duration,
                    "frames; default: the preference bookmarkDuration");
    add->add_option("--overlay", arguments->bookmark.overlay, "the text shown over the picture");
    add->add_option("--note", arguments->bookmark.note);
    add->callback([=, &context] {
        addBookmark(context, arguments->item, QString::fromStdString(arguments->out), arguments->bookmark);
    });
}

} // namespace daylark::tool
