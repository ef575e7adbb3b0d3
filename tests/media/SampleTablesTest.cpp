#include "media/index/SampleTables.h"

#include "media/facts/MovieProbe.h"
#include "media/index/SampleTableFile.h"
#include "picture/PictureRenderer.h"
#include "picture/Thumbnail.h"
#include "support/ChangedFiles.h"
#include "support/MovieMaker.h"

#include <QDir>
#include <QFileInfo>

#include <atomic>
#include <random>
#include <thread>

namespace daylark {
namespace {

class SampleTablesTest : public ChangedFilesTest {
protected:
    QString made(const QString& name, int frames = 24) const {
        MovieSpec spec;
        spec.path = folder.filePath(name);
        spec.size = QSize(128, 72);
        spec.frames = frames;
        const Result<void> done = makeMovie(spec);
        EXPECT_TRUE(done) << (done ? "" : done.error().text.toStdString());
        return spec.path;
    }
    SampleTables::Builder counting() {
        return [this](const MediaFile& file) {
            ++builds;
            return buildSampleTable(file);
        };
    }
    static Result<SampleTables::Table> tableOf(SampleTables& tables, const QString& path,
                                               const CancelFlag* cancel = nullptr) {
        const Result<MediaFile> file = MediaFile::open(path, nullptr);
        if (!file) return file.error();
        file->setCancel(cancel);
        return tables.tableOf(*file);
    }
    static TableFileKey keyOf(const QString& path) {
        const QFileInfo info(path);
        return {path, info.size(), info.lastModified().toMSecsSinceEpoch()};
    }
    QString cache() const { return folder.filePath(QStringLiteral("cache/deep")); }
    QStringList cached() const { return QDir(cache()).entryList(QDir::Files); }

    std::atomic<int> builds = 0;
};

void expectSameTables(const SampleTable& a, const SampleTable& b) {
    ASSERT_EQ(a.packets.size(), b.packets.size());
    for (size_t i = 0; i < a.packets.size(); ++i) {
        EXPECT_EQ(a.packets[i].stamp, b.packets[i].stamp);
        EXPECT_EQ(a.packets[i].position, b.packets[i].position);
        EXPECT_EQ(a.packets[i].content, b.packets[i].content);
        EXPECT_EQ(a.packets[i].frame, b.packets[i].frame);
        EXPECT_EQ(a.packets[i].key, b.packets[i].key);
        EXPECT_EQ(a.packets[i].description, b.packets[i].description);
    }
    EXPECT_EQ(a.packetOfFrame, b.packetOfFrame);
    EXPECT_EQ(a.descriptions, b.descriptions);
    EXPECT_EQ(a.reorderDepth, b.reorderDepth);
    EXPECT_EQ(a.halves, b.halves);
    EXPECT_EQ(a.stampsHold, b.stampsHold);
    EXPECT_EQ(a.index.timeBaseNum, b.index.timeBaseNum);
    EXPECT_EQ(a.index.timeBaseDen, b.index.timeBaseDen);
    EXPECT_EQ(a.index.timeScale, b.index.timeScale);
    EXPECT_EQ(a.index.step, b.index.step);
    EXPECT_EQ(a.index.endTicks, b.index.endTicks);
    ASSERT_EQ(a.index.samples.size(), b.index.samples.size());
    for (size_t n = 0; n < a.index.samples.size(); ++n) {
        EXPECT_EQ(a.index.samples[n].pts, b.index.samples[n].pts);
        EXPECT_EQ(a.index.samples[n].ticks, b.index.samples[n].ticks);
        EXPECT_EQ(a.index.samples[n].key, b.index.samples[n].key);
    }
}

TEST_F(SampleTablesTest, WhoeverOpensAMovieTakesTheOneTable) {
    const QString path = made(u"movie.mkv"_qs), other = made(u"other.mov"_qs, 12);
    SampleTables tables({}, counting());
    const auto reader = FrameReader::open(path, nullptr, &tables);
    ASSERT_TRUE(reader);
    ASSERT_TRUE(probeMovie(path, nullptr, &tables));
    EXPECT_FALSE(makeThumbnail({path, u"Middle Frame"_qs}, nullptr, &tables).thumbnail.isNil());
    const auto beside = FrameReader::open(path, nullptr, &tables);
    ASSERT_TRUE(beside);
    EXPECT_EQ(builds, 1);
    for (const qint64 n : {20, 3, 23}) {
        const auto frame = (*beside)->read(n);
        ASSERT_TRUE(frame);
        EXPECT_EQ(readBarCode(renderFrame(*frame)), int(n) + 1) << "a file that was not read through";
    }
    ASSERT_TRUE(tableOf(tables, other));
    EXPECT_EQ(builds, 2);
    // Another file under the same name is another movie.
    ASSERT_FALSE(made(u"movie.mkv"_qs, 30).isNull());
    const auto changed = FrameReader::open(path, nullptr, &tables);
    ASSERT_TRUE(changed);
    EXPECT_EQ((*changed)->index().count(), 30);
    EXPECT_EQ(builds, 3);
    // So is one that was written at another time, though it is as long.
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly));
        file.setFileTime(QDateTime::currentDateTime().addSecs(-100), QFileDevice::FileModificationTime);
    }
    ASSERT_TRUE(tableOf(tables, path));
    EXPECT_EQ(builds, 4);
}

