#include "ui/desktop/SingleInstance.h"

#include "support/PlayerBench.h"

#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>

namespace daylark {

using namespace Qt::StringLiterals;

TEST(SingleInstanceTest, SecondHandsItsFilesOverAndTheFirstTakesThem) {
    const QTemporaryDir scope;
    SingleInstance first(scope.path());
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
        SingleInstance later(scope.path());
        handedOver = later.handOver(many);
    }));
    second->start();
    ASSERT_TRUE(bench::waitUntil([&second] { return second->isFinished(); }));
    EXPECT_TRUE(handedOver);
    EXPECT_EQ(received, many);

    // Another user's data folder is another life.
    const QTemporaryDir otherScope;
    SingleInstance other(otherScope.path());
    EXPECT_FALSE(other.handOver({}));
    EXPECT_TRUE(other.isFirst());
}

TEST(SingleInstanceTest, FirstAfterOneThatEndedListensAgain) {
    const QTemporaryDir scope;
    {
        SingleInstance first(scope.path());
        ASSERT_FALSE(first.handOver({}));
    }
    SingleInstance next(scope.path());
    EXPECT_FALSE(next.handOver({u"/a.mov"_s}));
    EXPECT_TRUE(next.isFirst());
}

} // namespace daylark
