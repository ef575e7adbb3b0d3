#include "app/playlists/SmartQuestion.h"

#include "app/arrangement/TextSearch.h"
#include "app/relinking/FileExistence.h"
#include "model/StatusCodes.h"

#include <QCoreApplication>
#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <optional>

namespace daylark::smartQuestion {

namespace {

using MovieTest = std::function<bool(const Movie&)>;

/// Rates are stored in single precision: 23.976 and 24000/1001 are one.
constexpr double sameRate = 0.005;

const std::vector<Relation>& textRelations() {
    static const std::vector<Relation> all{{"contains", "contains", Entry::text},
                                           {"containsNot", "does not contain", Entry::text},
                                           {"is", "is", Entry::text},
                                           {"beginsWith", "begins with", Entry::text}};
    return all;
}

std::vector<Relation> whether(const char* present, const char* absent) {
    return {{"present", present, Entry::none}, {"absent", absent, Entry::none}};
}

Test onMovie(MovieTest test) {
    return [test = std::move(test)](const Item& item) { return test(item.movie); };
}

Test nothing() {
    return [](const Item&) { return false; };
}

bool fileIsMissing(const Movie& movie) {
    return FileExistence::isMarkedMissing(movie);
}

Test presenceTest(const SmartRule& rule, bool (*has)(const Movie&)) {
    const bool wanted = rule.relation == QLatin1String("present");
    if (!wanted && rule.relation != QLatin1String("absent")) return nothing();
    return onMovie([has, wanted](const Movie& movie) { return has(movie) == wanted; });
}

Test textTest(const SmartRule& rule, QString Movie::*text) {
    if (rule.value.isEmpty()) return nothing();
    const TextSearch search(rule.value);
    const QString folded = TextSearch::folded(rule.value);
    if (rule.relation == QLatin1String("contains"))
        return onMovie([=](const Movie& movie) { return search.isIn(movie.*text); });
    if (rule.relation == QLatin1String("containsNot"))
        return onMovie([=](const Movie& movie) { return !search.isIn(movie.*text); });
    if (rule.relation == QLatin1String("is"))
        return onMovie([=](const Movie& movie) { return TextSearch::folded(movie.*text) == folded; });
    if (rule.relation == QLatin1String("beginsWith"))
        return onMovie([=](const Movie& movie) { return TextSearch::folded(movie.*text).startsWith(folded); });
    return nothing();
}

Test statusTest(const SmartRule& rule) {
    const QString code = rule.value;
    // Items of older sessions may have no code at all.
    const auto codeOf = [](const Movie& movie) {
        return movie.flagString.isEmpty() ? QString::number(status::none) : movie.flagString;
    };
    if (rule.relation == QLatin1String("is"))
        return onMovie([=](const Movie& movie) { return codeOf(movie) == code; });
    if (rule.relation == QLatin1String("isNot"))
        return onMovie([=](const Movie& movie) { return codeOf(movie) != code; });
    return nothing();
}

Test rateTest(const SmartRule& rule) {
    bool good = false;
    const double wanted = rule.value.toDouble(&good);
    if (!good) return nothing();
    const auto known = [](const Movie& movie) { return movie.mMovieFPS > 0; };
    if (rule.relation == QLatin1String("is"))
        return onMovie([=](const Movie& movie) { return std::abs(double(movie.mMovieFPS) - wanted) < sameRate; });
    if (rule.relation == QLatin1String("isNot"))
        return onMovie([=](const Movie& movie) {
            return known(movie) && std::abs(double(movie.mMovieFPS) - wanted) >= sameRate;
        });
    if (rule.relation == QLatin1String("above"))
        return onMovie([=](const Movie& movie) { return double(movie.mMovieFPS) >= wanted + sameRate; });
    if (rule.relation == QLatin1String("below"))
        return onMovie(
            [=](const Movie& movie) { return known(movie) && double(movie.mMovieFPS) <= wanted - sameRate; });
    return nothing();
}

/// "1920 x 1080" or "1920"; empty for what is no size.
std::optional<std::pair<int, int>> sizeOf(const QString& text) {
    const QStringList parts = text.toLower().split(QLatin1Char('x'));
    bool wide = false, high = true;
    const int width = parts[0].trimmed().toInt(&wide);
    const int height = parts.size() > 1 ? parts[1].trimmed().toInt(&high) : 0;
    if (!wide || !high || parts.size() > 2 || width <= 0) return std::nullopt;
    return std::pair(width, height);
}

Test resolutionTest(const SmartRule& rule) {
    const auto wanted = sizeOf(rule.value);
    if (!wanted) return nothing();
    const auto [width, height] = *wanted;
    const auto is = [width = width, height = height](const Movie& movie) {
        return movie.mMovieWidth == width && (height == 0 || movie.mMovieHeight == height);
    };
    if (rule.relation == QLatin1String("is")) return onMovie(is);
    if (rule.relation == QLatin1String("isNot"))
        return onMovie([=](const Movie& movie) { return movie.mMovieWidth > 0 && !is(movie); });
    if (rule.relation == QLatin1String("wider"))
        return onMovie([width = width](const Movie& movie) { return movie.mMovieWidth > width; });
    if (rule.relation == QLatin1String("narrower"))
        return onMovie([width = width](const Movie& movie) {
            return movie.mMovieWidth > 0 && movie.mMovieWidth < width;
        });
    return nothing();
}

Test dateTest(const SmartRule& rule) {
    const auto day = [](const Movie& movie) {
        return movie.fileCreationDate
                   ? QDateTime::fromSecsSinceEpoch(qint64(movie.fileCreationDate->toUnixSeconds())).date()
                   : QDate();
    };
    if (rule.relation == QLatin1String("lastDays")) {
        bool good = false;
        const int days = rule.value.toInt(&good);
        if (!good || days < 1) return nothing();
        return onMovie([=](const Movie& movie) { // the day goes on while the list stands there
            const QDate made = day(movie);
            return made.isValid() && made > QDate::currentDate().addDays(-days);
        });
    }
    const QDate wanted = QDate::fromString(rule.value, Qt::ISODate);
    if (!wanted.isValid()) return nothing();
    if (rule.relation == QLatin1String("on"))
        return onMovie([=](const Movie& movie) { return day(movie) == wanted; });
    if (rule.relation == QLatin1String("before"))
        return onMovie([=](const Movie& movie) { return day(movie).isValid() && day(movie) < wanted; });
    if (rule.relation == QLatin1String("after"))
        return onMovie([=](const Movie& movie) { return day(movie).isValid() && day(movie) > wanted; });
    return nothing();
}

Test playlistTest(const SmartRule& rule) {
    const QString name = rule.value;
    const TextSearch search(name);
    if (name.isEmpty()) return nothing();
    if (rule.relation == QLatin1String("is")) return [=](const Item& item) { return item.playlists.contains(name); };
    if (rule.relation == QLatin1String("isNot"))
        return [=](const Item& item) { return !item.playlists.contains(name); };
    if (rule.relation == QLatin1String("contains"))
        return [=](const Item& item) {
            return std::any_of(item.playlists.begin(), item.playlists.end(),
                               [&search](const QString& each) { return search.isIn(each); });
        };
    return nothing();
}

Test testOf(const SmartRule& rule) {
    const QString& subject = rule.subject;
    if (subject == QLatin1String("status")) return statusTest(rule);
    if (subject == QLatin1String("notes"))
        return presenceTest(rule, [](const Movie& movie) { return !movie.notesIcon.isNil(); });
    if (subject == QLatin1String("drawings"))
        return presenceTest(rule, [](const Movie& movie) { return !movie.drawingIcon.isNil(); });
    if (subject == QLatin1String("bookmarks"))
        return presenceTest(rule, [](const Movie& movie) { return !movie.bookmarkIcon.isNil(); });
    if (subject == QLatin1String("grade"))
        return presenceTest(rule, [](const Movie& movie) { return !movie.gradeIcon.isNil(); });
    if (subject == QLatin1String("missing")) return presenceTest(rule, fileIsMissing);
    if (subject == QLatin1String("name")) return textTest(rule, &Movie::filenameString);
    if (subject == QLatin1String("path")) return textTest(rule, &Movie::filepathString);
    if (subject == QLatin1String("rate")) return rateTest(rule);
    if (subject == QLatin1String("resolution")) return resolutionTest(rule);
    if (subject == QLatin1String("date")) return dateTest(rule);
    if (subject == QLatin1String("playlist")) return playlistTest(rule);
    return nothing();
}

} // namespace

const std::vector<Subject>& subjects() {
    static const std::vector<Subject> all{
        {"status", "Flag", {{"is", "is", Entry::status}, {"isNot", "is not", Entry::status}}},
        {"notes", "Notes", whether("are there", "are not there")},
        {"drawings", "Drawings", whether("are there", "are not there")},
        {"bookmarks", "Bookmarks", whether("are there", "are not there")},
        {"grade", "Colour correction", whether("is there", "is not there")},
        {"missing", "Media file", whether("is missing", "is found")},
        {"name", "File name", textRelations()},
        {"path", "Path", textRelations()},
        {"rate",
         "Frame rate",
         {{"is", "is", Entry::number},
          {"isNot", "is not", Entry::number},
          {"above", "is above", Entry::number},
          {"below", "is below", Entry::number}}},
        {"resolution",
         "Resolution",
         {{"is", "is", Entry::pixels},
          {"isNot", "is not", Entry::pixels},
          {"wider", "is wider than", Entry::pixels},
          {"narrower", "is narrower than", Entry::pixels}}},
        {"date",
         "Created",
         {{"on", "on", Entry::date},
          {"before", "before", Entry::date},
          {"after", "after", Entry::date},
          {"lastDays", "in the last days", Entry::days}}},
        {"playlist",
         "Playlist",
         {{"is", "is", Entry::playlist},
          {"isNot", "is not", Entry::playlist},
          {"contains", "contains", Entry::text}}},
    };
    return all;
}

const Subject* findSubject(const QString& word) {
    const auto found = std::find_if(subjects().begin(), subjects().end(),
                                    [&](const Subject& each) { return word == QLatin1String(each.word); });
    return found == subjects().end() ? nullptr : &*found;
}

const Relation& relationOf(const Subject& subject, const QString& word) {
    const auto found = std::find_if(subject.relations.begin(), subject.relations.end(),
                                    [&](const Relation& each) { return word == QLatin1String(each.word); });
    return found == subject.relations.end() ? subject.relations.front() : *found;
}

SmartRule firstRule(const Subject& subject) {
    const Relation& relation = subject.relations.front();
    SmartRule rule{QLatin1String(subject.word), QLatin1String(relation.word), QStringLiteral("")};
    switch (relation.entry) {
    case Entry::status:
        rule.value = QString::number(status::approved);
        break;
    case Entry::number:
        rule.value = QStringLiteral("24");
        break;
    case Entry::pixels:
        rule.value = QStringLiteral("1920 x 1080");
        break;
    case Entry::date:
        rule.value = QDate::currentDate().toString(Qt::ISODate);
        break;
    case Entry::days:
        rule.value = QStringLiteral("7");
        break;
    case Entry::none:
    case Entry::text:
    case Entry::playlist:
        break;
    }
    return rule;
}

Test testOf(const SmartRules& rules) {
    std::vector<Test> tests;
    for (const SmartRule& rule : rules.rules)
        tests.push_back(testOf(rule));
    if (tests.empty()) return nothing();
    if (rules.any)
        return [tests = std::move(tests)](const Item& item) {
            return std::any_of(tests.begin(), tests.end(), [&item](const Test& test) { return test(item); });
        };
    return [tests = std::move(tests)](const Item& item) {
        return std::all_of(tests.begin(), tests.end(), [&item](const Test& test) { return test(item); });
    };
}

} // namespace daylark::smartQuestion
