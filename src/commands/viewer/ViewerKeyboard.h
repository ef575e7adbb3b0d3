#pragma once

#include "commands/CommandSet.h"
#include "commands/keys/KeyMap.h"

class QKeyEvent;

namespace daylark {

class MoviePlayerController;

/// What a key pressed in the viewer or one of its panels comes to. Owned by the viewer's window; interface
/// thread.
class ViewerKeyboard {
public:
    ViewerKeyboard(CommandSet& commands, const KeyMap& keys, MoviePlayerController& controller)
        : commands_(commands)
        , keys_(keys)
        , controller_(controller) {}

    /// The command of the key with its modifiers; else of the key alone where it counts with any. Empty:
    /// none.
    [[nodiscard]] QString commandFor(const QKeyEvent& event) const;
    /// In full screen with its keys switched off only those with Ctrl, Alt or Meta, function keys and what
    /// leaves full screen do anything.
    [[nodiscard]] bool isOff(const QKeyEvent& event) const;
    /// Held down, frames go as fast as pictures come: a step waits until the one before is seen.
    [[nodiscard]] bool waitsForPicture(const QKeyEvent& event) const;
    void press(const QKeyEvent& event); ///< every key puts the volume away; then its command, if it has one

private:
    CommandSet& commands_;
    const KeyMap& keys_;
    MoviePlayerController& controller_;
};

} // namespace daylark
