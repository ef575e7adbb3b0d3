#include "net/PortMapper.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QProcess>
#include <QSemaphore>
#include <QSignalSpy>
#include <QThread>

#include <gtest/gtest.h>

#include <functional>
#include <mutex>

namespace daylark {
namespace {

bool waitUntil(const std::function<bool()>& holds, int milliseconds = 15000) {
    const QDeadlineTimer deadline(milliseconds);
    while (!holds() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(2);
    }
    return holds();
}

/// What a test's router is like, and what became of it; any thread.
struct Desk {
    std::mutex mutex;
    QStringList said;
    bool there = true, refuses = false;
    quint16 publicPort = 0; ///< 0: the one asked for
    int lifetime = 3600;
    QString address = QStringLiteral("1.2.3.4");
    QSemaphore* holdsBack = nullptr; ///< answers once it can be had

    template<class Change>
    void change(Change change) {
        const std::lock_guard lock(mutex);
        change();
    }
    [[nodiscard]] qsizetype count(const char* what) {
        const std::lock_guard lock(mutex);
        return said.filter(QLatin1String(what)).size();
    }
};

class DeskRouter : public PortRouter {
public:
    explicit DeskRouter(Desk& desk)
        : desk_(desk) {}
    Result<PortMapping> map(const PortRequest& request, const CancelFlag&) const override {
        if (desk_.holdsBack) desk_.holdsBack->acquire();
        const std::lock_guard lock(desk_.mutex);
        desk_.said << QStringLiteral("ask %1").arg(request.wantedPublic);
        if (!desk_.there) return Error{QStringLiteral("silent")};
        if (desk_.refuses) return Error{QStringLiteral("refused")};
        const quint16 port = desk_.publicPort ? desk_.publicPort : request.wantedPublic ? request.wantedPublic : request.port;
        return PortMapping{request.protocol, request.port, desk_.address, port, desk_.lifetime};
    }
    void unmap(const PortMapping& mapping, const CancelFlag&) const override {
        desk_.change([&] { desk_.said << QStringLiteral("unmap %1").arg(mapping.publicPort); });
    }

private:
    Desk& desk_;
};

RouterFinder at(Desk& desk) {
    return [&desk](int, const CancelFlag&) -> Result<std::shared_ptr<const PortRouter>> {
        const std::lock_guard lock(desk.mutex);
        desk.said << QStringLiteral("find");
        if (!desk.there) return Error{QStringLiteral("nobody")};
        return std::shared_ptr<const PortRouter>(std::make_shared<DeskRouter>(desk));
    };
}

constexpr PortMapper::Timing quick{3600, 60, 400, 50};

TEST(PortMapper, TheFirstRouterThatAnswersIsAskedAndTheOtherOnlyWhereItRefuses) {
    Desk one, other;
    other.there = false;
    PortMapper mapper({3600, 20000, 4000, 50}, {at(one), at(other)});
    EXPECT_EQ(one.count("find") + other.count("find"), 0) << "nobody has asked yet";
    QSignalSpy mapped(&mapper, &PortMapper::mapped), failed(&mapper, &PortMapper::failed);
    mapper.request(PortProtocol::udp, 9000);
    ASSERT_TRUE(waitUntil([&] { return !mapped.isEmpty(); }));
    EXPECT_EQ(*mapper.mapping(), (PortMapping{PortProtocol::udp, 9000, QStringLiteral("1.2.3.4"), 9000, 3600}));
    EXPECT_EQ(one.count("ask"), 1);
    mapper.release();
    ASSERT_TRUE(waitUntil([&] { return one.count("unmap 9000") == 1; }));

    one.change([&] { one.refuses = true; });
    other.change([&] { other.there = true; });
    mapper.request(PortProtocol::udp, 9001);
    ASSERT_TRUE(waitUntil([&] { return mapped.size() == 2; }));
    other.change([&] { other.refuses = true; });
    mapper.request(PortProtocol::tcp, 9002);
    ASSERT_TRUE(waitUntil([&] { return failed.size() == 1; }));
    EXPECT_EQ(failed[0][0].toString(), QStringLiteral("refused"));
    EXPECT_FALSE(mapper.mapping());
    EXPECT_EQ(other.count("unmap 9001"), 1) << "what was asked for before was given back";
}

TEST(PortMapper, AMappingIsRenewedBeforeItEndsWhateverTheRouterPromises) {
    Desk desk;
    PortMapper mapper(quick, {at(desk)});
    QSignalSpy mapped(&mapper, &PortMapper::mapped);
    for (const int lifetime : {1, 3600, 2147483647, 0}) {
        desk.change([&] { desk.lifetime = lifetime; });
        mapper.request(PortProtocol::tcp, 9000);
        const auto before = desk.count("ask");
        EXPECT_TRUE(waitUntil([&] { return desk.count("ask") >= before + 3; })) << lifetime;
    }
    EXPECT_EQ(mapped.size(), 4) << "told once each, as nothing changed";
    // Another address or another port is another mapping.
    desk.change([&] { desk.address = QStringLiteral("5.6.7.8"); });
    ASSERT_TRUE(waitUntil([&] { return mapped.size() == 5; }));
    desk.change([&] { desk.publicPort = 50000; });
    ASSERT_TRUE(waitUntil([&] { return mapped.size() == 6; }));
    EXPECT_EQ(mapper.mapping()->publicPort, 50000);
}

TEST(PortMapper, ARouterThatGoesAndComesBackIsAskedForTheSamePortAgain) {
    Desk desk;
    desk.publicPort = 41000;
    PortMapper mapper(quick, {at(desk)});
    QSignalSpy mapped(&mapper, &PortMapper::mapped), lost(&mapper, &PortMapper::lost), failed(&mapper, &PortMapper::failed);
    mapper.request(PortProtocol::tcp, 9000);
    ASSERT_TRUE(waitUntil([&] { return mapped.size() == 1; }));
    desk.change([&] { desk.there = false; });
    ASSERT_TRUE(waitUntil([&] { return lost.size() == 1; }));
    EXPECT_FALSE(mapper.mapping());
    const auto looked = desk.count("find");
    ASSERT_TRUE(waitUntil([&] { return desk.count("find") > looked + 2; })) << "again and again";
    desk.change([&] {
        desk.there = true;
        desk.publicPort = 0;
    });
    ASSERT_TRUE(waitUntil([&] { return mapped.size() == 2; }));
    EXPECT_EQ(mapper.mapping()->publicPort, 41000);
    EXPECT_EQ(lost.size(), 1);
    EXPECT_TRUE(failed.isEmpty());
}

TEST(PortMapper, AnAnswerThatComesTooLateIsGivenBack) {
    Desk desk;
    QSemaphore answers;
    desk.holdsBack = &answers;
    {
        PortMapper mapper(quick, {at(desk)});
        QSignalSpy failed(&mapper, &PortMapper::failed), mapped(&mapper, &PortMapper::mapped);
        mapper.request(PortProtocol::tcp, 9000);
        ASSERT_TRUE(waitUntil([&] { return failed.size() == 1; })) << "after its limit, whatever still waits";
        EXPECT_FALSE(failed[0][0].toString().isEmpty());
        answers.release();
        ASSERT_TRUE(waitUntil([&] { return desk.count("unmap 9000") == 1; }));
        mapper.request(PortProtocol::tcp, 9100);
        ASSERT_TRUE(waitUntil([&] { return desk.count("find") == 2; }));
        answers.release();
        ASSERT_TRUE(waitUntil([&] { return mapped.size() == 1; }));
        answers.release(1000);
    }
    EXPECT_GE(desk.count("unmap 9100"), 1) << "the end gives it back, too";
}

/// Behind the router that router.sh lays.
class RealRouter : public ::testing::Test {
protected:
    void SetUp() override {
        script = qEnvironmentVariable("DAYLARK_ROUTER");
        if (script.isEmpty()) GTEST_SKIP() << "no router here: tests/net/router.sh runs this behind one";
        run({QStringLiteral("forget")});
    }
    void TearDown() override {
        if (!script.isEmpty()) run({QStringLiteral("off")});
    }
    QByteArray run(const QStringList& arguments) const {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(script, arguments);
        EXPECT_TRUE(process.waitForFinished(30000));
        EXPECT_EQ(process.exitCode(), 0) << arguments.join(u' ').toStdString();
        return process.readAllStandardOutput();
    }
    [[nodiscard]] bool forwards(int port) const {
        return run({QStringLiteral("rules")}).contains("dport " + QByteArray::number(port) + ' ');
    }
    /// TCP port 9000, asked for (or given back: no seconds) past the mapper, from this address.
    static void askRaw(const char* from, int seconds) {
        const QString code = QStringLiteral("import socket,struct\n"
                                            "s=socket.socket(socket.AF_INET,socket.SOCK_DGRAM)\n"
                                            "s.bind(('%1',0))\ns.settimeout(5)\n"
                                            "s.sendto(struct.pack('>BBHHHI',0,2,0,9000,%2,%3),('192.168.77.1',5351))\n"
                                            "s.recv(100)\n")
                                 .arg(QLatin1String(from))
                                 .arg(seconds ? 9000 : 0)
                                 .arg(seconds);
        EXPECT_EQ(QProcess::execute(QStringLiteral("python3"), {QStringLiteral("-c"), code}), 0);
    }
    void on(const QStringList& settings = {}) const { run(QStringList{QStringLiteral("on")} + settings); }
    static PortMapper::Timing timing() {
        PortMapper::Timing timing;
        timing.renewal = 700;
        timing.pause = 500;
        return timing;
    }
    static std::vector<RouterFinder> both() { return {findNatPmpRouter, findUpnpRouter}; }

