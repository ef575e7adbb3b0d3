#include "playback/sound/DeviceSound.h"
#include "playback/run/Player.h"

#include "support/PlayerBench.h"

#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace daylark {
namespace {

using bench::waitUntil;

/// A sound server of the test's own, with two outputs that play to nobody and can be listened to.
class PulseSoundTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* program : {"pulseaudio", "parec", "pactl"})
            if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty())
                GTEST_SKIP() << "no " << program;
        for (const char* name : {"PULSE_SERVER", "PULSE_CLIENTCONFIG", "XDG_RUNTIME_DIR", "HOME"})
            before.push_back({name, qgetenv(name)});
        QFile config(folder.filePath(u"client.conf"_qs));
        ASSERT_TRUE(config.open(QIODevice::WriteOnly) && config.write("autospawn = no\n") > 0);
        config.close();
        qputenv("PULSE_SERVER", "unix:" + socket().toLocal8Bit());
        qputenv("PULSE_CLIENTCONFIG", config.fileName().toLocal8Bit());
        qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
        qputenv("HOME", folder.path().toLocal8Bit());
    }
    void TearDown() override {
        stopServer();
        for (const auto& [name, value] : before)
            value.isNull() ? qunsetenv(name) : qputenv(name, value);
    }
    QString socket() const { return folder.filePath(u"native"_qs); }

    [[nodiscard]] bool startServer() {
        QFile::remove(socket());
        server = std::make_unique<QProcess>();
        server->setStandardOutputFile(QProcess::nullDevice());
        server->setStandardErrorFile(QProcess::nullDevice());
        server->start(u"pulseaudio"_qs,
                      {u"-n"_qs, u"--daemonize=no"_qs, u"--use-pid-file=no"_qs, u"--exit-idle-time=-1"_qs,
                       u"-L"_qs, u"module-null-sink sink_name=one"_qs, u"-L"_qs,
                       u"module-null-sink sink_name=two"_qs, u"-L"_qs,
                       u"module-native-protocol-unix auth-anonymous=1 socket="_qs + socket()});
        return server->waitForStarted() && waitUntil([this] {
                   return server->state() == QProcess::NotRunning || control({u"info"_qs});
               }) &&
               server->state() == QProcess::Running;
    }
    void stopServer() {
        stopListening();
        if (!server) return;
        server->kill();
        server->waitForFinished();
        server.reset();
    }
    [[nodiscard]] static bool control(const QStringList& command) {
        QProcess process;
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(u"pactl"_qs, command);
        return process.waitForFinished() && process.exitCode() == 0;
    }
    /// From now on what this output plays is listened to.
    void listen(const QString& output) {
        stopListening();
        loud = 0;
        listener = std::make_unique<QProcess>();
        QObject::connect(listener.get(), &QProcess::readyReadStandardOutput, [this, heard = listener.get()] {
            const QByteArray bytes = heard->readAllStandardOutput();
            for (qsizetype at = 0; at + 4 <= bytes.size(); at += 4) {
                float value = 0;
                std::memcpy(&value, bytes.constData() + at, 4);
                loud += std::abs(value) > 0.15f;
            }
        });
        listener->start(u"parec"_qs,
                        {u"--device="_qs + output + u".monitor"_qs, u"--format=float32le"_qs,
                         u"--rate=48000"_qs, u"--channels=1"_qs, u"--latency-msec=5"_qs, u"--raw"_qs});
        EXPECT_TRUE(listener->waitForStarted());
    }
    void stopListening() {
        if (!listener) return;
        listener->disconnect();
        listener->kill();
        listener->waitForFinished();
        listener.reset();
    }
    [[nodiscard]] bool hearsBeep() {
        return waitUntil([this] { return loud > 1000; });
    }

    QTemporaryDir folder;
    std::vector<std::pair<const char*, QByteArray>> before;
    std::unique_ptr<QProcess> server, listener;
    qint64 loud = 0; ///< samples
};

TEST_F(PulseSoundTest, SoundComesBackWithTheServerAndFollowsItsOutputsWhileThePicturePlaysOn) {
    MovieSpec spec;
    spec.path = folder.filePath(u"movie.mov"_qs);
    spec.size = QSize(128, 96);
    spec.frames = 96;
    spec.sound = true;
    ASSERT_TRUE(makeMovie(spec));
    DeviceSound sound;
    MonotonicClock clock;
    Player player(clock, nullptr, 0, &sound);
    player.setVolume(1);
    player.setLoops(true);
    qint64 shown = 0;
    QObject::connect(&player, &Player::frameShown, [&] { ++shown; });
    const auto picturesGoOn = [&] {
        const qint64 from = shown;
        return waitUntil([&] { return shown > from + 12; });
    };
    QSignalSpy opened(&player, &Player::opened);
    player.open(spec.path);
    ASSERT_TRUE(waitUntil([&] { return opened.count() == 1; }));
    player.setRate(1);
    EXPECT_TRUE(picturesGoOn()) << "without a server";

    ASSERT_TRUE(startServer());
    listen(u"one"_qs);
    EXPECT_TRUE(hearsBeep()) << "the server has come";
    EXPECT_TRUE(sound.position());
    stopServer();
    EXPECT_TRUE(waitUntil([&] { return !sound.position(); }));
    EXPECT_TRUE(picturesGoOn());
    ASSERT_TRUE(startServer());
    listen(u"one"_qs);
    EXPECT_TRUE(hearsBeep()) << "it has come back";

    listen(u"two"_qs);
    ASSERT_TRUE(control({u"set-default-sink"_qs, u"two"_qs}));
    EXPECT_TRUE(hearsBeep()) << "another output is preferred";
    listen(u"one"_qs);
    ASSERT_TRUE(control({u"unload-module"_qs, u"1"_qs})); // the modules are counted in their order
    EXPECT_TRUE(hearsBeep()) << "the output is unplugged";
    stopListening();
    ASSERT_TRUE(control({u"unload-module"_qs, u"0"_qs})); // and the last one
    EXPECT_TRUE(waitUntil([&] { return !sound.position(); }));
    EXPECT_TRUE(picturesGoOn());
    ASSERT_TRUE(control({u"load-module"_qs, u"module-null-sink"_qs, u"sink_name=three"_qs}));
    listen(u"three"_qs);
    EXPECT_TRUE(hearsBeep()) << "an output has been plugged in";
    EXPECT_EQ(player.rate(), 1.0f);
}

} // namespace
} // namespace daylark
