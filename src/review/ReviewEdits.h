#pragma once

#include "review/ReviewStore.h"
#include "review/UndoHistory.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace daylark {

enum class NotesField { notes, notes2 };

/// What a reviewer does to items and bookmarks, in the words of the program, each as one edit of the store; and
/// the store's changes told by record and field, for views. It owns the store and the history of its steps. Made
/// by main (or a test) before all that edits; interface thread.
class ReviewEdits : public QObject {
    Q_OBJECT
public:
    explicit ReviewEdits(QObject* parent = nullptr);

    using Movies = std::vector<std::shared_ptr<Movie>>;
    using Bookmarks = std::vector<std::shared_ptr<Bookmark>>;

    [[nodiscard]] ReviewStore& store() { return store_; }
    [[nodiscard]] UndoHistory& history() { return history_; }

    void setFlag(const Movies& movies, int tag);
    /// A run of typing into one field of one item is one step.
    void setNotes(const std::shared_ptr<Movie>& movie, NotesField field, const AttributedString& text);
    /// `control` names the slider or field that is turned: a drag of it is one step; empty: a step of its own.
    void setGrade(const std::shared_ptr<Movie>& movie, const Grade& grade, const QString& control = {});
    /// The same grade onto several, and switched on where `apply` says so: one step.
    void pasteGrade(const Movies& movies, const Grade& grade, bool apply);
    /// How its numbers are to be read; empty: as the file says.
    void setInputSpace(const std::shared_ptr<Movie>& movie, const QString& space);
    /// The production's number of its first frame; none: by its pictures, else by the preference.
    void setFirstFrameNumber(const std::shared_ptr<Movie>& movie, std::optional<qint64> number);
    void setApplyGrade(const std::shared_ptr<Movie>& movie, bool apply);

    void addBookmarks(const std::shared_ptr<Movie>& movie, const Bookmarks& bookmarks);
    void removeBookmarks(const std::shared_ptr<Movie>& movie, const Bookmarks& bookmarks);
    /// Changes one bookmark by `edit` (frames, texts, mute, drawing) and refreshes the movie's icons.
    void editBookmark(const std::shared_ptr<Movie>& movie, const std::shared_ptr<Bookmark>& bookmark,
                      const EditInfo& info, const std::function<void(Bookmark&)>& edit);
    void sortBookmarks(const std::shared_ptr<Movie>& movie); ///< by first frame, then last

    /// By which this session's pictures are brought to a display: a file's path or a name; empty: as the preference says.
    void setColourConfiguration(const QString& configuration);
    [[nodiscard]] const QString& colourConfiguration() const { return store_.records().colourConfiguration(); }
    void setPlaylistName(const std::shared_ptr<Playlist>& playlist, const QString& name);

    /// What the program itself finds out or refreshes; no step.
    bool refresh(const std::shared_ptr<Movie>& movie, const std::function<void(Movie&)>& edit) {
        return store_.modify(movie, {{}, EditKind::background}, edit);
    }
    void refreshIcons(const std::shared_ptr<Movie>& movie); ///< notes, grade, drawing and bookmark icon

Q_SIGNALS:
    /// A field of an item changed, by whomever; an icon that follows another field of the same edit is not told
    /// of.
    void movieChanged(const std::shared_ptr<daylark::Movie>& movie, const QString& field);
    void bookmarkChanged(const std::shared_ptr<daylark::Movie>& movie,
                         const std::shared_ptr<daylark::Bookmark>& bookmark);
    void colourConfigurationChanged(); ///< the session's, or it is another session

private:
    void tell(const Edit& edit);
    void refreshBookmarkIcons(const std::shared_ptr<Movie>& movie);

    ReviewStore store_;
    UndoHistory history_{store_};
};

} // namespace daylark
