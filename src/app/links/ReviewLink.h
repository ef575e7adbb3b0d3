#pragma once

#include <QStringView>

namespace daylark {

/// Whether a text that the desktop hands over is a link and no path. Any thread.
[[nodiscard]] inline bool isReviewLink(QStringView text) {
    return text.startsWith(QLatin1String("daylark://"), Qt::CaseInsensitive);
}

} // namespace daylark
