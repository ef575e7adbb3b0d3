#pragma once

#include "platform/Desktop.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace daylark {

class LibraryWindow;
class PlaylistController;
class Preferences;
class ViewerWindow;

/// The program's objects, built in their order and taken down in the reverse: preferences, desktop, player,
/// controller, windows. Made once by main (and by whoever drives the real program). Interface thread; needs a
/// running QApplication.
class DesktopProgram {
public:
    /// Where the program keeps its things: the user's own places, or others for a second life beside them.
    struct Places {
        QString preferencesFile;
        SystemPlaces system;
        [[nodiscard]] static Places current();
    };

    explicit DesktopProgram(const Places& places);
    ~DesktopProgram(); ///< writes what is still to be written

    void
    start(const QStringList& paths); ///< shows the library, then restores the session and opens the files

    [[nodiscard]] PlaylistController& controller();
    [[nodiscard]] LibraryWindow& libraryWindow();
    [[nodiscard]] ViewerWindow& viewerWindow();

    /// The end in its order: viewer closed, temporary session written, panels away. Once; the destructor does
    /// it if nobody did. What a person must be told then, else empty: see the controller's.
    QString terminate();

private:
    void followPreferencesFile();
    void connectThumbnails();

    struct Objects;
    std::unique_ptr<Objects> objects_;
    bool terminated_ = false;
};

} // namespace daylark
