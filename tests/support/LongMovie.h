#pragma once

#include "support/BarCode.h"
#include "support/TimecodeMovie.h"

#include <QFile>
#include <QImage>
#include <QPainter>

#include <algorithm>

namespace daylark::test {

/// A QuickTime movie of hours, written without an encoder: raw pictures of 24 x 8 pixels, one bar code cell a
/// pixel. The bar code counts from 1 and starts again after 65535.
struct LongMovie {
    static constexpr int width = 24, height = 8, pictureBytes = width * height * 3, codes = 65536;

    qint64 frames = 0;
    quint32 timeScale = 24, step = 1; ///< ticks a second, and of one frame

    [[nodiscard]] static int codeOf(qint64 frame) { return int(frame % codes); }

    [[nodiscard]] bool write(const QString& path) const {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) return false;
        const QByteArray start = TimecodeMovie::box("ftyp", "qt  " + u(512) + "qt  ");
        const qint64 mediaBytes = frames * pictureBytes;
        file.write(start + u(quint32(mediaBytes + 8)) + "mdat");
        const QByteArray& all = pictures();
        const QByteArray first =
            all.sliced(pictureBytes) + all.first(pictureBytes); // codes 1, 2, ... 65535, 0
        for (qint64 written = 0; written < mediaBytes;)
            written += file.write(first.constData(), std::min<qint64>(first.size(), mediaBytes - written));
        file.write(header(quint32(start.size()) + 8));
        return file.flush();
    }

private:
    static QByteArray u(quint32 number) { return TimecodeMovie::bytes(number); }
    static QByteArray s(int number) { return TimecodeMovie::bytes(quint16(number)); }

    static const QByteArray& pictures() {
        static const QByteArray all = [] {
            QByteArray made;
            made.reserve(qsizetype(codes) * pictureBytes);
            for (int code = 0; code < codes; ++code) {
                QImage picture(width, height, QImage::Format_RGB888);
                picture.fill(Qt::darkGray);
                QPainter painter(&picture);
                drawBarCode(painter, picture.size(), code);
                painter.end();
                made.append(reinterpret_cast<const char*>(picture.constBits()), pictureBytes);
            }
            return made;
        }();
        return all;
    }

    [[nodiscard]] QByteArray header(quint32 place) const {
        const auto box = &TimecodeMovie::box;
        const auto duration = quint32(frames) * step;
        const QByteArray matrix =
            u(0x10000) + QByteArray(12, 0) + u(0x10000) + QByteArray(12, 0) + u(0x40000000);
        const QByteArray picture = QByteArray(6, 0) + s(1) + QByteArray(16, 0) + s(width) + s(height) +
                                   u(0x480000) + u(0x480000) + u(0) + s(1) + QByteArray(32, 0) + s(24) +
                                   s(0xFFFF);
        const QByteArray tables = box("stsd", u(0) + u(1) + box("raw ", picture)) +
                                  box("stts", u(0) + u(1) + u(quint32(frames)) + u(step)) +
                                  box("stsc", u(0) + u(1) + u(1) + u(quint32(frames)) + u(1)) +
                                  box("stsz", u(0) + u(pictureBytes) + u(quint32(frames))) +
                                  box("stco", u(0) + u(1) + u(place));
        const QByteArray media = box("mdhd", QByteArray(12, 0) + u(timeScale) + u(duration) + u(0)) +
                                 box("hdlr", u(0) + "mhlrvide" + QByteArray(13, 0)) +
                                 box("minf", box("vmhd", u(1) + QByteArray(8, 0)) + box("stbl", tables));
        const QByteArray track =
            box("tkhd", u(7) + QByteArray(8, 0) + u(1) + u(0) + u(duration) + QByteArray(16, 0) + matrix +
                            u(width << 16) + u(height << 16)) +
            box("mdia", media);
        const QByteArray movie = QByteArray(12, 0) + u(timeScale) + u(duration) + u(0x10000) + s(0x100) +
                                 QByteArray(10, 0) + matrix + QByteArray(24, 0) + u(2);
        return box("moov", box("mvhd", movie) + box("trak", track));
    }
};

} // namespace daylark::test
