#pragma once

#include "archive/KeyedArchive.h"
#include "model/Session.h"
#include "review/ReviewStore.h"

#include <QObject>

#include <memory>

namespace daylark::test {

/// What stays of a session in an archive, so that two can be compared. Which bookmarks are lit follows the frame
/// on screen and is nobody's change.
inline QByteArray archiveOf(const ReviewRecords::Playlists& playlists) {
    Value::Array list;
    for (const auto& playlist : playlists)
        list.emplace_back(playlist);
    const Value copy = deepCopy(Value(std::move(list)), recordClasses());
    if (const Value::Array* elements = copy.array())
        for (const Value& element : *elements)
            if (const auto playlist = std::dynamic_pointer_cast<Playlist>(element.object()))
                for (const auto& movie : playlist->movieList)
                    for (const auto& bookmark : movie->bookmarkStore)
                        bookmark->setActive(false);
    return archiveRoot(copy);
}

/// A session of its own that follows a store by what it announces alone, each change by way of its bytes. What
/// changes without being announced makes the two differ.
class Replica {
public:
    explicit Replica(ReviewStore& store)
        : store_(store) {
        restart();
        QObject::connect(&store, &ReviewStore::changed, &context_, [this](const Change& change) {
            const Result<Changes> received = decodeChanges(encodeChanges({change}));
            valid_ = valid_ && received && received->size() == 1;
            if (received)
                for (const Change& each : *received)
                    copy_->apply(each);
        });
        QObject::connect(&store, &ReviewStore::sessionReplaced, &context_, [this] { restart(); });
    }

    /// Takes the session over as it stands now.
    void restart() {
        Value::Array list;
        for (const auto& playlist : store_.playlists())
            list.emplace_back(playlist);
        const Value copied = deepCopy(Value(std::move(list)), recordClasses());
        ReviewRecords::Playlists playlists;
        if (const Value::Array* elements = copied.array())
            for (const Value& element : *elements)
                playlists.push_back(std::dynamic_pointer_cast<Playlist>(element.object()));
        copy_ = std::make_unique<ReviewRecords>(ReviewRecords::Keep::everything_met);
        copy_->adopt(std::move(playlists), store_.records().idsByPosition());
    }

    [[nodiscard]] bool isTrue() const {
        return valid_ && archiveOf(copy_->playlists()) == archiveOf(store_.playlists());
    }
    [[nodiscard]] const ReviewRecords::Playlists& playlists() const { return copy_->playlists(); }

private:
    ReviewStore& store_;
    std::unique_ptr<ReviewRecords> copy_;
    bool valid_ = true;
    QObject context_;
};

} // namespace daylark::test
