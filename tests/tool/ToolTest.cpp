#include "support/MovieMaker.h"
#include "support/Places.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

namespace {

using namespace daylark;

struct ToolRun {
    int status = -1;
    QByteArray out, err;
    [[nodiscard]] QJsonDocument json() const { return QJsonDocument::fromJson(out); }
    [[nodiscard]] QJsonArray array() const { return json().array(); }
    [[nodiscard]] QJsonObject object() const { return json().object(); }
};

ToolRun tool(const QStringList& arguments) {
    QProcess process;
    process.start(programFolder() + QStringLiteral("/daylark-tool"), arguments);
    process.waitForFinished(-1);
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

/// Real movies, made once: a folder "Day 1" with two of 30 and 24 frames.
class Tool : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        folder_ = new QTemporaryDir;
        QDir(folder_->path()).mkdir(QStringLiteral("Day 1"));
        MovieSpec spec;
        spec.path = file("Day 1/a_shot.mov");
        spec.rateNum = 25;
        spec.frames = 30;
        ASSERT_TRUE(makeMovie(spec));
        spec.path = file("Day 1/b_shot.mp4");
        spec.rateNum = 24000;
        spec.rateDen = 1001;
        spec.frames = 24;
        ASSERT_TRUE(makeMovie(spec));
    }
    static void TearDownTestSuite() { delete folder_; }

    static QString file(const char* name) { return folder_->filePath(QString::fromUtf8(name)); }
    static void makeSession(const QString& path) {
        const ToolRun run =
            tool({QStringLiteral("session"), QStringLiteral("new"), path, QStringLiteral("--playlist"),
                  QStringLiteral("Day 1"), file("Day 1"), QStringLiteral("--playlist"),
                  QStringLiteral("Selects"), file("Day 1/b_shot.mp4")});
        ASSERT_EQ(run.status, 0) << run.err.constData();
    }

private:
    static inline QTemporaryDir* folder_ = nullptr;
};

TEST_F(Tool, ProbePrintsBothRuleSetsAndFailsForWhatIsNoMovie) {
    const ToolRun run = tool({QStringLiteral("probe"), file("Day 1/a_shot.mov"), file("nothing.mov")});
    EXPECT_EQ(run.status, 1);
    ASSERT_EQ(run.array().size(), 2);
    const QJsonObject good = run.array()[0].toObject();
    EXPECT_EQ(good[u"filenameString"].toString(), QStringLiteral("a_shot.mov"));
    EXPECT_EQ(good[u"asset"][u"mMovieDurationFrames"].toInt(), 30);
    EXPECT_EQ(good[u"asset"][u"mMovieResolutionString"].toString(), QStringLiteral("320 x 180"));
    EXPECT_EQ(good[u"legacy"][u"mMovieDurationFrames"].toInt(), 30);
    EXPECT_EQ(good[u"legacy"][u"mMovieFPS"].toDouble(), 25.0);
    EXPECT_FALSE(run.array()[1].toObject()[u"error"].toString().isEmpty());
    EXPECT_TRUE(run.err.startsWith("daylark-tool: " + file("nothing.mov").toUtf8() + ": "));
    EXPECT_EQ(run.err.count('\n'), 1);
}

TEST_F(Tool, IndexAndFrameSpeakOfTheSamePictures) {
    const QJsonObject index = tool({QStringLiteral("index"), file("Day 1/b_shot.mp4")}).object();
    const QJsonArray frames = index[u"frames"].toArray();
    ASSERT_EQ(frames.size(), 24);
    EXPECT_TRUE(frames[0].toObject()[u"key"].toBool());
    for (qsizetype i = 1; i < frames.size(); ++i)
        EXPECT_GT(frames[i].toObject()[u"pts"].toDouble(), frames[i - 1].toObject()[u"pts"].toDouble());
    for (const int number : {1, 2, 13, 24}) {
        const QString out = file("frame.png");
        const ToolRun run =
            tool({QStringLiteral("frame"), file("Day 1/b_shot.mp4"), QString::number(number), out});
        ASSERT_EQ(run.status, 0) << run.err.constData();
        EXPECT_EQ(readBarCode(QImage(out)), number);
    }
    ASSERT_EQ(tool({QStringLiteral("frame"), file("Day 1/b_shot.mp4"), QStringLiteral("3"), file("small.png"),
                    QStringLiteral("--width"), QStringLiteral("160")})
                  .status,
              0);
    EXPECT_EQ(QImage(file("small.png")).size(), QSize(160, 90));
    EXPECT_EQ(
        tool({QStringLiteral("frame"), file("Day 1/b_shot.mp4"), QStringLiteral("25"), file("x.png")}).status,
        1);
}

