#include "ui/desktop/DesktopPanels.h"
#include "ui/desktop/DesktopProgram.h"
#include "ui/desktop/EndInTime.h"
#include "ui/desktop/InterfaceWatchdog.h"
#include "ui/desktop/ProgramArguments.h"
#include "ui/library/LibraryWindow.h"
#include "ui/desktop/SingleInstance.h"
#include "ui/desktop/TerminationSignals.h"
#include "ui/common/Theme.h"

#include "app/PlaylistController.h"

#include <DaylarkVersion.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTimer>

#include <csignal>
#include <cstdio>

/// Builds the program, or hands its files to the one that runs already.
int main(int argc, char** argv) {
    using namespace daylark;
    constexpr unsigned secondsToEnd = 5;
    TerminationSignals::holdBack();
    std::signal(SIGXFSZ, SIG_IGN); // a limit on files is a write that failed, not the end
    QApplication application(argc, argv);
    // A pen draws through every point that it was at; by default quick moves are melted into one.
    QApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
    QApplication::setAttribute(Qt::AA_CompressTabletEvents, false);
    QApplication::setApplicationName(QStringLiteral("daylark"));
    QApplication::setApplicationDisplayName(QStringLiteral("Daylark"));
    QApplication::setApplicationVersion(QStringLiteral(DAYLARK_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("daylark"));
    QApplication::setQuitOnLastWindowClosed(
        false); // the library's closing ends the program, the viewer's does not

    QCommandLineParser arguments;
    arguments.setApplicationDescription(QStringLiteral("Review player for film dailies."));
    arguments.addHelpOption();
    arguments.addVersionOption();
    arguments.addPositionalArgument(QStringLiteral("files"),
                                    QStringLiteral("Movies, folders, a session or links to open."),
                                    QStringLiteral("[FILE...]"));
    arguments.process(application);
    const auto asked = ProgramArguments::read(arguments.positionalArguments(), QDir::current());
    for (const QString& failure : asked.failures)
        std::fprintf(stderr, "daylark: %s\n", qUtf8Printable(failure));
    if (asked.nothingLeft()) return 1;

    const DesktopProgram::Places places = DesktopProgram::Places::current();
    SingleInstance instance(places.system.applicationSupport, places.system.runtime);
    if (instance.handOver(asked.toOpen)) return 0;

    theme::apply(application);
    DesktopProgram program(places);
    QObject::connect(&instance, &SingleInstance::filesReceived, &program.controller(),
                     [&program](const QStringList& files) {
                         program.libraryWindow().bringToFront();
                         program.controller().openFiles(files);
                     });
    TerminationSignals ending;
    bool isToldToEnd = false; // nobody may be there to read an alert
    QObject::connect(&ending, &TerminationSignals::received, &application, [&isToldToEnd] {
        isToldToEnd = true;
        QCoreApplication::quit();
    });
    InterfaceWatchdog watchdog; // from here on the loop turns
    program.start(asked.toOpen);
    const int code = QApplication::exec();
    const QString trouble = program.terminate();
    if (trouble.isEmpty()) {
        const EndInTime limit(secondsToEnd, code);
        return code;
    }
    std::fprintf(stderr, "daylark: %s\n", qUtf8Printable(trouble));
    Alert alert;
    alert.message = QCoreApplication::translate("main", "Your last changes are not in their place");
    alert.informativeText = trouble;
    if (!isToldToEnd) DesktopAlerts().show(alert);
    const EndInTime limit(secondsToEnd, 1);
    return 1;
}
