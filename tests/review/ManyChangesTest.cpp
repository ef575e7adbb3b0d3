#include "review/ManyChanges.h"
#include "review/ReviewEdits.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

TEST(ManyChanges, OnlyWhatManyItemsGotIsToldAndOnlyThatStepIsTakenBack) {
    ReviewEdits edits;
    auto day = std::make_shared<Playlist>();
    std::vector<std::shared_ptr<Movie>> movies;
    for (int at = 0; at < 5; ++at)
        movies.push_back(std::make_shared<Movie>(u"/%1.mov"_s.arg(at)));
    day->movieList.assign(movies.begin(), movies.end());
    edits.store().replaceSession({day});
    ManyChanges changes(edits.store(), edits.history());
    QSignalSpy told(&changes, &ManyChanges::told), past(&changes, &ManyChanges::past);

    edits.setFlag({movies[0]}, 904);
    EXPECT_TRUE(told.isEmpty());
    edits.setFlag(movies, 904); // the first has it already
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0][0].toString(), u"4 flags changed"_s);
    Grade warm;
    warm.redChannel = 1.2;
    edits.pasteGrade({movies[1], movies[2], movies[3]}, warm, true);
    ASSERT_EQ(told.size(), 2);
    EXPECT_EQ(told[1][0].toString(), u"3 grades replaced"_s);
    changes.undo();
    EXPECT_EQ(movies[2]->redChannel, 1.0);
    EXPECT_EQ(movies[2]->flagString, u"904"_s);
    EXPECT_EQ(past.size(), 1);
    changes.undo(); // the flags are another step
    EXPECT_EQ(movies[2]->flagString, u"904"_s);
    edits.setFlag(movies, 901);
    edits.setFlag({movies[0]}, 902); // something else is the next step now
    EXPECT_EQ(past.size(), 2);
    changes.undo();
    EXPECT_EQ(movies[0]->flagString, u"902"_s);
}

} // namespace
} // namespace daylark
