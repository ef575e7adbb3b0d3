#pragma once

#include <QToolButton>

namespace daylark {

class ViewerRun;

/// Which layer or channel of a run of pictures is shown, and how it is played: opens the list of them. Hidden for movies.
/// Interface thread.
class LayerButton : public QToolButton {
    Q_OBJECT
public:
    LayerButton(ViewerRun& run, QWidget* parent);

private:
    void showLayers();
    void fillList();
    void askForRange();
    void askForRate();

    ViewerRun& run_;
};

} // namespace daylark
