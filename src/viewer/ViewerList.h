#pragma once

#include "model/Movie.h"

#include <QObject>

#include <memory>
#include <vector>

namespace daylark {

/// The movies that the viewer may show, in the library's arranged order, and the position in it. Interface thread.
class ViewerList : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    void setMovies(std::vector<std::shared_ptr<Movie>> movies, qsizetype selectionIndex);
    [[nodiscard]] const std::vector<std::shared_ptr<Movie>>& movies() const { return movies_; }
    [[nodiscard]] qsizetype count() const { return qsizetype(movies_.size()); }
    [[nodiscard]] qsizetype selectionIndex() const { return selection_; } ///< -1 when empty
    void setSelectionIndex(qsizetype index); ///< announces; the controller then shows that movie
    [[nodiscard]] std::shared_ptr<Movie> selectedMovie() const;
    /// The next showable position after the selection (files not found and the flag "907" are passed over), or -1; no wrap.
    [[nodiscard]] qsizetype findNextMovie() const;
    [[nodiscard]] qsizetype findPreviousMovie() const;

Q_SIGNALS:
    void moviesChanged();
    void selectionChanged(qsizetype index);

private:
    std::vector<std::shared_ptr<Movie>> movies_;
    qsizetype selection_ = -1;
};

} // namespace daylark
