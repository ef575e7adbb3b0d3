#include "platform/Panels.h"

#include <utility>

namespace daylark {

QString ScriptedPanels::runSave(const SavePanel& panel) {
    savesShown.push_back(panel);
    if (saveAnswers.empty()) return {};
    QString answer = std::move(saveAnswers.front());
    saveAnswers.pop_front();
    return answer;
}

QStringList ScriptedPanels::runOpen(const OpenPanel& panel) {
    opensShown.push_back(panel);
    if (openAnswers.empty()) return {};
    QStringList answer = std::move(openAnswers.front());
    openAnswers.pop_front();
    return answer;
}

} // namespace daylark
