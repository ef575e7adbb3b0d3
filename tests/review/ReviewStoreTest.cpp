#include "archive/Encoder.h"
#include "review/ListChanges.h"
#include "review/RecordFields.h"
#include "review/ReviewStore.h"
#include "support/RecordSamples.h"
#include "support/Replica.h"

#include <gtest/gtest.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;
using test::archiveOf;

/// The keys that a record writes.
class NotingEncoder : public Encoder {
public:
    void encode(const char* key, const Value&) override { keys << QString::fromLatin1(key); }
    void encodeArray(const char* key, const std::vector<std::shared_ptr<const Archivable>>&) override {
        keys << QString::fromLatin1(key);
    }
    QStringList keys;
};

QStringList sorted(QStringList list) {
    list.sort();
    return list;
}

QStringList keysOf(const Archivable& record) {
    NotingEncoder encoder;
    record.encodeWithCoder(encoder);
    return encoder.keys;
}

TEST(RecordFieldsTest, WhateverASessionStoresOfARecordIsAFieldOrAListOfRecords) {
    const auto whole = test::sampleMovie(); // with what is stored only where there is any
    whole->inputColourSpace = u"ACEScg"_s;
    whole->firstFrameNumber = Number(qint64(1001));
    whole->frameRun = MovieRun{{u"a."_s, u".exr"_s, 4, false, 1001, 1010, 1}, {}, false, {}};
    QStringList movie = keysOf(*whole);
    for (const char* number : {"exposure", "contrast", "saturation", "gamma", "brightness", "redChannel",
                               "greenChannel", "blueChannel"})
        EXPECT_EQ(movie.removeAll(QLatin1String(number)), 1);
    movie << u"grade"_s;
    EXPECT_EQ(movie.removeAll(u"lastFrameVisitedTimeValue"_s), 1);
    EXPECT_EQ(movie.removeAll(u"lastFrameVisitedTimeScale"_s), 1);
    movie << u"mLastFrameVisited"_s;
    movie.replaceInStrings(u"thumbnailFrame"_s, u"mThumbnailFrame"_s);
    EXPECT_EQ(sorted(movie), sorted(fields::movieFields() << fields::bookmarkStore));
    EXPECT_EQ(sorted(keysOf(Bookmark())), sorted(fields::bookmarkFields()));
    Playlist asking;
    asking.smartRules.rules = {{u"status"_s, u"is"_s, u"1"_s}}; // stored where there are any
    EXPECT_EQ(sorted(keysOf(asking)), sorted(fields::playlistFields() << fields::movieList));
}

class ReviewStoreTest : public ::testing::Test {
protected:
    ReviewStoreTest() {
        store.replaceSession({day, night});
        QObject::connect(&store, &ReviewStore::changed, [this](const Change& change) { changes << change; });
        QObject::connect(&store, &ReviewStore::applied, [this](const Edit& edit) { edits.push_back(edit); });
    }
    void TearDown() override { EXPECT_TRUE(replica.isTrue()); }

    static std::shared_ptr<Playlist> listOf(std::initializer_list<std::shared_ptr<Movie>> movies) {
        auto playlist = std::make_shared<Playlist>();
        playlist->movieList.assign(movies.begin(), movies.end());
        return playlist;
    }
    static std::shared_ptr<Movie> item(const QString& path) { return std::make_shared<Movie>(path); }
    ObjectList<Movie> order(std::initializer_list<std::shared_ptr<Movie>> movies) {
        ObjectList<Movie> list;
        list.assign(movies.begin(), movies.end());
        return list;
    }

    ReviewStore store;
    std::shared_ptr<Movie> a = item(u"/a.mov"_s), b = item(u"/b.mov"_s), c = item(u"/c.mov"_s);
    std::shared_ptr<Playlist> day = listOf({a, b, c}), night = listOf({a});
    test::Replica replica{store};
    QList<Change> changes;
    std::vector<Edit> edits;
};

TEST_F(ReviewStoreTest, EveryFieldOfEveryRecordTravelsAndComesBack) {
    const QByteArray beginning = archiveOf(store.playlists());
    const auto rich = test::sampleMovie();
    const auto mark = std::make_shared<Bookmark>(1, 1, 25.0F);
    ObjectList<Bookmark> marks;
    marks.push_back(mark);
    {
        const ReviewStore::Group all(store, {u"All"_s});
        store.setBookmarks(a, marks, {});
        store.modify(a, {}, [&](Movie& movie) {
            const ObjectList<Bookmark> own = movie.bookmarkStore;
            movie = *rich;
            movie.bookmarkStore = own;
        });
        store.modify(a, mark, {}, [&](Bookmark& bookmark) { bookmark = *rich->bookmarkStore.front(); });
        store.modify(day, {}, [](Playlist& playlist) {
            playlist.name = u"Day 2"_s;
            playlist.directoryPath = QUrl(u"file:///folder"_s);
            playlist.isDivider = std::nullopt;
            playlist.playlistType = u"smartlist"_s;
            playlist.status = 2;
        });
    }
    EXPECT_TRUE(replica.isTrue());
    ASSERT_EQ(edits.size(), 1U);
    QStringList named;
    for (const Change& change : edits.front().changes)
        named << change.field;
    // All but the two by which the sample is as new.
    EXPECT_GE(named.size(), fields::movieFields().size() + fields::bookmarkFields().size() - 2);
    const QByteArray end = archiveOf(store.playlists());
    Changes back;
    for (auto change = edits.front().changes.rbegin(); change != edits.front().changes.rend(); ++change)
        back.push_back(change->inverted());
    const Changes forth = edits.front().changes;
    store.applyAgain(back, {});
    EXPECT_EQ(archiveOf(store.playlists()), beginning);
    EXPECT_TRUE(replica.isTrue());
    store.applyAgain(forth, {});
    EXPECT_EQ(archiveOf(store.playlists()), end);
}

