#include "archive/PublicEncoding.h"

#include <gtest/gtest.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

TEST(PublicEncodingTest, RunsOfEveryLengthComeBackAsTheyAreSpelt) {
    for (const quint64 length : {0x01U, 0x7FU, 0x80U, 0x81U, 0x3FFFU, 0x4000U}) {
        const QByteArray data = runIndexData({{length, 0}, {1, 1}});
        EXPECT_EQ(data.size(), (length < 0x80 ? 1 : length < 0x4000 ? 2 : 3) + 3) << length;
        const auto runs = runIndicesFromData(data, length + 1);
        ASSERT_EQ(runs.size(), 2U) << length;
        EXPECT_EQ(runs[0].length, length);
        EXPECT_EQ(runs[1].attributes, 1U);
        EXPECT_EQ(runIndicesFromData(data, length).size(), 1U) << "no more than there are characters";
    }
}

TEST(PublicEncodingTest, ASizeThatIsNoneOnEitherSideIsNone) {
    EXPECT_EQ(sizeFromText(u"{100, 56}"), QSize(100, 56));
    EXPECT_EQ(sizeFromText(u"{0, 0}"), QSize(0, 0));
    EXPECT_EQ(sizeFromText(u"{1000000, 1}"), QSize(1000000, 1));
    for (const QString& text :
         {u"{-1, 56}"_s, u"{100, -1}"_s, u"{1000001, 1}"_s, u"{1, 1000001}"_s, u"{100}"_s, u"{a, 1}"_s, u""_s})
        EXPECT_EQ(sizeFromText(text), QSize()) << qPrintable(text); // not even half of it
}

} // namespace
} // namespace daylark
