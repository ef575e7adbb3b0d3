#include "media/facts/MovieProbe.h"
#include "media/facts/TimecodeTrack.h"

#include "RunFixture.h"

#include <QFile>
#include <QtEndian>

#include <cstring>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;
using test::barCodePicture;
using test::WrittenPicture;
using test::writePicture;

class RunFactsTest : public test::RunFixture {};

TEST_F(RunFactsTest, RateAndTimecodeAreTheHeadersUnlessAHandSaysOtherwise) {
    for (const int number : {1001, 1002, 1003}) {
        WrittenPicture picture = barCodePicture(pathOf(number), number);
        picture.rate = 25;
        if (number > 1001) picture.timecode = test::packedTimecode(10, 59, 59, number - 1001 + 22);
        writePicture(picture);
    }
    RunAddress run = address(1000, 1003);
    Result<ProbeResult> probed = probeMovie(run.text());
    ASSERT_TRUE(probed);
    EXPECT_EQ(probed->asset.mMovieFPS, 25.0F);
    EXPECT_EQ(probed->asset.mMovieDurationFrames, 4);
    EXPECT_EQ(probed->legacy.mMovieDurationFrames, 4);
    EXPECT_EQ(probed->legacy.mMovieTimeValuePerStep, 1);
    EXPECT_EQ(probed->legacy.mMovieWidth, 192);
    // The first picture has none: counted from the header of what has been read first.
    EXPECT_TRUE(AVTimecodeReader(run.text()).readTimecodeSamples().empty());
    run.movie.run.first = 1002;
    const auto samples = AVTimecodeReader(run.text()).readTimecodeSamples();
    ASSERT_EQ(samples.size(), 1U);
    EXPECT_EQ(timecodeText(1, 25, samples[0]), u"10:59:59:23"_s);
    EXPECT_EQ(timecodeText(3, 25, samples[0]), u"11:00:00:00"_s);
    run.movie.rate = {24000, 1001};
    probed = probeMovie(run.text());
    ASSERT_TRUE(probed);
    EXPECT_FLOAT_EQ(*probed->asset.mMovieFPS, 23.976025F);
    EXPECT_EQ(opened(run)->index().step, 1001);
    make({1001, 1002, 1003}); // without a rate: the preference's
    run.movie.rate = {};
    run.view.usualRate = {30, 1};
    EXPECT_EQ(probeMovie(run.text())->asset.mMovieFPS, 30.0F);
}

TEST_F(RunFactsTest, EverySecondPictureHasTheTimecodeOfItsNumber) {
    for (const int number : {1003, 1005}) { // the first one is missing: what it would say is counted back
        WrittenPicture picture = barCodePicture(pathOf(number), number);
        picture.rate = 24;
        const int frames = number - 1001 + 21;
        picture.timecode = test::packedTimecode(10, 0, frames / 24, frames % 24);
        writePicture(picture);
    }
    RunAddress run = address(1001, 1005);
    run.movie.run.step = 2;
    const auto samples = AVTimecodeReader(run.text()).readTimecodeSamples();
    ASSERT_EQ(samples.size(), 1U);
    EXPECT_EQ(timecodeText(1, 24, samples[0], 2), u"10:00:00:21"_s);
    EXPECT_EQ(timecodeText(3, 24, samples[0], 2), u"10:00:01:01"_s) << "as the header of 1005 says";
}

