#pragma once

#include <QString>

namespace daylark {

/// What lies between a picture's own numbers and a display, by the names of a colour configuration. A plain value; any thread.
struct DisplayTransform {
    QString inputSpace; ///< how the picture's numbers are to be read
    QString display, view;
    QString look;        ///< on top of the view's own; empty: none
    double exposure = 0; ///< stops of light, before the view; for looking only
    double gamma = 1;    ///< a power of 1 / gamma about middle grey, after the exposure; for looking only

    [[nodiscard]] bool isLookedAtAsItIs() const { return exposure == 0 && gamma == 1; }
    bool operator==(const DisplayTransform&) const = default;
};

} // namespace daylark
