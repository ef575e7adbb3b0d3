#pragma once

#include <QToolButton>

namespace daylark {

class Commands;
class Movie;
class UserDefaults;

/// The flag of the movie on screen: its pennant and its name as the preferences call it, and a menu of all
/// flags. The menu's entries are the window's flag commands. Owned by the controls strip; interface thread.
class FlagPopUp : public QToolButton {
    Q_OBJECT
public:
    FlagPopUp(Commands& commands, UserDefaults& defaults, QWidget* parent = nullptr);
    void showFlagOf(const Movie* movie); ///< null: no movie

    [[nodiscard]] static QString commandId(int tag); ///< "viewer.flag.904"
    /// "None" for 900; the preference's name for a code.
    [[nodiscard]] static QString flagTitle(int tag, const UserDefaults& defaults);
    [[nodiscard]] static QString flagIcon(int tag);

private:
    UserDefaults& defaults_;
};

} // namespace daylark
