#pragma once

#include "viewer/display/PixelReadOut.h"

#include <QWidget>

#include <optional>

class QPainter;

namespace daylark {

class PictureView;

/// The pixel read-out at a corner of the picture, where the pointer isn't: place, numbers as stored and as displayed, the
/// colour and its hue as swatches. It watches the pointer on the picture and tells the viewer's part; takes no events itself.
/// Owned by the picture view; interface thread.
class PixelPlate : public QWidget {
    Q_OBJECT
public:
    PixelPlate(PixelReadOut& pixels, PictureView& picture);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// Widths in points.
    struct Measures {
        int row = 0, heads = 0, number = 0;
    };
    [[nodiscard]] Measures measured(const PixelReadOut::Text& text) const;
    void follow(); ///< it is switched on or off
    void pointTo(const QPointF& at);
    void pointToCursor();
    void say(const PixelReadOut::Text& text);
    void place();
    void paintSwatches(QPainter& painter) const;
    void paintLine(QPainter& painter, const QString& head, const QStringList& numbers, int row, const QColor& colour) const;

    PixelReadOut& pixels_;
    PictureView& picture_;
    PixelReadOut::Text text_;
    Measures measures_;
    std::optional<QPointF> pointer_; ///< points of the picture view
};

} // namespace daylark
