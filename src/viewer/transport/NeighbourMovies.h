#pragma once

#include "viewer/transport/StartPosition.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <utility>
#include <vector>

namespace daylark {

class Player;
class Preferences;
class ViewerList;

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
    /// What the player was told last.
    struct Told {
        QString shown; ///< the movie on screen
        bool running = false;
        std::vector<std::pair<QString, StartPosition>> wishes; ///< paths
        bool operator==(const Told&) const = default;
    };
    Told told_;
    QTimer settle_;    ///< until the position has stood for a moment
};

} // namespace daylark
