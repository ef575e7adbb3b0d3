#include "media/index/AviHeaderIndex.h"

#include "support/MovieMaker.h"
#include "support/ChangedFiles.h"
#include "support/PacketReading.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <random>

namespace daylark {
namespace {

class AviHeaderIndexTest : public ChangedFilesTest {
protected:
    MovieSpec spec(const QString& name) const {
        MovieSpec made;
        made.path = folder.filePath(name);
        made.encoder = u"mjpeg"_qs;
        made.pixelFormat = u"yuvj420p"_qs;
        made.size = QSize(64, 32);
        made.frames = 40;
        made.groupSize = 1;
        made.bFrames = 0;
        return made;
    }
    static std::vector<RawSample> fromHeader(const QString& path) {
        const Result<MediaFile> file = MediaFile::open(path, nullptr);
        return file && file->video() ? readAviHeader(*file) : std::vector<RawSample>();
    }
    [[nodiscard]] bool says(const QByteArray& bytes) const {
        return !fromHeader(written(bytes, u"changed.avi"_qs)).empty();
    }
};

TEST_F(AviHeaderIndexTest, IndexSaysWhatReadingThroughSays) {
    std::vector<MovieSpec> specs;
    for (const char* name : {"plain.avi", "sound.avi", "raw.avi", "odd.avi"})
        specs.push_back(spec(QString::fromLatin1(name)));
    specs[1].sound = true;
    specs[2].encoder = u"rawvideo"_qs;
    specs[2].pixelFormat = u"yuv420p"_qs;
    specs[2].rateNum = 25;
    specs[3].size = QSize(77, 45);
    specs[3].rateNum = 24000;
    specs[3].rateDen = 1001;
    for (const MovieSpec& movie : specs) {
        SCOPED_TRACE(movie.path.toStdString());
        ASSERT_TRUE(makeMovie(movie));
        expectSameSamples(fromHeader(movie.path), samplesFromPackets(movie.path));
    }
}

TEST_F(AviHeaderIndexTest, IndexThatLacksOrMisplacesAPictureIsNotBelieved) {
    MovieSpec movie = spec(u"movie.avi"_qs);
    movie.sound = true;
    ASSERT_TRUE(makeMovie(movie));
    const QByteArray whole = contents(movie.path);
    const qsizetype index = whole.lastIndexOf("idx1") + 8; // entries: name, flags, place, size
    std::vector<qsizetype> pictures;
    for (qsizetype at = index; at + 16 <= whole.size(); at += 16)
        if (whole.mid(at, 4) == "00dc" && qFromLittleEndian<quint32>(whole.data() + at + 12) > 0)
            pictures.push_back(at);
    ASSERT_EQ(pictures.size(), 40U);
    EXPECT_TRUE(says(whole));
    EXPECT_FALSE(says(whole.left(whole.size() * 2 / 3))) << "cut short";
    const QByteArray picture = whole.mid(qsizetype(whole.indexOf("00dc", whole.indexOf("movi"))), 100);
    EXPECT_FALSE(says(whole + picture)) << "a picture behind the index";
    EXPECT_FALSE(says(whole + QByteArray::fromHex("30306463010000004100"))) << "and one of a single byte";
    EXPECT_TRUE(says(whole + QByteArray::fromHex("3030646300000000"))) << "nothing";
    for (const size_t n : {0, 1, 20, 39}) {
        QByteArray bytes = whole;
        EXPECT_FALSE(says(bytes.replace(pictures[n], 4, "JUNK"))) << n;
        bytes = whole;
        qToLittleEndian(qFromLittleEndian<quint32>(bytes.data() + pictures[n] + 8) + 2,
                        bytes.data() + pictures[n] + 8);
        EXPECT_FALSE(says(bytes)) << n;
    }
}

/// Whatever in the index is changed, it never says more or fewer pictures than reading finds.
TEST_F(AviHeaderIndexTest, RandomChangesNeverMakeTheIndexLie) {
    const MovieSpec movie = spec(u"movie.avi"_qs);
    ASSERT_TRUE(makeMovie(movie));
    const QByteArray whole = contents(movie.path);
    const qsizetype index = whole.lastIndexOf("idx1");
    std::mt19937 random(9);
    int said = 0;
    for (int round = 0; round < 200; ++round) {
        QByteArray bytes = whole;
        const qsizetype from = round % 3 ? index : 0;
        const qsizetype to = round % 3 ? whole.size() : whole.indexOf("movi") + 40;
        bytes[from + qsizetype(random() % quint64(to - from))] = char(random());
        const QString path = written(bytes, u"changed.avi"_qs);
        const std::vector<RawSample> header = fromHeader(path);
        if (header.empty()) continue;
        ++said;
        ASSERT_EQ(header.size(), samplesFromPackets(path).size()) << "round " << round;
    }
    EXPECT_GT(said, 20) << "most bytes stand for something else";
}

} // namespace
} // namespace daylark
