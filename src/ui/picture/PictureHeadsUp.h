#pragma once

#include "ui/picture/PictureLayer.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

namespace daylark {

/// The read-outs over the picture: texts on darkened plates, so that they read on any picture. Each plate is
/// an image made once for its text and place, so that both renderers show the very same pixels and what stays
/// the same costs nothing. Owned by the picture view; interface thread.
class PictureHeadsUp {
public:
    /// An empty text is not shown.
    struct Texts {
        QString counter;     ///< upper left
        QString filename;    ///< upper right
        QString timecode;    ///< lower left
        QString overlayText; ///< at the foot, in `overlayColour`
        QColor overlayColour;
        QString message; ///< in the middle, in place of a picture
        bool operator==(const Texts&) const = default;
    };

    /// `size`: the area in points; `statistics`: lines below the counter; `words`: the font of what isn't a
    /// number.
    void setTexts(const Texts& texts, const QString& statistics, QSize size, const QFont& words);
    [[nodiscard]] std::vector<PictureLayer> layers(qreal pixelRatio);
    void paint(QPainter& painter, qreal pixelRatio); ///< `painter` paints in points

private:
    struct Plate {
        QString text;
        QRectF room; ///< what the text is aligned in, points
        int flags = 0;
        QFont font;
        QColor colour;
        bool shaded = true;
        bool operator==(const Plate&) const = default;
    };
    struct Image {
        Plate plate;
        qreal pixelRatio = 0;
        PictureLayer layer;
    };
    [[nodiscard]] static Image made(const Plate& plate, qreal pixelRatio);

    std::vector<Plate> plates_;
    std::vector<Image> images_;
};

} // namespace daylark
