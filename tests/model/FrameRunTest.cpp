#include "archive/KeyedArchive.h"
#include "model/Session.h"
#include "model/runs/MovieRun.h"
#include "model/runs/RunNames.h"

#include <gtest/gtest.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

QStringList named(const char* before, std::initializer_list<int> numbers, int padding, const char* behind) {
    QStringList names;
    for (const int number : numbers) {
        const QString figures = QString::number(std::abs(number)).rightJustified(padding, u'0');
        names << QString::fromLatin1(before) + (number < 0 ? u"-"_s : u""_s) + figures + QString::fromLatin1(behind);
    }
    return names;
}

QStringList textsOf(const FolderNames& names) {
    QStringList texts;
    for (const NamedRun& each : names.runs)
        texts << u"%1 (%2)"_s.arg(each.run.text()).arg(each.numbers.size());
    return texts;
}

TEST(RunNames, ComeApartByShotLayerVersionAndPadding) {
    QStringList names = named("sh010.", {1001, 1002, 1003, 1005}, 4, ".exr");
    names << named("sh010_v001.", {1001, 1002}, 4, ".exr") << named("sh010_v002.", {1001, 1002}, 4, ".exr")
          << named("sh010.beauty.", {1, 2, 3}, 1, ".exr") << named("sh010.beauty.", {1, 2, 3}, 4, ".exr")
          << u"notes.txt"_s << u"poster.png"_s << u"lut_17.png"_s;
    const FolderNames apart = takeApart(names);
    EXPECT_EQ(textsOf(apart), (QStringList{u"sh010.1001-1005#.exr (4)"_s, u"sh010.beauty.0001-0003#.exr (3)"_s,
                                           u"sh010.beauty.1-3@.exr (3)"_s, u"sh010_v001.1001-1002#.exr (2)"_s,
                                           u"sh010_v002.1001-1002#.exr (2)"_s}));
    EXPECT_EQ(apart.others, (QStringList{u"notes.txt"_s, u"poster.png"_s, u"lut_17.png"_s}));
}

TEST(RunNames, TheFramesNumberIsTheLastThatIsNoVersion) {
    EXPECT_EQ(textsOf(takeApart(named("a_", {8, 9, 10}, 4, "_v003.dpx"))), QStringList{u"a_0008-0010#_v003.dpx (3)"_s});
    // The number that changes, where the last one doesn't.
    EXPECT_EQ(textsOf(takeApart(named("img", {7, 8, 9}, 3, "_1080p.png"))), QStringList{u"img007-009@@@_1080p.png (3)"_s});
    EXPECT_EQ(textsOf(takeApart(named("", {1001, 1002}, 4, ".exr"))), QStringList{u"1001-1002#.exr (2)"_s});
}

TEST(RunNames, StepsNegativeNumbersAndNumbersThatOutgrowTheirZeros) {
    EXPECT_EQ(textsOf(takeApart(named("a.", {1001, 1003, 1005, 1007}, 4, ".tif"))),
              QStringList{u"a.1001-1007x2#.tif (4)"_s});
    EXPECT_EQ(textsOf(takeApart(named("a.", {-2, -1, 0, 1}, 4, ".tif"))), QStringList{u"a.-0002-0001#.tif (4)"_s});
    QStringList printed = named("a.", {-2, -1}, 3, ".tif");
    printed << named("a.", {0, 1}, 4, ".tif");
    const FolderNames apart = takeApart(printed);
    ASSERT_EQ(apart.runs.size(), 1U);
    EXPECT_EQ(apart.runs[0].numbers, (std::vector<qint64>{-2, -1, 0, 1}));
    EXPECT_EQ(apart.runs[0].run.nameOf(-2), u"a.-002.tif"_s);
    EXPECT_EQ(textsOf(takeApart(named("a.", {98, 99, 100, 101}, 2, ".tif"))), QStringList{u"a.98-101@.tif (4)"_s});
    EXPECT_EQ(textsOf(takeApart(named("a.", {8, 9, 99, 100}, 2, ".tif"))), QStringList{u"a.08-100@@.tif (4)"_s});
}

