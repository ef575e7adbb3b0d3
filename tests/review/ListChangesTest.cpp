#include "review/ListChanges.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace daylark {
namespace {

using Ids = RecordIds;

Change changeOf(const Ids& before, const Ids& after) {
    return spanBetween(before, false, after, false).value_or(Change{});
}

Ids undone(const Ids& now, const Ids& before, const Ids& after) {
    return listAfter(now, changeOf(before, after).inverted());
}

TEST(ListChanges, ARecordThatStandsTwiceKeepsItsPlacesWhenTheListIsAnotherByNow) {
    // 9 came in front since: the change doesn't stand where it stood.
    EXPECT_EQ(undone({9, 1, 2, 3, 1}, {1, 2, 3}, {1, 2, 3, 1}), (Ids{9, 1, 2, 3})) << "the one that was added goes";
    EXPECT_EQ(undone({9, 1, 2, 3}, {1, 2, 3, 1}, {1, 2, 3}), (Ids{9, 1, 2, 1, 3})) << "and comes once, by its number";
    EXPECT_EQ(undone({9, 1, 2, 1, 3}, {1, 1, 2, 3}, {1, 2, 1, 3}), (Ids{9, 1, 1, 2, 3}));
    EXPECT_EQ(undone({9, 2, 1, 3}, {1, 2, 1, 3}, {2, 1, 3}), (Ids{1, 9, 2, 1, 3}));
    EXPECT_EQ(undone({9, 1, 2, 1}, {1, 1, 2}, {1, 2, 1}), (Ids{9, 1, 1, 2}));
}

TEST(ListChanges, WhateverStandsThereTheSameRecordsComeOfItAsOften) {
    std::mt19937 random(5);
    const auto list = [&random] {
        Ids ids(random() % 7);
        for (RecordId& id : ids)
            id = 1 + random() % 4;
        return ids;
    };
    const auto count = [](const Ids& ids) {
        std::map<RecordId, int> times;
        for (const RecordId id : ids)
            ++times[id];
        return times;
    };
    for (int round = 0; round < 5000; ++round) {
        const Ids before = list(), after = list(), other = list();
        if (before == after) continue;
        EXPECT_EQ(listAfter(before, changeOf(before, after)), after);
        EXPECT_EQ(undone(after, before, after), before);
        // Elsewhere: as many of each as the change adds and takes, never fewer than none.
        auto expected = count(other);
        const Change change = changeOf(before, after);
        auto took = count(recordIdsOf(change.before)), gave = count(recordIdsOf(change.after));
        const Ids made = listAfter(other, change);
        for (RecordId id = 1; id <= 4; ++id) {
            const int difference = gave[id] - took[id];
            EXPECT_EQ(count(made)[id], std::max(0, expected[id] + difference)) << "round " << round;
        }
    }
}

} // namespace
} // namespace daylark
