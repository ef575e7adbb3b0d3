#pragma once

#include "model/Bookmark.h"
#include "model/Drawing.h"
#include "model/Movie.h"
#include "model/runs/FrameNumbers.h"
#include "platform/Sender.h"
#include "review/Edit.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

namespace daylark {

class Alerts;
class PlaybackRange;
class CurrentMovie;
class Player;
class ReviewEdits;
class TimeDisplay;
class Transport;
class Preferences;

/// What the buttons of a bookmark's row are told apart by.
namespace bookmarkTag {
inline constexpr int goToFirst = 900, setIn = 901, setOut = 902, fromDuration = 903, mute = 904, loop = 907,
                     goToLast = 908, remove = 909;
}

/// The current movie's bookmarks as the viewer works on them: made at the frame on screen, kept sorted,
/// moved, muted, looped, copied to other movies; the ones that cover the frame ("active") with their texts
/// and drawings are known after every position change and every edit, by whomever. One action of a person is
/// announced once, however many bookmarks it touches. Owned by the viewer's controller; interface thread.
class ViewerBookmarks : public QObject {
    Q_OBJECT
public:
    using Bookmarks = std::vector<std::shared_ptr<Bookmark>>;

    ViewerBookmarks(CurrentMovie& current, Player& player, Transport& transport, TimeDisplay& time,
                    PlaybackRange& range, ReviewEdits& edits, Alerts& alerts, Preferences& preferences,
                    QObject* parent = nullptr);

    [[nodiscard]] Bookmarks bookmarks() const; ///< in the movie's order, which is the table's

    void addBookmark();
    void addBookmarkWithDrawing(const Drawing& drawing);
    void addBookmarkFromRange(); ///< over the frames that playback keeps to, handles' or a bookmark's; none: nothing
    void deleteAllBookmarks();    ///< asks
    void deleteActiveBookmarks(); ///< does not ask
    bool loadActiveBookmarks();   ///< always true
    void sortBookmarks();         ///< by first frame, then last
    /// A row's button, told by its tag; an unknown tag only refreshes.
    void bookmarkButtonPress(const Sender& button, qsizetype row);
    void setMuteValues(const Sender& menuItem);
    void copySelectedBookmarks(const Sender& menuItem);
    void pasteCopiedBookmarks(); ///< a fresh copy each time
    void goToNextBookmark();
    void goToPreviousBookmark();
    void goToFrame(qint64 frame); ///< lands 0.3 of a frame into the frame

    void removeBookmark(const std::shared_ptr<Bookmark>& bookmark);
    void setOverlayString(const std::shared_ptr<Bookmark>& bookmark, const QString& text);
    void setOverlayString2(const std::shared_ptr<Bookmark>& bookmark, const QString& text);
    /// Frames, at least 1, else ignored; the last frame follows as by the button "from duration".
    void setDuration(const std::shared_ptr<Bookmark>& bookmark, qint64 frames);
    [[nodiscard]] FrameNumbers frameNumbers() const { return numbers_; } ///< what the production calls the movie's frames
    [[nodiscard]] qint64 currentFrame() const; ///< on screen, counted from 1; -1 without a movie
    /// Of the movie on screen something was marked whose timecode is not known yet.
    [[nodiscard]] bool waitsForTimecode() const;
    /// The movie's timecode track was read (none: it has none), on screen or not: what waited gets its texts.
    void timecodeRead(const std::shared_ptr<Movie>& movie, const std::optional<SmpteTime>& start);
    void loopsOff(); ///< every looping bookmark of the movie stops looping; the range itself is not touched

    [[nodiscard]] const Bookmarks& activeBookmarks() const { return active_; }
    [[nodiscard]] const Bookmarks& copiedBookmarks() const { return copiedBookmarks_; }
    /// Texts of the active bookmarks, each after two blanks; empty when there are none.
    [[nodiscard]] QString overlayTextData() const { return overlayText_; }
    /// The strokes of all active bookmarks, one list after the other in bookmark order.
    [[nodiscard]] const Drawing& activeDrawings() const { return drawings_; }

Q_SIGNALS:
    void bookmarksChanged();
    void activeBookmarksChanged(); ///< which are active, or their texts
    void activeDrawingsChanged();
    void bookmarksCopied(); ///< others can be pasted
    void frameNumbersChanged();

private:
    void setMovie(const std::shared_ptr<Movie>& movie);
    class OneAction;

    [[nodiscard]] bool isOfThisMovie(const std::shared_ptr<Bookmark>& bookmark) const;
    [[nodiscard]] qint64 frameCount() const; ///< the sample index's when open, else the record's
    void add(qint64 first, qint64 last, const Drawing* drawing, const QString& title);
    void addHere(const Drawing* drawing);
    void waitForTimecode(const std::shared_ptr<Bookmark>& bookmark, std::optional<qint64> first,
                         std::optional<qint64> last);
    void edited();
    void refreshActive(bool drawingsMayDiffer);
    [[nodiscard]] static QString titleOf(int tag); ///< what a row's button does, for the step
    [[nodiscard]] EditInfo runOf(const QString& title, const std::shared_ptr<Bookmark>& bookmark);
    [[nodiscard]] bool goTo(qint64 frame); ///< false: beyond the end, the last frame is shown instead
    void setInPoint(const std::shared_ptr<Bookmark>& bookmark);
    void setOutPoint(const std::shared_ptr<Bookmark>& bookmark);
    void updateRange(const std::shared_ptr<Bookmark>& bookmark);
    [[nodiscard]] bool toggleLoop(const std::shared_ptr<Bookmark>& bookmark); ///< false: no refresh follows
    void setLooping(Bookmark& bookmark, bool looping);

    Player& player_;
    Transport& transport_;
    TimeDisplay& time_;
    PlaybackRange& range_;
    ReviewEdits& edits_;
    Alerts& alerts_;
    Preferences& preferences_;
    std::shared_ptr<Movie> movie_;
    FrameNumbers numbers_;
    Bookmarks active_, copiedBookmarks_;
    QString overlayText_;
    Drawing drawings_;
    /// Ends that were marked before the timecode track was read, as frames.
    struct Untimed {
        std::weak_ptr<Movie> movie;
        std::weak_ptr<Bookmark> bookmark;
        std::optional<qint64> first, last;
    };
    std::vector<Untimed> untimed_;
    int actionDepth_ = 0; ///< edits inside an action are announced at its end
    bool editedInAction_ = false;
};

} // namespace daylark
