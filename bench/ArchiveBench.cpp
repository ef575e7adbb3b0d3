#include "archive/Decoder.h"
#include "archive/Encoder.h"
#include "archive/KeyedArchive.h"

#include <benchmark/benchmark.h>
#include <plist/plist.h>
#include <sys/resource.h>

#include <QElapsedTimer>
#include <QRandomGenerator>

// A session of 10,000 movies: 58 fields each, of the kinds and in the numbers that a movie has, and a
// thumbnail of 100 x 56. Reading is told as a multiple of what the property-list library needs for the same
// bytes, memory as a multiple of the file.

using namespace daylark;
using namespace Qt::StringLiterals;

namespace {

constexpr int kRecords = 10'000;

struct Item : Archivable {
    std::vector<Value> fields;

    static const std::vector<std::string>& keys() {
        static const std::vector<std::string> names = [] {
            std::vector<std::string> made;
            for (int i = 0; i < 58; ++i)
                made.push_back("mMovieFieldNumber" + std::to_string(i));
            return made;
        }();
        return names;
    }
    [[nodiscard]] const char* archiveClassName() const override { return "Item"; }
    void encodeWithCoder(Encoder& coder) const override {
        for (size_t i = 0; i < keys().size(); ++i)
            coder.encode(keys()[i].c_str(), i < fields.size() ? fields[i] : Value());
    }
    void initWithCoder(const Decoder& coder) override {
        fields.reserve(keys().size());
        for (const std::string& key : keys())
            fields.push_back(coder.decode(key.c_str()));
    }
};

struct ItemList : Archivable {
    ObjectList<Item> items;
    [[nodiscard]] const char* archiveClassName() const override { return "ItemList"; }
    void encodeWithCoder(Encoder& coder) const override { coder.encodeList("items", items); }
    void initWithCoder(const Decoder& coder) override { items = coder.decodeList<Item>("items"); }
};

ArchiveClasses classes() {
    return {{u"Item"_s, [] { return std::make_shared<Item>(); }},
            {u"ItemList"_s, [] { return std::make_shared<ItemList>(); }}};
}

Image thumbnail(QRandomGenerator& random) {
    QImage picture(100, 56, QImage::Format_RGB32);
    const int tint = random.bounded(200);
    for (int y = 0; y < 56; ++y)
        for (int x = 0; x < 100; ++x)
            picture.setPixel(x, y, qRgb(tint + random.bounded(50), x * 2 + random.bounded(20), y * 4));
    return Image::fromQImage(picture);
}

Value session() {
    QRandomGenerator random(7);
    auto list = std::make_shared<ItemList>();
    const Image icon = Image::named(u"flag_Green.png"_s);
    for (int i = 0; i < kRecords; ++i) {
        auto item = std::make_shared<Item>();
        const QString path = u"/Volumes/dailies/reel_%1/shot_%2_v%3.mov"_s.arg(i / 100).arg(i).arg(i % 9);
        item->fields = {Value(path.section(u'/', -1)), Value(path),
                        Value(ArchivedUrl{u"file://"_s + path, {}}), Value(thumbnail(random))};
        item->fields.emplace_back(AttributedString(u"Note on shot %1"_s.arg(i)));
        item->fields.emplace_back(AttributedString());
        for (int n = 0; n < 7; ++n)
            item->fields.emplace_back(icon);
        for (int n = 0; n < 12; ++n)
            item->fields.emplace_back(n % 2 == 0);
        for (int n = 0; n < 14; ++n)
            item->fields.emplace_back(qint64(n < 4 ? random.generate() : 1920 + n));
        for (int n = 0; n < 9; ++n)
            item->fields.emplace_back(n < 3 ? random.generateDouble() : 23.976 * n);
        item->fields.emplace_back(u"00:0%1:12:04"_s.arg(i % 10));
        item->fields.emplace_back(QColor(i % 255, 20, 40));
        item->fields.emplace_back(Value::Array{});
        item->fields.emplace_back(
            Value::Dictionary{{Value(u"12"_s), Value(Value::Array{Value(QPointF(i, 2))})}});
        list->items.push_back(std::move(item));
    }
    return Value(Value::Dictionary{{Value(u"playlists"_s), Value(list)}});
}

const Value& sharedSession() {
    static const Value value = session();
    return value;
}

const QByteArray& sharedBytes() {
    static const QByteArray bytes = archiveRoot(sharedSession());
    return bytes;
}

void parseAlone(benchmark::State& state) {
    const QByteArray& bytes = sharedBytes();
    for (auto _ : state) {
        plist_t tree = nullptr;
        plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &tree);
        plist_free(tree);
    }
    state.counters["MB"] = double(bytes.size()) / 1e6;
}

void read(benchmark::State& state) {
    const QByteArray& bytes = sharedBytes();
    qint64 parsing = 0;
    qint64 reading = 0;
    QElapsedTimer timer;
    for (auto _ : state) {
        timer.start();
        const Result<Value> value = unarchiveRoot(bytes, classes());
        reading += timer.nsecsElapsed();
        if (!value || value->isNil()) state.SkipWithError("unreadable");
        state.PauseTiming();
        timer.start();
        plist_t tree = nullptr;
        plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &tree);
        plist_free(tree);
        parsing += timer.nsecsElapsed();
        state.ResumeTiming();
    }
    state.counters["times_parse"] = double(reading) / double(parsing);
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["peak_times_file"] = double(usage.ru_maxrss) * 1024 / double(bytes.size());
}

void write(benchmark::State& state) {
    const Value& value = sharedSession();
    for (auto _ : state)
        benchmark::DoNotOptimize(archiveRoot(value));
}

BENCHMARK(parseAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(read)->Unit(benchmark::kMillisecond);
BENCHMARK(write)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
