#include "commands/Command.h"

#include "base/PlainText.h"
#include "preferences/Preferences.h"

#include <QCoreApplication>

#include <algorithm>

namespace daylark {

bool isWithin(KeyScope inner, KeyScope outer) {
    if (inner == outer || outer == KeyScope::everywhere) return true;
    if (inner == KeyScope::items || inner == KeyScope::playlists)
        return outer == KeyScope::lists || outer == KeyScope::library;
    return inner == KeyScope::lists && outer == KeyScope::library;
}

const Command* findCommand(const QString& id) {
    for (const CommandTable* table : {&libraryTable(), &viewerTable()}) {
        const auto found = std::find_if(table->begin(), table->end(),
                                        [&](const Command& command) { return command.id == id; });
        if (found != table->end()) return &*found;
    }
    return nullptr;
}

QString withoutMnemonic(const QString& menuTitle) {
    QString plain;
    for (qsizetype at = 0; at < menuTitle.size(); ++at) {
        if (menuTitle[at] == QLatin1Char('&') && at + 1 < menuTitle.size())
            ++at; // "&&" stands for one ampersand
        plain += menuTitle[at];
    }
    return plain;
}

QString commandText(const Command& command, const Preferences& preferences) {
    if (command.traits & Command::toldByTitle)
        return QCoreApplication::translate("Words", command.text.toUtf8().constData());
    if (command.status.isEmpty()) return command.text;
    return plain::menuTitle(preferences.statusName(command.status));
}

QString commandName(const Command& command, const Preferences& preferences) {
    if (command.status.isEmpty())
        return command.name.isEmpty() ? withoutMnemonic(commandText(command, preferences)) : command.name;
    return command.name.arg(plain::line(preferences.statusName(command.status)));
}

} // namespace daylark
