#include "media/encode/MovieExport.h"

#include "media/container/MovBoxes.h"
#include "media/sound/RecordedSound.h"
#include "support/FfmpegTest.h"
#include "support/QuickTimeEdits.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <cmath>

namespace daylark {
namespace {

using Kind = MovieSound::Kind;

class MovieExportTest : public test::FfmpegTest {
protected:
    /// Four seconds of moving picture with a tone.
    QString make(const char* name, const QStringList& coding, const QStringList& extra = {}) const {
        const QString path = folder.filePath(QLatin1String(name));
        const bool ok = ffmpeg(QStringList{u"-f"_qs, u"lavfi"_qs, u"-i"_qs, u"testsrc2=s=192x108:r=25:d=4"_qs, u"-f"_qs,
                                           u"lavfi"_qs, u"-i"_qs, u"sine=f=440:r=48000:d=4"_qs} +
                               coding + extra + QStringList{path});
        EXPECT_TRUE(ok) << name;
        return path;
    }
    QString sound(const char* name, double seconds, const char* codec, int rate, const char* layout = "stereo") const {
        const QString path = folder.filePath(QLatin1String(name));
        EXPECT_TRUE(ffmpeg({u"-f"_qs, u"lavfi"_qs, u"-i"_qs,
                            QStringLiteral("anoisesrc=r=%1:d=%2:seed=5:a=0.4,aformat=channel_layouts=%3")
                                .arg(rate)
                                .arg(seconds)
                                .arg(QLatin1String(layout)),
                            u"-c:a"_qs, QLatin1String(codec), path}));
        return path;
    }
    /// Every picture shown, decoded by another program, with its moment.
    static QByteArray pictures(const QString& path) {
        return answerOf("ffmpeg", {u"-v"_qs, u"error"_qs, u"-i"_qs, path, u"-map"_qs, u"0:v:0"_qs, u"-fps_mode"_qs,
                                   u"passthrough"_qs, u"-f"_qs, u"framehash"_qs, u"-"_qs});
    }
    /// The hashes alone.
    static QList<QByteArray> hashes(const QString& path) {
        QList<QByteArray> found;
        for (const QByteArray& line : pictures(path).split('\n'))
            if (!line.startsWith('#')) found << line.mid(line.lastIndexOf(',') + 1).trimmed();
        return found;
    }
    static QByteArray facts(const QString& path) {
        const QString entries = u"stream=codec_name,codec_tag_string,width,height,color_range,color_space,color_transfer,"
                                "color_primaries,sample_aspect_ratio,r_frame_rate,nb_frames,duration,start_time:"
                                "stream_tags=timecode:stream_side_data=rotation"_qs;
        return answerOf("ffprobe", {u"-v"_qs, u"error"_qs, u"-select_streams"_qs, u"v"_qs, u"-show_entries"_qs, entries, path});
    }
    static qsizetype soundStreams(const QString& path) {
        const QByteArray indexes =
            answerOf("ffprobe", {u"-v"_qs, u"error"_qs, u"-select_streams"_qs, u"a"_qs, u"-show_entries"_qs, u"stream=index"_qs,
                                 u"-of"_qs, u"default=nk=1:nw=1"_qs, path});
        const QList<QByteArray> lines = indexes.split('\n');
        QSet<QByteArray> found(lines.begin(), lines.end()); // a program's streams are told twice
        found.remove({});
        return found.size();
    }
    static std::vector<double> heard(const QString& movie, const MovieSound& sound, qint64 frames, SoundForm* form = nullptr) {
        const auto index = picturesOf(movie, nullptr, nullptr);
        const auto source = RecordedSound::openHeard(movie, *index, sound);
        EXPECT_TRUE(source) << (source ? "" : source.error().text.toStdString());
        if (!source) return {};
        if (form) *form = (*source)->form();
        std::vector<double> samples(size_t(frames * (*source)->form().channels));
        EXPECT_TRUE((*source)->read(0, samples.data(), frames));
        return samples;
    }
    const QStringList h264{u"-c:v"_qs, u"libx264"_qs, u"-bf"_qs, u"3"_qs, u"-pix_fmt"_qs, u"yuv420p"_qs, u"-c:a"_qs, u"aac"_qs};
};

TEST_F(MovieExportTest, QuickTimeFilesKeepPicturesTimecodeColoursRotationAndEditList) {
    const QStringList tags{u"-timecode"_qs,    u"01:00:00:05"_qs,     u"-colorspace"_qs, u"bt709"_qs, u"-color_primaries"_qs,
                           u"bt709"_qs,        u"-color_trc"_qs,      u"bt709"_qs,       u"-color_range"_qs,
                           u"tv"_qs,           u"-aspect"_qs,         u"2.39"_qs};
    const QString plain = make("plain.mov", h264, tags);
    const QString turned = folder.filePath(u"turned.mov"_qs), cut = folder.filePath(u"cut.mp4"_qs);
    ASSERT_TRUE(ffmpeg({u"-i"_qs, plain, u"-c"_qs, u"copy"_qs, u"-metadata:s:v"_qs, u"rotate=90"_qs, turned}));
    ASSERT_TRUE(ffmpeg({u"-ss"_qs, u"1.3"_qs, u"-i"_qs, plain, u"-c"_qs, u"copy"_qs, u"-map"_qs, u"0:v"_qs,
        u"-map"_qs, u"0:a"_qs, cut}));
    const QString edited = make("edited.mov", {u"-c:v"_qs, u"mjpeg"_qs, u"-c:a"_qs, u"pcm_s16le"_qs},
                                {u"-video_track_timescale"_qs, u"25000"_qs});
    ASSERT_TRUE(truth::replaceEditList(edited, {{10, 60}, {30, 20}, {5, 90}}, 1000, 40));
    const QString longSound = sound("long.wav", 6, "pcm_s24le", 48000), shortSound = sound("short.wav", 1.5,
        "pcm_s16le", 44100, "mono");
    for (const QString& movie : {plain, turned, cut, edited}) {
        SCOPED_TRACE(QFileInfo(movie).fileName().toStdString());
        const QByteArray shown = pictures(movie), said = facts(movie);
        ASSERT_GT(shown.count('\n'), 40);
        const QString saved = folder.filePath(u"saved."_qs + QFileInfo(movie).suffix());
        for (const MovieSound& sound : {MovieSound(), MovieSound{Kind::none, {}, {}}, added(longSound), added(shortSound)}) {
            SCOPED_TRACE(int(sound.kind));
            const auto bytes = saveMovieWithSound(movie, sound, saved);
            ASSERT_TRUE(bytes) << bytes.error().text.toStdString();
            EXPECT_EQ(*bytes, QFileInfo(saved).size());
            EXPECT_EQ(pictures(saved), shown);
            EXPECT_EQ(facts(saved), said);
            EXPECT_EQ(soundStreams(saved), sound.kind == Kind::none ? 0 : 1);
            if (sound.kind == Kind::none) {
                EXPECT_LT(QFileInfo(saved).size(), QFileInfo(movie).size()) << "the sound is gone";
            }
            if (sound.kind == Kind::own) {
                EXPECT_EQ(heard(saved, {}, 48000 * 4), heard(movie, {}, 48000 * 4));
            }
        }
    }
    EXPECT_TRUE(facts(plain).contains("TAG:timecode=01:00:00:05"));
    EXPECT_TRUE(facts(turned).contains("rotation=-90") || facts(turned).contains("rotation=90")) << facts(turned).constData();
}

TEST_F(MovieExportTest, AnAddedSoundIsTheSameNumbersUpToTheMoviesEnd) {
    struct Case {
        const char* movie;
        QStringList coding;
        const char* soundCodec;
        int rate;
        const char* layout;
        double seconds, tolerance;
    };
    const QStringList mpeg{u"-c:v"_qs, u"mpeg2video"_qs, u"-c:a"_qs, u"pcm_s16le"_qs};
    const Case cases[] = {
        {"a.mov", h264, "pcm_s24le", 96000, "5.1", 6, 0},  {"b.mov", h264, "pcm_f32le", 44100, "mono", 1.2, 0},
        {"c.mp4", h264, "pcm_s24le", 48000, "stereo", 5, 0}, {"d.mkv", h264, "pcm_f32le", 48000, "5.1", 5, 0},
        {"e.avi", mpeg, "pcm_s16le", 44100, "stereo", 3, 0}, {"f.mxf", mpeg, "pcm_s24le", 48000, "stereo", 6, 0},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.movie);
        const QString movie = make(each.movie, each.coding);
        const QString file = sound("added.wav", each.seconds, each.soundCodec, each.rate, each.layout);
        const QString saved = folder.filePath(u"saved."_qs + QFileInfo(movie).suffix());
        const auto bytes = saveMovieWithSound(movie, added(file), saved);
        ASSERT_TRUE(bytes) << bytes.error().text.toStdString();
        EXPECT_EQ(hashes(saved), hashes(movie));
        ASSERT_EQ(soundStreams(saved), 1);
        SoundForm wanted, found;
        heard(movie, added(file), 1, &wanted);
        const qint64 frames = 4 * wanted.rate;
        const auto expected = heard(movie, added(file), frames), written = heard(saved, {}, frames, &found);
        ASSERT_EQ(found.rate, wanted.rate);
        ASSERT_EQ(found.channels, wanted.channels);
        for (size_t i = 0; i < expected.size(); ++i)
            ASSERT_NEAR(written[i], expected[i], each.tolerance) << i / size_t(found.channels);
        // Nor is it longer than the movie, even in the container's eyes.
        const double length = answerOf("ffprobe", {u"-v"_qs, u"error"_qs, u"-show_entries"_qs, u"format=duration"_qs, u"-of"_qs,
                                                   u"csv=p=0"_qs, saved})
                                  .trimmed()
                                  .toDouble();
        EXPECT_NEAR(length, 4, 0.05);
    }
}

TEST_F(MovieExportTest, EveryOtherContainerIsCopiedPacketByPacket) {
    const QStringList mpeg{u"-c:v"_qs, u"mpeg2video"_qs, u"-bf"_qs, u"2"_qs, u"-c:a"_qs, u"pcm_s16le"_qs};
    const QStringList stream{u"-c:v"_qs, u"libx264"_qs, u"-c:a"_qs, u"mp2"_qs};
    const QString replacement = sound("new.wav", 2, "pcm_s16le", 48000);
    for (const QString& movie : {make("a.mkv", h264), make("b.mxf", mpeg, {u"-timecode"_qs, u"02:00:00:00"_qs}),
        make("c.ts", stream),
                                 make("d.avi", {u"-c:v"_qs, u"mjpeg"_qs, u"-c:a"_qs, u"pcm_s16le"_qs}),
                                 make("fragments.mp4", h264, {u"-movflags"_qs, u"frag_keyframe+empty_moov"_qs})}) {
        SCOPED_TRACE(QFileInfo(movie).fileName().toStdString());
        const QString saved = folder.filePath(u"saved."_qs + QFileInfo(movie).suffix());
        for (const MovieSound& sound : {MovieSound(), MovieSound{Kind::none, {}, {}}, added(replacement)}) {
            SCOPED_TRACE(int(sound.kind));
            const auto bytes = saveMovieWithSound(movie, sound, saved);
            ASSERT_TRUE(bytes) << bytes.error().text.toStdString();
            EXPECT_EQ(hashes(saved), hashes(movie));
            EXPECT_EQ(soundStreams(saved), sound.kind == Kind::none ? 0 : 1);
        }
    }
    EXPECT_TRUE(answerOf("ffprobe", {u"-v"_qs, u"error"_qs, u"-show_entries"_qs,
        u"format_tags=timecode:stream_tags=timecode"_qs,
                                     folder.filePath(u"saved.mxf"_qs)})
                    .contains("02:00:00:00"));
}

TEST_F(MovieExportTest, AMovieThatCantBeSavedLeavesWhatStoodThere) {
    const QString movie = make("own.mov", h264), saved = folder.filePath(u"saved.mov"_qs);
    QFile older(saved);
    ASSERT_TRUE(older.open(QIODevice::WriteOnly) && older.write("older") == 5);
    older.close();
    CancelFlag cancel = false;
    const ExportWatch givenUp{&cancel, [&](qint64, qint64) { cancel = true; }};
    EXPECT_FALSE(saveMovieWithSound(movie, {}, saved, nullptr, givenUp));
    EXPECT_TRUE(cancel);
    EXPECT_FALSE(saveMovieWithSound(movie, {}, movie));
    EXPECT_FALSE(saveMovieWithSound(folder.filePath(u"gone.mov"_qs), {}, saved));
    EXPECT_FALSE(saveMovieWithSound(movie, added(folder.filePath(u"gone.wav"_qs)), saved));
    // Cut short: its header speaks of samples that aren't there.
    const QString early = folder.filePath(u"early.mov"_qs), shortened = folder.filePath(u"shortened.mov"_qs);
    ASSERT_TRUE(ffmpeg({u"-i"_qs, movie, u"-c"_qs, u"copy"_qs, u"-movflags"_qs, u"faststart"_qs, early}));
    ASSERT_TRUE(QFile::copy(early, shortened) && QFile::resize(shortened, QFileInfo(shortened).size() / 2));
    const auto half = saveMovieWithSound(shortened, {}, folder.filePath(u"half.mov"_qs));
    if (half) {
        EXPECT_GT(hashes(folder.filePath(u"half.mov"_qs)).size(), 10) << "as far as it can be read";
    }
    ASSERT_TRUE(older.open(QIODevice::ReadOnly));
    EXPECT_EQ(older.readAll(), "older");
    for (const QString& name : QDir(folder.path()).entryList(QDir::Files | QDir::Hidden))
        EXPECT_FALSE(name.contains(u"unfinished"_qs)) << name.toStdString();
}

} // namespace
} // namespace daylark
