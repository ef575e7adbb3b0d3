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

TEST_F(Tool, ItemsNumberedByTimecodeSayTheirNumber) {
    MovieSpec spec;
    spec.path = file("numbered.mov");
    spec.rateNum = 24;
    spec.frames = 5;
    spec.timecode = QStringLiteral("00:00:41:17");
    ASSERT_TRUE(makeMovie(spec));
    const QString session = file("numbered.dls"), byTimecode = QStringLiteral("firstFrameNumber=Timecode");
    ASSERT_EQ(tool({QStringLiteral("session"), QStringLiteral("new"), session, QStringLiteral("--playlist"),
                    QStringLiteral("One"), spec.path, file("Day 1/a_shot.mov")})
                  .status,
              0);
    const QString field = QStringLiteral("firstProductionFrame");
    const auto numbersOf = [&](const QStringList& arguments, const QString& movies, bool isSession) {
        const ToolRun run = tool(arguments);
        const QJsonArray playlists = isSession ? run.object()[QStringLiteral("playlists")].toArray() : run.array();
        const QJsonArray items = playlists.last().toObject()[movies].toArray();
        return QList<int>{items.at(0).toObject()[field].toInt(-1), items.at(1).toObject()[field].toInt(-1)};
    };
    const QStringList shown{QStringLiteral("session"), QStringLiteral("show"), session},
        listed{QStringLiteral("session"), QStringLiteral("list"), session}, wish{QStringLiteral("--defaults"), byTimecode};
    EXPECT_EQ(numbersOf(wish + shown, QStringLiteral("movieList"), true), (QList<int>{1001, -1}));
    EXPECT_EQ(numbersOf(wish + listed, QStringLiteral("items"), false), (QList<int>{1001, -1}));
    EXPECT_EQ(numbersOf(shown, QStringLiteral("movieList"), true), (QList<int>{-1, -1})); // counted from 1
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

TEST_F(Tool, EveryNotesFormatAndTheManifestAreWritten) {
    const QString session = file("formats.dls");
    makeSession(session);
    const auto written = [&](const QStringList& command, const char* name) {
        const ToolRun run = tool(command + QStringList{QStringLiteral("--out"), file(name)});
        EXPECT_EQ(run.status, 0) << run.err.constData();
        QFile out(file(name));
        return out.open(QIODevice::ReadOnly) ? out.readAll() : QByteArray();
    };
    const QStringList notes{QStringLiteral("notes"), session, QStringLiteral("--playlist"), QStringLiteral("1"),
                            QStringLiteral("--format")};
    EXPECT_TRUE(written(notes + QStringList{QStringLiteral("rtf")}, "n.rtf").startsWith("{\\rtf1"));
    EXPECT_TRUE(written(notes + QStringList{QStringLiteral("csv-utf8")}, "n.csv").contains("\r\n\"b_shot\",\"\""));
    const QStringList manifest{QStringLiteral("manifest"), session, QStringLiteral("--playlist"), QStringLiteral("1"),
                               QStringLiteral("--title"), QStringLiteral("Week 47")};
    EXPECT_EQ(written(manifest, "m.csv"), "Review Order,Version Name,Playlist Name,Session Name\r"
                                          "1,a_shot,Day 1,Week 47\r2,b_shot,Day 1,Week 47\r");
}

TEST_F(Tool, RelinkFindsWhatWasMovedAndSaysWhatTheLibrarySays) {
    const QString session = file("moving.dls"), out = file("moved.dls");
    QDir(file("")).mkpath(QStringLiteral("Shots/a"));
    const QString first = file("Shots/a/first.mov"), second = file("Shots/a/second.mov");
    ASSERT_TRUE(QFile::copy(file("Day 1/a_shot.mov"), first) && QFile::copy(file("Day 1/a_shot.mov"), second));
    ASSERT_EQ(tool({QStringLiteral("session"), QStringLiteral("new"), session, QStringLiteral("--playlist"),
                    QStringLiteral("Shots"), first, second, QStringLiteral("--playlist"), QStringLiteral("Other"),
                    file("Day 1/b_shot.mp4")})
                  .status,
              0);
    const auto relink = [&](const QStringList& more) {
        const ToolRun run = tool(QStringList{QStringLiteral("relink"), session, QStringLiteral("--root"), file("Attic"),
                                             QStringLiteral("--out"), out} + more);
        EXPECT_EQ(run.status, 0) << run.err.constData();
        return run.object();
    };
    QDir(file("")).mkpath(QStringLiteral("Attic/deep"));
    EXPECT_EQ(relink({})[u"title"].toString(), QStringLiteral("There Are No Missing Files"));
    EXPECT_EQ(relink({QStringLiteral("--playlist"), QStringLiteral("1")})[u"title"].toString(),
              QStringLiteral("No Files Are Missing"));
    ASSERT_TRUE(QFile::rename(first, file("Attic/deep/first.mov")) && QFile::remove(second));
    const QJsonObject some = relink({});
    EXPECT_EQ(some[u"found"].toInt(), 1);
    EXPECT_EQ(some[u"missing"].toInt(), 2);
    EXPECT_EQ(some[u"title"].toString(), QStringLiteral("Some Files Found"));
    EXPECT_EQ(some[u"text"].toString(),
              QStringLiteral("1 matching file has been relinked.  1 file was not found."));
    const auto pathsIn = [&] {
        QStringList paths;
        const QJsonObject shown = tool({QStringLiteral("session"), QStringLiteral("show"), out}).object();
        for (const QJsonValue& playlist : shown[u"playlists"].toArray())
            for (const QJsonValue& movie : playlist[u"movieList"].toArray())
                paths << movie[u"filepathString"].toString();
        return paths;
    };
    EXPECT_EQ(pathsIn(), (QStringList{file("Attic/deep/first.mov"), second, file("Day 1/b_shot.mp4")}));
    ASSERT_TRUE(QFile::copy(file("Day 1/b_shot.mp4"), file("Attic/b_shot.mp4")));
    EXPECT_EQ(relink({QStringLiteral("--playlist"), QStringLiteral("2"), QStringLiteral("--force")})[u"found"].toInt(), 1);
    EXPECT_EQ(pathsIn(), (QStringList{first, second, file("Attic/b_shot.mp4")}));
    EXPECT_EQ(tool({QStringLiteral("relink"), session, QStringLiteral("--root"), file("none"), QStringLiteral("--out"), out})
                  .status,
              1);
}

TEST_F(Tool, GatherAndBundleCopyAndSayWhatTheyDidAndWhatNot) {
    makeSession(file("copies.dls"));
    const QStringList gather{QStringLiteral("gather"), file("copies.dls"), QStringLiteral("--playlist"), QStringLiteral("1"),
                             QStringLiteral("--to"), file("gathered")};
    const ToolRun first = tool(gather);
    ASSERT_EQ(first.status, 0) << first.err.constData();
    EXPECT_EQ(first.object()[u"copied"].toArray(), (QJsonArray{file("Day 1/a_shot.mov"), file("Day 1/b_shot.mp4")}));
    EXPECT_EQ(first.object()[u"copiedBytes"].toInteger(),
              QFileInfo(file("Day 1/a_shot.mov")).size() + QFileInfo(file("Day 1/b_shot.mp4")).size());
    ASSERT_TRUE(QFile::remove(file("gathered/b_shot.mp4")));
    const ToolRun again = tool(gather + QStringList{QStringLiteral("--items"), QStringLiteral("1,2")});
    EXPECT_EQ(again.object()[u"copied"].toArray(), QJsonArray{file("Day 1/b_shot.mp4")});
    EXPECT_EQ(again.object()[u"skipped"].toArray(), QJsonArray{file("Day 1/a_shot.mov")});

    const QStringList bundle{QStringLiteral("bundle"), file("copies.dls"), QStringLiteral("--playlist"), QStringLiteral("1"),
                             QStringLiteral("--item"), QStringLiteral("2"), QStringLiteral("--to"), file("b.dlm")};
    const ToolRun made = tool(bundle);
    EXPECT_EQ(made.status, 0) << made.err.constData();
    EXPECT_EQ(made.object()[u"copiedBytes"].toInteger(), QFileInfo(file("b.dlm/b_shot.mp4")).size());
    EXPECT_TRUE(made.object()[u"failed"].toArray().isEmpty());
    EXPECT_TRUE(QFile::exists(file("b.dlm/data.dls")));

    // A disk without room, for the one and the other.
    const QString limited = QStringLiteral("ulimit -f 4; exec \"$0\" \"$@\"");
    for (const QStringList& arguments : {gather, bundle}) {
        QDir(file("gathered")).removeRecursively();
        QDir(file("b.dlm")).removeRecursively();
        QProcess shell;
        shell.start(QStringLiteral("sh"),
                    QStringList{QStringLiteral("-c"), limited, programFolder() + QStringLiteral("/daylark-tool")} + arguments);
        ASSERT_TRUE(shell.waitForFinished(-1));
        EXPECT_EQ(shell.exitCode(), 1);
        const QJsonArray failed = QJsonDocument::fromJson(shell.readAllStandardOutput())[u"failed"].toArray();
        ASSERT_FALSE(failed.isEmpty());
        EXPECT_FALSE(failed[0][u"reason"].toString().isEmpty() || failed[0][u"path"].toString().isEmpty());
        EXPECT_TRUE(QDir(file("gathered")).entryList(QDir::Files | QDir::Hidden).isEmpty());
        EXPECT_FALSE(QFile::exists(file("b.dlm/b_shot.mp4")));
    }
}

TEST_F(Tool, DuplicatesAndFindSayWhatTheLibrarySays) {
    QDir(file("Day 1")).mkpath(QStringLiteral("again"));
    QFile::copy(file("Day 1/a_shot.mov"), file("Day 1/again/a_shot.mov"));
    const QString session = file("lists.dls");
    tool({QStringLiteral("session"), QStringLiteral("new"), session, QStringLiteral("--playlist"), QStringLiteral("One"),
          file("Day 1"), QStringLiteral("--playlist"), QStringLiteral("Two"), file("Day 1/b_shot.mp4")});
    QDir(file("Day 1/again")).removeRecursively();
    const QStringList same{QStringLiteral("duplicates"), session, QStringLiteral("--playlist"), QStringLiteral("1")};
    const QJsonObject asked = tool(same).object();
    EXPECT_EQ(asked[u"message"].toString(), QStringLiteral("1 duplicate found."));
    EXPECT_EQ(asked[u"buttons"].toArray(), (QJsonArray{QStringLiteral("Remove All Duplicates"), QStringLiteral("Cancel")}));
    // The second button removes what is not modified, whatever it is called.
    EXPECT_EQ(asked[u"removes"].toArray(), (QJsonArray{QJsonArray{2}, QJsonArray{2}}));
    const ToolRun done = tool(same + QStringList{QStringLiteral("--answer"), QStringLiteral("1"), QStringLiteral("--out"),
                                                 file("clean.dls")});
    EXPECT_EQ(done.status, 0) << done.err.constData();
    const QJsonObject clean = tool({QStringLiteral("duplicates"), file("clean.dls"), QStringLiteral("--playlist"),
                                    QStringLiteral("1")}).object();
    EXPECT_EQ(clean[u"message"].toString(), QStringLiteral("No duplicates found"));
    EXPECT_EQ(clean[u"removes"].toArray().size(), 1);
    EXPECT_TRUE(clean[u"removes"].toArray().at(0).toArray().isEmpty());

    const QJsonObject found = tool({QStringLiteral("find"), session, QStringLiteral("B_SHOT")}).object();
    EXPECT_EQ(found[u"text"].toString(), QStringLiteral("2 Matches"));
    EXPECT_EQ(found[u"matches"].toArray(), (QJsonArray{QJsonArray{1, 3}, QJsonArray{2, 1}}));
    const QJsonObject names = tool({QStringLiteral("find"), session, QStringLiteral("Day 1/"), QStringLiteral("--scope"),
                                    QStringLiteral("Search Filenames")}).object();
    EXPECT_EQ(names[u"text"].toString(), QStringLiteral("No Matches Found"));
    EXPECT_TRUE(names[u"matches"].toArray().isEmpty());
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

TEST_F(Tool, NamesThatAreNoTextAreToldAndTheRestIsDone) {
    QProcess shell;
    shell.setWorkingDirectory(file(""));
    shell.start(QStringLiteral("/bin/sh"),
                {QStringLiteral("-c"),
                 QStringLiteral("latin=$(printf 'caf\\351.mov'); mkdir odd; cp 'Day 1/a_shot.mov' \"odd/$latin\"; "
                                "cp 'Day 1/a_shot.mov' odd; \"$0\" session new odd.dls --playlist Odd odd \"odd/$latin\"; "
                                "echo $? >&2; \"$0\" probe \"odd/$latin\"; echo $? >&2; rm -r odd"),
                 programFolder() + QStringLiteral("/daylark-tool")});
    ASSERT_TRUE(shell.waitForFinished(60000));
    const QList<QByteArray> said = shell.readAllStandardError().trimmed().split('\n');
    ASSERT_EQ(said.size(), 5) << said.join('\n').constData();
    EXPECT_EQ(said[0], "daylark-tool: odd/caf\\xE9.mov: left out, not named in UTF-8");
    EXPECT_EQ(said[1], "daylark-tool: caf\\xE9.mov: 1 left out, not named in UTF-8");
    EXPECT_EQ(said[2], "1");
    EXPECT_EQ(said[3], said[0]);
    EXPECT_EQ(said[4], "1");
    const ToolRun shown = tool({QStringLiteral("session"), QStringLiteral("show"), file("odd.dls")});
    const QJsonArray lists = shown.object()[QLatin1String("playlists")].toArray();
    ASSERT_EQ(lists.size(), 1);
    EXPECT_EQ(lists[0].toObject()[QLatin1String("movieList")].toArray().size(), 1);
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
