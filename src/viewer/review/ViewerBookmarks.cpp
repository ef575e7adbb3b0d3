#include "viewer/review/ViewerBookmarks.h"

#include "archive/KeyedArchive.h"
#include "review/ReviewEdits.h"
#include "model/Session.h"
#include "platform/Alerts.h"
#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "viewer/CurrentMovie.h"
#include "viewer/transport/PlaybackRange.h"
#include "viewer/transport/TimeDisplay.h"
#include "viewer/transport/Transport.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace daylark {

namespace {

/// New records by a round trip through an archive, so that later edits reach only one side.
ViewerBookmarks::Bookmarks independentCopies(const ViewerBookmarks::Bookmarks& bookmarks) {
    Value::Array array;
    array.reserve(bookmarks.size());
    for (const auto& bookmark : bookmarks)
        array.emplace_back(std::shared_ptr<Archivable>(bookmark));
    const Value copied = deepCopy(Value(std::move(array)), recordClasses());
    ViewerBookmarks::Bookmarks copies;
    if (const Value::Array* elements = copied.array())
        for (const Value& element : *elements)
            if (auto copy = std::dynamic_pointer_cast<Bookmark>(element.object()))
                copies.push_back(std::move(copy));
    return copies;
}

Image unavailableImage() {
    return Image::named(QStringLiteral("NSStatusUnavailable"));
}

} // namespace

/// What a person does is one step, announced once when it is done.
class ViewerBookmarks::OneAction {
public:
    OneAction(ViewerBookmarks& owner, const QString& title)
        : owner_(owner) {
        ++owner_.actionDepth_;
        group_.emplace(owner_.edits_.store(), EditInfo{title, EditKind::step, {}, owner_.currentFrame()});
    }
    ~OneAction() {
        group_.reset(); // announces
        if (--owner_.actionDepth_ == 0 && std::exchange(owner_.editedInAction_, false)) owner_.edited();
    }
    OneAction(const OneAction&) = delete;
    OneAction& operator=(const OneAction&) = delete;

private:
    ViewerBookmarks& owner_;
    std::optional<ReviewStore::Group> group_;
};

ViewerBookmarks::ViewerBookmarks(CurrentMovie& current, Player& player, Transport& transport,
                                 TimeDisplay& time, PlaybackRange& range, ReviewEdits& edits, Alerts& alerts,
                                 Preferences& preferences, QObject* parent)
    : QObject(parent)
    , player_(player)
    , transport_(transport)
    , time_(time)
    , range_(range)
    , edits_(edits)
    , alerts_(alerts)
    , preferences_(preferences) {
    current.handTo(this, &ViewerBookmarks::setMovie);
    connect(&time_, &TimeDisplay::changed, this, [this] {
        const FrameNumbers before = std::exchange(numbers_, time_.frameNumbers());
        if (before != numbers_) Q_EMIT frameNumbersChanged();
    });
    connect(&player_, &Player::positionChanged, this, &ViewerBookmarks::loadActiveBookmarks);
    connect(&transport_, &Transport::actionDone, this, &ViewerBookmarks::loadActiveBookmarks);
    // Edits by others (the library, a drawing) show here as well.
    connect(&edits_, &ReviewEdits::bookmarkChanged, this, [this](const std::shared_ptr<Movie>& movie) {
        if (movie && movie == movie_) edited();
    });
    connect(&edits_, &ReviewEdits::movieChanged, this,
            [this](const std::shared_ptr<Movie>& movie, const QString& field) {
                if (movie && movie == movie_ && field == QLatin1String("bookmarkStore")) edited();
            });
}

void ViewerBookmarks::setMovie(const std::shared_ptr<Movie>& movie) {
    movie_ = movie;
    refreshActive(true);
    Q_EMIT bookmarksChanged();
}

ViewerBookmarks::Bookmarks ViewerBookmarks::bookmarks() const {
    return movie_ ? Bookmarks(movie_->bookmarkStore.begin(), movie_->bookmarkStore.end()) : Bookmarks();
}

