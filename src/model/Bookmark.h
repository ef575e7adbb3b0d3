#pragma once

#include "archive/Archivable.h"
#include "archive/Image.h"
#include "model/Drawing.h"
#include "model/Timecode.h"

#include <QString>

#include <optional>

namespace daylark {

/// An inclusive range of a movie's frames (counted from 1) with two texts, a mute switch and a drawing. Owned by the movies
/// that hold it; interface thread. `loopStatus` and `loopImage` never survive a save.
///
///     firstFrame 10         lastFrame 33
///         |-----------------------|        duration 24
class Bookmark : public Archivable {
public:
    Bookmark() = default; ///< for decoding
    Bookmark(qint64 firstFrame, qint64 duration, float fps);

    qint64 firstFrame = 0;
    qint64 lastFrame = 0;
    qint64 duration = 0;
    QString firstTC, lastTC;
    QString overlayString;  ///< description, shown over the picture
    QString overlayString2; ///< note
    Image activeImage;      ///< "NSStatusNone", "NSStatusAvailable" or "NSStatusUnavailable"
    Image activeStrip;      ///< "greenBar_05.png" or none
    float fps = 0;
    QString uniqueKey;
    bool mute = false;
    Drawing drawings;
    bool loopStatus = false;
    Image loopImage = Image::named(QStringLiteral("loop_OFF.png"));

    void updateFirstFrame(); ///< leaves the range one frame longer than `duration`; wanted
    void updateLastFrame();
    void updateDuration();
    void setActive(bool active);
    void muteBookmark(); ///< toggles
    void computeTimecodeWithOffset();
    void computeTimecodeWithFrameNumber(qint64 frame, float framesPerSecond, const std::optional<SmpteTime>& timecodeOffset);
    void addDrawingToBookmark(const Drawing& drawing) { drawings = drawing; }
    void removeDrawingFromBookmark();
    void removeLastStrokeFromDrawing();
    [[nodiscard]] bool hasDrawings() const { return drawings.hasStrokes(); }
    [[nodiscard]] const Drawing& drawingsDictionary() const { return drawings; }

    [[nodiscard]] const char* archiveClassName() const override { return "Bookmark"; }
    void encodeWithCoder(Encoder& coder) const override;
    void initWithCoder(const Decoder& coder) override;
};

/// The older, single-frame form, still read from older sessions.
class MovieBookmark : public Archivable {
public:
    MovieBookmark() = default;
    MovieBookmark(const QString& timecode, const Number& frameNumber, const QString& description);

    QString mTimecode;
    std::optional<Number> mFrameNumber;
    QString mFrameString;
    QString mDescription;
    QString mNotes;

    [[nodiscard]] const char* archiveClassName() const override { return "MovieBookmark"; }
    void encodeWithCoder(Encoder& coder) const override;
    void initWithCoder(const Decoder& coder) override;
};

} // namespace daylark
