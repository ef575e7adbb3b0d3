#include "support/PictureMaker.h"
#include "viewer/ViewerFixture.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace daylark {
namespace {

class ViewerColourTest : public ViewerFixture {
protected:
    ViewerColour& colour = controller.colour();
    bool becomesManaged() {
        return QTest::qWaitFor([this] { return colour.processor() != nullptr; }, 30000);
    }
};

TEST_F(ViewerColourTest, AMovieIsUntouchedUntilAPersonGivesItASpaceWhichCanBeUndone) {
    showFrames(24);
    EXPECT_FALSE(colour.isManaged());
    EXPECT_FALSE(colour.config()); // nobody needed one
    colour.setExposure(1);
    EXPECT_TRUE(colour.lookingText().isEmpty());
    colour.resetLooking();
    colour.setInputSpace(QStringLiteral("ACEScct"));
    ASSERT_TRUE(becomesManaged());
    EXPECT_EQ(controller.scene().scene().display, colour.processor());
    EXPECT_EQ(colour.transform().display, QStringLiteral("sRGB"));
    EXPECT_EQ(colour.transform().view, QStringLiteral("ACES SDR Video"));
    edits.history().undo();
    EXPECT_FALSE(colour.processor());
    EXPECT_FALSE(controller.scene().scene().display);
    EXPECT_TRUE(controller.currentMovie()->inputColourSpace.isEmpty());
    edits.history().redo();
    ASSERT_TRUE(becomesManaged());
}

TEST_F(ViewerColourTest, DisplayAndViewAreRememberedAndExposureForLookingIsNobodysReview) {
    showFrames(24);
    colour.setInputSpace(QStringLiteral("ACEScg"));
    ASSERT_TRUE(becomesManaged());
    const auto first = colour.processor();
    colour.setView(QStringLiteral("Colorimetric"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return colour.processor() && colour.processor() != first; }, 30000));
    EXPECT_EQ(preferences.colourView(), QStringLiteral("Colorimetric"));
    EXPECT_EQ(colour.processor()->transform().view, QStringLiteral("Colorimetric"));
    colour.setExposure(2.5);
    ASSERT_TRUE(QTest::qWaitFor([&] { return colour.processor()->transform().exposure == 2.5; }, 30000));
    EXPECT_TRUE(colour.lookingText().contains(QStringLiteral("+2.5")));
    EXPECT_EQ(controller.currentMovie()->exposure, 0); // the grade's, which is another one
    colour.setGamma(1e9);
    EXPECT_EQ(colour.transform().gamma, 10);
    colour.setView(QStringLiteral("Sepia")); // remembered with another configuration
    EXPECT_EQ(colour.transform().view, QStringLiteral("ACES SDR Video"));
}

TEST_F(ViewerColourTest, ASlateAmongPicturesOfLightIsNeverLookedAtThroughTheirView) {
    const QTemporaryDir folder;
    for (const int number : {1001, 1003})
        writePicture(test::barCodePicture(folder.filePath(QStringLiteral("sh.%1.exr").arg(number)), number));
    preferences.missingPictures.set(MissingPictures::slate);
    const auto shot = std::make_shared<Movie>(folder.filePath(QStringLiteral("sh.1001.exr")));
    shot->frameRun = MovieRun();
    shot->frameRun->run = {QStringLiteral("sh."), QStringLiteral(".exr"), 4, false, 1001, 1003, 1};
    show({shot});
    const auto isSlate = [this] { return controller.scene().scene().frame.colourSpace() == QStringLiteral("data"); };
    std::shared_ptr<const DisplayProcessor> ofPictures, ofSlates;
    const auto isThroughItsOwn = [&] { return controller.scene().scene().display == (isSlate() ? ofSlates : ofPictures); };
    const auto goAndWait = [&](int frame) {
        goTo(frame);
        return QTest::qWaitFor([&] { return isSlate() == (frame == 2) && isThroughItsOwn(); }, 30000);
    };
    ASSERT_TRUE(becomesManaged());
    ofPictures = controller.scene().scene().display;
    goTo(2); // both ways of looking are known then
    ASSERT_TRUE(QTest::qWaitFor([&] { return isSlate() && controller.scene().scene().display != ofPictures; }, 30000));
    ofSlates = controller.scene().scene().display;
    ASSERT_TRUE(goAndWait(1));
    int told = 0, wrong = 0;
    QObject::connect(&controller.scene(), &ViewerScene::changed, &controller, [&] {
        ++told;
        if (!isThroughItsOwn()) ++wrong;
    });
    for (const int frame : {2, 3, 2, 1})
        ASSERT_TRUE(goAndWait(frame)) << frame;
    EXPECT_GE(told, 4);
    EXPECT_EQ(wrong, 0);
}

