#pragma once

#include <QDialog>
#include <QList>
#include <QPair>

class QMenuBar;
class QTableWidget;

namespace daylark {

class Commands;

/// All commands of a window that have keys, in the order of its menus, for those who want to learn them; made
/// from the commands themselves. `pointer`: what the mouse does, with how. Interface thread.
class KeysDialog : public QDialog {
public:
    using Lines = QList<QPair<QString, QString>>;
    KeysDialog(const Commands& commands, const QMenuBar& menus, const QString& title, QWidget* parent,
               const Lines& pointer = {});
    [[nodiscard]] QTableWidget* table() const { return table_; }

private:
    void addSection(const QString& title);
    void addLine(const QString& what, const QString& key);

    QTableWidget* table_;
};

} // namespace daylark
