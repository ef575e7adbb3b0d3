#include "AppFixture.h"

#include "platform/desktop/ThumbnailStore.h"
#include "support/MovieMaker.h"

#include <QPainter>

#include <sys/stat.h>

namespace daylark {

using test::AppFixture;
using test::waitUntil;
using namespace Qt::StringLiterals;

class LargeThumbnailsTest : public AppFixture {
protected:
    void SetUp() override {
        start();
        MovieSpec spec;
        spec.path = path(u"shot.mov"_s);
        spec.size = {1280, 720};
        spec.frames = 12;
        spec.barCode = false;
        spec.paint = [](QPainter& painter, int number) { // fine lines, that 100 points don't hold
            painter.fillRect(0, 0, 1280, 720, QColor(20 * number, 40, 200 - 10 * number));
            for (int x = 0; x < 1280; x += 16)
                painter.fillRect(x, 0, 4, 720, Qt::white);
        };
        ASSERT_TRUE(makeMovie(spec));
        addPlaylist(u"Day"_s, {});
        controller->mediaAdding().addMediaFilesToSelectedPlaylist({spec.path});
        settleAdding();
        settleThumbnails();
        movie = library().arrangedMovies().front();
        ASSERT_FALSE(movie->thumbnail.isNil());
    }
    /// What a program would have at hand: the picture, null where none is made.
    QImage made(int width, const QString& store) {
        LargeThumbnails large(controller->edits(), *preferences, store, nullptr);
        QImage picture;
        QObject::connect(&large, &LargeThumbnails::made, [&](const Image& of, const QImage& made) {
            EXPECT_EQ(of, movie->thumbnail);
            picture = made;
        });
        large.want({movie}, width);
        EXPECT_TRUE(waitUntil([&] { return large.isIdle(); }));
        return picture;
    }
    QString kept(int side) const { return thumbnailStore::fileOf(store(), movie->filepathString, side); }
    QString store() const { return path(u"cache/thumbnails"_s); }

    std::shared_ptr<Movie> movie;
};

TEST_F(LargeThumbnailsTest, AreAsLargeAsWantedShowTheSamePictureAndAreKeptAsTheDesktopKeepsThem) {
    const QByteArray before = movie->thumbnail.encoded();
    const QImage picture = made(600, store());
    EXPECT_EQ(picture.size(), QSize(1024, 576));
    // Fine lines are there: neighbours differ as they do in the movie.
    int changes = 0;
    for (int x = 1; x < 1024; ++x)
        changes += std::abs(qGreen(picture.pixel(x, 300)) - qGreen(picture.pixel(x - 1, 300))) > 40;
    EXPECT_GT(changes, 100);
    EXPECT_EQ(movie->thumbnail.encoded(), before); // what goes into the session stays small
    EXPECT_EQ(movie->thumbnail.decode().size(), QSize(100, 56));

    const QString file = kept(1024);
    struct stat told {};
    ASSERT_EQ(::stat(QFile::encodeName(file).constData(), &told), 0);
    EXPECT_EQ(told.st_mode & 0777, 0600u);
    const QImage onDisk(file);
    EXPECT_EQ(onDisk.text(u"Thumb::URI"_s), QString::fromLatin1(QUrl::fromLocalFile(movie->filepathString).toEncoded()));
    EXPECT_EQ(onDisk.text(u"Thumb::MTime"_s),
              QString::number(QFileInfo(movie->filepathString).lastModified().toSecsSinceEpoch()));
    EXPECT_EQ(made(130, store()).size(), QSize(1024, 576)) << "a larger one that is kept will do";
}

TEST_F(LargeThumbnailsTest, WhatIsKeptIsBelievedOnlyForThisStateOfTheFileAndThisPicture) {
    ASSERT_FALSE(made(200, store()).isNull());
    // Kept with another picture in it, to tell whether it was read: it is, while the file stays as it is.
    const thumbnailStore::Key key{movie->filepathString,
                                  QFileInfo(movie->filepathString).lastModified().toSecsSinceEpoch(),
                                  QImage(kept(256)).text(u"X-Daylark::Picture"_s)};
    QImage red(256, 144, QImage::Format_RGB32);
    red.fill(Qt::red);
    ASSERT_TRUE(thumbnailStore::write(store(), key, 256, red));
    EXPECT_EQ(made(200, store()).pixelColor(5, 5), QColor(Qt::red));
    const auto isFresh = [this] { return made(200, store()).pixelColor(5, 5) != QColor(Qt::red); };
    QFile file(movie->filepathString);
    const QDateTime before = QDateTime::currentDateTime().addDays(-2);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(before, QFile::FileModificationTime));
    file.close();
    EXPECT_TRUE(isFresh()) << "the file changed";
    thumbnailStore::Key ours = key;
    ours.modified = QFileInfo(movie->filepathString).lastModified().toSecsSinceEpoch();
    ours.picture.clear(); // another program's, of whatever frame
    ASSERT_TRUE(thumbnailStore::write(store(), ours, 256, red));
    EXPECT_TRUE(isFresh()) << "another's";
    // Damaged, or no picture at all: made anew.
    QFile damaged(kept(256));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly) && damaged.write("\x89PNG\r\n nothing") > 0);
    damaged.close();
    EXPECT_EQ(made(200, store()).size(), QSize(256, 144));
}

