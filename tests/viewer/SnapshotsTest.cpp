#include "viewer/ViewerFixture.h"

#include <QImage>
#include <QTemporaryDir>

namespace daylark {
namespace {

class SnapshotsTest : public ViewerFixture {
protected:
    SnapshotsTest() {
        prefer("snapshotFileFormat", "JPEG");
        prefer("snapshotImageScale", "Same As Window");
        prefer("snapshotNameSource", "Same As Source");
        prefer("snapshotFilenameFormat", "filename.frameNumber.ext");
        prefer("compressionQuality", 1.0f);
        snapshots.setArea({[] { return QSize(800, 450); },
                           [this](QSize size) {
                               rendered = size;
                               QImage picture(size, QImage::Format_RGB32);
                               picture.fill(QColor(200, 60, 20));
                               return picture;
                           }});
    }
    Snapshots& snapshots = controller.snapshots();
    QSize rendered;
};

TEST_F(SnapshotsTest, NamesFollowTheirFormatAndSource) {
    showFrames(48);
    goTo(42);
    controller.currentMovie()->filenameString = QStringLiteral("my clip.v2.mov");
    EXPECT_EQ(snapshots.proposedName(), QStringLiteral("my_clip.v2.0042.jpg"));
    prefer("snapshotFilenameFormat", "filename.snapshotNumber.ext");
    prefer("snapshotFileFormat", "TIFF");
    EXPECT_EQ(snapshots.proposedName(), QStringLiteral("my_clip.v2.0001.tif"));
    prefer("snapshotFilenameFormat", "snapshotNumber.filename.ext");
    prefer("snapshotNameSource", "User Defined");
    prefer("snapshotName", "day one");
    EXPECT_EQ(snapshots.proposedName(), QStringLiteral("0001.day_one.tif"));
    prefer("snapshotNameSource", "");
    EXPECT_EQ(snapshots.proposedName(), QStringLiteral("0001..tif"));
}

TEST_F(SnapshotsTest, SizesFollowTheScale) {
    const auto size = [this](const char* scale) {
        prefer("snapshotImageScale", scale);
        return Snapshots::targetSize({801, 451}, defaults);
    };
    EXPECT_EQ(size("Same As Window"), QSize(801, 451));
    EXPECT_EQ(size("Half Window Size"), QSize(400, 225));
    EXPECT_EQ(size("Quarter Window Size"), QSize(200, 112));
    prefer("snapshotWidth", 1000);
    prefer("snapshotImageScale", "Set Width (maintains window ratio)");
    EXPECT_EQ(Snapshots::targetSize({800, 450}, defaults), QSize(1000, 562));
    prefer("snapshotWidth", -5);
    EXPECT_EQ(Snapshots::targetSize({800, 450}, defaults), QSize(1, 1));
}

TEST_F(SnapshotsTest, SavedFilesHoldThePictureAndOnlyTheyRaiseTheCounter) {
    showFrames(12);
    const QTemporaryDir folder;
    snapshots.takeTimedSnapshot(); // cancelled
    EXPECT_EQ(snapshots.snapshotNumber(), 1);
    ASSERT_EQ(panels.savesShown.size(), 1u);
    EXPECT_EQ(panels.savesShown[0].title, QStringLiteral("Save Snapshot As..."));
    EXPECT_EQ(panels.savesShown[0].prompt, QStringLiteral("Save Snapshot"));
    int number = 1;
    for (const char* format : {"JPEG", "PNG", "TIFF"}) {
        prefer("snapshotFileFormat", format);
        prefer("snapshotImageScale", "Half Window Size");
        const QString path = folder.filePath(snapshots.proposedName());
        panels.saveAnswers = {path};
        snapshots.takeTimedSnapshot();
        snapshots.waitForWriting();
        EXPECT_EQ(snapshots.snapshotNumber(), ++number);
        const QImage saved(path);
        ASSERT_EQ(saved.size(), QSize(400, 225)) << format;
        EXPECT_NEAR(saved.pixelColor(200, 100).red(), 200, 1);
        EXPECT_NEAR(saved.pixelColor(200, 100).blue(), 20, 1);
    }
    EXPECT_FALSE(writeSnapshot(QImage(folder.filePath(QStringLiteral("x"))), QStringLiteral("/nowhere/x.png"),
                               QStringLiteral("PNG"), 1));
    EXPECT_FALSE(writeSnapshot(QImage(4, 4, QImage::Format_RGB32), folder.filePath(QStringLiteral("x.gif")),
                               QStringLiteral("GIF"), 1));
}

} // namespace
} // namespace daylark
