#include "export/notes/NotesFormat.h"
#include "export/notes/PlaylistManifest.h"
#include "preferences/Preferences.h"

#include <gtest/gtest.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

class NotesTest : public ::testing::Test {
protected:
    NotesTest() {
        preferences.statusNames[3].set(u"label 904"_s);
        preferences.printBookmarksInNotes.set(false);
    }
    QByteArray csv(const NotesMovies& movies) {
        const NotesFormat& format = *formats.named(u"csv"_s);
        return format.write(notesReport(movies, preferences, format.bookmarkOrder()));
    }
    /// What stands under the header.
    QByteArray lines(const NotesMovies& movies) {
        const QByteArray whole = csv(movies);
        return whole.mid(whole.indexOf("\r\r") + 2);
    }
    Preferences preferences;
    const NotesFormats formats;
};

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

TEST_F(NotesTest, FieldsLoseCommasAndLineFeedsAsTheFormatWants) {
    struct Case {
        QString file, notes, notes2;
        QByteArray line;
        bool hideExtension;
    };
    const std::vector<Case> cases{
        {u"a,b.mov"_s, u""_s, u""_s, "ab,,,\r", true},
        {u"a,b.mov"_s, u""_s, u""_s, "ab.mov,,,\r", false},
        {u"shot.v001.mov"_s, u"one\ntwo, three"_s, u"x,y"_s, "shot.v001,one. two three,xy,\r", true},
        {u".mov"_s, u"\"said\"\rdone"_s, u""_s, ".mov,\"said\"\rdone,,\r", true},
        {u"plain"_s, u""_s, u"\n"_s, "plain,,. ,\r", true},
    };
    for (const Case& c : cases) {
        const auto item = movie(c.file, c.notes, c.notes2);
        preferences.hideFileExtensionInNotes.set(c.hideExtension);
        EXPECT_EQ(lines({item}), c.line);
    }
}

TEST_F(NotesTest, BookmarkRowsStandUnderTheirColumnsSortedByFirstTimecodeText) {
    const auto item = movie(u"a.mov"_s, u"n"_s);
    item->setFlag(904);
    addBookmark(*item, u"00:00:10:00"_s, u"00:00:11:00"_s, 241, 265, u"x, y"_s, QString());
    addBookmark(*item, u"00:00:01:00"_s, u"00:00:01:00"_s, 25, 25, QString(), u"a,b"_s);
    addBookmark(*item, u"00:00:02:00"_s, u"00:00:03:00"_s, 49, 73, u"d"_s, u"e"_s);

    preferences.printBookmarksInNotes.set(true);
    EXPECT_EQ(lines({item}), "a,n,,label 904,00:00:01:00,00:00:01:00,25,25,,a -b"
                             "\r,,,,00:00:02:00,00:00:03:00,49,73,d,e"
                             "\r,,,,00:00:10:00,00:00:11:00,241,265,x - y,\r");
    EXPECT_EQ(item->bookmarkStore.front()->firstFrame, 241) << "a writer changes no record";
    EXPECT_TRUE(formats.named(u"csv"_s)->bookmarkOrderStays());
}

TEST_F(NotesTest, AMovieWithoutBookmarksEndsWithACommaWhereTheyArePrinted) {
    const auto none = movie(u"a.mov"_s);
    const auto two = movie(u"b.mov"_s);
    addBookmark(*two, u"00:00:10:00"_s, u""_s, 2, 2, u""_s, u""_s);
    EXPECT_EQ(lines({none, two}), "a,,,\rb,,,\r");
    preferences.printBookmarksInNotes.set(true);
    EXPECT_EQ(lines({none}), "a,,,,\r");
}