TEST_F(Tool, TimecodePrintsASampleWithItsFieldsAndNothingForAMovieWithout) {
    MovieSpec spec;
    spec.path = file("coded.mov");
    spec.frames = 2;
    spec.bFrames = 0;
    spec.timecode = QStringLiteral("01:02:03:04");
    ASSERT_TRUE(makeMovie(spec));
    const QJsonObject expected{
        {QStringLiteral("hours"), 1},   {QStringLiteral("minutes"), 2},
        {QStringLiteral("seconds"), 3}, {QStringLiteral("frames"), 4},
        {QStringLiteral("flags"), 1},   {QStringLiteral("text"), QStringLiteral("01:02:03:04")}};
    EXPECT_EQ(tool({QStringLiteral("timecode"), spec.path}).array(), QJsonArray{expected});
    const ToolRun none = tool({QStringLiteral("timecode"), file("Day 1/a_shot.mov")});
    EXPECT_EQ(none.status, 0);
    EXPECT_TRUE(none.json().isArray() && none.array().isEmpty());
    EXPECT_EQ(tool({QStringLiteral("timecode"), file("nothing.mov")}).status, 1);
}

TEST_F(Tool, ThumbnailFollowsItsChoice) {
    ASSERT_EQ(tool({QStringLiteral("thumbnail"), file("Day 1/a_shot.mov"), file("last.png"),
                    QStringLiteral("--choice"), QStringLiteral("Last Frame")})
                  .status,
              0);
    const QImage last(file("last.png"));
    EXPECT_EQ(last.size(), QSize(100, 56));
    EXPECT_EQ(readBarCode(last), 30);
}