TEST(RunNames, PicturesThatOnlyHappenToBeNumberedStandAlone) {
    for (const QStringList& names : {named("DSC_", {12, 700, 4100}, 4, ".jpg"), named("a", {1, 3}, 1, ".png"),
                                     named("scan20221122210", {541, 542}, 3, ".png"), QStringList{u"2.png"_s}})
        EXPECT_EQ(takeApart(names).others, names);
    QStringList far = named("a.", {1, 2, 3}, 4, ".exr");
    far << named("a.", {500001, 500002}, 4, ".exr");
    EXPECT_EQ(takeApart(far).runs.size(), 2U);
}

TEST(FrameRun, NamesAreMadeAndReadAlike) {
    const FrameRun run{u"s."_s, u".exr"_s, 4, false, 1001, 1011, 2};
    EXPECT_EQ(run.count(), 6);
    EXPECT_EQ(run.frameOf(1005), 2);
    for (const qint64 number : {999, 1002, 1013})
        EXPECT_FALSE(run.frameOf(number)) << number;
    EXPECT_EQ(run.numberIn(u"s.0999.exr"), 999);
    EXPECT_EQ(run.numberIn(u"s.10000.exr"), 10000);
    for (const QString& other :
         {u"s.999.exr"_s, u"s.00999.exr"_s, u"s.1001.exr.tmp"_s, u"s..exr"_s, u"s.-.exr"_s, u"s.1 01.exr"_s})
        EXPECT_FALSE(run.numberIn(other)) << other.toStdString();
}

TEST(RunPattern, TheSpellingsOfTheField) {
    const auto run = [](const QString& name) {
        const auto pattern = runPatternOf(name);
        return pattern ? u"%1 %2 %3 %4"_s.arg(pattern->run.nameOf(7))
                             .arg(pattern->hasRange)
                             .arg(pattern->run.first)
                             .arg(pattern->run.last)
                       : u"none"_s;
    };
    EXPECT_EQ(run(u"sh010.%04d.exr"_s), u"sh010.0007.exr 0 1 1"_s);
    EXPECT_EQ(run(u"sh010.%d.exr"_s), u"sh010.7.exr 0 1 1"_s);
    EXPECT_EQ(run(u"sh010.#####.exr"_s), u"sh010.00007.exr 0 1 1"_s);
    EXPECT_EQ(run(u"sh010.1001-1100#.exr"_s), u"sh010.0007.exr 1 1001 1100"_s);
    EXPECT_EQ(run(u"sh010.-5-12@@.exr"_s), u"sh010.07.exr 1 -5 12"_s);
    EXPECT_EQ(run(u"sh010-1-9x2@@@.exr"_s), u"sh010-007.exr 1 1 9"_s);
    EXPECT_EQ(runPatternOf(u"a#1.%03d.png"_s)->run.prefix, u"a#1."_s) << "the last mark counts";
    EXPECT_EQ(run(u"sh010.1001.exr"_s), u"none"_s);
    for (const FrameRun& each : {FrameRun{u"a."_s, u".exr"_s, 4, false, 1001, 1100, 1},
                                 FrameRun{u"a_"_s, u".x"_s, 2, false, -3, 8, 1}, FrameRun{{}, u".png"_s, 7, false, 0, 20, 5}})
        EXPECT_EQ(runPatternOf(each.text())->run, each) << each.text().toStdString();
}

TEST(RunAddress, SaysAllAndIsNoPath) {
    RunAddress address{u"/shots/day:1;a"_s,
                       {{u"50%;ä b."_s, u".exr"_s, 4, true, -7, 1100, 1}, {24000, 1001}, true, u"left.diffuse"_s},
                       {MissingPicture::slate, {25, 1}}};
    EXPECT_EQ(RunAddress::of(address.text()), address);
    EXPECT_EQ(pathOfAddress(address.text()), u"/shots/day:1;a/50%;ä b.-007.exr"_s);
    EXPECT_EQ(pathOfAddress(u"/a/b.mov"_s), u"/a/b.mov"_s);
    EXPECT_EQ(mediaAddress(u"/a/b.mov"_s, {}), u"/a/b.mov"_s);
    for (const QString& broken :
         {u"run:"_s, u"run::/a"_s, u"/shots/run:a.exr"_s, address.text().replace(u";1100;"_s, u";999999999;"_s),
          address.text().replace(u";1001;"_s, u";0;"_s), address.text().mid(0, 30)})
        EXPECT_FALSE(RunAddress::of(broken)) << broken.toStdString();
}

