#pragma once

#include "model/ItemPlaces.h"

#include <QObject>

#include <memory>
#include <vector>

namespace daylark {

/// The movies that the viewer may show, in the library's arranged order; which of them are selected, and
/// which of those is on screen. What is on screen is always selected; choosing several shows the first of
/// them. Owned by the viewer's controller; interface thread.
class ViewerList : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    using Movies = ItemList;
    using Rows = ItemRows;

    void setMovies(Movies movies, qsizetype selectionIndex); ///< another list; that one only is selected
    /// The list as it is arranged now: what is on screen and what is selected beside it stay, wherever they
    /// stand in it. False, and nothing changes, when the item on screen is not in it.
    bool follow(Movies movies);
    [[nodiscard]] const Movies& movies() const { return movies_; }
    [[nodiscard]] qsizetype count() const { return qsizetype(movies_.size()); }
    [[nodiscard]] qsizetype selectionIndex() const {
        return selection_;
    } ///< the one on screen; -1 when empty
    void
    setSelectionIndex(qsizetype index); ///< this one only; announces; the controller then shows that movie
    void
    setSelectionIndexes(Rows rows); ///< shows the first; rows that don't exist are left out, none: ignored
    [[nodiscard]] const Rows& selectionIndexes() const { return rows_; }
    [[nodiscard]] std::shared_ptr<Movie> selectedMovie() const; ///< the one on screen
    [[nodiscard]] Movies selectedMovies() const;                ///< in list order
    /// Drags rows onto the gap before `dropRow`. The selection and the movie on screen stay what they are.
    void moveMovies(const Rows& rows, qsizetype dropRow);
    /// The next showable position after the selection (files not found and the flag "907" are passed over),
    /// or -1; no wrap.
    [[nodiscard]] qsizetype findNextMovie() const;
    [[nodiscard]] qsizetype findPreviousMovie() const;

Q_SIGNALS:
    void moviesChanged();
    void selectionChanged(qsizetype index); ///< another movie is to be on screen
    void selectedMoviesChanged();           ///< which are selected
    void reordered();                       ///< by `moveMovies`, after `moviesChanged`

private:
    Movies movies_;
    qsizetype selection_ = -1;
    Rows rows_;
};

} // namespace daylark
