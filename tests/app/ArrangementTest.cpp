#include "app/arrangement/Arrangement.h"
#include "app/arrangement/Columns.h"
#include "preferences/Preferences.h"

#include <gtest/gtest.h>

#include <set>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

std::shared_ptr<Movie> item(const QString& name, qint64 order) {
    auto movie = std::make_shared<Movie>(u"/dailies/"_s + name);
    movie->sortOrder = order;
    return movie;
}

QString namesOf(const ItemList& movies) {
    QString names;
    for (const auto& movie : movies)
        names += movie->filenameString.section(u'.', 0, 0);
    return names;
}

class ArrangementTest : public ::testing::Test {
protected:
    const std::shared_ptr<Movie> a = item(u"a.mov"_s, 1), b = item(u"b.mov"_s, 2), c = item(u"c.mov"_s, 3);
    Arrangement arrangement;
};

TEST_F(ArrangementTest, FilterSortAndSelectionLeaveTheContentsAlone) {
    ItemList contents{a, b, c};
    EXPECT_TRUE(arrangement.show(contents).list);
    EXPECT_TRUE(arrangement.select({2, 0, 7, -1, 2}));
    EXPECT_EQ(arrangement.selectedRows(), (ItemRows{0, 2}));
    EXPECT_FALSE(arrangement.select({0, 2})) << "as it was";

    arrangement.setSort(u"filenameString"_s, false);
    Arrangement::Changed changed = arrangement.show(contents);
    EXPECT_TRUE(changed.list);
    EXPECT_FALSE(changed.selection) << "the same rows, the same items";
    EXPECT_EQ(namesOf(arrangement.movies()), u"cba"_s);
    EXPECT_EQ(namesOf(arrangement.selectedMovies()), u"ca"_s);

    arrangement.setFilter([this](const Movie& movie) { return &movie != c.get(); });
    changed = arrangement.show(contents);
    EXPECT_TRUE(changed.list && changed.selection);
    EXPECT_EQ(namesOf(arrangement.movies()), u"ba"_s);
    EXPECT_EQ(arrangement.selectedRows(), ItemRows{1});
    arrangement.setFilter({});
    EXPECT_TRUE(arrangement.show(contents).list);
    EXPECT_EQ(namesOf(arrangement.selectedMovies()), u"a"_s)
        << "what was filtered away is not selected again";
    changed = arrangement.show(contents);
    EXPECT_FALSE(changed.list || changed.selection);
}

TEST_F(ArrangementTest, ARecordThatStandsTwiceIsTwoItemsAndSoAreTwoOfOneName) {
    arrangement.setSort({}, true); // as given
    arrangement.show({a, b, a});
    arrangement.select({2});
    arrangement.setSort(u"filenameString"_s, true);
    arrangement.show({a, b, a});
    EXPECT_EQ(namesOf(arrangement.movies()), u"aab"_s);
    EXPECT_EQ(arrangement.selectedRows(), ItemRows{1}) << "the second of the two, not the first";
    EXPECT_EQ(arrangement.rowsOf(*a), (ItemRows{0, 1}));
    arrangement.show({b, a});
    EXPECT_EQ(arrangement.selectedRows(), ItemRows{0}) << "one went: the other is the item now";

    const auto twin = item(u"a.mov"_s, 9);
    arrangement.show({a, twin, b});
    arrangement.select({1});
    arrangement.setSort(u"filenameString"_s, false);
    arrangement.show({a, twin, b});
    EXPECT_EQ(arrangement.selectedMovies(), ItemList{twin});
}

TEST_F(ArrangementTest, SortingIsSteadyWithoutRegardToCaseAndByNumbersWhereTheyAreNumbers) {
    const auto sorted = [](ItemList movies, const QString& field, bool ascending) {
        sortMoviesByField(movies, field, ascending);
        return namesOf(movies);
    };
    const auto capital = item(u"B.mov"_s, 0);
    EXPECT_EQ(sorted({c, capital, b, a}, u"filenameString"_s, true), u"aBbc"_s);
    EXPECT_EQ(sorted({c, capital, b, a}, u"filenameString"_s, false), u"cBba"_s) << "equal ones as given";
    a->fileSizeText = u"9.5"_s;
    b->fileSizeText = u"10.0"_s;
    EXPECT_EQ(sorted({b, a, c}, u"fileSizeText"_s, true), u"cab"_s);
    a->mMovieResolutionString = u"1920 x 1080"_s;
    b->mMovieResolutionString = u"720 x 576"_s;
    EXPECT_EQ(sorted({a, b, c}, u"mMovieResolutionString"_s, true), u"cba"_s);
    b->notesIcon = Image::named(u"dl-notesActive-03.png"_s);
    EXPECT_EQ(sorted({a, b, c}, u"notesIcon"_s, false), u"bac"_s);
    EXPECT_EQ(sorted({c, b, a}, u"sortOrder"_s, true), u"abc"_s);
    EXPECT_EQ(sorted({c, a, b}, u"no such field"_s, true), u"cab"_s);
}

TEST(Columns, EachHasItsOwnPlaceFieldAndNameAndTheTableOnesSort) {
    std::set<QString> fields;
    for (int id = 0; id < Column::total; ++id) {
        EXPECT_EQ(column(id).id, id);
        EXPECT_TRUE(*column(id).label);
        EXPECT_TRUE(fields.insert(QLatin1String(column(id).field)).second) << column(id).field;
        if (id >= Column::tableTotal) continue;
        const bool sorts = id != Column::sound; // which no record knows
        EXPECT_EQ(column(id).sortKey != nullptr, sorts) << column(id).label;
        EXPECT_GT(column(id).width, 0) << column(id).label;
        EXPECT_NE(*column(id).title != 0, *column(id).icon != 0)
            << column(id).label << ": a title or an icon";
    }
}

TEST(Columns, RowsAndTheInformationBoxSayTheSameInTheirWords) {
    Movie movie(u"/a/b.mov"_s);
    movie.mMovieFPS = 23.976f;
    movie.frameRateText = u"23.976"_s;
    movie.fileSizeText = u"12.5"_s;
    EXPECT_EQ(column(Column::rate).textOf(movie), u"23.976"_s);
    EXPECT_EQ(column(Column::rate).factOf(movie), u"23.976 frames a second"_s);
    EXPECT_EQ(column(Column::size).factOf(movie), u"12.5 MB"_s);
    EXPECT_EQ(column(Column::frames).textOf(movie), QString()) << "not known yet";
    EXPECT_EQ(column(Column::path).factOf(movie), u"/a/b.mov"_s);

    Preferences preferences;
    EXPECT_TRUE(flagNameOf(movie, preferences).isNull());
    movie.setFlag(905);
    preferences.statusNames[4].set(u"Cutting room"_s);
    EXPECT_EQ(flagNameOf(movie, preferences), u"Cutting room"_s);
    EXPECT_EQ(column(Column::flag).iconOf(movie), movie.flag.name());
    EXPECT_TRUE(column(Column::grade).iconOf(movie).isNull());
}

} // namespace
} // namespace daylark
