#include "preferences/StartupCorrections.h"

#include "preferences/Preferences.h"

namespace daylark {

bool isKeptAtStart(StartFrame start) {
    return start == StartFrame::first || start == StartFrame::second || start == StartFrame::lastVisited;
}

void correctAtStart(Preferences& preferences) {
    // What older versions wrote.
    if (preferences.loadFrame.text() == QLatin1String("Ganged To Previous"))
        preferences.loadFrame.set(StartFrame::current);
    const QString named = preferences.snapshotFilenameFormat.text();
    // Both old formats become the same new one; stores of any version so read alike.
    if (named == QLatin1String("filename.####.ext") || named == QLatin1String("####.filename.ext"))
        preferences.snapshotFilenameFormat.set(SnapshotNameFormat::frameNumberLast);

    // After the correction above, which so ends up as the first frame too, as in every version.
    if (!isKeptAtStart(preferences.loadFrame())) preferences.loadFrame.set(StartFrame::first);

    // What every start resets. Brightness and the three channels stay as the person left them.
    preferences.hideMainWindowWhenPlayerLaunches.set(true);
    preferences.repeatType.set(RepeatMode::loopMovie);
    preferences.viewDualNotes.set(true);
    preferences.rateMultiplier.set(1.0);
    preferences.exposure.set(0.0);
    preferences.contrast.set(1.0);
    preferences.saturation.set(1.0);
    preferences.gamma.set(1.0);
    preferences.mirrorX.set(false);
    preferences.mirrorY.set(false);
    preferences.displayDrawings.set(true);
    preferences.trimHandles.set(false);

    if (preferences.applyDefaultHandles()) {
        preferences.handleHead.set(preferences.defaultHandleHead());
        preferences.handleTail.set(preferences.defaultHandleTail());
    }
}

} // namespace daylark
