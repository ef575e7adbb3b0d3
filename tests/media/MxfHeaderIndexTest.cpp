#include "media/MxfHeaderIndex.h"

#include "demo/MovieMaker.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

namespace daylark {
namespace {

class MxfHeaderIndexTest : public ::testing::Test {
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
    static std::vector<RawSample> fromPackets(const QString& path) {
        const Result<MediaFile> file = MediaFile::open(path, nullptr);
        std::vector<RawSample> samples;
        const av::PacketPtr packet(av_packet_alloc());
        while (file && file->readPacket(packet.get()) >= 0)
            samples.push_back({packet->pts, packet->dts, packet->pos, packet->duration, 0,
                               (packet->flags & AV_PKT_FLAG_KEY) != 0,
                               !(packet->flags & AV_PKT_FLAG_DISCARD)});
        return samples;
    }
    static void expectSame(const std::vector<RawSample>& header, const std::vector<RawSample>& packets) {
        ASSERT_EQ(header.size(), packets.size());
        for (size_t i = 0; i < header.size(); ++i) {
            ASSERT_EQ(header[i].pts, packets[i].pts) << i;
            ASSERT_EQ(header[i].dts, packets[i].dts) << i;
            ASSERT_EQ(header[i].position, packets[i].position) << i;
            ASSERT_EQ(header[i].duration, packets[i].duration) << i;
            ASSERT_EQ(header[i].key, packets[i].key) << i;
            ASSERT_EQ(header[i].shown, packets[i].shown) << i;
        }
    }
    static QByteArray contents(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] bool saysNothing(const QByteArray& bytes) const {
        const QString path = folder.filePath(u"changed.mxf"_qs);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) return false;
        file.close();
        return fromHeader(path).empty();
    }

    QTemporaryDir folder;
};

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
        expectSame(fromHeader(movie.path), fromPackets(movie.path));
    }
}

} // namespace
} // namespace daylark
