#include "app/arrangement/ShownNames.h"

#include <gtest/gtest.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

/// What is common in a list, between bars: "DAY03_|SH0010.mov".
QString cut(const QStringList& names, const ShownNames::Looks& looks = {}) {
    const ShownName shown = ShownNames(names, looks).shown(names.front());
    return shown.common == 0 ? shown.text : shown.text.left(shown.common) + u'|' + shown.text.mid(shown.common);
}

TEST(ShownNames, TheCommonBeginningEndsWhereAPersonWouldCutAndNeverTakesTheNumber) {
    struct Case {
        QStringList names;
        QString shown;
    };
    const std::vector<Case> cases{
        {{u"DAY03_SC012_SH0010_v002.mov"_s, u"DAY03_SC012_SH0040_v001.mov"_s}, u"DAY03_SC012_|SH0010_v002.mov"_s},
        {{u"A001C003.mov"_s, u"A001C007.mov"_s}, u"A001C|003.mov"_s}, // no separator: the number stays whole
        {{u"sh010 v1.mov"_s, u"sh010 v2.mov"_s, u"sh010.mov"_s}, u"sh010 v1.mov"_s}, // too little in common
        {{u"same.mov"_s, u"same.mov"_s}, u"same.mov"_s},   // copies: nothing tells them apart, all is shown
        {{u"shot_a.mov"_s, u"shot_.mov"_s}, u"shot_a.mov"_s}, // nothing would be left of the second
        {{u"only one.mov"_s}, u"only one.mov"_s},
        {{u"Straße_1.mov"_s, u"Straße_2.mov"_s, u"slate.mov"_s}, u"Straße_1.mov"_s},
        {{u"day_12.mov"_s, u"day_12.mxf"_s, u"day_13.mov"_s}, u"day_|12.mov"_s}, // extensions have no say
        {{u"\U0001F3AC\U0001F3A5 1"_s, u"\U0001F3AC\U0001F3A6 2"_s}, u"\U0001F3AC\U0001F3A5 1"_s}, // no half of a letter
    };
    for (const Case& c : cases)
        EXPECT_EQ(cut(c.names), c.shown) << c.names.front().toStdString();
}

TEST(ShownNames, ExtensionAndDimmingAreChoices) {
    const QStringList names{u"day_1.final cut.mov"_s, u"day_2.mov"_s, u".hidden"_s};
    EXPECT_EQ(ShownNames(names, {false, true}).shown(names[0]).text, u"day_1.final cut"_s);
    EXPECT_EQ(ShownNames(names, {false, true}).shown(names[2]).text, u".hidden"_s); // all of it is its name
    EXPECT_EQ(ShownNames(names, {false, true}).shown(u"mix.final cut"_s).text, u"mix.final cut"_s);
    EXPECT_EQ(cut({names[0], names[1]}, {true, false}), names[0]);
}

} // namespace
} // namespace daylark
