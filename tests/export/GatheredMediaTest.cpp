#include "export/media/GatheredMedia.h"

#include "export/media/BundleFolder.h"
#include "model/bundle/BundleReading.h"
#include "platform/FileBookmark.h"
#include "support/SmallDisk.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <chrono>
#include <csignal>
#include <sys/resource.h>
#include <thread>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

class GatheredMediaTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(QDir().mkpath(from(u""_s)) && QDir().mkpath(to(u""_s)));
        // Without a session nobody keeps attributes of folders: the tests leave the user's alone.
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("XDG_RUNTIME_DIR", folder_.path().toUtf8());
    }
    [[nodiscard]] QString from(const QString& name) const { return folder_.filePath(u"from/"_s + name); }
    [[nodiscard]] QString to(const QString& name) const { return folder_.filePath(u"to/"_s + name); }
    QString write(const QString& path, const QByteArray& bytes) const {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return path;
    }
    static QByteArray content(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QStringList filesOf(const QString& folder) {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    std::shared_ptr<Movie> movie(const QString& name, const QByteArray& bytes) const {
        const QString path = write(from(name), bytes);
        return std::make_shared<Movie>(path, createFileBookmark(path));
    }
    [[nodiscard]] GatherReport gather(const std::vector<std::shared_ptr<Movie>>& movies, bool networkMode = false) const {
        return gatherMedia(gatherSources(movies, networkMode), to(u""_s));
    }
    /// What only the file's bookmark leads to, what only the path does, and what no longer is.
    static void expectWhole(const QString& folder, const QByteArray& bytes) {
        for (const QString& name : filesOf(folder))
            if (!name.startsWith(u'.') && name != u"data.dls"_s) {
                EXPECT_TRUE(content(folder + u'/' + name) == bytes) << qPrintable(name);
            }
    }

    QTemporaryDir folder_;
};

TEST_F(GatheredMediaTest, TheFirstOfANameIsCopiedAndWhatStandsThereIsNeverOverwritten) {
    const auto first = movie(u"1/clip.mov"_s, "first"), second = movie(u"2/clip.mov"_s, "second"),
               old = movie(u"old.mov"_s, "new render"), gone = movie(u"gone.mov"_s, "x");
    write(to(u"old.mov"_s), "delivered");
    ASSERT_TRUE(QFile::remove(from(u"gone.mov"_s)));
    std::vector<std::pair<qint64, qint64>> bytes;
    std::vector<size_t> files;
    GatherWatch watch;
    watch.bytes = [&](qint64 done, qint64 total) { bytes.emplace_back(done, total); };
    watch.fileDone = [&](size_t count) { files.push_back(count); };
    const GatherReport report = gatherMedia(gatherSources({first, second, old, gone, first}, false), to(u""_s), watch);
    EXPECT_EQ(report.copied, std::vector<QString>{from(u"1/clip.mov"_s)});
    EXPECT_EQ(report.copiedBytes, 5);
    EXPECT_EQ(report.skipped.size(), 4U);
    EXPECT_TRUE(report.failed.empty());
    EXPECT_EQ(content(to(u"clip.mov"_s)), "first");
    EXPECT_EQ(content(to(u"old.mov"_s)), "delivered");
    EXPECT_EQ(files, (std::vector<size_t>{1, 2, 3, 4, 5}));
    EXPECT_EQ(bytes.back(), (std::pair<qint64, qint64>{5, 5}));
    EXPECT_EQ(first->filepathString, from(u"1/clip.mov"_s)) << "gathering copies only";
}

TEST_F(GatheredMediaTest, TheFilesBookmarkLeadsToWhereItIsUnlessPathsRule) {
    const auto moved = movie(u"moved.mov"_s, "moved");
    ASSERT_TRUE(QFile::rename(from(u"moved.mov"_s), from(u"elsewhere.mov"_s)));
    EXPECT_EQ(gather({moved}, true).skipped.size(), 1U);
    EXPECT_EQ(gather({moved}).copied, std::vector<QString>{from(u"elsewhere.mov"_s)});
    EXPECT_EQ(filesOf(to(u""_s)), QStringList{u"moved.mov"_s}) << "under the record's name";
}

TEST_F(GatheredMediaTest, ARecordsNameNeverLeadsOutOfTheFolder) {
    const auto hostile = movie(u"a.mov"_s, "x"), nameless = movie(u"b.mov"_s, "x");
    hostile->filenameString = u"../from/c.mov"_s;
    nameless->filenameString = u".."_s;
    EXPECT_EQ(gather({hostile, nameless}).skipped.size(), 2U);
    EXPECT_TRUE(filesOf(to(u""_s)).isEmpty());
    EXPECT_EQ(filesOf(from(u""_s)), (QStringList{u"a.mov"_s, u"b.mov"_s}));
}

TEST_F(GatheredMediaTest, ARunIsAllItsPicturesGatheredAndInABundle) {
    for (const int number : {1002, 1003, 1005}) // the first of its frames is missing
        write(from(u"sh010.%1.exr"_s.arg(number)), "picture "_ba + QByteArray::number(number));
    write(from(u"sh010.0001.exr"_s), "of no frame");
    const auto run = std::make_shared<Movie>(from(u"sh010.1001.exr"_s));
    run->frameRun = MovieRun{{u"sh010."_s, u".exr"_s, 4, false, 1001, 1005, 1}, {}, false, {}};
    const GatherReport report = gather({run, movie(u"a.mov"_s, "movie")}, true);
    EXPECT_EQ(filesOf(to(u""_s)), (QStringList{u"a.mov"_s, u"sh010.1002.exr"_s, u"sh010.1003.exr"_s, u"sh010.1005.exr"_s}));
    EXPECT_EQ(report.copied.size(), 4U);
    EXPECT_EQ(report.copiedBytes, 3 * 12 + 5);

    const BundleSource source = BundleSource::of(run);
    EXPECT_EQ(source.mediaBytes(), 36);
    const QString bundle = to(u"run.dlm"_s);
    const BundleReport written = writeBundleFolder(source, bundle);
    EXPECT_EQ(written.end, BundleReport::End::written) << qPrintable(written.reason);
    EXPECT_EQ(written.copiedBytes, 36);
    QDir(from(u""_s)).removeRecursively();
    QString unwritten;
    const Result<BundleContents> opened = readBundle(bundle, {}, unwritten);
    ASSERT_TRUE(opened && opened->movie);
    EXPECT_EQ(opened->movie->filepathString, bundle + u"/sh010.1001.exr"_s);
    EXPECT_TRUE(checkFile(opened->movie->fileReference(true)).found);
    EXPECT_EQ(opened->movie->frameRun, run->frameRun);
}

TEST_F(GatheredMediaTest, ADiskWithoutRoomFailsTheLargeOnesAndTakesWhatFits) {
    const QByteArray large(4 << 20, 'x');
    const auto movies = std::vector{movie(u"large.mov"_s, large), movie(u"small.mov"_s, "small")};
    const int status = test::ChildProcess([&] {
                           std::signal(SIGXFSZ, SIG_IGN);
                           const rlimit limit{1 << 20, 1 << 20};
                           ::setrlimit(RLIMIT_FSIZE, &limit);
                           const GatherReport report = gather(movies);
                           return report.failed.size() == 1 && report.failed[0].source == 0 &&
                                          !report.failed[0].reason.isEmpty() && report.copied.size() == 1
                                      ? 0
                                      : 1;
                       }).wait();
    EXPECT_EQ(status, 0);
    EXPECT_EQ(filesOf(to(u""_s)), QStringList{u"small.mov"_s});
    EXPECT_TRUE(content(from(u"large.mov"_s)) == large);
}

TEST_F(GatheredMediaTest, AFullDiskHoldsWholeFilesAndWholeBundlesOnly) {
    const QByteArray large(3 << 20, 'x');
    const auto movies = std::vector{movie(u"a.mov"_s, large), movie(u"b.mov"_s, large), movie(u"c.mov"_s, large)};
    const auto gathered = test::runOnSmallDisk(to(u""_s), 8 << 20, [&] {
        EXPECT_EQ(gather(movies).copied.size(), 2U);
        EXPECT_EQ(filesOf(to(u""_s)), (QStringList{u"a.mov"_s, u"b.mov"_s}));
        expectWhole(to(u""_s), large);
        QFile::remove(to(u"a.mov"_s));
        EXPECT_EQ(gather(movies).copied.size(), 1U) << "what there is room for, later";
        return HasFailure() ? 1 : 0;
    });
    if (!gathered) GTEST_SKIP() << "no disk can be made here";
    EXPECT_EQ(gathered, 0);
    const auto bundled = test::runOnSmallDisk(to(u""_s), 5 << 20, [&] {
        const QString bundle = to(u"a.dlm"_s);
        EXPECT_EQ(writeBundleFolder(BundleSource::of(movies[0]), bundle).end, BundleReport::End::written);
        EXPECT_EQ(writeBundleFolder(BundleSource::of(movies[0]), bundle).end, BundleReport::End::failed) << "no room for two";
        EXPECT_EQ(filesOf(bundle), (QStringList{u".directory"_s, u".icon.png"_s, u"a.mov"_s, u"data.dls"_s}));
        expectWhole(bundle, large);
        EXPECT_EQ(writeBundleFolder(BundleSource::of(movies[1]), to(u"b.dlm"_s)).end, BundleReport::End::failed);
        EXPECT_FALSE(QFile::exists(to(u"b.dlm/b.mov"_s)));
        return HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(bundled, 0);
    expectWhole(from(u""_s), large);
}

TEST_F(GatheredMediaTest, ARunThatDoesNotFitLeavesWholePicturesAndNoHalfBundle) {
    for (int number = 1001; number <= 1006; ++number)
        write(from(u"sh010.%1.exr"_s.arg(number)), QByteArray(1 << 20, 'x'));
    const auto run = std::make_shared<Movie>(from(u"sh010.1001.exr"_s));
    run->frameRun = MovieRun{{u"sh010."_s, u".exr"_s, 4, false, 1001, 1006, 1}, {}, false, {}};
    constexpr int roomForFour = (4 << 20) + (512 << 10);
    const auto gathered = test::runOnSmallDisk(to(u""_s), roomForFour, [&] {
        const GatherReport report = gather({run});
        EXPECT_EQ(report.copied.size(), 4U);
        EXPECT_EQ(report.failed.size(), 2U);
        EXPECT_EQ(filesOf(to(u""_s)).size(), 4);
        expectWhole(to(u""_s), QByteArray(1 << 20, 'x'));
        return HasFailure() ? 1 : 0;
    });
    if (!gathered) GTEST_SKIP() << "no disk can be made here";
    EXPECT_EQ(gathered, 0);
    const auto bundled = test::runOnSmallDisk(to(u""_s), roomForFour, [&] {
        const BundleReport report = writeBundleFolder(BundleSource::of(run), to(u"run.dlm"_s));
        EXPECT_EQ(report.end, BundleReport::End::failed);
        EXPECT_FALSE(QFile::exists(to(u"run.dlm"_s)));
        return HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(bundled, 0);
}

TEST_F(GatheredMediaTest, KilledOrCancelledOnTheWayNothingHalfHasItsFinalName) {
    const QByteArray bytes(24 << 20, 'm');
    std::vector<std::shared_ptr<Movie>> movies;
    for (const QString& name : {u"a.mov"_s, u"b.mov"_s, u"c.mov"_s})
        movies.push_back(movie(name, bytes));
    for (int delay = 1; delay <= 10; ++delay) {
        {
            test::ChildProcess gathering([&] { return gather(movies).failed.empty() ? 0 : 1; });
            std::this_thread::sleep_for(std::chrono::milliseconds(5 * delay));
            gathering.kill();
        }
        expectWhole(to(u""_s), bytes);
        expectWhole(from(u""_s), bytes);
        if (delay % 3 == 0) QFile::remove(to(u"a.mov"_s));
    }
    QDir(to(u""_s)).removeRecursively();
    ASSERT_TRUE(QDir().mkpath(to(u""_s)));
    CancelFlag cancelled = false;
    GatherWatch watch{&cancelled};
    watch.fileDone = [&cancelled](size_t) { cancelled = true; };
    EXPECT_EQ(gatherMedia(gatherSources(movies, false), to(u""_s), watch).copied.size(), 1U);
    EXPECT_EQ(filesOf(to(u""_s)), QStringList{u"a.mov"_s});
    EXPECT_EQ(gather(movies).copied.size(), 2U) << "and the next one goes on";
}

class BundleFolderTest : public GatheredMediaTest {};

TEST_F(BundleFolderTest, HoldsTheRecordTheMediaAndAnIconAndReplacesAnOlderCopy) {
    const auto clip = movie(u"A0 – 1.mov"_s, "picture");
    clip->notes = AttributedString(u"wider"_s);
    const QString bundle = to(u"A0 – 1.dlm"_s);
    write(bundle + u"/A0 – 1.mov"_s, "an older one");
    write(bundle + u"/mine.txt"_s, "mine");
    const BundleReport report = writeBundleFolder(BundleSource::of(clip), bundle);
    EXPECT_EQ(report.end, BundleReport::End::written) << qPrintable(report.reason);
    EXPECT_EQ(report.copiedBytes, 7);
    EXPECT_EQ(filesOf(bundle), (QStringList{u".directory"_s, u".icon.png"_s, u"A0 – 1.mov"_s, u"data.dls"_s, u"mine.txt"_s}));
    EXPECT_EQ(content(bundle + u"/A0 – 1.mov"_s), "picture");
    EXPECT_FALSE(QImage(bundle + u"/.icon.png"_s).isNull());
    QString unwritten;
    const Result<BundleContents> read = readBundle(bundle, {}, unwritten);
    ASSERT_TRUE(read && read->movie);
    EXPECT_EQ(read->movie->notes->string(), u"wider"_s);
    // The movie of a bundle into the same bundle again.
    EXPECT_EQ(writeBundleFolder(BundleSource::of(read->movie), bundle).end, BundleReport::End::written);
    EXPECT_EQ(content(bundle + u"/A0 – 1.mov"_s), "picture");
    // Without a file there is nothing to copy, and what was copied before stays.
    ASSERT_TRUE(QFile::remove(from(u"A0 – 1.mov"_s)));
    EXPECT_EQ(writeBundleFolder(BundleSource::of(clip), bundle).end, BundleReport::End::failed);
    EXPECT_EQ(content(bundle + u"/A0 – 1.mov"_s), "picture");
}

TEST_F(BundleFolderTest, TheFileHasItsExtensionTwiceBesideAnEmptyFolder) {
    const auto clip = movie(u"clip.mov"_s, "picture");
    EXPECT_EQ(writeBundleFile(BundleSource::of(clip), to(u"clip.dlm"_s)).end, BundleReport::End::written);
    EXPECT_EQ(filesOf(to(u""_s)), (QStringList{u"clip.dlm"_s, u"clip.dlm.dlm"_s}));
    EXPECT_TRUE(filesOf(to(u"clip.dlm"_s)).isEmpty());
    EXPECT_TRUE(content(to(u"clip.dlm.dlm"_s)).startsWith("bplist00"));
}

TEST_F(BundleFolderTest, KilledCancelledOrOutOfRoomLeavesNothingHalf) {
    const QByteArray bytes(48 << 20, 'm');
    const auto clip = movie(u"clip.mov"_s, bytes);
    const QString bundle = to(u"clip.dlm"_s);
    for (int delay = 0; delay < 8; ++delay) {
        {
            test::ChildProcess writing([&] { return writeBundleFolder(BundleSource::of(clip), bundle).copiedBytes > 0; });
            std::this_thread::sleep_for(std::chrono::milliseconds(4 * delay));
            writing.kill();
        }
        expectWhole(bundle, bytes);
        if (QString unwritten; QFile::exists(bundle + u"/data.dls"_s)) {
            EXPECT_TRUE(readBundle(bundle, {}, unwritten)) << "after " << 4 * delay << " ms";
        }
        QDir(bundle).removeRecursively();
    }
    const int status = test::ChildProcess([&] {
                           std::signal(SIGXFSZ, SIG_IGN);
                           const rlimit limit{1 << 20, 1 << 20};
                           ::setrlimit(RLIMIT_FSIZE, &limit);
                           const BundleReport report = writeBundleFolder(BundleSource::of(clip), bundle);
                           return report.end == BundleReport::End::failed && report.path == bundle + u"/clip.mov"_s ? 0 : 1;
                       }).wait();
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(QFile::exists(bundle + u"/clip.mov"_s));
    QDir(bundle).removeRecursively();
    CancelFlag cancelled = true;
    EXPECT_EQ(writeBundleFolder(BundleSource::of(clip), bundle, {&cancelled}).end, BundleReport::End::cancelled);
    EXPECT_TRUE(filesOf(to(u""_s)).isEmpty());
    EXPECT_TRUE(content(from(u"clip.mov"_s)) == bytes);
}

} // namespace
} // namespace daylark
