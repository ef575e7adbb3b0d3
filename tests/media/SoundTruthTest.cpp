#include "media/sound/AudioReader.h"
#include "support/FfmpegTest.h"

#include <QFile>

#include <cmath>
#include <random>
#include <vector>

namespace daylark {
namespace {

constexpr int rate = 48000;
constexpr double length = 3; // seconds of sound
constexpr double lower = 0.70710678;

/// A layout by FFmpeg's name, and how loud each channel is on either side.
struct Layout {
    const char* name;
    std::vector<std::pair<double, double>> channels;
};
const Layout mono{"mono", {{1, 1}}};
const Layout stereo{"stereo", {{1, 0}, {0, 1}}};
const Layout three{"3.0", {{1, 0}, {0, 1}, {lower, lower}}};
const Layout four{"4.0", {{1, 0}, {0, 1}, {lower, lower}, {0.5, 0.5}}};
const Layout quad{"quad", {{1, 0}, {0, 1}, {lower, 0}, {0, lower}}};
const Layout five{"5.0(side)", {{1, 0}, {0, 1}, {lower, lower}, {lower, 0}, {0, lower}}};
const Layout fiveOne{"5.1", {{1, 0}, {0, 1}, {lower, lower}, {0, 0}, {lower, 0}, {0, lower}}};
const Layout sixOne{"6.1", {{1, 0}, {0, 1}, {lower, lower}, {0, 0}, {0.5, 0.5}, {lower, 0}, {0, lower}}};
const Layout sevenOne{
    "7.1", {{1, 0}, {0, 1}, {lower, lower}, {0, 0}, {lower, 0}, {0, lower}, {lower, 0}, {0, lower}}};

/// What a channel carries: a tone that rises, so that no two moments are alike.
double made(size_t channel, double seconds) {
    if (seconds < 0 || seconds >= length) return 0;
    const auto c = double(channel);
    return 0.12 * std::sin(2 * M_PI * ((200 + 90 * c) * seconds + (150 + 37 * c) * seconds * seconds));
}
double mixed(const Layout& layout, double seconds, bool right) {
    double sum = 0;
    for (size_t channel = 0; channel < layout.channels.size(); ++channel)
        sum += made(channel, seconds) *
               (right ? layout.channels[channel].second : layout.channels[channel].first);
    return sum;
}

struct Sound {
    const char* file; ///< with the container's extension
    const char* codec;
    int samplesASecond;
    const Layout& layout;
    bool lossless;
    int untold = 0; ///< samples by which encoder and muxer may delay it without telling (negative: hasten)
    bool picture = true;
};

class SoundTruthTest : public test::FfmpegTest {
protected:
    /// The samples as made, for ffmpeg to read.
    QStringList source(int samplesASecond, const Layout& layout) const {
        const QString path = folder.filePath(u"source.f32"_qs);
        const auto count = size_t(length * samplesASecond);
        std::vector<float> samples;
        for (size_t i = 0; i < count; ++i)
            for (size_t channel = 0; channel < layout.channels.size(); ++channel)
                samples.push_back(float(made(channel, double(i) / samplesASecond)));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(reinterpret_cast<const char*>(samples.data()), qint64(samples.size() * sizeof(float)));
        return {u"-f"_qs,         u"f32le"_qs,
                u"-ar"_qs,        QString::number(samplesASecond),
                u"-ch_layout"_qs, QString::fromLatin1(layout.name),
                u"-i"_qs,         path};
    }
    QString make(const Sound& sound, const QStringList& extra = {}) const {
        const QString path = folder.filePath(QLatin1String(sound.file));
        QStringList arguments = source(sound.samplesASecond, sound.layout);
        if (sound.picture)
            arguments << u"-f"_qs << u"lavfi"_qs << u"-i"_qs << u"color=s=128x96:r=25:d=3"_qs << u"-map"_qs
                      << u"1:v"_qs << u"-map"_qs << u"0:a"_qs << u"-c:v"_qs
                      << (path.endsWith(u"webm"_qs) ? u"libvpx"_qs : u"mpeg2video"_qs);
        arguments << u"-c:a"_qs << QLatin1String(sound.codec) << u"-b:a"_qs
                  << QString::number(96000 * int(sound.layout.channels.size())) << u"-strict"_qs << u"-2"_qs;
        return ffmpeg(arguments + extra << path) ? path : QString();
    }
    static std::unique_ptr<AudioReader> open(const QString& path) {
        SampleIndex pictures;
        if (const auto frames = FrameReader::open(path)) pictures = (*frames)->index();
        auto reader = AudioReader::open(path, pictures, rate);
        EXPECT_TRUE(reader) << (reader ? "" : reader.error().text.toStdString());
        return reader ? std::move(*reader) : nullptr;
    }
    static std::vector<float> samples(AudioReader& reader, qint64 first, qint64 count) {
        std::vector<float> pairs(size_t(count) * 2);
        for (qint64 done = 0; done < count;) {
            const qint64 piece = std::min<qint64>(count - done, 900 + done % 1313);
            EXPECT_TRUE(reader.read(first + done, pairs.data() + done * 2, piece));
            done += piece;
        }
        return pairs;
    }
    /// Decibels of the sound over what differs from it, between two moments (seconds of what was read).
    static double likeness(const std::vector<float>& pairs, const Layout& layout, double shift, double from,
                           double until) {
        double power = 0, error = 1e-12;
        for (auto i = size_t(from * rate); i < size_t(until * rate) && i < pairs.size() / 2; ++i)
            for (const bool right : {false, true}) {
                const double wanted = mixed(layout, double(i) / rate + shift, right);
                power += wanted * wanted;
                error += std::pow(double(pairs[2 * i + (right ? 1 : 0)]) - wanted, 2);
            }
        return 10 * std::log10(power / error);
    }
    /// By how many samples it comes late, as seen in a fiftieth of a second.
    static int lag(const std::vector<float>& pairs, const Layout& layout, double shift, double from,
                   int least, int most) {
        int best = least;
        double bestLikeness = -1000;
        for (int late = least; late <= most; ++late) {
            const double found = likeness(pairs, layout, shift - double(late) / rate, from, from + 0.02);
            if (found <= bestLikeness) continue;
            bestLikeness = found;
            best = late;
        }
        return best;
    }
    /// That it is what was made from `shift` on, each sample in its place, and silent after its end.
    static void expectAsMade(AudioReader& reader, const Sound& sound, double shift = 0) {
        // One container rounds its time stamps to milliseconds.
        const QString file = QLatin1String(sound.file);
        const int rounding = file.endsWith(u".mkv"_qs) || file.endsWith(u".webm"_qs) ? rate / 1000 : 0;
        const auto pairs = samples(reader, 0, 4 * rate);
        const int late = lag(pairs, sound.layout, shift, 1.5, std::min(0, sound.untold) - rounding,
                             std::max(0, sound.untold) + rounding);
        shift -= double(late) / rate;
        std::printf("sound %s %s: %d samples late, the container tells to %d\n", sound.codec,
                    file.section(u'.', -1).toUtf8().constData(), late, std::max(rounding, std::abs(sound.untold)));
        const double least = sound.lossless ? 50 : 17, roughly = 17, end = length - shift;
        EXPECT_GT(likeness(pairs, sound.layout, shift, std::max(0.0, -shift) + 0.01, 0.3), roughly)
            << "its beginning";
        EXPECT_GT(likeness(pairs, sound.layout, shift, 0.3, end - 0.3), least);
        EXPECT_GT(likeness(pairs, sound.layout, shift, end - 0.3, end - 0.03), roughly) << "its end";
        for (auto i = size_t((end + 0.1) * rate); i < pairs.size() / 2; ++i)
            ASSERT_LT(std::abs(pairs[2 * i]), 0.002) << "silence " << double(i) / rate;
        std::mt19937 random(3);
        for (int jump = 0; jump < 6; ++jump) {
            const auto first = qint64(random() % (2 * rate - rate / 4));
            const auto part = samples(reader, first, rate / 4);
            double there = shift + double(first) / rate;
            there -= double(lag(part, sound.layout, there, 0.1, -rounding, rounding)) / rate;
            // Between two rates a jump may come out half a sample beside.
            EXPECT_GT(likeness(part, sound.layout, there, 0.01, 0.25),
                      rounding == 0 && sound.samplesASecond == rate ? least : roughly)
                << "jump to " << first;
        }
    }

};

TEST_F(SoundTruthTest, EveryCodecLayoutAndRateIsWhatWasMadeSampleBySample) {
    const Sound sounds[] = {
        {"a.mov", "pcm_s24le", 48000, stereo, true},   {"b.mov", "pcm_s16be", 44100, mono, true},
        {"c.mov", "pcm_f32le", 96000, fiveOne, true},  {"d.mov", "alac", 44100, stereo, true},
        {"e.mxf", "pcm_s16le", 48000, stereo, true},   {"f.mkv", "flac", 96000, sevenOne, true},
        {"g.mkv", "flac", 88200, sixOne, true},        {"h.mkv", "flac", 44100, five, true},
        {"i.mkv", "flac", 48000, quad, true},          {"j.mkv", "flac", 48000, four, true},
        {"k.mov", "pcm_s16le", 32000, three, true},    {"l.avi", "pcm_s16le", 44100, stereo, true},
        {"m.mov", "aac", 48000, stereo, false},        {"n.mp4", "aac", 44100, mono, false},
        {"o.mp4", "aac", 96000, stereo, false},        {"p.mp4", "aac", 48000, fiveOne, false},
        {"q.mkv", "aac", 44100, stereo, false},        {"r.mkv", "libopus", 48000, stereo, false, -400},
        {"s.webm", "libvorbis", 44100, stereo, false}, {"t.mkv", "libopus", 48000, fiveOne, false, -400},
        {"u.ts", "aac", 48000, stereo, false, 2200},   {"v.ts", "ac3", 48000, fiveOne, false, 600},
        {"w.ts", "mp2", 44100, stereo, false, 600},    {"x.avi", "libmp3lame", 44100, stereo, false, 1300},
        {"y.mp4", "ac3", 48000, stereo, false, 300},
    };
    for (const Sound& sound : sounds) {
        SCOPED_TRACE(std::string(sound.file) + ' ' + sound.codec + ' ' + sound.layout.name);
        const QString path = make(sound);
        ASSERT_FALSE(path.isNull());
        const auto reader = open(path);
        ASSERT_TRUE(reader);
        expectAsMade(*reader, sound);
    }
}

TEST_F(SoundTruthTest, AFileCutByItsEditListBeginsWhereThePictureBegins) {
    for (const Sound& sound :
         {Sound{"whole.mov", "pcm_s16le", 48000, stereo, true},
          Sound{"whole.mp4", "aac", 48000, stereo, false}, Sound{"whole.mov", "aac", 44100, stereo, false}}) {
        SCOPED_TRACE(std::string(sound.file) + ' ' + sound.codec);
        const QString whole = make(sound);
        ASSERT_FALSE(whole.isNull());
        const QString cut = folder.filePath(u"cut_"_qs + QLatin1String(sound.file));
        ASSERT_TRUE(ffmpeg({u"-ss"_qs, u"0.72"_qs, u"-i"_qs, whole, u"-c"_qs, u"copy"_qs, cut}));
        const auto reader = open(cut);
        ASSERT_TRUE(reader);
        expectAsMade(*reader, sound, 0.72);
    }
}

TEST_F(SoundTruthTest, AnAddedFileBeginsWithTheMovieAndOnlyItsFirstTrackIsHeard) {
    for (const Sound& sound : {Sound{"a.wav", "pcm_s16le", 44100, stereo, true, 0, false},
                               Sound{"b.wav", "pcm_f32le", 96000, mono, true, 0, false},
                               Sound{"c.m4a", "aac", 48000, stereo, false, 0, false},
                               Sound{"d.mp3", "libmp3lame", 44100, stereo, false, 0, false},
                               Sound{"e.flac", "flac", 48000, fiveOne, true, 0, false},
                               Sound{"f.ogg", "libvorbis", 48000, stereo, false, 0, false},
                               Sound{"g.aiff", "pcm_s16be", 48000, stereo, true, 0, false},
                               Sound{"h.mov", "pcm_s16le", 48000, stereo, true, 0, true},
                               Sound{"i.ts", "ac3", 48000, stereo, false, 4000, true}}) {
        SCOPED_TRACE(std::string(sound.file) + ' ' + sound.codec);
        const QString path = make(sound);
        ASSERT_FALSE(path.isNull());
        const auto reader = AudioReader::openAdded(path, rate);
        ASSERT_TRUE(reader) << reader.error().text.toStdString();
        expectAsMade(**reader, sound);
    }
    // Two mono tracks, the second one preferred.
    const QString two = folder.filePath(u"two.mov"_qs);
    const QStringList arguments =
        source(48000, mono) + QStringList{u"-f"_qs, u"lavfi"_qs, u"-i"_qs, u"sine=d=3"_qs};
    ASSERT_TRUE(ffmpeg(arguments + QStringList{u"-map"_qs, u"0:a"_qs, u"-map"_qs, u"1:a"_qs, u"-c:a"_qs,
                                               u"pcm_s16le"_qs, u"-disposition:a:0"_qs, u"0"_qs,
                                               u"-disposition:a:1"_qs, u"default"_qs, two}));
    const auto first = AudioReader::openAdded(two, rate);
    ASSERT_TRUE(first);
    expectAsMade(**first, {"two.mov", "pcm_s16le", 48000, mono, true});
    const QString silent = folder.filePath(u"silent.mov"_qs);
    ASSERT_TRUE(
        ffmpeg({u"-f"_qs, u"lavfi"_qs, u"-i"_qs, u"color=d=1"_qs, u"-c:v"_qs, u"mpeg2video"_qs, silent}));
    EXPECT_FALSE(AudioReader::openAdded(silent, rate));
    EXPECT_FALSE(AudioReader::openAdded(folder.filePath(u"nowhere.wav"_qs), rate));
}

} // namespace
} // namespace daylark
