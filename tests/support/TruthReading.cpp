#include "support/TruthReading.h"

#include "media/decode/FrameReader.h"
#include "picture/PictureRenderer.h"

#include <algorithm>
#include <memory>
#include <random>

namespace daylark::truth {
namespace {

/// Reads the bar code off a small rendering; turned and stretched pictures are upright and whole by then.
std::optional<int> numberIn(const VideoFrame& frame) {
    return readBarCode(renderFrame(frame, QSize(192, 96)));
}

class Reading {
public:
    Reading(const Expectation& expected, FrameReader& reader, Tally& tally)
        : expected_(expected)
        , reader_(reader)
        , tally_(tally) {}

    void expectTimes();
    void expectShape();
    void look(qint64 n, const Result<VideoFrame>& frame, const char* manner) {
        const bool there = frame && !frame->isNull();
        tally_.look(n, expectedAt(n), there, there ? numberIn(*frame) : std::nullopt, manner);
    }
    void jump(std::mt19937& random, qint64& at);

private:
    [[nodiscard]] qint64 count() const { return reader_.index().count(); }
    [[nodiscard]] int expectedAt(qint64 n) const {
        return n >= count() - expected_.looseEnd ? Expectation::any : expected_.pictures[size_t(n)];
    }

    const Expectation& expected_;
    FrameReader& reader_;
    Tally& tally_;
};

void Reading::expectTimes() {
    const SampleIndex& index = reader_.index();
    const auto same = [&](qint64 ticks, qint64 start) {
        return ticks * expected_.scale == start * index.timeScale;
    };
    qint64 unlike = -1;
    for (qint64 n = 0; n < count() - expected_.looseEnd && unlike < 0; ++n)
        if (!same(index.samples[size_t(n)].ticks, expected_.starts[size_t(n)])) unlike = n;
    if (unlike >= 0)
        tally_.fail(QStringLiteral("frame %1 begins at %2 of %3 a second")
                        .arg(unlike)
                        .arg(index.samples[size_t(unlike)].ticks)
                        .arg(index.timeScale));
    if (expected_.end > 0 && count() == expected_.count() && !same(index.endTicks, expected_.end))
        tally_.fail(QStringLiteral("ends at %1 of %2 a second").arg(index.endTicks).arg(index.timeScale));
}

void Reading::expectShape() {
    const auto frame = reader_.read(count() / 2);
    if (!frame || expected_.shape.isEmpty() || frame->displaySize() == expected_.shape) return;
    const QSize shown = frame->displaySize();
    tally_.fail(QStringLiteral("is shown as %1 x %2").arg(shown.width()).arg(shown.height()));
}

/// Far, or a few frames on or back, or with all pictures on the way: what is left over from one read must
/// not spoil the next.
void Reading::jump(std::mt19937& random, qint64& at) {
    const unsigned kind = random() % 10;
    const qint64 by = 1 + random() % 5;
    at = kind < 6 ? qint64(random() % quint64(count())) : kind < 8 ? at + by : at - by;
    at = std::clamp<qint64>(at, 0, count() - 1);
    if (random() % 4) return look(at, reader_.read(at), "jump");
    const auto passed = [&](qint64 n, const VideoFrame& frame) { look(n, frame, "on the way"); };
    look(at, reader_.readThrough(at, passed), "jump with pictures on the way");
}

} // namespace

void lookThrough(const QString& path, const Expectation& expected, int jumps, Tally& tally) {
    std::unique_ptr<FrameReader> reader;
    const auto open = [&] {
        auto opened = FrameReader::open(path);
        if (opened)
            reader = std::move(*opened);
        else
            tally.fail(opened.error().text);
        return bool(opened);
    };
    if (!open()) return;
    const qint64 count = reader->index().count();
    tally.setFrames(count);
    if (count > expected.count() || count < expected.count() - expected.mayLack)
        return tally.fail(QStringLiteral("has %1 frames, not %2").arg(count).arg(expected.count()));
    Reading(expected, *reader, tally).expectTimes();
    for (qint64 n = 0; n < count; ++n)
        Reading(expected, *reader, tally).look(n, reader->read(n), "forwards");
    if (!open()) return;
    for (qint64 n = count - 1; n >= 0; --n)
        Reading(expected, *reader, tally).look(n, reader->read(n), "backwards");
    if (!open()) return;
    Reading reading(expected, *reader, tally);
    reading.expectShape();
    std::mt19937 random(7);
    qint64 at = 0;
    for (int time = 0; time < jumps; ++time)
        reading.jump(random, at);
    if (reader->read(count)) tally.fail(QStringLiteral("a frame behind the last"));
}

} // namespace daylark::truth
