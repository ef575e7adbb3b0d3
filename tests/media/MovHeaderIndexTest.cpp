#include "media/index/MovHeaderIndex.h"

#include "support/MovieMaker.h"
#include "media/container/MovBoxes.h"
#include "support/ChangedFiles.h"
#include "support/PacketReading.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <random>

namespace daylark {
namespace {

class MovHeaderIndexTest : public ChangedFilesTest {
protected:
    MovieSpec spec(const QString& name) const {
        MovieSpec made;
        made.path = folder.filePath(name);
        made.size = QSize(192, 108);
        made.frames = 90;
        made.groupSize = 24;
        return made;
    }
    static std::vector<RawSample> fromHeader(const QString& path) {
        const Result<MediaFile> file = MediaFile::open(path, nullptr);
        return file ? readMovHeader(*file) : std::vector<RawSample>();
    }
    static std::vector<MovBoxes::Sample> samplesOrNone(const MovBoxes& boxes, const MovBoxes::Track& track) {
        auto samples = boxes.samples(track);
        return samples ? std::move(*samples) : std::vector<MovBoxes::Sample>();
    }
};

TEST_F(MovHeaderIndexTest, HeaderTablesSayWhatReadingThroughSays) {
    std::vector<MovieSpec> specs;
    for (const char* name : {"plain.mov", "plain.mp4", "pyramid.mov", "none.mp4", "open.mov", "edits.mp4",
                             "front.mp4", "sound.mov", "late.mov", "film.mov", "variable.mp4", "divx.mov"})
        specs.push_back(spec(QString::fromLatin1(name)));
    specs[2].bFrames = 5;
    specs[3].bFrames = 0;
    specs[4].encoderOptions = {{u"x264-params"_qs, u"open-gop=1:scenecut=0"_qs}};
    specs[5].muxerOptions = {{u"use_editlist"_qs, u"1"_qs}};
    specs[6].muxerOptions = {{u"movflags"_qs, u"faststart+negative_cts_offsets"_qs}};
    specs[7].sound = true;
    for (int n = 0; n < 90; ++n)
        specs[8].ticks.push_back(n + 48);
    specs[9].rateNum = 24000;
    specs[9].rateDen = 1001;
    specs[10].rateNum = 600;
    for (qint64 n = 0, at = 0; n < 90; at += n++ % 3 == 0 ? 50 : 20)
        specs[10].ticks.push_back(at);
    specs[11].encoder = u"mpeg4"_qs;
    for (const MovieSpec& movie : specs) {
        SCOPED_TRACE(movie.path.toStdString());
        ASSERT_TRUE(makeMovie(movie));
        expectSameSamples(fromHeader(movie.path), samplesFromPackets(movie.path));
    }
}

TEST_F(MovHeaderIndexTest, WhatTheHeaderDoesNotSayForCertainIsLeftToReading) {
    MovieSpec fragmented = spec(u"fragmented.mp4"_qs);
    fragmented.muxerOptions = {{u"movflags"_qs, u"frag_keyframe+empty_moov"_qs}};
    ASSERT_TRUE(makeMovie(fragmented));
    EXPECT_TRUE(fromHeader(fragmented.path).empty());
    MovieSpec other = spec(u"other.mkv"_qs);
    ASSERT_TRUE(makeMovie(other));
    EXPECT_TRUE(fromHeader(other.path).empty());
    // Header in front, media cut short: the tables speak of what isn't there.
    MovieSpec whole = spec(u"whole.mp4"_qs);
    whole.muxerOptions = {{u"movflags"_qs, u"faststart"_qs}};
    ASSERT_TRUE(makeMovie(whole));
    const QByteArray bytes = contents(whole.path);
    written(bytes.left(bytes.size() * 2 / 3), u"cut.mp4"_qs);
    EXPECT_FALSE(fromHeader(whole.path).empty());
    EXPECT_TRUE(fromHeader(folder.filePath(u"cut.mp4"_qs)).empty());
}

TEST_F(MovHeaderIndexTest, BoxesThatDoNotFitEndTheWalkAndTablesThatLieAreRefused) {
    ASSERT_TRUE(makeMovie(spec(u"sound.mov"_qs)));
    const Result<MovBoxes> whole = MovBoxes::read(folder.filePath(u"sound.mov"_qs));
    ASSERT_TRUE(whole);
    ASSERT_EQ(whole->tracks().size(), 1U);
    const MovBoxes::Track track = whole->tracks()[0];
    EXPECT_EQ(track.handler, MovBoxes::fourCc("vide"));
    ASSERT_EQ(MovBoxes::sampleDescriptions(track).size(), 1U);
    EXPECT_EQ(MovBoxes::sampleDescriptions(track)[0].type, MovBoxes::fourCc("avc1"));
    const auto samples = whole->samples(track);
    ASSERT_TRUE(samples);
    EXPECT_EQ(samples->size(), 90U);

    const QByteArray header = whole->movie().toByteArray();
    const auto changed = [&](const char* box, int offset, quint32 value) {
        QByteArray bytes = header;
        const qsizetype at = bytes.indexOf(box) + 4 + offset;
        qToBigEndian(value, bytes.data() + at);
        const MovBoxes boxes = MovBoxes::of(bytes, 1 << 20);
        const auto tracks = boxes.tracks();
        return !tracks.empty() && bool(boxes.samples(tracks[0]));
    };
    EXPECT_TRUE(changed("stsz", 4, 0)) << "no change";
    EXPECT_FALSE(changed("stsz", 8, 0xFFFFFFFF)) << "more samples than the table has";
    EXPECT_FALSE(changed("stsz", 4, 0x7FFFFFFF)) << "one size for all, beyond the file";
    EXPECT_FALSE(changed("stco", 8, 0xFFFFFF00)) << "outside the file";
    EXPECT_FALSE(changed("stco", 4, 0xFFFFFFFF)) << "more chunks than the table has";
    EXPECT_FALSE(changed("stsc", 8, 7)) << "chunks that begin in the middle";
    EXPECT_FALSE(changed("stbl", -8, 0x7FFFFFFF)) << "a box larger than its parent";
    // Whatever the header is cut or changed to, it is read within its bounds.
    std::mt19937 random(3);
    for (int round = 0; round < 2000; ++round) {
        QByteArray bytes = header.left(qsizetype(random() % quint32(header.size() + 1)));
        for (int i = 0; i < 4 && !bytes.isEmpty(); ++i)
            bytes[qsizetype(random() % quint32(bytes.size()))] = char(random());
        const MovBoxes boxes = MovBoxes::of(bytes, 1 << 20);
        for (const MovBoxes::Track& any : boxes.tracks())
            for (const MovBoxes::Sample& sample : samplesOrNone(boxes, any))
                ASSERT_LE(sample.position + sample.size, quint64(1) << 20);
    }
}

} // namespace
} // namespace daylark
