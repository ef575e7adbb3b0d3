#include "ui/common/Theme.h"

#include <gmock/gmock.h>

#include <QApplication>

/// Windows in a display of their own: none by default, a real one when the environment names a platform.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"); // no dialog on the desktop of whoever runs the tests
    ::testing::InitGoogleMock(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false); // as the program does
    QApplication::setQuitOnLastWindowClosed(false);
    daylark::theme::apply(application);
    return RUN_ALL_TESTS();
}
