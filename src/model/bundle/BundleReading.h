#pragma once

#include "model/Session.h"
#include "platform/FileCopy.h"

#include <QString>

#include <memory>
#include <optional>

namespace daylark {

/// What a bundle brings: one movie with its review, or a session. The records are the caller's alone, whose paths lead to the
/// media that came with the bundle where there are some. A value that shares its records.
struct BundleContents {
    std::shared_ptr<Movie> movie;           ///< null: a session
    std::optional<SessionContents> session; ///< none: a movie
};

/// Whether the path is named like a movie bundle ("*.dlm"): a folder with an archive and media, or a single file.
[[nodiscard]] bool isBundlePath(const QString& path);
/// The bundle that a path names: itself, or the folder whose "data.dls" it is; null for others. Looks at no disk.
[[nodiscard]] QString bundleOfPath(const QString& path);

/// Reads a bundle that `bundleOfPath` gave. Of a single file whose movie is nowhere else the movie's bytes are written beside
/// it, which `watch` follows; `unwritten` says why when they could not be. Worker threads. Errors: no archive, nothing inside.
[[nodiscard]] Result<BundleContents> readBundle(const QString& bundle, const CopyWatch& watch, QString& unwritten);

} // namespace daylark
