#pragma once

#include "picture/scopes/ScopeChannel.h"

#include <QImage>

#include <array>

namespace daylark {

/// How many pixels have which level, by channel. A plain value.
struct Histogram {
    using Counts = std::array<quint32, scopeLevels>;
    Counts luma{}, red{}, green{}, blue{};

    /// The highest count of any channel between the ends: black and white would hide the rest where much is clipped.
    [[nodiscard]] quint32 highestInside() const;
};

/// Of a picture in 8 bit. Any thread.
[[nodiscard]] Histogram histogramOf(const QImage& picture);

} // namespace daylark
