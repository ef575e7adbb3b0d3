#include "platform/Alerts.h"

#include <algorithm>

namespace daylark {

int ScriptedAlerts::run(const Alert& alert) {
    shown.push_back(alert);
    if (meanwhile) meanwhile();
    if (answers.empty() && alert.tellsDismissal) return dismissed;
    if (answers.empty()) return firstButton + std::max(0, int(alert.buttons.size()) - 1);
    const int answer = answers.front();
    answers.pop_front();
    return answer;
}

} // namespace daylark
