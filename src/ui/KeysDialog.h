#pragma once

#include <QDialog>

namespace daylark {

class Commands;

/// All commands of a window with their keys, for those who want to learn them. Interface thread.
class KeysDialog : public QDialog {
public:
    KeysDialog(const Commands& commands, const QString& title, QWidget* parent);
};

} // namespace daylark
