#pragma once

#include "base/Result.h"

#include <QString>
#include <QStringList>

#include <OpenImageIO/imageio.h>

#include <optional>
#include <utility>
#include <vector>

namespace daylark::formats {

/// What of a file is shown: channels of one of its parts.
struct ChannelChoice {
    int part = 0;
    std::vector<int> channels; ///< one (grey) or three, by their numbers in the part
    bool isData = false;       ///< depth, identities and their like: no colour, to be brought between black and white
    bool isColour = true;      ///< else a single channel, shown as grey
    std::optional<std::pair<double, double>> range; ///< what is black and what is white
};

/// Every part's header, the first mip level's. At least one.
using Parts = std::vector<OIIO::ImageSpec>;

/// By name: "diffuse" (a layer with red, green and blue), "diffuse.R", "A", "left/Z" (of a part). A null name means the
/// colours: red, green and blue without a layer, else luminance, else what stands first.
[[nodiscard]] Result<ChannelChoice> channelsOf(const Parts& parts, const QString& layer);
/// All that `channelsOf` takes, layers first.
[[nodiscard]] QStringList layersOf(const Parts& parts);

} // namespace daylark::formats