TEST_F(NotesTest, TheDocumentHasAnEmptyLineUnderItsHeaderAndIsCutToItsCharacterCount) {
    EXPECT_EQ(csv({movie(u"a.mov"_s)}), "Filename,Notes 1,Notes 2,Flag\r\ra,,,\r");

    // Two characters of two bytes and one pair of four: four bytes more than units.
    const QByteArray bytes = csv({movie(u"é.mov"_s, u"ü\U0001F600"_s, u"abcdef"_s)});
    EXPECT_EQ(bytes, QByteArray("Filename,Notes 1,Notes 2,Flag\r\ré,ü\xF0\x9F\x98\x80,abcd"));

    preferences.printBookmarksInNotes.set(true);
    EXPECT_TRUE(csv({}).endsWith("Bookmark Timecode End,Bookmark First Frame,Bookmark Last Frame,"
                                 "Bookmark Description,Bookmark Note\r\r"));
}

TEST_F(NotesTest, AFormatIsFoundByItsNameAndByTheTitleThatIsStored) {
    for (const auto& format : formats.all()) {
        EXPECT_EQ(formats.named(format->name()), format.get());
        EXPECT_EQ(formats.titled(format->title()), format.get());
        EXPECT_FALSE(format->extension().isEmpty() || format->extension().startsWith(u'.'));
    }
    EXPECT_EQ(formats.titled(u"RTF (Rich Text)"_s), formats.named(u"rtf"_s)) << "as it is stored everywhere";
    EXPECT_EQ(formats.titled(preferences.notesExportFormat()), formats.named(u"csv"_s)) << "the first format";
    EXPECT_EQ(formats.named(u"CSV"_s), nullptr);
    EXPECT_EQ(formats.titled(QString()), nullptr);
}

TEST_F(NotesTest, ARichTextHoldsUnitsBracesAndLinesThatItsReadersUnderstand) {
    AttributedString notes;
    TextAttributes serif;
    serif.fontFamily = u"Söhne;{1}"_s;
    notes.append(u"é\U0001F3AC"_s, serif);
    notes.append(QString(u"half "_s + QChar(0xD83C) + u"\r\nb\rc\nd"_s + QChar(QChar::ParagraphSeparator) + u"e"_s));
    const auto item = movie(u"a.mov"_s);
    item->notes = notes;
    addBookmark(*item, u"2"_s, u"2"_s, 2, 2, u""_s, QString()); // an empty description is one
    addBookmark(*item, u"1"_s, u"1"_s, 1, 1, QString(), QString());
    const NotesFormat& rtf = *formats.named(u"rtf"_s);
    EXPECT_FALSE(rtf.bookmarkOrderStays());
    preferences.printBookmarksInNotes.set(true);
    const QByteArray bytes = rtf.write(notesReport({item}, preferences, rtf.bookmarkOrder()));
    EXPECT_TRUE(bytes.startsWith("{\\rtf1\\ansi") && bytes.endsWith("}\n"));
    EXPECT_TRUE(bytes.contains("{\\f1\\fnil\\fcharset0 S\\u246\\'3fhne\\{1\\};}")) << bytes.constData();
    EXPECT_TRUE(bytes.contains("{\\f1\\fs24\\cf1 \\u233\\'3f\\u-10180\\'3f\\u-8276\\'3f}")) << bytes.constData();
    EXPECT_TRUE(bytes.contains("half \\u-3\\'3f\\par\nb\\par\nc\\par\nd\\par\ne}"));
    EXPECT_TRUE(bytes.contains("{\\f0\\fs24\\cf3 2 - 2  :  Frames 2 - 2  :  }\\par\n"
                               "{\\f0\\fs24\\cf3 1 - 1  :  Frames 1 - 1}\\par\n\\par\n"))
        << "in stored order";
    EXPECT_EQ(std::count_if(bytes.begin(), bytes.end(), [](char c) { return uchar(c) >= 0x7f; }), 0);
    preferences.printBookmarksInNotes.set(false);
    EXPECT_FALSE(rtf.write(notesReport({item}, preferences, rtf.bookmarkOrder())).contains("Frames"));
}

