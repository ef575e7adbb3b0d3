#pragma once

#include "model/SmartRules.h"

#include <QDialog>

#include <memory>
#include <vector>

class QComboBox;
class QToolButton;
class QVBoxLayout;

namespace daylark {

class PlainLabel;
class Playlist;
class PlaylistController;

/// One rule as controls: subject, relation and what it is compared with, of the kind that the relation asks for. Holds
/// what a person sees; whoever has it reads the rule. Interface thread.
class SmartRuleRow : public QWidget {
    Q_OBJECT
public:
    SmartRuleRow(PlaylistController& controller, const SmartRule& rule, QWidget* parent = nullptr);
    [[nodiscard]] SmartRule rule() const { return rule_; }
    [[nodiscard]] QToolButton* removeButton() const { return remove_; }

Q_SIGNALS:
    void edited();

private:
    void fillRelations();
    void makeEditor();
    [[nodiscard]] QWidget* newEditor();
    void setValue(const QString& value);

    PlaylistController& controller_;
    SmartRule rule_;
    QComboBox* subject_;
    QComboBox* relation_;
    QWidget* editor_ = nullptr;
    QToolButton* remove_;
};

/// A small panel in which the rules of a smartlist are edited; the list answers while it stands open. It closes when its
/// list goes. Interface thread.
class SmartRulesPanel : public QDialog {
    Q_OBJECT
public:
    SmartRulesPanel(PlaylistController& controller, const std::shared_ptr<Playlist>& smartlist,
                    QWidget* parent = nullptr);
    [[nodiscard]] std::shared_ptr<Playlist> smartlist() const { return smartlist_.lock(); }

private:
    void follow();
    void showRules(const SmartRules& rules);
    void addRow(const SmartRule& rule);
    void store();
    void refreshCount();
    [[nodiscard]] SmartRules shownRules() const;

    PlaylistController& controller_;
    std::weak_ptr<Playlist> smartlist_;
    QComboBox* match_;
    QVBoxLayout* list_;
    PlainLabel* count_;
    std::vector<SmartRuleRow*> rows_;
    bool filling_ = false;
};

} // namespace daylark
