#include "app/relinking/Relinking.h"

#include "app/adding/MediaWalk.h"
#include "app/files/FileStates.h"
#include "app/files/Thumbnails.h"
#include "app/playlists/Library.h"
#include "app/program/ProgressBoard.h"
#include "app/relinking/FileExistence.h"
#include "base/jobs/ReportPace.h"
#include "platform/Alerts.h"
#include "platform/FileBookmark.h"
#include "platform/Panels.h"
#include "preferences/Preferences.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace daylark {

namespace {

constexpr qsizetype mostChoicesTold = 20;

QString nameAtEndOf(const QString& path) {
    return path.section(QLatin1Char('/'), -1, -1, QString::SectionSkipEmpty);
}

bool isPictureOf(const std::optional<MovieRun>& run, const QString& name) {
    const auto number = run ? run->run.numberIn(name) : std::nullopt;
    return number && run->run.frameOf(*number);
}

/// What comes of an item when it is linked to a file that somebody chose. Waits for the disk.
MediaLink linkByChoice(const std::optional<MovieRun>& run, const QString& path, bool wantsRuns) {
    if (isPictureOf(run, nameAtEndOf(path))) {
        const QString first = QFileInfo(path).dir().filePath(run->run.nameOf(run->run.first));
        return {0, first, createFileBookmark(first), {}};
    }
    const std::vector<FoundMedia> media = mediaAmong({path}, {true, wantsRuns}, {});
    if (media.empty() || !media.front().run) return {0, path, createFileBookmark(path), {}};
    MediaLink link{0, media.front().path, media.front().bookmarkData, media.front().run};
    if (run) { // what a person chose for the one before it
        link.run->rate = run->rate;
        link.run->layer = run->layer;
    }
    return link;
}

/// Another path; or it became a run of pictures, or is none any more.
bool makesAnotherFile(const Change& change) {
    return change.field == QLatin1String("filepathString") ||
           (change.field == QLatin1String("frameRun") && change.before.isNil() != change.after.isNil());
}

ProgressBoard::Texts searchTextsFor(qint64 files) {
    return {Relinking::tr("Searching for Media Files..."),
            files > 0 ? Relinking::tr("%1 files looked at").arg(files) : QString(),
            ProgressBoard::Count::untold};
}

/// Which of several files with one name was taken.
QString textOfChoices(const std::vector<QStringList>& choices) {
    QStringList lines;
    for (const QStringList& paths : choices) {
        if (lines.size() >= mostChoicesTold) {
            lines << Relinking::tr("and more");
            break;
        }
        lines << Relinking::tr("%1 is there %2 times. Linked to %3, not to %4")
                     .arg(nameAtEndOf(paths.last()))
                     .arg(paths.size())
                     .arg(paths.last(), paths.mid(0, paths.size() - 1).join(QLatin1String(", ")));
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace

/// One search under way; the worker has the flag and values only.
struct Relinking::Search {
    Scope scope = Scope::selected;
    QString root;
    std::vector<std::weak_ptr<Movie>> movies; ///< by the numbers that the search calls them by
    int job = 0;
};

Relinking::Relinking(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings) {
    connect(&surroundings_.fileStates, &FileStates::updated, this, [this] {
        if (surroundings_.fileStates.isUpdating()) return; // it runs once more
        if (std::exchange(waitsForStates_, false)) WorkQueue::deliver(this, [this] { statesAreFresh(); });
        if (surroundings_.preferences.autoSearchForMissingMedia()) autoLinkMissingMediaOnNewThread();
    });
    connect(&surroundings_.library.store(), &ReviewStore::applied, this, &Relinking::followSteps);
}

Relinking::~Relinking() {
    for (const auto& flag : {cancelled_, cancelledByItself_})
        if (flag) *flag = true;
}

void Relinking::setBusy(bool busy) {
    busy_ = busy;
    Q_EMIT busyChanged();
}

// By hand.

void Relinking::linkMovieToFile() {
    const Library& library = surroundings_.library;
    if (library.selectedMovieRows().size() > 1) {
        surroundings_.alerts.show({tr("Select one item and try again"), {}, {tr("Okay")}, AlertStyle::warning});
        return;
    }
    OpenPanel panel;
    panel.title = tr("Link Video File");
    panel.prompt = tr("Select");
    const QStringList chosen = surroundings_.panels.runOpen(panel);
    const Movies selected = library.selectedMovies();
    if (chosen.isEmpty() || selected.empty()) return;
    const auto& movie = selected.front();
    const QString name = nameAtEndOf(chosen.front());
    if (nameAtEndOf(movie->filenameString) != name && !isPictureOf(movie->frameRun, name)) {
        const Alert question{tr("The filenames don't match.  Link anyway?"), {}, {tr("Link Anyway"), tr("Cancel")},
                             AlertStyle::warning};
        if (surroundings_.alerts.run(question) != Alerts::firstButton) return;
    }
    linkTo(movie, chosen.front());
}

void Relinking::linkTo(const std::shared_ptr<Movie>& movie, const QString& path) {
    setBusy(true);
    work_.run([this, movie = std::weak_ptr<Movie>(movie), run = movie->frameRun, path,
               wantsRuns = surroundings_.preferences.runsBecomeMovies()] {
        WorkQueue::deliver(this, [this, movie, made = linkByChoice(run, path, wantsRuns)] { linkByHand(movie, made); });
    });
}

void Relinking::linkByHand(const std::weak_ptr<Movie>& movie, const MediaLink& made) {
    if (const auto there = movie.lock()) {
        link({there}, {made}, EditKind::step);
        surroundings_.fileStates.updateAllFilePaths();
    }
    setBusy(false);
}

// Under a folder.

void Relinking::autolinkSelectedPlaylists() {
    if (busy_ || surroundings_.library.selectedPlaylistRows().empty()) return;
    setBusy(true);
    waitsForStates_ = true;
    surroundings_.fileStates.updateAllFilePaths();
}

void Relinking::statesAreFresh() {
    lookUnderFolder(Scope::selected);
}

void Relinking::autolinkCurrentSession() {
    if (busy_) return;
    setBusy(true);
    lookUnderFolder(Scope::session); // by the states as they were last found
}

void Relinking::forcelinkSelectedPlaylists() {
    if (busy_ || surroundings_.library.selectedPlaylistRows().empty()) return;
    setBusy(true);
    lookUnderFolder(Scope::forced);
}

std::vector<std::shared_ptr<Playlist>> Relinking::playlistsOf(Scope scope) const {
    const Library& library = surroundings_.library;
    if (scope == Scope::session || scope == Scope::byItself) return library.playlists();
    std::vector<std::shared_ptr<Playlist>> playlists;
    for (const qsizetype row : library.selectedPlaylistRows())
        playlists.push_back(library.playlists()[size_t(row)]);
    return playlists;
}

/// By the states as last found. A smartlist has none of its own: its items have.
bool Relinking::anyMissing(Scope scope) const {
    const auto playlists = playlistsOf(scope);
    return std::any_of(playlists.begin(), playlists.end(), [this](const auto& playlist) {
        if (!playlist->asksRules()) return playlist->status >= 1;
        const auto items = surroundings_.library.itemsOf(*playlist);
        return std::any_of(items.begin(), items.end(),
                           [](const auto& movie) { return FileExistence::isMarkedMissing(*movie); });
    });
}

QString Relinking::alertWithoutMissing(Scope scope) const {
    return scope == Scope::session ? tr("There Are No Missing Files") : tr("No Files Are Missing");
}

void Relinking::lookUnderFolder(Scope scope) {
    if (scope != Scope::forced && !anyMissing(scope)) {
        surroundings_.alerts.show({alertWithoutMissing(scope), {}, {tr("Okay")}, AlertStyle::informational});
        setBusy(false);
        return;
    }
    const QString root = surroundings_.panels.chooseFolder(
        tr("Select A Folder To Search"), scope == Scope::selected ? tr("Choose Folder") : tr("Search Folder"));
    if (root.isEmpty()) return setBusy(false);
    const auto search = std::make_shared<Search>();
    search->scope = scope;
    search->root = root;
    start(search);
}

void Relinking::start(const std::shared_ptr<Search>& search) {
    const bool byItself = search->scope == Scope::byItself;
    const bool networkMode = surroundings_.preferences.networkMode();
    std::unordered_map<const Movie*, qsizetype> numbers;
    std::vector<SoughtMedia> items;
    for (const auto& playlist : playlistsOf(search->scope)) {
        const Movies own(playlist->movieList.begin(), playlist->movieList.end());
        for (const auto& movie : playlist->asksRules() ? surroundings_.library.itemsOf(*playlist) : own) {
            const auto [number, isNew] = numbers.try_emplace(movie.get(), qsizetype(search->movies.size()));
            if (isNew) search->movies.push_back(movie);
            items.push_back({movie->filenameString, movie->fileReference(networkMode), number->second});
        }
    }
    MediaSearch how{search->root};
    if (search->scope == Scope::forced) how.sought = MediaSearch::Sought::all;
    if (search->scope == Scope::session) how.answers = MediaSearch::Answers::byTurn;
    search->job = surroundings_.progress.begin(searchTextsFor(0), 0, !byItself);
    const auto cancelled = surroundings_.progress.cancelFlag(search->job);
    (byItself ? cancelledByItself_ : cancelled_) = cancelled;
    const auto tell = [this, job = search->job, pace = ReportPace()](qint64 files) mutable {
        if (!pace.isDue()) return;
        WorkQueue::deliver(this, [this, job, files] { surroundings_.progress.say(job, searchTextsFor(files)); });
    };
    (byItself ? workByItself_ : work_).run([this, search, how, items = std::move(items), cancelled, tell] {
        auto result = std::make_shared<const std::optional<MediaSearchResult>>(
            searchMedia(items, how, {cancelled.get(), tell}));
        WorkQueue::deliver(this, [this, search, result] { finish(search, *result); });
    });
}

void Relinking::finish(const std::shared_ptr<Search>& search, const std::optional<MediaSearchResult>& result) {
    surroundings_.progress.end(search->job);
    const bool byItself = search->scope == Scope::byItself;
    if (result) {
        ReviewStore& store = surroundings_.library.store();
        Movies movies;
        for (const auto& movie : search->movies)
            movies.push_back(movie.lock());
        for (auto check = result->checks.begin(); check != result->checks.end(); ++check) {
            const auto& movie = movies[size_t(check.key())];
            if (!movie || check->found == (movie->creatingThumbnailText != fileNotFoundText)) continue;
            store.modify(movie, {{}, EditKind::background},
                         [&check](Movie& item) { item.applyFileCheck(*check); });
        }
        link(movies, result->links, byItself ? EditKind::background : EditKind::step);
        if (!result->links.empty()) surroundings_.fileStates.updateAllFilePaths();
    }
    if (byItself) {
        searchesByItself_ = false;
        Q_EMIT busyChanged();
        return;
    }
    setBusy(false);
    if (result) report(search->scope, *result);
}

void Relinking::report(Scope scope, const MediaSearchResult& result) {
    lastReport_.found = qint64(result.links.size());
    lastReport_.missing = result.sought;
    Alert alert;
    alert.message = lastReport_.title();
    alert.informativeText = lastReport_.text();
    alert.details = textOfChoices(result.choices);
    alert.style = lastReport_.allFound() ? AlertStyle::informational : AlertStyle::warning;
    alert.buttons = QStringList{tr("Okay")};
    if (!lastReport_.allFound()) alert.buttons << tr("Try Again");
    if (surroundings_.alerts.run(alert) == Alerts::secondButton) return again(scope);
    Library& library = surroundings_.library;
    if (scope != Scope::session && library.selectedPlaylistRows().size() >= 2) library.selectPlaylist(0);
}

void Relinking::again(Scope scope) {
    switch (scope) {
    case Scope::selected: return autolinkSelectedPlaylists();
    case Scope::session: return autolinkCurrentSession();
    case Scope::forced: return forcelinkSelectedPlaylists();
    case Scope::byItself: return;
    }
}

// By itself.

void Relinking::setAutoSearchPath() {
    const QString root = surroundings_.panels.chooseFolder(tr("Choose The Root Folder For Automatic Searches"));
    if (!root.isEmpty()) surroundings_.preferences.autoSearchPath.set(root);
}

void Relinking::autoLinkMissingMediaOnNewThread() {
    const QString root = surroundings_.preferences.autoSearchPath();
    if (searchesByItself_ || root.isEmpty() || !anyMissing(Scope::byItself)) return;
    searchesByItself_ = true;
    Q_EMIT busyChanged();
    const auto search = std::make_shared<Search>();
    search->scope = Scope::byItself;
    search->root = root;
    start(search);
}

// What follows from a link.

void Relinking::link(const Movies& movies, const std::vector<MediaLink>& links, EditKind kind) {
    Movies others;
    {
        ReviewStore& store = surroundings_.library.store();
        std::unordered_set<const Movie*> linked;
        for (const MediaLink& each : links)
            linked.insert(movies[size_t(each.item)].get());
        const EditInfo step{kind == EditKind::step ? titleForItems(tr("Relink"), linked.size()) : QString(), kind};
        const ReviewStore::Group together(store, step);
        for (const MediaLink& each : links) {
            const auto& movie = movies[size_t(each.item)];
            if (!movie) continue;
            if (movie->filepathString != each.path || (each.run && movie->frameRun != each.run)) others.push_back(movie);
            store.modify(movie, step, [&each](Movie& item) {
                item.addVideoFile(each.path, each.bookmarkData);
                if (each.run) item.frameRun = each.run;
            });
        }
    }
    filesAreOthers(others);
}

void Relinking::filesAreOthers(const Movies& movies) {
    if (movies.empty()) return;
    surroundings_.thumbnails.readAgain(movies);
    Q_EMIT relinked(movies);
}

/// A link taken back or made again is another file as well.
void Relinking::followSteps(const Edit& edit) {
    if (edit.info.kind != EditKind::again) return;
    Movies others;
    std::unordered_set<RecordId> seen;
    for (const Change& change : edit.changes)
        if (makesAnotherFile(change) && seen.insert(change.record).second)
            if (auto movie = surroundings_.library.store().records().find<Movie>(change.record))
                others.push_back(std::move(movie));
    if (others.empty()) return;
    filesAreOthers(others);
    surroundings_.fileStates.updateAllFilePaths();
}

} // namespace daylark
