#include "review/ManyChanges.h"

#include "review/ReviewStore.h"
#include "review/UndoHistory.h"

#include <set>
#include <utility>

namespace daylark {

ManyChanges::ManyChanges(ReviewStore& store, UndoHistory& history, QObject* parent)
    : QObject(parent)
    , history_(history) {
    connect(&store, &ReviewStore::applied, this, &ManyChanges::look);
    connect(&history, &UndoHistory::moved, this, [this] {
        if (std::exchange(current_, false)) Q_EMIT past();
    });
}

void ManyChanges::look(const Edit& edit) {
    if (edit.info.kind == EditKind::background) return;
    std::set<RecordId> flags, grades;
    for (const Change& change : edit.changes) {
        if (change.field == QLatin1String("flagString")) flags.insert(change.record);
        if (change.field == QLatin1String("grade") || change.field == QLatin1String("applyGrade"))
            grades.insert(change.record);
    }
    const bool isTold = edit.info.kind == EditKind::step && (flags.size() > 1 || grades.size() > 1);
    if (std::exchange(current_, isTold) && !isTold) Q_EMIT past();
    if (isTold)
        Q_EMIT told(flags.size() > 1 ? tr("%1 flags changed").arg(flags.size())
                                     : tr("%1 grades replaced").arg(grades.size()));
}

void ManyChanges::undo() {
    if (current_) history_.undo();
}

} // namespace daylark
