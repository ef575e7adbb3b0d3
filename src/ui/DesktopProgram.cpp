#include "ui/DesktopProgram.h"

#include "app/PlaylistController.h"
#include "platform/UserDefaults.h"
#include "playback/DeviceSound.h"
#include "playback/PlaybackClock.h"
#include "playback/Player.h"
#include "ui/DesktopPanels.h"
#include "ui/LibraryWindow.h"
#include "ui/ViewerWindow.h"

#include <QApplication>

namespace daylark {

struct DesktopProgram::Objects {
    explicit Objects(const Places& places)
        : defaults(places.preferencesFile)
        , player(clock, nullptr, 0, &sound)
        , controller({defaults, alerts, panels, pasteboard, fileBrowser, places.system, player})
        , library(controller)
        , viewer(controller.playerWindow()) {}

    UserDefaults defaults;
    DesktopAlerts alerts;
    DesktopPanels panels;
    DesktopPasteboard pasteboard;
    DesktopFileBrowser fileBrowser;
    MonotonicClock clock;
    DeviceSound sound;
    Player player;
    PlaylistController controller;
    LibraryWindow library;
    ViewerWindow viewer;
};

DesktopProgram::Places DesktopProgram::Places::current() {
    return {UserDefaults::userFile(), SystemPlaces::current()};
}

DesktopProgram::DesktopProgram(const Places& places)
    : objects_(std::make_unique<Objects>(places)) {
    QObject::connect(&objects_->library, &LibraryWindow::closed, qApp, &QCoreApplication::quit);
}

DesktopProgram::~DesktopProgram() {
    terminate();
}

void DesktopProgram::start(const QStringList& paths) {
    objects_->library.show();
    objects_->controller.awake();
    objects_->controller.openFiles(paths);
}

void DesktopProgram::terminate() {
    if (std::exchange(terminated_, true)) return;
    if (objects_->viewer.isVisible())
        objects_->viewer.close(); // its open notes and the last frame belong to the session
    objects_->controller.applicationWillTerminate();
}

PlaylistController& DesktopProgram::controller() {
    return objects_->controller;
}

LibraryWindow& DesktopProgram::libraryWindow() {
    return objects_->library;
}

ViewerWindow& DesktopProgram::viewerWindow() {
    return objects_->viewer;
}

} // namespace daylark
