#pragma once

#include <QWidget>

class QComboBox;

namespace daylark {

class MoviePlayerController;
class ScopeView;

/// The scopes panel: one scope of what is shown, chosen by a pop-up. Interface thread.
class ScopesPanel : public QWidget {
    Q_OBJECT
public:
    explicit ScopesPanel(MoviePlayerController& controller, QWidget* parent = nullptr);

private:
    void nameScope();

    QComboBox* choice_;
    ScopeView* view_;
};

} // namespace daylark
