#include "viewer/ViewerFixture.h"

#include <QImage>
#include <QTemporaryDir>
#include <QThread>

#include <atomic>

namespace daylark {
namespace {

class SnapshotsTest : public ViewerFixture {
protected:
    SnapshotsTest() {
        preferences.snapshotFileFormat.set(SnapshotFormat::jpeg);
        preferences.snapshotImageScale.set(SnapshotScale::sameAsWindow);
        preferences.snapshotNameSource.set(SnapshotNameSource::sameAsSource);
        preferences.snapshotFilenameFormat.set(SnapshotNameFormat::frameNumberLast);
        preferences.compressionQuality.set(1.0f);
        snapshots.setArea({[] { return QSize(800, 450); },
                           [this](QSize size) {
                               rendered = size;
                               return [this, size] {
                                   madeOn = QThread::currentThread();
                                   QImage picture(size, QImage::Format_RGB32);
                                   picture.fill(QColor(200, 60, 20));
                                   return picture;
                               };
                           }});
    }
    Snapshots& snapshots = controller.snapshots();
    QSize rendered;
    std::atomic<QThread*> madeOn = nullptr;
};

TEST_F(SnapshotsTest, NamesFollowTheirFormatAndSource) {
    showFrames(48);
    goTo(42);
    edits.refresh(controller.currentMovie(),
                  [](Movie& movie) { movie.filenameString = QStringLiteral("my clip.v2.mov"); });
    EXPECT_EQ(snapshots.proposedName(), QStringLiteral("my_clip.v2.0042.jpg"));
    preferences.snapshotFilenameFormat.set(SnapshotNameFormat::snapshotNumberLast);
    preferences.snapshotFileFormat.set(SnapshotFormat::tiff);
    EXPECT_EQ(snapshots.proposedName(), QStringLiteral("my_clip.v2.0001.tif"));
    preferences.snapshotFilenameFormat.set(SnapshotNameFormat::snapshotNumberFirst);
    preferences.snapshotNameSource.set(SnapshotNameSource::userDefined);
    preferences.snapshotName.set(QStringLiteral("day one"));
    EXPECT_EQ(snapshots.proposedName(), QStringLiteral("0001.day_one.tif"));
    preferences.snapshotNameSource.set(SnapshotNameSource::none);
    EXPECT_EQ(snapshots.proposedName(), QStringLiteral("0001..tif"));
}

TEST_F(SnapshotsTest, SizesFollowTheScale) {
    const auto size = [this](const char* scale) {
        preferences.snapshotImageScale.store(QString::fromLatin1(scale));
        return Snapshots::targetSize({801, 451}, preferences);
    };
    EXPECT_EQ(size("Same As Window"), QSize(801, 451));
    EXPECT_EQ(size("Half Window Size"), QSize(400, 225));
    EXPECT_EQ(size("Quarter Window Size"), QSize(200, 112));
    preferences.snapshotWidth.set(1000);
    preferences.snapshotImageScale.set(SnapshotScale::setWidth);
    EXPECT_EQ(Snapshots::targetSize({800, 450}, preferences), QSize(1000, 562));
    preferences.snapshotImageScale.store(QStringLiteral("Picture Size")); // without a picture, as the window
    EXPECT_EQ(Snapshots::targetSize({800, 450}, preferences), QSize(800, 450));
    preferences.snapshotImageScale.set(SnapshotScale::setWidth);
    preferences.snapshotWidth.set(-5);
    EXPECT_EQ(Snapshots::targetSize({800, 450}, preferences), QSize(1, 1));
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
        preferences.snapshotFileFormat.store(QString::fromLatin1(format));
        preferences.snapshotImageScale.set(SnapshotScale::half);
        const QString path = folder.filePath(snapshots.proposedName());
        panels.saveAnswers = {path};
        snapshots.takeTimedSnapshot();
        snapshots.waitForWriting();
        EXPECT_EQ(snapshots.snapshotNumber(), ++number);
        EXPECT_NE(madeOn, QThread::currentThread()); // which goes on
        const QImage saved(path);
        ASSERT_EQ(saved.size(), QSize(400, 225)) << format;
        EXPECT_NEAR(saved.pixelColor(200, 100).red(), 200, 1);
        EXPECT_NEAR(saved.pixelColor(200, 100).blue(), 20, 1);
    }
    EXPECT_FALSE(writeSnapshot(QImage(folder.filePath(QStringLiteral("x"))), QStringLiteral("/nowhere/x.png"),
                               SnapshotFormat::png, 1));
    EXPECT_FALSE(writeSnapshot(QImage(4, 4, QImage::Format_RGB32), folder.filePath(QStringLiteral("x.gif")),
                               SnapshotFormat::none, 1));
}

} // namespace
} // namespace daylark
