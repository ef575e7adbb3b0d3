#include "ui/desktop/HandOverMessage.h"

#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

namespace daylark {

namespace {

constexpr qsizetype leastBytesOfPath = 4; // its length
constexpr qsizetype identityBytes = 16;

} // namespace

QByteArray HandOverMessage::bytes() const {
    QByteArray message;
    QDataStream stream(&message, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    stream << quint32(0) << identity << quint32(paths.size());
    for (const QString& path : paths)
        stream << path;
    stream << activationToken;
    qToBigEndian(quint32(message.size() - lengthSize), message.data());
    return message;
}

quint32 HandOverMessage::lengthOf(QByteArrayView head) {
    return head.size() < lengthSize ? 0 : qFromBigEndian<quint32>(head.data());
}

// The library's own way of reading a list makes room for as many as the message says, up to some hundred gigabytes.
std::optional<HandOverMessage> HandOverMessage::read(const QByteArray& body) {
    QDataStream stream(body);
    stream.setVersion(QDataStream::Qt_6_0);
    HandOverMessage message;
    quint32 count = 0;
    stream >> message.identity >> count;
    if (stream.status() != QDataStream::Ok || message.identity.size() != identityBytes) return std::nullopt;
    if (qsizetype(count) > body.size() / leastBytesOfPath) return std::nullopt;
    for (; count > 0 && stream.status() == QDataStream::Ok; --count) {
        QString path;
        stream >> path;
        message.paths << path;
    }
    stream >> message.activationToken;
    if (stream.status() != QDataStream::Ok || !stream.atEnd()) return std::nullopt;
    return message;
}

} // namespace daylark
