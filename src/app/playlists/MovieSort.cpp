#include "app/playlists/MovieSort.h"

#include <QHash>

#include <algorithm>
#include <functional>

namespace daylark {

namespace {

struct SortKey {
    double number = 0;
    QString text;
    bool operator<(const SortKey& other) const {
        return number != other.number ? number < other.number : text < other.text;
    }
};

using KeyOf = std::function<SortKey(const Movie&)>;

KeyOf byNumber(std::function<double(const Movie&)> number) {
    return [number = std::move(number)](const Movie& movie) { return SortKey{number(movie), {}}; };
}

KeyOf byText(QString Movie::*text) {
    return [text](const Movie& movie) { return SortKey{0, (movie.*text).toCaseFolded()}; };
}

KeyOf byIcon(Image Movie::*icon) {
    return byNumber([icon](const Movie& movie) { return (movie.*icon).isNil() ? 0.0 : 1.0; });
}

double pixelsOf(const Movie& movie) {
    const QString& text = movie.mMovieResolutionString;
    const qsizetype times = text.indexOf(QLatin1String(" x "));
    return times < 0 ? 0.0 : text.left(times).toDouble() * text.mid(times + 3).toDouble();
}

KeyOf keyForField(const QString& field) {
    static const QHash<QString, KeyOf> keys{
        {QStringLiteral("sortOrder"), byNumber([](const Movie& m) { return double(m.sortOrder); })},
        {QStringLiteral("filenameString"), byText(&Movie::filenameString)},
        {QStringLiteral("filepathString"), byText(&Movie::filepathString)},
        {QStringLiteral("flag"), byText(&Movie::flagString)},
        {QStringLiteral("flagString"), byText(&Movie::flagString)},
        {QStringLiteral("thumbnail"), byIcon(&Movie::thumbnail)},
        {QStringLiteral("notesIcon"), byIcon(&Movie::notesIcon)},
        {QStringLiteral("drawingIcon"), byIcon(&Movie::drawingIcon)},
        {QStringLiteral("bookmarkIcon"), byIcon(&Movie::bookmarkIcon)},
        {QStringLiteral("gradeIcon"), byIcon(&Movie::gradeIcon)},
        {QStringLiteral("instanceIcon"), byIcon(&Movie::instanceIcon)},
        {QStringLiteral("mMovieDurationFrames"),
         byNumber([](const Movie& m) { return double(m.mMovieDurationFrames); })},
        {QStringLiteral("mMovieDurationSeconds"),
         byNumber([](const Movie& m) { return double(m.mMovieDurationSeconds); })},
        {QStringLiteral("durationText"),
         byNumber([](const Movie& m) { return double(m.mMovieDurationSeconds); })},
        {QStringLiteral("mMovieFPS"), byNumber([](const Movie& m) { return double(m.mMovieFPS); })},
        {QStringLiteral("frameRateText"), byNumber([](const Movie& m) { return double(m.mMovieFPS); })},
        {QStringLiteral("fileSizeText"), byNumber([](const Movie& m) { return m.fileSizeText.toDouble(); })},
        {QStringLiteral("mMovieResolutionString"), byNumber(pixelsOf)},
        {QStringLiteral("fileCreationDate"), byNumber([](const Movie& m) {
             return m.fileCreationDate ? m.fileCreationDate->secondsSince2001 : 0.0;
         })},
    };
    return keys.value(field);
}

} // namespace

void sortMoviesByField(std::vector<std::shared_ptr<Movie>>& movies, const QString& field, bool ascending) {
    const KeyOf keyOf = keyForField(field);
    if (!keyOf) return;
    std::vector<std::pair<SortKey, std::shared_ptr<Movie>>> keyed;
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
