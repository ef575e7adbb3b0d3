#include "model/Bookmark.h"

#include "archive/Decoder.h"
#include "archive/Encoder.h"
#include "model/DecodedNumbers.h"

#include <QUuid>

namespace daylark {

namespace {

/// Frame arithmetic wraps at 64 bits: records from files may hold any numbers.
qint64 frameSum(qint64 a, qint64 b) {
    return qint64(quint64(a) + quint64(b));
}
qint64 frameDifference(qint64 a, qint64 b) {
    return qint64(quint64(a) - quint64(b));
}

Image activeImageNamed(const char* name) {
    return Image::named(QString::fromLatin1(name));
}

} // namespace

Bookmark::Bookmark(qint64 first, qint64 length, float framesPerSecond)
    : firstFrame(first)
    , lastFrame(length < 1 ? first : frameSum(first, length - 1))
    , duration(length)
    , activeImage(activeImageNamed("NSStatusNone"))
    , fps(framesPerSecond)
    , uniqueKey(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper()) {}

void Bookmark::updateFirstFrame() {
    // One frame longer than `duration`: wanted.
    firstFrame = lastFrame >= firstFrame ? frameDifference(lastFrame, duration) : lastFrame;
}

void Bookmark::updateLastFrame() {
    lastFrame = firstFrame <= lastFrame ? frameSum(firstFrame, frameDifference(duration, 1)) : firstFrame;
}

void Bookmark::updateDuration() {
    duration = frameDifference(frameSum(lastFrame, 1), firstFrame);
}

void Bookmark::setActive(bool active) {
    activeImage = activeImageNamed(active ? "NSStatusAvailable" : "NSStatusNone");
    activeStrip = active ? Image::named(QStringLiteral("greenBar_05.png")) : Image();
}

void Bookmark::muteBookmark() {
    mute = !mute;
    if (!mute) return; // the next lookup refreshes the images
    activeImage = activeImageNamed("NSStatusUnavailable");
    activeStrip = Image();
}

void Bookmark::computeTimecodeWithOffset() {
    firstTC = timecodeText(firstFrame, fps); // without any offset, whatever the name says: wanted
    lastTC = timecodeText(lastFrame, fps);
}

void Bookmark::computeTimecodeWithFrameNumber(qint64 frame, float framesPerSecond,
                                              const std::optional<SmpteTime>& timecodeOffset) {
    firstTC = timecodeText(frame, framesPerSecond, timecodeOffset);
    lastTC = firstTC;
}

void Bookmark::removeDrawingFromBookmark() {
    drawings = Drawing();
    drawings.hasKeys = false;
}

void Bookmark::removeLastStrokeFromDrawing() {
    drawings.removeLastStroke();
    if (!drawings.hasStrokes()) removeDrawingFromBookmark();
}

void Bookmark::encodeWithCoder(Encoder& coder) const {
    coder.encodeInt("firstFrame", firstFrame);
    coder.encodeBool("mute", mute);
    coder.encodeInt("lastFrame", lastFrame);
    coder.encodeInt("duration", duration);
    coder.encodeFloat("fps", fps);
    coder.encodeString("overlayString", overlayString);
    coder.encodeString("overlayString2", overlayString2);
    coder.encodeString("firstTC", firstTC);
    coder.encodeString("lastTC", lastTC);
    coder.encodeString("uniqueKey", uniqueKey);
    coder.encodeImage("activeImage", activeImage);
    coder.encodeImage("activeStrip", activeStrip);
    coder.encode("drawings", drawings.toValue());
}

void Bookmark::initWithCoder(const Decoder& coder) {
    firstFrame = decoded::frames(coder, "firstFrame");
    mute = coder.decodeBool("mute");
    lastFrame = decoded::frames(coder, "lastFrame");
    duration = decoded::frames(coder, "duration");
    fps = decoded::rate(coder, "fps");
    overlayString = coder.decodeString("overlayString");
    overlayString2 = coder.decodeString("overlayString2");
    firstTC = coder.decodeString("firstTC");
    lastTC = coder.decodeString("lastTC");
    uniqueKey = coder.decodeString("uniqueKey");
    activeImage = coder.decodeImage("activeImage");
    activeStrip = coder.decodeImage("activeStrip");
    drawings = Drawing::fromValue(coder.decode("drawings"));
    loopStatus = false; // a loop never survives a save
    loopImage = Image::named(QStringLiteral("loop_OFF.png"));
}

MovieBookmark::MovieBookmark(const QString& timecode, const Number& frameNumber, const QString& description)
    : mTimecode(timecode)
    , mFrameNumber(frameNumber)
    , mFrameString(QString::number(numberToInt64(frameNumber)))
    , mDescription(description) {}

void MovieBookmark::encodeWithCoder(Encoder& coder) const {
    coder.encodeString("mTimecode", mTimecode);
    coder.encodeNumber("mFrameNumber", mFrameNumber);
    coder.encodeString("mFrameString", mFrameString);
    coder.encodeString("mDescription", mDescription);
    coder.encodeString("mNotes", mNotes);
}

void MovieBookmark::initWithCoder(const Decoder& coder) {
    mTimecode = coder.decodeString("mTimecode");
    mFrameNumber = coder.decodeNumber("mFrameNumber");
    mFrameString = coder.decodeString("mFrameString");
    mDescription = coder.decodeString("mDescription");
    mNotes = coder.decodeString("mNotes");
}

} // namespace daylark