TEST_F(ReviewStoreTest, AnotherSessionWithAKnownItemKnowsWhoseItsNewBookmarksAre) {
    const auto mark = std::make_shared<Bookmark>(1, 1, 25.0F);
    a->bookmarkStore.push_back(mark); // put there while nobody looked
    store.replaceSession({listOf({a})});
    store.modify(a, mark, {}, [](Bookmark& bookmark) { bookmark.overlayString = u"New"_s; });
    ASSERT_EQ(edits.size(), 1U);
    EXPECT_EQ(store.records().ownerOf(edits[0].changes.front().record), a);
}

TEST_F(ReviewStoreTest, ChangesAreToldOnceAfterAllAreDoneWithWhatStoodThere) {
    QString seenFlag;
    QObject::connect(&store, &ReviewStore::changed, &store, [&](const Change& change) {
        if (change.field == u"flag"_s) seenFlag = a->flagString + b->flagString;
        // Somebody who listens and edits in turn.
        if (change.field == u"flag"_s && change.record == store.records().idOf(a))
            store.modify(c, {u"Echo"_s}, [](Movie& movie) { movie.setFlag(902); });
    });
    {
        const ReviewStore::Group group(store, {u"Flag of 2 Items"_s});
        for (const auto& movie : {a, b})
            store.modify(movie, {}, [](Movie& edited) { edited.setFlag(901); });
        EXPECT_TRUE(changes.empty());
    }
    EXPECT_FALSE(store.modify(a, {u"Flag"_s}, [](Movie& movie) { movie.setFlag(901); }));
    EXPECT_FALSE(store.setSortOrder(a, {u"Order"_s}, a->sortOrder));
    ASSERT_EQ(edits.size(), 2U) << "nothing changed: nothing told";
    EXPECT_EQ(edits[0].info.title, u"Flag of 2 Items"_s);
    EXPECT_EQ(edits[1].info.title, u"Echo"_s);
    ASSERT_EQ(changes.size(), 6);
    EXPECT_EQ(seenFlag, u"901901"_s);
    for (const Change& change : changes) {
        if (change.field != u"flagString"_s) continue;
        EXPECT_EQ(change.before.string(), u"900"_s);
        EXPECT_FALSE(change.after.string().isEmpty());
    }
}

TEST_F(ReviewStoreTest, AStrokeMoreOnAFullDrawingIsASmallChange) {
    const auto mark = std::make_shared<Bookmark>(1, 1, 25.0F);
    mark->drawings = test::sampleDrawing(300);
    ObjectList<Bookmark> marks;
    marks.push_back(mark);
    store.setBookmarks(a, marks, {u"Add"_s});
    changes.clear();
    store.modify(a, mark, {u"Stroke"_s}, [](Bookmark& bookmark) {
        Drawing drawing = test::sampleDrawing(301);
        bookmark.addDrawingToBookmark(drawing);
    });
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0].at, 300);
    EXPECT_LT(encodeChanges({changes[0]}).size(), 4000);
    store.applyAgain({changes[0].inverted()}, {});
    EXPECT_EQ(mark->drawings, test::sampleDrawing(300));
    // Removed altogether it is a dictionary without keys, and comes back with all.
    changes.clear();
    store.modify(a, mark, {u"Delete"_s}, [](Bookmark& bookmark) { bookmark.removeDrawingFromBookmark(); });
    EXPECT_FALSE(mark->drawings.hasKeys);
    store.applyAgain({changes[0].inverted()}, {});
    EXPECT_EQ(mark->drawings, test::sampleDrawing(300));
}

TEST_F(ReviewStoreTest, RecordsThatComeInAreToldWholeAndAnItemOfTwoListsStaysOne) {
    const auto found = item(u"/found.mov"_s);
    found->bookmarkStore.push_back(std::make_shared<Bookmark>(3, 4, 25.0F));
    const auto late = listOf({found, a});
    store.insertPlaylists(1, {late}, {u"Add Playlist"_s});
    store.insertMovies(night, 99, {found}, {u"Instance"_s});
    store.modify(found, found->bookmarkStore.front(), {u"Text"_s},
                 [](Bookmark& bookmark) { bookmark.overlayString = u"dust"_s; });
    ASSERT_TRUE(replica.isTrue());
    const auto& copies = replica.playlists();
    ASSERT_EQ(copies.size(), 3U);
    EXPECT_EQ(copies[1]->movieList[0], copies[2]->movieList[1]);
    EXPECT_EQ(copies[1]->movieList[1], copies[0]->movieList[0]);
    store.setPlaylists({day, night}, {u"Remove"_s});
    store.modify(found, {u"Flag"_s}, [](Movie& movie) { movie.setFlag(903); });
    store.setPlaylists({night, late, day}, {u"Back"_s});
}

