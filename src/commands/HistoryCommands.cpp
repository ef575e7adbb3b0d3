#include "commands/HistoryCommands.h"

#include "base/PlainText.h"
#include "review/UndoHistory.h"

#include <QCoreApplication>

namespace daylark {

namespace {

const QString undoId = QStringLiteral("edit.undo"), redoId = QStringLiteral("edit.redo");

struct HistoryTable {
    Q_DECLARE_TR_FUNCTIONS(HistoryTable)
public:
    static CommandTable make() {
        return {{undoId,
                 tr("&Undo"),
                 QStringLiteral("undo"),
                 {Qt::CTRL | Qt::Key_Z},
                 {},
                 Command::repeats,
                 KeyScope::everywhere},
                {redoId,
                 tr("&Redo"),
                 QStringLiteral("redo"),
                 {Qt::CTRL | Qt::SHIFT | Qt::Key_Z},
                 {},
                 Command::repeats,
                 KeyScope::everywhere}};
    }
};

QString asMenuTitle(QString text) {
    return u'&' + plain::menuTitle(text);
}

} // namespace

const CommandTable& historyTable() {
    static const CommandTable table = HistoryTable::make();
    return table;
}

void bindHistoryCommands(CommandSet& commands, UndoHistory& history, std::function<bool()> isFree) {
    const auto whenFree = [&](void (UndoHistory::*go)()) {
        return [&history, isFree, go] {
            if (!isFree || isFree()) (history.*go)();
        };
    };
    commands.bind(
        undoId, whenFree(&UndoHistory::undo),
        &commands.when([&history] { return history.canUndo(); }).follows(history, &UndoHistory::changed));
    commands.bind(
        redoId, whenFree(&UndoHistory::redo),
        &commands.when([&history] { return history.canRedo(); }).follows(history, &UndoHistory::changed));
    const auto showTexts = [&commands, &history] {
        commands.setText(undoId, asMenuTitle(history.undoText()));
        commands.setText(redoId, asMenuTitle(history.redoText()));
    };
    QObject::connect(&history, &UndoHistory::changed, &commands, showTexts);
    showTexts();
}

} // namespace daylark
