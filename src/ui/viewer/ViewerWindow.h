#pragma once

#include "commands/CommandSet.h"
#include "commands/keys/KeyMap.h"
#include "commands/viewer/ViewerKeyboard.h"

#include <QMainWindow>

#include <memory>

class QMenu;

namespace daylark {

class BookmarkPanel;
class Commands;
class FloatingTimecode;
class FullScreen;
class MoviePlayerController;
class NotesPanel;
class PassingLine;
class GoToFrame;
class PictureView;
class PlaybackReadOut;
class PlaylistDrawer;
class PositionSlider;
class TransportBar;
class ViewerPanelHost;

/// The viewer's window: picture, position slider, controls strip, and the panels around them. It renders the
/// controller's state and sends its actions; it shows itself when the viewer opens and hides when it closes.
/// What was shown, where, and how large comes back at the next start. Owned by main; interface thread.
class ViewerWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit ViewerWindow(MoviePlayerController& controller, QWidget* parent = nullptr);
    ~ViewerWindow() override;

    [[nodiscard]] PictureView* picture() const { return picture_; }
    [[nodiscard]] PositionSlider* slider() const { return slider_; }
    [[nodiscard]] TransportBar* transportBar() const { return bar_; }
    [[nodiscard]] NotesPanel* notes() const { return notes_; }
    [[nodiscard]] BookmarkPanel* bookmarks() const { return bookmarks_; }
    [[nodiscard]] PlaylistDrawer* drawer() const { return drawer_; }
    [[nodiscard]] FullScreen* fullScreen() const { return fullScreen_; }
    [[nodiscard]] Commands& commands() { return *commands_; }

Q_SIGNALS:
    /// The movie on screen is to get another thumbnail, by a frame choice or "Set Thumbnail Image" (the
    /// picture shown).
    void thumbnailWanted(const QString& choice);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void addCommands();
    void buildLayout();
    void addPanels();
    void connectController();
    void connectPreferences();
    void connectInput();
    void addMenuBelow(const char* command, QMenu* below);
    [[nodiscard]] bool isOnBookmark();
    [[nodiscard]] bool isBookmarkSelected(); ///< or says so
    void editBookmarkText();
    void writeNotes();
    void leaveTextOrFullScreen();
    void bringForward();
    void showKeys();

    void windowOpened();
    void windowClosed();
    void saveArrangement();
    void restoreArrangement();

    void movieChanged(); ///< another movie, on its way or shown
    void showLoading(bool loading);
    void showName();     ///< in titles and for screen readers
    void showPosition(); ///< times, read-outs
    void showReadOuts();

    MoviePlayerController& controller_;
    CommandSet commandSet_;
    KeyMap keys_;
    ViewerKeyboard keyboard_;
    std::unique_ptr<Commands> commands_; ///< once the set is bound
    Condition* fullScreenShown_ = nullptr;
    ViewerPanelHost* panelHost_;
    PictureView* picture_;
    GoToFrame* goToFrame_;
    FullScreen* fullScreen_ = nullptr;
    FloatingTimecode* timecode_ = nullptr;
    PlaybackReadOut* readOut_ = nullptr;
    PassingLine* passing_ = nullptr;
    PositionSlider* slider_ = nullptr;
    TransportBar* bar_ = nullptr;
    NotesPanel* notes_;
    BookmarkPanel* bookmarks_ = nullptr;
    PlaylistDrawer* drawer_;
    bool loading_ = false, closing_ = false;
};

} // namespace daylark
