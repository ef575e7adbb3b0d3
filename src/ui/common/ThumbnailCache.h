#pragma once

#include "archive/Image.h"

#include <QByteArray>
#include <QCache>
#include <QPixmap>

namespace daylark {

/// The thumbnails that were drawn last, decoded. Records keep encoded bytes only; a picture is decoded when
/// it is first drawn and dropped when the cache is full. Keyed by the bytes themselves, which an entry keeps
/// alive, so a key never means another picture. Owned by the window that draws; interface thread.
class ThumbnailCache {
public:
    explicit ThumbnailCache(int kilobytes = 96 * 1024)
        : entries_(kilobytes) {}

    /// The picture of an image; null when it is nil or no picture.
    [[nodiscard]] QPixmap pixmap(const Image& image);

    /// The same picture, larger: shown in its place until it is dropped.
    void sharpen(const Image& image, const QImage& larger);
    void forgetSharp() { entries_.clear(); } ///< larger ones are no more what is to be shown
    [[nodiscard]] bool isSharp(const Image& image, int width) const; ///< shown with so many pixels, or all that there are

private:
    struct Entry {
        QByteArray bytes;
        QPixmap pixmap;
    };
    void keep(const QByteArray& bytes, QPixmap pixmap);
    QCache<const char*, Entry> entries_;
};

} // namespace daylark
