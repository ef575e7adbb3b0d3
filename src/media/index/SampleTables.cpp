#include "media/index/SampleTables.h"

#include "media/index/SampleTable.h"
#include "media/index/SampleTableFile.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace daylark {
namespace {

qint64 byteCountOf(const SampleTable& table) {
    return qint64(table.packets.size() * sizeof(SampleTable::Packet) +
                  table.packetOfFrame.size() * sizeof(qint32) +
                  table.index.samples.size() * sizeof(SampleIndex::Sample));
}

/// What the file begins with is what the table says.
bool begins(const SampleTable& table, const MediaFile& file) {
    const av::PacketPtr packet(av_packet_alloc());
    return file.video() && table.index.timeBaseNum == file.video()->time_base.num &&
           table.index.timeBaseDen == file.video()->time_base.den && file.readPacket(packet.get()) >= 0 &&
           table.isAt(0, *packet);
}

} // namespace

SampleTables::SampleTables(QString cacheFolder, Builder builder, qint64 budget)
    : folder_(std::move(cacheFolder))
    , build_(builder ? std::move(builder) : Builder(&buildSampleTable))
    , budget_(budget) {}

Result<SampleTables::Table> SampleTables::tableOf(const MediaFile& file) {
    std::unique_lock lock(mutex_);
    for (;;) {
        const auto known = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
            return entry.path == file.path() && entry.fileSize == file.size() &&
                   entry.fileModified == file.modified();
        });
        if (known == entries_.end()) break;
        if (known->table) {
            entries_.splice(entries_.begin(), entries_, known);
            return known->table;
        }
        if (file.cancelled()) return Error{QStringLiteral("cancelled")};
        built_.wait_for(lock, std::chrono::milliseconds(5)); // looks at `cancelled` now and then
    }
    entries_.push_front({file.path(), file.size(), file.modified(), nullptr, 0});
    const auto entry = entries_.begin();
    lock.unlock();
    Result<Table> table = made(file);
    lock.lock();
    if (table) {
        entry->table = *table;
        entry->bytes = byteCountOf(**table);
        bytes_ += entry->bytes;
        trim();
    } else {
        entries_.erase(entry);
    }
    built_.notify_all();
    return table;
}

void SampleTables::trim() {
    for (auto at = entries_.end(); at != entries_.begin() && bytes_ > budget_;) {
        --at;
        if (!at->table || at == entries_.begin()) continue;
        bytes_ -= at->bytes;
        at = entries_.erase(at);
    }
}

Result<SampleTables::Table> SampleTables::made(const MediaFile& file) {
    const auto build = [this](const MediaFile& asOpened) -> Result<Table> {
        Result<SampleTable> built = build_(asOpened);
        if (!built) return built.error();
        return Table(std::make_shared<const SampleTable>(std::move(*built)));
    };
    if (folder_.isNull()) return build(file);
    const TableFileKey key{file.path(), file.size(), file.modified()};
    std::optional<SampleTable> kept = readTableFile(folder_, key);
    if (kept && begins(*kept, file)) return Table(std::make_shared<const SampleTable>(std::move(*kept)));
    Result<Table> table = Error{};
    if (kept) {
        const Result<MediaFile> fresh = file.reopened(); // a packet was read: it isn't as it was opened
        if (!fresh) return fresh.error();
        table = build(*fresh);
    } else {
        table = build(file);
    }
    if (table && (*table)->readThrough) keep(key, *table);
    return table;
}

/// Not by who waits for the movie: a disk may take its time.
void SampleTables::keep(const TableFileKey& key, const Table& table) {
    writing_.run([folder = folder_, key, table, budget = budget_] {
        writeTableFile(folder, key, *table);
        limitTableFiles(folder, budget);
    });
}

} // namespace daylark
