#include "model/Session.h"

#include "archive/KeyedArchive.h"
#include "archive/Value.h"
#include "model/bundle/MovieBundle.h"
#include "platform/NamedImages.h"

#include <QHash>

#include <unordered_map>

namespace daylark {

namespace {

template<class Record>
std::shared_ptr<Archivable> emptyRecord() {
    return std::make_shared<Record>();
}

/// Copies records once each: whoever meets one again gets the same copy.
class RecordCopier {
public:
    std::shared_ptr<Playlist> copy(const std::shared_ptr<Playlist>& playlist) {
        auto [copied, isNew] = once(playlists_, playlist);
        if (isNew) copyAll(copied->movieList, movies_);
        return copied;
    }

private:
    template<class Record>
    using Copies = std::unordered_map<const Record*, std::shared_ptr<Record>>;

    template<class Record>
    std::pair<std::shared_ptr<Record>, bool> once(Copies<Record>& copies,
                                                  const std::shared_ptr<Record>& record) {
        if (!record) return {nullptr, false};
        // Held by its one list and that list's copy only: nobody can meet it again, which spares most
        // look-ups.
        if (record.use_count() <= 2) return {std::make_shared<Record>(*record), true};
        auto [entry, isNew] = copies.try_emplace(record.get());
        if (isNew) entry->second = std::make_shared<Record>(*record);
        return {entry->second, isNew};
    }

    template<class Record>
    void copyAll(ObjectList<Record>& list, Copies<Record>& copies) {
        for (std::shared_ptr<Record>& record : list) {
            auto [copied, isNew] = once(copies, record);
            if constexpr (std::is_same_v<Record, Movie>) {
                if (isNew) {
                    copyAll(copied->bookmarkStore, bookmarks_);
                    copyAll(copied->mMovieBookmarkArray, movieBookmarks_);
                }
            }
            record = std::move(copied);
        }
    }

    Copies<Playlist> playlists_;
    Copies<Movie> movies_;
    Copies<Bookmark> bookmarks_;
    Copies<MovieBookmark> movieBookmarks_;
};

std::optional<qint64> integerOfKey(const Value& root, QStringView key) {
    const Value value = root[key];
    const Number* number = value.number();
    return number ? std::optional(numberToInt64(*number)) : std::nullopt;
}

std::shared_ptr<Playlist> lonePlaylistOf(const Value& root) {
    if (auto playlist = std::dynamic_pointer_cast<Playlist>(root.object())) return playlist;
    if (const Value::Dictionary* entries = root.dictionary())
        for (const auto& [key, value] : *entries)
            if (auto playlist = std::dynamic_pointer_cast<Playlist>(value.object())) return playlist;
    return nullptr;
}

template<class Record>
std::vector<std::shared_ptr<Record>> archivedCopies(const std::vector<std::shared_ptr<Record>>& records) {
    Value::Array array;
    array.reserve(records.size());
    for (const auto& record : records)
        if (record) array.emplace_back(std::shared_ptr<Archivable>(record));
    const Value copied = deepCopy(Value(std::move(array)), recordClasses());
    std::vector<std::shared_ptr<Record>> copies;
    if (const Value::Array* elements = copied.array())
        for (const Value& element : *elements)
            if (auto record = std::dynamic_pointer_cast<Record>(element.object()))
                copies.push_back(std::move(record));
    return copies;
}

} // namespace

const ArchiveClasses& recordClasses() {
    static const ArchiveClasses classes{
        {QStringLiteral("Movie"), emptyRecord<Movie>},
        {QStringLiteral("Bookmark"), emptyRecord<Bookmark>},
        {QStringLiteral("MovieBookmark"), emptyRecord<MovieBookmark>},
        {QStringLiteral("Playlist"), emptyRecord<Playlist>},
        {QStringLiteral("DLMovieBundle"), emptyRecord<DLMovieBundle>},
    };
    return classes;
}

SessionContents snapshotOf(const SessionContents& contents) {
    SessionContents snapshot = contents;
    RecordCopier copier;
    for (std::shared_ptr<Playlist>& playlist : snapshot.playlists)
        playlist = copier.copy(playlist);
    return snapshot;
}

QByteArray encodeSession(const SessionContents& contents) {
    Value::Array playlists;
    playlists.reserve(contents.playlists.size());
    for (const auto& playlist : contents.playlists)
        if (playlist) playlists.emplace_back(std::shared_ptr<Archivable>(playlist));
    Value::Dictionary root{{QStringLiteral("playlists"), std::move(playlists)}};
    if (contents.lastSelectedPlaylistIndex)
        root.emplace_back(QStringLiteral("lastSelectedPlaylistIndex"), *contents.lastSelectedPlaylistIndex);
    if (contents.version) {
        root.emplace_back(QStringLiteral("majorVersion"), contents.version->majorVersion);
        root.emplace_back(QStringLiteral("minorVersion"), contents.version->minorVersion);
        root.emplace_back(QStringLiteral("patchVersion"), contents.version->patchVersion);
        root.emplace_back(QStringLiteral("build"), contents.version->build);
    }
    // Our own, after the known ones, which other readers pass over.
    if (!contents.colourConfiguration.isEmpty())
        root.emplace_back(QStringLiteral("colourConfiguration"), contents.colourConfiguration);
    QHash<QString, QByteArray> drawn; // each icon is drawn once a session
    return archiveRoot(root, [&drawn](const QString& name) {
        const auto known = drawn.constFind(name);
        return known != drawn.constEnd() ? *known : *drawn.insert(name, namedImageTiff(name));
    });
}

Result<SessionContents> decodeSession(const QByteArray& bytes) {
    const Result<Value> root = unarchiveRoot(bytes, recordClasses());
    if (!root) return root.error();
    SessionContents contents;
    contents.lastSelectedPlaylistIndex = integerOfKey(*root, u"lastSelectedPlaylistIndex");
    if (const Value configuration = (*root)[u"colourConfiguration"]; configuration.isString())
        contents.colourConfiguration = configuration.string();
    // Nobody looks at the version keys: wanted, a session carries none when it was saved by hand.
    const Value list = (*root)[u"playlists"];
    const Value::Array* playlists = list.array();
    contents.hasPlaylists = playlists != nullptr;
    if (!playlists) {
        contents.lonePlaylist = lonePlaylistOf(*root);
        return contents;
    }
    contents.playlists.reserve(playlists->size());
    for (const Value& element : *playlists)
        if (auto playlist = std::dynamic_pointer_cast<Playlist>(element.object()))
            contents.playlists.push_back(std::move(playlist));
    return contents;
}

std::vector<std::shared_ptr<Movie>> copyMovies(const std::vector<std::shared_ptr<Movie>>& movies) {
    return archivedCopies(movies);
}

std::vector<std::shared_ptr<Bookmark>>
copyBookmarks(const std::vector<std::shared_ptr<Bookmark>>& bookmarks) {
    return archivedCopies(bookmarks);
}

} // namespace daylark
