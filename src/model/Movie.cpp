#include "model/Movie.h"

#include "model/StatusCodes.h"
#include "platform/FileBookmark.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>

namespace daylark {

namespace {

/// An icon that is shown already stays the one that it is: from a session file it has its bitmap.
void showIcon(Image& icon, bool shown, const char* name) {
    const Image wanted = shown ? Image::named(QString::fromLatin1(name)) : Image();
    if (icon.isNil() != wanted.isNil() || icon.name() != wanted.name()) icon = wanted;
}

QColor missingFileColour() {
    return QColor::fromRgbF(1.0F, 0.5F, 0.0F); // orange
}

/// A path that ends in "/" still names something.
QString lastPathComponent(QString path) {
    while (path.size() > 1 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    return path == QLatin1String("/") ? path : QFileInfo(path).fileName();
}

bool hasText(const std::optional<AttributedString>& text) {
    return text && text->length() > 0;
}

/// The first picture may be the one that is missing.
bool anyPictureExists(const QString& path, const MovieRun& run) {
    const QDir folder = QFileInfo(path).dir();
    if (folder.exists(run.run.nameOf(run.run.first)) || folder.exists(run.run.nameOf(run.run.last))) return true;
    QDirIterator walk(folder.path(), QDir::Files);
    while (walk.hasNext()) {
        walk.next();
        const auto number = run.run.numberIn(walk.fileName());
        if (number && run.run.frameOf(*number)) return true;
    }
    return false;
}

/// The run that an item is once its file is this one: the same where the name is one of its own, one of other names where only
/// what stands about the number differs (another version), none for anything else.
std::optional<MovieRun> runUnderName(const std::optional<MovieRun>& run, const QString& name) {
    if (!run || run->run.numberIn(name)) return run;
    const FrameRun& before = run->run;
    const QString first = before.nameOf(before.first);
    const QString figures = first.mid(before.prefix.size(), first.size() - before.prefix.size() - before.suffix.size());
    const qsizetype at = name.lastIndexOf(figures);
    const auto hasDigit = [&name](qsizetype place) { return place >= 0 && place < name.size() && name[place].isDigit(); };
    if (at < 0 || hasDigit(at - 1) || hasDigit(at + figures.size())) return std::nullopt;
    MovieRun renamed = *run;
    renamed.run.prefix = name.left(at);
    renamed.run.suffix = name.mid(at + figures.size());
    return renamed;
}

} // namespace

FileCheck checkFile(const FileReference& reference) {
    if (reference.run && !reference.path.isEmpty() && anyPictureExists(reference.path, *reference.run))
        return {true, reference.path};
    if (reference.networkMode)
        return {!reference.path.isEmpty() && QFileInfo::exists(reference.path), reference.path};
    const Result<QString> resolved = resolveFileBookmark(reference.bookmarkData, reference.path);
    return resolved ? FileCheck{true, *resolved} : FileCheck{false, reference.path};
}

Movie::Movie() {
    mLastFrameVisited = {0, 0, 0};
    mMovieBookmarkArray.isNil = true;
    bookmarkStore.isNil = true;
}

Movie::Movie(const QString& path, const QByteArray& bookmarkData)
    : filenameString(lastPathComponent(path))
    , filepathString(path)
    , filepathURL(QUrl::fromLocalFile(path))
    , filepathBookmarkData(bookmarkData)
    , grabIcon(Image::named(QStringLiteral("dl-grabIcon-01.png")))
    , flagString(QString::number(status::none))
    , creatingThumbnailText(QStringLiteral(""))
    , statusColour(Qt::white)
    , notes(AttributedString())
    , notes2(AttributedString())
    , sortOrder(99999) // after every ordered movie, until the playlist numbers it
    , mLastFrameVisited{0, 600, 0}
    , mThumbnailFrame(-1) {
    setDefaultColourOptions();
}

bool Movie::fileIsFound(bool networkMode) {
    const FileCheck check = checkFile(fileReference(networkMode));
    applyFileCheck(check);
    return check.found;
}

QString Movie::linkPath() const {
    const qsizetype end = filepathString.lastIndexOf(QLatin1Char('/')) + 1;
    return frameRun ? filepathString.left(end) + frameRun->run.addressText() : filepathString;
}

QString Movie::fileTitle() const {
    return frameRun ? frameRun->run.title() : QFileInfo(filenameString).completeBaseName();
}

FileReference Movie::fileReference(bool networkMode) const {
    const bool byUrl = networkMode && filepathURL.isLocalFile();
    return {byUrl ? filepathURL.toLocalFile() : filepathString, filepathBookmarkData, networkMode, frameRun};
}

void Movie::applyFileCheck(const FileCheck& check) {
    if (!check.found) { // the paths stay as they were
        creatingThumbnailText = fileNotFoundText;
        statusColour = missingFileColour();
        return;
    }
    creatingThumbnailText = QStringLiteral("");
    statusColour = Qt::white;
    filepathString = check.path;
    filepathURL = QUrl::fromLocalFile(check.path);
    filenameString = lastPathComponent(check.path);
}

void Movie::setSound(const QByteArray& addedAudio, bool removeOwn) {
    if (mUserAudioTrackBookmarkData == addedAudio && shouldRemoveAudioTracks == removeOwn)
        return; // a movie that is opened again silences its sound again: no change by anybody
    mUserAudioTrackBookmarkData = addedAudio;
    shouldRemoveAudioTracks = removeOwn;
    isModified = true;
}

void Movie::addAudioFile(const QByteArray& bookmarkData) {
    setSound(bookmarkData, shouldRemoveAudioTracks);
}

void Movie::removeOriginalMovieAudio() {
    setSound(mUserAudioTrackBookmarkData, true);
}

void Movie::revertToOriginalMovieAudio() {
    setSound({}, false);
}

void Movie::removeAddedMovieAudio() {
    setSound({}, shouldRemoveAudioTracks);
}

void Movie::addVideoFile(const QString& path, const QByteArray& bookmarkData) {
    filepathBookmarkData = bookmarkData;
    filepathURL = QUrl::fromLocalFile(path);
    filepathString = path;
    filenameString = lastPathComponent(path); // found state and properties are left to the next look
    frameRun = runUnderName(frameRun, filenameString);
}

void Movie::addICount() {
    ++iCount;
    if (iCount >= 1) instanceIcon = Image::named(QStringLiteral("copy 03 white.png"));
}

void Movie::removeICount() {
    if (iCount > 0) --iCount;
    if (iCount == 0) instanceIcon = Image();
}

void Movie::displayGradeIcon() {
    const bool neutral = grade().isNeutral(); // exact comparisons: wanted
    showIcon(gradeIcon, !neutral, "dl-levelsActive-01.png");
    if (neutral) applyGrade = true;
}

void Movie::displayNotesIcon() {
    showIcon(notesIcon, hasText(notes) || hasText(notes2), "dl-notesActive-03.png");
}

void Movie::displayDrawingIcon() {
    const bool drawn = std::any_of(bookmarkStore.begin(), bookmarkStore.end(),
                                   [](const auto& bookmark) { return bookmark->hasDrawings(); });
    showIcon(drawingIcon, drawn, "dl-brushActive-01.png");
}

void Movie::displayBookmarkIcon() {
    showIcon(bookmarkIcon, !bookmarkStore.empty(), "bookmark_on.png");
}

void Movie::setDefaultColourOptions() {
    setGrade(Grade());
    applyGrade = true;
    displayGradeIcon();
}

Grade Movie::grade() const {
    return {exposure, contrast, saturation, gamma, brightness, redChannel, greenChannel, blueChannel};
}

void Movie::setGrade(const Grade& grade) {
    exposure = grade.exposure;
    contrast = grade.contrast;
    saturation = grade.saturation;
    gamma = grade.gamma;
    brightness = grade.brightness;
    redChannel = grade.redChannel;
    greenChannel = grade.greenChannel;
    blueChannel = grade.blueChannel;
}

void Movie::setFlag(int tag) {
    flagString = QString::number(tag);
    if (tag == status::none)
        flag = Image();
    else if (const QString name = status::flagImageName(flagString); !name.isEmpty())
        flag = Image::named(name); // any other tag leaves the image: wanted
}

void Movie::addDrawingToMovie(const Drawing& drawing, const QString& frameKey) {
    if (const auto found = mMovieDrawings.find(frameKey); found != mMovieDrawings.end())
        found->second.append(drawing);
    else
        mMovieDrawings.emplace(frameKey, drawing);
    displayDrawingIcon(); // looks at the bookmarks, not at this store: wanted
}

void Movie::removeDrawingFromMovieForFrame(const QString& frameKey) {
    mMovieDrawings.erase(frameKey);
    displayDrawingIcon();
}

void Movie::removeLastStrokesFromBookmarks(const std::vector<std::shared_ptr<Bookmark>>& bookmarks) {
    const auto last = std::find_if(bookmarks.rbegin(), bookmarks.rend(),
                                   [](const auto& bookmark) { return bookmark && bookmark->hasDrawings(); });
    if (last != bookmarks.rend())
        (*last)->drawings.removeLastStroke(); // an emptied drawing keeps its five empty lists: wanted
}

std::vector<std::shared_ptr<Bookmark>> Movie::bookmarksForFrame(qint64 frame) {
    std::vector<std::shared_ptr<Bookmark>> covering;
    for (const auto& bookmark : bookmarkStore) {
        if (bookmark->mute) continue; // keeps its images
        const bool covers = bookmark->firstFrame <= frame && frame <= bookmark->lastFrame;
        bookmark->setActive(covers);
        if (covers) covering.push_back(bookmark);
    }
    return covering;
}

qint64 Movie::previousBookmarkFrameNumber(qint64 frame) const {
    std::optional<qint64> previous;
    for (const auto& bookmark : bookmarkStore)
        if (!bookmark->mute && bookmark->firstFrame < frame)
            previous = std::max(previous.value_or(bookmark->firstFrame), bookmark->firstFrame);
    return previous.value_or(-1);
}

qint64 Movie::nextBookmarkFrameNumber(qint64 frame) const {
    std::optional<qint64> next;
    for (const auto& bookmark : bookmarkStore)
        if (!bookmark->mute && bookmark->firstFrame > frame)
            next = std::min(next.value_or(bookmark->firstFrame), bookmark->firstFrame);
    return next.value_or(-1);
}

bool Movie::frameIsBookmarked(qint64 frame) const {
    return std::any_of(mMovieBookmarkArray.begin(), mMovieBookmarkArray.end(), [frame](const auto& bookmark) {
        return bookmark->mFrameNumber && numberToInt64(*bookmark->mFrameNumber) == frame;
    });
}

void Movie::removeAllBookmarks() {
    bookmarkStore.clear();
    bookmarkStore.isNil = false;
}

} // namespace daylark