TEST(RunRate, IsTheUsualOneThatIsMeant) {
    EXPECT_EQ(RunRate::of(23.976), (RunRate{24000, 1001}));
    EXPECT_EQ(RunRate::of(29.97F), (RunRate{30000, 1001}));
    EXPECT_EQ(RunRate::of(24), (RunRate{24, 1}));
    EXPECT_EQ(RunRate::of(12.5), (RunRate{12500, 1000}));
    for (const double none : {0.0, -24.0, 1e9, std::nan("")})
        EXPECT_FALSE(RunRate::of(none).isKnown()) << none;
}

TEST(MovieRun, StandsInASessionBesideTheOtherKeys) {
    const auto movie = std::make_shared<Movie>(u"/shots/sh010.1001.exr"_s);
    movie->frameRun = MovieRun{{u"sh010."_s, u".exr"_s, 4, false, 1001, 1100, 1}, {25, 1}, true, u"depth.Z"_s};
    const auto plain = std::make_shared<Movie>(u"/shots/a.mov"_s);
    SessionContents contents;
    contents.playlists.push_back(std::make_shared<Playlist>());
    contents.playlists[0]->movieList.push_back(movie);
    contents.playlists[0]->movieList.push_back(plain);
    const Result<SessionContents> read = decodeSession(encodeSession(contents));
    ASSERT_TRUE(read);
    const auto& movies = read->playlists.at(0)->movieList;
    EXPECT_EQ(movies.at(0)->frameRun, movie->frameRun);
    EXPECT_EQ(movies.at(0)->filepathString, u"/shots/sh010.1001.exr"_s) << "what another reader goes by";
    EXPECT_EQ(movies.at(0)->shownName(), u"sh010.1001-1100#.exr"_s);
    EXPECT_FALSE(movies.at(1)->frameRun);

    for (const Value& strange :
         {Value(), Value(u"a"_s), Value(Value::Dictionary{{u"first"_s, Value(u"x"_s)}}),
          Value(Value::Dictionary{{u"first"_s, qint64(0)}, {u"last"_s, std::numeric_limits<qint64>::max()}}),
          Value(Value::Dictionary{{u"first"_s, qint64(1)}, {u"last"_s, qint64(9)}, {u"step"_s, qint64(0)}}),
          Value(Value::Dictionary{{u"last"_s, qint64(9)}, {u"prefix"_s, u"../../etc/"_s}})})
        EXPECT_FALSE(MovieRun::fromValue(strange));
}

TEST(MovieRun, FollowsItsItemToAnotherFile) {
    const auto after = [](const QString& path) {
        Movie movie(u"/shots/sh010_v001.1001.exr"_s);
        movie.frameRun = MovieRun{{u"sh010_v001."_s, u".exr"_s, 4, false, 1001, 1100, 1}, {}, false, u"A"_s};
        movie.addVideoFile(path, {});
        return movie.frameRun ? movie.shownName() + movie.frameRun->layer : u"none"_s;
    };
    EXPECT_EQ(after(u"/moved/sh010_v001.1001.exr"_s), u"sh010_v001.1001-1100#.exrA"_s);
    EXPECT_EQ(after(u"/moved/sh010_v002.1001.dpx"_s), u"sh010_v002.1001-1100#.dpxA"_s);
    EXPECT_EQ(after(u"/moved/sh010.mov"_s), u"none"_s);
    EXPECT_EQ(after(u"/moved/11001.exr"_s), u"none"_s);
}

} // namespace
} // namespace daylark
