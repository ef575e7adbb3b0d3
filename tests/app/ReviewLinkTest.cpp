#include "app/links/ReviewLink.h"

#include <gtest/gtest.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;
using Command = ReviewLink::Command;

struct Reading {
    const char* what;
    QString text;
    ReviewLink link;
};

ReviewLink link(const QStringList& paths) {
    return {Command::link, u"Media From Link"_s, paths};
}

ReviewLink playlist(const QString& name, const QStringList& paths) {
    return {Command::addPlaylist, name, paths};
}

std::vector<Reading> readings() {
    const QString windows = uR"(/C:\dailies\Day 1\a.mov)"_s;
    return {
        {"one path", u"daylark://link/v/a.mov"_s, link({u"/v/a.mov"_s})},
        {"several paths", u"daylark://link/v/a.mov,/v/b.mov"_s, link({u"/v/a.mov"_s, u"/v/b.mov"_s})},
        {"the return that ends a link", u"daylark://link/v/a.mov\r"_s, link({u"/v/a.mov"_s})},
        {"another program's scheme", u"DayLark://link/v/a.mov"_s, link({u"/v/a.mov"_s})},
        {"the tracking system", u"daylark://playmedia/v/a.mov"_s,
         {Command::playMedia, u"Shotgun Media"_s, {u"/v/a.mov"_s}}},
        {"a playlist", u"daylark://addplaylist/Day%201/v/a%20b.mov,"_s,
         playlist(u"Day 1"_s, {u"/v/a b.mov"_s, u""_s})},
        {"a playlist without files", u"daylark://addplaylist/Day%201"_s, playlist(u"Day 1"_s, {u""_s})},
        {"doubled slashes", u"daylark://addplaylist//Day 1//v//a.mov,"_s,
         playlist(u"Day 1"_s, {u"//v//a.mov"_s, u""_s})},
        {"no path", u"daylark://link"_s, link({u""_s})},
        {"only commas", u"daylark://link/,,"_s, link({u"/"_s, u""_s, u""_s})},
        {"an escaped comma parts as well", u"daylark://link/v/a%2C b.mov"_s,
         link({u"/v/a"_s, u" b.mov"_s})},
        {"everything escaped", u"daylark://link%2Fv%2Fa.mov"_s, link({u"/v/a.mov"_s})},
        {"a per cent sign that is one", u"daylark://link/v/100%.mov,/v/5%zz.mov,/v/7%2"_s,
         link({u"/v/100%.mov"_s, u"/v/5%zz.mov"_s, u"/v/7%2"_s})},
        {"more than ASCII, escaped or not", u"daylark://link/v/D%C3%A9j%C3%A0 \u732B\U0001F431.mov"_s,
         link({u"/v/D\u00E9j\u00E0 \u732B\U0001F431.mov"_s})},
        {"a path of Windows", u"daylark://link/C:\\dailies\\Day 1\\a.mov"_s, link({windows})},
        {"a volume of macOS", u"daylark://addplaylist/Day/Volumes/Show/a.mov,"_s,
         playlist(u"Day"_s, {u"/Volumes/Show/a.mov"_s, u""_s})},
        {"no command", u"daylark://"_s, {}},
        {"a slash for a command", u"daylark:///link/v/a.mov"_s, {}},
        {"a command that runs on", u"daylark://linkC:\\a.mov"_s, {}},
        {"commands are spelt as they are", u"daylark://Link/v/a.mov"_s, {}},
        {"an unknown command", u"daylark://delete/v/a.mov"_s, {}},
        {"a playlist without a name", u"daylark://addplaylist/"_s, {}},
        {"no slashes behind the scheme", u"daylark:link/v/a.mov"_s, {}},
        {"another scheme", u"https://link/v/a.mov"_s, {}},
        {"not UTF-8", u"daylark://link/v/%FFa.mov"_s, {}},
        {"half a character", u"daylark://link/v/a.mov%C3"_s, {}},
        {"a surrogate as bytes", u"daylark://link/v/%ED%A0%80.mov"_s, {}},
        {"nothing", QString(), {}},
    };
}

