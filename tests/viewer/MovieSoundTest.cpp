#include "platform/FileBookmark.h"
#include "playback/sound/DeviceSound.h"
#include "support/ScriptedSound.h"
#include "viewer/ViewerFixture.h"

#include <QDataStream>
#include <QDir>
#include <QFile>

#include <cmath>

namespace daylark {
namespace {

using bench::waitUntil;

struct Listening {
    bench::Desk desk;
    DeviceSound sound{desk.maker()};
};

/// A movie of four seconds with a beep at each, and a sound file of three with beeps at 0.5 and 2.5 s.
class MovieSoundTest : private Listening, public ViewerFixture {
protected:
    MovieSoundTest()
        : ViewerFixture(&(Listening::sound)) {}
    void SetUp() override {
        MovieSpec spec;
        spec.path = folder.filePath(u"movie.mov"_qs);
        spec.size = QSize(128, 96);
        spec.frames = 96;
        spec.sound = true;
        ASSERT_TRUE(makeMovie(spec));
        movie = record(spec.path);
        added = folder.filePath(u"added.wav"_qs);
        ASSERT_TRUE(makeWave());
        preferences.volume.set(1.0f);
    }
    [[nodiscard]] bool makeWave() const {
        constexpr int rate = 44100, count = 3 * rate;
        QFile file(added);
        if (!file.open(QIODevice::WriteOnly)) return false;
        QDataStream out(&file);
        out.setByteOrder(QDataStream::LittleEndian);
        out.writeRawData("RIFF", 4);
        out << quint32(36 + count * 2);
        out.writeRawData("WAVEfmt ", 8);
        out << quint32(16) << quint16(1) << quint16(1) << quint32(rate) << quint32(rate * 2) << quint16(2)
            << quint16(16);
        out.writeRawData("data", 4);
        out << quint32(count * 2);
        for (int i = 0; i < count; ++i) {
            const double seconds = double(i) / rate, within = std::fmod(seconds - 0.5 + 2, 2);
            out << qint16(within < 0.1 ? 12000 * std::sin(2 * M_PI * 1000 * seconds) : 0);
        }
        return out.status() == QDataStream::Ok;
    }
    /// Plays from the beginning; where the beeps are in the first seconds.
    std::vector<double> beepsFromTheBeginning(double seconds) {
        player.setRate(0);
        goTo(1);
        EXPECT_TRUE(settled());
        const int starts = desk.starts;
        player.setRate(1);
        EXPECT_TRUE(waitUntil([&] { return desk.starts > starts && desk.played > seconds; }));
        return desk.beeps();
    }
    static void expectBeeps(const std::vector<double>& found, const std::vector<double>& expected) {
        ASSERT_GE(found.size(), expected.size());
        for (size_t i = 0; i < expected.size(); ++i)
            EXPECT_NEAR(found[i], expected[i], 0.003);
    }
    [[nodiscard]] bool fallsSilent() {
        return waitUntil([this] { return desk.stops == desk.starts && !Listening::sound.position(); });
    }
    using Listening::desk;

