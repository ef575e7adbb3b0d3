#pragma once

#include <QWidget>

class QAction;

namespace daylark {

/// The title line of a panel: its name and a button that hides it through the command that shows it, so that
/// buttons and preferences follow. The panel is moved by it. Interface thread.
class PanelTitle : public QWidget {
public:
    PanelTitle(const QString& title, QAction* toggle, QWidget* parent);
};

} // namespace daylark
