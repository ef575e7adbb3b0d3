#include "model/ItemPlaces.h"

#include <gtest/gtest.h>

namespace daylark {
namespace {

TEST(ItemPlaces, ARecordThatStandsSeveralTimesKeepsWhichOfItsPlacesWasMeant) {
    const auto a = std::make_shared<Movie>(QStringLiteral("/a.mov")), b = std::make_shared<Movie>(QStringLiteral("/b.mov")),
               gone = std::make_shared<Movie>(QStringLiteral("/c.mov"));
    const ItemList from{a, b, a, gone, a};
    EXPECT_EQ(rowsElsewhere(from, {0}, {b, a, a, a}), (ItemRows{1}));
    EXPECT_EQ(rowsElsewhere(from, {2}, {b, a, a, a}), (ItemRows{2}));
    EXPECT_EQ(rowsElsewhere(from, {4}, {b, a, a, a}), (ItemRows{3}));
    EXPECT_EQ(rowsElsewhere(from, {2, 3, 4}, {a, b}), (ItemRows{0})) << "its last place, once; what is gone has none";
    EXPECT_EQ(existingRows({4, 1, -1, 1, 3}, 4), (ItemRows{1, 3}));
}

} // namespace
} // namespace daylark
