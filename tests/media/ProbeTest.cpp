#include "media/facts/MovieProbe.h"

#include "support/MovieMaker.h"
#include "media/facts/MediaTypes.h"
#include "media/facts/MovieTexts.h"
#include "picture/Thumbnail.h"
#include "model/Movie.h"
#include "support/TimecodeMovie.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

namespace daylark {
namespace {

class ProbeTest : public ::testing::Test {
protected:
    MovieSpec spec(const QString& name, int rateNum = 24, int rateDen = 1, int frames = 48) const {
        MovieSpec made;
        made.path = folder.filePath(name);
        made.size = QSize(256, 144);
        made.rateNum = rateNum;
        made.rateDen = rateDen;
        made.frames = frames;
        return made;
    }
    static ProbeResult probed(const QString& path) {
        const Result<ProbeResult> result = probeMovie(path);
        EXPECT_TRUE(result) << result.error().text.toStdString();
        return result ? *result : ProbeResult();
    }
    QString writeFile(const QString& name, const QByteArray& bytes) const {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    /// A tone as a plain wave file.
    QString writeSound(const QString& name) const {
        QByteArray bytes = QByteArray::fromHex("52494646249f000057415645666d7420100000000100010040"
                                               "1f0000803e00000200100064617461009f0000");
        return writeFile(name, bytes + QByteArray(40704, '\7'));
    }
    int thumbnailNumber(const QString& path, const QString& choice) const {
        return readBarCode(makeThumbnail({path, choice}).thumbnail.decode()).value_or(-1);
    }

    QTemporaryDir folder;
};

TEST_F(ProbeTest, BackEndsDisagreeAboutTheRateOf2997Material) {
    const MovieSpec movie = spec(u"ntsc.mov"_qs, 30000, 1001, 60);
    ASSERT_TRUE(makeMovie(movie));
    const ProbeResult result = probed(movie.path);
    EXPECT_FLOAT_EQ(result.asset.mMovieFPS.value_or(0), 29.97003F);
    EXPECT_EQ(result.asset.frameRateText, u"30"_qs);
    EXPECT_EQ(result.asset.mMovieDurationFrames, 60);
    EXPECT_NEAR(result.asset.mMovieDurationSeconds.value_or(0), 2.002F, 0.001F);
    EXPECT_EQ(result.asset.mMovieResolutionString, u"256 x 144"_qs);
    EXPECT_FLOAT_EQ(result.asset.mMovieAspectRatio.value_or(0), 256.0F / 144.0F);
    EXPECT_EQ(result.asset.durationText, u"00:02"_qs);
    EXPECT_EQ(result.legacy.mMovieFPS, 30.0F);
    EXPECT_EQ(result.legacy.mMovieDurationFrames, 60);
    EXPECT_EQ(result.legacy.timeScale, 30000);
    EXPECT_EQ(result.legacy.mMovieTimeValuePerStep, 1001);
    EXPECT_EQ(result.legacy.mMovieAdjustedDurationTimeValue, 60060);
    EXPECT_EQ(result.legacy.mMovieWidth, 256);
    EXPECT_FALSE(result.legacy.isOneFrame);
    EXPECT_EQ(result.asset.fileSizeText, QString::asprintf("%.1f", double(QFile(movie.path).size()) / 1e6));
    ASSERT_TRUE(result.asset.fileCreationDate);
    EXPECT_LT(std::abs(result.asset.fileCreationDate->toUnixSeconds() - double(time(nullptr))), 120);
}

TEST_F(ProbeTest, UsualRatesSnapOnTheLegacyPathOnly) {
    const struct {
        int num, den;
        float asset, legacy;
    } rates[] = {{24000, 1001, 23.976025F, 24},
                 {24, 1, 24, 24},
                 {25, 1, 25, 25},
                 {30, 1, 30, 30},
                 {48, 1, 48, 48},
                 {60000, 1001, 59.94006F, 59.94006F},
                 {47, 2, 23.5F, 23.5F}, // what lies between stays as it is, ends included
                 {49, 2, 24.5F, 24.5F},
                 {51, 2, 25.5F, 25.5F},
                 {29, 1, 29, 29},
                 {31, 1, 31, 31}};
    for (const auto& rate : rates) {
        const MovieSpec movie = spec(QStringLiteral("rate%1.mp4").arg(rate.num), rate.num, rate.den, 24);
        ASSERT_TRUE(makeMovie(movie));
        const ProbeResult result = probed(movie.path);
        EXPECT_FLOAT_EQ(result.asset.mMovieFPS.value_or(0), rate.asset);
        EXPECT_FLOAT_EQ(result.legacy.mMovieFPS, rate.legacy);
        EXPECT_EQ(result.legacy.mMovieTimeValuePerStep, rate.den);
    }
}

TEST_F(ProbeTest, PixelAspectWidensTheNaturalSize) {
    MovieSpec movie = spec(u"wide.mov"_qs, 25, 1, 10);
    movie.size = QSize(240, 192);
    movie.pixelAspectNum = 16;
    movie.pixelAspectDen = 11;
    ASSERT_TRUE(makeMovie(movie));
    EXPECT_EQ(probed(movie.path).legacy.mMovieResolutionString, u"349 x 192"_qs) << "349.09, cut";
    movie.size = QSize(792, 96);
    movie.pixelAspectNum = 12;
    ASSERT_TRUE(makeMovie(movie));
    EXPECT_EQ(probed(movie.path).asset.mMovieResolutionString, u"864 x 96"_qs) << "whole, nothing to cut";
    EXPECT_EQ(probed(movie.path).legacy.mMovieWidth, 864);
    auto reader = FrameReader::open(movie.path);
    ASSERT_TRUE(reader);
    EXPECT_EQ((*reader)->read(0)->displaySize(), QSize(864, 96));
}

/// What the container doesn't state: the nominal rate, else what the samples' times say.
TEST_F(ProbeTest, ARateIsFoundInContainersThatStateNone) {
    MovieSpec ivf = spec(u"rate.ivf"_qs, 25, 1, 50), ogg = spec(u"rate.ogv"_qs, 24, 1, 48);
    MovieSpec mxf = spec(u"rate.mxf"_qs, 25, 1, 25), stream = spec(u"rate.mkv"_qs, 30, 1, 45);
    ivf.encoder = u"libvpx-vp9"_qs;
    ivf.encoderOptions = {{u"deadline"_qs, u"realtime"_qs}, {u"cpu-used"_qs, u"8"_qs}};
    ogg.encoder = u"libtheora"_qs;
    mxf.encoder = u"dnxhd"_qs;
    mxf.encoderOptions = {{u"profile"_qs, u"dnxhr_sq"_qs}};
    mxf.pixelFormat = u"yuv422p"_qs;
    for (const MovieSpec& movie : {ivf, ogg, mxf, stream}) {
        SCOPED_TRACE(movie.path.toStdString());
        ASSERT_TRUE(makeMovie(movie));
        const ProbeResult result = probed(movie.path);
        EXPECT_NEAR(result.asset.mMovieFPS.value_or(0), float(movie.rateNum), 0.01F);
        EXPECT_EQ(result.asset.mMovieDurationFrames, movie.frames);
        EXPECT_EQ(result.legacy.mMovieDurationFrames, movie.frames);
    }
}

TEST_F(ProbeTest, RatesAreRoundedAsCDoes) {
    EXPECT_EQ(frameRateTextOf(12.5F), u"12"_qs) << "half way goes to the even one";
    EXPECT_EQ(frameRateTextOf(13.5F), u"14"_qs);
    EXPECT_EQ(frameRateTextOf(23.976F), u"24"_qs);
    EXPECT_EQ(fileSizeTextOf(250'000), u"0.2"_qs);
    EXPECT_EQ(fileSizeTextOf(350'000), u"0.3"_qs) << "0.35 lies a little below";
    EXPECT_EQ(fileSizeTextOf(qint64(1) << 40), u"1099511.6"_qs);
}

TEST_F(ProbeTest, FragmentsThatBeginLateAreAsLongAsTheyAre) {
    MovieSpec movie = spec(u"late.mp4"_qs);
    for (int n = 0; n < movie.frames; ++n)
        movie.ticks.push_back(n + 24 * 3600);
    movie.muxerOptions = {{u"movflags"_qs, u"frag_keyframe+empty_moov+default_base_moof"_qs},
                          {u"use_editlist"_qs, u"0"_qs}};
    ASSERT_TRUE(makeMovie(movie));
    const ProbeResult result = probed(movie.path);
    EXPECT_NEAR(result.asset.mMovieDurationSeconds.value_or(0), 2, 0.1);
    EXPECT_EQ(result.asset.durationText, u"00:02"_qs);
    EXPECT_EQ(result.legacy.mMovieDurationFrames, 48);
}

TEST_F(ProbeTest, TimecodeAloneGivesItsTextsAndAnUnknownCodecItsName) {
    const QString timecode =
        writeFile(u"timecode.mov"_qs, test::TimecodeMovie::file({{"tmcd", 0, 25, {QByteArray(4, '\1')}}}));
    const ProbeResult result = probed(timecode);
    EXPECT_EQ(result.asset.fileSizeText, u"0.0"_qs);
    EXPECT_EQ(result.asset.durationText, u"00:00"_qs);
    EXPECT_FALSE(result.asset.mMovieFPS || result.asset.mMovieResolutionString || result.legacy.hasVideo);
    EXPECT_FALSE(FrameReader::open(timecode));
    for (const bool sound : {false, true}) {
        MovieSpec movie = spec(u"coded.mov"_qs);
        movie.sound = sound;
        ASSERT_TRUE(makeMovie(movie));
        QFile file(movie.path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString unknown = writeFile(u"unknown.mov"_qs, file.readAll().replace("avc1", "Qx7z"));
        const auto failed = probeMovie(unknown);
        ASSERT_FALSE(failed);
        EXPECT_TRUE(failed.error().text.contains(u"Qx7z"_qs)) << failed.error().text.toStdString();
        const auto reader = FrameReader::open(unknown);
        ASSERT_FALSE(reader);
        EXPECT_EQ(reader.error().text, failed.error().text);
    }
}

TEST_F(ProbeTest, SoundAloneGetsSizeDateAndDurationTextOnly) {
    const QString path = writeSound(u"tone.wav"_qs);
    const ProbeResult result = probed(path);
    EXPECT_FALSE(result.legacy.hasVideo);
    EXPECT_FALSE(result.asset.mMovieFPS || result.asset.mMovieDurationSeconds ||
                 result.asset.mMovieResolutionString);
    Movie movie(path);
    applyAssetProperties(movie, result.asset);
    applyLegacyProperties(movie, result.legacy);
    EXPECT_EQ(movie.fileSizeText, u"0.0"_qs);
    EXPECT_EQ(movie.durationText, u"00:00"_qs);
    EXPECT_TRUE(movie.fileCreationDate);
    EXPECT_EQ(movie.mMovieDurationFrames, 0);
    EXPECT_FALSE(movie.mMovieHasBeenVisited);
    const ThumbnailResult thumbnail = makeThumbnail({path, u"Middle Frame"_qs});
    EXPECT_TRUE(thumbnail.thumbnail.isNil());
    EXPECT_FALSE(thumbnail.creatingThumbnailText); // what the record says stays
}

TEST_F(ProbeTest, ChoicesOfTheLegacyRulesLieAStepFurtherIn) {
    const MovieSpec movie = spec(u"choices.mov"_qs, 24, 1, 24);
    ASSERT_TRUE(makeMovie(movie));
    const auto number = [&movie](const QString& choice, bool legacyRules) {
        const ThumbnailResult result = makeThumbnail({movie.path, choice, legacyRules});
        EXPECT_EQ(result.creatingThumbnailText, QString(u""_qs));
        EXPECT_EQ(result.mThumbnailFrame.has_value(), !legacyRules && choice == u"First Frame"_qs);
        return readBarCode(result.thumbnail.decode()).value_or(-1);
    };
    EXPECT_EQ(number(u"First Frame"_qs, false), 1);
    EXPECT_EQ(number(u"First Frame"_qs, true), 2) << "one in, so that a black first frame is avoided";
    EXPECT_EQ(number(u"Middle Frame"_qs, true), 13);
    EXPECT_EQ(number(u"Last Frame"_qs, true), 24);
}

TEST_F(ProbeTest, OneFrameIsAStillImage) {
    const QString still = folder.filePath(u"still.png"_qs);
    MovieSpec movie = spec(u"one.mov"_qs, 24, 1, 1);
    ASSERT_TRUE(paintFrame(movie, 5).save(still));
    ASSERT_TRUE(makeMovie(movie));
    for (const QString& path : {still, movie.path}) {
        const ProbeResult result = probed(path);
        EXPECT_TRUE(result.legacy.isOneFrame);
        EXPECT_EQ(result.legacy.mMovieDurationFrames, 1);
        EXPECT_EQ(result.legacy.mMovieResolutionString, u"256 x 144"_qs);
        EXPECT_FALSE(makeThumbnail({path, u"Last Frame"_qs}).thumbnail.isNil());
    }
    EXPECT_EQ(thumbnailNumber(still, u"Middle Frame"_qs), 5);
}

TEST_F(ProbeTest, StillWithAPatternInItsNameIsItself) {
    const QString path = folder.filePath(u"plate_%04d.png"_qs);
    ASSERT_TRUE(paintFrame(spec(QString()), 77).save(path));
    EXPECT_EQ(thumbnailNumber(path, u"First Frame"_qs), 77);
}

TEST_F(ProbeTest, WhatIsNoMovieFailsAndLeavesNoThumbnail) {
    MovieSpec movie = spec(u"whole.mov"_qs);
    ASSERT_TRUE(makeMovie(movie));
    QFile whole(movie.path);
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    QByteArray noise(300000, '\0');
    for (qsizetype i = 0; i < noise.size(); ++i)
        noise[i] = char((i * 2654435761U) >> 13);
    const QString broken[] = {writeFile(u"empty.mov"_qs, {}),
                              writeFile(u"noise.mov"_qs, noise),
                              writeFile(u"headless.mov"_qs, whole.read(whole.size() / 2)),
                              writeFile(u"text.avi"_qs, "not a movie at all\n"),
                              folder.path(),
                              folder.filePath(u"absent.mov"_qs)};
    for (const QString& path : broken) {
        EXPECT_FALSE(probeMovie(path)) << path.toStdString();
        const ThumbnailResult result = makeThumbnail({path, u"First Frame"_qs});
        EXPECT_TRUE(result.thumbnail.isNil());
        EXPECT_EQ(result.creatingThumbnailText, u"No QT Thumbnail"_qs) << path.toStdString();
    }
}

TEST_F(ProbeTest, LegacyPassRunsOncePerRecordAndAMissingRateKeepsTheRecords) {
    Movie movie;
    LegacyProperties legacy;
    legacy.hasVideo = true;
    legacy.mMovieDurationFrames = 2997;
    legacy.mMovieDurationSeconds = 100;
    applyLegacyProperties(movie, legacy);
    EXPECT_TRUE(movie.mMovieHasBeenVisited);
    EXPECT_EQ(movie.durationText, u"01:40"_qs);
    legacy.mMovieDurationFrames = 1;
    applyLegacyProperties(movie, legacy);
    EXPECT_EQ(movie.mMovieDurationFrames, 2997);

    movie.mMovieFPS = 24;
    movie.frameRateText = u"24"_qs;
    AssetProperties asset;
    asset.mMovieDurationSeconds = 2.5F;
    applyAssetProperties(movie, asset);
    EXPECT_EQ(movie.mMovieFPS, 24);
    EXPECT_EQ(movie.frameRateText, u"24"_qs);
    EXPECT_EQ(movie.mMovieDurationFrames, 60);
}

TEST_F(ProbeTest, DurationTextCutsSecondsAndShowsHoursFromOne) {
    EXPECT_EQ(durationTextOf(3599.9F), u"59:59"_qs);
    EXPECT_EQ(durationTextOf(3600.4F), u"1:00:00"_qs);
    EXPECT_EQ(durationTextOf(36065), u"10:01:05"_qs);
    EXPECT_EQ(durationTextOf(0.99F), u"00:00"_qs);
    EXPECT_EQ(fileSizeTextOf(12'345'678), u"12.3"_qs);
}

TEST_F(ProbeTest, ThumbnailShowsTheFrameOfTheChoice) {
    const MovieSpec movie = spec(u"choice.mov"_qs);
    ASSERT_TRUE(makeMovie(movie));
    const struct {
        QString choice;
        int picture;
        std::optional<qint64> recorded;
    } choices[] = {{u"First Frame"_qs, 1, 1},
                   {u"Second Frame"_qs, 2, 2},
                   {u"Middle Frame"_qs, 25, std::nullopt},
                   {u"Recreate Missing Thumbnails"_qs, 25, std::nullopt},
                   {u"Last Frame"_qs, 48, std::nullopt},
                   {u"Set Thumbnail Image"_qs, 1, std::nullopt}};
    for (const auto& [choice, picture, recorded] : choices) {
        const ThumbnailResult result = makeThumbnail({movie.path, choice});
        EXPECT_EQ(readBarCode(result.thumbnail.decode()), picture) << choice.toStdString();
        EXPECT_EQ(result.mThumbnailFrame, recorded) << choice.toStdString();
        EXPECT_EQ(result.thumbnail.decode().size(), QSize(100, 56));
    }
    CancelFlag cancel = true;
    EXPECT_TRUE(makeThumbnail({movie.path, u"Last Frame"_qs}, &cancel).thumbnail.isNil());
}

TEST_F(ProbeTest, TypeIsJudgedByTheExtensionAlone) {
    for (const char* name :
         {"a.mov", "A.MP4", "b.mxf", "c.mkv", "c.webm", "d.avi", "e.mpg", "f.ts", "g.m2ts", "x.y.m4v"})
        EXPECT_EQ(mediaTypeOfPath(QString::fromLatin1(name)), MediaType::movie) << name;
    for (const char* name :
         {"a.jpg", "b.PNG", "c.tif", "d.exr", "e.dpx", "f.tga", "g.bmp", "h.gif", "i.webp", "j.tiff"})
        EXPECT_EQ(mediaTypeOfPath(QString::fromLatin1(name)), MediaType::image) << name;
    for (const char* name :
         {"a.wav", "b.mp3", "c.txt", "mov", "folder.dlm", "d.", ".mov/x", "e.m4a", "f.dls"})
        EXPECT_EQ(mediaTypeOfPath(QString::fromLatin1(name)), MediaType::other) << name;
}

} // namespace
} // namespace daylark
