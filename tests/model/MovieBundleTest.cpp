#include "model/bundle/MovieBundle.h"

#include "archive/KeyedArchive.h"
#include "archive/PlistGuard.h"
#include "model/bundle/BundleReading.h"
#include "support/ChildProcess.h"
#include "support/RecordSamples.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <sys/resource.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

class MovieBundleTest : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const QString& name) const { return folder_.filePath(name); }
    QString write(const QString& name, const QByteArray& bytes) const {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return path(name);
    }
    static std::shared_ptr<DLMovieBundle> bundleOf(const std::shared_ptr<Movie>& movie, const QByteArray& video) {
        auto bundle = std::make_shared<DLMovieBundle>();
        bundle->mMetaData = movie;
        bundle->mQTMovieData = video;
        return bundle;
    }
    static std::shared_ptr<Movie> movieAt(const QString& file) {
        auto movie = test::sampleMovie();
        movie->addVideoFile(file, {});
        movie->iCount = 2;
        return movie;
    }
    [[nodiscard]] Result<BundleContents> read(const QString& bundle) {
        unwritten_ = QString();
        return readBundle(bundle, {}, unwritten_);
    }

    QTemporaryDir folder_;
    QString unwritten_;
};

TEST_F(MovieBundleTest, ItsThreeKeysComeBackAndMissingOnesAreNil) {
    const auto bundle = bundleOf(test::sampleMovie(), "moov");
    bundle->mAudioData = "RIFF";
    const Result<Value> read = unarchiveRoot(encodeBundleRoot(bundle), recordClasses());
    ASSERT_TRUE(read);
    const auto again = std::dynamic_pointer_cast<DLMovieBundle>((*read)[u"movie"].object());
    ASSERT_TRUE(again && again->mMetaData);
    EXPECT_EQ(again->mAudioData, "RIFF");
    EXPECT_EQ(again->mQTMovieData, "moov");
    EXPECT_EQ(encodeMovieRoot(again->mMetaData), encodeMovieRoot(bundle->mMetaData)) << "a whole record";
    const Result<Value> bare = unarchiveRoot(encodeBundleRoot(bundleOf(test::sampleMovie(), {})), recordClasses());
    const auto metaOnly = std::dynamic_pointer_cast<DLMovieBundle>((*bare)[u"movie"].object());
    ASSERT_TRUE(metaOnly && metaOnly->mMetaData);
    EXPECT_TRUE(metaOnly->mAudioData.isNull() && metaOnly->mQTMovieData.isNull());
}

TEST_F(MovieBundleTest, WhatAMovieExportsIsNothingAndNothingIsTakenFromABundle) {
    const auto movie = test::sampleMovie();
    const QByteArray before = encodeMovieRoot(movie);
    EXPECT_EQ(exportDLM(*movie), nullptr);
    EXPECT_EQ(initWithDLM(movie, bundleOf(test::sampleMovie(), "x").get()), movie);
    EXPECT_EQ(encodeMovieRoot(movie), before);
    const Result<Value> root = unarchiveRoot(encodeBundleRoot(nullptr), recordClasses());
    ASSERT_TRUE(root && root->dictionary());
    EXPECT_TRUE(root->dictionary()->empty());
    EXPECT_FALSE(read(write(u"empty.dlm"_s, encodeBundleRoot(nullptr))));
}

TEST_F(MovieBundleTest, AFoldersMediaIsTheFileBesideWhereverItCameFrom) {
    write(u"a.dlm/Ünï.mov"_s, "here");
    const QString spelt = u"Ünï.mov"_s.normalized(QString::NormalizationForm_D);
    write(u"a.dlm/data.dls"_s, encodeMovieRoot(movieAt(u"/other/machine/"_s + spelt)));
    const Result<BundleContents> contents = read(path(u"a.dlm"_s));
    ASSERT_TRUE(contents && contents->movie);
    EXPECT_EQ(contents->movie->filepathString, path(u"a.dlm/Ünï.mov"_s));
    EXPECT_EQ(contents->movie->filenameString, u"Ünï.mov"_s);
    EXPECT_FALSE(contents->movie->filepathBookmarkData.isEmpty());
    EXPECT_EQ(contents->movie->iCount, 0);
    // Without one the path stays; a name that leads elsewhere is a name.
    write(u"secret.mov"_s, "not in the bundle");
    write(u"b.dlm/data.dls"_s, encodeMovieRoot([] {
              auto movie = movieAt(u"/gone/x.mov"_s);
              movie->filenameString = u"../secret.mov"_s;
              return movie;
          }()));
    const Result<BundleContents> without = read(path(u"b.dlm"_s));
    ASSERT_TRUE(without && without->movie);
    EXPECT_EQ(without->movie->filepathString, u"/gone/x.mov"_s);

    EXPECT_EQ(bundleOfPath(path(u"a.dlm/"_s)), path(u"a.dlm"_s));
    EXPECT_EQ(bundleOfPath(path(u"a.dlm/data.dls"_s)), path(u"a.dlm"_s));
    EXPECT_TRUE(bundleOfPath(path(u"a/data.dls"_s)).isNull() && bundleOfPath(path(u"a.dlm/other.dls"_s)).isNull());
}