TEST(ReviewLinkTest, ReadsWhatItAsksForAndNothingOfWhatIsNone) {
    for (const Reading& reading : readings()) {
        const ReviewLink read = readReviewLink(reading.text);
        EXPECT_EQ(int(read.command), int(reading.link.command)) << reading.what;
        EXPECT_EQ(read.playlistName, reading.link.playlistName) << reading.what;
        EXPECT_EQ(read.paths, reading.link.paths) << reading.what << ": " << qPrintable(read.paths.join(u'|'));
    }
}

TEST(ReviewLinkTest, WritesLinksLetterByLetterAndReadsItsOwn) {
    EXPECT_EQ(movieLink(u"/v/a b.mov"_s), u"daylark://link/v/a b.mov\r"_s);
    EXPECT_EQ(playlistLink(u"Day 1"_s, {u"/v/a b.mov"_s}), u"daylark://addplaylist/Day%201/v/a%20b.mov,"_s);
    EXPECT_EQ(playlistLink(u"Day 1"_s, {}), u"daylark://addplaylist/Day%201"_s);
    EXPECT_EQ(playlistLink(u"A&B"_s, {u"/1%.mov"_s, u"/\u00E9.mov"_s}), u"daylark://addplaylist/A&B/1%.mov,/\u00E9.mov,"_s);

    QStringList many;
    for (int number = 0; number < 5000; ++number)
        many << u"/dailies/Day 1/100% shot_%1.mov"_s.arg(number);
    const ReviewLink read = readReviewLink(playlistLink(u"Selects \u2013 final"_s, many));
    EXPECT_EQ(read, playlist(u"Selects \u2013 final"_s, many + QStringList{u""_s}));
    const QString odd = u"/v/a%20b #1?\"<c>&'\u00E9.mov"_s;
    EXPECT_EQ(readReviewLink(movieAddress(odd)).paths, QStringList{odd});
    const ReviewLink own = readReviewLink(playlistLink(u"Day 1"_s, {u"/v/a%2Cb 1.mov"_s}));
    EXPECT_EQ(own.playlistName, u"Day 1"_s);
    EXPECT_EQ(own.ownPaths, (QStringList{u"/v/a%2Cb 1.mov"_s, u""_s}));
    EXPECT_EQ(readReviewLink(movieLink(u"/v/a%20b.mov"_s)).ownPaths, QStringList{u"/v/a%20b.mov"_s});
    EXPECT_EQ(movieAddress(odd), u"daylark://link/v/a%2520b%20%231%3F%22%3Cc%3E%26%27%C3%A9.mov"_s);
}

TEST(ReviewLinkTest, FindsLinksInWhatWasPasted) {
    EXPECT_EQ(reviewLinksIn(u"Look at these:\r\n  daylark://link/a.mov\rDAYLARK://link/b.mov\n\nbest, Mia"_s),
              (QStringList{u"daylark://link/a.mov"_s, u"DAYLARK://link/b.mov"_s}));
    EXPECT_EQ(reviewLinksIn(movieLink(u"/a.mov"_s) + movieLink(u"/b.mov"_s)),
              (QStringList{u"daylark://link/a.mov"_s, u"daylark://link/b.mov"_s}));
    EXPECT_TRUE(reviewLinksIn(u"see daylark://link/a.mov"_s).isEmpty());
    EXPECT_TRUE(isReviewLink(u"daylark:no"));
    EXPECT_FALSE(isReviewLink(u"/v/daylark://link/a.mov"));
}

TEST(ReviewLinkTest, AnchorsShowNamesAndCannotBeBrokenOutOf) {
    const QString html = anchorsAsHtml({{u"a<b>&.mov"_s, u"daylark://link/\"onclick=x"_s}, {u"c.mov"_s, u"t"_s}});
    EXPECT_TRUE(html.contains(u"<a href=\"daylark://link/&quot;onclick=x\">a&lt;b&gt;&amp;.mov</a><br>\n"
                              "<a href=\"t\">c.mov</a>"_s))
        << qPrintable(html);
}

} // namespace
} // namespace daylark
