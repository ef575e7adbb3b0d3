#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

namespace daylark {

/// An image as a record keeps it: nil, one of the program's named icons ("flag_Green.png"), or encoded bytes
/// (TIFF from archives and from us; whatever else a file held stays as it was). The bytes are never decoded
/// by the record and never encoded again: a session that is read and saved carries the same bytes. A plain
/// value, implicitly shared; any thread. Only TIFF, PNG and JPEG are ever decoded, told by the bytes: other readers
/// follow what a picture names, or run what it says.
class Image {
public:
    Image() = default;                                     ///< nil
    [[nodiscard]] static Image named(const QString& name); ///< an empty name is nil
    /// `encoded` in any format; `size` in points.
    [[nodiscard]] static Image fromEncoded(const QByteArray& encoded, QSize size, const QString& name = {});
    /// Encodes once, as TIFF (LZW). Call it on a worker for anything larger than a thumbnail.
    [[nodiscard]] static Image fromQImage(const QImage& image);

    [[nodiscard]] bool isNil() const { return name_.isEmpty() && encoded_.isEmpty(); }
    [[nodiscard]] const QString& name() const { return name_; } ///< empty when not a named icon
    [[nodiscard]] const QByteArray& encoded() const {
        return encoded_;
    }                                                  ///< empty for a named icon without bytes
    [[nodiscard]] QSize size() const { return size_; } ///< points; invalid when unknown
    /// Decodes the bytes (null when there are none or they are no such picture). Bounded: pictures beyond 64
    /// megapixels, or in more than 256 MiB, give null.
    [[nodiscard]] QImage decode() const;

    bool operator==(const Image& other) const { return name_ == other.name_ && encoded_ == other.encoded_; }

private:
    QString name_;
    QByteArray encoded_;
    QSize size_;
};

} // namespace daylark