TEST_F(SampleTablesTest, SeveralWhoOpenAtOnceBuildOnceAndACancelledBuildIsTakenOver) {
    const QString path = made(u"movie.mkv"_qs);
    std::atomic<bool> go = false;
    SampleTables tables({}, [&](const MediaFile& file) -> Result<SampleTable> {
        const bool first = builds++ == 0;
        while (!go)
            std::this_thread::yield();
        if (first) return Error{QStringLiteral("cancelled")};
        return buildSampleTable(file);
    });
    std::atomic<int> failed = 0;
    std::vector<std::thread> hands;
    for (int i = 0; i < 6; ++i)
        hands.emplace_back([&] { failed += !tableOf(tables, path); });
    while (builds == 0)
        std::this_thread::yield();
    CancelFlag gone = true;
    EXPECT_FALSE(tableOf(tables, path, &gone)) << "who waits can give up";
    go = true;
    for (std::thread& hand : hands)
        hand.join();
    EXPECT_EQ(failed, 1);
    EXPECT_EQ(builds, 2);
}

TEST_F(SampleTablesTest, WhatWasNotUsedForLongestGoesFirst) {
    const QString paths[] = {made(u"a.mov"_qs), made(u"b.mov"_qs), made(u"c.mov"_qs)};
    qint64 one = 0;
    {
        SampleTables tables;
        const auto table = tableOf(tables, paths[0]);
        ASSERT_TRUE(table);
        one = qint64((*table)->packets.size() * (sizeof(SampleTable::Packet) + 4 + sizeof(SampleIndex::Sample)));
    }
    SampleTables tables({}, counting(), 2 * one);
    for (const int which : {0, 1, 0, 2, 0}) // the third drives out the second
        ASSERT_TRUE(tableOf(tables, paths[which]));
    EXPECT_EQ(builds, 3);
    ASSERT_TRUE(tableOf(tables, paths[1]));
    EXPECT_EQ(builds, 4);
}

TEST_F(SampleTablesTest, ALaterRunTakesFromTheFolderWhatTookReadingAWholeFile) {
    const QString path = made(u"movie.ts"_qs, 60), header = made(u"header.mov"_qs);
    SampleTables::Table first;
    {
        SampleTables tables(cache(), counting());
        const auto table = tableOf(tables, path);
        ASSERT_TRUE(table);
        first = *table;
        ASSERT_TRUE(tableOf(tables, header));
    }
    EXPECT_EQ(builds, 2);
    EXPECT_EQ(cached().size(), 1) << "what a header says is read from there";
    {
        SampleTables tables(cache(), counting());
        const auto reader = FrameReader::open(path, nullptr, &tables);
        ASSERT_TRUE(reader);
        EXPECT_EQ(builds, 2);
        for (const qint64 n : {59, 0, 31, 30, 44})
            EXPECT_EQ(readBarCode(renderFrame(*(*reader)->read(n))), int(n) + 1);
        const auto again = tableOf(tables, path);
        ASSERT_TRUE(again);
        expectSameTables(*first, **again);
    }
    // The same name, another movie: nothing of the old one is believed, and it is replaced.
    ASSERT_FALSE(made(u"movie.ts"_qs, 40).isNull());
    {
        SampleTables tables(cache(), counting());
        const auto table = tableOf(tables, path);
        ASSERT_TRUE(table);
        EXPECT_EQ((*table)->index.count(), 40);
    }
    EXPECT_EQ(builds, 3);
    EXPECT_EQ(cached().size(), 1);
}

/// What the program has read from files until now, bytes.
qint64 bytesRead() {
    QFile file(QStringLiteral("/proc/self/io"));
    if (!file.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith("rchar: ")) return line.mid(7).toLongLong();
    return -1;
}

