#include "app/playlists/ItemTransfer.h"

#include "app/arrangement/Find.h"
#include "app/files/FileStates.h"
#include "app/playlists/Library.h"
#include "app/playlists/PlaylistEditing.h"
#include "model/Session.h"
#include "platform/Alerts.h"
#include "review/ReviewEdits.h"

#include <algorithm>
#include <unordered_set>

namespace daylark {

namespace {

void showOkay(Alerts& alerts, const QString& message, const QString& informativeText = {}) {
    Alert alert;
    alert.message = message;
    alert.informativeText = informativeText;
    alert.buttons = QStringList{ItemTransfer::tr("Okay")};
    alerts.show(alert);
}

/// A record that is named twice becomes two.
ItemList independentCopies(const ItemList& items) {
    ItemList copies(items.size());
    std::vector<size_t> left(items.size());
    for (size_t at = 0; at < left.size(); ++at)
        left[at] = at;
    while (!left.empty()) {
        std::unordered_set<const Movie*> seen;
        std::vector<size_t> now, later;
        ItemList originals;
        for (const size_t at : left) {
            const bool first = seen.insert(items[at].get()).second;
            (first ? now : later).push_back(at);
            if (first) originals.push_back(items[at]);
        }
        const ItemList made = copyMovies(originals);
        for (size_t i = 0; i < now.size() && i < made.size(); ++i)
            copies[now[i]] = made[i];
        left = std::move(later);
    }
    std::erase(copies, nullptr);
    return copies;
}

ItemList eachOnce(const ItemList& items) {
    std::unordered_set<const Movie*> seen;
    ItemList once;
    for (const auto& movie : items)
        if (seen.insert(movie.get()).second) once.push_back(movie);
    return once;
}

} // namespace

ItemTransfer::ItemTransfer(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings) {}

/// Copies stand in one list, whatever their originals do.
ItemList ItemTransfer::numberedCopies(const ItemList& items, qint64 firstNumber) const {
    ItemList copies = independentCopies(items);
    for (const auto& copy : copies) {
        copy->iCount = 1;
        copy->removeICount();
        copy->sortOrder = firstNumber++;
    }
    return copies;
}

bool ItemTransfer::isInLibrary(const std::shared_ptr<Playlist>& playlist) const {
    const auto& playlists = surroundings_.library.playlists();
    return std::find(playlists.begin(), playlists.end(), playlist) != playlists.end();
}

bool ItemTransfer::selectionAllowsDrop() {
    if (surroundings_.library.selectedPlaylistRows().size() <= 1) return true;
    showOkay(surroundings_.alerts, tr("Too many playlists selected"), tr("Select only one and try again"));
    return false;
}

// Drops.

void ItemTransfer::dropOnPlaylist(const ItemList& items, const std::shared_ptr<Playlist>& target,
                                  bool withModifier) {
    if (items.empty() || !selectionAllowsDrop() || !target || !target->isType(playlistType::list)) return;
    if (withModifier) {
        Alert question;
        question.message = tr("Instance items to \"%1\"?").arg(target->name);
        question.buttons = QStringList{tr("Instance"), tr("Cancel")};
        question.style = AlertStyle::informational;
        if (surroundings_.alerts.run(question) == Alerts::firstButton && isInLibrary(target))
            addInstances(target, items);
    } else {
        copyOrMove(items, target);
    }
    surroundings_.fileStates.updateAllFilePaths();
    surroundings_.find.closeFindPanel();
    Q_EMIT dropAccepted();
}

void ItemTransfer::addInstances(const std::shared_ptr<Playlist>& target, const ItemList& items) {
    ReviewStore& store = surroundings_.edits.store();
    const ReviewStore::Group step(store, {titleForItems(tr("Instance"), items.size())});
    for (const auto& movie : items)
        store.modify(movie, {}, [](Movie& item) { item.addICount(); });
    surroundings_.library.addMovies(target, items);
}

void ItemTransfer::copyOrMove(const ItemList& items, const std::shared_ptr<Playlist>& target) {
    Library& library = surroundings_.library;
    const auto source = library.selectedPlaylist();
    if (!source) return;
    // What stands in a list because of a rule or a folder cannot be taken out of it.
    const bool mayMove = source->takesItems();
    Alert question;
    question.message = tr("Add To Playlist");
    question.informativeText = mayMove ? tr("Would you like to Copy or Move these items?")
                                       : tr("Would you like to Copy these items?");
    question.buttons = mayMove ? QStringList{tr("Copy"), tr("Move"), tr("Cancel")}
                               : QStringList{tr("Copy"), tr("Cancel")};
    const int answer = surroundings_.alerts.run(question);
    const bool move = mayMove && answer == Alerts::secondButton;
    if ((answer != Alerts::firstButton && !move) || !isInLibrary(target) || !isInLibrary(source)) return;

    ReviewStore& store = surroundings_.edits.store();
    const ReviewStore::Group step(store, {titleForItems(move ? tr("Move") : tr("Copy"), items.size())});
    library.addMovies(target, numberedCopies(items, target->count() + 1));
    if (!move) return;
    for (const auto& movie : items)
        store.modify(movie, {}, [](Movie& item) { item.removeICount(); });
    library.removeMovies(source, items);
    surroundings_.playlistEditing.closeRanks(*source);
}

// Combining.

void ItemTransfer::addAllItemsToNewPlaylist() {
    combine(surroundings_.library.playlists());
}

void ItemTransfer::addSelectedItemsToNewPlaylist() {
    const Library& library = surroundings_.library;
    if (library.selectedPlaylistRows().size() < 2) {
        showOkay(surroundings_.alerts, tr("Select More Than One Playlist"));
        return;
    }
    Library::Playlists selected;
    for (const qsizetype row : library.selectedPlaylistRows())
        selected.push_back(library.playlists()[size_t(row)]);
    combine(selected);
}

void ItemTransfer::combine(const Library::Playlists& playlists) {
    Library& library = surroundings_.library;
    ItemList gathered;
    for (const auto& playlist : playlists) {
        const ItemList items = library.itemsOf(*playlist);
        gathered.insert(gathered.end(), items.begin(), items.end());
    }
    const ItemList copies = numberedCopies(eachOnce(gathered), 1);
    if (!copies.empty()) {
        const ReviewStore::Group step(library.store(), {tr("Combine Playlists")});
        auto combined = std::make_shared<Playlist>();
        combined->name = QStringLiteral("Combined Playlists");
        surroundings_.playlistEditing.append(combined, true);
        library.addMovies(combined, copies);
    }
    surroundings_.fileStates.updateAllFilePaths();
}

void ItemTransfer::createPlaylistWithFoundsItems(bool instances) {
    Library& library = surroundings_.library;
    const ItemList found = surroundings_.find.foundMovies();
    if (found.empty()) return;
    auto playlist = std::make_shared<Playlist>();
    playlist->name = (instances ? QStringLiteral("Instances of \"%1\"") : QStringLiteral("Copies of \"%1\""))
                         .arg(surroundings_.find.validFindString());
    {
        const ReviewStore::Group step(library.store(), {tr("Playlist of Found Items")});
        surroundings_.playlistEditing.append(playlist, true);
        if (instances)
            addInstances(playlist, found);
        else
            library.addMovies(playlist, numberedCopies(found, 1));
    }
    surroundings_.find.clearFound();
    surroundings_.find.closeFindPanel();
    surroundings_.fileStates.updateAllFilePaths();
}

} // namespace daylark
