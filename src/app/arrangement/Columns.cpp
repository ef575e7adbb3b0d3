#include "app/arrangement/Columns.h"

#include "model/Bookmark.h"
#include "model/StatusCodes.h"
#include "preferences/Preferences.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <algorithm>

namespace daylark {

namespace {

using Key = Column::SortKey;
constexpr int iconColumnWidth = 32;

template<Image Movie::*image>
Key iconKey(const Movie& movie) {
    return {(movie.*image).isNil() ? 0.0 : 1.0, {}};
}

template<QString Movie::*text>
QString textField(const Movie& movie) {
    return movie.*text;
}

template<QString Movie::*text>
Key textKey(const Movie& movie) {
    return {0, (movie.*text).toCaseFolded()};
}

double pixelsOf(const Movie& movie) {
    const QString& text = movie.mMovieResolutionString;
    const qsizetype times = text.indexOf(QLatin1String(" x "));
    return times < 0 ? 0.0 : text.left(times).toDouble() * text.mid(times + 3).toDouble();
}

QString framesText(const Movie& movie) {
    return movie.mMovieDurationFrames > 0 ? QString::number(movie.mMovieDurationFrames) : QString();
}

QString rateFact(const Movie& movie) {
    if (!(movie.mMovieFPS > 0)) return {};
    return QCoreApplication::translate("Columns", "%1 frames a second").arg(double(movie.mMovieFPS), 0, 'g', 5);
}

QString sizeFact(const Movie& movie) {
    return movie.fileSizeText.isEmpty() ? QString() : movie.fileSizeText + QStringLiteral(" MB");
}

QString createdText(const Movie& movie) {
    if (!movie.fileCreationDate) return {};
    const auto seconds = qint64(movie.fileCreationDate->toUnixSeconds());
    return QLocale().toString(QDateTime::fromSecsSinceEpoch(seconds), QLocale::ShortFormat);
}

template<std::optional<AttributedString> Movie::*notes>
QString notesText(const Movie& movie) {
    return movie.*notes ? (movie.*notes)->string() : QString();
}

Key framesKey(const Movie& movie) {
    return {double(movie.mMovieDurationFrames), {}};
}

Key secondsKey(const Movie& movie) {
    return {double(movie.mMovieDurationSeconds), {}};
}

Key rateKey(const Movie& movie) {
    return {double(movie.mMovieFPS), {}};
}

Key sizeKey(const Movie& movie) {
    return {movie.fileSizeText.toDouble(), {}};
}

Key pixelsKey(const Movie& movie) {
    return {pixelsOf(movie), {}};
}

Key orderKey(const Movie& movie) {
    return {double(movie.sortOrder), {}};
}

QString bookmarkCountText(const Movie& movie) {
    return movie.bookmarkStore.empty() ? QString() : QString::number(movie.bookmarkStore.size());
}

/// A column of icons: one says that the item has the thing.
template<Image Movie::*image>
Column iconColumn(Column::Id id, const char* label, const char* field, const char* icon, const char* shown,
                  const char* hint) {
    return {.id = id,
            .label = label,
            .title = "",
            .field = field,
            .width = iconColumnWidth,
            .sortKey = iconKey<image>,
            .icon = icon,
            .image = image,
            .shownImage = shown,
            .hint = hint};
}

std::array<Column, Column::total> makeColumns() {
    using Side = Column::Alignment;
    return {{
        {.id = Column::thumbnail,
         .label = "Thumbnail",
         .title = "",
         .field = "thumbnail",
         .width = 112,
         .sortKey = iconKey<&Movie::thumbnail>,
         .icon = "image"},
        {.id = Column::flag,
         .label = "Flag",
         .title = "Flag",
         .field = "flagString",
         .width = 136,
         .sortKey = textKey<&Movie::flagString>,
         .image = &Movie::flag},
        {.id = Column::name,
         .label = "Name",
         .title = "Name",
         .field = "filenameString",
         .width = 240,
         .text = textField<&Movie::filenameString>,
         .sortKey = textKey<&Movie::filenameString>},
        iconColumn<&Movie::notesIcon>(Column::notes, "Notes", "notesIcon", "notes", "dl-notesActive-03.png",
                                      "Has notes"),
        iconColumn<&Movie::drawingIcon>(Column::drawings, "Drawings", "drawingIcon", "draw",
                                        "dl-brushActive-01.png", "Has drawings"),
        iconColumn<&Movie::bookmarkIcon>(Column::bookmarks, "Bookmarks", "bookmarkIcon", "bookmarks",
                                         "bookmark_on.png", "Has bookmarks"),
        iconColumn<&Movie::gradeIcon>(Column::grade, "Grade", "gradeIcon", "grade", "dl-levelsActive-01.png",
                                      "Has a grade"),
        iconColumn<&Movie::instanceIcon>(Column::instance, "Instance", "instanceIcon", "copy",
                                         "copy 03 white.png", "Stands in several playlists"),
        {.id = Column::frames,
         .label = "Frames",
         .title = "Frames",
         .field = "mMovieDurationFrames",
         .width = 64,
         .alignment = Side::right,
         .text = framesText,
         .sortKey = framesKey},
        {.id = Column::duration,
         .label = "Duration",
         .title = "Duration",
         .field = "mMovieDurationSeconds",
         .width = 72,
         .alignment = Side::right,
         .text = textField<&Movie::durationText>,
         .sortKey = secondsKey},
        {.id = Column::rate,
         .label = "Rate",
         .title = "Rate",
         .field = "mMovieFPS",
         .width = 56,
         .alignment = Side::right,
         .text = textField<&Movie::frameRateText>,
         .sortKey = rateKey,
         .fact = rateFact},
        {.id = Column::size,
         .label = "Size",
         .title = "Size (MB)",
         .field = "fileSizeText",
         .width = 80,
         .alignment = Side::right,
         .text = textField<&Movie::fileSizeText>,
         .sortKey = sizeKey,
         .fact = sizeFact},
        {.id = Column::resolution,
         .label = "Resolution",
         .title = "Resolution",
         .field = "mMovieResolutionString",
         .width = 96,
         .text = textField<&Movie::mMovieResolutionString>,
         .sortKey = pixelsKey},
        {.id = Column::path,
         .label = "Path",
         .title = "Path",
         .field = "filepathString",
         .width = 360,
         .text = textField<&Movie::filepathString>,
         .sortKey = textKey<&Movie::filepathString>},
        {.id = Column::sound,
         .label = "Sound",
         .title = "Sound",
         .field = "sound",
         .width = 112},
        {.id = Column::created,
         .label = "Created",
         .title = "Created",
         .field = "fileCreationDate",
         .width = 0,
         .text = createdText},
        {.id = Column::notesText,
         .label = "Notes",
         .title = "Notes",
         .field = "notes",
         .width = 0,
         .text = notesText<&Movie::notes>},
        {.id = Column::notes2Text,
         .label = "Second Notes",
         .title = "Second Notes",
         .field = "notes2",
         .width = 0,
         .text = notesText<&Movie::notes2>},
        {.id = Column::bookmarkCount,
         .label = "Bookmarks",
         .title = "Bookmarks",
         .field = "bookmarkStore",
         .width = 0,
         .text = bookmarkCountText},
    }};
}

Key (*keyForField(const QString& field))(const Movie&) {
    if (field == QLatin1String("sortOrder"))
        return orderKey; // the playlist's own order, which no column shows
    for (const Column& each : columns())
        if (field == QLatin1String(each.field)) return each.sortKey;
    return nullptr;
}

} // namespace

const std::array<Column, Column::total>& columns() {
    static const std::array<Column, Column::total> all = makeColumns();
    return all;
}

const Column& column(int id) {
    return columns()[size_t(id)];
}

namespace {

QString inWords(const char* text) {
    return *text ? QCoreApplication::translate("Words", text) : QString();
}

} // namespace

QString Column::labelText() const {
    return inWords(label);
}

QString Column::titleText() const {
    return inWords(title);
}

QString Column::hintText() const {
    return inWords(hint);
}

QString Column::iconOf(const Movie& movie) const {
    if (!hasIcon(movie)) return {};
    if (*shownImage) return QString::fromLatin1(shownImage);
    // Flags that came without a name (from sessions made elsewhere) show as ours.
    const QString known = (movie.*image).name();
    return known.isEmpty() ? status::flagImageName(movie.flagString) : known;
}

QString flagNameOf(const Movie& movie, const Preferences& preferences) {
    return movie.flag.isNil() ? QString() : preferences.statusName(movie.flagString);
}

void sortMoviesByField(std::vector<std::shared_ptr<Movie>>& movies, const QString& field, bool ascending) {
    const auto keyOf = keyForField(field);
    if (!keyOf) return;
    std::vector<std::pair<Key, std::shared_ptr<Movie>>> keyed;
    keyed.reserve(movies.size());
    for (auto& movie : movies)
        keyed.emplace_back(keyOf(*movie), std::move(movie));
    std::stable_sort(keyed.begin(), keyed.end(), [ascending](const auto& a, const auto& b) {
        return ascending ? a.first < b.first : b.first < a.first;
    });
    for (size_t i = 0; i < keyed.size(); ++i)
        movies[i] = std::move(keyed[i].second);
}

} // namespace daylark
