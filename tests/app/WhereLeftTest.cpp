#include "AppFixture.h"

#include "app/sessions/RecentSessions.h"
#include "support/MovieMaker.h"

namespace daylark {

using test::AppFixture;
using namespace Qt::StringLiterals;

/// What a start finds as it was left.
class WhereLeftTest : public AppFixture {};

TEST_F(WhereLeftTest, TheItemReviewedLastIsSelectedAgainUnlessTheFirstOneIsWanted) {
    start();
    const QStringList names{u"a.mov"_s, u"b.mov"_s, u"c.mov"_s};
    for (const QString& name : names) {
        MovieSpec spec;
        spec.path = path(name);
        spec.frames = 6;
        ASSERT_TRUE(makeMovie(spec));
    }
    addPlaylist(u"Day"_s, names);
    library().selectMovies({1});
    controller->loadMovieWindow();
    ASSERT_TRUE(test::waitUntil([this] { return preferences->lastReviewedItem() == path(u"b.mov"_s); }));
    controller->playerWindow().close();
    library().selectMovies({0}); // looked at in the library, not reviewed
    quit();
    start();
    EXPECT_EQ(library().selectedMovieRows(), Library::Rows{1});
    preferences->startAtLastReviewed.set(false);
    quit();
    start();
    EXPECT_EQ(library().selectedMovieRows(), Library::Rows{0});
    preferences->startAtLastReviewed.set(true);
    preferences->lastReviewedItem.set(u"/gone/elsewhere.mov"_s);
    quit();
    start();
    EXPECT_EQ(library().selectedMovieRows(), Library::Rows{0});
}

TEST_F(WhereLeftTest, SessionFilesThatWereUsedAreKnownAndCleared) {
    start();
    addPlaylist(u"Day"_s, {u"a.mov"_s});
    QStringList saved;
    for (int at = 0; at < 12; ++at) {
        saved.prepend(path(u"session %1.dls"_s.arg(at)));
        panels.saveAnswers = {saved.front()};
        sessionFiles().saveSessionAs();
        settleFiles();
    }
    EXPECT_EQ(recentSessions::paths(*preferences), saved.mid(0, recentSessions::most));
    sessionFiles().setCurrentSessionPath(saved[4]); // used again: the newest, and once
    QStringList expected = saved.mid(0, recentSessions::most);
    expected.move(4, 0);
    EXPECT_EQ(recentSessions::paths(*preferences), expected);
    quit();
    start();
    EXPECT_EQ(recentSessions::paths(*preferences), expected);
    recentSessions::clear(*preferences);
    EXPECT_TRUE(recentSessions::paths(*preferences).isEmpty());
}

} // namespace daylark
