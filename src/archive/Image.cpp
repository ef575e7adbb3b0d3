#include "archive/Image.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>

namespace daylark {

namespace {

constexpr qint64 kMaxPixels = 64LL * 1000 * 1000;
constexpr qsizetype kMaxBytes = qsizetype(256) << 20;
constexpr int kTiffLzw = 1; // the TIFF writer's name for LZW

/// The reader's name for what the bytes begin with; null for what is none of ours.
QByteArray formatOf(const QByteArray& bytes) {
    if (bytes.startsWith(QByteArrayView("II*\0", 4)) || bytes.startsWith(QByteArrayView("MM\0*", 4))) return "tiff";
    if (bytes.startsWith("\x89PNG\r\n\x1a\n")) return "png";
    return bytes.startsWith("\xff\xd8\xff") ? "jpeg" : QByteArray();
}

} // namespace

Image Image::named(const QString& name) {
    Image image;
    image.name_ = name;
    return image;
}

Image Image::fromEncoded(const QByteArray& encoded, QSize size, const QString& name) {
    Image image;
    image.name_ = name;
    image.encoded_ = encoded;
    image.size_ = size;
    return image;
}

Image Image::fromQImage(const QImage& image) {
    if (image.isNull()) return {};
    QByteArray encoded;
    QBuffer buffer(&encoded);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "tiff");
    writer.setCompression(kTiffLzw);
    // Neither the writer's own conversions nor a palette: 8 bits a channel is what every reader of TIFF
    // knows.
    const auto format = image.hasAlphaChannel() ? QImage::Format_RGBA8888 : QImage::Format_RGB888;
    if (!writer.write(image.convertToFormat(format))) return {};
    return fromEncoded(encoded, image.size());
}

QImage Image::decode() const {
    const QByteArray format = formatOf(encoded_);
    if (format.isNull() || encoded_.size() > kMaxBytes) return {};
    QBuffer buffer;
    buffer.setData(encoded_);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    reader.setDecideFormatFromContent(false);
    const QSize size = reader.size();
    if (size.isEmpty() || qint64(size.width()) * size.height() > kMaxPixels) return {};
    return reader.read();
}

} // namespace daylark
