#include "viewer/ViewerBookmarks.h"

#include "model/ReviewEdits.h"
#include "platform/UserDefaults.h"
#include "playback/Player.h"
#include "viewer/TimeDisplay.h"
#include "viewer/Transport.h"

#include <algorithm>

namespace daylark {

ViewerBookmarks::ViewerBookmarks(Player& player, Transport& transport, TimeDisplay& time, ReviewEdits& edits,
                                 UserDefaults& defaults, QObject* parent)
    : QObject(parent)
    , player_(player)
    , transport_(transport)
    , time_(time)
    , edits_(edits)
    , defaults_(defaults) {
    connect(&player_, &Player::positionChanged, this, &ViewerBookmarks::loadActiveBookmarks);
    connect(&transport_, &Transport::actionDone, this, &ViewerBookmarks::loadActiveBookmarks);
    // Edits by others (the library, a panel) show here as well.
    connect(&edits_, &ReviewEdits::bookmarkChanged, this, [this](const std::shared_ptr<Movie>& movie) {
        if (movie && movie == movie_) afterEdit();
    });
    connect(&edits_, &ReviewEdits::movieChanged, this,
            [this](const std::shared_ptr<Movie>& movie, const QString& field) {
                if (movie && movie == movie_ && field == QLatin1String("bookmarkStore")) afterEdit();
            });
}

void ViewerBookmarks::setMovie(const std::shared_ptr<Movie>& movie) {
    movie_ = movie;
    loadActiveBookmarks();
    Q_EMIT bookmarksChanged();
}

std::vector<std::shared_ptr<Bookmark>> ViewerBookmarks::bookmarks() const {
    return movie_ ? std::vector<std::shared_ptr<Bookmark>>(movie_->bookmarkStore.begin(),
                                                           movie_->bookmarkStore.end())
                  : std::vector<std::shared_ptr<Bookmark>>();
}

bool ViewerBookmarks::isOfThisMovie(const std::shared_ptr<Bookmark>& bookmark) const {
    return bookmark && movie_ &&
           std::find(movie_->bookmarkStore.begin(), movie_->bookmarkStore.end(), bookmark) !=
               movie_->bookmarkStore.end();
}

void ViewerBookmarks::afterEdit() {
    loadActiveBookmarks();
    Q_EMIT bookmarksChanged();
}

void ViewerBookmarks::addBookmark() {
    if (!movie_ || !player_.isOpen()) return;
    const qint64 frame = time_.currentFrameNumber();
    const qint64 duration = defaults_.integerForKey(QStringLiteral("bookmarkDuration"));
    const auto bookmark = std::make_shared<Bookmark>(frame, duration, time_.framesPerSecond());
    bookmark->firstTC = time_.computeTimecodeFromFrameNumber(frame);
    bookmark->lastTC = time_.computeTimecodeFromFrameNumber(frame + duration - 1);
    edits_.addBookmarks(movie_, {bookmark});
    sortBookmarks();
    loadActiveBookmarks();
    movie_->displayBookmarkIcon();
}

bool ViewerBookmarks::loadActiveBookmarks() {
    std::vector<std::shared_ptr<Bookmark>> active;
    if (movie_) active = movie_->bookmarksForFrame(time_.currentFrameNumber());
    QString text;
    for (const auto& bookmark : active)
        if (!bookmark->overlayString.isNull())
            text +=
                QStringLiteral("  ") + bookmark->overlayString; // two blanks before the first as well; wanted
    if (active != active_ || text != overlayText_) {
        active_ = std::move(active);
        overlayText_ = text;
        Q_EMIT activeBookmarksChanged();
    }
    return true;
}

void ViewerBookmarks::sortBookmarks() {
    if (!movie_) return;
    edits_.sortBookmarks(movie_);
    Q_EMIT bookmarksChanged();
}

void ViewerBookmarks::removeBookmark(const std::shared_ptr<Bookmark>& bookmark) {
    if (!isOfThisMovie(bookmark)) return;
    edits_.removeBookmarks(movie_, {bookmark});
    movie_->displayDrawingIcon();
    movie_->displayBookmarkIcon();
    afterEdit();
}

void ViewerBookmarks::goToFirstFrameOf(const std::shared_ptr<Bookmark>& bookmark) {
    if (!isOfThisMovie(bookmark) || !player_.isOpen()) return;
    if (bookmark->firstFrame > player_.index().count()) return transport_.jumpToLastFrame();
    goToFrame(bookmark->firstFrame);
    movie_->displayDrawingIcon();
    movie_->displayBookmarkIcon();
}

void ViewerBookmarks::goToFrame(qint64 frame) {
    transport_.goToFrame(frame, 0.3);
    loadActiveBookmarks();
}

void ViewerBookmarks::setOverlayString(const std::shared_ptr<Bookmark>& bookmark, const QString& text) {
    if (isOfThisMovie(bookmark) && bookmark->overlayString != text)
        edits_.editBookmark(movie_, bookmark, [&](Bookmark& edited) { edited.overlayString = text; });
}

void ViewerBookmarks::setOverlayString2(const std::shared_ptr<Bookmark>& bookmark, const QString& text) {
    if (isOfThisMovie(bookmark) && bookmark->overlayString2 != text)
        edits_.editBookmark(movie_, bookmark, [&](Bookmark& edited) { edited.overlayString2 = text; });
}

// Looping is a state of the viewer and never saved, so this is no edit.
void ViewerBookmarks::loopsOff() {
    if (!movie_) return;
    for (const auto& bookmark : movie_->bookmarkStore) {
        if (bookmark && bookmark->loopStatus) {
            bookmark->loopStatus = false;
            bookmark->loopImage = Image::named(QStringLiteral("loop_OFF.png"));
        }
    }
}

} // namespace daylark