TEST_F(MovieBundleTest, ASingleFilesMovieIsWrittenBesideItOnceAndOnlyWhereItIsMissing) {
    const QString bundle = write(u"a.dlm"_s, encodeBundleRoot(bundleOf(movieAt(u"/gone/clip.mov"_s), "the movie")));
    const Result<BundleContents> first = read(bundle);
    ASSERT_TRUE(first && first->movie) << qPrintable(first.error().text);
    EXPECT_EQ(first->movie->filepathString, path(u"clip.mov"_s));
    QFile written(path(u"clip.mov"_s));
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), "the movie");
    write(u"clip.mov"_s, "somebody's own");
    ASSERT_TRUE(read(bundle));
    EXPECT_EQ(QFileInfo(path(u"clip.mov"_s)).size(), 14) << "what is there stays";

    const QString there = write(u"there/shot.mov"_s, "still there");
    const Result<BundleContents> found = read(write(u"b.dlm"_s, encodeBundleRoot(bundleOf(movieAt(there), "again"))));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->movie->filepathString, there);
    EXPECT_FALSE(QFile::exists(path(u"shot.mov"_s)));
}

/// A bundle file whose movie has this many bytes, all zero and none on the disk.
QString hugeBundle(const QString& path, const QByteArray& archive, quint32 length) {
    constexpr qsizetype made = 17 << 20;
    const char* trailer = archive.constData() + archive.size() - kPlistTrailerSize;
    const int width = quint8(trailer[6]);
    const auto count = qFromBigEndian<quint64>(trailer + 8), table = qFromBigEndian<quint64>(trailer + 24);
    const qsizetype object = archive.indexOf(QByteArray("\x4F\x12\x01\x10\x00\x00", 6));
    EXPECT_TRUE(width == 4 && object > 0);
    QByteArray head = archive.first(object + 6), tail = archive.sliced(object + 6 + made);
    qToBigEndian<quint32>(length, head.data() + object + 2);
    const qint64 longer = qint64(length) - made;
    char* offsets = tail.data() + (qsizetype(table) - (object + 6 + made));
    for (quint64 at = 0; at < count; ++at) {
        const auto offset = qFromBigEndian<quint32>(offsets + 4 * at);
        if (qsizetype(offset) > object) qToBigEndian<quint32>(quint32(offset + longer), offsets + 4 * at);
    }
    qToBigEndian<quint64>(table + quint64(longer), tail.data() + tail.size() - 8);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadWrite) && file.write(head) == head.size() && file.resize(head.size() + length) &&
                file.seek(head.size() + length) && file.write(tail) == tail.size());
    return path;
}

TEST_F(MovieBundleTest, AMovieOfThreeGigabytesIsReadAndWrittenBesideWithinOne) {
    const QByteArray archive = encodeBundleRoot(bundleOf(movieAt(u"/gone/clip.mov"_s), QByteArray(17 << 20, 0)));
    constexpr quint32 length = 0xC0000000U;
    const QString bundle = hugeBundle(path(u"huge.dlm"_s), archive, length);
    const int status = test::ChildProcess([&] {
                           const Result<BundleContents> contents = read(bundle);
                           if (!contents || !contents->movie || contents->movie->bookmarkStore.isNil ||
                               contents->movie->filepathString != path(u"clip.mov"_s))
                               return 1;
                           rusage used{};
                           ::getrusage(RUSAGE_SELF, &used);
                           return used.ru_maxrss < (long(1) << 20) ? 0 : 2; // KiB
                       }).wait();
    EXPECT_EQ(status, 0);
    EXPECT_EQ(QFileInfo(path(u"clip.mov"_s)).size(), qint64(length));
}

TEST_F(MovieBundleTest, DamagedLargeFilesAreRefusedOrReadButNeverBeyondTheirBytes) {
    const QByteArray archive = encodeBundleRoot(bundleOf(movieAt(u"/gone/clip.mov"_s), QByteArray(17 << 20, 0)));
    const qsizetype end = archive.size();
    const auto changed = [&](qsizetype at, const QByteArray& by) {
        QByteArray bytes = archive;
        bytes.replace(at, by.size(), by);
        return read(write(u"x.dlm"_s, bytes));
    };
    EXPECT_FALSE(read(write(u"x.dlm"_s, archive.first(end - 40))));
    EXPECT_FALSE(changed(end - 26, QByteArray(1, 9)));       // offsets of nine bytes
    EXPECT_FALSE(changed(end - 24, QByteArray(8, '\xFF')));  // more objects than there are bytes
    EXPECT_FALSE(changed(end - 8, QByteArray(8, '\x7F')));   // the table beyond the end
    EXPECT_FALSE(changed(end - 40, QByteArray(4, '\xFF')));  // an object beyond the table
    const qsizetype object = archive.indexOf(QByteArray("\x4F\x12\x01\x10\x00\x00", 6));
    ASSERT_GT(object, 0);
    QFile::remove(path(u"clip.mov"_s));
    static_cast<void>(changed(object + 2, QByteArray("\x7F\xFF\xFF\xFF", 4))); // longer than the file
    EXPECT_LE(QFileInfo(path(u"clip.mov"_s)).size(), end);
}

} // namespace
} // namespace daylark
