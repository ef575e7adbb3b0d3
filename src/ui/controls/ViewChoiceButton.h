#pragma once

#include <QToolButton>

class QAction;

namespace daylark {

class ViewerColour;

/// By which display, or by which view of it, the picture on screen is shown: opens the list of them. Where the configuration
/// cannot be used, the display's says that the picture is raw, and why. Not wanted where nothing lies between the picture's
/// numbers and the screen. Interface thread.
class ViewChoiceButton : public QToolButton {
    Q_OBJECT
public:
    enum class Choice { display, view };
    /// `panel`: the command that shows everything else about colour.
    ViewChoiceButton(Choice choice, ViewerColour& colour, QAction* panel, QWidget* parent);

    [[nodiscard]] bool isWanted() const;

Q_SIGNALS:
    void wantedChanged();

private:
    void refresh();
    void fillList();

    Choice choice_;
    ViewerColour& colour_;
    QAction* panel_;
    bool wasWanted_ = false, wasRaw_ = false;
};

} // namespace daylark
