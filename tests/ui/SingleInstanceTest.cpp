#include "ui/desktop/SingleInstance.h"

#include "support/PlayerBench.h"
#include "ui/desktop/HandOverMessage.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocalSocket>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>

namespace daylark {

using namespace Qt::StringLiterals;

TEST(SingleInstanceTest, SecondHandsItsFilesOverAndTheFirstTakesThem) {
    const QTemporaryDir scope, runtime;
    SingleInstance first(scope.path(), runtime.path());
    EXPECT_FALSE(first.handOver({}));
    ASSERT_TRUE(first.isFirst());
    QStringList received;
    QObject::connect(&first, &SingleInstance::filesReceived,
                     [&received](const QStringList& paths) { received = paths; });

    QStringList many; // more than one packet
    for (int number = 0; number < 5000; ++number)
        many << u"/dailies/day 1/shöt_%1.mov"_s.arg(number);
    std::atomic<bool> handedOver{false};
    std::unique_ptr<QThread> second(QThread::create([&] {
        SingleInstance later(scope.path(), runtime.path());
        handedOver = later.handOver(many);
    }));
    second->start();
    ASSERT_TRUE(bench::waitUntil([&second] { return second->isFinished(); }));
    EXPECT_TRUE(handedOver);
    EXPECT_TRUE(bench::waitUntil([&received] { return !received.isEmpty(); })) << "it answers before it takes them up";
    EXPECT_EQ(received, many);

    // Another user's data folder is another life.
    const QTemporaryDir otherScope;
    SingleInstance other(otherScope.path(), runtime.path());
    EXPECT_FALSE(other.handOver({}));
    EXPECT_TRUE(other.isFirst());
}

TEST(SingleInstanceTest, FirstAfterOneThatEndedListensAgain) {
    const QTemporaryDir scope, runtime;
    {
        SingleInstance first(scope.path(), runtime.path());
        ASSERT_FALSE(first.handOver({}));
    }
    SingleInstance next(scope.path(), runtime.path());
    EXPECT_FALSE(next.handOver({u"/a.mov"_s}));
    EXPECT_TRUE(next.isFirst());
}

/// One that is stopped gets the files once, and not at all when the later program has gone on without it meanwhile.
TEST(SingleInstanceTest, OneThatDoesNotAnswerOpensNothingLater) {
    const QTemporaryDir scope, runtime;
    SingleInstance first(scope.path(), runtime.path());
    ASSERT_FALSE(first.handOver({}));
    int received = 0;
    QObject::connect(&first, &SingleInstance::filesReceived, [&received] { ++received; });
    SingleInstance later(scope.path(), runtime.path());
    EXPECT_FALSE(later.handOver({u"/p.mov"_s})) << "the first one's loop stands still meanwhile";
    EXPECT_FALSE(later.isFirst());
    for (int turn = 0; turn < 20; ++turn)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_EQ(received, 0) << "the sender had gone on by itself";
}

/// Another program of the same user may say anything: counts that no memory holds, halves of messages, more than there is.
TEST(SingleInstanceTest, MessagesThatAreNoneOpenNothingAndTheNextOneIsHeard) {
    const HandOverMessage message{QByteArray(16, 'i'), {u"/a.mov"_s, QString(), u"/b\u00E9.mov"_s}, "token"};
    const QByteArray bytes = message.bytes();
    EXPECT_EQ(HandOverMessage::lengthOf(bytes), quint32(bytes.size()) - 4);
    EXPECT_EQ(HandOverMessage::read(bytes.mid(4)), message);
    EXPECT_FALSE(HandOverMessage::read(bytes.mid(4) + 'x'));
    for (qsizetype size = 0; size < bytes.size() - 4; ++size)
        EXPECT_FALSE(HandOverMessage::read(bytes.mid(4, size))) << size;
    const qsizetype count = 4 + 4 + 16;
    QByteArray manyPaths = bytes, longPath = bytes;
    manyPaths.replace(count, 4, QByteArray(4, '\xFF')); // four thousand million of them
    longPath.replace(count + 4, 4, QByteArray("\x7F\xFF\xFF\xF0", 4));

    const QTemporaryDir scope, runtime;
    SingleInstance first(scope.path(), runtime.path());
    ASSERT_FALSE(first.handOver({}));
    QStringList received;
    QObject::connect(&first, &SingleInstance::filesReceived, [&received](const QStringList& paths) { received += paths; });
    const QStringList places = QDir(runtime.path()).entryList({u"daylark-*"_s}, QDir::System | QDir::Files);
    const QString place = QDir(runtime.path()).filePath(places.filter(QRegularExpression(u"[^k]$"_s)).value(0));
    const auto say = [&place](const QByteArray& said) {
        QLocalSocket socket;
        socket.connectToServer(place);
        EXPECT_TRUE(socket.waitForConnected(1000));
        socket.write(said);
        return bench::waitUntil([&socket] { return socket.state() == QLocalSocket::UnconnectedState; });
    };
    EXPECT_TRUE(say(manyPaths + "go\n"));
    EXPECT_TRUE(say(longPath + "go\n"));
    EXPECT_TRUE(say(QByteArray("\xFF\xFF\xFF\xFF", 4)));
    EXPECT_TRUE(say(bytes + "no\n"));
    EXPECT_EQ(received, QStringList());
    QLocalSocket proper;
    proper.connectToServer(place);
    proper.write(bytes + "go\n");
    EXPECT_TRUE(bench::waitUntil([&] { return !received.isEmpty(); }));
    EXPECT_EQ(received, message.paths);
}

TEST(SingleInstanceTest, WithoutAFolderOfTheUsersOwnNothingIsHandedOver) {
    const QTemporaryDir scope, runtime;
    const QString tooLong = runtime.path() + u'/' + QString(100, u'd');
    for (const QString& folder : {QString(), tooLong}) {
        SingleInstance alone(scope.path(), folder);
        EXPECT_FALSE(alone.handOver({u"/a.mov"_s}));
        EXPECT_FALSE(alone.isFirst());
    }
    EXPECT_TRUE(QDir(QDir::tempPath()).entryList({u"daylark-*"_s}, QDir::System | QDir::Files).isEmpty());
}

} // namespace daylark
