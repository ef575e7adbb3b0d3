#pragma once

#include <QDockWidget>

namespace daylark {

class PanelTitle;

/// The window of one panel: a tool window that stays above the viewer and goes and comes with it, shown
/// without taking the keyboard. A person may dock it at the viewer's sides where `allowedAreas` lets them.
/// Its close box asks (`closeWanted`) and leaves the hiding to whoever keeps what is open. A click on it that
/// lands in nothing that is typed into hands the keyboard back (`keyboardUnused`). Owned by the viewer's
/// window; interface thread.
class ToolPanel : public QDockWidget {
    Q_OBJECT
public:
    ToolPanel(const QString& title, QWidget* content, QWidget* viewer);

    void setTitle(const QString& title); ///< of the window and of the title line
    /// What its tab says beside those of other docked panels, where the title would be cut.
    void setTabWord(const QString& word);
    /// Whether the widget that has the focus in here is one that keys are meant for.
    [[nodiscard]] bool usesKeyboard() const;

    /// The mouse was pressed on this widget in here: the focus that the window gets with it stays only where
    /// keys are meant for the widget.
    void pressedOn(const QWidget* widget) { pressedElsewhere_ = !takesKeys(widget); }
    /// The viewer has the keyboard (again): nothing in here is typed into any more.
    void forgetFocus();
    /// Text, numbers and lists, or the inside of one.
    [[nodiscard]] static bool takesKeys(const QWidget* widget);

Q_SIGNALS:
    void closeWanted();
    void keyboardUnused();

protected:
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void lookAtKeyboard();
    void nameWindow();

    PanelTitle* title_;
    QString tabWord_;
    bool pressedElsewhere_ = false;
};

} // namespace daylark
