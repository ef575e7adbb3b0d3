#include <gmock/gmock.h>

#include <QGuiApplication>

/// Every test program runs inside an application object without a display, so that images, fonts, timers and queued calls
/// work as they do in the real one.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleMock(&argc, argv);
    QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
