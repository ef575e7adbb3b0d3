#pragma once

#include <QWidget>

class QListWidget;
class QStackedWidget;

namespace daylark {

class Preferences;
template<class T>
class Preference;

/// Every preference that a person sets, in groups; each control is bound to its key at once, there is nothing
/// to confirm. Interface thread.
class PreferencesWindow : public QWidget {
    Q_OBJECT
public:
    PreferencesWindow(Preferences& preferences, QWidget* parent);

    static constexpr int keysGroup = 2;
    [[nodiscard]] QListWidget* groups() const { return groups_; }

Q_SIGNALS:
    void searchFolderWanted(); ///< to be chosen

private:
    class Page;
    void addPage(const QString& title, const QString& icon, QWidget* page);
    [[nodiscard]] QWidget* generalPage();
    [[nodiscard]] QWidget* viewerPage();
    [[nodiscard]] QWidget* handlesPage();
    [[nodiscard]] QWidget* snapshotsPage();
    [[nodiscard]] QWidget* flagsPage();
    [[nodiscard]] QWidget* notesPage();
    [[nodiscard]] QWidget* mediaPage();
    /// Enables a control only while the preference reads `value`.
    template<class T>
    void enableWhen(QWidget* control, const Preference<T>& preference, const T& value);

    Preferences& preferences_;
    QListWidget* groups_;
    QStackedWidget* pages_;
};

} // namespace daylark
