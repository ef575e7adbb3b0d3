#pragma once

#include "base/Result.h"
#include "base/jobs/WorkQueue.h"

#include <QString>

#include <condition_variable>
#include <functional>
#include <list>
#include <memory>
#include <mutex>

namespace daylark {

class MediaFile;
struct SampleTable;
struct TableFileKey;

/// The sample tables of the movies opened of late, by path, size and modification time: whoever opens a movie
/// next takes its table from here, and two who open it at once build it once. Tables that took reading a
/// whole file are also kept in files in a cache folder, from which a later run of the program takes them;
/// what stands there is checked as a stranger's, and ignored where it doesn't fit. Bounded in memory and in
/// the folder; what was not used for longest goes first. Shared by whoever opens movies; any thread. The
/// destructor waits for a table being written.
class SampleTables {
public:
    using Table = std::shared_ptr<const SampleTable>;
    using Builder = std::function<Result<SampleTable>(const MediaFile&)>;
    static constexpr qint64 usualBudget = qint64(64) << 20;

    /// `cacheFolder`: null for none; made when it is needed. `builder`: null for `buildSampleTable`.
    /// `budget`: bytes of memory; as much again may lie in the folder.
    explicit SampleTables(QString cacheFolder = {}, Builder builder = {}, qint64 budget = usualBudget);
    SampleTables(const SampleTables&) = delete;
    SampleTables& operator=(const SampleTables&) = delete;

    /// The table of a file that has just been opened, and is left at an unspecified position. Waits where it
    /// is being built elsewhere. Errors as the builder's; fails when cancelled.
    [[nodiscard]] Result<Table> tableOf(const MediaFile& file);

private:
    struct Entry {
        QString path;
        qint64 fileSize = 0, fileModified = 0;
        Table table; ///< null: being built
        qint64 bytes = 0;
    };
    [[nodiscard]] Result<Table> made(const MediaFile& file);
    void keep(const TableFileKey& key, const Table& table);
    void trim();

    const QString folder_;
    const Builder build_;
    const qint64 budget_;
    std::mutex mutex_; // guards down to the blank line
    std::condition_variable built_;
    std::list<Entry> entries_; ///< the one used last stands first
    qint64 bytes_ = 0;

    WorkQueue writing_{1, WorkQueue::Pace::background}; ///< last: waits for what is being written
};

} // namespace daylark
