#pragma once

#include "media/decode/VideoFrame.h"
#include "model/ColourTransform.h"
#include "picture/colour/DisplayProcessor.h"

#include <QPoint>
#include <QString>

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace daylark {

/// One pixel of a picture in numbers: as they are stored, and as they come to a display. A plain value.
struct PixelValues {
    struct Number {
        QString channel; ///< "R", "Cb", or as the file calls it: "diffuse.R"
        double value = 0;
    };
    QPoint place;  ///< pixels of the upright picture, from its upper left; unstretched where they are not square
    std::vector<Number> stored;
    bool isCode = true; ///< `stored` are code values of `depth` bits; else halves or floats
    int depth = 8;
    std::array<double, 3> shown{}; ///< red, green, blue after view and grade, 0 to 1

    [[nodiscard]] std::array<int, 3> shownCodes() const; ///< 0 to 255
    /// Degrees of the colour wheel; none for greys.
    [[nodiscard]] std::optional<double> hue() const;
};

/// What a picture's numbers go through on their way to the display.
struct PixelLook {
    std::shared_ptr<const DisplayProcessor> display; ///< null: they are a display's already
    ColourTransform colour;
};

/// The upright picture's size in its own pixels: turned as the file asks, not stretched.
[[nodiscard]] QSize uprightSize(const VideoFrame& frame);

/// The pixel at `place` of the upright picture. Touches a few lines around it and no more, however the picture is stored, and
/// gives what the renderer makes of it at its own size. None outside of the picture. Any thread.
[[nodiscard]] std::optional<PixelValues> pixelAt(const VideoFrame& frame, QPoint place, const PixelLook& look);

} // namespace daylark
