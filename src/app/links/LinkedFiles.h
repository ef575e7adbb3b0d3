#pragma once

#include "app/adding/MediaWalk.h"
#include "app/links/ReviewLink.h"

namespace daylark {

/// What of a link's paths is on this machine. Worker threads: looks at the disk.
struct LinkedFiles {
    std::vector<FoundMedia> found; ///< in the link's order
    QStringList missing;           ///< media by their names that can't be read, or are no plain files
};

/// Takes the paths through the type test (movies, and images whatever the preferences say of them); the others are left
/// out. A file must be absolute, readable and a plain one: no folder, no device, no pipe is touched. Where a file's own
/// name holds commas, which part paths in a link, its pieces are put together if such a file is there.
[[nodiscard]] LinkedFiles lookForLinkedFiles(const QStringList& paths, const WalkWatch& watch);
/// Of a link: where its paths aren't all there, but those that a link of our own would mean are, these.
[[nodiscard]] LinkedFiles lookForFilesOf(const ReviewLink& link, const WalkWatch& watch);

} // namespace daylark
