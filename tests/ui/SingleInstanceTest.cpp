#include "ui/desktop/SingleInstance.h"

#include "support/PlayerBench.h"

#include <QCoreApplication>
#include <QDir>
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
