#pragma once

#include <QDataStream>
#include <QFile>
#include <QString>

namespace daylark {

/// Writes a WAVE file of 16 bits, two channels of the same samples: what `level` says for each of `count` positions.
template<class Level>
[[nodiscard]] bool writeWave(const QString& path, int rate, qint64 count, Level&& level) {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    const auto mark = [&out](const char* text) { out.writeRawData(text, 4); };
    mark("RIFF"), out << quint32(36 + 4 * count), mark("WAVE");
    mark("fmt "), out << quint32(16) << quint16(1) << quint16(2) << quint32(rate) << quint32(4 * rate) << quint16(4)
                      << quint16(16);
    mark("data"), out << quint32(4 * count);
    for (qint64 n = 0; n < count; ++n)
        out << qint16(level(n)) << qint16(level(n));
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace daylark
