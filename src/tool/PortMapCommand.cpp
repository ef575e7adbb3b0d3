#include "net/PortMapper.h"
#include "tool/ToolContext.h"

#include <CLI/CLI.hpp>

#include <QEventLoop>
#include <QJsonObject>
#include <QSocketNotifier>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <memory>
#include <sys/socket.h>
#include <unistd.h>

namespace daylark::tool {
namespace {

int ending[2] = {-1, -1}; // a handler of signals reaches nothing else

void endSoon(int) {
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(ending[0], &byte, 1);
}

struct PortMapArguments {
    int tcp = 0, udp = 0, seconds = -1;
};

/// Holds the port until the time is over or the program is ended, then gives it back.
void mapPort(ToolContext& context, const PortMapArguments& arguments) {
    const bool isTcp = arguments.tcp > 0;
    const auto protocol = isTcp ? PortProtocol::tcp : PortProtocol::udp;
    const auto port = quint16(isTcp ? arguments.tcp : arguments.udp);
    const QString name = isTcp ? QStringLiteral("TCP") : QStringLiteral("UDP");
    QEventLoop loop;
    QTimer time;
    time.setSingleShot(true);
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ending) != 0) return context.fail(name, qt_error_string());
    QSocketNotifier ended(ending[1], QSocketNotifier::Read);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        std::signal(signal, endSoon);
    PortMapper mapper;
    bool told = false;
    QObject::connect(&mapper, &PortMapper::mapped, &loop, [&](const PortMapping& mapping) {
        if (std::exchange(told, true)) {
            std::fprintf(stderr, "daylark-tool: %s: reached at %s:%d now\n", qUtf8Printable(name),
                         qUtf8Printable(mapping.publicAddress), mapping.publicPort);
            return;
        }
        context.print(QJsonDocument(QJsonObject{{QStringLiteral("publicAddress"), mapping.publicAddress},
                                                {QStringLiteral("publicPort"), mapping.publicPort},
                                                {QStringLiteral("protocol"), name},
                                                {QStringLiteral("lifetimeSeconds"), mapping.lifetimeSeconds}}));
        std::fflush(stdout); // whoever reads it doesn't wait for the end
        if (arguments.seconds >= 0) time.start(arguments.seconds * 1000);
    });
    const QString asked = QStringLiteral("%1 port %2").arg(name).arg(port);
    QObject::connect(&mapper, &PortMapper::lost, &loop, [&](const QString& reason) { context.fail(asked, reason); });
    QObject::connect(&mapper, &PortMapper::failed, &loop, [&](const QString& reason) {
        context.fail(asked, reason);
        loop.quit();
    });
    QObject::connect(&time, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&ended, &QSocketNotifier::activated, &loop, &QEventLoop::quit);
    mapper.request(protocol, port);
    loop.exec();
    mapper.release();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        std::signal(signal, SIG_DFL);
}

} // namespace

void addPortMapCommand(CLI::App& app, ToolContext& context) {
    const auto arguments = std::make_shared<PortMapArguments>();
    CLI::App* portmap = app.add_subcommand("portmap", "A public port of the local router, held until the program is ended");
    portmap->footer("Example: daylark-tool portmap --tcp 9000 --seconds 600");
    constexpr int lastPort = 65535, mostSeconds = 2'000'000;
    CLI::App* which = portmap->add_option_group("which", "the port of this machine");
    which->add_option("--tcp", arguments->tcp, "PORT for TCP")->check(CLI::Range(1, lastPort));
    which->add_option("--udp", arguments->udp, "PORT for UDP")->check(CLI::Range(1, lastPort));
    which->require_option(1);
    portmap->add_option("--seconds", arguments->seconds, "how long to hold it; default: until ended")
        ->check(CLI::Range(0, mostSeconds));
    portmap->callback([=, &context] { mapPort(context, *arguments); });
}

} // namespace daylark::tool
