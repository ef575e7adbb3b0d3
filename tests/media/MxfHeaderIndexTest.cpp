#include "media/index/MxfHeaderIndex.h"

#include "support/MovieMaker.h"
#include "support/ChangedFiles.h"
#include "support/MxfChanges.h"
#include "support/PacketReading.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <random>

namespace daylark {
namespace {

class MxfHeaderIndexTest : public ChangedFilesTest {
protected:
    MovieSpec spec(const QString& name) const {
        MovieSpec made;
        made.path = folder.filePath(name);
        made.encoder = u"prores_ks"_qs;
        made.pixelFormat = u"yuv422p10le"_qs;
        made.size = QSize(128, 64);
        made.frames = 60;
        made.groupSize = 1;
        made.bFrames = 0;
        return made;
    }
    static std::vector<RawSample> fromHeader(const QString& path) {
        const Result<MediaFile> file = MediaFile::open(path, nullptr);
        return file ? readMxfHeader(*file) : std::vector<RawSample>();
    }
    [[nodiscard]] bool says(const QByteArray& bytes) const {
        return !fromHeader(written(bytes, u"changed.mxf"_qs)).empty();
    }
    static void copyInto(const QString& path, const char* muxer, const MediaFile& source);
};

void MxfHeaderIndexTest::copyInto(const QString& path, const char* muxer, const MediaFile& source) {
    AVFormatContext* target = nullptr;
    const QByteArray name = path.toUtf8();
    ASSERT_GE(avformat_alloc_output_context2(&target, nullptr, muxer, name.constData()), 0);
    AVStream* stream = avformat_new_stream(target, nullptr);
    avcodec_parameters_copy(stream->codecpar, source.video()->codecpar);
    stream->codecpar->codec_tag = 0;
    stream->time_base = source.video()->time_base;
    ASSERT_GE(avio_open(&target->pb, name.constData(), AVIO_FLAG_WRITE), 0);
    ASSERT_GE(avformat_write_header(target, nullptr), 0);
    const av::PacketPtr packet(av_packet_alloc());
    while (source.readPacket(packet.get()) >= 0) {
        av_packet_rescale_ts(packet.get(), source.video()->time_base, stream->time_base);
        packet->stream_index = 0;
        ASSERT_GE(av_interleaved_write_frame(target, packet.get()), 0);
    }
    ASSERT_GE(av_write_trailer(target), 0);
    avio_closep(&target->pb);
    avformat_free_context(target);
}

TEST_F(MxfHeaderIndexTest, IndexTablesSayWhatReadingThroughSays) {
    std::vector<MovieSpec> specs;
    for (const char* name :
         {"prores.mxf", "long.mxf", "sound.mxf", "late.mxf", "dnxhr.mxf", "dnxhd.mxf", "jpeg2000.mxf"})
        specs.push_back(spec(QString::fromLatin1(name)));
    specs[1].frames = 600; // several partitions
    specs[1].sound = true;
    specs[2].sound = true;
    specs[2].rateNum = 25;
    specs[3].timecode = u"10:11:12:13"_qs;
    specs[3].rateNum = 24000;
    specs[3].rateDen = 1001;
    specs[4].encoder = specs[5].encoder = u"dnxhd"_qs;
    specs[4].encoderOptions = {{u"profile"_qs, u"dnxhr_sq"_qs}};
    specs[4].pixelFormat = specs[5].pixelFormat = specs[6].pixelFormat = u"yuv422p"_qs;
    specs[4].size = QSize(256, 144);
    specs[5].encoderOptions = {{u"b"_qs, u"36M"_qs}};
    specs[5].size = QSize(1920, 1080);
    specs[5].rateNum = 25;
    specs[5].frames = 12;
    specs[6].encoder = u"jpeg2000"_qs;
    for (const MovieSpec& movie : specs) {
        SCOPED_TRACE(movie.path.toStdString());
        ASSERT_TRUE(makeMovie(movie));
        expectSameSamples(fromHeader(movie.path), samplesFromPackets(movie.path));
    }
    // All pictures within one element, as editing systems keep them.
    for (const int dnx : {4, 5}) {
        SCOPED_TRACE(dnx);
        const QString atom = folder.filePath(u"atom.mxf"_qs);
        const Result<MediaFile> source =
            MediaFile::open(specs[size_t(dnx)].path, nullptr, MediaFile::Opening::forFacts);
        ASSERT_TRUE(source);
        copyInto(atom, "mxf_opatom", *source);
        expectSameSamples(fromHeader(atom), samplesFromPackets(atom));
        const QByteArray whole = contents(atom);
        EXPECT_TRUE(says(whole));
        QByteArray changed = whole;
        ASSERT_TRUE(truth::changeMxfDurations(changed, specs[size_t(dnx)].frames, 11));
        EXPECT_FALSE(says(changed));
    }
}

TEST_F(MxfHeaderIndexTest, WhatTheTablesDoNotSayForCertainIsLeftToReading) {
    MovieSpec movie = spec(u"movie.mxf"_qs);
    movie.sound = true;
    movie.rateNum = 25;
    ASSERT_TRUE(makeMovie(movie));
    const QByteArray whole = contents(movie.path);
    const auto saysAfter = [&](const std::function<bool(QByteArray&)>& change) {
        QByteArray bytes = whole;
        EXPECT_TRUE(change(bytes));
        return says(bytes);
    };
    EXPECT_TRUE(says(whole));
    EXPECT_FALSE(says(whole.left(whole.size() * 2 / 3))) << "cut short";
    EXPECT_FALSE(says(whole.chopped(1))) << "without its end";
    EXPECT_FALSE(says(whole + whole)) << "another file behind it";
    for (const int length : {1, 59, 61, 1 << 30})
        EXPECT_FALSE(saysAfter([&](QByteArray& b) { return truth::changeMxfDurations(b, 60, length); }))
            << length;
    for (const int unit : {0, 1, 30, 58, 59})
        EXPECT_FALSE(saysAfter([&](QByteArray& b) { return truth::leaveOutOfMxfIndex(b, unit); })) << unit;
    for (const int unit : {0, 30, 58})
        EXPECT_FALSE(saysAfter([&](QByteArray& b) { return truth::exchangeInMxfIndex(b, unit); })) << unit;
}

/// Whatever else in the file is changed, the tables never say more or fewer pictures than reading finds.
TEST_F(MxfHeaderIndexTest, RandomChangesNeverMakeTheTablesLie) {
    MovieSpec movie = spec(u"movie.mxf"_qs);
    movie.frames = 30;
    movie.size = QSize(64, 32);
    ASSERT_TRUE(makeMovie(movie));
    const QByteArray whole = contents(movie.path);
    const qsizetype essence = whole.indexOf(QByteArray::fromHex("060e2b34010201010d010301"));
    const qsizetype table = whole.lastIndexOf(QByteArray::fromHex("060e2b34025301010d01020101100100"));
    ASSERT_TRUE(essence > 0 && table > essence);
    std::mt19937 random(9);
    int said = 0;
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes = whole;
        const qsizetype from = round % 3 ? table : 0, to = round % 3 ? whole.size() : essence + 64;
        for (int change = 0; change < 1 + round % 4; ++change)
            bytes[from + qsizetype(random() % quint64(to - from))] = char(random());
        const QString path = written(bytes, u"changed.mxf"_qs);
        const std::vector<RawSample> header = fromHeader(path);
        if (header.empty()) continue;
        ++said;
        ASSERT_EQ(header.size(), samplesFromPackets(path).size()) << "round " << round;
    }
    EXPECT_GT(said, 20) << "most bytes stand for something else";
}

} // namespace
} // namespace daylark