/// Headers of one moment of a second that rates have more or fewer frames in.
TEST_F(RunFactsTest, NoTimecodeHasAFrameThatItsRateHasNot) {
    struct Row {
        int stated, written; ///< what the header says: frames a second (0: nothing), and the time's frame
        RunRate rate;        ///< by hand
        float shownAt;
        const char* text;
    };
    for (const Row& row : {Row{25, 24, {12, 1}, 12, "01:02:03:11"}, Row{25, 24, {24, 1}, 24, "01:02:03:23"},
                           Row{24, 23, {24000, 1001}, 24, "01:02:03:23"}, Row{25, 10, {12, 1}, 12, "01:02:03:10"},
                           Row{30, 29, {1, 1}, 1, "01:02:03:00"}, Row{0, 24, {}, 24, "01:02:03:23"},
                           Row{24, 24, {}, 24, "01:02:03:23"}, Row{12, 11, {25, 1}, 25, "01:02:03:11"}}) {
        WrittenPicture picture = barCodePicture(pathOf(1), 1);
        picture.rate = row.stated;
        picture.timecode = test::packedTimecode(1, 2, 3, row.written);
        writePicture(picture);
        RunAddress run = address(1, 1);
        run.movie.rate = row.rate;
        const auto start = firstTimecodeOf(run.text());
        ASSERT_TRUE(start);
        EXPECT_LT(start->frames, row.shownAt) << row.text;
        EXPECT_EQ(timecodeText(1, row.shownAt, start), QLatin1String(row.text)) << row.stated << ' ' << row.written;
    }
}

TEST_F(RunFactsTest, TheHeaderOfADpxSaysRateAndTimecodeUnlessNobodyFilledItIn) {
    constexpr qint64 timecodeAt = 1920, filmRateAt = 1724, televisionRateAt = 1940; // by its standard
    const QString path = folder.filePath(u"sc_0086400.dpx"_s);
    const auto write = [&](quint32 timecode, std::optional<float> film, std::optional<float> television) {
        WrittenPicture picture = barCodePicture(path, 1);
        picture.numbers = "uint10";
        writePicture(picture);
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const bool isBig = file.peek(4) == "SDPX";
        const auto put = [&](qint64 at, quint32 word) {
            const quint32 stored = isBig ? qToBigEndian(word) : qToLittleEndian(word);
            ASSERT_TRUE(file.seek(at) && file.write(reinterpret_cast<const char*>(&stored), sizeof stored) == sizeof stored);
        };
        const auto bits = [](float value) {
            quint32 word = 0;
            std::memcpy(&word, &value, sizeof word);
            return word;
        };
        put(timecodeAt, timecode);
        put(filmRateAt, film ? bits(*film) : 0xffffffffU);
        put(televisionRateAt, television ? bits(*television) : 0xffffffffU);
    };
    RunAddress run;
    run.folder = folder.path();
    run.movie.run = {u"sc_"_s, u".dpx"_s, 7, false, 86400, 86402, 1};
    run.view.usualRate = {30, 1};
    const auto code = [&](qint64 frame, float fps) {
        const auto start = firstTimecodeOf(run.text());
        return start ? timecodeText(frame, fps, start) : QString();
    };
    const auto rate = [&] {
        const Result<ProbeResult> probed = probeMovie(run.text());
        return probed ? probed->asset.mMovieFPS.value_or(0) : 0;
    };
    write(0x01000023, 24, {});
    EXPECT_EQ(rate(), 24);
    EXPECT_EQ(code(1, 24), u"01:00:00:23"_s);
    EXPECT_EQ(code(2, 24), u"01:00:01:00"_s);
    write(0x10595924, {}, 25);
    EXPECT_EQ(rate(), 25);
    EXPECT_EQ(code(2, 25), u"11:00:00:00"_s);
    write(0x10595969, {}, 30000.0F / 1001); // drop frame is a bit beside the tens of frames; frames are counted without
    EXPECT_FLOAT_EQ(rate(), 30000.0F / 1001);
    EXPECT_EQ(code(1, 30), u"10:59:59:29"_s);
    for (const quint32 nothing : {0xffffffffU, 0U, 0x01600000U, 0x01007500U, 0x0100000bU}) {
        write(nothing, {}, {});
        EXPECT_EQ(rate(), 30) << "the preference's";
        EXPECT_EQ(code(1, 30), QString()) << nothing;
    }
}

} // namespace
} // namespace daylark
