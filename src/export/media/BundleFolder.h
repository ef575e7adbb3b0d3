#pragma once

#include "model/Movie.h"
#include "platform/FileCopy.h"

#include <QString>

#include <memory>

namespace daylark {

/// A movie and its review on their way into a bundle; the record is a copy of its own.
struct BundleSource {
    std::shared_ptr<Movie> movie;
    FileReference file; ///< found by its bookmark data, whatever the network mode

    /// Interface thread; the rest is a worker's.
    [[nodiscard]] static BundleSource of(const std::shared_ptr<Movie>& movie);
    [[nodiscard]] qint64 mediaBytes() const; ///< of what a bundle folder copies; a worker's, looks at the disk
};

struct BundleReport {
    enum class End { written, cancelled, failed };
    End end = End::failed;
    qint64 copiedBytes = 0;
    QString path, reason; ///< of what failed
};

/// A bundle folder: "data.dls", which holds the record alone, a copy of the media beside it (of a run, all its pictures), and
/// the movie's thumbnail as the folder's icon. What the folder holds else stays; an older copy is there until the new one is
/// whole. Cancelled, a folder that was made for it goes again. Worker threads.
[[nodiscard]] BundleReport writeBundleFolder(const BundleSource& source, const QString& folder, const CopyWatch& watch = {});

/// A bundle file, by the rules of those that exist: the archive, which holds nothing, under the path with ".dlm" once more,
/// beside an empty folder of the path. The doubled extension and the empty folder are wanted. Worker threads.
[[nodiscard]] BundleReport writeBundleFile(const BundleSource& source, const QString& path);

} // namespace daylark