bool ViewerBookmarks::isOfThisMovie(const std::shared_ptr<Bookmark>& bookmark) const {
    return bookmark && movie_ &&
           std::find(movie_->bookmarkStore.begin(), movie_->bookmarkStore.end(), bookmark) !=
               movie_->bookmarkStore.end();
}

qint64 ViewerBookmarks::frameCount() const {
    return player_.isOpen() ? player_.index().count() : movie_ ? movie_->mMovieDurationFrames : 0;
}

void ViewerBookmarks::edited() {
    if (actionDepth_ > 0) {
        editedInAction_ = true;
        return;
    }
    refreshActive(true);
    Q_EMIT bookmarksChanged();
}

qint64 ViewerBookmarks::currentFrame() const {
    return player_.isOpen() ? time_.currentFrameNumber() : -1;
}

// Making and removing.

void ViewerBookmarks::addBookmark() {
    addHere(nullptr);
}

void ViewerBookmarks::addBookmarkWithDrawing(const Drawing& drawing) {
    addHere(&drawing);
}

void ViewerBookmarks::addBookmarkFromRange() {
    if (range_.isLooping()) add(range_.firstFrameForLoop(), range_.lastFrameForLoop(), nullptr, tr("Bookmark from Range"));
}

void ViewerBookmarks::addHere(const Drawing* drawing) {
    const qint64 frame = time_.currentFrameNumber();
    add(frame, frame + preferences_.bookmarkDuration() - 1, drawing, tr("Add Bookmark"));
}

void ViewerBookmarks::add(qint64 first, qint64 last, const Drawing* drawing, const QString& title) {
    if (!movie_ || !player_.isOpen()) return;
    const OneAction action(*this, title);
    const auto bookmark = std::make_shared<Bookmark>(first, last - first + 1, time_.framesPerSecond());
    if (drawing) bookmark->addDrawingToBookmark(*drawing);
    bookmark->firstTC = time_.computeTimecodeFromFrameNumber(first);
    bookmark->lastTC = time_.computeTimecodeFromFrameNumber(last);
    edits_.addBookmarks(movie_, {bookmark});
    waitForTimecode(bookmark, first, last);
    sortBookmarks();
}

void ViewerBookmarks::waitForTimecode(const std::shared_ptr<Bookmark>& bookmark, std::optional<qint64> first,
                                      std::optional<qint64> last) {
    if (!time_.timecodeIsKnown()) untimed_.push_back({movie_, bookmark, first, last});
}

bool ViewerBookmarks::waitsForTimecode() const {
    return movie_ && std::any_of(untimed_.begin(), untimed_.end(),
                                 [this](const Untimed& one) { return one.movie.lock() == movie_; });
}

void ViewerBookmarks::timecodeRead(const std::shared_ptr<Movie>& movie,
                                   const std::optional<SmpteTime>& start) {
    const auto others = std::stable_partition(untimed_.begin(), untimed_.end(), [&](const Untimed& one) {
        return one.movie.lock() == movie;
    });
    const std::vector<Untimed> waited(untimed_.begin(), others);
    untimed_.erase(untimed_.begin(), others);
    if (!start) return; // they count from zero, as they do already
    for (const Untimed& one : waited) {
        const auto bookmark = one.bookmark.lock();
        const auto& store = movie->bookmarkStore;
        if (std::find(store.begin(), store.end(), bookmark) == store.end()) continue;
        edits_.store().modify(movie, bookmark, {{}, EditKind::background}, [&](Bookmark& marked) {
            if (one.first) marked.firstTC = timecodeText(*one.first, marked.fps, start, movie->frameStep());
            if (one.last) marked.lastTC = timecodeText(*one.last, marked.fps, start, movie->frameStep());
        });
    }
}

void ViewerBookmarks::deleteAllBookmarks() {
    const std::shared_ptr<Movie> movie = movie_;
    if (!movie) return;
    const int answer = alerts_.run({tr("Remove All Bookmarks From Movie?"),
                                    tr("Drawings will also be removed"),
                                    {tr("Remove All Bookmarks"), tr("Cancel")}});
    if (answer != Alerts::firstButton || movie != movie_) return;
    edits_.removeBookmarks(movie_, bookmarks());
    range_.endLoop();
}

