#pragma once

#include <QObject>
#include <QTimer>

namespace daylark {

class Player;
class PositionSlider;

/// Between the player and its slider: shows five times a second which frames are ready, and tells the player
/// when a hand drags. Owned by the viewer window; interface thread.
class ReadyStrip : public QObject {
    Q_OBJECT
public:
    ReadyStrip(Player& player, PositionSlider& slider, QObject* parent);

    void refresh();

private:
    Player& player_;
    PositionSlider& slider_;
    QTimer timer_;
};

} // namespace daylark
