#pragma once

#include <QToolButton>

namespace daylark {

class Commands;
class Movie;
class Preferences;

/// The flag of the movie on screen: its pennant and its name as the preferences call it, and a menu of all
/// flags. The menu's entries are the window's flag commands. Owned by the controls strip; interface thread.
class FlagPopUp : public QToolButton {
    Q_OBJECT
public:
    FlagPopUp(Commands& commands, Preferences& preferences, QWidget* parent = nullptr);
    void showFlagOf(const Movie* movie); ///< null: no movie

    /// "None" for 900; the preference's name for a code.
    [[nodiscard]] static QString flagTitle(int tag, const Preferences& preferences);
    [[nodiscard]] static QString flagIcon(int tag);

private:
    Preferences& preferences_;
};

} // namespace daylark
