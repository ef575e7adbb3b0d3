#include "support/TruthMaking.h"

#include "support/TwoDescriptions.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace daylark::truth {
namespace {

Error failed(const char* what) {
    return {QString::fromLatin1(what)};
}

/// What a movie shows that is neither cut nor broken.
Expectation whole(const MovieSpec& spec) {
    Expectation expected;
    const int count = spec.ticks.empty() ? spec.frames : int(spec.ticks.size());
    expected.scale = spec.rateNum;
    for (int n = 0; n < count; ++n) {
        expected.pictures.push_back(n + 1);
        expected.starts.push_back(spec.ticks.empty() ? qint64(n) * spec.rateDen
                                                     : spec.ticks[size_t(n)] - spec.ticks.front());
    }
    if (spec.ticks.empty()) expected.end = qint64(count) * spec.rateDen;
    expected.shape = QSize(spec.size.width() * spec.pixelAspectNum / spec.pixelAspectDen, spec.size.height());
    if (spec.rotation % 180) expected.shape.transpose();
    return expected;
}

/// The same with these pictures, one a frame.
Expectation evenly(const MovieSpec& spec, std::vector<int> pictures) {
    MovieSpec shown = spec;
    shown.ticks.clear();
    shown.frames = int(pictures.size());
    Expectation expected = whole(shown);
    expected.pictures = std::move(pictures);
    return expected;
}

/// The samples as they went into the file, in file order.
struct Sample {
    int number = 0;
    bool key = false;
    QByteArray data;
};

Result<std::vector<Sample>> makeAndListen(MovieSpec spec, const std::function<void(EncodedSample&)>& change) {
    std::vector<Sample> samples;
    spec.onSample = [&](EncodedSample& sample) {
        if (change) change(sample);
        if (sample.keep) samples.push_back({sample.number, sample.key, sample.data});
    };
    if (const Result<void> made = makeMovie(spec); !made) return made.error();
    return samples;
}

/// From a damaged sample up to the next key frame in the file any picture may be shown.
void setFreeBehind(Expectation& expected, const std::vector<Sample>& samples,
                   const std::function<bool(int number)>& isDamaged) {
    bool spoilt = false;
    for (const Sample& sample : samples) {
        if (sample.key) spoilt = false;
        if (sample.number < 1) continue;
        spoilt = spoilt || isDamaged(sample.number);
        if (spoilt) expected.pictures[size_t(sample.number - 1)] = Expectation::any;
    }
}

bool replaceInFile(const QString& path, const QByteArray& sample,
                   const std::function<void(QByteArray&)>& change) {
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)) return false;
    const qsizetype at = file.readAll().indexOf(sample);
    QByteArray changed = sample;
    change(changed);
    return at >= 0 && file.seek(at) && file.write(changed) == changed.size();
}

} // namespace

Making asEncoded() {
    return [](const MovieSpec& spec) -> Result<Expectation> {
        if (const Result<void> made = makeMovie(spec); !made) return made.error();
        return whole(spec);
    };
}

Making edited(std::vector<Edit> edits) {
    return [edits = std::move(edits)](MovieSpec spec) -> Result<Expectation> {
        constexpr int mediaTicks = 100,
                      movieTicks = 50; // of one frame; several, so that roundings would show
        spec.muxerOptions[QStringLiteral("video_track_timescale")] =
            QString::number(spec.rateNum / spec.rateDen * mediaTicks);
        spec.muxerOptions[QStringLiteral("movie_timescale")] =
            QString::number(spec.rateNum / spec.rateDen * movieTicks);
        if (const Result<void> made = makeMovie(spec); !made) return made.error();
        if (!replaceEditList(spec.path, edits, mediaTicks, movieTicks)) return failed("no edit list");
        std::vector<int> pictures;
        std::vector<qint64> starts;
        qint64 begin = 0;
        for (const Edit& edit : edits) {
            if (edit.from < 0) continue;
            const int count = edit.rate > 0 ? int(std::lround(edit.frames * edit.rate)) : 1;
            for (int n = 0; n < count; ++n) {
                pictures.push_back(edit.from + n + 1);
                starts.push_back(begin + (n > 0 ? std::lround(n / edit.rate) : 0));
            }
            begin += edit.frames;
        }
        Expectation expected = evenly(spec, pictures);
        for (size_t n = 0; n < starts.size(); ++n)
            expected.starts[n] = starts[n] * spec.rateDen;
        expected.end = begin * spec.rateDen;
        return expected;
    };
}

Making withoutFirstSamples(int samples) {
    return [=](const MovieSpec& spec) -> Result<Expectation> {
        const auto kept =
            makeAndListen(spec, [&](EncodedSample& sample) { sample.keep = sample.place >= samples; });
        if (!kept) return kept.error();
        const auto key = std::find_if(kept->begin(), kept->end(), [](const Sample& s) { return s.key; });
        if (key == kept->end()) return failed("no key frame");
        std::vector<int> pictures(size_t(spec.frames - key->number + 1));
        std::iota(pictures.begin(), pictures.end(), key->number);
        return evenly(spec, pictures);
    };
}

