#pragma once

#include "model/Movie.h"

#include <QObject>

#include <memory>

namespace daylark {

/// The movie on screen and how far it has come: one for the whole viewer, handed to its parts, which follow
/// it. A part hears of another movie before parts that were built with it, and of none the same way; it
/// forgets there what it knew of the movie before. Changed by the viewer's controller alone; interface
/// thread.
class CurrentMovie : public QObject {
    Q_OBJECT
public:
    /// `unplayable`: its file is missing or cannot be read.
    enum class State { none, opening, shown, unplayable };
    using QObject::QObject;

    [[nodiscard]] const std::shared_ptr<Movie>& movie() const { return movie_; } ///< null: none
    [[nodiscard]] State state() const { return state_; }
    void set(const std::shared_ptr<Movie>& movie); ///< announces it, the same one once more too
    void setState(State state) { state_ = state; }

    /// Calls `follow` with the movie whenever another is to be shown.
    template<class Part>
    void handTo(Part* part, void (Part::*follow)(const std::shared_ptr<Movie>&)) {
        connect(this, &CurrentMovie::changed, part, [this, part, follow] { (part->*follow)(movie_); });
    }

Q_SIGNALS:
    void changed();

private:
    std::shared_ptr<Movie> movie_;
    State state_ = State::none;
};

} // namespace daylark