TEST_F(ViewerColourTest, ABrokenConfigurationShowsThePictureRawAndSaysSo) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("broken.ocio")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("ocio_profile_version: 2\nnonsense");
    file.close();
    showFrames(24);
    colour.setInputSpace(QStringLiteral("ACEScg"));
    ASSERT_TRUE(becomesManaged());
    colour.chooseConfig(file.fileName());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !colour.problem().isEmpty(); }, 30000));
    EXPECT_FALSE(colour.processor());
    EXPECT_EQ(controller.currentMovie()->inputColourSpace, QStringLiteral("ACEScg")); // nothing lost
    colour.chooseConfig({});
    ASSERT_TRUE(becomesManaged());
    EXPECT_TRUE(colour.problem().isEmpty());
    colour.setInputSpace(QStringLiteral("Sepia"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !colour.problem().isEmpty(); }, 30000));
    EXPECT_TRUE(colour.problem().contains(QStringLiteral("Sepia")));
    EXPECT_FALSE(colour.processor());
}

TEST_F(ViewerColourTest, TheSessionsConfigurationGoesBeforeTheOneRememberedAndCanBeUndone) {
    const QTemporaryDir folder;
    showFrames(24);
    colour.setInputSpace(QStringLiteral("ACEScg"));
    ASSERT_TRUE(becomesManaged());
    EXPECT_FALSE(colour.configurationIsOfSession());
    colour.setConfigurationOfSession(true); // what is in force, by its name
    EXPECT_EQ(edits.colourConfiguration(), ColourConfig::ownName);
    ASSERT_TRUE(becomesManaged());
    preferences.colourConfiguration.set(QStringLiteral("/nowhere.ocio"));
    EXPECT_TRUE(colour.problem().isEmpty());
    EXPECT_TRUE(colour.processor()) << "untouched";

    const QString missing = folder.filePath(QStringLiteral("missing.ocio"));
    colour.chooseConfig(missing);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !colour.problem().isEmpty(); }, 30000));
    EXPECT_TRUE(colour.problem().startsWith(QStringLiteral("The session's colour configuration")));
    EXPECT_FALSE(colour.processor());
    EXPECT_EQ(edits.colourConfiguration(), missing) << "it may be there on another machine";
    EXPECT_EQ(preferences.colourConfiguration(), QStringLiteral("/nowhere.ocio"));
    edits.history().undo();
    ASSERT_TRUE(becomesManaged());
    EXPECT_EQ(edits.colourConfiguration(), ColourConfig::ownName);
    edits.history().undo();
    EXPECT_FALSE(colour.configurationIsOfSession());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !colour.problem().isEmpty(); }, 30000));
    EXPECT_TRUE(colour.problem().startsWith(QStringLiteral("The colour configuration")));
    preferences.colourConfiguration.set(ColourConfig::ownName);
    ASSERT_TRUE(becomesManaged());
    colour.setConfigurationOfSession(false); // there is none to go
    EXPECT_EQ(preferences.colourConfiguration(), ColourConfig::ownName);
}

TEST_F(ViewerColourTest, TheProductionsNumberStandsBesideTheCountedOne) {
    showFrames(60);
    goTo(10);
    EXPECT_TRUE(time.productionText().isEmpty());
    const QString counted = time.stripFrameOfFrames();
    preferences.firstFrameNumber.set(FirstFrameNumber::thousandAndOne);
    EXPECT_EQ(time.productionText(), QStringLiteral("Prod 1010"));
    EXPECT_EQ(time.stripFrameOfFrames(), counted + QStringLiteral("   Prod 1010"));
    EXPECT_EQ(time.frameOfEntry(QStringLiteral("1012")), 12);
    edits.setFirstFrameNumber(controller.currentMovie(), 86400);
    EXPECT_EQ(time.productionText(), QStringLiteral("Prod 86409"));
    EXPECT_TRUE(controller.snapshots().proposedName().contains(QStringLiteral(".0010_prod86409.")));
    edits.history().undo();
    EXPECT_EQ(time.productionText(), QStringLiteral("Prod 1010"));
    EXPECT_EQ(controller.bookmarks().frameNumbers().first, 1001);
    EXPECT_EQ(time.frameAndProductionText(), QStringLiteral("Frame 10   Prod 1010"));
    int told = 0;
    QObject::connect(&controller.bookmarks(), &ViewerBookmarks::frameNumbersChanged, [&told] { ++told; });
    preferences.firstFrameNumber.set(FirstFrameNumber::other);
    EXPECT_EQ(time.productionTextOf(1), QStringLiteral("Prod 101"));
    preferences.otherFirstFrameNumber.set(-4);
    EXPECT_EQ(time.productionText(), QStringLiteral("Prod 5"));
    goTo(11); // another frame is no other numbering
    EXPECT_EQ(told, 2);
    goTo(10);
    preferences.firstFrameNumber.set(FirstFrameNumber::timecode);
    EXPECT_TRUE(time.productionText().isEmpty()); // no track
    SmpteTime start;
    start.hours = 1;
    time.setTimeCodeData(start);
    EXPECT_EQ(time.productionText(), QStringLiteral("Prod %1").arg(3600 * qRound(time.framesPerSecond()) + 9));
}

} // namespace
} // namespace daylark
