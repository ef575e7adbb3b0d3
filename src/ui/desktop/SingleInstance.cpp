#include "ui/desktop/SingleInstance.h"

#include "ui/desktop/HandOverMessage.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFile>
#include <QLocalSocket>
#include <QLockFile>
#include <QThread>
#include <QUuid>

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

namespace daylark {

namespace {

constexpr int answerWithinMs = 2000;
constexpr int longestSocketPath = 100;      // the system's limit is 108 bytes
constexpr size_t mostKnown = 64;
const QByteArray taken = QByteArrayLiteral("taken\n"), goAhead = QByteArrayLiteral("go\n");
constexpr char activationToken[] = "XDG_ACTIVATION_TOKEN"; // a Wayland desktop's leave to come to the front
constexpr char identityProperty[] = "message", pathsProperty[] = "paths", tokenProperty[] = "token";

/// Empty where no socket can stand.
QString socketPathFor(const QString& scope, const QString& runtimeFolder) {
    if (runtimeFolder.isEmpty()) return {};
    const QByteArray hash =
        QCryptographicHash::hash(scope.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    const QString path = runtimeFolder + QStringLiteral("/daylark-%1").arg(QString::fromLatin1(hash));
    return QFile::encodeName(path).size() > longestSocketPath ? QString() : path;
}

/// The kernel says who is at the other end.
bool isOurUser(const QLocalSocket& socket) {
#ifdef SO_PEERCRED
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(int(socket.socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::getuid();
#else
    Q_UNUSED(socket);
    return true; // the folder lets nobody else in
#endif
}

} // namespace

SingleInstance::SingleInstance(const QString& scope, const QString& runtimeFolder, QObject* parent)
    : QObject(parent)
    , socketPath_(socketPathFor(scope, runtimeFolder))
    , lock_(std::make_unique<QLockFile>(socketPath_ + QStringLiteral(".lock"))) {
    lock_->setStaleLockTime(0); // only a dead holder makes it stale, however long it runs
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server_, &QLocalServer::newConnection, this, &SingleInstance::receive);
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::handOver(const QStringList& paths) {
    if (socketPath_.isEmpty()) return false;
    // Two started at once: one gets the lock and listens, the other finds it listening a moment later.
    const QDeadlineTimer end(answerWithinMs);
    do {
        const Answer answer = send(paths);
        if (answer != Answer::nobodyThere) return answer == Answer::taken;
        if (lock_->tryLock(0)) {
            QLocalServer::removeServer(socketPath_); // left behind by one that crashed
            server_.listen(socketPath_);
            return false;
        }
        QThread::msleep(20);
    } while (!end.hasExpired());
    return false; // somebody holds the lock and does not answer: better two programs than none
}

SingleInstance::Answer SingleInstance::send(const QStringList& paths) {
    const QDeadlineTimer end(answerWithinMs);
    const auto left = [&end] { return int(std::max<qint64>(1, end.remainingTime())); };
    QLocalSocket socket;
    socket.connectToServer(socketPath_);
    if (!socket.waitForConnected(left())) return Answer::nobodyThere;
    if (!isOurUser(socket)) return Answer::none;
    const HandOverMessage message{QUuid::createUuid().toRfc4122(), paths, qgetenv(activationToken)};
    socket.write(message.bytes());
    while (socket.bytesToWrite() > 0)
        if (!socket.waitForBytesWritten(left()) || end.hasExpired()) return Answer::none;
    QByteArray answer;
    while (answer.size() < taken.size() && !end.hasExpired() && socket.waitForReadyRead(left()))
        answer += socket.readAll();
    if (answer != taken) return Answer::none;
    socket.write(goAhead);
    socket.waitForBytesWritten(left());
    return Answer::taken;
}

void SingleInstance::receive() {
    while (QLocalSocket* socket = server_.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        if (!isOurUser(*socket)) {
            socket->abort();
            continue;
        }
        const auto read = [this, socket] { take(*socket); };
        connect(socket, &QLocalSocket::readyRead, this, read);
        if (socket->bytesAvailable() > 0) read();
    }
}

/// First the message, which is answered; then the sender's word that it has heard so.
void SingleInstance::take(QLocalSocket& socket) {
    if (!socket.property(identityProperty).isValid()) {
        constexpr qsizetype head = HandOverMessage::lengthSize;
        if (socket.bytesAvailable() < head) return; // more is to come
        const quint32 length = HandOverMessage::lengthOf(socket.peek(head));
        if (length > HandOverMessage::longest) return socket.abort();
        if (socket.bytesAvailable() < head + qint64(length)) return;
        const auto message = HandOverMessage::read(socket.read(head + qint64(length)).mid(head));
        if (!message) return socket.abort();
        socket.setProperty(identityProperty, message->identity);
        socket.setProperty(pathsProperty, message->paths);
        socket.setProperty(tokenProperty, message->activationToken);
        socket.write(taken);
        socket.flush();
    }
    if (socket.bytesAvailable() < goAhead.size()) return;
    const QByteArray identity = socket.property(identityProperty).toByteArray();
    if (socket.read(goAhead.size()) != goAhead || std::find(known_.begin(), known_.end(), identity) != known_.end())
        return socket.abort();
    known_.push_back(identity);
    if (known_.size() > mostKnown) known_.pop_front();
    if (const QByteArray token = socket.property(tokenProperty).toByteArray(); !token.isEmpty())
        qputenv(activationToken, token); // the toolkit takes it there
    Q_EMIT filesReceived(socket.property(pathsProperty).toStringList());
}

} // namespace daylark
