#pragma once

#include "platform/Sender.h"

#include <QColor>
#include <QObject>
#include <QString>

namespace daylark {

class Preferences;
template<class T>
class Preference;
class ViewerPanels;

/// What the pointer does over the picture ("draw", "scroll" or "off"), and with what: the three tools, their
/// width, opacity and colour. Owned by the viewer's controller; interface thread.
class DrawingTools : public QObject {
    Q_OBJECT
public:
    DrawingTools(Preferences& preferences, ViewerPanels& panels, QObject* parent = nullptr);

    void setInteractiveModeState(const QString& mode); ///< "draw", "scroll" or "off"; others: nothing
    [[nodiscard]] QString interactiveMode() const { return interactiveMode_; }
    [[nodiscard]] bool isDrawMode() const { return interactiveMode_ == QLatin1String("draw"); }
    [[nodiscard]] bool isScrollMode() const { return interactiveMode_ == QLatin1String("scroll"); }
    [[nodiscard]] bool brushToolButton() const { return brushOn_; }
    [[nodiscard]] bool eraserToolButton() const { return eraserOn_; }
    [[nodiscard]] bool scrollToolButton() const { return scrollOn_; }
    void
    chooseInteractiveTool(const Sender& sender); ///< "Draw", "Erase" or "Scroll"; flips that button first
    void toggleDrawingMode(); ///< the hotkey: brush, eraser, brush … while the panel is open
    [[nodiscard]] double currentWidth() const { return currentWidth_; }     ///< movie pixels
    [[nodiscard]] double currentOpacity() const { return currentOpacity_; } ///< 0 to 1
    void setToolWidth(double width);                                        ///< what the control was set to
    void setToolOpacity(double opacity);                                    ///< as above
    void resetBrush();                        ///< width and opacity of the brush, when the picture is fitted
    [[nodiscard]] QColor brushColour() const; ///< chosen in this run, else the preference's
    void setBrushColour(const QColor& colour);

Q_SIGNALS:
    void modeChanged();  ///< mode, buttons, width, opacity, colour
    void viewerWanted(); ///< the viewer's window is to have the keyboard

private:
    void drawingPanelToggled(bool visible, bool withAll);
    void takeTool(bool eraser);
    void setToolValue(double& value, double wanted, Preference<float>& ofTool);

    Preferences& preferences_;
    ViewerPanels& panels_;
    QString interactiveMode_ = QStringLiteral("off");
    bool wasScrollable_ = false,
         wasDrawable_ = false; ///< the mode left last when changing between "draw" and "scroll"
    bool brushOn_ = false, eraserOn_ = false, scrollOn_ = false;
    bool panelToggled_ = false; ///< the drawing panel came or went, others may follow
    double currentWidth_ = 0, currentOpacity_ = 1;
    QColor brushColour_;
};

} // namespace daylark
