#pragma once

#include "picture/scene/PictureLayer.h"
#include "picture/scene/ReadOuts.h"

#include <QRectF>

#include <vector>

class QPainter;

namespace daylark {

/// The read-outs over the picture: texts on darkened plates, so that they read on any picture. Each plate is
/// an image made once for its text and place, so that both renderers show the very same pixels and what stays
/// the same costs nothing. Owned by whoever paints a scene again and again; one thread at a time.
class ReadOutPlates {
public:
    void setTexts(const ReadOuts& readOuts, QSize size); ///< `size`: the area in points
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
