#pragma once

#include "commands/CommandSet.h"
#include "commands/keys/KeyMap.h"

#include <QMainWindow>

class QSplitter;

namespace daylark {

class Commands;
class ItemsPane;
class PlaylistController;
class PlaylistsPane;
class PreferencesWindow;
class ProgressWindow;
class StatusStrip;

/// The library's window: playlists left, items right, menus, status line. Renders what the controller's parts
/// hold, sends every action there, and remembers only how it looks: geometry, divider, columns, tile size.
/// Interface thread.
class LibraryWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit LibraryWindow(PlaylistController& controller, QWidget* parent = nullptr);
    ~LibraryWindow() override;

    [[nodiscard]] PlaylistController& controller() { return controller_; }
    [[nodiscard]] Commands& commands() { return *commands_; }
    [[nodiscard]] PlaylistsPane& playlistsPane() { return *playlists_; }
    [[nodiscard]] ItemsPane& itemsPane() { return *items_; }
    [[nodiscard]] StatusStrip& statusStrip() { return *status_; }
    [[nodiscard]] PreferencesWindow& preferencesWindow(); ///< made when first asked for

    void bringToFront();
    void showPreferences();
    void showShortcuts();
    void showAbout();

Q_SIGNALS:
    void closed(); ///< the program is to end

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void makeCentre();
    void addCommands();
    void connectController();
    void restoreLooks();
    void storeLooks();
    void showRules(); ///< of the selected smartlist
    void showNewRules();
    void connectPreferences();
    void showTab(); ///< tiles or list, by the preference
    void showPlaylistsMenu(const QPoint& position, bool onPlaylist);
    void showItemsMenu(const QPoint& position, bool onItem);

    PlaylistController& controller_;
    CommandSet commandSet_;
    KeyMap keys_;
    Commands* commands_ = nullptr; ///< once the set is bound
    Condition *tilesShown_ = nullptr, *informationShown_ = nullptr;
    PlaylistsPane* playlists_ = nullptr;
    ItemsPane* items_ = nullptr;
    StatusStrip* status_ = nullptr;
    ProgressWindow* progress_ = nullptr;
    PreferencesWindow* preferencesWindow_ = nullptr;
    QSplitter* splitter_ = nullptr;
    bool closing_ = false;
};

} // namespace daylark
