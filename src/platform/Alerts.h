#pragma once

#include <QString>
#include <QStringList>

#include <deque>
#include <functional>
#include <vector>

namespace daylark {

enum class AlertStyle { informational, warning };

/// A question or a message for the person. The first button's answer is 1000, the second's 1001, the third's 1002.
struct Alert {
    QString message;
    QString informativeText;
    QStringList buttons; ///< empty means one "OK"
    AlertStyle style = AlertStyle::warning;
    bool tellsDismissal = false; ///< closed without a button, it answers `Alerts::dismissed`
    QString details = {};        ///< what more there is to know, shown when it is asked for
    QString subject = {};        ///< what it is about, in the title of its window; empty: the program
    int defaultButton = 0;       ///< which button Return presses, counted from 0
};

/// Shows alerts. Interface thread; `run` returns when answered, while the windows stay alive behind it.
class Alerts {
public:
    static constexpr int firstButton = 1000, secondButton = 1001, thirdButton = 1002, dismissed = 0;
    virtual ~Alerts() = default;
    /// The number of the button pressed; any other way of closing gives the answer of the last button (or
    /// `dismissed`, where the alert asks for that).
    [[nodiscard]] virtual int run(const Alert& alert) = 0;
    void show(const Alert& alert) { static_cast<void>(run(alert)); }
};

/// Alerts answered by a script: for tests and the headless tool. Without an answer left it gives the last button's
/// (or `dismissed`).
class ScriptedAlerts : public Alerts {
public:
    std::deque<int> answers;
    std::vector<Alert> shown;
    std::function<void()> meanwhile; ///< happens while an alert stands
    [[nodiscard]] int run(const Alert& alert) override;
};

} // namespace daylark