TEST_F(NotesTest, TheProductionsNumbersStandBesideTheCountedOnesWhereAFormatHasRoom) {
    preferences.printBookmarksInNotes.set(true);
    const auto plain = movie(u"a.mov"_s), own = movie(u"b.mov"_s), run = movie(u"sh010.1001.exr"_s);
    own->firstFrameNumber = Number(qint64(86400));
    run->frameRun = MovieRun{{u"sh010."_s, u".exr"_s, 4, false, 1001, 1099, 2}, {}, false, {}};
    for (const auto& item : {plain, own, run})
        addBookmark(*item, u"1"_s, u"2"_s, 10, 12, u"d"_s, u"n"_s);
    const auto written = [this](const QString& name, const NotesMovies& movies) {
        const NotesFormat& format = *formats.named(name);
        NotesReport report = notesReport(movies, preferences, format.bookmarkOrder());
        readNumbersByTimecode(report);
        return format.write(report);
    };
    // Compared byte for byte with those of other makers: neither numbers nor the run's own name.
    EXPECT_EQ(lines({plain, own, run}), "a,,,,1,2,10,12,d,n\rb,,,,1,2,10,12,d,n\rsh010.1001,,,,1,2,10,12,d,n\r");
    const QByteArray table = written(u"csv-utf8"_s, {plain, own, run});
    EXPECT_TRUE(table.contains("\"Bookmark Note\",\"Bookmark First Prod\",\"Bookmark Last Prod\"\r\n"));
    EXPECT_TRUE(table.contains("\"10\",\"12\",\"d\",\"n\",\"\",\"\"\r\n")) << table.constData();
    EXPECT_TRUE(table.contains("\"10\",\"12\",\"d\",\"n\",\"86409\",\"86411\"\r\n"));
    EXPECT_TRUE(table.contains("\"sh010.1001-1099x2#\"")) << "called as people read it";
    EXPECT_TRUE(table.contains("\"1019\",\"1023\"\r\n")) << "every second number";
    EXPECT_FALSE(written(u"csv-utf8"_s, {plain}).contains("Prod")) << "as it always was";
    const QByteArray document = written(u"rtf"_s, {plain, own, run});
    EXPECT_TRUE(document.contains("1 - 2  :  Frames 10 - 12  :  d  :  (n)}"));
    EXPECT_TRUE(document.contains("Frames 10 - 12  :  Prod 86409 - 86411  :  d  :  (n)}")) << document.constData();

    preferences.firstFrameNumber.set(FirstFrameNumber::other);
    preferences.otherFirstFrameNumber.set(101);
    EXPECT_TRUE(written(u"rtf"_s, {plain}).contains("Frames 10 - 12  :  Prod 110 - 112"));
    preferences.firstFrameNumber.set(FirstFrameNumber::timecode);
    EXPECT_FALSE(written(u"rtf"_s, {plain}).contains("Prod")) << "its file is not there";
}

TEST(PlaylistManifest, ListsVersionsInTheirOrderAndCleansNothing) {
    EXPECT_EQ(playlistManifest({u"a.mov"_s, u"shot,01.v2.mov"_s, u".mov"_s}, u"Day 1"_s, u"Review"_s),
              "Review Order,Version Name,Playlist Name,Session Name\r"
              "1,a,Day 1,Review\r2,shot,01.v2,Day 1,Review\r3,.mov,Day 1,Review\r");
    EXPECT_EQ(playlistManifest({}, u"D"_s, u"R"_s), "Review Order,Version Name,Playlist Name,Session Name\r");
    const QByteArray cut = playlistManifest({u"é.mov"_s}, u"Tag"_s, u"Größe"_s);
    EXPECT_TRUE(cut.endsWith("\r1,\xc3\xa9,Tag,Gr\xc3\xb6\xc3")) << "as many bytes as characters";
}

} // namespace
} // namespace daylark
