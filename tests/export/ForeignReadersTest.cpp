#include "export/notes/NotesFormat.h"
#include "preferences/Preferences.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextDocumentFragment>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

/// What the notes say to programs that aren't ours.
class ForeignReadersTest : public ::testing::Test {
protected:
    ForeignReadersTest() {
        const auto item = std::make_shared<Movie>(u"/dailies/sh010_comp,v2.mov"_s);
        item->setFlag(904);
        AttributedString notes;
        notes.append(u"Sun too warm; "_s);
        TextAttributes loud;
        loud.bold = loud.italic = loud.underline = true;
        loud.colour = Qt::green;
        loud.pointSize = 18;
        loud.fontFamily = u"DejaVu Serif"_s;
        notes.append(u"keep {sky} \\ edge"_s, loud);
        notes.append(u"\nNächste Zeile: 日本 \U0001F3AC, ok\tend"_s);
        item->notes = notes;
        item->notes2 = AttributedString(u"=SUM(A1)\r\n\"quoted\", yes"_s);
        const auto bookmark = std::make_shared<Bookmark>();
        bookmark->firstTC = u"01:00:00:05"_s;
        bookmark->lastTC = u"01:00:00:09"_s;
        bookmark->firstFrame = 5;
        bookmark->lastFrame = 9;
        bookmark->overlayString = u"Rand, links €"_s;
        bookmark->overlayString2 = u"+1 stop"_s;
        const auto later = std::make_shared<Bookmark>(*bookmark);
        later->firstTC = u"01:00:00:01"_s;
        later->overlayString = later->overlayString2 = QString();
        item->bookmarkStore.push_back(bookmark);
        item->bookmarkStore.push_back(later);
        movies = {item, std::make_shared<Movie>(u"/dailies/plain.mov"_s)};
    }
    QString write(const QString& format) {
        const NotesFormats formats;
        const NotesFormat& writer = *formats.named(format);
        const QString path = QDir(folder.path()).filePath(u"notes."_s + writer.extension());
        QFile file(path);
        const QByteArray bytes = writer.write(notesReport(movies, preferences, writer.bookmarkOrder()));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return path;
    }
    static QByteArray outputOf(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(120000)) << qPrintable(program);
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
        return process.readAllStandardOutput();
    }
    QByteArray officeReads(const QString& path, const QString& as, const QString& extension) const {
        outputOf(u"soffice"_s, {u"-env:UserInstallation=file://"_s + folder.path() + u"/office"_s, u"--headless"_s,
                                u"--convert-to"_s, as, u"--outdir"_s, folder.path(), path});
        QFile file(QDir(folder.path()).filePath(u"notes."_s + extension));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    Preferences preferences;
    QTemporaryDir folder;
    NotesMovies movies;
};

TEST_F(ForeignReadersTest, ARichTextIsTheSameToAnOfficeProgram) {
    if (QStandardPaths::findExecutable(u"soffice"_s).isEmpty()) GTEST_SKIP() << "NO LIBREOFFICE ON THIS MACHINE";
    const QString path = write(u"rtf"_s);
    QString text = QString::fromUtf8(officeReads(path, u"txt:Text (encoded):UTF8"_s, u"txt"_s));
    text.remove(QChar(QChar::ByteOrderMark)).remove(QChar(0x2006)); // which it puts beside doubled blanks
    const QString expected = u"Notes\nNotes 1\nNotes 2\n\n\n"
                             "sh010_compv2  -  Not Approved\n"
                             "Sun too warm; keep {sky} \\ edge\nNächste Zeile: 日本 \U0001F3AC, ok\tend\n"
                             "=SUM(A1)\n\"quoted\", yes\n"
                             "01:00:00:05 - 01:00:00:09  :  Frames 5 - 9  :  Rand, links €  :  (+1 stop)\n"
                             "01:00:00:01 - 01:00:00:09  :  Frames 5 - 9\n\n"
                             "plain\n\n"_s;
    EXPECT_EQ(text.trimmed().toStdString(), expected.trimmed().toStdString());

    const QString page = QString::fromUtf8(officeReads(path, u"html"_s, u"html"_s)).simplified();
    const auto run = [&page](const QString& words) { // the tags right before these words
        const qsizetype at = page.indexOf(words);
        EXPECT_GE(at, 0) << qPrintable(words);
        return page.mid(page.lastIndexOf(u"<p"_s, at), at - page.lastIndexOf(u"<p"_s, at)).toLower();
    };
    EXPECT_TRUE(run(u"Sun too warm"_s).contains(u"#ff0000"_s));
    const QString loud = run(u"keep {sky}"_s).mid(run(u"keep {sky}"_s).indexOf(u"warm"_s));
    for (const QString& tag : {u"<b>"_s, u"<i>"_s, u"<u>"_s, u"dejavu serif"_s, u"18pt"_s, u"#ff0000"_s})
        EXPECT_TRUE(loud.contains(tag)) << qPrintable(tag) << " in " << qPrintable(loud);
    EXPECT_FALSE(page.contains(u"#00ff00"_s)) << "the notes' own colour lies under the red";
    EXPECT_TRUE(run(u"=SUM"_s).contains(u"#0000ff"_s));
    EXPECT_TRUE(run(u"01:00:00:05"_s).contains(u"#555555"_s));
    for (const QString& tag : {u"<b>"_s, u"<u>"_s, u"12pt"_s})
        EXPECT_TRUE(run(u"sh010_compv2"_s).contains(tag)) << qPrintable(tag);
    EXPECT_TRUE(run(u"Notes</b>"_s).contains(u"14pt"_s));
    EXPECT_TRUE(officeReads(path, u"pdf"_s, u"pdf"_s).startsWith("%PDF"));
}