    QString script;
};

TEST_F(RealRouter, GivesAPortByEitherProtocolAndTakesItBack) {
    struct Way {
        const char* setting;
        RouterFinder finder;
    };
    for (const Way& way : {Way{"enable_upnp=no", findNatPmpRouter}, Way{"enable_natpmp=no", findUpnpRouter}}) {
        SCOPED_TRACE(way.setting);
        run({QStringLiteral("forget")});
        on({QLatin1String(way.setting)});
        for (const auto& ways : {std::vector<RouterFinder>{way.finder}, both()})
            for (const PortProtocol protocol : {PortProtocol::tcp, PortProtocol::udp}) {
                PortMapper mapper(timing(), ways);
                QSignalSpy mapped(&mapper, &PortMapper::mapped), failed(&mapper, &PortMapper::failed);
                mapper.request(protocol, 9000);
                ASSERT_TRUE(waitUntil([&] { return !mapped.isEmpty() || !failed.isEmpty(); }));
                ASSERT_TRUE(mapper.mapping()) << failed[0][0].toString().toStdString();
                EXPECT_EQ(mapper.mapping()->publicAddress, QStringLiteral("11.22.33.44"));
                EXPECT_EQ(mapper.mapping()->publicPort, 9000);
                EXPECT_GT(mapper.mapping()->lifetimeSeconds, 0);
                EXPECT_TRUE(forwards(9000));
                mapper.release();
                EXPECT_TRUE(waitUntil([&] { return !forwards(9000); }));
            }
        run({QStringLiteral("off")});
    }
}

TEST_F(RealRouter, APortThatAnotherMachineHasBecomesAnother) {
    on();
    QProcess::execute(QStringLiteral("ip"), {QStringLiteral("addr"), QStringLiteral("add"), QStringLiteral("192.168.77.3/24"),
                                              QStringLiteral("dev"), QStringLiteral("lan")});
    askRaw("192.168.77.3", 600);
    ASSERT_TRUE(forwards(9000));
    for (const RouterFinder& way : both()) {
        PortMapper mapper(timing(), {way});
        QSignalSpy mapped(&mapper, &PortMapper::mapped), failed(&mapper, &PortMapper::failed);
        mapper.request(PortProtocol::tcp, 9000);
        ASSERT_TRUE(waitUntil([&] { return !mapped.isEmpty() || !failed.isEmpty(); }));
        ASSERT_TRUE(mapper.mapping()) << failed[0][0].toString().toStdString();
        EXPECT_NE(mapper.mapping()->publicPort, 9000);
        EXPECT_TRUE(forwards(mapper.mapping()->publicPort));
    }
}

TEST_F(RealRouter, WhatItTakesBackOrForgetsIsAskedForAnew) {
    on();
    PortMapper::Timing patient = timing();
    patient.renewal = 3000;
    PortMapper mapper(patient, both());
    QSignalSpy mapped(&mapper, &PortMapper::mapped), lost(&mapper, &PortMapper::lost);
    mapper.request(PortProtocol::tcp, 9000);
    ASSERT_TRUE(waitUntil([&] { return !mapped.isEmpty(); }));
    // It promised an hour.
    askRaw("192.168.77.2", 0);
    EXPECT_FALSE(forwards(9000));
    EXPECT_TRUE(waitUntil([&] { return forwards(9000); })) << "lies about the lease";
    // It goes, and comes back with nothing in mind.
    run({QStringLiteral("off")});
    ASSERT_TRUE(waitUntil([&] { return !lost.isEmpty(); }));
    EXPECT_FALSE(mapper.mapping());
    run({QStringLiteral("forget")});
    on();
    ASSERT_TRUE(waitUntil([&] { return mapper.mapping().has_value(); }));
    EXPECT_TRUE(forwards(mapper.mapping()->publicPort)) << run({QStringLiteral("rules")}).constData();
    EXPECT_EQ(mapper.mapping()->publicPort, 9000);
}

TEST_F(RealRouter, ShortLeasesAreKeptUp) {
    on({QStringLiteral("max_lifetime=120")});
    PortMapper::Timing asked = timing();
    asked.lifetimeSeconds = 2;
    PortMapper mapper(asked, {findNatPmpRouter});
    mapper.request(PortProtocol::udp, 9000);
    ASSERT_TRUE(waitUntil([&] { return mapper.mapping().has_value(); }));
    QElapsedTimer held;
    held.start();
    waitUntil([&] { return held.elapsed() > 5000; });
    EXPECT_TRUE(forwards(9000));
}

TEST_F(RealRouter, WithoutOneItIsSaidWithinFiveSeconds) {
    PortMapper mapper;
    QSignalSpy failed(&mapper, &PortMapper::failed);
    QElapsedTimer clock;
    clock.start();
    mapper.request(PortProtocol::tcp, 9000);
    ASSERT_TRUE(waitUntil([&] { return !failed.isEmpty(); }));
    EXPECT_LT(clock.elapsed(), 5000);
    EXPECT_FALSE(failed[0][0].toString().isEmpty());
}

} // namespace
} // namespace daylark
