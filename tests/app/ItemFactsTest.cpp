#include "AppFixture.h"

#include "support/MovieMaker.h"

namespace daylark {

using test::AppFixture;
using test::waitUntil;
using namespace Qt::StringLiterals;

class ItemFactsTest : public AppFixture {
protected:
    void SetUp() override { start(); }
    std::shared_ptr<Movie> known(const MovieSpec& made) {
        MovieSpec spec = made;
        spec.path = path(made.path);
        EXPECT_TRUE(makeMovie(spec));
        auto movie = std::make_shared<Movie>(spec.path);
        movie->mMovieFPS = float(spec.rateNum) / float(spec.rateDen);
        EXPECT_TRUE(facts().soundOf(*movie).isEmpty()); // nothing is said that isn't known
        facts().want({movie});
        EXPECT_TRUE(waitUntil([&] { return facts().of(*movie) != nullptr; }));
        return movie;
    }
    ItemFacts& facts() { return controller->itemFacts(); }
};

TEST_F(ItemFactsTest, SoundIsWhatIsHeardAndNotWhatTheFileHolds) {
    MovieSpec silent;
    silent.path = u"silent.mov"_s;
    EXPECT_EQ(facts().soundOf(*known(silent)), u"No sound"_s);
    MovieSpec loud;
    loud.path = u"loud.mov"_s;
    loud.sound = true;
    const auto movie = known(loud);
    EXPECT_EQ(facts().soundOf(*movie), u"stereo"_s);
    EXPECT_TRUE(ItemFacts::soundTracksOf(*facts().of(*movie)).contains(u"48 kHz"_s));
    movie->shouldRemoveAudioTracks = true;
    EXPECT_EQ(facts().soundOf(*movie), u"Muted"_s);
    movie->mUserAudioTrackBookmarkData = "somewhere";
    movie->mUserAudioTrack = u"/mix/reel 3.wav"_s;
    EXPECT_EQ(facts().soundOf(*movie), u"Added: reel 3.wav"_s);
}

TEST_F(ItemFactsTest, CodecColourAndStartAreReadAndAFileThatIsReadAgainIsAskedAnew) {
    MovieSpec spec;
    spec.path = u"shot.mov"_s;
    spec.encoder = u"prores_ks"_s;
    spec.pixelFormat = u"yuv422p10le"_s;
    spec.timecode = u"01:00:02:03"_s;
    spec.rateNum = 25;
    const auto movie = known(spec);
    const MediaFacts* told = facts().of(*movie);
    EXPECT_TRUE(told->codec.contains(u"ProRes"_s)) << told->codec.toStdString();
    EXPECT_EQ(told->pixelFormat, u"yuv422p10le"_s);
    EXPECT_EQ(facts().startTimecodeOf(*movie), u"01:00:02:03"_s);
    movie->mMovieDurationFrames = 100;
    EXPECT_EQ(facts().productionNumbersOf(*movie, 1), QString()) << "as they are counted anyway";
    const qint64 byTimecode = (3600 + 2) * 25 + 3;
    EXPECT_EQ(facts().productionNumbersOf(*movie, {}),
              u"%1 - %2"_s.arg(byTimecode).arg(byTimecode + 99));
    EXPECT_EQ(facts().productionNumbersOf(*movie, 1001), u"1001 - 1100"_s);
    movie->fileSizeText = u"12.5"_s; // it has been probed since
    EXPECT_EQ(facts().of(*movie), nullptr);
    facts().want({movie});
    EXPECT_TRUE(waitUntil([&] { return facts().of(*movie) != nullptr; }));

    // What can't be read says nothing, once.
    const auto broken = std::make_shared<Movie>(makeFile(u"broken.mov"_s));
    int answers = 0;
    QObject::connect(&facts(), &ItemFacts::known, [&](const QString& path) { answers += path == broken->filepathString; });
    facts().want({broken});
    ASSERT_TRUE(waitUntil([&] { return answers == 1; }));
    EXPECT_EQ(facts().of(*broken), nullptr);
    EXPECT_TRUE(facts().soundOf(*broken).isEmpty());
}

} // namespace daylark
