#include "app/playlists/SmartLists.h"

#include "app/playlists/SmartQuestion.h"

#include <QStringList>

#include <algorithm>
#include <unordered_set>

namespace daylark {

namespace {

/// Fields that no rule and no order looks at, and that change often.
bool saysNothing(const Change& change) {
    static const std::unordered_set<QString> fields{
        QStringLiteral("thumbnail"), QStringLiteral("mThumbnailFrame"), QStringLiteral("mLastFrameVisited"),
        QStringLiteral("mMovieHasBeenVisited"), QStringLiteral("activeImage"), QStringLiteral("activeStrip")};
    return change.isWholeRecord() || fields.contains(change.field);
}

ItemList sortedItems(const Playlist& playlist) {
    ItemList items(playlist.movieList.begin(), playlist.movieList.end());
    return playlist.isType(playlistType::folder) ? items : inOwnOrder(std::move(items));
}

struct Candidate {
    std::shared_ptr<Movie> movie;
    QStringList playlists;
};

std::vector<Candidate> candidatesOf(const ReviewRecords::Playlists& playlists) {
    std::vector<Candidate> candidates;
    std::unordered_map<const Movie*, size_t> places;
    for (const auto& playlist : playlists) {
        for (const auto& movie : sortedItems(*playlist)) {
            const auto [place, isNew] = places.try_emplace(movie.get(), candidates.size());
            if (isNew) candidates.push_back({movie, {}});
            QStringList& names = candidates[place->second].playlists;
            if (!playlist->asksRules() && !names.contains(playlist->name)) names.append(playlist->name);
        }
    }
    return candidates;
}

} // namespace

SmartLists::SmartLists(ReviewStore& store, QObject* parent)
    : QObject(parent)
    , store_(store) {
    later_.setSingleShot(true);
    later_.setInterval(0);
    connect(&later_, &QTimer::timeout, this, [this] {
        for (const auto& playlist : store_.playlists())
            if (playlist->asksRules()) Q_EMIT answered(playlist);
    });
    connect(&store_, &ReviewStore::applied, this, &SmartLists::look);
    connect(&store_, &ReviewStore::sessionReplaced, this, &SmartLists::forget);
}

void SmartLists::look(const Edit& edit) {
    if (!std::all_of(edit.changes.begin(), edit.changes.end(), saysNothing)) forget();
}

void SmartLists::forget() {
    known_ = false;
    answers_.clear();
    if (hasQuestions()) later_.start();
}

bool SmartLists::hasQuestions() const {
    return std::any_of(store_.playlists().begin(), store_.playlists().end(),
                       [](const auto& playlist) { return playlist->asksRules(); });
}

void SmartLists::askAll() {
    known_ = true;
    const std::vector<Candidate> candidates = candidatesOf(store_.playlists());
    for (const auto& playlist : store_.playlists()) {
        if (!playlist->asksRules()) continue;
        const smartQuestion::Test holds = smartQuestion::testOf(playlist->smartRules);
        ItemList& answer = answers_[playlist.get()];
        for (const Candidate& candidate : candidates)
            if (holds({*candidate.movie, candidate.playlists})) answer.push_back(candidate.movie);
    }
}

ItemList SmartLists::itemsOf(const Playlist& playlist) {
    if (!playlist.asksRules()) return {playlist.movieList.begin(), playlist.movieList.end()};
    if (!known_) askAll();
    const auto answer = answers_.find(&playlist);
    return answer == answers_.end() ? ItemList() : answer->second;
}

ItemList SmartLists::itemsInOrder(const Playlist& playlist) {
    return playlist.asksRules() ? itemsOf(playlist) : sortedItems(playlist);
}

ReviewRecords::Playlists withAnswers(const ReviewRecords::Playlists& playlists, SmartLists& lists) {
    ReviewRecords::Playlists told = playlists;
    for (auto& playlist : told) {
        if (!playlist->asksRules()) continue;
        auto answered = std::make_shared<Playlist>(*playlist);
        const ItemList items = lists.itemsOf(*playlist);
        answered->movieList.assign(items.begin(), items.end());
        answered->movieList.isNil = false;
        playlist = std::move(answered);
    }
    return told;
}

void withoutAnswers(const ReviewRecords::Playlists& playlists) {
    std::unordered_set<const Movie*> elsewhere;
    for (const auto& playlist : playlists)
        if (!playlist->asksRules())
            for (const auto& movie : playlist->movieList)
                elsewhere.insert(movie.get());
    for (const auto& playlist : playlists)
        if (playlist->asksRules())
            std::erase_if(playlist->movieList,
                          [&elsewhere](const auto& movie) { return elsewhere.contains(movie.get()); });
}

} // namespace daylark
