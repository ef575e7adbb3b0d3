#pragma once

#include <QWidget>

class QListWidget;
class QStackedWidget;

namespace daylark {

class UserDefaults;

/// Every preference that a person sets, in groups; each control is bound to its key at once, there is nothing
/// to confirm. Interface thread.
class PreferencesWindow : public QWidget {
    Q_OBJECT
public:
    PreferencesWindow(UserDefaults& defaults, QWidget* parent);

    void showGroup(int group);
    [[nodiscard]] QListWidget* groups() const { return groups_; }

private:
    class Page;
    void addPage(const QString& title, const QString& icon, QWidget* page);
    [[nodiscard]] QWidget* generalPage();
    [[nodiscard]] QWidget* viewerPage();
    [[nodiscard]] QWidget* handlesPage();
    [[nodiscard]] QWidget* snapshotsPage();
    [[nodiscard]] QWidget* statusesPage();
    [[nodiscard]] QWidget* notesPage();
    [[nodiscard]] QWidget* mediaPage();
    /// Enables a control only while the preference reads `value`.
    void enableWhen(QWidget* control, const QString& key, const QString& value);

    UserDefaults& defaults_;
    QListWidget* groups_;
    QStackedWidget* pages_;
};

} // namespace daylark
