#pragma once

#include "picture/PixelProbe.h"

#include <QObject>
#include <QPointF>
#include <QSize>
#include <QStringList>

#include <optional>

namespace daylark {

class Preferences;
class ViewerScene;

/// The numbers of the pixel under the pointer, of the picture that is shown: they follow the pointer, the frames of a run, view
/// and grade. Off unless the preference "displayPixelReadOut" is on; then each look touches a few samples of the frame's own
/// planes. Owned by the viewer's controller; interface thread.
class PixelReadOut : public QObject {
    Q_OBJECT
public:
    PixelReadOut(ViewerScene& scene, Preferences& preferences, QObject* parent = nullptr);

    [[nodiscard]] bool isOn() const;
    /// Where the pointer is on an area of so many pixels of the screen, from its upper left.
    void pointAt(QPointF at, QSize area);
    void pointNowhere(); ///< it has left the area
    [[nodiscard]] const std::optional<PixelValues>& values() const { return values_; } ///< none: it is on no picture

    /// What is read, a line each of channels and their numbers.
    struct Line {
        QString what; ///< for people
        QStringList numbers;
    };
    struct Text {
        QString place;         ///< "x 812  y 430"; empty where nothing is read
        QStringList channels;  ///< above the stored numbers
        Line stored, shown, codes;
    };
    [[nodiscard]] Text text() const;

Q_SIGNALS:
    void changed();

private:
    struct Pointer {
        QPointF at;
        QSize area;
    };
    void look();

    ViewerScene& scene_;
    Preferences& preferences_;
    std::optional<Pointer> pointer_;
    std::optional<PixelValues> values_;
};

} // namespace daylark
