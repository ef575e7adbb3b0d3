#include "export/NotesDocument.h"

#include <gtest/gtest.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

NotesOptions options(bool bookmarks, bool hideExtension = true) {
    NotesOptions result;
    result.printBookmarksInNotes = bookmarks;
    result.hideFileExtensionInNotes = hideExtension;
    result.notes1Title = u"Notes 1"_s;
    result.notes2Title = u"Notes 2"_s;
    result.flagLabel = [](const QString& code) { return u"label "_s + code; };
    return result;
}

std::shared_ptr<Movie> movie(const QString& name, const QString& notes = {}, const QString& notes2 = {}) {
    auto result = std::make_shared<Movie>(u"/dailies/"_s + name);
    result->notes = AttributedString(notes);
    result->notes2 = AttributedString(notes2);
    return result;
}

void addBookmark(Movie& to, const QString& first, const QString& last, qint64 from, qint64 until,
                 const QString& description, const QString& note) {
    auto bookmark = std::make_shared<Bookmark>();
    bookmark->firstTC = first;
    bookmark->lastTC = last;
    bookmark->firstFrame = from;
    bookmark->lastFrame = until;
    bookmark->overlayString = description;
    bookmark->overlayString2 = note;
    to.bookmarkStore.push_back(bookmark);
}

TEST(NotesDocument, FieldsLoseCommasAndLineFeedsAsTheFormatWants) {
    struct Case {
        QString file, notes, notes2, line;
        bool hideExtension;
    };
    const std::vector<Case> cases{
        {u"a,b.mov"_s, u""_s, u""_s, u"ab,,,\r"_s, true},
        {u"a,b.mov"_s, u""_s, u""_s, u"ab.mov,,,\r"_s, false},
        {u"shot.v001.mov"_s, u"one\ntwo, three"_s, u"x,y"_s, u"shot.v001,one. two three,xy,\r"_s, true},
        {u".mov"_s, u"\"said\"\rdone"_s, u""_s, u".mov,\"said\"\rdone,,\r"_s, true},
        {u"plain"_s, u""_s, u"\n"_s, u"plain,,. ,\r"_s, true},
    };
    for (const Case& c : cases) {
        const auto item = movie(c.file, c.notes, c.notes2);
        EXPECT_EQ(createCSVDataForMovie(*item, options(false, c.hideExtension)), c.line);
    }
}

TEST(NotesDocument, BookmarkRowsStandUnderTheirColumnsSortedByFirstTimecodeText) {
    const auto item = movie(u"a.mov"_s, u"n"_s);
    item->setFlag(904);
    addBookmark(*item, u"00:00:10:00"_s, u"00:00:11:00"_s, 241, 265, u"x, y"_s, QString());
    addBookmark(*item, u"00:00:01:00"_s, u"00:00:01:00"_s, 25, 25, QString(), u"a,b"_s);
    addBookmark(*item, u"00:00:02:00"_s, u"00:00:03:00"_s, 49, 73, u"d"_s, u"e"_s);

    EXPECT_EQ(createCSVDataForMovie(*item, options(true)),
              u"a,n,,label 904,00:00:01:00,00:00:01:00,25,25,,a -b"
              "\r,,,,00:00:02:00,00:00:03:00,49,73,d,e"
              "\r,,,,00:00:10:00,00:00:11:00,241,265,x - y,\r"_s);
    // The new order stays on the movie.
    EXPECT_EQ(item->bookmarkStore.front()->firstFrame, 25);
    EXPECT_EQ(item->bookmarkStore.back()->firstFrame, 241);
}

TEST(NotesDocument, WithoutBookmarksToPrintTheirOrderStaysAndAMovieWithNoneEndsWithAComma) {
    const auto none = movie(u"a.mov"_s);
    EXPECT_EQ(createCSVDataForMovie(*none, options(true)), u"a,,,,\r"_s);

    const auto two = movie(u"b.mov"_s);
    addBookmark(*two, u"00:00:10:00"_s, u""_s, 2, 2, u""_s, u""_s);
    addBookmark(*two, u"00:00:01:00"_s, u""_s, 1, 1, u""_s, u""_s);
    EXPECT_EQ(createCSVDataForMovie(*two, options(false)), u"b,,,\r"_s);
    EXPECT_EQ(two->bookmarkStore.front()->firstFrame, 2);
}

TEST(NotesDocument, TheDocumentHasAnEmptyLineUnderItsHeaderAndIsCutToItsCharacterCount) {
    EXPECT_EQ(notesCsv({movie(u"a.mov"_s)}, options(false)), "Filename,Notes 1,Notes 2,Flag\r\ra,,,\r");
    EXPECT_TRUE(
        notesCsv({}, options(true))
            .endsWith("Bookmark Timecode End,Bookmark First Frame,Bookmark Last Frame,Bookmark Description,"
                      "Bookmark Note\r\r"));

    // Two characters of two bytes and one pair of four: four bytes more than units.
    const QByteArray bytes = notesCsv({movie(u"é.mov"_s, u"ü\U0001F600"_s, u"abcdef"_s)}, options(false));
    EXPECT_EQ(bytes, QByteArray("Filename,Notes 1,Notes 2,Flag\r\ré,ü\xF0\x9F\x98\x80,abcd"));
}

} // namespace
} // namespace daylark
