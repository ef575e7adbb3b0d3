#pragma once

#include "base/jobs/CancelFlag.h"

#include <QString>

#include <memory>

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

    /// A long job of the viewer's, shown with the library's own; a person may cancel it.
    struct Work {
        int id = 0;
        std::shared_ptr<CancelFlag> cancelled;
    };
    [[nodiscard]] virtual Work workBegins(const QString& title, const QString& text) = 0;
    virtual void workAdvances(int id, qint64 done, qint64 total) = 0;
    virtual void workEnds(int id) = 0;
};

} // namespace daylark
