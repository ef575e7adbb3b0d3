#pragma once

#include "model/MediaTime.h"
#include "model/Movie.h"
#include "playback/read/Neighbours.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

namespace daylark {

class Player;
class Preferences;
class ViewerList;

/// Where a movie will start once it is shown, by the preference "loadFrame" as
/// `Transport::applyStartPosition` takes it: a frame from 1. The function holds values only. `current`: where
/// the movie before it stands; `running`: forwards, so that a movie left at its end starts anew.
[[nodiscard]] std::function<qint64(const SampleIndex&)>
startFrameOf(const Movie& movie, const Preferences& preferences, const MediaTime& current, bool running);

/// Keeps the player told which movies the person is likely to go to next, and where they will start, so that
/// their first pictures are ready: the next one of the list, the previous one, and the first where the list
/// is played round. Owned by the controller; interface thread; nothing fails.
class NeighbourMovies : public QObject {
    Q_OBJECT
public:
    NeighbourMovies(Player& player, const ViewerList& list, const Preferences& preferences,
                    QObject* parent = nullptr);

    void refresh(); ///< looks at list, preferences and position again
    void none();    ///< the viewer closes

private:
    Player& player_;
    const ViewerList& list_;
    const Preferences& preferences_;
    QStringList told_; ///< what the player was told last
    QTimer settle_;    ///< until the position has stood for a moment
};

} // namespace daylark
