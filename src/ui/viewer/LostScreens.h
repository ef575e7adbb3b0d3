#pragma once

#include <QObject>
#include <QTimer>

class QRect;

namespace daylark {

/// Brings the program's windows back when the screen that they stand on goes away: those that lie mostly off
/// all screens then, whole and onto the nearest; the viewer in full screen sees to itself. Owned by the
/// program; interface thread.
class LostScreens : public QObject {
    Q_OBJECT
public:
    explicit LostScreens(QObject* parent = nullptr);

    [[nodiscard]] static bool isLost(const QRect& frame); ///< less than half of it is on screens

private:
    static void bringBack();

    QTimer settled_; ///< the window manager has had its turn
};

} // namespace daylark
