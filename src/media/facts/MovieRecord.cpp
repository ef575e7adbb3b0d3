#include "media/facts/MovieProbe.h"
#include "media/facts/MovieTexts.h"
#include "model/Timecode.h"
#include "model/Movie.h"

namespace daylark {

void applyAssetProperties(Movie& movie, const AssetProperties& properties) {
    movie.fileSizeText = properties.fileSizeText;
    if (properties.mMovieFPS) movie.mMovieFPS = *properties.mMovieFPS;
    if (properties.frameRateText) movie.frameRateText = *properties.frameRateText;
    if (properties.mMovieDurationSeconds) {
        movie.mMovieDurationSeconds = *properties.mMovieDurationSeconds;
        // With the record's rate, which is an earlier one when the file states none.
        movie.mMovieDurationFrames = durationFramesOf(movie.mMovieDurationSeconds, movie.mMovieFPS);
    }
    if (properties.mMovieResolutionString) movie.mMovieResolutionString = *properties.mMovieResolutionString;
    if (properties.mMovieAspectRatio) movie.mMovieAspectRatio = *properties.mMovieAspectRatio;
    if (properties.fileCreationDate) movie.fileCreationDate = properties.fileCreationDate;
    movie.durationText = durationTextOf(movie.mMovieDurationSeconds);
}

void applyRun(Movie& movie, const std::optional<FrameRun>& run) {
    if (run && movie.frameRun && !movie.frameRun->isFixed && movie.frameRun->run.hasNamesOf(*run) &&
        movie.frameRun->run.first == run->first && movie.frameRun->run.step == run->step)
        movie.frameRun->run.last = run->last;
}

void applyLegacyProperties(Movie& movie, const LegacyProperties& properties) {
    if (movie.mMovieHasBeenVisited) return;
    movie.fileSizeText = properties.fileSizeText;
    if (properties.fileCreationDate) movie.fileCreationDate = properties.fileCreationDate;
    if (properties.hasVideo) {
        movie.mMovieResolutionString = properties.mMovieResolutionString;
        movie.mMovieWidth = properties.mMovieWidth;
        movie.mMovieHeight = properties.mMovieHeight;
        movie.mMovieAspectRatio = properties.mMovieAspectRatio;
        movie.mMovieDurationFrames = properties.mMovieDurationFrames;
        movie.mMovieAdjustedDurationTimeValue = properties.mMovieAdjustedDurationTimeValue;
        if (properties.isOneFrame) movie.isOneFrame = true;
        movie.mMovieDurationSeconds = properties.mMovieDurationSeconds;
        movie.mMovieFPS = properties.mMovieFPS;
        movie.frameRateText = properties.frameRateText;
        movie.mMovieTimeValuePerStep = properties.mMovieTimeValuePerStep;
        movie.mMovieHasBeenVisited = true; // here it also says: loaded, not to be read again
    }
    movie.durationText = durationTextOf(movie.mMovieDurationSeconds);
}

} // namespace daylark
