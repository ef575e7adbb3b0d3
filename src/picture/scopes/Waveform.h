#pragma once

#include "picture/scopes/ScopeChannel.h"

#include <QImage>

#include <vector>

namespace daylark {

/// How often each level stands in each column of a picture. A plain value.
struct Waveform {
    int columns = 0;
    std::vector<quint32> counts; ///< level by level, `columns` each

    [[nodiscard]] quint32 at(int column, int level) const {
        return counts[size_t(level) * size_t(columns) + size_t(column)];
    }
};

/// Of a picture in 8 bit, brought into at most so many columns: narrower pictures have as many as they have. Empty without a
/// picture. Any thread.
[[nodiscard]] Waveform waveformOf(const QImage& picture, ScopeChannel channel, int columns);

} // namespace daylark
