#pragma once

#include "model/Bookmark.h"
#include "model/Movie.h"

#include <QObject>

#include <memory>
#include <vector>

namespace daylark {

class Player;
class ReviewEdits;
class TimeDisplay;
class Transport;
class UserDefaults;

/// The current movie's bookmarks as the viewer works on them: made at the frame on screen, kept sorted, the ones that cover
/// the frame ("active") known after every position change. Interface thread.
class ViewerBookmarks : public QObject {
    Q_OBJECT
public:
    ViewerBookmarks(Player& player, Transport& transport, TimeDisplay& time, ReviewEdits& edits, UserDefaults& defaults,
                    QObject* parent = nullptr);

    void setMovie(const std::shared_ptr<Movie>& movie);
    [[nodiscard]] std::vector<std::shared_ptr<Bookmark>> bookmarks() const; ///< in the movie's order
    void addBookmark();
    bool loadActiveBookmarks(); ///< always true
    void sortBookmarks();
    void removeBookmark(const std::shared_ptr<Bookmark>& bookmark);
    void goToFirstFrameOf(const std::shared_ptr<Bookmark>& bookmark);
    void setOverlayString(const std::shared_ptr<Bookmark>& bookmark, const QString& text);
    void setOverlayString2(const std::shared_ptr<Bookmark>& bookmark, const QString& text);
    void loopsOff(); ///< every looping bookmark of the movie stops looping
    void goToFrame(qint64 frame); ///< lands 0.3 of a frame into the frame

    [[nodiscard]] const std::vector<std::shared_ptr<Bookmark>>& activeBookmarks() const { return active_; }
    [[nodiscard]] QString overlayTextData() const { return overlayText_; }

Q_SIGNALS:
    void bookmarksChanged();
    void activeBookmarksChanged();

private:
    [[nodiscard]] bool isOfThisMovie(const std::shared_ptr<Bookmark>& bookmark) const;
    void afterEdit();

    Player& player_;
    Transport& transport_;
    TimeDisplay& time_;
    ReviewEdits& edits_;
    UserDefaults& defaults_;
    std::shared_ptr<Movie> movie_;
    std::vector<std::shared_ptr<Bookmark>> active_;
    QString overlayText_;
};

} // namespace daylark
