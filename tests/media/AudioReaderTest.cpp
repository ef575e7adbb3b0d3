#include "media/AudioReader.h"

#include "demo/MovieMaker.h"

#include <QDataStream>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace daylark {
namespace {

constexpr int rate = 48000;

class AudioReaderTest : public ::testing::Test {
protected:
    /// A movie with a beep in the first tenth of every second.
    QString movie(const char* extension, const std::vector<qint64>& ticks = {}, bool sound = true) const {
        MovieSpec spec;
        spec.path = folder.filePath(QStringLiteral("movie.") + QLatin1String(extension));
        spec.encoder = QLatin1String(extension) == QLatin1String("mxf") ? u"mpeg2video"_qs : u"libx264"_qs;
        spec.size = QSize(128, 96);
        spec.rateNum = 25;
        spec.frames = 100;
        spec.ticks = ticks;
        spec.sound = sound;
        const auto made = makeMovie(spec);
        EXPECT_TRUE(made) << (made ? "" : made.error().text.toStdString());
        return spec.path;
    }
    /// Two seconds of PCM with a 1 kHz beep from 1 s to 1.1 s in every channel.
    QString wave(int samplesASecond, int channels) const {
        const QString path = folder.filePath(QStringLiteral("%1_%2.wav").arg(samplesASecond).arg(channels));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        QDataStream out(&file);
        out.setByteOrder(QDataStream::LittleEndian);
        const int count = 2 * samplesASecond, bytes = count * channels * 2;
        out.writeRawData("RIFF", 4);
        out << quint32(36 + bytes);
        out.writeRawData("WAVEfmt ", 8);
        out << quint32(16) << quint16(1) << quint16(channels) << quint32(samplesASecond)
            << quint32(samplesASecond * channels * 2) << quint16(channels * 2) << quint16(16);
        out.writeRawData("data", 4);
        out << quint32(bytes);
        for (int i = 0; i < count; ++i) {
            const double seconds = double(i) / samplesASecond;
            const bool beep = seconds >= 1 && seconds < 1.1;
            for (int channel = 0; channel < channels; ++channel)
                out << qint16(beep ? 12000 * std::sin(2 * M_PI * 1000 * seconds) : 0);
        }
        return path;
    }
    static std::unique_ptr<AudioReader> open(const QString& path, bool withPictures = true) {
        SampleIndex pictures;
        if (withPictures) {
            const auto frames = FrameReader::open(path);
            if (frames) pictures = (*frames)->index();
        }
        auto reader = AudioReader::open(path, pictures, rate);
        EXPECT_TRUE(reader) << (reader ? "" : reader.error().text.toStdString());
        return reader ? std::move(*reader) : nullptr;
    }
    /// Reads in uneven pieces, as a device does.
    static std::vector<float> samples(AudioReader& reader, qint64 first, qint64 count) {
        std::vector<float> pairs(size_t(count) * 2, 9.0f);
        for (qint64 done = 0; done < count;) {
            const qint64 piece = std::min<qint64>(count - done, 1000 + done % 777);
            EXPECT_TRUE(reader.read(first + done, pairs.data() + done * 2, piece));
            done += piece;
        }
        return pairs;
    }
    /// Where beeps begin, in seconds from the first sample of the stretch.
    static std::vector<double> beeps(const std::vector<float>& pairs) {
        std::vector<double> found;
        size_t loudAt = 0;
        for (size_t i = 0; i < pairs.size() / 2; ++i) {
            if (std::abs(pairs[2 * i]) < 0.2f) continue;
            if (found.empty() || i - loudAt > rate / 10) found.push_back(double(i) / rate);
            loudAt = i;
        }
        return found;
    }
    static void expectBeepsAt(const std::vector<double>& expected, const std::vector<float>& pairs) {
        const std::vector<double> found = beeps(pairs);
        ASSERT_EQ(found.size(), expected.size());
        for (size_t i = 0; i < found.size(); ++i)
            EXPECT_NEAR(found[i], expected[i], 0.001);
    }

