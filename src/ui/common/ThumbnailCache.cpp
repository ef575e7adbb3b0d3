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
    const QPixmap pixmap = QPixmap::fromImage(std::move(decoded));
    keep(bytes, pixmap);
    return pixmap;
}

void ThumbnailCache::keep(const QByteArray& bytes, QPixmap pixmap) {
    const int cost = std::max(1, pixmap.width() * pixmap.height() * 4 / 1024);
    entries_.insert(bytes.constData(), std::make_unique<Entry>(Entry{bytes, std::move(pixmap)}).release(), cost);
}

void ThumbnailCache::sharpen(const Image& image, const QImage& larger) {
    if (!image.encoded().isEmpty()) keep(image.encoded(), QPixmap::fromImage(larger));
}

bool ThumbnailCache::isSharp(const Image& image, int width) const {
    const Entry* known = entries_.object(image.encoded().constData());
    return known && std::max(known->pixmap.width(), known->pixmap.height()) >= std::min(width, largestThumbnailSide);
}

} // namespace daylark
