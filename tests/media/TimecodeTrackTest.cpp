#include "media/facts/TimecodeTrack.h"

#include "support/MovieMaker.h"
#include "media/container/MovBoxes.h"
#include "support/TimecodeMovie.h"
#include "support/Places.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

namespace daylark {
namespace {

using test::TimecodeMovie;
using Flag = TimecodeSampleBuffer;

/// Hours, minutes, seconds, frames as they stand in the record; "none" for no record.
QString fieldsOf(const std::optional<SmpteTime>& time) {
    if (!time) return QStringLiteral("none");
    EXPECT_EQ(time->flags, 1U);
    EXPECT_TRUE(time->subframes == 0 && time->subframeDivisor == 0 && time->counter == 0 && time->type == 0);
    return QString::asprintf("%d:%d:%d:%d", time->hours, time->minutes, time->seconds, time->frames);
}

QString stored32(qint32 number, quint32 quanta, quint32 flags = 0) {
    return fieldsOf(smpteTimeOf({MovBoxes::fourCc("tmcd"), quanta, flags, TimecodeMovie::bytes(number)}));
}
QString stored64(qint64 number, quint32 quanta, quint32 flags = 0) {
    return fieldsOf(smpteTimeOf({MovBoxes::fourCc("tc64"), quanta, flags, TimecodeMovie::bytes(number)}));
}

TEST(TimecodeSample, CountsAtItsQuantaAndDropsTheNumbersOfThirty) {
    EXPECT_EQ(stored32(24 * 3600, 25), u"0:57:36:0"_qs);
    EXPECT_EQ(stored32(24 * 3600, 25, Flag::twentyFourHourMax), u"0:57:36:0"_qs);
    EXPECT_EQ(stored64(0, 24), u"0:0:0:0"_qs);
    EXPECT_EQ(stored64(qint64(24) * 3600 * 30000 + 5, 24), u"30000:0:0:5"_qs);
    EXPECT_EQ(stored32(1799, 30, Flag::dropFrame), u"0:0:59:29"_qs);
    EXPECT_EQ(stored32(1800, 30, Flag::dropFrame), u"0:1:0:2"_qs);
    EXPECT_EQ(stored32(3597, 30, Flag::dropFrame), u"0:1:59:29"_qs);
    EXPECT_EQ(stored32(3598, 30, Flag::dropFrame), u"0:2:0:2"_qs);
    EXPECT_EQ(stored32(30 * 600 - 19, 30, Flag::dropFrame), u"0:9:59:29"_qs);
    EXPECT_EQ(stored32(30 * 600 - 18, 30, Flag::dropFrame), u"0:10:0:0"_qs);
    EXPECT_EQ(stored32(107562, 30, Flag::dropFrame | Flag::twentyFourHourMax), u"0:59:49:0"_qs);
    EXPECT_EQ(stored32(3600, 60, Flag::dropFrame), u"0:1:0:2"_qs) << "two numbers at any quanta";
}

TEST(TimecodeSample, TheStatedRateDecidesWhereTheQuantaContradictIt) {
    const auto read = [](qint32 number, quint32 quanta, quint32 flags, quint32 scale, quint32 duration) {
        return fieldsOf(smpteTimeOf(
            {MovBoxes::fourCc("tmcd"), quanta, flags, TimecodeMovie::bytes(number), scale, duration}));
    };
    EXPECT_EQ(read(30 * 3600, 29, 0, 30000, 1001), u"1:0:0:0"_qs) << "as some cameras write it";
    EXPECT_EQ(read(29 * 3600, 29, 0, 29, 1), u"1:0:0:0"_qs);
    EXPECT_EQ(read(29 * 3600, 29, 0, 0, 0), u"1:0:0:0"_qs) << "no rate, no contradiction";
    EXPECT_EQ(read(24 * 3600, 24, 0, 24000, 1001), u"1:0:0:0"_qs);
    EXPECT_EQ(read(25 * 3600, 25, 0, 600, 1), u"1:0:0:0"_qs) << "a rate that quanta couldn't say";
    EXPECT_EQ(read(100, 0, 0, 30000, 1001), u"none"_qs);
    constexpr quint32 drop = Flag::dropFrame;
    EXPECT_EQ(read(215788, 60, drop, 60000, 1001), u"1:0:0:4"_qs) << "four numbers a minute at 59.94";
    EXPECT_EQ(read(3600, 60, drop, 60000, 1001), u"0:1:0:4"_qs);
    EXPECT_EQ(read(3600, 60, drop, 60, 1), u"0:1:0:2"_qs);
    EXPECT_EQ(read(1800, 29, drop, 30000, 1001), u"0:1:0:2"_qs);
    EXPECT_EQ(read(1800, 30, drop, 2997, 100), u"0:1:0:2"_qs);
}

TEST(TimecodeSample, NegativeTimesAreMarkedInTheMinutesOrTurnTheClockBack) {
    EXPECT_EQ(stored32(-1, 24, Flag::negativeTimesOk), u"0:128:0:1"_qs);
    EXPECT_EQ(stored32(-1, 24, Flag::negativeTimesOk | Flag::twentyFourHourMax), u"0:128:0:1"_qs);
    EXPECT_EQ(stored32(-1, 24), u"0:128:0:1"_qs);
    EXPECT_EQ(stored32(-24 * 3600 - 24, 24, Flag::twentyFourHourMax), u"22:0:1:0"_qs);
    EXPECT_EQ(stored32(25 * 3600 * 24, 24, Flag::twentyFourHourMax), u"1:0:0:0"_qs);
    EXPECT_EQ(stored32(25 * 3600 * 24, 24), u"25:0:0:0"_qs);
}

TEST(TimecodeSample, WhatIsCutOfAnotherKindOrWithoutARateIsNoTime) {
    EXPECT_EQ(stored32(100, 0), u"none"_qs);
    const quint32 tmcd = MovBoxes::fourCc("tmcd"), tc64 = MovBoxes::fourCc("tc64");
    EXPECT_FALSE(smpteTimeOf({tmcd, 24, 0, QByteArray(3, 1)}));
    EXPECT_FALSE(smpteTimeOf({tc64, 24, 0, QByteArray(7, 1)}));
    EXPECT_FALSE(smpteTimeOf({MovBoxes::fourCc("text"), 24, 0, QByteArray(8, 1)}));
    for (const quint32 quanta : {1U, 24U, 255U}) // the farthest numbers there are
        for (const quint32 flags : {0U, 1U, 3U, 7U}) {
            EXPECT_NE(stored64(std::numeric_limits<qint64>::min(), quanta, flags), u"none"_qs);
            EXPECT_NE(stored64(std::numeric_limits<qint64>::max(), quanta, flags), u"none"_qs);
        }
}

TEST(TimecodeText, AnyUsualFormIsReadAndNothingElse) {
    EXPECT_EQ(fieldsOf(smpteTimeOfText(u"01:02:03:04")), u"1:2:3:4"_qs);
    EXPECT_EQ(fieldsOf(smpteTimeOfText(u" 10:20:30;28 ")), u"10:20:30:28"_qs);
    EXPECT_EQ(fieldsOf(smpteTimeOfText(u"23:59:59.59")), u"23:59:59:59"_qs);
    for (const QStringView wrong :
         {QStringView(u""), QStringView(u"01:02:03"), QStringView(u"01:60:00:00"), QStringView(u"1:2:3:4"),
          QStringView(u"01:02:03:04x"), QStringView(u"-1:00:00:00")})
        EXPECT_EQ(fieldsOf(smpteTimeOfText(wrong)), u"none"_qs) << wrong.toString().toStdString();
}

class TimecodeTrackTest : public ::testing::Test {
protected:
    static QStringList read(const QString& path) {
        QStringList fields;
        for (const SmpteTime& time : AVTimecodeReader(path).readTimecodeSamples())
            fields << fieldsOf(time);
        return fields;
    }
    QStringList readBytes(const QByteArray& bytes) const {
        QFile file(folder.filePath(QStringLiteral("made.mov")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();
        return read(file.fileName());
    }
    QString make(const char* name, const char* timecode, int rateNum = 24, int rateDen = 1,
                 const char* encoder = "mjpeg", const char* pixels = "yuvj420p") const {
        MovieSpec spec;
        spec.path = folder.filePath(QLatin1String(name));
        spec.encoder = QLatin1String(encoder);
        spec.pixelFormat = QLatin1String(pixels);
        spec.size = QSize(320, 240);
        spec.rateNum = rateNum;
        spec.rateDen = rateDen;
        spec.bFrames = 0;
        spec.frames = 6;
        spec.timecode = QLatin1String(timecode);
        const Result<void> made = makeMovie(spec);
        EXPECT_TRUE(made) << (made ? "" : made.error().text.toStdString());
        return spec.path;
    }
    static QByteArray number(qint32 value) { return TimecodeMovie::bytes(value); }

    QTemporaryDir folder;
};

TEST_F(TimecodeTrackTest, EverySampleOfTheFirstTrackIsReadAndNoOther) {
    const std::vector<TimecodeMovie::Track> tracks{
        {"tmcd", 0, 25, {number(25), number(50), QByteArray(2, 9), number(75)}},
        {"tmcd", 0, 25, {number(1)}}};
    const QStringList expected{u"0:0:1:0"_qs, u"0:0:2:0"_qs, u"0:0:3:0"_qs}; // the cut one is passed over
    EXPECT_EQ(readBytes(TimecodeMovie::file(tracks)), expected);
    EXPECT_EQ(readBytes(TimecodeMovie::file(tracks, false)), expected);
    EXPECT_EQ(readBytes(TimecodeMovie::file(
                  {{"tc64", Flag::negativeTimesOk, 24, {TimecodeMovie::bytes(qint64(-24 * 60))}}})),
              QStringList{u"0:129:0:0"_qs});
}

TEST_F(TimecodeTrackTest, DamagedTracksGiveWhatCanBeReadOfThem) {
    EXPECT_EQ(readBytes(TimecodeMovie::file({{"tmcd", 0, 24, {}}})), QStringList());
    EXPECT_EQ(readBytes(TimecodeMovie::file({{"text", 0, 24, {number(24)}}, {"tmcd", 0, 24, {number(24)}}})),
              QStringList())
        << "the first track is the one that counts";
    EXPECT_EQ(readBytes(TimecodeMovie::file({{"tmcd", 0, 0, {number(24)}}})), QStringList());
    EXPECT_EQ(readBytes(TimecodeMovie::file({{"tmcd", 0, 24, {number(24)}, 0x7FFFFFFF}})), QStringList());
    const QByteArray whole = TimecodeMovie::file({{"tmcd", 0, 24, {number(24), number(48)}}});
    EXPECT_EQ(readBytes(whole.chopped(1)), QStringList{u"0:0:1:0"_qs})
        << "the file ends in its second sample";
    for (qsizetype kept = 0; kept < whole.size(); kept += 3) // never more than there is, never a crash
        EXPECT_LE(readBytes(whole.first(kept)).size(), 2);
    EXPECT_EQ(read(folder.filePath(QStringLiteral("missing.mov"))), QStringList());
}

TEST_F(TimecodeTrackTest, MoviesOfEveryContainerGiveTheirStart) {
    EXPECT_EQ(read(make("a.mov", "01:00:00:00")), QStringList{u"1:0:0:0"_qs});
    EXPECT_EQ(read(make("b.mov", "00:59:59;28", 30000, 1001)), QStringList{u"0:59:59:28"_qs});
    EXPECT_EQ(read(make("h.mov", "01:00:00;04", 60000, 1001)), QStringList{u"1:0:0:4"_qs});
    EXPECT_EQ(read(make("c.mp4", "10:11:12:13", 25, 1, "mpeg4", "yuv420p")), QStringList{u"10:11:12:13"_qs});
    EXPECT_EQ(read(make("d.mxf", "02:03:04:05", 25, 1, "mpeg2video", "yuv420p")), QStringList{u"2:3:4:5"_qs});
    EXPECT_EQ(read(make("e.mkv", "03:04:05:06")), QStringList{u"3:4:5:6"_qs});
    EXPECT_EQ(read(make("f.mov", "")), QStringList());
    EXPECT_EQ(read(make("g.avi", "")), QStringList());
}

TEST_F(TimecodeTrackTest, TracksMadeElsewhereSayWhatTheySay) {
    const QString elsewhere = foreignTimecodeFolder();
    if (!QFileInfo(elsewhere).isDir()) GTEST_SKIP() << "no timecode tracks made elsewhere here";
    const auto start = [&](const char* name) { return read(elsewhere + u'/' + QLatin1String(name)); };
    EXPECT_EQ(start("tc_23976_track-only_start-00-58-40-00.mov"), QStringList{u"0:58:40:0"_qs});
    EXPECT_EQ(start("tc_24_track-only_start-00-58-40-00.mov"), QStringList{u"0:58:40:0"_qs});
    EXPECT_EQ(start("tc_2997df_track-only_start-00-59-49-00.mov"), QStringList{u"0:59:49:0"_qs});
    EXPECT_EQ(start("tc_2997ndf_interlaced_start-00-00-00-00_burnin.mov"), QStringList{u"0:0:0:0"_qs});
}

} // namespace
} // namespace daylark
