#pragma once

#include "base/Result.h"

#include <QFile>
#include <QString>

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace daylark {

/// Where the edit units of an MXF file's essence lie, by the file's own partitions and index tables; an edit
/// unit holds one picture and what belongs to it. The essence itself is not read, only the key and length of
/// elements asked for. Owned by whoever reads; one thread at a time, usually a worker. Fails for a file
/// without a list of its partitions at its end, with several essence containers, and where the tables have
/// gaps, reorder or contradict each other or the file: then only reading through tells.
class MxfIndex {
public:
    /// A key, a length and a value.
    struct Element {
        std::array<quint8, 16> key{};
        qint64 position = 0; ///< of the key, bytes from the file's beginning
        qint64 value = 0;    ///< where the value begins
        qint64 length = 0;   ///< of the value
        [[nodiscard]] qint64 end() const { return value + length; }
    };

    /// `count`: how many edit units the file's header speaks of.
    [[nodiscard]] static Result<MxfIndex> read(const QString& path, qint64 count);

    [[nodiscard]] qint64 count() const { return qint64(starts_.size()); }
    [[nodiscard]] qint64 start(qint64 unit) const { return starts_[size_t(unit)]; }
    [[nodiscard]] qint64 end(qint64 unit) const { return unit + 1 < count() ? start(unit + 1) : end_; }
    /// All edit units lie in one element, one after the other; `clip` is that element.
    [[nodiscard]] const std::optional<Element>& clip() const { return clip_; }
    /// What begins at this byte; none where no element of the format does.
    [[nodiscard]] std::optional<Element> elementAt(qint64 position) const;
    /// The one element of an edit unit that is of the same track as `picture`; none when there is not exactly
    /// one, or the unit's elements don't end where the next unit begins.
    [[nodiscard]] std::optional<Element> pictureIn(qint64 unit, const Element& picture) const;

private:
    struct Partition {
        qint64 position = 0, end = 0;
        quint32 container = 0;  ///< 0: holds no essence
        qint64 firstOffset = 0; ///< of its essence within the container's
        std::optional<Element> essence;
    };
    struct Segment {
        qint64 start = 0, duration = 0;
        quint32 unitBytes = 0; ///< 0: the offsets say
        quint32 index = 0, container = 0;
        std::vector<qint64> offsets;
        bool reorders = false;
    };

    MxfIndex() = default;
    bool readPartitions();
    bool walkPartition(Partition& partition);
    [[nodiscard]] bool holdsNoEssence(qint64 from, qint64 to) const;
    [[nodiscard]] std::optional<Segment> segmentOf(const Element& element) const;
    [[nodiscard]] std::vector<qint64> offsets(qint64 count);
    bool place(const std::vector<qint64>& offsets);
    [[nodiscard]] QByteArray bytesAt(qint64 position, qint64 size) const;

    std::unique_ptr<QFile> file_;
    qint64 size_ = 0; ///< of the file, bytes
    std::vector<Partition> partitions_;
    std::vector<Segment> segments_;
    std::vector<qint64> starts_;
    qint64 end_ = 0; ///< where nothing but what belongs to the last edit unit can lie before
    std::optional<Element> clip_;
};

} // namespace daylark
