#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVariant>

#include <optional>

namespace daylark {

/// The preferences' file: one line a key, `key=value`, sorted, UTF-8. Keys are percent-encoded where they
/// hold anything but letters, digits and "-._~ ". Values keep their type: true, 9, 0.75, "text" and ["a","b"]
/// as in JSON, colours as #aarrggbb, bytes as @base64. A line that cannot be read is dropped, never the rest.
/// Several programs may write one file: each merges its own changes into what stands there, under a lock file
/// beside it. Worker threads, except the reading at start.

using PreferenceValues = QMap<QString, QVariant>;
using PreferenceChanges = QMap<QString, std::optional<QVariant>>; ///< nullopt removes the key

[[nodiscard]] QByteArray formatPreferences(const PreferenceValues& values);
[[nodiscard]] PreferenceValues parsePreferences(const QByteArray& bytes);

/// A missing file is no error: no values.
[[nodiscard]] Result<PreferenceValues> readPreferencesFile(const QString& path);

/// Reads, changes and replaces the file under its lock. Errors: locked for longer than `lockWaitMs`,
/// unreadable, unwritable; the file is then as it was.
[[nodiscard]] Result<void> mergeIntoPreferencesFile(const QString& path, const PreferenceChanges& changes,
                                                    int lockWaitMs = 5000);

} // namespace daylark
