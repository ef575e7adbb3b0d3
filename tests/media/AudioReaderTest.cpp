#include "media/sound/AudioReader.h"

#include "support/MovieMaker.h"

#include <QDataStream>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
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
    /// A beep of a tenth of a second at half the full level, for ffmpeg's aevalsrc.
    static QString beepAt(double seconds) {
        return QStringLiteral("0.5*sin(6283.2*t)*between(t,%1,%2)").arg(seconds).arg(seconds + 0.1);
    }
    /// A movie of three seconds with sound tracks as ffmpeg's own program writes them; each source says what
    /// its channels carry ("expression|expression:c=layout"). Null where the program is missing or fails.
    QString production(const char* extension, const QStringList& sources, const QStringList& extra = {},
                       double soundLate = 0) const {
        const QString path = folder.filePath(QStringLiteral("production.") + QLatin1String(extension));
        const QString picture = QStringLiteral("color=s=128x96:r=25:d=3");
        QStringList arguments{u"-y"_qs, u"-f"_qs, u"lavfi"_qs, u"-i"_qs, picture},
            maps{u"-map"_qs, u"0:v"_qs};
        for (const QString& source : sources) {
            if (soundLate > 0) arguments << u"-itsoffset"_qs << QString::number(soundLate);
            arguments << u"-f"_qs << u"lavfi"_qs << u"-i"_qs
                      << QString(u"aevalsrc="_qs + source + u":s=48000"_qs +
                                 (source.contains(u":d="_qs) ? u""_qs : u":d=3"_qs))
                             .replace(u',', u"\\,"_qs);
            maps << u"-map"_qs << QStringLiteral("%1:a").arg(maps.size() / 2);
        }
        arguments << maps << u"-c:v"_qs << u"mpeg2video"_qs << u"-c:a"_qs << u"pcm_s16le"_qs << extra << path;
        return QProcess::execute(u"ffmpeg"_qs, QStringList{u"-v"_qs, u"error"_qs} + arguments) == 0
                   ? path
                   : QString();
    }
    struct Sides {
        std::vector<double> left, right;
        float loudestLeft = 0, loudestRight = 0;
    };
    static Sides heard(AudioReader& reader) {
        std::vector<float> pairs = samples(reader, 0, 3 * rate);
        Sides sides;
        sides.left = beeps(pairs);
        for (size_t i = 0; i < pairs.size(); i += 2) {
            sides.loudestLeft = std::max(sides.loudestLeft, pairs[i]);
            sides.loudestRight = std::max(sides.loudestRight, pairs[i + 1]);
            pairs[i] = pairs[i + 1];
        }
        sides.right = beeps(pairs);
        return sides;
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
        for (const int channels : {1, 2, 3, 6, 8, 12, 16}) {
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

class ProductionTracksTest : public AudioReaderTest {
protected:
    void SetUp() override {
        if (QStandardPaths::findExecutable(u"ffmpeg"_qs).isEmpty()) GTEST_SKIP() << "no ffmpeg program";
    }
    static void expectSeconds(const std::vector<double>& found, const std::vector<double>& expected) {
        ASSERT_EQ(found.size(), expected.size());
        for (size_t i = 0; i < found.size(); ++i)
            EXPECT_NEAR(found[i], expected[i], 0.002);
    }
};

TEST_F(ProductionTracksTest, OfMonoTracksTheFirstTwoAreLeftAndRightAndASingleOneIsBoth) {
    for (const char* extension : {"mov", "mxf", "mkv"}) {
        SCOPED_TRACE(extension);
        QStringList tracks{beepAt(0.5), beepAt(1.5)};
        for (int more = 3; more <= 8; ++more)
            tracks << beepAt(2.2);
        const auto reader = open(production(extension, tracks));
        ASSERT_TRUE(reader);
        const Sides sides = heard(*reader);
        expectSeconds(sides.left, {0.5});
        expectSeconds(sides.right, {1.5});
        EXPECT_NEAR(sides.loudestLeft, 0.5, 0.01);
        EXPECT_NEAR(sides.loudestRight, 0.5, 0.01);
        const auto part = samples(*reader, rate, rate); // a jump back finds both tracks
        expectBeepsAt({}, part);
        const auto single = open(production(extension, {beepAt(1)}));
        ASSERT_TRUE(single);
        const Sides both = heard(*single);
        expectSeconds(both.left, {1});
        expectSeconds(both.right, {1});
        EXPECT_NEAR(both.loudestLeft, 0.5, 0.01);
    }
}

TEST_F(ProductionTracksTest, TracksThatNameTheirSpeakersAreMixedAndOtherLanguagesLeftOut) {
    const auto reader = open(production("mov", {beepAt(0.2) + u":c=FL"_qs, beepAt(0.7) + u":c=FR"_qs,
                                                beepAt(1.2) + u":c=FC"_qs, beepAt(1.7) + u":c=LFE"_qs,
                                                beepAt(2.2) + u":c=SL"_qs, beepAt(2.7) + u":c=SR"_qs}));
    ASSERT_TRUE(reader);
    const Sides sides = heard(*reader);
    expectSeconds(sides.left, {0.2, 1.2, 2.2});
    expectSeconds(sides.right, {0.7, 1.2, 2.7});
    const auto english = open(
        production("mkv", {beepAt(1), beepAt(2)},
                   {u"-metadata:s:a:0"_qs, u"language=eng"_qs, u"-metadata:s:a:1"_qs, u"language=fra"_qs}));
    ASSERT_TRUE(english);
    const Sides only = heard(*english);
    expectSeconds(only.left, {1});
    expectSeconds(only.right, {1});
}

TEST_F(ProductionTracksTest, SurroundIsMixedDownWithItsCentreOnBothSides) {
    const QString silence = u"0|"_qs;
    for (const char* layout : {"5.1", "7.1"}) {
        SCOPED_TRACE(layout);
        const bool small = QLatin1String(layout) == QLatin1String("5.1");
        const QString channels = beepAt(0.5) + u"|0|"_qs + beepAt(1) + u'|' + beepAt(1.5) + u"|0|"_qs +
                                 beepAt(2) + (small ? u""_qs : u"|0|0"_qs) + u":c="_qs +
                                 QLatin1String(layout);
        const auto reader = open(production("mov", {channels}));
        ASSERT_TRUE(reader);
        const Sides sides = heard(*reader);
        expectSeconds(sides.left, {0.5, 1});
        expectSeconds(sides.right, {1, 2});
        EXPECT_NEAR(sides.loudestLeft, 0.5, 0.01);
        EXPECT_NEAR(sides.loudestRight, 0.354, 0.01);
    }
}

TEST_F(ProductionTracksTest, TracksThatBeginLateOrEndEarlyKeepTheirPlaces) {
    for (const char* extension : {"mov", "mkv"}) {
        SCOPED_TRACE(extension);
        const auto late = open(production(extension, {beepAt(0.5), beepAt(1)}, {}, 1.2));
        ASSERT_TRUE(late);
        EXPECT_NEAR(double(late->start()) / rate, 1.2, 0.002);
        const Sides sides = heard(*late);
        expectSeconds(sides.left, {1.7});
        expectSeconds(sides.right, {2.2});
        expectBeepsAt({0.2}, samples(*late, rate * 3 / 2, rate));
    }
    const QString two = production("mov", {beepAt(0.5) + u":d=1"_qs, beepAt(2.5)});
    const auto early = open(two);
    ASSERT_TRUE(early);
    const Sides sides = heard(*early);
    expectSeconds(sides.left, {0.5});
    expectSeconds(sides.right, {2.5});
    samples(*early, 2 * rate, rate); // straight into where the other one has ended
    const auto again = samples(*early, 0, rate);
    expectBeepsAt({0.5}, again);
}

} // namespace
} // namespace daylark
