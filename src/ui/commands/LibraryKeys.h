#pragma once

#include "ui/commands/WindowKeys.h"

namespace daylark {

class Commands;

/// Brings the library's keys to its commands that are no shortcuts: those that write something, by their
/// place on the keyboard, and those that mean a command only while a list has the focus.
class LibraryKeys : public WindowKeys {
    Q_OBJECT
public:
    /// The list of playlists, and what the views of items stand in.
    LibraryKeys(QWidget& window, const Commands& commands, const QWidget& playlists, const QWidget& items);

protected:
    [[nodiscard]] bool isOurs(const QWidget& widget) const override;
    [[nodiscard]] bool takes(QWidget& widget, QKeyEvent& event, bool press) override;

private:
    const Commands& commands_;
    const QWidget& playlists_;
    const QWidget& items_;
};

} // namespace daylark
