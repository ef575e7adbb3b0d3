#pragma once

#include <QDialog>
#include <QList>
#include <QPair>

class QTableWidget;

namespace daylark {

class Commands;
struct Menu;

/// All commands of a window that have keys, in the order of its menus, for those who want to learn them; made
/// from the commands and their keys, and made anew when those change. `pointer`: what the mouse does, with
/// how. Interface thread.
class KeysDialog : public QDialog {
    Q_OBJECT
public:
    using Lines = QList<QPair<QString, QString>>;
    KeysDialog(const Commands& commands, const std::vector<Menu>& menus, const QString& title,
               QWidget* parent, const Lines& pointer = {});
    [[nodiscard]] QTableWidget* table() const { return table_; }

private:
    void list(const Commands& commands, const std::vector<Menu>& menus, const Lines& pointer);
    void addSection(const QString& title);
    void addLine(const QString& what, const QString& key);

    QTableWidget* table_;
};

} // namespace daylark
