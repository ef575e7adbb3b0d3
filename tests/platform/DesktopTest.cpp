#include "platform/Desktop.h"
#include "platform/Alerts.h"
#include "platform/NamedImages.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>

#include <thread>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

TEST(SystemPlacesTest, DataFolderFollowsTheEnvironmentAndIsMade) {
    const QTemporaryDir home;
    const QByteArray before = qgetenv("XDG_DATA_HOME"), cacheBefore = qgetenv("XDG_CACHE_HOME");
    qputenv("XDG_DATA_HOME", home.filePath(u"data"_s).toUtf8());
    qputenv("XDG_CACHE_HOME", home.filePath(u"cache"_s).toUtf8());
    const SystemPlaces places = SystemPlaces::current();
    before.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", before);
    cacheBefore.isNull() ? qunsetenv("XDG_CACHE_HOME") : qputenv("XDG_CACHE_HOME", cacheBefore);
    EXPECT_EQ(places.cache, home.filePath(u"cache/Daylark"_s));
    EXPECT_FALSE(QFileInfo::exists(places.cache)) << "made when something is kept there";
    EXPECT_EQ(places.applicationSupport, home.filePath(u"data/Daylark"_s));
    EXPECT_TRUE(QFileInfo(places.applicationSupport).isDir());
    EXPECT_FALSE(places.loginName.isEmpty());
    EXPECT_FALSE(places.loginName.contains(u'/'));
}

TEST(ScriptedAlertsTest, GivesItsAnswersThenTheLastButtons) {
    ScriptedAlerts alerts;
    alerts.answers = {Alerts::secondButton};
    const Alert question{
        u"Replace Current Session?"_s, {}, {u"Replace Session"_s, u"Add To Session"_s, u"Cancel"_s}};
    EXPECT_EQ(alerts.run(question), Alerts::secondButton);
    EXPECT_EQ(alerts.run(question), Alerts::thirdButton);
    EXPECT_EQ(alerts.run(Alert{u"Done"_s, {}, {}}), Alerts::firstButton);
    EXPECT_EQ(alerts.shown.size(), 3U);
}

bool showsSomething(const QImage& image) {
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 100) return true;
    return false;
}

TEST(NamedImagesTest, EveryIconThatRecordsNameIsDrawn) {
    const QStringList names{
        u"flag_Green.png"_s,        u"flag_Yellow.png"_s,       u"flag_Orange.png"_s,
        u"flag_Red.png"_s,          u"flag_Purple.png"_s,       u"flag_Blue.png"_s,
        u"flag_Grey.png"_s,         u"dl-grabIcon-01.png"_s,    u"copy 03 white.png"_s,
        u"dl-notesActive-03.png"_s, u"dl-brushActive-01.png"_s, u"dl-levelsActive-01.png"_s,
        u"bookmark_on.png"_s,       u"NSStatusAvailable"_s,     u"NSStatusUnavailable"_s,
        u"greenBar_05.png"_s,       u"loop_OFF.png"_s,          u"loop_ON.png"_s};
    for (const QString& name : names) {
        EXPECT_TRUE(hasNamedImage(name)) << qPrintable(name);
        EXPECT_TRUE(showsSomething(namedImage(name, 20))) << qPrintable(name);
    }
    EXPECT_TRUE(hasNamedImage(u"NSStatusNone"_s)); // an empty dot may show nothing
    EXPECT_NE(namedImage(u"flag_Green.png"_s, 20), namedImage(u"flag_Red.png"_s, 20));
    for (const QString& name : {u""_s, u"no such.png"_s, u"../icons/flag_Red.png"_s}) {
        EXPECT_TRUE(namedImage(name, 20).isNull());
        EXPECT_TRUE(namedImageTiff(name).isEmpty());
    }
}

TEST(NamedImagesTest, TiffHoldsThePictureWithItsTransparency) {
    const QImage drawn = namedImage(u"flag_Red.png"_s, 32).convertToFormat(QImage::Format_ARGB32);
    const QByteArray tiff = namedImageTiff(u"flag_Red.png"_s);
    EXPECT_TRUE(tiff.startsWith("II") || tiff.startsWith("MM"));
    const QImage read = QImage::fromData(tiff).convertToFormat(QImage::Format_ARGB32);
    ASSERT_EQ(read.size(), drawn.size());
    EXPECT_EQ(std::max(read.width(), read.height()), 32);
    EXPECT_TRUE(read.hasAlphaChannel());
    for (int i = 0; i < read.width(); ++i)
        EXPECT_EQ(qAlpha(read.pixel(i, read.height() / 2)), qAlpha(drawn.pixel(i, read.height() / 2)));
}

TEST(NamedImagesTest, ThreadsDrawTheSamePicture) {
    std::vector<QImage> images(4);
    std::vector<std::thread> threads;
    for (QImage& image : images)
        threads.emplace_back([&image] {
            for (int i = 0; i < 20; ++i)
                image = namedImage(u"flag_Blue.png"_s, 24 + i);
        });
    for (std::thread& thread : threads)
        thread.join();
    for (const QImage& image : images)
        EXPECT_EQ(image, namedImage(u"flag_Blue.png"_s, 43));
}

} // namespace
} // namespace daylark