TEST_F(Tool, SessionsAreMadeShownAndEdited) {
    const QString session = file("day.dls"), edited = file("edited.dls");
    makeSession(session);
    const QJsonArray playlists =
        tool({QStringLiteral("session"), QStringLiteral("show"), session}).object()[u"playlists"].toArray();
    ASSERT_EQ(playlists.size(), 2);
    const QJsonArray movies = playlists[0].toObject()[u"movieList"].toArray();
    ASSERT_EQ(movies.size(), 2);
    EXPECT_EQ(movies[0].toObject().size(), 58 + 1) << "the archived fields and id";
    EXPECT_EQ(movies[0].toObject()[u"thumbnail"][u"image"].toString(), QStringLiteral("100 x 56"));
    EXPECT_EQ(movies[1].toObject()[u"mMovieDurationFrames"].toInt(), 24);

    ToolRun run = tool({QStringLiteral("session"), QStringLiteral("set"), session, QStringLiteral("--out"),
                        edited, QStringLiteral("--playlist"), QStringLiteral("1"), QStringLiteral("--item"),
                        QStringLiteral("2"), QStringLiteral("flagString=904"),
                        QStringLiteral("notes=One\nTwo, three"), QStringLiteral("gamma=1.5")});
    ASSERT_EQ(run.status, 0) << run.err.constData();
    run = tool({QStringLiteral("bookmark"), QStringLiteral("add"), edited, QStringLiteral("--out"), edited,
                QStringLiteral("--playlist"), QStringLiteral("1"), QStringLiteral("--item"),
                QStringLiteral("1"), QStringLiteral("--first"), QStringLiteral("3"),
                QStringLiteral("--duration"), QStringLiteral("5"), QStringLiteral("--overlay"),
                QStringLiteral("edge, left")});
    ASSERT_EQ(run.status, 0) << run.err.constData();

    const QJsonArray list = tool({QStringLiteral("session"), QStringLiteral("show"), edited})
                                .object()[u"playlists"]
                                .toArray()[0]
                                .toObject()[u"movieList"]
                                .toArray();
    const QJsonObject flagged = list[1].toObject(), marked = list[0].toObject();
    EXPECT_EQ(flagged[u"flag"][u"image"].toString(), QStringLiteral("flag_Red.png"));
    EXPECT_EQ(flagged[u"notes"].toString(), QStringLiteral("One\nTwo, three"));
    EXPECT_EQ(flagged[u"gradeIcon"][u"image"].toString(), QStringLiteral("dl-levelsActive-01.png"));
    const QJsonObject bookmark = marked[u"bookmarkStore"].toArray()[0].toObject();
    EXPECT_EQ(bookmark[u"lastFrame"].toInt(), 7);
    EXPECT_EQ(bookmark[u"lastTC"].toString(), QStringLiteral("00:00:00:06"));

    const QJsonObject listed =
        tool({QStringLiteral("session"), QStringLiteral("list"), edited}).array()[0].toObject();
    EXPECT_EQ(listed[u"name"].toString(), playlists[0].toObject()[u"name"].toString());
    const QJsonObject row = listed[u"items"].toArray()[1].toObject();
    EXPECT_EQ(row[u"filenameString"], flagged[u"filenameString"]);
    EXPECT_EQ(row[u"flagString"].toString(), QStringLiteral("Not Approved"));
    EXPECT_EQ(row[u"mMovieDurationFrames"].toString(), QStringLiteral("24"));
    EXPECT_EQ(row[u"notes"].toString(), QStringLiteral("One\nTwo, three"));
    EXPECT_TRUE(row[u"gradeIcon"].toBool());
    EXPECT_FALSE(row.contains(u"bookmarkStore")) << "nothing to say";

    const QString notes = file("notes.csv");
    run = tool({QStringLiteral("notes"), edited, QStringLiteral("--playlist"), QStringLiteral("1"),
                QStringLiteral("--format"), QStringLiteral("csv"), QStringLiteral("--out"), notes});
    ASSERT_EQ(run.status, 0) << run.err.constData();
    QFile csv(notes);
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
    EXPECT_EQ(csv.readAll(),
              QByteArray("Filename,Notes 1,Notes 2,Flag,Bookmark Timecode Start,Bookmark Timecode End,"
                         "Bookmark First Frame,Bookmark Last Frame,Bookmark Description,Bookmark Note\r\r"
                         "a_shot,,,,00:00:00:02,00:00:00:06,3,7,edge - left,\r"
                         "b_shot,One. Two three,,Not Approved,\r"));

    const QJsonArray formats = tool({QStringLiteral("notes"), QStringLiteral("--formats")}).array();
    ASSERT_FALSE(formats.isEmpty());
    const QJsonObject first = formats[0].toObject();
    EXPECT_EQ(first[u"name"].toString(), QStringLiteral("csv"));
    EXPECT_EQ(first[u"title"].toString(), QStringLiteral("CSV (Comma Separated Values)"));
    EXPECT_EQ(first[u"extension"].toString(), QStringLiteral("csv"));
    EXPECT_EQ(tool({QStringLiteral("notes"), edited}).status, 2) << "neither list nor playlist, format and file";
}

