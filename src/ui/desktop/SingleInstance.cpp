#include "ui/desktop/SingleInstance.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDir>
#include <QLocalSocket>
#include <QLockFile>
#include <QStandardPaths>

namespace daylark {

namespace {

constexpr int answerWithinMs = 2000;
constexpr int longestSocketPath = 100;      // the system's limit is 108 bytes
constexpr qint64 longestMessage = 16 << 20; // bytes; nothing longer is listened to
const QByteArray taken = QByteArrayLiteral("taken\n");
constexpr char activationToken[] = "XDG_ACTIVATION_TOKEN"; // a Wayland desktop's leave to come to the front

QString socketPathFor(const QString& scope) {
    const QByteArray hash =
        QCryptographicHash::hash(scope.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    const QString name = QStringLiteral("daylark-%1").arg(QString::fromLatin1(hash));
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    const QString path = runtime + QLatin1Char('/') + name;
    return runtime.isEmpty() || path.toLocal8Bit().size() > longestSocketPath
               ? QDir::tempPath() + QLatin1Char('/') + name
               : path;
}

} // namespace

SingleInstance::SingleInstance(const QString& scope, QObject* parent)
    : QObject(parent)
    , socketPath_(socketPathFor(scope))
    , lock_(std::make_unique<QLockFile>(socketPath_ + QStringLiteral(".lock"))) {
    lock_->setStaleLockTime(0); // only a dead holder makes it stale, however long it runs
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server_, &QLocalServer::newConnection, this, &SingleInstance::receive);
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::handOver(const QStringList& paths) {
    // Two started at once: one gets the lock and listens, the other finds it listening a moment later.
    for (int attempt = 0; attempt < 10; ++attempt) {
        if (send(paths)) return true;
        if (lock_->tryLock(200)) {
            QLocalServer::removeServer(socketPath_); // left behind by one that crashed
            server_.listen(socketPath_);
            return false;
        }
    }
    return false; // somebody holds the lock and does not answer: better two programs than none
}

bool SingleInstance::send(const QStringList& paths) {
    QLocalSocket socket;
    socket.connectToServer(socketPath_);
    if (!socket.waitForConnected(answerWithinMs)) return false;
    QByteArray message;
    QDataStream stream(&message, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    stream << paths << qgetenv(activationToken);
    socket.write(message);
    while (socket.bytesToWrite() > 0)
        if (!socket.waitForBytesWritten(answerWithinMs)) return false;
    QByteArray answer;
    while (answer.size() < taken.size() && socket.waitForReadyRead(answerWithinMs))
        answer += socket.readAll();
    return answer == taken;
}

void SingleInstance::receive() {
    while (QLocalSocket* socket = server_.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        const auto read = [this, socket] {
            if (socket->bytesAvailable() > longestMessage) {
                socket->abort();
                return;
            }
            QDataStream stream(socket);
            stream.setVersion(QDataStream::Qt_6_0);
            stream.startTransaction();
            QStringList paths;
            QByteArray token;
            stream >> paths >> token;
            if (!stream.commitTransaction()) return; // more is to come
            socket->write(taken);
            socket->flush();
            if (!token.isEmpty()) qputenv(activationToken, token); // the toolkit takes it there
            Q_EMIT filesReceived(paths);
        };
        connect(socket, &QLocalSocket::readyRead, this, read);
        if (socket->bytesAvailable() > 0) read();
    }
}

} // namespace daylark
