#pragma once

#include "model/ItemPlaces.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

namespace daylark {

class Library;
class Playlist;
class Preferences;

/// Looks for a text in the names or paths of all ordinary playlists' items and goes from one match to the next, across
/// playlists. A match that the filter hides is counted and passed over. The panel shows what stands here; whether it is
/// open is kept here too, because other operations close it. Interface thread.
class Find : public QObject {
    Q_OBJECT
public:
    Find(Library& library, Preferences& preferences, QObject* parent = nullptr);

    [[nodiscard]] QString findString() const { return findString_; }
    void setFindString(const QString& text); ///< searches at once
    void setFindScope();                     ///< another scope was chosen: nothing is looked for any more
    void addItemsToFoundArray();             ///< searches and selects the first match
    void selectNextFoundMovie();
    void selectPreviousFoundMovie();
    void clearFound(); ///< the matches were used; the text goes with them

    [[nodiscard]] QString foundText() const { return foundText_; }         ///< "3 Matches"
    [[nodiscard]] QString validFindString() const { return validFindString_; } ///< what the matches are of
    [[nodiscard]] const ItemList& foundMovies() const { return foundMovies_; }

    void showFindPanel(); ///< `panelShown` comes each time: whoever asks again wants its field
    void closeFindPanel();
    [[nodiscard]] bool panelIsShown() const { return panelShown_; }

Q_SIGNALS:
    void changed();
    void panelShown();
    void panelClosed();

private:
    [[nodiscard]] bool matches(const Movie& movie) const;
    [[nodiscard]] qsizetype rowOfFoundPlaylist() const; ///< of the current one; -1 when it is gone
    void dropGonePlaylists();
    void step(bool forwards);
    bool selectMatchFrom(qsizetype row, bool forwards);
    bool goToFoundPlaylist();

    Library& library_;
    Preferences& preferences_;
    QString findString_, validFindString_, foundText_;
    ItemList foundMovies_;
    std::vector<std::weak_ptr<Playlist>> foundPlaylists_; ///< each once, in playlist order
    size_t currentFoundPlaylistIndex_ = 0;
    bool panelShown_ = false;
};

} // namespace daylark
