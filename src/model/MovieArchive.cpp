// How a movie stands in a keyed archive: 58 keys in their order.
#include "model/Movie.h"

#include "archive/Decoder.h"
#include "archive/Encoder.h"
#include "model/DecodedNumbers.h"

namespace daylark {

namespace {

Value drawingsByFrame(const std::map<QString, Drawing>& drawings) {
    Value::Dictionary dictionary;
    dictionary.reserve(drawings.size());
    for (const auto& [frameKey, drawing] : drawings)
        dictionary.emplace_back(frameKey, drawing.toValue());
    return dictionary;
}

/// Older files key by text or by number.
QString drawingFrameKey(const Value& key) {
    if (const Number* number = key.number()) return QString::number(numberToInt64(*number));
    return key.string();
}

std::map<QString, Drawing> drawingsByFrameOf(const Value& value) {
    std::map<QString, Drawing> drawings;
    const Value::Dictionary* dictionary = value.dictionary();
    if (!dictionary) return drawings;
    for (const auto& [key, drawing] : *dictionary)
        if (const QString frameKey = drawingFrameKey(key); !frameKey.isNull())
            drawings.emplace(frameKey, Drawing::fromValue(drawing));
    return drawings;
}

} // namespace

void Movie::encodeWithCoder(Encoder& coder) const {
    encodeFileAndIcons(coder);
    encodeProperties(coder);
    encodeReview(coder);
    // After the 58, and only where there is something to be said: a session without them is the same to the byte.
    if (!inputColourSpace.isEmpty()) coder.encodeString("inputColourSpace", inputColourSpace);
    if (firstFrameNumber) coder.encodeNumber("firstFrameNumber", firstFrameNumber);
    if (frameRun) coder.encode("frameRun", frameRun->toValue());
}

void Movie::encodeFileAndIcons(Encoder& coder) const {
    coder.encodeString("filenameString", filenameString);
    coder.encodeString("filepathString", filepathString);
    coder.encodeUrl("filepathURL", filepathURL);
    coder.encodeData("filepathBookmarkData", filepathBookmarkData);
    coder.encodeData("mUserAudioTrackBookmarkData", mUserAudioTrackBookmarkData);
    coder.encodeUrl("filenameURL", filenameURL);
    coder.encodeImage("thumbnail", thumbnail);
    coder.encodeImage("gradeIcon", gradeIcon);
    coder.encodeImage("instanceIcon", instanceIcon);
    coder.encodeImage("notesIcon", notesIcon);
    coder.encodeImage("drawingIcon", drawingIcon);
    coder.encodeImage("bookmarkIcon", bookmarkIcon);
    coder.encodeImage("grabIcon", grabIcon);
    coder.encodeText("notes", notes);
    coder.encodeText("notes2", notes2);
    coder.encodeImage("flag", flag);
    coder.encodeBool("mMovieHasBeenVisited", mMovieHasBeenVisited);
    coder.encodeString("flagString", flagString);
}

void Movie::encodeProperties(Encoder& coder) const {
    coder.encodeString("fileSizeText", fileSizeText);
    coder.encodeNumber("frameRate", frameRate);
    coder.encodeString("frameRateText", frameRateText);
    coder.encodeNumber("duration", duration);
    coder.encodeString("durationText", durationText);
    coder.encodeFloat("mMovieAspectRatio", mMovieAspectRatio);
    coder.encodeInt("mMovieHeight", mMovieHeight);
    coder.encodeInt("mMovieWidth", mMovieWidth);
    coder.encodeInt("mMovieDurationFrames", mMovieDurationFrames);
    coder.encodeFloat("mMovieDurationSeconds", mMovieDurationSeconds);
    coder.encodeFloat("mMovieFPS", mMovieFPS);
    coder.encodeInt("mMovieTimeValuePerStep", mMovieTimeValuePerStep);
    coder.encodeInt("mMovieAdjustedDurationTimeValue", mMovieAdjustedDurationTimeValue);
    coder.encodeString("creatingThumbnailText", creatingThumbnailText);
    coder.encodeNumber("movieAspectRatio", movieAspectRatio);
    coder.encodeString("movieAspectRatioString", movieAspectRatioString);
    coder.encodeString("mMovieResolutionString", mMovieResolutionString);
    coder.encodeInt("sortOrder", sortOrder);
    coder.encodeInt("iCount", iCount);
}

void Movie::encodeReview(Encoder& coder) const {
    coder.encodeDouble("exposure", exposure);
    coder.encodeDouble("contrast", contrast);
    coder.encodeDouble("saturation", saturation);
    coder.encodeDouble("gamma", gamma);
    coder.encodeDouble("brightness", brightness);
    coder.encodeDouble("redChannel", redChannel);
    coder.encodeDouble("greenChannel", greenChannel);
    coder.encodeDouble("blueChannel", blueChannel);
    coder.encodeBool("applyGrade", applyGrade);
    coder.encodeInt("lastFrameVisitedTimeValue", mLastFrameVisited.value);
    coder.encodeInt("lastFrameVisitedTimeScale",
                    mLastFrameVisited.scale); // whole, whatever its high half holds
    coder.encode("mMovieDrawings", drawingsByFrame(mMovieDrawings));
    coder.encodeList("mMovieBookmarkArray", mMovieBookmarkArray);
    coder.encodeList("bookmarkStore", bookmarkStore);
    coder.encodeBool("shouldRemoveAudioTracks", shouldRemoveAudioTracks);
    coder.encodeBool("removeVideoTracks", removeVideoTracks);
    coder.encodeString("mUserAudioTrack", mUserAudioTrack);
    coder.encodeDate("fileCreationDate", fileCreationDate);
    coder.encodeColour("statusColour", statusColour);
    coder.encodeBool("isOneFrame", isOneFrame);
    coder.encodeInt("thumbnailFrame", mThumbnailFrame);
}

void Movie::initWithCoder(const Decoder& coder) {
    decodeFileAndIcons(coder);
    decodeProperties(coder);
    decodeReview(coder);
    frameRun = MovieRun::fromValue(coder.decode("frameRun"));
    isModified = false;
    hasAdjustments = 0;
}

void Movie::decodeFileAndIcons(const Decoder& coder) {
    filenameString = coder.decodeString("filenameString");
    filepathString = coder.decodeString("filepathString");
    filepathURL = coder.decodeUrl("filepathURL");
    filepathBookmarkData = coder.decodeData("filepathBookmarkData");
    mUserAudioTrackBookmarkData = coder.decodeData("mUserAudioTrackBookmarkData");
    filenameURL = coder.decodeUrl("filenameURL");
    thumbnail = coder.decodeImage("thumbnail");
    // The path read as a number becomes the height until the real key below, and stays where that key is
    // missing: sessions without it were always shown so.
    mMovieHeight = coder.decodeIntegerValue("filepathString");
    gradeIcon = coder.decodeImage("gradeIcon");
    instanceIcon = coder.decodeImage("instanceIcon");
    notesIcon = coder.decodeImage("notesIcon");
    drawingIcon = coder.decodeImage("drawingIcon");
    bookmarkIcon = coder.decodeImage("bookmarkIcon");
    grabIcon = coder.decodeImage("grabIcon");
    notes = coder.decodeText("notes");
    notes2 = coder.decodeText("notes2");
    flag = coder.decodeImage("flag");
    mMovieHasBeenVisited = coder.decodeBool("mMovieHasBeenVisited");
    flagString = coder.decodeString("flagString");
}

void Movie::decodeProperties(const Decoder& coder) {
    fileSizeText = coder.decodeString("fileSizeText");
    frameRate = coder.decodeNumber("frameRate");
    frameRateText = coder.decodeString("frameRateText");
    duration = coder.decodeNumber("duration");
    durationText = coder.decodeString("durationText");
    mMovieAspectRatio = decoded::finite(coder, "mMovieAspectRatio");
    if (const Value height = coder.decode("mMovieHeight"); !height.isNil())
        mMovieHeight = height.number() ? qint32(numberToInt64(*height.number())) : 0;
    mMovieWidth = coder.decodeInt32("mMovieWidth");
    mMovieDurationFrames = decoded::frames(coder, "mMovieDurationFrames");
    mMovieDurationSeconds = decoded::finite(coder, "mMovieDurationSeconds");
    mMovieFPS = decoded::rate(coder, "mMovieFPS");
    mMovieTimeValuePerStep = coder.decodeInt32("mMovieTimeValuePerStep");
    mMovieAdjustedDurationTimeValue = coder.decodeInt32("mMovieAdjustedDurationTimeValue");
    creatingThumbnailText = coder.decodeString("creatingThumbnailText");
    movieAspectRatio = coder.decodeNumber("movieAspectRatio");
    movieAspectRatioString = coder.decodeString("movieAspectRatioString");
    mMovieResolutionString = coder.decodeString("mMovieResolutionString");
    sortOrder = coder.decodeInt32("sortOrder"); // written with 64 bits, read with 32, as every reader does
    iCount = std::clamp(coder.decodeInt32("iCount"), 0, 1 << 30); // playlists that it stands in
}

void Movie::decodeReview(const Decoder& coder) {
    exposure = decoded::finite(coder, "exposure", 0);
    contrast = decoded::finite(coder, "contrast", 1);
    saturation = decoded::finite(coder, "saturation", 1);
    gamma = decoded::finite(coder, "gamma", 1);
    brightness = decoded::finite(coder, "brightness", 0);
    redChannel = decoded::finite(coder, "redChannel", 1);
    greenChannel = decoded::finite(coder, "greenChannel", 1);
    blueChannel = decoded::finite(coder, "blueChannel", 1);
    applyGrade = coder.decodeBool("applyGrade");
    mLastFrameVisited = {coder.decodeInt64("lastFrameVisitedTimeValue"),
                         coder.decodeInt64("lastFrameVisitedTimeScale"), 0};
    mMovieDrawings = drawingsByFrameOf(coder.decode("mMovieDrawings"));
    mMovieBookmarkArray = coder.decodeList<MovieBookmark>("mMovieBookmarkArray");
    bookmarkStore = coder.decodeList<Bookmark>("bookmarkStore");
    removeVideoTracks =
        coder.decodeBool("removeVideoTracks"); // before the audio's, unlike in writing: readers do so
    shouldRemoveAudioTracks = coder.decodeBool("shouldRemoveAudioTracks");
    mUserAudioTrack = coder.decodeString("mUserAudioTrack");
    fileCreationDate = coder.decodeDate("fileCreationDate");
    statusColour = coder.decodeColour("statusColour");
    isOneFrame = coder.decodeBool("isOneFrame");
    mThumbnailFrame = decoded::frames(coder, "thumbnailFrame");
    inputColourSpace = coder.decodeString("inputColourSpace");
    firstFrameNumber = coder.decodeNumber("firstFrameNumber");
}

} // namespace daylark