TEST_F(ForeignReadersTest, ARichTextIsTheSameToAConverter) {
    if (QStandardPaths::findExecutable(u"unrtf"_s).isEmpty()) GTEST_SKIP() << "NO UNRTF ON THIS MACHINE";
    const QString page = QString::fromUtf8(outputOf(u"unrtf"_s, {u"--html"_s, u"--quiet"_s, write(u"rtf"_s)}));
    const QString text = QTextDocumentFragment::fromHtml(page).toPlainText().simplified();
    for (const QString& words : {u"sh010_compv2 - Not Approved"_s, u"keep {sky} \\ edge Nächste Zeile: 日本"_s, u", ok"_s,
                                 u"Rand, links € : (+1 stop)"_s})
        EXPECT_TRUE(text.contains(words)) << qPrintable(words) << " in " << qPrintable(text);
    EXPECT_TRUE(page.contains(u"<b>"_s) && page.contains(u"<i>"_s) && page.contains(u"<u>"_s));
    EXPECT_TRUE(page.contains(u"color=\"#ff0000\""_s) && page.contains(u"color=\"#0000ff\""_s));
}

TEST_F(ForeignReadersTest, ATableOfTodayIsTheSameToAScript) {
    const QByteArray script = "import csv,json,sys\n"
                              "rows=list(csv.reader(open(sys.argv[1],encoding='utf-8-sig',newline=''),strict=True))\n"
                              "print(json.dumps(rows))";
    const auto rowsRead = [&] {
        return QJsonDocument::fromJson(outputOf(u"python3"_s, {u"-c"_s, QString::fromUtf8(script), write(u"csv-utf8"_s)}))
            .array();
    };
    movies[0]->filenameString = u"-sh010,é.mov"_s;
    movies[1]->filenameString = u"@cmd"_s;
    movies[1]->notes = AttributedString(QString(u"a"_s + QChar(u'\0') + u"b"_s));
    const QJsonArray rows = rowsRead();
    ASSERT_EQ(rows.size(), 4) << "a row a bookmark, one for an item without";
    EXPECT_EQ(rows[0], (QJsonArray{u"Filename"_s, u"Notes 1"_s, u"Notes 2"_s, u"Flag"_s, u"Bookmark Timecode Start"_s,
                                   u"Bookmark Timecode End"_s, u"Bookmark First Frame"_s, u"Bookmark Last Frame"_s,
                                   u"Bookmark Description"_s, u"Bookmark Note"_s}));
    const QString notes = movies[0]->notes->string();
    const QJsonArray own{u"'-sh010,é"_s, notes, u"'=SUM(A1)\r\n\"quoted\", yes"_s, u"Not Approved"_s};
    for (int row : {1, 2})
        for (int cell = 0; cell < 4; ++cell)
            EXPECT_EQ(rows[row][cell], own[cell]) << row << " " << cell;
    EXPECT_EQ(rows[1][4].toString(), u"01:00:00:01"_s) << "in the order of their timecodes";
    EXPECT_EQ(rows[2][8].toString(), u"Rand, links €"_s);
    EXPECT_EQ(rows[2][9].toString(), u"'+1 stop"_s);
    EXPECT_EQ(rows[3], (QJsonArray{u"'@cmd"_s, u"ab"_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s}));
    preferences.printBookmarksInNotes.set(false);
    EXPECT_EQ(rowsRead().size(), 3);
    EXPECT_EQ(rowsRead()[0].toArray().size(), 4);
    EXPECT_FALSE(NotesFormats().named(u"csv-utf8"_s)->bookmarkOrderStays());
}

} // namespace
} // namespace daylark
