#pragma once

#include <QObject>

class QAction;
class QMenu;

namespace daylark {

class PlaylistController;

/// The session files that were used last, above the command that clears them: the file's name, its path as the tool tip.
/// Choosing one imports it. Owned by its menu; interface thread.
class RecentSessionsMenu : public QObject {
    Q_OBJECT
public:
    /// `clear` is the command's action, alone in the menu that is filled.
    RecentSessionsMenu(PlaylistController& controller, QAction& clear);

private:
    void fill();

    PlaylistController& controller_;
    QAction& clear_;
    QMenu* menu_;
};

} // namespace daylark
