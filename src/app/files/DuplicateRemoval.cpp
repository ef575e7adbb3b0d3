#include "app/files/DuplicateRemoval.h"

#include "app/arrangement/MovieFilter.h"
#include "app/playlists/Library.h"
#include "platform/Alerts.h"
#include "review/ReviewEdits.h"

#include <algorithm>

namespace daylark {

namespace {

struct Duplicates {
    ItemList all, unmodified;
};

Duplicates duplicatesAmong(ItemList shown) {
    std::vector<std::pair<QString, std::shared_ptr<Movie>>> sorted;
    for (const auto& movie : shown) {
        movie->hasAdjustments = hasReviewWork(*movie); // memory only
        sorted.emplace_back(movie->filenameString.toCaseFolded(), movie);
    }
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first < b.first : a.second->hasAdjustments > b.second->hasAdjustments;
    });
    Duplicates found;
    // A.mov and a.mov stand next to each other and are no duplicates; wanted.
    QString name;
    for (const auto& [folded, movie] : sorted) {
        if (name.isNull() || movie->filenameString != name) {
            name = movie->filenameString.isNull() ? QStringLiteral("") : movie->filenameString;
            continue;
        }
        found.all.push_back(movie);
        if (!movie->hasAdjustments) found.unmodified.push_back(movie);
    }
    return found;
}

QString duplicatesMessage(size_t all, size_t modified) {
    if (modified == 0)
        return all == 1 ? QStringLiteral("1 duplicate found.") : QStringLiteral("%1 duplicates found.").arg(all);
    if (modified == 1)
        return all == 1 ? QStringLiteral("1 duplicate found. 1 is modified.")
                        : QStringLiteral("%1 duplicates found. 1 is modified.").arg(all);
    return QStringLiteral("%1 duplicates found. %2 are modified.").arg(all).arg(modified);
}

} // namespace

DuplicateRemoval::DuplicateRemoval(Library& library, ReviewEdits& edits, Alerts& alerts, QObject* parent)
    : QObject(parent)
    , library_(library)
    , edits_(edits)
    , alerts_(alerts) {}

void DuplicateRemoval::removeDuplicateItems() {
    const auto playlist = library_.selectedPlaylist();
    if (!playlist || !playlist->takesItems()) return;
    const Duplicates found = duplicatesAmong(library_.arrangedMovies());
    if (found.all.empty()) {
        Alert alert;
        alert.message = tr("No duplicates found");
        alert.buttons = QStringList{tr("Okay")};
        alerts_.show(alert);
        return;
    }
    const size_t modified = found.all.size() - found.unmodified.size();
    Alert question;
    question.message = duplicatesMessage(found.all.size(), modified);
    question.buttons = QStringList{tr("Remove All Duplicates")};
    if (modified > 0) question.buttons << tr("Keep Modified Duplicates");
    question.buttons << tr("Cancel");
    question.subject = playlist->name;
    if (modified > 0) question.defaultButton = int(question.buttons.size()) - 1;
    question.tellsDismissal = true; // Escape and closing press no button
    const int answer = alerts_.run(question);
    if (playlist != library_.selectedPlaylist()) return;
    if (answer == Alerts::firstButton) remove(playlist, found.all);
    // By position: the second button removes, whatever it is called; wanted.
    if (answer == Alerts::secondButton) remove(playlist, found.unmodified);
}

void DuplicateRemoval::remove(const std::shared_ptr<Playlist>& playlist, const ItemList& items) {
    if (items.empty()) return;
    ReviewStore& store = edits_.store();
    const ReviewStore::Group step(store, {tr("Remove Duplicates")});
    for (const auto& movie : items)
        store.modify(movie, {}, [](Movie& item) { item.removeICount(); });
    library_.removeMovies(playlist, items);
}

} // namespace daylark
