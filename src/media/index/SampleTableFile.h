#pragma once

#include "media/index/SampleTable.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace daylark {

/// Sample tables as files in a cache folder, one a movie, named after its path. Internal to media/; workers.
/// Whatever stands in the folder is untrusted: a file that is damaged, of another movie or version, or
/// that contradicts itself gives nothing.

/// The movie as it was when the table was made.
struct TableFileKey {
    QString path;
    qint64 size = 0;     ///< bytes
    qint64 modified = 0; ///< milliseconds since 1970
};

[[nodiscard]] QByteArray encodeTable(const TableFileKey& key, const SampleTable& table);
[[nodiscard]] std::optional<SampleTable> decodeTable(const TableFileKey& key, const QByteArray& bytes);

[[nodiscard]] std::optional<SampleTable> readTableFile(const QString& folder, const TableFileKey& key);
/// Whole or not at all; makes the folder. What cannot be written is built again the next time.
void writeTableFile(const QString& folder, const TableFileKey& key, const SampleTable& table);
/// Removes those used longest ago until the rest takes no more than so many bytes.
void limitTableFiles(const QString& folder, qint64 bytes);

} // namespace daylark
