#pragma once

#include <QDBusConnection>
#include <QString>
#include <QStringList>

#include <optional>

class QWidget;

namespace daylark {

/// The desktop portal's file dialogs (org.freedesktop.portal.FileChooser), which look and know places as the rest of the
/// desktop does. The program's windows take no input while one is open; the interface thread goes on. Interface thread.
class PortalFileChooser {
public:
    struct Request {
        bool save = false, multiple = false, folders = false;
        QString title, accept; ///< null `accept`: the desktop's own word
        QString name;          ///< proposed; to save
        QString folder;        ///< to begin in
        QStringList patterns;  ///< of names; empty: all files
        QString patternsTitle; ///< what these files are called; with one, all files can be shown instead
        QString choiceLabel;   ///< of a choice beside the name; null: none
        QStringList choices;
        QString choice; ///< of the choices, the one to begin with
    };
    struct Answer {
        QStringList paths; ///< empty: cancelled
        QString choice;
    };
    explicit PortalFileChooser(QDBusConnection bus)
        : bus_(std::move(bus)) {}

    /// Returns when it is answered. Nothing when the portal can't, or went away: another dialog is to ask then.
    [[nodiscard]] std::optional<Answer> run(const Request& request, QWidget* parent);

private:
    QDBusConnection bus_;
};

} // namespace daylark
