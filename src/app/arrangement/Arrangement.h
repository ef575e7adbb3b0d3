#pragma once

#include "model/ItemPlaces.h"

#include <QString>

#include <functional>

namespace daylark {

/// What of a playlist is shown: which items (a filter), in which order (a field), which of them are selected.
/// A view: it holds records that stand in the playlist and changes neither. The same record may stand in the
/// list several times; each time is an item of its own, told from the others by which of them it is. Held by
/// the library; interface thread.
class Arrangement {
public:
    using Movies = ItemList;
    using Rows = ItemRows;
    using Filter = std::function<bool(const Movie&)>;

    /// What became other by an operation, for those that show it.
    struct Changed {
        bool list = false, selection = false;
    };
    enum class OwnOrder {
        by_number, ///< "sortOrder"; where a record stands twice in a list that is in order, the list's
        as_given   ///< of lists that have no numbers of their own
    };

    /// Arranges these contents; the selection stays on the same items, as far as they are still shown.
    Changed show(const Movies& contents, OwnOrder ownOrder = OwnOrder::by_number);
    Changed filterAgain(); ///< of the same contents in the same order: cheap
    void setFilter(Filter filter) {
        filter_ = std::move(filter);
    }                                                   ///< empty: everything; from the next `show` on
    void setSort(const QString& field, bool ascending); ///< as above; "sortOrder" is the list's own order
    [[nodiscard]] const QString& sortField() const { return sortField_; }
    [[nodiscard]] bool sortAscending() const { return sortAscending_; }

    [[nodiscard]] const Movies& movies() const { return movies_; } ///< as shown
    [[nodiscard]] const Movies& unfiltered() const { return sorted_; } ///< in the same order
    [[nodiscard]] const Rows& selectedRows() const { return selected_; }
    [[nodiscard]] Movies selectedMovies() const; ///< in shown order
    bool select(Rows rows); ///< rows that don't exist are left out; true when it is another choice
    [[nodiscard]] Rows rowsOf(const Movie& movie) const; ///< everywhere it is shown

private:
    Movies sorted_; ///< whatever the filter
    Movies movies_;
    Rows selected_;
    Filter filter_;
    QString sortField_ = QStringLiteral("sortOrder");
    bool sortAscending_ = true;
};

} // namespace daylark