void ViewerBookmarks::deleteActiveBookmarks() {
    if (!movie_ || active_.empty()) return;
    const Bookmarks gone = active_;
    if (std::any_of(gone.begin(), gone.end(), [](const auto& bookmark) { return bookmark->loopStatus; }))
        range_.endLoop();
    edits_.removeBookmarks(movie_, gone);
}

void ViewerBookmarks::removeBookmark(const std::shared_ptr<Bookmark>& bookmark) {
    if (!isOfThisMovie(bookmark)) return;
    const std::shared_ptr<Bookmark> kept = bookmark; // the caller's may stand in what is removed
    if (kept->loopStatus) range_.endLoop();
    edits_.removeBookmarks(movie_, {kept});
}

// What is active.

bool ViewerBookmarks::loadActiveBookmarks() {
    if (actionDepth_ == 0) refreshActive(false);
    return true;
}

void ViewerBookmarks::refreshActive(bool drawingsMayDiffer) {
    Bookmarks active;
    if (movie_) active = movie_->bookmarksForFrame(time_.currentFrameNumber());
    QString text;
    for (const auto& bookmark : active)
        if (!bookmark->overlayString.isNull())
            text += QStringLiteral("  ") + bookmark->overlayString; // two blanks before the first as well:
                                                                    // texts keep their place on the picture
    const bool othersActive = active != active_;
    const bool changed = othersActive || text != overlayText_;
    active_ = std::move(active);
    overlayText_ = text;
    bool drawingsChanged = false;
    if (othersActive || drawingsMayDiffer) {
        Drawing together;
        for (const auto& bookmark : active_)
            if (bookmark->hasDrawings()) together.append(bookmark->drawings);
        drawingsChanged = !(together == drawings_);
        drawings_ = std::move(together);
    }
    if (changed) Q_EMIT activeBookmarksChanged();
    if (drawingsChanged) Q_EMIT activeDrawingsChanged();
}

void ViewerBookmarks::sortBookmarks() {
    if (movie_) edits_.sortBookmarks(movie_);
}

// The buttons of a row.

QString ViewerBookmarks::titleOf(int tag) {
    switch (tag) {
    case bookmarkTag::setIn:
        return tr("Bookmark In");
    case bookmarkTag::setOut:
        return tr("Bookmark Out");
    case bookmarkTag::fromDuration:
        return tr("Bookmark Length");
    case bookmarkTag::mute:
        return tr("Mute Bookmark");
    case bookmarkTag::remove:
        return tr("Remove Bookmark");
    default:
        return {};
    }
}

void ViewerBookmarks::bookmarkButtonPress(const Sender& button, qsizetype row) {
    if (!movie_ || row < 0 || row >= qsizetype(movie_->bookmarkStore.size())) return;
    const std::shared_ptr<Bookmark> bookmark = movie_->bookmarkStore[size_t(row)];
    {
        const OneAction action(*this, titleOf(button.tag));
        bool refreshes = true;
        switch (button.tag) {
        case bookmarkTag::goToFirst:
            refreshes = goTo(bookmark->firstFrame);
            break;
        case bookmarkTag::goToLast:
            refreshes = goTo(bookmark->lastFrame);
            break;
        case bookmarkTag::setIn:
            setInPoint(bookmark);
            break;
        case bookmarkTag::setOut:
            setOutPoint(bookmark);
            break;
        case bookmarkTag::fromDuration: // the timecode of the last frame stays as it was, for exports that
                                        // read it
            edits_.editBookmark(movie_, bookmark, {}, [](Bookmark& b) { b.updateLastFrame(); });
            sortBookmarks();
            break;
        case bookmarkTag::mute:
            edits_.editBookmark(movie_, bookmark, {}, [](Bookmark& b) { b.muteBookmark(); });
            break;
        case bookmarkTag::loop:
            refreshes = toggleLoop(bookmark);
            editedInAction_ = true; // no edit, but the row looks otherwise
            break;
        case bookmarkTag::remove:
            removeBookmark(bookmark);
            break;
        default:
            break;
        }
        if (refreshes) edits_.refreshIcons(movie_);
    }
    loadActiveBookmarks();
}

