#include "platform/FileBookmark.h"
#include "playback/sound/DeviceSound.h"
#include "support/ScriptedSound.h"
#include "viewer/ViewerFixture.h"

#include <QDataStream>
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

    edits.refresh(movie, [](Movie& m) { m.removeOriginalMovieAudio(); });
    EXPECT_TRUE(fallsSilent()) << "in the middle of a run, too";
    EXPECT_EQ(player.rate(), 1.0f);

    edits.refresh(movie, [this](Movie& m) { m.addAudioFile(createFileBookmark(added)); });
    expectBeeps(beepsFromTheBeginning(4.6),
                {0.5, 2.5, 4.5}); // silent after its end, and again with the movie

    controller.displayCurrentMovie();
    ASSERT_TRUE(settled());
    expectBeeps(beepsFromTheBeginning(0.6), {0.5});

    edits.refresh(movie, [](Movie& m) { m.revertToOriginalMovieAudio(); });
    expectBeeps(beepsFromTheBeginning(1.1), {0, 1});
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
