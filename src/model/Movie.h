#pragma once

#include "archive/Archivable.h"
#include "archive/AttributedString.h"
#include "archive/Image.h"
#include "archive/Value.h"
#include "model/Bookmark.h"
#include "model/Drawing.h"
#include "model/Grade.h"
#include "model/MediaTime.h"
#include "model/runs/MovieRun.h"

#include <QByteArray>
#include <QColor>
#include <QString>
#include <QUrl>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace daylark {

/// What a look at the disk says about a movie's file; made on a worker by `checkFile`, put on the record by `applyFileCheck`.
struct FileCheck {
    bool found = false;
    QString path; ///< where the file is now
};
/// What the look needs to know; a plain value.
struct FileReference {
    QString path;
    QByteArray bookmarkData;
    bool networkMode = true;
    std::optional<MovieRun> run = {}; ///< is there as long as one of its pictures is
};
[[nodiscard]] FileCheck checkFile(const FileReference& reference); ///< worker threads

/// One media item and everything that the reviewer recorded about it. May stand in several playlists (one object). Fields are
/// the record; whoever changes them goes through the review store, which announces it. Interface thread.
class Movie : public Archivable {
public:
    Movie(); ///< a record as decoding leaves it before any key is read
    /// A new record for a file; touches no disk. `bookmarkData` was made by `createFileBookmark` on a worker (null: none).
    explicit Movie(const QString& path, const QByteArray& bookmarkData = {});

    QString filenameString, filepathString;
    QUrl filenameURL, filepathURL;
    QByteArray filepathBookmarkData;
    std::optional<Date> fileCreationDate;
    Image thumbnail, instanceIcon, gradeIcon, notesIcon, drawingIcon, bookmarkIcon, flag, grabIcon;
    QString flagString; ///< "900" to "907"
    QString creatingThumbnailText;
    QColor statusColour;
    std::optional<AttributedString> notes, notes2;
    std::map<QString, Drawing> mMovieDrawings; ///< older store, frame key to drawing
    ObjectList<MovieBookmark> mMovieBookmarkArray;
    ObjectList<Bookmark> bookmarkStore;
    qint64 sortOrder = 0;
    qint32 iCount = 0;
    bool mMovieHasBeenVisited = false;
    MediaTime mLastFrameVisited;
    qint64 mThumbnailFrame = 0;
    qint32 mMovieWidth = 0, mMovieHeight = 0;
    float mMovieAspectRatio = 0;
    QString mMovieResolutionString;
    float mMovieDurationSeconds = 0;
    qint64 mMovieDurationFrames = 0;
    qint32 mMovieAdjustedDurationTimeValue = 0;
    float mMovieFPS = 0;
    qint32 mMovieTimeValuePerStep = 0;
    std::optional<Number> movieAspectRatio, frameRate, duration; ///< kept for older sessions
    QString movieAspectRatioString;
    QString fileSizeText, frameRateText, durationText;
    double exposure = 0, contrast = 0, saturation = 0, gamma = 0, brightness = 0, redChannel = 0, greenChannel = 0,
           blueChannel = 0;
    bool applyGrade = false;
    qint32 hasAdjustments = 0;   ///< memory only
    bool shouldRemoveAudioTracks = false, removeVideoTracks = false;
    QString mUserAudioTrack;
    QByteArray mUserAudioTrackBookmarkData;
    bool isModified = false;     ///< memory only: the sound was changed in this run
    bool isOneFrame = false;
    QString inputColourSpace; ///< how its numbers are to be read, as a person gave it; empty: as the file says
    std::optional<Number> firstFrameNumber; ///< the production's number of the first frame, given by hand
    std::optional<MovieRun> frameRun; ///< the item is a run of numbered pictures, its path the first one's

    /// What opens it: its path, or its run's address.
    [[nodiscard]] QString mediaAddress(const RunView& view = {}) const {
        return daylark::mediaAddress(filepathString, frameRun, view);
    }
    /// By how many its frames' numbers follow each other, which its timecode goes by as well.
    [[nodiscard]] qint64 frameStep() const { return frameRun ? frameRun->run.step : 1; }
    /// What it is called where people look: its file's name, or its run's ("sh010.1001-1100#.exr").
    [[nodiscard]] QString shownName() const { return frameRun ? frameRun->run.text() : filenameString; }
    [[nodiscard]] QString fileTitle() const; ///< what files made of it are called after: its name without extension or numbers
    [[nodiscard]] QString linkPath() const; ///< what a link to it names: its path, or its run's pattern beside its pictures
    [[nodiscard]] bool fileIsFound(bool networkMode); ///< `checkFile` and `applyFileCheck` in one; worker-less callers only
    [[nodiscard]] FileReference fileReference(bool networkMode) const;
    void applyFileCheck(const FileCheck& check);

    // The file and its sound. Bookmark data is made by `createFileBookmark` on a worker; no disk here.
    void addAudioFile(const QByteArray& bookmarkData); ///< sound from another file
    void addVideoFile(const QString& path, const QByteArray& bookmarkData); ///< the movie's file is now this one
    [[nodiscard]] bool movieHasUserAudio() const { return !mUserAudioTrackBookmarkData.isEmpty(); }
    void removeOriginalMovieAudio();     ///< the movie's own sound stays silent
    void revertToOriginalMovieAudio();   ///< its own sound and no other
    void removeAddedMovieAudio();        ///< the added sound only; its own may stay silent

    void addICount();
    void removeICount();
    void displayGradeIcon();
    void displayNotesIcon();
    void displayDrawingIcon();
    void displayBookmarkIcon();
    void setDefaultColourOptions();
    [[nodiscard]] Grade grade() const;
    void setGrade(const Grade& grade); ///< the eight numbers only
    void setFlag(int tag); ///< flagString and the flag image by the tag

    void addDrawingToMovie(const Drawing& drawing, const QString& frameKey);
    void removeDrawingFromMovieForFrame(const QString& frameKey);
    static void removeLastStrokesFromBookmarks(const std::vector<std::shared_ptr<Bookmark>>& bookmarks);

    /// The bookmarks that are not muted and cover the frame, in store order; refreshes every bookmark's active state.
    std::vector<std::shared_ptr<Bookmark>> bookmarksForFrame(qint64 frame);
    [[nodiscard]] qint64 previousBookmarkFrameNumber(qint64 frame) const; ///< -1 if none
    [[nodiscard]] qint64 nextBookmarkFrameNumber(qint64 frame) const;     ///< -1 if none
    [[nodiscard]] bool frameIsBookmarked(qint64 frame) const;             ///< looks at the older bookmarks only; wanted
    void removeAllBookmarks();

    [[nodiscard]] const char* archiveClassName() const override { return "Movie"; }
    void encodeWithCoder(Encoder& coder) const override; ///< 58 keys in their order, then our own
    void initWithCoder(const Decoder& coder) override;

private:
    void setSound(const QByteArray& addedAudio, bool removeOwn);
    void encodeFileAndIcons(Encoder& coder) const;
    void encodeProperties(Encoder& coder) const;
    void encodeReview(Encoder& coder) const;
    void decodeFileAndIcons(const Decoder& coder);
    void decodeProperties(const Decoder& coder);
    void decodeReview(const Decoder& coder);
};

/// The label of a movie whose file is not found: four blanks, for the two-line thumbnail label; wanted.
inline const QString fileNotFoundText = QStringLiteral("File Not    Found");

} // namespace daylark