Making damaged(Damage damage) {
    return [damage = std::move(damage)](const MovieSpec& spec) -> Result<Expectation> {
        const auto isHit = [&](int number) {
            return std::find(damage.numbers.begin(), damage.numbers.end(), number) != damage.numbers.end();
        };
        const auto hasGoodBefore = [&](int number) {
            while (number > 1)
                if (!isHit(--number)) return true;
            return false;
        };
        const auto spoil = [&](QByteArray& data) {
            const qsizetype kept = damage.halfKept ? data.size() / 2 : qsizetype(damage.kept);
            if (data.size() > kept) std::fill(data.begin() + kept, data.end(), damage.filler);
        };
        const auto samples = makeAndListen(spec, [&](EncodedSample& sample) {
            if (isHit(sample.number) && !damage.afterMuxing) spoil(sample.data);
        });
        if (!samples) return samples.error();
        for (const Sample& sample : *samples)
            if (damage.afterMuxing && isHit(sample.number))
                if (!replaceInFile(spec.path, sample.data, spoil)) return failed("the sample isn't there");
        Expectation expected = whole(spec);
        if (damage.referredTo) setFreeBehind(expected, *samples, isHit);
        const auto good = [&](int number) { return !isHit(number); };
        // Where not one is whole, half a picture is what there is.
        if (std::none_of(expected.pictures.begin(), expected.pictures.end(), good)) return expected;
        // In front of every good picture the first of them stands.
        for (int number = int(expected.count()) - 1; number >= 1; --number)
            if (isHit(number)) expected.pictures[size_t(number - 1)] = expected.pictures[size_t(number)];
        for (int number = 2; number <= int(expected.count()); ++number)
            if (isHit(number) && hasGoodBefore(number))
                expected.pictures[size_t(number - 1)] = expected.pictures[size_t(number - 2)];
        return expected;
    };
}

Making lostInTransport(int number) {
    return [=](const MovieSpec& spec) -> Result<Expectation> {
        const auto samples = makeAndListen(spec, {});
        if (!samples) return samples.error();
        QFile file(spec.path);
        if (!file.open(QIODevice::ReadWrite)) return failed("no file");
        QByteArray bytes = file.readAll();
        constexpr qsizetype packetSize = 188;
        constexpr int pictures = 0x100, nothing = 0x1fff, firstLost = 2, lost = 3;
        int place = -1, within = 0, hit = 0;
        for (qsizetype at = 0; at + packetSize <= bytes.size(); at += packetSize) {
            auto* head = reinterpret_cast<uint8_t*>(bytes.data() + at);
            if (((head[1] & 0x1f) << 8 | head[2]) != pictures) continue;
            const bool begins = head[1] & 0x40;
            place += begins;
            within = begins ? 0 : within + 1;
            if (place < 0 || (*samples)[size_t(place)].number != number || within < firstLost) continue;
            if (within >= firstLost + lost) break;
            head[1] = uint8_t((head[1] & 0xe0) | nothing >> 8);
            head[2] = nothing & 0xff;
            ++hit;
        }
        if (hit != lost) return failed("the sample is too small");
        if (!file.seek(0) || file.write(bytes) != bytes.size()) return failed("not written");
        Expectation expected = whole(spec);
        setFreeBehind(expected, *samples, [=](int damaged) { return damaged == number; });
        return expected;
    };
}

Making packedBFrames() {
    return [](const MovieSpec& spec) -> Result<Expectation> {
        const QByteArray placeholder = QByteArray::fromHex("000001b650cf"); // a picture "not coded"
        const QByteArray sayPacked = QByteArray::fromHex("000001b2") + "DivX503b1393p";
        QByteArray held;
        const auto samples = makeAndListen(spec, [&](EncodedSample& sample) {
            // In file order come frames 1, 3, 2, 5, 4, ... and one more at the end. What comes is one late.
            const QByteArray data = sample.data;
            if (sample.place == 0) {
                sample.keep = false;
                held = data;
                held.insert(held.indexOf(QByteArray::fromHex("000001b6")), sayPacked);
            } else if (sample.place == 1) {
                sample.data = std::exchange(held, data);
            } else if (sample.place % 2 == 0) {
                sample.data = held + data;
            } else {
                sample.data = placeholder;
                held = data;
            }
        });
        if (!samples) return samples.error();
        std::vector<int> pictures(size_t(spec.frames - 1));
        std::iota(pictures.begin(), pictures.end(), 1);
        return evenly(spec, pictures);
    };
}

Making lyingFile(std::function<bool(QByteArray&)> change) {
    return [change = std::move(change)](const MovieSpec& spec) -> Result<Expectation> {
        if (const Result<void> made = makeMovie(spec); !made) return made.error();
        QFile file(spec.path);
        if (!file.open(QIODevice::ReadWrite)) return failed("no file");
        QByteArray bytes = file.readAll();
        if (!change(bytes)) return failed("nothing to change");
        if (!file.seek(0) || file.write(bytes) != bytes.size()) return failed("not written");
        return whole(spec);
    };
}

