#pragma once

#include "archive/KeyedArchive.h"

#include <QString>

#include <optional>
#include <vector>

namespace daylark {

/// A keyed archive read from a file without its large data (a whole movie, say): these stay on the disk, and what stands in
/// their place in the records is known by `left`. Bytes from strangers, as in `unarchiveRoot`. A value.
class LargeArchive {
public:
    /// Bytes of the file that were left there.
    struct Place {
        qint64 offset = 0, length = 0;
    };
    static constexpr qint64 largeData = 16 << 20;

    /// Data of at least `large` bytes stay on the disk, in files of more than that. Worker threads. Memory goes with what else
    /// the file holds, at most 512 MiB. Errors: not readable, no archive, too much.
    [[nodiscard]] static Result<LargeArchive> read(const QString& path, const ArchiveClasses& classes,
                                                   qint64 large = largeData);

    [[nodiscard]] const Value& root() const { return root_; }
    /// Where the bytes are that this data stands for; none when it is what it says.
    [[nodiscard]] std::optional<Place> left(const QByteArray& data) const;

private:
    Value root_;
    QByteArray mark_; ///< drawn by lot for each reading, so that no file can hold it
    std::vector<Place> places_;
};

} // namespace daylark
