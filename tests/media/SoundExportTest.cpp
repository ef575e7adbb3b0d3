#include "media/encode/SoundExport.h"

#include "media/encode/WaveFile.h"
#include "media/sound/AudioReader.h"
#include "support/FfmpegTest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cmath>
#include <random>
#include <vector>

namespace daylark {
namespace {

using Kind = MovieSound::Kind;

class SoundExportTest : public test::FfmpegTest {
protected:
    /// Frames of noise, whole numbers of so many bits, from full level down to the last bit.
    static std::vector<double> noise(qint64 frames, int channels, int bits, unsigned seed = 1) {
        std::mt19937 random(seed);
        const double one = std::ldexp(1.0, bits - 1);
        std::vector<double> samples(size_t(frames * channels));
        for (double& sample : samples)
            sample = std::floor((double(random()) / 4294967296.0 * 2 - 1) * one) / one;
        return samples;
    }
    QStringList input(const std::vector<double>& samples, int rate, const char* layout) const {
        const QString path = folder.filePath(u"made_%1.f64"_qs.arg(++made));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(reinterpret_cast<const char*>(samples.data()), qint64(samples.size() * sizeof(double)));
        return {u"-f"_qs, u"f64le"_qs, u"-ar"_qs, QString::number(rate), u"-ch_layout"_qs, QLatin1String(layout),
            u"-i"_qs, path};
    }
    /// A file of these sounds, a stream each, with three seconds of pictures where its name is a movie's.
    QString make(const char* name, const std::vector<QStringList>& sounds, const char* codec,
        const QStringList& extra = {}) const {
        const QString path = folder.filePath(QLatin1String(name));
        const bool pictures = !path.endsWith(u".wav"_qs) && !path.endsWith(u".flac"_qs);
        QStringList arguments, maps;
        if (pictures) {
            arguments << u"-f"_qs << u"lavfi"_qs << u"-i"_qs << u"color=s=128x96:r=25:d=3"_qs;
            maps << u"-map"_qs << u"0:v"_qs << u"-c:v"_qs << u"mpeg2video"_qs;
        }
        for (size_t i = 0; i < sounds.size(); ++i) {
            arguments << sounds[i];
            maps << u"-map"_qs << QStringLiteral("%1:a").arg(i + (pictures ? 1 : 0));
        }
        const bool ok = ffmpeg(arguments + maps + QStringList{u"-c:a"_qs, QLatin1String(codec)} + extra + QStringList{path});
        EXPECT_TRUE(ok) << name << ' ' << codec;
        return path;
    }
    /// What another program reads out of a sound file.
    static std::vector<double> readBack(const QString& path) {
        const QByteArray bytes = answerOf("ffmpeg", {u"-v"_qs, u"error"_qs, u"-i"_qs, path, u"-f"_qs, u"f64le"_qs, u"-"_qs});
        std::vector<double> samples(size_t(bytes.size()) / sizeof(double));
        std::copy_n(bytes.constData(), samples.size() * sizeof(double), reinterpret_cast<char*>(samples.data()));
        return samples;
    }
    static QString factsOf(const QString& path) {
        return QString::fromUtf8(answerOf("ffprobe", {u"-v"_qs, u"error"_qs, u"-show_entries"_qs,
                                                      u"stream=codec_name,sample_rate,channels,channel_layout"_qs,
                                                      u"-of"_qs, u"csv=p=0"_qs, path}))
            .trimmed();
    }
    /// Three seconds: what was made, cut or followed by silence.
    static void expectSamples(const std::vector<double>& found, std::vector<double> made, int rate, int channels) {
        made.resize(size_t(3 * rate * channels), 0.0);
        ASSERT_EQ(found.size(), made.size());
        for (size_t i = 0; i < made.size(); ++i)
            ASSERT_EQ(found[i], made[i]) << "sample " << i / size_t(channels) << ", channel " << i % size_t(channels);
    }
    Result<SavedSound> save(const QString& movie, const MovieSound& sound = {}, const ExportWatch& watch = {}) const {
        return saveSoundAsWave(movie, sound, wave(), nullptr, watch);
    }
    [[nodiscard]] QString wave() const { return folder.filePath(u"saved.wav"_qs); }