bool ViewerBookmarks::goTo(qint64 frame) {
    if (!player_.isOpen()) return false;
    if (frame > frameCount()) {
        transport_.jumpToLastFrame();
        return false;
    }
    goToFrame(frame);
    return true;
}

void ViewerBookmarks::goToFrame(qint64 frame) {
    transport_.goToFrame(frame, 0.3);
    loadActiveBookmarks();
}

void ViewerBookmarks::setInPoint(const std::shared_ptr<Bookmark>& bookmark) {
    const qint64 frame = time_.currentFrameNumber();
    if (frame < 1) return;
    edits_.editBookmark(movie_, bookmark, {}, [&](Bookmark& b) {
        b.firstFrame = frame;
        b.firstTC = time_.computeTimecodeFromFrameNumber(frame);
        if (b.lastFrame < b.firstFrame) {
            b.lastFrame = b.firstFrame;
            b.lastTC = b.firstTC;
        }
        b.updateDuration();
    });
    waitForTimecode(bookmark, frame,
                    bookmark->lastFrame == frame ? std::optional(frame) : std::nullopt);
    updateRange(bookmark);
}

void ViewerBookmarks::setOutPoint(const std::shared_ptr<Bookmark>& bookmark) {
    const qint64 frame = time_.currentFrameNumber();
    if (frame < 1) return;
    edits_.editBookmark(movie_, bookmark, {}, [&](Bookmark& b) {
        b.lastFrame = frame;
        b.lastTC = time_.computeTimecodeFromFrameNumber(frame);
        if (b.firstFrame > b.lastFrame) {
            b.firstFrame = b.lastFrame;
            b.firstTC = b.lastTC;
        }
        b.updateDuration();
    });
    waitForTimecode(bookmark, bookmark->firstFrame == frame ? std::optional(frame) : std::nullopt, frame);
    updateRange(bookmark);
}

void ViewerBookmarks::updateRange(const std::shared_ptr<Bookmark>& bookmark) {
    if (bookmark->loopStatus) range_.moveRange(bookmark->firstFrame, bookmark->lastFrame);
    sortBookmarks();
}

// Looping is a state of the viewer and never saved, so none of this is an edit.

void ViewerBookmarks::setLooping(Bookmark& bookmark, bool looping) {
    bookmark.loopStatus = looping;
    bookmark.loopImage =
        Image::named(looping ? QStringLiteral("loop_ON.png") : QStringLiteral("loop_OFF.png"));
}

bool ViewerBookmarks::toggleLoop(const std::shared_ptr<Bookmark>& bookmark) {
    if (bookmark->loopStatus) {
        setLooping(*bookmark, false);
        range_.endLoop();
        return false;
    }
    const auto& all = movie_->bookmarkStore;
    const bool oneLooped =
        std::any_of(all.begin(), all.end(), [](const auto& other) { return other->loopStatus; });
    loopsOff();
    if (oneLooped) range_.endLoop();
    if (range_.isLooping()) { // the handles' range goes first: a hand that has learnt it presses twice
        range_.endLoop();
        return true;
    }
    setLooping(*bookmark, true);
    const bool beyondTheEnd = !transport_.isRunning() && bookmark->firstFrame > frameCount();
    range_.loopRange(bookmark->firstFrame, bookmark->lastFrame,
                     beyondTheEnd ? PlaybackRange::Bars::hidden : PlaybackRange::Bars::shown);
    if (beyondTheEnd) transport_.jumpToLastFrame();
    return !beyondTheEnd;
}

void ViewerBookmarks::loopsOff() {
    if (!movie_) return;
    bool oneLooped = false;
    for (const auto& bookmark : movie_->bookmarkStore) {
        if (!bookmark->loopStatus) continue;
        setLooping(*bookmark, false);
        oneLooped = true;
    }
    if (oneLooped && actionDepth_ == 0) Q_EMIT bookmarksChanged();
}

// Menus.

