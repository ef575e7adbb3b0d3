#pragma once

#include <QObject>

class QKeyEvent;
class QWidget;

namespace daylark {

/// Watches the whole program's keys for one window and consumes those that it takes, before shortcuts and
/// widgets have them. A text field being edited keeps its keys, menus and dialogs keep theirs. Owned by the
/// window; interface thread.
class WindowKeys : public QObject {
    Q_OBJECT
public:
    explicit WindowKeys(QWidget& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

    [[nodiscard]] virtual bool isOurs(const QWidget& widget) const = 0; ///< a key there may mean a command
    /// Whether the key is taken from the widget; `press`: it is pressed now, else it is asked for first.
    [[nodiscard]] virtual bool takes(QWidget& widget, QKeyEvent& event, bool press) = 0;

    QWidget& window_;
};

} // namespace daylark
