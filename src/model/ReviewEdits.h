#pragma once

#include "model/Movie.h"
#include "model/Playlist.h"

#include <QObject>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

namespace daylark {

enum class NotesField { notes, notes2 };

/// The one seam through which review data is changed: every operation of the library and the viewer that the user would call
/// an edit ends in one of these, and each announces record, field and what stood there before. The modified mark and the
/// temporary session hang on it; undo and a crash journal can. Owned by main; interface thread.
class ReviewEdits : public QObject {
    Q_OBJECT
public:
    explicit ReviewEdits(QObject* parent = nullptr) : QObject(parent) {}

    using Movies = std::vector<std::shared_ptr<Movie>>;

    void setFlag(const Movies& movies, int tag);
    void setNotes(const std::shared_ptr<Movie>& movie, NotesField field, const AttributedString& text);
    void setGrade(const std::shared_ptr<Movie>& movie, const Grade& grade);
    void setApplyGrade(const std::shared_ptr<Movie>& movie, bool apply);

    void addBookmarks(const std::shared_ptr<Movie>& movie, const std::vector<std::shared_ptr<Bookmark>>& bookmarks);
    void removeBookmarks(const std::shared_ptr<Movie>& movie, const std::vector<std::shared_ptr<Bookmark>>& bookmarks);
    /// Changes one bookmark by `edit` (frames, texts, mute, drawing) and refreshes the movie's icons.
    void editBookmark(const std::shared_ptr<Movie>& movie, const std::shared_ptr<Bookmark>& bookmark,
                      const std::function<void(Bookmark&)>& edit);
    void sortBookmarks(const std::shared_ptr<Movie>& movie); ///< by first frame, then last; announces only a real change of order

    void setPlaylistName(const std::shared_ptr<Playlist>& playlist, const QString& name);
    void setMovieList(const std::shared_ptr<Playlist>& playlist, const ObjectList<Movie>& list);

Q_SIGNALS:
    /// `field` is the record's field name; `before` what stood there (an invalid variant where it is not a simple value).
    void movieChanged(const std::shared_ptr<daylark::Movie>& movie, const QString& field, const QVariant& before);
    void bookmarkChanged(const std::shared_ptr<daylark::Movie>& movie, const std::shared_ptr<daylark::Bookmark>& bookmark);
    void playlistChanged(const std::shared_ptr<daylark::Playlist>& playlist, const QString& field, const QVariant& before);
};

} // namespace daylark
