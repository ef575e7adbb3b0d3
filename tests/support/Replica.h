#pragma once

#include "archive/KeyedArchive.h"
#include "model/Session.h"
#include "review/RecordFields.h"
#include "review/ReviewStore.h"

#include <QObject>

#include <memory>

namespace daylark::test {

/// What stays of a session in an archive, so that two can be compared. Which bookmarks are lit follows the
/// frame on screen and is nobody's change.
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

/// Records of their own, as they stand now.
inline ReviewRecords::Playlists copyOf(const ReviewRecords::Playlists& playlists) {
    Value::Array list;
    for (const auto& playlist : playlists)
        list.emplace_back(playlist);
    const Value copied = deepCopy(Value(std::move(list)), recordClasses());
    ReviewRecords::Playlists copies;
    if (const Value::Array* elements = copied.array())
        for (const Value& element : *elements)
            copies.push_back(std::dynamic_pointer_cast<Playlist>(element.object()));
    return copies;
}

/// By which fields of which records two sessions differ: the names, each once.
inline QStringList differingFields(const ReviewRecords::Playlists& some,
                                   const ReviewRecords::Playlists& others) {
    QStringList found;
    const auto note = [&found](const auto& one, const auto& other) {
        for (const Change& change : fields::differences(0, *one, *other))
            found << change.field;
    };
    if (some.size() != others.size()) found << fields::playlists;
    for (size_t list = 0; list < std::min(some.size(), others.size()); ++list) {
        note(some[list], others[list]);
        const auto& items = some[list]->movieList;
        const auto& otherItems = others[list]->movieList;
        if (items.size() != otherItems.size()) found << fields::movieList;
        for (size_t at = 0; at < std::min(items.size(), otherItems.size()); ++at) {
            note(items[at], otherItems[at]);
            const auto& marks = items[at]->bookmarkStore;
            const auto& otherMarks = otherItems[at]->bookmarkStore;
            if (marks.size() != otherMarks.size()) found << fields::bookmarkStore;
            for (size_t mark = 0; mark < std::min(marks.size(), otherMarks.size()); ++mark)
                note(marks[mark], otherMarks[mark]);
        }
    }
    found.removeDuplicates();
    return found;
}

/// A session of its own that follows a store by what it announces alone, each change by way of its bytes.
/// What changes without being announced makes the two differ.
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
        copy_ = std::make_unique<ReviewRecords>(ReviewRecords::Keep::everything_met);
        copy_->adopt(copyOf(store_.playlists()), store_.records().idsByPosition());
        copy_->adoptColourConfiguration(store_.records().colourConfiguration());
    }

    [[nodiscard]] bool isTrue() const {
        return valid_ && archiveOf(copy_->playlists()) == archiveOf(store_.playlists()) &&
               copy_->colourConfiguration() == store_.records().colourConfiguration();
    }
    /// Which fields of which items were changed without a word.
    [[nodiscard]] QString difference() const {
        return differingFields(store_.playlists(), copy_->playlists()).join(QLatin1Char(' '));
    }
    [[nodiscard]] const ReviewRecords::Playlists& playlists() const { return copy_->playlists(); }

private:
    ReviewStore& store_;
    std::unique_ptr<ReviewRecords> copy_;
    bool valid_ = true;
    QObject context_;
};

} // namespace daylark::test