TEST_F(LargeThumbnailsTest, AnotherInputSpaceOrViewMakesThemAnew) {
    const QImage untouched = made(200, store());
    const Image before = movie->thumbnail;
    controller->edits().setInputSpace(movie, u"ACEScct"_s);
    ASSERT_TRUE(waitUntil([&] { return movie->thumbnail != before; })) << "the small one, too";
    settleThumbnails();
    const QImage coloured = made(200, store());
    EXPECT_EQ(coloured.size(), untouched.size());
    EXPECT_NE(coloured, untouched);

    LargeThumbnails& own = controller->largeThumbnails();
    int told = 0;
    QObject::connect(&own, &LargeThumbnails::outdated, [&told] { ++told; });
    preferences->colourView.set(u"Raw"_s);
    EXPECT_EQ(told, 1);
    EXPECT_NE(made(200, store()), coloured) << "what is kept is of another view";
    controller->edits().setColourConfiguration(u"Daylark"_s); // by its name what was used anyway, for all that is known
    EXPECT_EQ(told, 2);
    preferences->colourConfiguration.set(u"/nowhere.ocio"_s);
    EXPECT_EQ(told, 2) << "the session's goes before the one remembered";

    controller->edits().history().undo();
    controller->edits().history().undo();
    EXPECT_TRUE(movie->inputColourSpace.isEmpty());
    settleThumbnails();
    EXPECT_EQ(movie->thumbnail, before) << "a movie that nobody gave a space is as it was, byte for byte";
}

TEST_F(LargeThumbnailsTest, APictureThatAPersonChoseIsNeverExchangedForAnother) {
    QImage chosen(640, 360, QImage::Format_RGB32);
    chosen.fill(QColor(250, 240, 10));
    LargeThumbnails& own = controller->largeThumbnails(); // keeps nothing on the disk here
    QImage told;
    QObject::connect(&own, &LargeThumbnails::made, [&](const Image&, const QImage& picture) { told = picture; });
    controller->thumbnails().recreateCurrentThumbnail(movie, chosen, {u"Set Thumbnail Image"_s, 0});
    ASSERT_TRUE(waitUntil([&] { return own.isIdle(); }));
    EXPECT_EQ(told.size(), QSize(640, 360));
    // In a later run nothing in the movie looks like it: the small one is shown.
    EXPECT_TRUE(made(600, store()).isNull());
    controller->thumbnails().recreateCurrentThumbnail(movie, {}, {u"Last Frame"_s, 0});
    settleThumbnails();
    EXPECT_FALSE(made(600, store()).isNull()) << "of its last frame, though the usual choice is the middle one";
    preferences->sharpThumbnails.set(false);
    EXPECT_TRUE(made(600, store()).isNull());
}

} // namespace daylark
