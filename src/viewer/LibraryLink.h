#pragma once

#include <QtGlobal>

namespace daylark {

/// What the viewer asks of the library; the library's part that owns the viewer implements it. Interface
/// thread.
class LibraryLink {
public:
    virtual ~LibraryLink() = default;
    virtual void
    viewerShowsMovie(qsizetype index) = 0; ///< select this position of the arranged items in table and tiles
    virtual void
    viewerReordered() = 0; ///< the viewer's list stands in another order: number its movies, show that order
    virtual void saveTempSession() = 0;
    virtual void bringLibraryToFront() = 0;
};

} // namespace daylark
