#include "platform/desktop/ThumbnailStore.h"

#include "platform/AtomicFile.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QUrl>

#include <array>

namespace daylark {

namespace {

struct KeptSize {
    int side;
    const char* folder;
};
constexpr std::array<KeptSize, 3> keptSizes{{{256, "large"}, {512, "x-large"}, {1024, "xx-large"}}};

const QString uriKey = QStringLiteral("Thumb::URI"), modifiedKey = QStringLiteral("Thumb::MTime"),
              softwareKey = QStringLiteral("Software"), pictureKey = QStringLiteral("X-Daylark::Picture");

QByteArray addressOf(const QString& path) {
    return QUrl::fromLocalFile(path).toEncoded(QUrl::FullyEncoded);
}

QImage readAt(const QString& file, const thumbnailStore::Key& key, int side) {
    QImageReader reader(file, "png");
    const QSize size = reader.size();
    if (!size.isValid() || size.width() > side || size.height() > side) return {}; // no thumbnail of this size
    const QImage image = reader.read(); // with its texts; the reader's own takes the keys' colons for their ends
    const bool fits = image.text(uriKey).toLatin1() == addressOf(key.path) &&
                      image.text(modifiedKey) == QString::number(key.modified) && image.text(pictureKey) == key.picture;
    return fits ? image : QImage();
}

} // namespace

int thumbnailStore::sideFor(int width) {
    for (const KeptSize& size : keptSizes)
        if (width <= size.side) return size.side;
    return keptSizes.back().side;
}

QString thumbnailStore::fileOf(const QString& folder, const QString& path, int side) {
    const QByteArray name = QCryptographicHash::hash(addressOf(path), QCryptographicHash::Md5).toHex();
    for (const KeptSize& size : keptSizes)
        if (size.side == side)
            return QDir(folder).filePath(QLatin1String(size.folder) + u'/' + QString::fromLatin1(name) + QStringLiteral(".png"));
    return {};
}

QImage thumbnailStore::read(const QString& folder, const Key& key, int side) {
    for (const KeptSize& size : keptSizes) {
        if (size.side < side) continue;
        const QImage found = readAt(fileOf(folder, key.path, size.side), key, size.side);
        if (!found.isNull()) return found;
    }
    return {};
}

Result<void> thumbnailStore::write(const QString& folder, const Key& key, int side, const QImage& picture) {
    QImage told = picture;
    told.setText(uriKey, QString::fromLatin1(addressOf(key.path)));
    told.setText(modifiedKey, QString::number(key.modified));
    told.setText(softwareKey, QStringLiteral("Daylark"));
    told.setText(pictureKey, key.picture);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "png");
    if (!writer.write(told)) return Error{writer.errorString()};
    const QString file = fileOf(folder, key.path, side);
    if (!makePrivateFolder(QFileInfo(file).path())) return Error{QStringLiteral("no folder for thumbnails")};
    return writeFileAtomically(file, bytes, Readers::owner);
}

} // namespace daylark
