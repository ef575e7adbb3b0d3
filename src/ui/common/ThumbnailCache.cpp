#include "ui/common/ThumbnailCache.h"

#include "platform/NamedImages.h"

#include <algorithm>
#include <memory>

namespace daylark {

namespace {
constexpr int largestThumbnailSide = 1024; // whatever a session brings along is drawn at most this large
}

QPixmap ThumbnailCache::pixmap(const Image& image) {
    const QByteArray& bytes = image.encoded();
    if (bytes.isEmpty())
        return image.name().isEmpty() ? QPixmap() : QPixmap::fromImage(namedImage(image.name(), 64));
    if (const Entry* known = entries_.object(bytes.constData())) return known->pixmap;
    QImage decoded = image.decode();
    if (std::max(decoded.width(), decoded.height()) > largestThumbnailSide)
        decoded = decoded.scaled(largestThumbnailSide, largestThumbnailSide, Qt::KeepAspectRatio,
                                 Qt::SmoothTransformation);
    auto entry = std::make_unique<Entry>(Entry{bytes, QPixmap::fromImage(std::move(decoded))});
    const QPixmap pixmap = entry->pixmap;
    const int cost = std::max(1, pixmap.width() * pixmap.height() * 4 / 1024);
    entries_.insert(bytes.constData(), entry.release(), cost);
    return pixmap;
}

} // namespace daylark
