#include "ui/desktop/DesktopProgram.h"

#include "app/PlaylistController.h"
#include "media/index/SampleTables.h"
#include "picture/PictureRenderer.h"
#include "playback/run/PlaybackClock.h"
#include "playback/run/Player.h"
#include "playback/sound/DeviceSound.h"
#include "preferences/Preferences.h"
#include "ui/desktop/DesktopBus.h"
#include "ui/desktop/DesktopPanels.h"
#include "ui/desktop/Translations.h"
#include "ui/library/LibraryWindow.h"
#include "ui/viewer/LostScreens.h"
#include "ui/viewer/PlaylistDrawer.h"
#include "ui/viewer/ViewerWindow.h"

#include <QApplication>

#include <algorithm>

namespace daylark {

namespace {

/// A change is there from the next start on: menus and keys are made of texts once.
struct Language {
    explicit Language(const Preferences& preferences) { Translations::install(preferences.language()); }
};

} // namespace

struct DesktopProgram::Objects {
    explicit Objects(const Places& places)
        : preferences(places.preferencesFile)
        , player(clock, nullptr, cacheBudget(preferences), &sound,
                 std::make_shared<SampleTables>(places.system.cache))
        , controller({preferences, alerts, panels, pasteboard, fileBrowser, places.system, player, failedWrites})
        , library(controller)
        , viewer(controller.playerWindow()) {}

    FailedWrites failedWrites;
    Preferences preferences;
    Language language{preferences}; ///< before the first text is made
    /// The preference in bytes; 0 leaves it to the machine.
    static qint64 cacheBudget(const Preferences& preferences) {
        const qint64 megabytes = preferences.cacheSizeMegabytes();
        return std::clamp<qint64>(megabytes, 0, 1 << 20) << 20;
    }

    DesktopBus bus;
    DesktopAlerts alerts;
    DesktopPanels panels{bus};
    DesktopPasteboard pasteboard;
    DesktopFileBrowser fileBrowser{bus};
    MonotonicClock clock;
    DeviceSound sound;
    Player player;
    PlaylistController controller;
    LibraryWindow library;
    ViewerWindow viewer;
    LostScreens lostScreens;
};

DesktopProgram::Places DesktopProgram::Places::current() {
    return {UserDefaults::userFile(), SystemPlaces::current()};
}

DesktopProgram::DesktopProgram(const Places& places)
    : objects_(std::make_unique<Objects>(places)) {
    QObject::connect(&objects_->library, &LibraryWindow::closed, qApp, &QCoreApplication::quit);
    QObject::connect(
        &objects_->preferences.cacheSizeMegabytes, &PreferenceItem::changed, &objects_->player,
        [this] { objects_->player.setCacheBudget(Objects::cacheBudget(objects_->preferences)); });
    QObject::connect(&objects_->controller, &PlaylistController::viewerToClose, &objects_->viewer, &QWidget::close);
    followPreferencesFile();
    connectThumbnails();
}

DesktopProgram::~DesktopProgram() {
    terminate();
}

/// They are tried again of themselves, so nothing is offered.
void DesktopProgram::followPreferencesFile() {
    UserDefaults& store = objects_->preferences.store();
    QObject::connect(&store, &UserDefaults::troubleChanged, &objects_->failedWrites, [this, &store](const QString& trouble) {
        if (trouble.isEmpty())
            objects_->failedWrites.written(store.file());
        else
            objects_->failedWrites.failed(LibraryWindow::tr("Preferences"), store.file(), trouble);
    });
}

/// The viewer asks for thumbnails and shows them in its list; the library makes them.
void DesktopProgram::connectThumbnails() {
    Objects& program = *objects_;
    QObject::connect(
        &program.viewer, &ViewerWindow::thumbnailWanted, &program.controller,
        [&program](const QString& choice) {
            constexpr QSize enough(
                400,
                224); // four times a thumbnail's box: made on the interface thread, in a millisecond or two
            const VideoFrame shown = program.player.shownFrame();
            const QImage picture =
                renderFrame(shown, shown.displaySize().scaled(enough, Qt::KeepAspectRatio));
            program.controller.thumbnails().recreateCurrentThumbnail(
                program.controller.playerWindow().currentMovie(), picture, {choice, 0});
        });
    QObject::connect(&program.controller.thumbnails(), &Thumbnails::thumbnailDidLoad, program.viewer.drawer(),
                     &PlaylistDrawer::movieUpdated);
}

void DesktopProgram::start(const QStringList& paths) {
    objects_->library.show();
    objects_->controller.awake();
    objects_->controller.openFiles(paths);
}

QString DesktopProgram::terminate() {
    if (std::exchange(terminated_, true)) return {};
    if (objects_->viewer.isVisible())
        objects_->viewer.close(); // its open notes and the last frame belong to the session
    return objects_->controller.applicationWillTerminate();
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
