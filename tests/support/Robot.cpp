#include "support/Robot.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QTimer>
#include <QWidget>

#include <cstdio>

namespace daylark::demo {

void Robot::xdotool(const QStringList& arguments) {
    QProcess process;
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
    process.start(QStringLiteral("xdotool"), arguments);
    loop.exec();
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        std::fprintf(stderr, "xdotool %s failed\n", qUtf8Printable(arguments.join(QLatin1Char(' '))));
    rest(30);
}

void Robot::moveTo(QPoint global) {
    xdotool({QStringLiteral("mousemove"), QString::number(global.x()), QString::number(global.y())});
}

void Robot::click(QPoint global, int times) {
    moveTo(global);
    xdotool({QStringLiteral("click"), QStringLiteral("--repeat"), QString::number(times),
             QStringLiteral("--delay"), QStringLiteral("60"), QStringLiteral("1")});
}

void Robot::click(const QWidget* widget, int times) {
    click(middleOf(widget), times);
}

void Robot::press(QPoint global) {
    moveTo(global);
    xdotool({QStringLiteral("mousedown"), QStringLiteral("1")});
}

void Robot::release() {
    xdotool({QStringLiteral("mouseup"), QStringLiteral("1")});
}

void Robot::drag(QPoint from, QPoint to) {
    press(from);
    constexpr int steps = 12;
    for (int i = 1; i <= steps; ++i)
        moveTo(from + (to - from) * i / steps);
    rest(200);
    release();
}

void Robot::carry(QPoint from, QPoint to, const QString& held) {
    QStringList all;
    const auto pause = [&all](const char* seconds) { all << QStringLiteral("sleep") << QLatin1String(seconds); };
    const auto move = [&](QPoint point) {
        all << QStringLiteral("mousemove") << QString::number(point.x()) << QString::number(point.y());
        pause("0.04");
    };
    move(from);
    all << QStringLiteral("mousedown") << QStringLiteral("1");
    pause("0.1");
    constexpr int steps = 12;
    for (int i = 1; i <= steps; ++i) {
        move(from + (to - from) * i / steps);
        if (i == steps / 2 && !held.isEmpty()) all << QStringLiteral("keydown") << held;
    }
    pause("0.3");
    all << QStringLiteral("mouseup") << QStringLiteral("1");
    pause("0.3");
    if (!held.isEmpty()) all << QStringLiteral("keyup") << held;
    xdotool(all);
}

void Robot::key(const QString& name) {
    xdotool({QStringLiteral("key"), name});
}

void Robot::type(const QString& text) {
    xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("15"), text});
}

bool Robot::waitFor(const std::function<bool()>& done, int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
        if (timer.hasExpired(milliseconds)) return false;
        rest(20);
    }
    return true;
}

void Robot::rest(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

bool Robot::shot(const QString& path) {
    return QGuiApplication::primaryScreen()->grabWindow(0).save(path, "PNG");
}

QPoint Robot::middleOf(const QWidget* widget) {
    return widget->mapToGlobal(widget->rect().center());
}

} // namespace daylark::demo