Making joined(int copies) {
    return [=](const MovieSpec& spec) -> Result<Expectation> {
        if (const Result<void> made = makeMovie(spec); !made) return made.error();
        QFile file(spec.path);
        if (!file.open(QIODevice::ReadWrite)) return failed("no file");
        const QByteArray bytes = file.readAll();
        for (int copy = 1; copy < copies; ++copy)
            if (file.write(bytes) != bytes.size()) return failed("not written");
        std::vector<int> pictures;
        for (int n = 0; n < copies * spec.frames; ++n)
            pictures.push_back(n % spec.frames + 1);
        Expectation expected = evenly(spec, pictures);
        if (spec.ticks.empty()) return expected;
        const qint64 length = spec.ticks.back() - spec.ticks.front() + 1; // the last one as long as the rate has it
        const size_t once = spec.ticks.size();
        for (size_t n = 0; n < expected.starts.size(); ++n)
            expected.starts[n] = qint64(n / once) * length + spec.ticks[n % once] - spec.ticks.front();
        expected.end = copies * length;
        return expected;
    };
}

Making withoutCompositionTimes() {
    return [](MovieSpec spec) -> Result<Expectation> {
        const bool reorders = spec.bFrames > 0;
        return lyingFile([=](QByteArray& file) {
            const qsizetype header = file.lastIndexOf("moov");
            bool found = !reorders;
            for (const char* box : {"ctts", "edts"})
                if (const qsizetype at = file.indexOf(box, header); header >= 0 && at > 0) {
                    file.replace(at, 4, "free");
                    found = true;
                }
            return found;
        })(spec);
    };
}

Making onMilliseconds() {
    return [](const MovieSpec& spec) -> Result<Expectation> {
        if (const Result<void> made = makeMovie(spec); !made) return made.error();
        Expectation expected = whole(spec);
        // Halves are rounded up: from the second on, two share each millisecond, and its length.
        for (size_t n = 1; n < expected.starts.size(); ++n)
            expected.starts[n] = qint64(n) + 1;
        expected.end = 0;
        return expected;
    };
}

Making inTwoDescriptions(std::map<QString, QString> options, int bFrames) {
    return [=](const MovieSpec& spec) -> Result<Expectation> {
        MovieSpec first = spec, second = spec;
        first.path = spec.path + QStringLiteral(".first.mov");
        second.path = spec.path + QStringLiteral(".second.mov");
        second.encoderOptions = options;
        second.bFrames = bFrames;
        for (const MovieSpec& part : {first, second})
            if (const Result<void> made = makeMovie(part); !made) return made.error();
        if (const Result<void> done = joinWithTwoDescriptions(first.path, second.path, spec.path); !done)
            return done.error();
        std::vector<int> pictures;
        for (int n = 0; n < 2 * spec.frames; ++n)
            pictures.push_back(n % spec.frames + 1);
        return evenly(spec, pictures);
    };
}

Making truncated(double share, CutFile kind) {
    return [=](MovieSpec spec) -> Result<Expectation> {
        if (kind == CutFile::headerInFront)
            spec.muxerOptions[QStringLiteral("movflags")] = QStringLiteral("faststart");
        const auto samples = makeAndListen(spec, {});
        if (!samples) return samples.error();
        QFile file(spec.path);
        if (!file.open(QIODevice::ReadWrite)) return failed("no file");
        if (kind == CutFile::packed) { // samples don't stand in one piece there
            if (!file.resize(qint64(double(file.size()) * share))) return failed("not cut");
            Expectation expected = whole(spec);
            expected.mayLack = int(spec.frames * (1 - share) * 1.5);
            expected.looseEnd = 3;
            return expected;
        }
        const QByteArray bytes = file.readAll();
        int latest = 0;
        size_t place = 0;
        for (; place < samples->size(); ++place) {
            const Sample& sample = (*samples)[place];
            if (double(place) >= double(samples->size()) * share && sample.number > latest) break;
            latest = std::max(latest, sample.number);
        }
        if (place == samples->size()) return failed("nothing to cut");
        // Muxers rewrite the start of some samples; the end stays as it was encoded.
        const QByteArray& cut = (*samples)[place].data;
        const QByteArray tail = cut.right(std::min<qsizetype>(cut.size(), 64));
        const qsizetype there = bytes.indexOf(cut);
        const qsizetype at = there >= 0 ? there + cut.size() - tail.size() : bytes.indexOf(tail);
        if (at < 0) return failed("the sample isn't there");
        if (!file.resize(at + tail.size() - cut.size() / 2)) return failed("not cut");
        Expectation expected = whole(spec);
        // All samples before it are there, and they are the first pictures: none of them is shown after it.
        for (qint64 n = latest; n < expected.count(); ++n)
            expected.pictures[size_t(n)] = n == latest ? Expectation::any : latest;
        expected.mayLack = int(expected.count()) - latest;
        if (kind == CutFile::readable) {
            expected.looseEnd = 1;
            expected.pictures.resize(size_t(latest) + 1);
            expected.starts.resize(size_t(latest) + 1);
            expected.end = 0;
            expected.mayLack = 1;
        }
        return expected;
    };
}

} // namespace daylark::truth
