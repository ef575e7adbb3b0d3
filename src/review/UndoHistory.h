#pragma once

#include "review/Edit.h"

#include <QObject>
#include <QTimer>
#include <QUndoStack>

#include <memory>
#include <unordered_set>

namespace daylark {

class Movie;
class Playlist;
class ReviewStore;

/// Where a step changed something: what is to be shown when it is taken back. Null and -1 where it says
/// nothing.
struct ReviewPlace {
    std::shared_ptr<Playlist> playlist;
    std::shared_ptr<Movie> movie;
    qint64 frame = -1; ///< counted from 1
};

/// The steps that a person can take back and do again, one history over everything that is reviewed, thousands
/// deep. It listens to the store: what a person does becomes a step, edits in a row with the same merge key
/// become one, what is final takes the steps of the records that left with it and leaves the others usable,
/// what the program does by itself stays beside it. Interface thread.
class UndoHistory : public QObject {
    Q_OBJECT
public:
    explicit UndoHistory(ReviewStore& store, QObject* parent = nullptr);
    ~UndoHistory() override;

    [[nodiscard]] bool canUndo() const { return stack_.canUndo(); }
    [[nodiscard]] bool canRedo() const { return stack_.canRedo(); }
    [[nodiscard]] QString undoText() const; ///< "Undo Flag of 3 Items"; "Undo" when there is nothing
    [[nodiscard]] QString redoText() const;
    void undo(); ///< nothing when there is no step; `moved` says where
    void redo();
    void clear(); ///< of a session that is replaced

    /// The drag or run of typing is over: what comes with the same key is a step of its own. A pause ends a run
    /// too, unless it is held (by a mouse button).
    void endRun();
    void holdRun();

Q_SIGNALS:
    void aboutToMove(); ///< whoever holds what is being typed hands it in now
    void changed(); ///< which steps there are, or their texts
    void moved(const daylark::ReviewPlace& place);

private:
    class Step;
    void take(const Edit& edit);
    void dropStepsOf(const std::unordered_set<RecordId>& gone, bool sessionIsAnother);
    void dropObsolete();
    void go(bool forwards);
    [[nodiscard]] std::unordered_set<RecordId> goneWith(const Edit& edit) const;

    ReviewStore& store_;
    QUndoStack stack_;
    QTimer pause_;
    quint64 run_ = 0;
    bool held_ = false;
};

} // namespace daylark
