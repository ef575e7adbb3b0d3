#pragma once

#include "review/Edit.h"
#include "review/ReviewRecords.h"

#include <QObject>

#include <deque>
#include <functional>

namespace daylark {

/// The one place through which review data changes. An edit is a group of changes that belong together; it is
/// carried out at once and announced when its outermost group ends, so that whoever listens sees records that
/// fit each other. Listeners may edit in turn: their edits are announced after the one that they listen to.
/// Cost goes by what an edit touches, not by the size of the session. Made by main (or a test) before all that
/// edits; interface thread.
class ReviewStore : public QObject {
    Q_OBJECT
public:
    explicit ReviewStore(QObject* parent = nullptr)
        : QObject(parent) {}

    [[nodiscard]] ReviewRecords& records() { return records_; }
    [[nodiscard]] const ReviewRecords& records() const { return records_; }
    [[nodiscard]] const ReviewRecords::Playlists& playlists() const { return records_.playlists(); }
    /// Another session in place of this one: no edit, `sessionReplaced` says so.
    void replaceSession(ReviewRecords::Playlists playlists, const QString& colourConfiguration = {});

    /// As long as it lives, edits are one. The outermost group says what it is.
    class Group {
    public:
        Group(ReviewStore& store, const EditInfo& info)
            : store_(store) {
            store_.begin(info);
        }
        ~Group() { store_.end(); }
        Group(const Group&) = delete;
        Group& operator=(const Group&) = delete;

    private:
        ReviewStore& store_;
    };

    // One change each, an edit of its own outside a group. `edit` writes fields, never lists of other records;
    // it is called at once and not kept. True when something changed.
    bool modify(const std::shared_ptr<Movie>& movie, const EditInfo& info,
                const std::function<void(Movie&)>& edit);
    bool modify(const std::shared_ptr<Movie>& movie, const std::shared_ptr<Bookmark>& bookmark,
                const EditInfo& info, const std::function<void(Bookmark&)>& edit);
    bool modify(const std::shared_ptr<Playlist>& playlist, const EditInfo& info,
                const std::function<void(Playlist&)>& edit);
    /// The item's place in the order that a playlist is shown in.
    bool setSortOrder(const std::shared_ptr<Movie>& movie, const EditInfo& info, qint64 sortOrder);

    /// The session's own, for its pictures; empty: none.
    void setColourConfiguration(const QString& configuration, const EditInfo& info);

    // Lists. Records are named; positions beyond the end mean the end.
    void insertPlaylists(qsizetype at, const ReviewRecords::Playlists& playlists, const EditInfo& info);
    void setPlaylists(const ReviewRecords::Playlists& playlists, const EditInfo& info); ///< order, removal
    void insertMovies(const std::shared_ptr<Playlist>& playlist, qsizetype at,
                      const std::vector<std::shared_ptr<Movie>>& movies, const EditInfo& info);
    void setMovies(const std::shared_ptr<Playlist>& playlist, const ObjectList<Movie>& list,
                   const EditInfo& info);
    void setBookmarks(const std::shared_ptr<Movie>& movie, const ObjectList<Bookmark>& list,
                      const EditInfo& info);

    /// Carries changes out as one edit of the kind `again`, each as it fits what stands here now.
    void applyAgain(const Changes& changes, const EditInfo& info);

Q_SIGNALS:
    /// Every change, after all of its edit are carried out, with valid `before` and `after`.
    void changed(const daylark::Change& change);
    /// The edit that these changes were, after the last of them.
    void applied(const daylark::Edit& edit);
    void sessionReplaced();

private:
    void begin(const EditInfo& info);
    void end();
    void add(Change change);
    void addAll(Changes changes);
    void announceNewRecords(const Change& change);
    template<class List>
    bool setList(RecordId id, const QString& field, List& list, const List& wanted);
    void announce();

    ReviewRecords records_;
    Edit current_;
    int depth_ = 0;
    std::deque<Edit> waiting_; ///< carried out, not announced yet
    bool announcing_ = false;
};

} // namespace daylark
