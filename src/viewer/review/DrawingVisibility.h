#pragma once

#include "preferences/PreferenceWords.h"

#include <QObject>
#include <QString>

namespace daylark {

class Preferences;
class Transport;
class ViewerPanels;

/// Whether drawings are shown, by the preference "displayDrawingsOptions", and what lies behind them. Owned
/// by the viewer's controller; interface thread.
class DrawingVisibility : public QObject {
    Q_OBJECT
public:
    DrawingVisibility(Preferences& preferences, Transport& transport, ViewerPanels& panels,
                      QObject* parent = nullptr);

    void toggleDisplayDrawings();                    ///< by "displayDrawingsOptions"
    [[nodiscard]] bool drawingsAreShown() const;     ///< the preference "displayDrawings"
    void setDrawingBackground(const QString& title); ///< "Black", "White"; any other shows the picture
    [[nodiscard]] QString drawingBackground() const; ///< the preference
    /// What is in force of it: a background lies behind drawings, and by itself only if it was chosen in this
    /// run.
    [[nodiscard]] DrawingBackground shownBackground(bool hasStrokes) const;

Q_SIGNALS:
    void changed();
    void viewerWanted(); ///< the viewer's window is to have the keyboard

private:
    Preferences& preferences_;
    Transport& transport_;
    ViewerPanels& panels_;
    bool backgroundChosen_ = false;
};

} // namespace daylark
