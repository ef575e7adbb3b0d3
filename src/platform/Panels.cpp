#include "platform/Panels.h"

#include <utility>

namespace daylark {

OpenPanel OpenPanel::forFolders(const QString& title, const QString& prompt) {
    OpenPanel panel;
    panel.title = title;
    panel.prompt = prompt;
    panel.chooseFiles = false;
    panel.chooseFolders = true;
    return panel;
}

QString Panels::chooseFolder(const QString& title, const QString& prompt) {
    return runOpen(OpenPanel::forFolders(title, prompt)).value(0);
}

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
