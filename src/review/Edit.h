#pragma once

#include "review/Change.h"

#include <QString>

#include <optional>

namespace daylark {

/// How an edit came about, which decides what becomes of it afterwards.
enum class EditKind {
    step,       ///< by a person; can be taken back
    final,      ///< by a person who was told that it can't be undone
    background, ///< by the program: what a look at a file found, where a movie was left
    again       ///< a step taken back or done once more
};

/// What is said of an edit when it begins.
struct EditInfo {
    QString title; ///< what was done, for "Undo …" and "Redo …": "Flag of 3 Items"
    EditKind kind = EditKind::step;
    /// Edits in a row with the same key are one step (a drag, a run of typing); empty: a step of its own.
    QString mergeKey = {};
    qint64 frame = -1; ///< the frame at which it was made, counted from 1; -1: the records say it, or none
};

/// One edit as announced: changes that belong together, in the order in which they were made. A plain value.
struct Edit {
    EditInfo info;
    Changes changes;
};

/// "Flag" for one item, "Flag of 3 Items" for several.
[[nodiscard]] QString titleForItems(const QString& what, size_t items);

} // namespace daylark
