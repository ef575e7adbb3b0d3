#pragma once

#include <QWidget>

class QLineEdit;
class QToolButton;

namespace daylark {

class Commands;
class Library;

/// The filter button with its menu, and the field that searches the items' paths, each letter at once. Choosing one
/// empties the other, as the library's filter says. Escape in the field shows everything again. Interface thread.
class FilterControls : public QWidget {
    Q_OBJECT
public:
    FilterControls(Library& library, const Commands& commands, QWidget* parent = nullptr);
    void goToField();

Q_SIGNALS:
    void left(); ///< by key: to the items

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();

    Library& library_;
    QToolButton* button_;
    QLineEdit* field_;
};

} // namespace daylark
