#include "platform/NamedImages.h"

#include <QBuffer>
#include <QFile>
#include <QImageWriter>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>

/// The icons stand in a static library, which a linker drops unless somebody asks for them. Outside the
/// namespace, as the macro wants it.
static void initNamedImageResources() {
    Q_INIT_RESOURCE(icons);
}

namespace daylark {

namespace {

constexpr int archivedIconPixels = 32;
constexpr int largestIconPixels = 4096;

/// The icon's resource path; empty when there is none. Registers the icons at the first call.
QString namedImagePath(const QString& name) {
    static const bool registered = (initNamedImageResources(), true); // thread-safe by the language
    Q_UNUSED(registered)
    if (name.isEmpty() || name.contains(u'/')) return {};
    QString base = name;
    if (base.endsWith(QLatin1String(".png"))) base.chop(4);
    const QString path = QStringLiteral(":/icons/%1.svg").arg(base);
    return QFile::exists(path) ? path : QString();
}

} // namespace

bool hasNamedImage(const QString& name) {
    return !namedImagePath(name).isEmpty();
}

QImage namedImage(const QString& name, int pixels) {
    const QString path = namedImagePath(name);
    if (path.isEmpty() || pixels <= 0) return {};
    QSvgRenderer renderer(path);
    if (!renderer.isValid()) return {};
    const int side = std::min(pixels, largestIconPixels);
    const QSize own = renderer.defaultSize();
    const QSize size = own.isEmpty() ? QSize(side, side) : own.scaled(side, side, Qt::KeepAspectRatio);
    QImage image(std::max(1, size.width()), std::max(1, size.height()), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(image.rect()));
    return image;
}

QByteArray namedImageTiff(const QString& name) {
    const QImage image = namedImage(name, archivedIconPixels);
    if (image.isNull()) return {};
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, QByteArrayLiteral("tiff"));
    writer.setCompression(1); // LZW
    if (!writer.write(image.convertToFormat(QImage::Format_ARGB32))) return {};
    return bytes;
}

} // namespace daylark
