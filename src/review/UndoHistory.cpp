#include "review/UndoHistory.h"

#include "review/ListChanges.h"
#include "review/RecordFields.h"
#include "review/ReviewStore.h"

#include <QCoreApplication>
#include <QUndoCommand>

#include <algorithm>

namespace daylark {

namespace {

constexpr int mostSteps = 10000;
/// So long nothing is typed or turned: what follows is another thought.
constexpr int pauseMs = 3000;

/// What was done, in the language of whoever did it.
QString inWords(const QString& title) {
    return QCoreApplication::translate("Words", title.toUtf8().constData());
}

bool isIn(const std::unordered_set<RecordId>& ids, RecordId id) {
    return ids.contains(id);
}

} // namespace

/// What is taken back together.
class UndoHistory::Step : public QUndoCommand {
public:
    Step(ReviewStore& store, const Edit& edit, quint64 run)
        : QUndoCommand(edit.info.title)
        , store_(store)
        , info_(edit.info)
        , run_(run) {
        for (const Change& change : edit.changes)
            if (!change.isWholeRecord()) changes_.push_back(change);
        setObsolete(changes_.empty());
    }

    [[nodiscard]] int id() const override { return info_.mergeKey.isEmpty() ? -1 : 1; }

    void undo() override {
        Changes back;
        back.reserve(changes_.size());
        for (auto change = changes_.rbegin(); change != changes_.rend(); ++change)
            back.push_back(change->inverted());
        store_.applyAgain(back, info_);
    }

    void redo() override {
        if (std::exchange(isNew_, false)) return; // it has been done already
        store_.applyAgain(changes_, info_);
    }

    bool mergeWith(const QUndoCommand* other) override {
        const auto& next = static_cast<const Step&>(*other);
        if (next.info_.mergeKey != info_.mergeKey || next.run_ != run_) return false;
        for (const Change& change : next.changes_) {
            const auto found = std::find_if(changes_.begin(), changes_.end(), [&change](const Change& mine) {
                return mine.record == change.record && mine.field == change.field && mine.at == change.at &&
                       !ReviewRecords::isList(change.field) && change.at < 0;
            });
            if (found == changes_.end())
                changes_.push_back(change);
            else
                found->after = change.after;
        }
        return true;
    }

    /// Forgets what it did to these; true when nothing is left.
    bool forget(const std::unordered_set<RecordId>& gone, bool sessionIsAnother) {
        Changes left;
        for (Change& change : changes_) {
            if (isIn(gone, change.record)) continue;
            if (sessionIsAnother && change.field == fields::colourConfiguration) continue;
            if (ReviewRecords::isList(change.field) && !forgetIn(change, gone)) continue;
            left.push_back(std::move(change));
        }
        changes_ = std::move(left);
        setObsolete(changes_.empty());
        return changes_.empty();
    }

    [[nodiscard]] ReviewPlace place() const {
        ReviewPlace place;
        for (const Change& change : changes_)
            addTo(place, change);
        if (info_.frame > 0) place.frame = info_.frame;
        return place;
    }

private:
    void addTo(ReviewPlace& place, const Change& change) const;
    bool forgetIn(Change& change, const std::unordered_set<RecordId>& gone) const;