TEST_F(SampleTablesTest, ALongMovieIsReadThroughOnce) {
    if (bytesRead() < 0) GTEST_SKIP() << "no account of what is read";
    struct Long {
        const char* name;
        int frames, copies;
    };
    for (const Long& one : {Long{"long.ts", 100, 41}, Long{"long.mpg", 100, 41}, Long{"long.mkv", 1500, 1}}) {
        SCOPED_TRACE(one.name);
        MovieSpec spec;
        spec.path = folder.filePath(QString::fromLatin1(one.name));
        spec.encoder = QStringLiteral("mpeg2video");
        spec.size = QSize(256, 144);
        spec.rateNum = 25;
        spec.frames = one.frames;
        ASSERT_TRUE(makeMovie(spec));
        QFile file(spec.path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const QByteArray once = file.readAll();
        for (int more = 1; more < one.copies; ++more)
            file.write(once);
        const qint64 size = file.size();
        file.close();
        const auto opened = [&] {
            SampleTables tables(cache(), counting());
            const qint64 before = bytesRead();
            const auto reader = FrameReader::open(spec.path, nullptr, &tables);
            EXPECT_TRUE(reader);
            EXPECT_EQ(reader ? (*reader)->index().count() : 0, one.frames * one.copies);
            return bytesRead() - before;
        };
        EXPECT_GT(opened(), size);
        EXPECT_LT(opened(), size / 3) << "what tells that it is the same file, and the table";
    }
}

TEST_F(SampleTablesTest, TablesThatContradictThemselvesTheFileOrTheirSumAreIgnored) {
    const QString path = made(u"movie.mkv"_qs, 40);
    const TableFileKey key = keyOf(path);
    SampleTables none;
    const auto built = tableOf(none, path);
    ASSERT_TRUE(built);
    const SampleTable& table = **built;
    const auto accepted = [&](const std::function<void(SampleTable&)>& change) {
        SampleTable changed = table;
        change(changed);
        return decodeTable(key, encodeTable(key, changed)).has_value();
    };
    EXPECT_TRUE(accepted([](SampleTable&) {}));
    EXPECT_FALSE(accepted([](SampleTable& t) { t.packets[3].frame = 5; })) << "a frame twice";
    EXPECT_FALSE(accepted([](SampleTable& t) { t.packets[3].frame = -1; })) << "a frame without a packet";
    EXPECT_FALSE(accepted([](SampleTable& t) { t.packets[3].frame = 1 << 30; }));
    EXPECT_FALSE(accepted([&](SampleTable& t) { t.packets[3].position = key.size; })) << "beyond the file";
    EXPECT_FALSE(accepted([](SampleTable& t) { t.packets[3].description = 1; })) << "there is none";
    EXPECT_FALSE(accepted([](SampleTable& t) { std::swap(t.index.samples[4].ticks, t.index.samples[5].ticks); }));
    EXPECT_FALSE(accepted([](SampleTable& t) { t.index.samples[5].ticks = t.index.samples[4].ticks; })) << "a time twice";
    EXPECT_FALSE(accepted([](SampleTable& t) { t.index.samples[0].ticks = 1; }));
    EXPECT_FALSE(accepted([](SampleTable& t) { t.index.endTicks = t.index.samples.back().ticks; }));
    EXPECT_FALSE(accepted([](SampleTable& t) { t.index.timeScale = 0; }));
    EXPECT_FALSE(accepted([](SampleTable& t) { t.reorderDepth = 17; }));
    EXPECT_FALSE(accepted([](SampleTable& t) { t.index.step = t.index.step + 1; }));
    const QByteArray bytes = encodeTable(key, table);
    EXPECT_FALSE(decodeTable({key.path, key.size, key.modified + 1}, bytes));
    EXPECT_FALSE(decodeTable({key.path, key.size + 1, key.modified}, bytes));
    EXPECT_FALSE(decodeTable({key.path + u'x', key.size, key.modified}, bytes));
    std::mt19937 random(9);
    for (int round = 0; round < 500; ++round) {
        QByteArray damaged = bytes;
        const auto at = qsizetype(random() % quint32(bytes.size()));
        if (round % 2)
            damaged.truncate(at);
        else
            damaged[at] = char(damaged[at] ^ (1 << random() % 8));
        EXPECT_FALSE(decodeTable(key, damaged)) << at;
    }
    // Whole and of this file by its name, but not what stands in it.
    SampleTable foreign = table;
    foreign.packets[0].content ^= 1;
    writeTableFile(cache(), key, foreign);
    SampleTables tables(cache(), counting());
    const auto reader = FrameReader::open(path, nullptr, &tables);
    ASSERT_TRUE(reader);
    EXPECT_EQ(builds, 1);
    EXPECT_EQ(readBarCode(renderFrame(*(*reader)->read(17))), 18);
}

TEST_F(SampleTablesTest, TheFolderIsBoundedAndMayBeMissingOrUnwritable) {
    std::vector<QString> paths;
    for (int i = 0; i < 4; ++i)
        paths.push_back(made(QStringLiteral("%1.mkv").arg(i)));
    SampleTables none;
    const auto table = tableOf(none, paths[0]);
    ASSERT_TRUE(table);
    for (int i = 0; i < 4; ++i) {
        writeTableFile(cache(), keyOf(paths[size_t(i)]), **table);
        QFile file(QDir(cache()).entryInfoList(QDir::Files, QDir::Time).first().filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.setFileTime(QDateTime::currentDateTime().addSecs(10 * i - 100), QFileDevice::FileModificationTime);
    }
    const qint64 one = encodeTable(keyOf(paths[0]), **table).size();
    limitTableFiles(cache(), 2 * one + 1);
    EXPECT_EQ(cached().size(), 2);
    EXPECT_FALSE(readTableFile(cache(), keyOf(paths[0]))) << "the oldest went";
    EXPECT_TRUE(readTableFile(cache(), keyOf(paths[3])));
    const QString blocked = written("in the way", u"blocked"_qs);
    SampleTables tables(blocked, counting());
    EXPECT_TRUE(tableOf(tables, paths[0]));
    EXPECT_EQ(builds, 1);
}

} // namespace
} // namespace daylark
