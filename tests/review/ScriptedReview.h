#pragma once

#include "support/RecordSamples.h"
#include "review/ReviewStore.h"

#include <QCryptographicHash>

#include <algorithm>
#include <random>

namespace daylark::test {

/// What a session's records are, in few bytes; equal for equal records whatever lists and numbers they came from.
inline QByteArray digestOf(const std::vector<std::shared_ptr<Playlist>>& playlists) {
    SessionContents contents;
    contents.playlists = playlists;
    contents.hasPlaylists = true;
    return QCryptographicHash::hash(encodeSession(contents), QCryptographicHash::Md5).toHex();
}

/// A person who reviews at random: flags, types, grades, draws, bookmarks, adds, moves and removes. The same seed
/// does the same.
class ScriptedReview {
public:
    ScriptedReview(ReviewStore& store, unsigned seed)
        : store_(store)
        , random_(seed) {}

    void step() {
        if (store_.playlists().empty() || items().empty()) return addItems();
        switch (upTo(15)) {
        case 0:
            return store_.insertPlaylists(upTo(8), {std::make_shared<Playlist>()}, {});
        case 1:
            return removePlaylist();
        case 2:
            return reorderPlaylists();
        case 3:
            return addItems();
        case 4:
            return reorderItems();
        case 5:
        case 6:
            return addBookmark();
        case 7:
        case 8:
        case 9:
            return changeBookmark();
        default:
            return changeMovie();
        }
    }

private:
    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(random_); }
    QString word() { return QStringLiteral("%1 äöü %2").arg(++words_).arg(upTo(1000)); }
    std::shared_ptr<Playlist> playlist() {
        return store_.playlists()[size_t(upTo(int(store_.playlists().size()) - 1))];
    }
    std::vector<std::shared_ptr<Movie>> items() const {
        std::vector<std::shared_ptr<Movie>> all;
        for (const auto& list : store_.playlists())
            all.insert(all.end(), list->movieList.begin(), list->movieList.end());
        return all;
    }
    std::shared_ptr<Movie> item() {
        const auto all = items();
        return all[size_t(upTo(int(all.size()) - 1))];
    }

    void addItems() {
        if (store_.playlists().empty()) store_.insertPlaylists(0, {std::make_shared<Playlist>()}, {});
        if (items().size() > 60) return removePlaylist();
        std::vector<std::shared_ptr<Movie>> fresh;
        for (int i = upTo(3); i >= 0; --i)
            fresh.push_back(std::make_shared<Movie>(QStringLiteral("/dailies/%1.mov").arg(word())));
        if (upTo(3) == 0 && !items().empty()) fresh = {item()}; // in a second list
        store_.insertMovies(playlist(), upTo(20), fresh, {});
    }
    void removePlaylist() {
        ReviewRecords::Playlists left = store_.playlists();
        if (left.size() < 3) return;
        left.erase(left.begin() + upTo(int(left.size()) - 1));
        store_.setPlaylists(left, {{}, EditKind::final});
    }
    void reorderPlaylists() {
        ReviewRecords::Playlists order = store_.playlists();
        std::shuffle(order.begin(), order.end(), random_);
        const ReviewStore::Group group(store_, {});
        store_.setPlaylists(order, {});
        store_.modify(order.front(), {}, [&](Playlist& list) { list.name = word(); });
    }
    void reorderItems() {
        const auto list = playlist();
        ObjectList<Movie> order = list->movieList;
        std::shuffle(order.begin(), order.end(), random_);
        if (!order.empty() && upTo(2) == 0) order.pop_back();
        const ReviewStore::Group group(store_, {});
        store_.setMovies(list, order, {});
        qint64 number = 0;
        for (const auto& movie : order)
            store_.setSortOrder(movie, {}, ++number);
    }
    void addBookmark() {
        const auto movie = item();
        ObjectList<Bookmark> list = movie->bookmarkStore;
        list.isNil = false;
        list.insert(list.begin() + upTo(int(list.size())), std::make_shared<Bookmark>(upTo(100), upTo(9), 25.0F));
        const ReviewStore::Group group(store_, {});
        store_.setBookmarks(movie, list, {});
        store_.modify(movie, {}, [](Movie& changed) { changed.displayBookmarkIcon(); });
    }
    void changeBookmark() {
        const auto movie = item();
        if (movie->bookmarkStore.empty()) return addBookmark();
        ObjectList<Bookmark> list = movie->bookmarkStore;
        const auto bookmark = list[size_t(upTo(int(list.size()) - 1))];
        if (upTo(5) == 0) {
            list.erase(std::find(list.begin(), list.end(), bookmark));
            return store_.setBookmarks(movie, list, {});
        }
        store_.modify(movie, bookmark, {}, [&](Bookmark& changed) {
            if (upTo(1) == 0) {
                changed.drawings.hasKeys = true;
                changed.drawings.append(sampleDrawing(1 + upTo(2)));
            } else if (upTo(1) == 0) {
                changed.overlayString = word();
            } else {
                changed.removeLastStrokeFromDrawing();
                changed.lastFrame += upTo(3);
            }
        });
    }
    void changeMovie() {
        store_.modify(item(), {}, [&](Movie& movie) {
            switch (upTo(4)) {
            case 0:
                movie.setFlag(900 + upTo(7));
                break;
            case 1:
            case 2:
                movie.notes = AttributedString(word());
                movie.displayNotesIcon();
                break;
            case 3: {
                Grade grade;
                grade.gamma = 1 + upTo(100) / 100.0;
                movie.setGrade(grade);
                movie.displayGradeIcon();
                break;
            }
            default:
                movie.mUserAudioTrackBookmarkData = word().toUtf8();
            }
        });
    }

    ReviewStore& store_;
    std::mt19937 random_;
    int words_ = 0;
};

} // namespace daylark::test