    ReviewStore& store_;
    EditInfo info_;
    Changes changes_;
    quint64 run_;
    bool isNew_ = true;
};

/// Takes these out of a list's change; false when it has nothing else to do.
bool UndoHistory::Step::forgetIn(Change& change, const std::unordered_set<RecordId>& gone) const {
    bool less = false;
    for (Value* part : {&change.before, &change.after}) {
        RecordIds ids = recordIdsOf(*part);
        if (std::erase_if(ids, [&gone](RecordId id) { return isIn(gone, id); }) == 0) continue;
        *part = listOfRecordIds(ids);
        less = true;
    }
    if (!less) return true;
    std::erase_if(change.keeps, [&](const std::shared_ptr<Archivable>& record) {
        return isIn(gone, store_.records().knownId(record.get()));
    });
    return recordIdsOf(change.before) != recordIdsOf(change.after);
}

/// The first record of each kind that a step names.
void UndoHistory::Step::addTo(ReviewPlace& place, const Change& change) const {
    const ReviewRecords& records = store_.records();
    const auto record = records.record(change.record);
    const auto named = [&records, &change] {
        const RecordIds after = recordIdsOf(change.after);
        const RecordIds ids = after.empty() ? recordIdsOf(change.before) : after;
        return ids.empty() ? nullptr : records.record(ids.front());
    };
    auto movie = std::dynamic_pointer_cast<Movie>(record);
    auto playlist = std::dynamic_pointer_cast<Playlist>(record);
    auto bookmark = std::dynamic_pointer_cast<Bookmark>(record);
    if (change.field == fields::movieList) movie = std::dynamic_pointer_cast<Movie>(named());
    if (change.field == fields::playlists) playlist = std::dynamic_pointer_cast<Playlist>(named());
    if (change.field == fields::bookmarkStore) bookmark = std::dynamic_pointer_cast<Bookmark>(named());
    if (bookmark && !movie) movie = records.ownerOf(change.record);
    if (playlist && !place.playlist) place.playlist = std::move(playlist);
    if (movie && !place.movie) place.movie = movie;
    if (bookmark && place.frame < 0 && movie == place.movie) place.frame = bookmark->firstFrame;
}

UndoHistory::UndoHistory(ReviewStore& store, QObject* parent)
    : QObject(parent)
    , store_(store) {
    stack_.setUndoLimit(mostSteps);
    pause_.setSingleShot(true);
    pause_.setInterval(pauseMs);
    connect(&pause_, &QTimer::timeout, this, [this] {
        if (!held_) ++run_;
    });
    connect(&store_, &ReviewStore::applied, this, &UndoHistory::take);
    connect(&store_, &ReviewStore::sessionReplaced, this, &UndoHistory::clear);
}

UndoHistory::~UndoHistory() = default;

void UndoHistory::take(const Edit& edit) {
    switch (edit.info.kind) {
    case EditKind::step:
        if (!edit.info.mergeKey.isEmpty()) pause_.start();
        stack_.push(new Step(store_, edit, run_));
        break;
    case EditKind::final:
        // Without changes it is obsolete: the stack forgets what was taken back and keeps nothing.
        stack_.push(new Step(store_, {edit.info, {}}, run_));
        dropStepsOf(goneWith(edit), std::any_of(edit.changes.begin(), edit.changes.end(), [](const Change& change) {
                        return change.field == fields::colourConfiguration;
                    }));
        break;
    case EditKind::background:
    case EditKind::again:
        return;
    }
    Q_EMIT changed();
}

/// The records that an edit took out of the session, with what stood in them.
std::unordered_set<RecordId> UndoHistory::goneWith(const Edit& edit) const {
    const ReviewRecords& records = store_.records();
    std::unordered_set<RecordId> gone;
    for (const Change& change : edit.changes) {
        if (!ReviewRecords::isList(change.field)) continue;
        for (const RecordId id : recordIdsOf(change.before)) {
            gone.insert(id);
            if (const auto playlist = records.find<Playlist>(id))
                for (const auto& movie : playlist->movieList)
                    gone.insert(records.knownId(movie.get()));
        }
        for (const RecordId id : recordIdsOf(change.after))
            gone.erase(id);
    }
    for (const auto& playlist : records.playlists()) { // what still stands somewhere has not gone
        gone.erase(records.knownId(playlist.get()));
        for (const auto& movie : playlist->movieList)
            gone.erase(records.knownId(movie.get()));
    }
    std::unordered_set<RecordId> bookmarks;
    for (const RecordId id : gone)
        if (const auto movie = records.find<Movie>(id))
            for (const auto& bookmark : movie->bookmarkStore)
                bookmarks.insert(records.knownId(bookmark.get()));
    gone.merge(bookmarks);
    gone.erase(noRecord);
    return gone;
}

void UndoHistory::dropStepsOf(const std::unordered_set<RecordId>& gone, bool sessionIsAnother) {
    for (int i = 0; i < stack_.count(); ++i)
        static_cast<Step*>(const_cast<QUndoCommand*>(stack_.command(i)))->forget(gone, sessionIsAnother);
    dropObsolete();
}

/// The stack drops an obsolete step when it comes to it, without carrying it out.
void UndoHistory::dropObsolete() {
    while (stack_.canUndo() && stack_.command(stack_.index() - 1)->isObsolete())
        stack_.undo();
    while (stack_.canRedo() && stack_.command(stack_.index())->isObsolete())
        stack_.redo();
}

QString UndoHistory::undoText() const {
    const QString what = stack_.undoText();
    return what.isEmpty() ? tr("Undo") : tr("Undo %1").arg(inWords(what));
}

QString UndoHistory::redoText() const {
    const QString what = stack_.redoText();
    return what.isEmpty() ? tr("Redo") : tr("Redo %1").arg(inWords(what));
}

void UndoHistory::undo() {
    go(false);
}

void UndoHistory::redo() {
    go(true);
}

void UndoHistory::go(bool forwards) {
    Q_EMIT aboutToMove();
    if (forwards ? !stack_.canRedo() : !stack_.canUndo()) return;
    endRun();
    const auto& step = static_cast<const Step&>(*stack_.command(forwards ? stack_.index() : stack_.index() - 1));
    ReviewPlace place = step.place();
    if (forwards)
        stack_.redo();
    else
        stack_.undo();
    dropObsolete();
    Q_EMIT changed();
    Q_EMIT moved(place);
}

void UndoHistory::clear() {
    stack_.clear();
    endRun();
    Q_EMIT changed();
}

void UndoHistory::endRun() {
    held_ = false;
    ++run_;
}

void UndoHistory::holdRun() {
    endRun();
    held_ = true;
}

} // namespace daylark
