#include "review/RecordFields.h"

#include "review/FieldValues.h"
#include "review/Strokes.h"

#include <QHash>

namespace daylark::fields {

namespace {

template<class Record>
struct Field {
    QString name;
    Value (*read)(const Record&);
    void (*write)(Record&, const Value&);
    bool (*same)(const Record&, const Record&);
};

template<class Record>
struct Table {
    explicit Table(std::vector<Field<Record>> list)
        : all(std::move(list)) {
        for (const Field<Record>& field : all)
            byName.insert(field.name, &field);
    }
    std::vector<Field<Record>> all;
    QHash<QString, const Field<Record>*> byName;
};

template<auto Member, class Record>
Field<Record> field(const char* name) {
    return {QString::fromLatin1(name), [](const Record& record) { return box(record.*Member); },
            [](Record& record, const Value& value) { unbox(value, record.*Member); },
            [](const Record& a, const Record& b) { return same(a.*Member, b.*Member); }};
}

Field<Movie> gradeField() {
    return {grade, [](const Movie& movie) { return box(movie.grade()); },
            [](Movie& movie, const Value& value) {
                Grade numbers;
                unbox(value, numbers);
                movie.setGrade(numbers);
            },
            [](const Movie& a, const Movie& b) {
                return same(a.exposure, b.exposure) && same(a.contrast, b.contrast) &&
                       same(a.saturation, b.saturation) && same(a.gamma, b.gamma) &&
                       same(a.brightness, b.brightness) && same(a.redChannel, b.redChannel) &&
                       same(a.greenChannel, b.greenChannel) && same(a.blueChannel, b.blueChannel);
            }};
}

#define DAYLARK_FIELD(Record, name) field<&Record::name, Record>(#name)

const Table<Movie>& movieTable() {
    static const Table<Movie> table({
        DAYLARK_FIELD(Movie, filenameString),
        DAYLARK_FIELD(Movie, filepathString),
        DAYLARK_FIELD(Movie, filepathURL),
        DAYLARK_FIELD(Movie, filepathBookmarkData),
        DAYLARK_FIELD(Movie, mUserAudioTrackBookmarkData),
        DAYLARK_FIELD(Movie, filenameURL),
        DAYLARK_FIELD(Movie, thumbnail),
        DAYLARK_FIELD(Movie, gradeIcon),
        DAYLARK_FIELD(Movie, instanceIcon),
        DAYLARK_FIELD(Movie, notesIcon),
        DAYLARK_FIELD(Movie, drawingIcon),
        DAYLARK_FIELD(Movie, bookmarkIcon),
        DAYLARK_FIELD(Movie, grabIcon),
        DAYLARK_FIELD(Movie, notes),
        DAYLARK_FIELD(Movie, notes2),
        DAYLARK_FIELD(Movie, flag),
        DAYLARK_FIELD(Movie, mMovieHasBeenVisited),
        DAYLARK_FIELD(Movie, flagString),
        DAYLARK_FIELD(Movie, fileSizeText),
        DAYLARK_FIELD(Movie, frameRate),
        DAYLARK_FIELD(Movie, frameRateText),
        DAYLARK_FIELD(Movie, duration),
        DAYLARK_FIELD(Movie, durationText),
        DAYLARK_FIELD(Movie, mMovieAspectRatio),
        DAYLARK_FIELD(Movie, mMovieHeight),
        DAYLARK_FIELD(Movie, mMovieWidth),
        DAYLARK_FIELD(Movie, mMovieDurationFrames),
        DAYLARK_FIELD(Movie, mMovieDurationSeconds),
        DAYLARK_FIELD(Movie, mMovieFPS),
        DAYLARK_FIELD(Movie, mMovieTimeValuePerStep),
        DAYLARK_FIELD(Movie, mMovieAdjustedDurationTimeValue),
        DAYLARK_FIELD(Movie, creatingThumbnailText),
        DAYLARK_FIELD(Movie, movieAspectRatio),
        DAYLARK_FIELD(Movie, movieAspectRatioString),
        DAYLARK_FIELD(Movie, mMovieResolutionString),
        DAYLARK_FIELD(Movie, sortOrder),
        DAYLARK_FIELD(Movie, iCount),
        gradeField(),
        DAYLARK_FIELD(Movie, applyGrade),
        DAYLARK_FIELD(Movie, mLastFrameVisited),
        DAYLARK_FIELD(Movie, mMovieDrawings),
        DAYLARK_FIELD(Movie, mMovieBookmarkArray),
        DAYLARK_FIELD(Movie, shouldRemoveAudioTracks),
        DAYLARK_FIELD(Movie, removeVideoTracks),
        DAYLARK_FIELD(Movie, mUserAudioTrack),
        DAYLARK_FIELD(Movie, fileCreationDate),
        DAYLARK_FIELD(Movie, statusColour),
        DAYLARK_FIELD(Movie, isOneFrame),
        DAYLARK_FIELD(Movie, mThumbnailFrame),
        DAYLARK_FIELD(Movie, frameRun),
        DAYLARK_FIELD(Movie, inputColourSpace),
        DAYLARK_FIELD(Movie, firstFrameNumber),
    });
    return table;
}

const Table<Bookmark>& bookmarkTable() {
    static const Table<Bookmark> table({
        DAYLARK_FIELD(Bookmark, firstFrame),
        DAYLARK_FIELD(Bookmark, mute),
        DAYLARK_FIELD(Bookmark, lastFrame),
        DAYLARK_FIELD(Bookmark, duration),
        DAYLARK_FIELD(Bookmark, fps),
        DAYLARK_FIELD(Bookmark, overlayString),
        DAYLARK_FIELD(Bookmark, overlayString2),
        DAYLARK_FIELD(Bookmark, firstTC),
        DAYLARK_FIELD(Bookmark, lastTC),
        DAYLARK_FIELD(Bookmark, uniqueKey),
        DAYLARK_FIELD(Bookmark, activeImage),
        DAYLARK_FIELD(Bookmark, activeStrip),
        DAYLARK_FIELD(Bookmark, drawings),
    });
    return table;
}

const Table<Playlist>& playlistTable() {
    static const Table<Playlist> table({
        DAYLARK_FIELD(Playlist, name),
        DAYLARK_FIELD(Playlist, directoryPath),
        DAYLARK_FIELD(Playlist, isDivider),
        DAYLARK_FIELD(Playlist, playlistType),
        DAYLARK_FIELD(Playlist, status),
        DAYLARK_FIELD(Playlist, smartRules),
    });
    return table;
}

#undef DAYLARK_FIELD

template<class Record>
Changes differencesOf(const Table<Record>& table, RecordId id, const Record& before, const Record& after) {
    Changes changes;
    for (const Field<Record>& each : table.all) {
        if (each.same(before, after)) continue;
        Change change;
        change.record = id;
        change.field = each.name;
        change.before = each.read(before);
        change.after = each.read(after);
        changes.push_back(std::move(change));
    }
    return changes;
}

template<class Record>
Value readOf(const Table<Record>& table, const Record& record, const QString& name) {
    const Field<Record>* found = table.byName.value(name);
    return found ? found->read(record) : Value();
}

template<class Record>
void writeTo(const Table<Record>& table, Record& record, const QString& name, const Value& value) {
    if (const Field<Record>* found = table.byName.value(name)) found->write(record, value);
}

template<class Record>
QStringList namesOf(const Table<Record>& table) {
    QStringList names;
    for (const Field<Record>& each : table.all)
        names << each.name;
    return names;
}

} // namespace

Changes differences(RecordId id, const Movie& before, const Movie& after) {
    return differencesOf(movieTable(), id, before, after);
}

// A drawing of hundreds of strokes gets one more: only what differs is kept.
Changes differences(RecordId id, const Bookmark& before, const Bookmark& after) {
    Changes changes = differencesOf(bookmarkTable(), id, before, after);
    for (Change& change : changes) {
        if (change.field != drawings) continue;
        const size_t kept = commonStrokes(before.drawings, after.drawings);
        if (kept == 0) continue;
        change.at = qint64(kept);
        change.before = strokesFrom(before.drawings, kept).toValue();
        change.after = strokesFrom(after.drawings, kept).toValue();
    }
    return changes;
}

Changes differences(RecordId id, const Playlist& before, const Playlist& after) {
    return differencesOf(playlistTable(), id, before, after);
}

Value read(const Movie& movie, const QString& name, qint64) {
    return readOf(movieTable(), movie, name);
}

Value read(const Bookmark& bookmark, const QString& name, qint64 at) {
    if (name == drawings && at > 0) return strokesFrom(bookmark.drawings, size_t(at)).toValue();
    return readOf(bookmarkTable(), bookmark, name);
}

Value read(const Playlist& playlist, const QString& name, qint64) {
    return readOf(playlistTable(), playlist, name);
}

void write(Movie& movie, const QString& name, qint64, const Value& value) {
    writeTo(movieTable(), movie, name, value);
}

void write(Bookmark& bookmark, const QString& name, qint64 at, const Value& value) {
    if (name != drawings || at <= 0) return writeTo(bookmarkTable(), bookmark, name, value);
    Drawing drawing = strokesUpTo(bookmark.drawings, size_t(at));
    drawing.append(Drawing::fromValue(value));
    bookmark.drawings = std::move(drawing);
}

void write(Playlist& playlist, const QString& name, qint64, const Value& value) {
    writeTo(playlistTable(), playlist, name, value);
}

Playlist withoutItems(const Playlist& playlist) {
    Playlist copy;
    for (const Field<Playlist>& field : playlistTable().all)
        field.write(copy, field.read(playlist));
    return copy;
}

QStringList movieFields() {
    return namesOf(movieTable());
}

QStringList bookmarkFields() {
    return namesOf(bookmarkTable());
}

QStringList playlistFields() {
    return namesOf(playlistTable());
}

} // namespace daylark::fields
