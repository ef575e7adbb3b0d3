#include "viewer/transport/NeighbourMovies.h"

#include "viewer/ViewerFixture.h"

#include "model/Bookmark.h"

namespace daylark {
namespace {

using NeighbourMoviesTest = ViewerFixture;

TEST_F(NeighbourMoviesTest, EveryStartPositionIsForeseenWhereTheTransportPutsIt) {
    const auto before = record(bench::movie({.frames = 48, .group = 12}));
    const auto movie = record(bench::movie({.frames = 31, .group = 12}));
    movie->mLastFrameVisited = {17 * 512 + 3, 24 * 512};
    auto muted = std::make_shared<Bookmark>(4, 2, 24.0f);
    muted->mute = true;
    movie->bookmarkStore = {muted, std::make_shared<Bookmark>(9, 2, 24.0f)};
    for (const bool trimmed : {false, true})
        for (const char* start : {"First Frame", "Second Frame", "Middle Frame", "Current Frame",
                                  "Last Visited Frame", "First Bookmark", "Beyond", "Unknown"}) {
            preferences.trimHandles.set(false);
            show({before, movie}, 0);
            preferences.trimHandles.set(trimmed);
            goTo(23);
            if (start == std::string("Beyond"))
                movie->bookmarkStore = {std::make_shared<Bookmark>(90, 2, 24.0f)};
            preferences.loadFrame.store(
                QString::fromLatin1(start == std::string("Beyond") ? "First Bookmark" : start));
            const StartPosition foreseen(*movie, preferences, {player.currentTime(), player.currentFrame()});
            controller.list().setSelectionIndex(1);
            ASSERT_TRUE(settled());
            EXPECT_EQ(player.currentFrame(), foreseen.frameIn(player.index(), false)) << start << trimmed;
            // Leaving it notes where it stood.
            edits.refresh(movie, [](Movie& m) { m.mLastFrameVisited = {17 * 512 + 3, 24 * 512}; });
        }
}

TEST_F(NeighbourMoviesTest, TheNextAndThePreviousMovieAreReadyAndNothingOnceTheViewerCloses) {
    const auto other = record(bench::movie({.frames = 31, .group = 12}));
    show({record(bench::movie({.frames = 48, .group = 12})), other,
          record(bench::movie({.frames = 12, .group = 5}))},
         1);
    ASSERT_TRUE(bench::waitUntil([&] { // four pictures of either, beyond its own
        qint64 own = 0;
        for (const auto& [first, last] : player.readyRanges())
            own += last - first + 1;
        return player.statistics().cacheBytes >= (own + 8) * (256 * 144 * 3 / 2);
    }));
    transport.displayNextMovie();
    ASSERT_TRUE(settled());
    EXPECT_EQ(player.index().count(), 12);
    EXPECT_EQ(bench::pictureNumber(player), 1);
    controller.close();
    EXPECT_TRUE(bench::waitUntil([&] { return player.statistics().cacheBytes == 0; }));
}

} // namespace
} // namespace daylark
