#include "app/arrangement/Find.h"

#include "app/playlists/Library.h"
#include "preferences/Preferences.h"

#include <algorithm>

namespace daylark {

Find::Find(Library& library, Preferences& preferences, QObject* parent)
    : QObject(parent)
    , library_(library)
    , preferences_(preferences) {
    connect(&preferences_.findInputScope, &PreferenceItem::changed, this, &Find::setFindScope);
}

void Find::setFindString(const QString& text) {
    if (findString_ == text) return;
    findString_ = text;
    addItemsToFoundArray();
}

void Find::setFindScope() {
    findString_.clear();
    clearFound();
}

void Find::clearFound() {
    findString_.clear();
    validFindString_.clear();
    foundMovies_.clear();
    foundPlaylists_.clear();
    currentFoundPlaylistIndex_ = 0;
    foundText_.clear();
    Q_EMIT changed();
}

bool Find::matches(const Movie& movie) const {
    const bool names = preferences_.findInputScope() == FindInput::filenames;
    return (names ? movie.filenameString : movie.filepathString).contains(findString_, Qt::CaseInsensitive) ||
           (movie.frameRun && movie.shownName().contains(findString_, Qt::CaseInsensitive));
}

void Find::addItemsToFoundArray() {
    foundMovies_.clear();
    foundPlaylists_.clear();
    currentFoundPlaylistIndex_ = 0;
    validFindString_.clear();
    foundText_.clear();
    if (findString_.isEmpty()) {
        Q_EMIT changed();
        return;
    }
    for (const auto& playlist : library_.playlists()) {
        if (!playlist->isType(playlistType::list)) continue; // smartlists, folder lists and dividers: never; wanted
        const size_t before = foundMovies_.size();
        for (const auto& movie : library_.itemsOf(*playlist))
            if (matches(*movie)) foundMovies_.push_back(movie);
        if (foundMovies_.size() > before) foundPlaylists_.push_back(playlist);
    }
    if (foundMovies_.empty()) {
        foundText_ = tr("No Matches Found");
        Q_EMIT changed();
        return;
    }
    validFindString_ = findString_;
    foundText_ = foundMovies_.size() == 1 ? QStringLiteral("1 Match")
                                          : QStringLiteral("%1 Matches").arg(foundMovies_.size());
    Q_EMIT changed();
    static_cast<void>(goToFoundPlaylist());
    // From the selected item on, so that what is found stays while more of it is typed; else the first.
    const auto& rows = library_.selectedMovieRows();
    if (!selectMatchFrom(rows.empty() ? 0 : rows.front(), true)) static_cast<void>(selectMatchFrom(0, true));
}

bool Find::selectMatchFrom(qsizetype row, bool forwards) {
    const auto& shown = library_.arrangedMovies();
    for (; row >= 0 && size_t(row) < shown.size(); row += forwards ? 1 : -1) {
        if (!matches(*shown[size_t(row)])) continue;
        library_.selectMovies({row});
        return true;
    }
    return false;
}

qsizetype Find::rowOfFoundPlaylist() const {
    const auto playlist = foundPlaylists_[currentFoundPlaylistIndex_].lock();
    const auto& playlists = library_.playlists();
    const auto found = std::find(playlists.begin(), playlists.end(), playlist);
    return playlist && found != playlists.end() ? found - playlists.begin() : -1;
}

bool Find::goToFoundPlaylist() {
    const qsizetype row = rowOfFoundPlaylist();
    if (row < 0) return false;
    if (library_.selectedPlaylistRows() != Library::Rows{row}) library_.selectPlaylist(row);
    return true;
}

void Find::dropGonePlaylists() {
    const auto& playlists = library_.playlists();
    std::erase_if(foundPlaylists_, [&playlists](const std::weak_ptr<Playlist>& each) {
        return std::find(playlists.begin(), playlists.end(), each.lock()) == playlists.end();
    });
    if (currentFoundPlaylistIndex_ >= foundPlaylists_.size()) currentFoundPlaylistIndex_ = 0;
}

void Find::step(bool forwards) {
    if (findString_.isEmpty() || validFindString_.isEmpty()) return;
    dropGonePlaylists();
    if (foundPlaylists_.empty()) return;
    // Another playlist may have been chosen by hand: one with matches is gone on in.
    const auto selected = library_.selectedPlaylist();
    for (size_t at = 0; at < foundPlaylists_.size(); ++at)
        if (foundPlaylists_[at].lock() == selected) currentFoundPlaylistIndex_ = at;
    if (foundPlaylists_[currentFoundPlaylistIndex_].lock() == selected) {
        const auto& rows = library_.selectedMovieRows();
        const qsizetype count = qsizetype(library_.arrangedMovies().size());
        const qsizetype at = rows.empty() ? (forwards ? -1 : count) : forwards ? rows.back() : rows.front();
        if (selectMatchFrom(forwards ? at + 1 : at - 1, forwards)) return;
    }
    // Round once: a filter may hide every match.
    const size_t total = foundPlaylists_.size();
    for (size_t tried = 0; tried < total; ++tried) {
        currentFoundPlaylistIndex_ = (currentFoundPlaylistIndex_ + (forwards ? 1 : total - 1)) % total;
        if (!goToFoundPlaylist()) continue;
        const qsizetype last = qsizetype(library_.arrangedMovies().size()) - 1;
        if (selectMatchFrom(forwards ? 0 : last, forwards)) return;
    }
}

void Find::selectNextFoundMovie() {
    step(true);
}

void Find::selectPreviousFoundMovie() {
    step(false);
}

void Find::showFindPanel() {
    panelShown_ = true;
    Q_EMIT panelShown();
}

void Find::closeFindPanel() {
    if (!panelShown_) return;
    panelShown_ = false;
    Q_EMIT panelClosed();
}

} // namespace daylark