void ViewerBookmarks::setMuteValues(const Sender& menuItem) {
    const bool invert = menuItem.title == QLatin1String("Invert Muted Bookmarks");
    const bool muteAll = menuItem.title == QLatin1String("Mute All Bookmarks");
    const bool unmuteAll = menuItem.title == QLatin1String("Unmute All Bookmarks");
    if (movie_ && (invert || muteAll || unmuteAll)) {
        const OneAction action(*this, muteAll     ? tr("Mute Bookmarks")
                                      : unmuteAll ? tr("Unmute Bookmarks")
                                                  : tr("Invert Muted Bookmarks"));
        const Image unavailable = unavailableImage();
        for (const auto& bookmark : bookmarks()) {
            const bool mute = invert ? !bookmark->mute : muteAll;
            if (mute == bookmark->mute && (!mute || bookmark->activeImage == unavailable)) continue;
            // The item's icons say nothing of muting: looking them up for each would take the square of the time.
            edits_.store().modify(movie_, bookmark, {}, [&](Bookmark& b) {
                b.mute = mute;
                if (mute) b.activeImage = unavailable; // strips, and images of the unmuted, stay: wanted
            });
        }
    }
    loadActiveBookmarks();
}

void ViewerBookmarks::copySelectedBookmarks(const Sender& menuItem) {
    const bool all = menuItem.title == QLatin1String("Copy All Bookmarks");
    if (!all && menuItem.title != QLatin1String("Copy Unmuted Bookmarks")) return;
    Bookmarks taken = bookmarks();
    if (!all) std::erase_if(taken, [](const auto& bookmark) { return bookmark->mute; });
    if (taken.empty()) return; // the earlier copy stays
    copiedBookmarks_ = independentCopies(taken);
    Q_EMIT bookmarksCopied();
}

void ViewerBookmarks::pasteCopiedBookmarks() {
    if (!movie_) return;
    const OneAction action(*this, tr("Paste Bookmarks"));
    if (!copiedBookmarks_.empty()) edits_.addBookmarks(movie_, independentCopies(copiedBookmarks_));
    sortBookmarks();
}

void ViewerBookmarks::goToNextBookmark() {
    if (!movie_ || !player_.isOpen()) return;
    if (const qint64 frame = movie_->nextBookmarkFrameNumber(time_.currentFrameNumber()); frame >= 0)
        goToFrame(frame);
}

void ViewerBookmarks::goToPreviousBookmark() {
    if (!movie_ || !player_.isOpen()) return;
    if (const qint64 frame = movie_->previousBookmarkFrameNumber(time_.currentFrameNumber()); frame >= 0)
        goToFrame(frame);
}

// What is typed into the table: a run of typing into one text is one step.

EditInfo ViewerBookmarks::runOf(const QString& title, const std::shared_ptr<Bookmark>& bookmark) {
    const RecordId record = edits_.store().records().idOf(bookmark);
    return {title, EditKind::step, title + QLatin1Char('/') + QString::number(record)};
}

void ViewerBookmarks::setOverlayString(const std::shared_ptr<Bookmark>& bookmark, const QString& text) {
    if (isOfThisMovie(bookmark) && bookmark->overlayString != text)
        edits_.editBookmark(movie_, bookmark, runOf(tr("Bookmark Text"), bookmark),
                            [&](Bookmark& edited) { edited.overlayString = text; });
}

void ViewerBookmarks::setOverlayString2(const std::shared_ptr<Bookmark>& bookmark, const QString& text) {
    if (isOfThisMovie(bookmark) && bookmark->overlayString2 != text)
        edits_.editBookmark(movie_, bookmark, runOf(tr("Bookmark Note"), bookmark),
                            [&](Bookmark& edited) { edited.overlayString2 = text; });
}

void ViewerBookmarks::setDuration(const std::shared_ptr<Bookmark>& bookmark, qint64 frames) {
    if (!isOfThisMovie(bookmark) || frames < 1 || bookmark->duration == frames) return;
    const OneAction action(*this, tr("Bookmark Length"));
    edits_.editBookmark(movie_, bookmark, {}, [&](Bookmark& b) {
        b.duration = frames;
        b.updateLastFrame();
    });
    sortBookmarks();
}

} // namespace daylark