TEST_F(Tool, ABookmarkAddedHasTheTimecodeOfTheMoviesTrack) {
    QDir(file("")).mkdir(QStringLiteral("Coded"));
    MovieSpec spec;
    spec.path = file("Coded/coded.mov");
    spec.frames = 48;
    spec.timecode = QStringLiteral("01:00:00:00");
    ASSERT_TRUE(makeMovie(spec));
    const QString session = file("coded.dls");
    ToolRun run = tool({QStringLiteral("session"), QStringLiteral("new"), session,
                        QStringLiteral("--playlist"), QStringLiteral("Coded"), file("Coded")});
    ASSERT_EQ(run.status, 0) << run.err.constData();
    run = tool({QStringLiteral("bookmark"), QStringLiteral("add"), session, QStringLiteral("--out"), session,
                QStringLiteral("--playlist"), QStringLiteral("1"), QStringLiteral("--item"),
                QStringLiteral("1"), QStringLiteral("--first"), QStringLiteral("25"),
                QStringLiteral("--duration"), QStringLiteral("3")});
    ASSERT_EQ(run.status, 0) << run.err.constData();
    const QJsonObject movie = tool({QStringLiteral("session"), QStringLiteral("show"), session})
                                  .object()[u"playlists"][0][u"movieList"][0]
                                  .toObject();
    const QJsonObject bookmark = movie[u"bookmarkStore"][0].toObject();
    EXPECT_EQ(bookmark[u"firstTC"].toString(), QStringLiteral("01:00:01:00"));
    EXPECT_EQ(bookmark[u"lastTC"].toString(), QStringLiteral("01:00:01:02"));
}

TEST_F(Tool, SnapshotsHoldWhatTheViewerWouldShow) {
    makeSession(file("stills.dls"));
    const auto snap = [](const char* out, const QStringList& more) {
        const ToolRun run =
            tool(QStringList{QStringLiteral("snapshot"), file("stills.dls"), QStringLiteral("--playlist"),
                             QStringLiteral("1"), QStringLiteral("--item"), QStringLiteral("1"),
                             QStringLiteral("--frame"), QStringLiteral("17"), QStringLiteral("--size"),
                             QStringLiteral("800x360"), QStringLiteral("--out"), file(out)} +
                 more);
        EXPECT_EQ(run.status, 0) << run.err.constData();
        return QImage(file(out));
    };
    const QImage plain = snap("still.png", {});
    ASSERT_EQ(plain.size(), QSize(800, 360));
    EXPECT_EQ(plain.pixelColor(40, 180), QColor(Qt::black)); // beside the picture
    EXPECT_EQ(readBarCode(plain.copy(80, 0, 640, 360)), 17);
    const QImage mirrored = snap("mirrored.tif", {QStringLiteral("--defaults"), QStringLiteral("mirrorY=1")});
    EXPECT_EQ(readBarCode(mirrored.copy(80, 0, 640, 360).mirrored(true, false)), 17);
    const QImage masked =
        snap("masked.png", {QStringLiteral("--defaults"), QStringLiteral("showMask=1"),
                            QStringLiteral("--defaults"), QStringLiteral("movieMaskOpacity=1")});
    EXPECT_EQ(masked.pixelColor(400, 20), QColor(Qt::black));
    EXPECT_EQ(masked.pixelColor(400, 180), plain.pixelColor(400, 180));
    EXPECT_EQ(tool({QStringLiteral("snapshot"), file("stills.dls"), QStringLiteral("--playlist"),
                    QStringLiteral("1"), QStringLiteral("--item"), QStringLiteral("1"),
                    QStringLiteral("--frame"), QStringLiteral("17"), QStringLiteral("--size"),
                    QStringLiteral("0x10"), QStringLiteral("--out"), file("none.png")})
                  .status,
              1);
}

TEST_F(Tool, WrongUsageIsTwoAndBadFilesAreOne) {
    EXPECT_EQ(tool({}).status, 2);
    EXPECT_EQ(tool({QStringLiteral("frame"), file("Day 1/a_shot.mov")}).status, 2);
    EXPECT_EQ(tool({QStringLiteral("session"), QStringLiteral("show"), file("Day 1/a_shot.mov")}).status, 1);
    EXPECT_EQ(tool({QStringLiteral("--help")}).status, 0);
    makeSession(file("few.dls"));
    EXPECT_EQ(tool({QStringLiteral("session"), QStringLiteral("set"), file("few.dls"),
                    QStringLiteral("--out"), file("x.dls"), QStringLiteral("--playlist"), QStringLiteral("9"),
                    QStringLiteral("--item"), QStringLiteral("1"), QStringLiteral("flagString=901")})
                  .status,
              1);
    EXPECT_FALSE(QFile::exists(file("x.dls")));
}