    QTemporaryDir folder;
};

TEST_F(AudioReaderTest, BeepsStandAtTheirSecondsInEveryContainer) {
    for (const char* extension : {"mov", "mp4", "mkv", "avi", "ts", "mxf"}) {
        SCOPED_TRACE(extension);
        const auto reader = open(movie(extension));
        ASSERT_TRUE(reader);
        const double shift = double(reader->start()) / rate;
        EXPECT_NEAR(shift, 0, 0.1);
        const auto pairs = samples(*reader, 0, 4 * rate);
        std::vector<double> found = beeps(pairs);
        // The encoders of old containers delay sound by a fixed time that they don't tell; seconds stay apart
        // exactly.
        ASSERT_GE(found.size(), 4u);
        const bool tells = QLatin1String(extension) != QLatin1String("avi") &&
                           QLatin1String(extension) != QLatin1String("ts");
        for (size_t i = 0; i < 4; ++i)
            EXPECT_NEAR(found[i], tells ? double(i) : found[0] + double(i), 0.001);
        EXPECT_LT(found[0], 0.06);
    }
}

TEST_F(AudioReaderTest, AnyJumpGivesTheSamplesOfReadingThrough) {
    for (const char* extension : {"mov", "mkv", "ts", "mxf"}) {
        SCOPED_TRACE(extension);
        const auto reader = open(movie(extension));
        ASSERT_TRUE(reader);
        const auto whole = samples(*reader, 0, 4 * rate);
        std::mt19937 random(5);
        for (int jump = 0; jump < 12; ++jump) {
            const qint64 first = jump == 0 ? 0 : qint64(random() % (3 * rate));
            const auto part = samples(*reader, first, rate);
            const std::vector<float> expected(whole.begin() + first * 2, whole.begin() + (first + rate) * 2);
            const auto wanted = beeps(expected), found = beeps(part);
            ASSERT_EQ(found.size(), wanted.size()) << "from " << first;
            for (size_t i = 0; i < found.size(); ++i)
                EXPECT_NEAR(found[i], wanted[i], 0.001) << "from " << first;
        }
    }
}

TEST_F(AudioReaderTest, TheFirstPictureIsTheOriginAndOutsideTheTrackIsSilence) {
    std::vector<qint64> late;
    for (qint64 tick = 10; tick < 100; ++tick)
        late.push_back(tick); // the first picture 0.4 s after the sound begins
    const auto reader = open(movie("mov", late));
    ASSERT_TRUE(reader);
    EXPECT_NEAR(double(reader->start()) / rate, -0.4, 0.001);
    expectBeepsAt({0.6, 1.6, 2.6}, samples(*reader, 0, 3 * rate));
    expectBeepsAt({0.0, 1.0}, samples(*reader, reader->start(), 2 * rate - 4000));

    const qint64 before = reader->start() - 2 * rate, behind = 20 * rate;
    for (const qint64 first : {behind, before, behind}) {
        const auto silence = samples(*reader, first, rate);
        EXPECT_TRUE(std::all_of(silence.begin(), silence.end(), [](float value) { return value == 0.0f; }));
    }
    expectBeepsAt({1.0}, samples(*reader, reader->start() - rate, rate + rate / 2));
}

TEST_F(AudioReaderTest, EveryLayoutAndRateBecomesStereoAtTheRateAskedFor) {
    for (const int samplesASecond : {8000, 44100, 48000, 96000})
        for (const int channels : {1, 2, 6, 8}) {
            SCOPED_TRACE(QStringLiteral("%1 Hz, %2").arg(samplesASecond).arg(channels).toStdString());
            const auto reader = open(wave(samplesASecond, channels), false);
            ASSERT_TRUE(reader);
            EXPECT_EQ(reader->start(), 0);
            const auto pairs = samples(*reader, 0, 3 * rate);
            expectBeepsAt({1.0}, pairs);
            for (size_t i = 0; i < pairs.size(); i += 2)
                ASSERT_NEAR(pairs[i], pairs[i + 1], 1e-4) << "all channels alike, both sides alike";
            expectBeepsAt({0.25}, samples(*reader, rate * 3 / 4, rate));
        }
}

TEST_F(AudioReaderTest, FilesWithoutSoundFailToOpenAndAGivenUpReadLeavesTheNextExact) {
    EXPECT_FALSE(AudioReader::open(movie("mp4", {}, false), {}, rate));
    EXPECT_FALSE(AudioReader::open(folder.filePath(u"nowhere.mov"_qs), {}, rate));
    const auto reader = open(movie("mov"));
    ASSERT_TRUE(reader);
    const CancelFlag cancel = true;
    std::vector<float> pairs(size_t(rate) * 2);
    EXPECT_FALSE(reader->read(2 * rate, pairs.data(), rate, &cancel));
    expectBeepsAt({0.5}, samples(*reader, rate + rate / 2, rate - 100));
}

} // namespace
} // namespace daylark
