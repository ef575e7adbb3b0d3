#pragma once

#include "model/ItemPlaces.h"
#include "review/ReviewStore.h"

#include <QObject>
#include <QTimer>

#include <unordered_map>

namespace daylark {

/// What smartlists answer: the records of all other playlists that their rules hold for, each once, in the order of the
/// playlists and their items. Asked again when something changed that they may look at, once a turn of the loop. An
/// answer is no list of the session: it is stored nowhere and counts as no instance. Held by the library; interface
/// thread.
class SmartLists : public QObject {
    Q_OBJECT
public:
    explicit SmartLists(ReviewStore& store, QObject* parent = nullptr);

    /// The items that a playlist shows: the answer to its rules, or its own list.
    [[nodiscard]] ItemList itemsOf(const Playlist& playlist);
    /// As above, in the playlist's own order: by number, where it has numbers.
    [[nodiscard]] ItemList itemsInOrder(const Playlist& playlist);

Q_SIGNALS:
    /// The answer of this list may be another now.
    void answered(const std::shared_ptr<daylark::Playlist>& playlist);

private:
    void look(const Edit& edit);
    void forget();
    void askAll();
    [[nodiscard]] bool hasQuestions() const;

    ReviewStore& store_;
    bool known_ = false;
    std::unordered_map<const Playlist*, ItemList> answers_;
    QTimer later_;
};

/// A session as others read it: smartlists hold their answers.
[[nodiscard]] ReviewRecords::Playlists withAnswers(const ReviewRecords::Playlists& playlists, SmartLists& lists);
/// Takes answers that were stored with a session out of its smartlists again; what stands nowhere else stays. Of
/// records that nobody has yet.
void withoutAnswers(const ReviewRecords::Playlists& playlists);

} // namespace daylark