TEST_F(Tool, BenchSessionReadsBackWhatItWrote) {
    const QJsonObject figures =
        tool({QStringLiteral("bench"), QStringLiteral("session"), QStringLiteral("50")}).object();
    for (const char* key : {"bytes", "saveSeconds", "loadSeconds", "parseSeconds", "peakMemoryMiB"})
        EXPECT_GT(figures[QLatin1String(key)].toDouble(), 0) << key;
}

TEST_F(Tool, LinksAreWrittenAsTheLibraryCopiesThemAndOpenedAsItOpensThem) {
    const QString session = file("links.dls");
    makeSession(session);
    const ToolRun list = tool({QStringLiteral("link"), session, QStringLiteral("--playlist"), QStringLiteral("1")});
    ASSERT_EQ(list.status, 0) << list.err.constData();
    const QByteArray folder = file("Day 1").toUtf8();
    QByteArray expected = "daylark://addplaylist/Day 1" + folder + "/a_shot.mov," + folder + "/b_shot.mp4,\n";
    EXPECT_EQ(list.out, expected.replace(' ', "%20"));
    const ToolRun items = tool({QStringLiteral("link"), session, QStringLiteral("--playlist"), QStringLiteral("1"),
                                QStringLiteral("--items"), QStringLiteral("2,1")});
    EXPECT_EQ(items.out, "daylark://link" + folder + "/b_shot.mp4\rdaylark://link" + folder + "/a_shot.mov\r");

    const QString out = file("opened.dls");
    const auto open = [&](const QString& link) {
        return tool({QStringLiteral("open-link"), link, QStringLiteral("--session"), session, QStringLiteral("--out"), out});
    };
    const ToolRun opened = open(QString::fromUtf8(list.out));
    ASSERT_EQ(opened.status, 0) << opened.err.constData();
    EXPECT_TRUE(opened.object()[u"alerts"].toArray().isEmpty());
    EXPECT_EQ(opened.object()[u"playlist"].toString(), QStringLiteral("Day 1"));
    const QJsonArray playlists =
        tool({QStringLiteral("session"), QStringLiteral("show"), out}).object()[u"playlists"].toArray();
    ASSERT_EQ(playlists.size(), 3);
    EXPECT_EQ(playlists[2][u"name"].toString(), QStringLiteral("Day 1"));
    ASSERT_EQ(playlists[2][u"movieList"].toArray().size(), 2);
    EXPECT_EQ(playlists[2][u"movieList"][0][u"mMovieDurationFrames"].toInt(), 30) << "probed like any other";
    EXPECT_EQ(playlists[2][u"movieList"][1][u"sortOrder"].toInt(), 2);

    const ToolRun partly = open(QStringLiteral("daylark://link%1,%2,%2x.mov").arg(file("Day 1/a_shot.mov"), file("gone.mov")));
    EXPECT_EQ(partly.object()[u"alerts"].toArray(), QJsonArray{QStringLiteral("Some media files in this link weren't found")});
    EXPECT_EQ(partly.object()[u"added"].toArray(), QJsonArray{file("Day 1/a_shot.mov")});
    const ToolRun wrong = open(QStringLiteral("daylark://remove/v/a.mov"));
    EXPECT_EQ(wrong.object()[u"alerts"].toArray(), QJsonArray{QStringLiteral("An invalid URL was passed to Daylark")});
    EXPECT_EQ(tool({QStringLiteral("session"), QStringLiteral("show"), out}).object()[u"playlists"].toArray().size(), 2);
}

} // namespace