    QTemporaryDir folder;
    QString added;
    std::shared_ptr<Movie> movie;
};

TEST_F(MovieSoundTest, TheMovieIsHeardWithTheSoundThatItsRecordSays) {
    show({movie});
    expectBeeps(beepsFromTheBeginning(2.1), {0, 1, 2});

    controller.audio().removeMovieAudioTracks();
    EXPECT_TRUE(fallsSilent()) << "in the middle of a run, too";
    EXPECT_EQ(player.rate(), 1.0f);

    panels.openAnswers = {{added}};
    controller.audio().addAudioTrack();
    ASSERT_TRUE(waitUntil([this] { return movie->movieHasUserAudio(); }));
    EXPECT_EQ(panels.opensShown.back().title, u"Link Audio File"_qs);
    EXPECT_FALSE(panels.opensShown.back().allowMultiple);
    expectBeeps(beepsFromTheBeginning(4.6),
                {0.5, 2.5, 4.5}); // silent after its end, and again with the movie

    controller.displayCurrentMovie();
    ASSERT_TRUE(settled());
    expectBeeps(beepsFromTheBeginning(0.6), {0.5});

    player.setRate(0);
    goTo(30);
    controller.audio().revertMovieAudioTracks();
    EXPECT_EQ(player.currentFrame(), 30);
    expectBeeps(beepsFromTheBeginning(1.1), {0, 1});

    // Each is a step.
    history.undo();
    EXPECT_TRUE(movie->movieHasUserAudio());
    expectBeeps(beepsFromTheBeginning(0.6), {0.5});
    history.undo();
    EXPECT_TRUE(controller.audio().isSilenced());
    history.undo();
    EXPECT_FALSE(controller.audio().isChanged());
    expectBeeps(beepsFromTheBeginning(1.1), {0, 1});
    history.redo();
    EXPECT_TRUE(controller.audio().isSilenced());
}

TEST_F(MovieSoundTest, SoundAndMovieAreSavedUnderTheNamesProposedWhileTheViewerGoesOn) {
    show({movie});
    const QString wave = folder.filePath(u"out.wav"_qs), copy = folder.filePath(u"out.mov"_qs);
    panels.openAnswers = {{added}};
    controller.audio().addAudioTrack();
    ASSERT_TRUE(waitUntil([this] { return movie->movieHasUserAudio(); }));
    panels.saveAnswers = {wave, copy};
    controller.audio().saveMovieAudioTracks();
    controller.audio().saveMovieAs();
    EXPECT_EQ(library.works, (QStringList{u"Saving Audio: out.wav"_qs, u"Saving Movie: out.mov"_qs}));
    ASSERT_TRUE(waitUntil([this] { return library.ended.size() == 2; }));
    EXPECT_GT(library.advances, 0);
    ASSERT_EQ(panels.savesShown.size(), 2U);
    EXPECT_EQ(panels.savesShown[0].title, u"Save Audio As..."_qs);
    EXPECT_EQ(panels.savesShown[0].prompt, u"Save Audio"_qs);
    EXPECT_EQ(panels.savesShown[0].proposedName, u"movie.wav"_qs);
    EXPECT_EQ(panels.savesShown[1].title, u"Save Movie As..."_qs);
    EXPECT_EQ(panels.savesShown[1].prompt, u"Save"_qs);
    EXPECT_EQ(panels.savesShown[1].proposedName, u"movie (New Audio).mov"_qs);
    EXPECT_EQ(QFileInfo(wave).size(), 44 + 4 * 44100 * 2) << "as long as the movie, as deep as the added file";
    // The new movie is heard with that sound by itself.
    const auto saved = record(copy);
    show({saved});
    expectBeeps(beepsFromTheBeginning(2.7), {0.5, 2.5});
    EXPECT_TRUE(alerts.shown.empty());
}

TEST_F(MovieSoundTest, WhatCantBeSavedIsSaidOnceAndNothingIsSaidOfWhatWasCancelled) {
    show({movie});
    const QString nowhere = folder.filePath(u"gone/out"_qs);
    panels.saveAnswers = {nowhere + u".wav"_qs, nowhere + u".mov"_qs};
    controller.audio().saveMovieAudioTracks();
    ASSERT_TRUE(waitUntil([this] { return library.ended.size() == 1; }));
    ASSERT_EQ(alerts.shown.size(), 1U);
    EXPECT_TRUE(alerts.shown[0].message.contains(u"out.wav"_qs));
    EXPECT_FALSE(alerts.shown[0].informativeText.isEmpty());
    controller.audio().saveMovieAs();
    ASSERT_TRUE(waitUntil([this] { return library.ended.size() == 2; }));
    EXPECT_EQ(alerts.shown.size(), 1U) << "a movie waits for another attempt instead";
    ASSERT_EQ(failedWrites.list().size(), 1U);
    EXPECT_EQ(failedWrites.list()[0].path, nowhere + u".mov"_qs);
    QDir(folder.path()).mkdir(u"gone"_qs);
    const auto again = failedWrites.list()[0].tryAgain;
    again();
    ASSERT_TRUE(waitUntil([this] { return library.ended.size() == 3; }));
    EXPECT_TRUE(failedWrites.list().empty());
    EXPECT_TRUE(QFile::exists(nowhere + u".mov"_qs));

    library.cancelNext = true;
    panels.saveAnswers = {nowhere + u".wav"_qs};
    controller.audio().saveMovieAudioTracks();
    ASSERT_TRUE(waitUntil([this] { return library.ended.size() == 4; }));
    EXPECT_EQ(alerts.shown.size(), 1U);
    EXPECT_FALSE(QFile::exists(nowhere + u".wav"_qs));
}

TEST_F(MovieSoundTest, AnAddedFileThatIsMissingOrUnreadableIsSilenceWithoutAlert) {
    movie->addAudioFile(createFileBookmark(added));
    ASSERT_TRUE(QFile::remove(added));
    const auto damaged = record(movie->filepathString);
    const QString text = folder.filePath(u"text.wav"_qs);
    QFile file(text);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("no sound at all") > 0);
    file.close();
    damaged->addAudioFile(createFileBookmark(text));
    show({movie, damaged});
    for (const qsizetype index : {0, 1}) {
        controller.open({movie, damaged}, index);
        ASSERT_TRUE(settled());
        player.setRate(1);
        ASSERT_TRUE(waitUntil([this] { return player.isRolling(); }));
        EXPECT_TRUE(fallsSilent());
        clock.now += qint64(1e9);
        player.tick();
        EXPECT_NEAR(double(player.currentFrame()), 25, 1) << "the picture goes by the clock";
    }
    EXPECT_EQ(desk.starts, 0);
    EXPECT_TRUE(alerts.shown.empty());
}

} // namespace
} // namespace daylark
