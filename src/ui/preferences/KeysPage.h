#pragma once

#include "commands/keys/KeyMap.h"

#include <QWidget>

class QLineEdit;
class QPushButton;
class QStackedWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace daylark {

class PlainLabel;
class KeyField;
struct Menu;

/// Every command of both windows with its keys: found by a part of its name or key, given another key by
/// pressing it, set back to what it had at first. A key that means another command already is named and goes
/// over only when the person says so. What is chosen holds at once. Interface thread.
class KeysPage : public QWidget {
    Q_OBJECT
public:
    explicit KeysPage(Preferences& preferences, QWidget* parent = nullptr);

    void choose(const QString& id); ///< the command that is spoken of

private:
    /// What a person is about to do to the chosen command's keys.
    enum class Wish { change, add };
    void makeList();
    void addCommands(const QString& window, const CommandTable& table, const std::vector<Menu>& menus);
    QWidget* makeButtons();
    QWidget* makeQuestion();
    void show(const QString& words); ///< only what has all these words
    void showKeys();
    void showChosen();
    void listen(Wish wish);
    void taken(const KeyStroke& stroke);
    void give(const KeyMap::Strokes& strokes); ///< asks first where it clashes
    void done();
    [[nodiscard]] QString chosen() const; ///< its ID; empty: none
    [[nodiscard]] QString nameOf(const QString& id) const;

    Preferences& preferences_;
    KeyMap keys_;
    QLineEdit* search_;
    QTreeWidget* list_;
    PlainLabel* nothingFound_;
    QStackedWidget* foot_; ///< buttons, the waiting for a key, the question whose it is to be
    KeyField* field_;
    PlainLabel* question_ = nullptr;
    QPushButton *change_ = nullptr, *add_ = nullptr, *clear_ = nullptr, *reset_ = nullptr,
                *resetAll_ = nullptr, *take_ = nullptr;
    Wish wish_ = Wish::change;
    KeyMap::Strokes asked_; ///< what the question is about
};

} // namespace daylark