    mutable int made = 0;
};

TEST_F(SoundExportTest, OwnSoundKeepsItsDepthRateAndChannelsSampleForSample) {
    struct Case {
        const char *file, *codec, *layout;
        int rate, channels, bits;
        double seconds;
        const char* facts;
        const char* format = nullptr; ///< which of its own the encoder is to take
    };
    const Case cases[] = {
        {"a.mov", "pcm_s16le", "stereo", 48000, 2, 16, 3, "pcm_s16le,48000,2,unknown"},
        {"b.mov", "pcm_s24le", "stereo", 48000, 2, 24, 2.2, "pcm_s24le,48000,2,stereo"},
        {"c.mov", "pcm_s24be", "5.1", 96000, 6, 24, 4.1, "pcm_s24le,96000,6,5.1"},
        {"d.mov", "pcm_f32le", "mono", 44100, 1, 24, 3.5, "pcm_f32le,44100,1,mono"},
        {"e.mkv", "pcm_s32le", "stereo", 192000, 2, 32, 1.0, "pcm_s32le,192000,2,stereo"},
        {"f.mkv", "pcm_f64le", "7.1", 48000, 8, 32, 3, "pcm_f64le,48000,8,7.1"},
        {"g.mov", "alac", "stereo", 44100, 2, 16, 3, "pcm_s16le,44100,2,unknown", "s16p"},
        {"h.mkv", "flac", "5.1(side)", 48000, 6, 16, 3, "pcm_s16le,48000,6,5.1(side)", "s16"},
        {"l.mov", "alac", "5.1", 48000, 6, 24, 3, "pcm_s24le,48000,6,5.1", "s32p"},
        {"i.mxf", "pcm_s24le", "mono", 48000, 1, 24, 3, "pcm_s24le,48000,1,mono"},
        {"j.avi", "pcm_s16le", "mono", 32000, 1, 16, 3, "pcm_s16le,32000,1,unknown"},
        {"k.mov", "pcm_s24le", "hexadecagonal", 48000, 16, 24, 3, "pcm_s24le,48000,16"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(std::string(each.file) + ' ' + each.codec + ' ' + each.layout);
        const auto samples = noise(qint64(each.seconds * each.rate), each.channels, each.bits);
        const QString movie = make(each.file, {input(samples, each.rate, each.layout)}, each.codec,
                                   each.format ? QStringList{u"-sample_fmt"_qs, QLatin1String(each.format)} : QStringList());
        qint64 told = 0;
        const auto saved = save(movie, {}, {nullptr, [&](qint64 done, qint64 total) { told = done == total ? total : 0; }});
        ASSERT_TRUE(saved) << saved.error().text.toStdString();
        EXPECT_EQ(saved->frames, 3 * each.rate);
        EXPECT_EQ(told, saved->frames);
        EXPECT_EQ(saved->bytes, QFileInfo(wave()).size());
        EXPECT_TRUE(factsOf(wave()).startsWith(QLatin1String(each.facts))) << factsOf(wave()).toStdString();
        expectSamples(readBack(wave()), samples, each.rate, each.channels);
    }
}

TEST_F(SoundExportTest, MonoTracksBecomeTheChannelsOfOneSound) {
    std::vector<std::vector<double>> each;
    std::vector<QStringList> inputs;
    for (unsigned track = 0; track < 4; ++track) {
        each.push_back(noise(48000 * 3, 1, 24, track + 1));
        inputs.push_back(input(each.back(), 48000, "mono"));
    }
    const auto saved = save(make("tracks.mxf", inputs, "pcm_s24le"));
    ASSERT_TRUE(saved) << saved.error().text.toStdString();
    EXPECT_EQ(saved->form.channels, 2) << "the mixdown";
    std::vector<double> both;
    for (size_t i = 0; i < each[0].size(); ++i) {
        both.push_back(each[0][i]);
        both.push_back(each[1][i]);
    }
    expectSamples(readBack(wave()), both, 48000, 2);
}

TEST_F(SoundExportTest, WhatIsDecodedFromALossyCodeIsWrittenAsItIsHeard) {
    const auto samples = noise(44100 * 3, 2, 16);
    const QString movie = make("aac.mp4", {input(samples, 44100, "stereo")}, "aac", {u"-b:a"_qs, u"256k"_qs});
    ASSERT_TRUE(save(movie));
    const std::vector<double> found = readBack(wave());
    ASSERT_EQ(found.size(), size_t(44100 * 3 * 2));
    SampleIndex pictures;
    if (const auto frames = FrameReader::open(movie)) pictures = (*frames)->index();
    const auto reader = AudioReader::open(movie, pictures, 44100);
    ASSERT_TRUE(reader);
    std::vector<float> heard(found.size());
    ASSERT_TRUE((*reader)->read(0, heard.data(), 44100 * 3));
    for (size_t i = 0; i < heard.size(); ++i)
        ASSERT_FLOAT_EQ(float(found[i]), heard[i]) << i;
}

TEST_F(SoundExportTest, AnAddedFileTakesThePlaceOfTheOwnSoundForTheMoviesLength) {
    const QString movie = make("own.mov", {input(noise(48000 * 3, 2, 16), 48000, "stereo")}, "pcm_s16le");
    struct Case {
        const char *file, *codec, *layout;
        int rate, channels;
        double seconds;
    };
    for (const Case& each : {Case{"short.wav", "pcm_s24le", "mono", 44100, 1, 1.3},
                             Case{"long.wav", "pcm_s24le", "5.1", 96000, 6, 5}, Case{"exact.flac", "flac", "stereo",
                                 48000, 2, 3}}) {
        SCOPED_TRACE(each.file);
        const int bits = qstrcmp(each.codec, "flac") == 0 ? 16 : 24;
        const auto samples = noise(qint64(each.seconds * each.rate), each.channels, bits, 7);
        const QString file = make(each.file, {input(samples, each.rate, each.layout)}, each.codec);
        const auto saved = save(movie, added(file));
        ASSERT_TRUE(saved) << saved.error().text.toStdString();
        auto expected = samples;
        expected.resize(size_t(3 * each.rate * each.channels), 0.0);
        expectSamples(readBack(wave()), expected, each.rate, each.channels);
        // A file of sound alone is as long as it is.
        const auto alone = save(file);
        ASSERT_TRUE(alone);
        EXPECT_EQ(alone->frames, qint64(each.seconds * each.rate));
        EXPECT_EQ(readBack(wave()), samples);
    }
}

TEST_F(SoundExportTest, NothingIsTouchedWhereThereIsNoSoundOrItIsGivenUp) {
    const QString movie = make("own.mov", {input(noise(48000 * 3, 2, 16), 48000, "stereo")}, "pcm_s16le");
    const QString silent = make("silent.mov", {}, "copy");
    QFile older(wave());
    ASSERT_TRUE(older.open(QIODevice::WriteOnly) && older.write("older") == 5);
    older.close();
    MovieSound gone = added(movie);
    gone.addedBookmark.replace(movie.toUtf8(), QByteArray(movie.toUtf8()).replace("own", "non"));
    CancelFlag cancel = false;
    const ExportWatch givenUp{&cancel, [&](qint64 done, qint64) { cancel = done > 20000; }};
    EXPECT_FALSE(save(silent));
    EXPECT_FALSE(save(movie, {Kind::none, {}, {}}));
    EXPECT_FALSE(save(folder.filePath(u"nowhere.mov"_qs)));
    EXPECT_FALSE(save(movie, {}, givenUp));
    EXPECT_TRUE(cancel);
    // In the silence behind the sound, too.
    const QString brief = make("brief.mov", {input(noise(4800, 2, 16), 48000, "stereo")}, "pcm_s16le");
    cancel = false;
    qint64 last = 0;
    const ExportWatch soon{&cancel, [&](qint64 done, qint64) { cancel = (last = done) > 40000; }};
    EXPECT_FALSE(save(brief, {}, soon));
    EXPECT_LT(last, 100000);
    EXPECT_FALSE(saveSoundAsWave(movie, {}, folder.filePath(u"no/folder.wav"_qs)));
    const QByteArray before = QByteArray::number(QFileInfo(movie).size());
    EXPECT_FALSE(saveSoundAsWave(movie, {}, movie)) << "not over the movie itself";
    EXPECT_EQ(QByteArray::number(QFileInfo(movie).size()), before);
    ASSERT_TRUE(older.open(QIODevice::ReadOnly));
    EXPECT_EQ(older.readAll(), "older");
    for (const QString& name : QDir(folder.path()).entryList(QDir::Files | QDir::Hidden))
        EXPECT_FALSE(name.contains(u"unfinished"_qs)) << name.toStdString();
}

TEST_F(SoundExportTest, BeyondFourGigabytesTheHeaderCountsIn64Bits) {
    SoundForm form{48000, 8, 0x63F, SoundDepth::float32};
    const qint64 frames = qint64(200) * 60 * 48000; // 17 GiB: the last second isn't silent
    const QByteArray head = waveHeader(form, frames);
    QFile file(wave());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(head);
    ASSERT_TRUE(file.resize(head.size() + frames * 32)); // a hole where nothing is said
    const std::vector<double> last = noise(48000, 8, 24);
    file.seek(head.size() + (frames - 48000) * 32);
    file.write(waveSamples(last.data(), qint64(last.size()), form.depth));
    file.close();
    EXPECT_EQ(head.left(4), "RF64");
    EXPECT_EQ(answerOf("ffprobe", {u"-v"_qs, u"error"_qs, u"-show_entries"_qs,
        u"stream=duration_ts,channel_layout"_qs, u"-of"_qs,
                                   u"csv=p=0"_qs, wave()})
                  .trimmed(),
              "7.1," + QByteArray::number(frames));
    const QByteArray bytes = answerOf("ffmpeg", {u"-v"_qs, u"error"_qs, u"-ss"_qs, QString::number(200 * 60 - 1),
        u"-i"_qs, wave(),
                                                 u"-f"_qs, u"f64le"_qs, u"-"_qs});
    ASSERT_EQ(size_t(bytes.size()), last.size() * sizeof(double));
    EXPECT_EQ(std::memcmp(bytes.constData(), last.data(), size_t(bytes.size())), 0);

    // Just below and just above what 32 bits count.
    form = {48000, 1, 4, SoundDepth::bits16};
    EXPECT_EQ(waveHeader(form, 2147483629).left(4), "RIFF");
    EXPECT_EQ(waveHeader(form, 2147483630).left(4), "RF64");
}

TEST_F(SoundExportTest, LoudSamplesAreCutOffAndWhatIsNoNumberIsSilence) {
    const double samples[] = {1.0, -1.0, 1.5, -7, std::nan(""), 0.5, -1.0 / 32768};
    const QByteArray bytes = waveSamples(samples, 7, SoundDepth::bits16);
    ASSERT_EQ(bytes.size(), 14);
    const qint16 expected[] = {32767, -32768, 32767, -32768, 0, 16384, -1};
    EXPECT_EQ(std::memcmp(bytes.constData(), expected, 14), 0);
}

} // namespace
} // namespace daylark
