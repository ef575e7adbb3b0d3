#pragma once

#include <QObject>
#include <QString>

namespace daylark {

struct Edit;
class ReviewStore;
class UndoHistory;

/// Hears of steps that changed flags or grades of more than one item, of which a person may see only some, and says so for
/// as long as the step is the next one to be taken back. Owned by whoever shows it; interface thread.
class ManyChanges : public QObject {
    Q_OBJECT
public:
    ManyChanges(ReviewStore& store, UndoHistory& history, QObject* parent = nullptr);

    void undo(); ///< the step that was told of last; nothing when it isn't the next one any more

Q_SIGNALS:
    void told(const QString& text); ///< "14 grades replaced"
    void past();                    ///< it has been taken back, or something else was done

private:
    void look(const Edit& edit);

    UndoHistory& history_;
    bool current_ = false;
};

} // namespace daylark
