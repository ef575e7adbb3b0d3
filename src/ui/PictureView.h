#pragma once

#include "media/VideoFrame.h"

#include <QColor>
#include <QImage>
#include <QString>
#include <QWidget>

namespace daylark {

/// The picture on pure black, as large as it fits, in its own aspect, pixel for pixel at the screen's
/// resolution, and the read-outs over it. Keeps the last picture until another is set or it is cleared.
/// Converts a picture once for each size, when it is painted. Owned by the viewer window; interface thread.
class PictureView : public QWidget {
    Q_OBJECT
public:
    /// The read-outs; an empty text is not shown.
    struct HeadsUp {
        QString counter;     ///< upper left
        QString filename;    ///< upper right
        QString timecode;    ///< lower left
        QString overlayText; ///< at the foot, in `overlayColour`
        QColor overlayColour;
        QString message; ///< in the middle, in place of a picture
        bool operator==(const HeadsUp&) const = default;
    };

    explicit PictureView(QWidget* parent = nullptr);

    void setFrame(const VideoFrame& frame);
    void clear();
    /// While pictures follow one another they are scaled quickly; the one that stays is made exactly.
    void setMoving(bool moving);
    void setHeadsUp(const HeadsUp& headsUp);
    [[nodiscard]] const HeadsUp& headsUp() const { return headsUp_; }
    [[nodiscard]] QRect
    pictureRect() const; ///< where the picture lies, in the widget's points; empty without one
    [[nodiscard]] QSize sizeHint() const override { return {1280, 720}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {320, 180}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QRect deviceRect() const; ///< the picture's place in device pixels
    void paintHeadsUp(QPainter& painter) const;

    VideoFrame frame_;
    bool moving_ = false;
    QImage image_; ///< `frame_` at its size on screen; null: to be made
    HeadsUp headsUp_;
};

} // namespace daylark
