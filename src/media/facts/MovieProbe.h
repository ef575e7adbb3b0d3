#pragma once

#include "archive/Value.h"
#include "base/Result.h"
#include "media/decode/FrameReader.h"
#include "model/runs/FrameRun.h"

#include <QString>

#include <optional>

namespace daylark {

class Movie;

/// What the current back end's rules read from a file. Unset fields leave the record's as they are.
struct AssetProperties {
    QString fileSizeText;
    std::optional<Date> fileCreationDate;
    std::optional<float> mMovieFPS;
    std::optional<QString> frameRateText;
    std::optional<float> mMovieDurationSeconds;
    std::optional<qint64> mMovieDurationFrames;
    std::optional<QString> mMovieResolutionString;
    std::optional<float> mMovieAspectRatio;
    QString durationText;
};

/// What the legacy back end's rules read: the frame clock that the viewer's time model stands on.
struct LegacyProperties {
    bool hasVideo = false;
    QString fileSizeText;
    std::optional<Date> fileCreationDate;
    QString mMovieResolutionString;
    qint32 mMovieWidth = 0, mMovieHeight = 0;
    float mMovieAspectRatio = 0;
    qint64 mMovieDurationFrames = 0;
    qint32 mMovieAdjustedDurationTimeValue = 0;
    qint32 timeScale = 600; ///< of the values above and below
    float mMovieDurationSeconds = 0;
    float mMovieFPS = 0;
    QString frameRateText;
    qint32 mMovieTimeValuePerStep = 0;
    bool isOneFrame = false;
    QString durationText;
};

/// Both rule sets, computed from one opening of the file.
struct ProbeResult {
    AssetProperties asset;
    LegacyProperties legacy;
    std::optional<FrameRun> run; ///< of a run of pictures: as far as its pictures have come
};

/// Reads a file's properties. Worker threads; ends within a second for broken, empty, truncated and endless files.
/// `cancel` and `tables` may be null.
[[nodiscard]] Result<ProbeResult> probeMovie(const QString& path, const CancelFlag* cancel = nullptr,
                                             SampleTables* tables = nullptr);

/// The two property passes on a record (interface thread; no disk). The legacy pass does nothing on a record that has been
/// visited, and marks it visited.
void applyAssetProperties(Movie& movie, const AssetProperties& properties);
/// A run that has grown reaches farther; nothing else about it changes.
void applyRun(Movie& movie, const std::optional<FrameRun>& run);
void applyLegacyProperties(Movie& movie, const LegacyProperties& properties);

} // namespace daylark
