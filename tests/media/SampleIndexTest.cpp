#include "media/decode/FrameReader.h"
#include "media/facts/FrameRate.h"

#include "support/MovieMaker.h"
#include "picture/PictureRenderer.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace daylark {
namespace {

class SampleIndexTest : public ::testing::Test {
protected:
    MovieSpec spec(const QString& name, int frames = 40) const {
        MovieSpec made;
        made.path = folder.filePath(name);
        made.size = QSize(192, 108);
        made.frames = frames;
        return made;
    }
    static std::unique_ptr<FrameReader> made(const MovieSpec& spec) {
        const Result<void> done = makeMovie(spec);
        EXPECT_TRUE(done) << done.error().text.toStdString();
        return opened(spec.path);
    }
    static std::unique_ptr<FrameReader> opened(const QString& path) {
        Result<std::unique_ptr<FrameReader>> reader = FrameReader::open(path);
        EXPECT_TRUE(reader) << reader.error().text.toStdString();
        return reader ? std::move(*reader) : nullptr;
    }
    static int number(FrameReader& reader, qint64 n) {
        const Result<VideoFrame> frame = reader.read(n);
        return frame ? readBarCode(renderFrame(*frame)).value_or(-1) : -2;
    }
    static QByteArray contents(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void write(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder;
};

TEST_F(SampleIndexTest, PositionsOnAnyScaleResolveWithoutRounding) {
    SampleIndex index;
    index.timeScale = 24000;
    index.step = 1001;
    for (int n = 0; n < 1000; ++n)
        index.samples.push_back({n, n * 1001LL, n % 12 == 0});
    index.endTicks = 1000 * 1001;
    for (qint64 n = 0; n < 1000; ++n) {
        ASSERT_EQ(index.frameAt(index.timeOf(n)), n);
        ASSERT_EQ(index.frameAt({n * 1001 * 25, 24000 * 25}), n);
        ASSERT_EQ(index.frameAt({n * 1001 * 25 - 1, 24000 * 25}), std::max<qint64>(0, n - 1));
    }
    EXPECT_EQ(index.frameAt({-5, 600}), 0);
    EXPECT_EQ(index.frameAt(index.duration()), 999);
    EXPECT_EQ(index.frameAt({1LL << 62, 1}), 999);
    EXPECT_EQ(index.frameAt({600, (1LL << 32) | 600}), 23) << "flags above the scale's 32 bits";
    EXPECT_EQ(SampleIndex().frameAt({0, 600}), -1);
}

TEST_F(SampleIndexTest, AMovieOfDaysKeepsWithinTheRecordsNumbers) {
    constexpr qint64 step = 1001, most = std::numeric_limits<qint32>::max(), count = most / step + 2;
    const av::FormatPtr format(avformat_alloc_context());
    AVStream* stream = avformat_new_stream(format.get(), nullptr);
    ASSERT_TRUE(stream);
    stream->avg_frame_rate = {24000, 1001};
    SampleIndex index;
    index.timeBaseNum = 1;
    index.timeBaseDen = 24000;
    for (qint64 n = 0; n < count; ++n)
        index.samples.push_back({n * step, 0, true});
    setClock(index, *stream, step, LastFrame::asOthers);
    EXPECT_LE(index.endTicks, most);
    EXPECT_EQ(index.samples.back().ticks / index.timeScale, (count - 1) * step / 24000) << "seconds";
    EXPECT_EQ(index.frameAt(index.timeOf(count - 1)), count - 1);
}

TEST_F(SampleIndexTest, VariableRateKeepsTheSamplesOwnTimes) {
    MovieSpec variable = spec(u"variable.mp4"_qs);
    variable.rateNum = 600;
    qint64 at = 0;
    for (int n = 0; n < 40; ++n, at += n % 3 == 0 ? 50 : n % 3 == 1 ? 20 : 25)
        variable.ticks.push_back(at);
    const auto reader = made(variable);
    ASSERT_TRUE(reader);
    const SampleIndex& index = reader->index();
    ASSERT_EQ(index.count(), 40);
    EXPECT_EQ(index.step, 0);
    for (qint64 n = 0; n < 40; ++n) {
        EXPECT_EQ(index.frameAt({variable.ticks[size_t(n)], 600}), n);
        EXPECT_EQ(number(*reader, n), n + 1);
    }
    EXPECT_EQ(number(*reader, 7), 8);
}

TEST_F(SampleIndexTest, LateStartShowsTheFirstSampleAtZero) {
    MovieSpec late = spec(u"late.mkv"_qs);
    for (int n = 0; n < 40; ++n)
        late.ticks.push_back(n + 240);
    const auto reader = made(late);
    ASSERT_TRUE(reader);
    EXPECT_GT(reader->index().samples.front().pts, 0);
    EXPECT_EQ(reader->index().samples.front().ticks, 0);
    EXPECT_EQ(reader->index().timeScale, 24);
    EXPECT_EQ(reader->index().step, 1);
    EXPECT_EQ(number(*reader, 21), 22);
}

TEST_F(SampleIndexTest, StreamCutOpenInTheMiddleOfAGroupCountsWhatCanBeShown) {
    MovieSpec whole = spec(u"whole.ts"_qs, 60);
    whole.groupSize = 20;
    ASSERT_TRUE(makeMovie(whole));
    const QByteArray bytes = contents(whole.path);
    // The tables that open a transport stream stay; then some packets of the first group are lost.
    const QString cut = folder.filePath(u"cut.ts"_qs);
    write(cut, bytes.left(188 * 3) + bytes.mid(bytes.size() / 188 / 6 * 188));
    const auto reader = opened(cut);
    ASSERT_TRUE(reader);
    const qint64 count = reader->index().count();
    EXPECT_GE(count, 40);
    EXPECT_LT(count, 60);
    const int first = number(*reader, 0);
    EXPECT_EQ(first, 61 - count);
    for (const qint64 n : {count - 1, qint64(3), count / 2, qint64(0)})
        EXPECT_EQ(number(*reader, n), first + n);
}

TEST_F(SampleIndexTest, JoinedRecordingsAreShownOneAfterTheOther) {
    MovieSpec part = spec(u"part.ts"_qs, 72);
    ASSERT_TRUE(makeMovie(part));
    const QByteArray bytes = contents(part.path);
    const QString joined = folder.filePath(u"joined.ts"_qs);
    write(joined, bytes + bytes);
    const auto reader = opened(joined);
    ASSERT_TRUE(reader);
    ASSERT_EQ(reader->index().count(), 144);
    for (const qint64 n : {0, 71, 72, 100, 143, 40, 90})
        EXPECT_EQ(number(*reader, n), n % 72 + 1) << n;
}

TEST_F(SampleIndexTest, DamagedSampleShowsAnEarlierPictureAndTheNumberingStays) {
    MovieSpec intra = spec(u"intra.mov"_qs);
    intra.encoder = u"mjpeg"_qs;
    intra.bFrames = 0;
    intra.pixelFormat = u"yuvj420p"_qs;
    const auto whole = made(intra);
    ASSERT_TRUE(whole);
    QByteArray bytes = contents(intra.path);
    // The eleventh picture's data becomes zeros.
    qsizetype start = -1;
    for (int picture = 0; picture < 11; ++picture)
        start = bytes.indexOf(QByteArray::fromHex("ffd8ff"), start + 1);
    ASSERT_GT(start, 0);
    const qsizetype end = bytes.indexOf(QByteArray::fromHex("ffd8ff"), start + 1);
    bytes.replace(start, end - start, QByteArray(end - start, '\0'));
    const QString damaged = folder.filePath(u"damaged.mov"_qs);
    write(damaged, bytes);
    const auto reader = opened(damaged);
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->index().count(), 40);
    for (qint64 n = 0; n < 40; ++n)
        EXPECT_EQ(number(*reader, n), n == 10 ? 10 : n + 1);
    EXPECT_EQ(number(*reader, 30), 31);
    EXPECT_EQ(number(*reader, 10), 10);
}

TEST_F(SampleIndexTest, TruncatedFileEndsWithTheLastPictureItHas) {
    MovieSpec whole = spec(u"whole.mkv"_qs, 60);
    ASSERT_TRUE(makeMovie(whole));
    const QByteArray bytes = contents(whole.path);
    const QString cut = folder.filePath(u"cut.mkv"_qs);
    write(cut, bytes.left(bytes.size() / 2));
    const auto reader = opened(cut);
    ASSERT_TRUE(reader);
    const qint64 count = reader->index().count();
    EXPECT_GT(count, 10);
    EXPECT_LT(count, 60);
    for (qint64 n = 0; n + 3 < count; ++n)
        ASSERT_EQ(number(*reader, n), n + 1);
    EXPECT_TRUE(reader->read(count - 1));
    EXPECT_FALSE(reader->read(count));
}

TEST_F(SampleIndexTest, PicturesOnTheWayArePassedInOrderAndNoneIsWrong) {
    MovieSpec movie = spec(u"group.mov"_qs);
    movie.groupSize = 16;
    const auto reader = made(movie);
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->keyFrameBefore(30), 16);
    std::vector<qint64> passed;
    int wrong = 0;
    const auto note = [&](qint64 n, const VideoFrame& frame) {
        passed.push_back(n);
        wrong += readBarCode(renderFrame(frame)) != int(n) + 1;
    };
    ASSERT_TRUE(reader->readThrough(30, note));
    // A jump leaves out what no other picture refers to; each of those is still there when it is asked for.
    EXPECT_EQ(passed.front(), 16);
    EXPECT_TRUE(std::find(passed.begin(), passed.end(), 30) != passed.end());
    EXPECT_LT(std::count_if(passed.begin(), passed.end(), [](qint64 n) { return n < 30; }), 14);
    EXPECT_TRUE(std::is_sorted(passed.begin(), passed.end()));
    for (qint64 n = 16; n < 32; ++n)
        EXPECT_EQ(number(*reader, n), n + 1);
    passed.clear();
    for (qint64 n = 32; n < 40; ++n)
        ASSERT_TRUE(reader->readThrough(n, note));
    EXPECT_EQ(passed, std::vector<qint64>({32, 33, 34, 35, 36, 37, 38, 39}));
    EXPECT_EQ(wrong, 0);
}

TEST_F(SampleIndexTest, CancelledReadFailsAndTheReaderStaysUsable) {
    const auto reader = made(spec(u"cancel.mov"_qs));
    ASSERT_TRUE(reader);
    CancelFlag cancel = true;
    EXPECT_FALSE(reader->read(20, &cancel));
    cancel = false;
    EXPECT_EQ(number(*reader, 20), 21);
    cancel = true;
    EXPECT_FALSE(FrameReader::open(folder.filePath(u"cancel.mov"_qs), &cancel));
}

} // namespace
} // namespace daylark