TEST_F(ReviewStoreTest, ListChangesFindTheirRecordsWhereverTheyStandNow) {
    const auto change = [](qint64 at, const RecordIds& before, const RecordIds& after) {
        Change made;
        made.at = at;
        made.before = listOfRecordIds(before);
        made.after = listOfRecordIds(after);
        return made;
    };
    EXPECT_EQ(listAfter({1, 2, 3}, change(1, {2}, {})), (RecordIds{1, 3}));
    EXPECT_EQ(listAfter({9, 1, 2, 3}, change(1, {2}, {})), (RecordIds{9, 1, 3})) << "moved on";
    EXPECT_EQ(listAfter({1, 3}, change(1, {2}, {})), (RecordIds{1, 3})) << "gone already";
    EXPECT_EQ(listAfter({9, 1, 3}, change(0, {1}, {1, 2})), (RecordIds{9, 1, 2, 3})) << "behind its neighbour";
    EXPECT_EQ(listAfter({9, 3, 1}, change(0, {1, 2, 3}, {3, 1, 2})), (RecordIds{9, 3, 1}));
    EXPECT_EQ(listAfter({9, 1, 3}, change(0, {1, 2, 3}, {3, 1, 2})), (RecordIds{9, 3, 1})) << "2 has gone";
    EXPECT_EQ(listAfter({5, 5, 6}, change(0, {5}, {})), (RecordIds{5, 6})) << "one of two";
    EXPECT_FALSE(spanBetween({1, 2}, false, {1, 2}, false));
    const auto span = spanBetween({1, 2, 3, 4}, false, {1, 3, 2, 4}, false);
    ASSERT_TRUE(span);
    EXPECT_EQ(span->at, 1);
    EXPECT_EQ(recordIdsOf(span->after), (RecordIds{3, 2}));
    const auto grown = spanBetween({7, 7}, false, {7, 7, 7}, false);
    ASSERT_TRUE(grown);
    EXPECT_TRUE(recordIdsOf(grown->before).empty());
    EXPECT_TRUE(spanBetween({}, true, {}, false)->before.isNil());

    store.setMovies(day, order({c, a, b}), {u"Order"_s});
    store.setMovies(day, order({c, a, b, a}), {u"Twice"_s});
    store.setMovies(day, order({b}), {u"Out"_s});
    EXPECT_EQ(replica.playlists()[0]->movieList.size(), 1U);
}

TEST_F(ReviewStoreTest, AStoredChangeThatIsCutOrStrangeChangesNothing) {
    store.modify(a, {u"Flag"_s}, [](Movie& movie) { movie.setFlag(901); });
    const QByteArray bytes = encodeChanges({changes.begin(), changes.end()});
    for (qsizetype length = 0; length < bytes.size(); length += 7)
        EXPECT_FALSE(decodeChanges(bytes.first(length)));
    EXPECT_FALSE(decodeChanges(archiveRoot(Value::Dictionary{{u"changes"_s, u"none"_s}})));
    ReviewRecords copy;
    copy.adopt({listOf({item(u"/x.mov"_s)})});
    const QByteArray before = archiveOf(copy.playlists());
    for (const RecordId record : {RecordId(0), sessionRecord, RecordId(2), RecordId(3), RecordId(999)}) {
        Change strange = changes.front();
        strange.record = record;
        strange.field = u"noSuchField"_s;
        copy.apply(strange);
        strange.field = Change::wholeRecord;
        copy.apply(strange);
        strange.field = fields::bookmarkStore;
        strange.at = -5;
        strange.before = listOfRecordIds({4, 5, 6});
        strange.after = listOfRecordIds({1, 2, 77});
        if (record != 3) copy.apply(strange);
    }
    EXPECT_EQ(archiveOf(copy.playlists()), before);
}

TEST_F(ReviewStoreTest, NumbersOfASessionAreThoseOfItsCopyByPosition) {
    ReviewRecords copy;
    copy.adopt({listOf({item(u"/1"_s), item(u"/2"_s), item(u"/3"_s)}), listOf({})},
               store.records().idsByPosition());
    EXPECT_EQ(copy.knownId(copy.playlists()[0]->movieList[1].get()), store.records().knownId(b.get()));
    EXPECT_EQ(copy.knownId(copy.playlists()[1].get()), store.records().knownId(night.get()));
    // A number is not given twice, even when its record is gone.
    const RecordId last = store.records().idOf(item(u"/gone"_s));
    EXPECT_GT(store.records().idOf(item(u"/new"_s)), last);
}

} // namespace
} // namespace daylark
