#pragma once

#include <QWidget>

class QColorDialog;
class QDoubleSpinBox;
class QHBoxLayout;
class QLayout;
class QSlider;
class QToolButton;

namespace daylark {

class Commands;
class MoviePlayerController;

/// The drawing tools: brush, eraser and hand, colour, width, opacity, what lies behind a drawing and when
/// drawings are shown, and what takes strokes away. It renders the drawing mode and sends actions. Interface
/// thread.
class DrawingPanel : public QWidget {
    Q_OBJECT
public:
    /// `commands` has "viewer.draw…".
    DrawingPanel(MoviePlayerController& controller, const Commands& commands, QWidget* parent = nullptr);

    [[nodiscard]] QToolButton* tool(const QString& title) const; ///< "Draw", "Erase", "Scroll"
    void closeColourDialog();

private:
    QToolButton* addTool(QHBoxLayout& row, const QString& title, const QString& icon, const QString& hint);
    QLayout* colours();
    void chooseColour();
    void showMode();

    MoviePlayerController& controller_;
    QToolButton *draw_, *erase_, *scroll_;
    QToolButton* well_ = nullptr;
    QSlider *width_, *opacity_;
    QDoubleSpinBox *widthNumber_, *opacityNumber_;
    QColorDialog* colourDialog_ = nullptr; ///< made when first wanted; beside the viewer, never in its way
};

} // namespace daylark
