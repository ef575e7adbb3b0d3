#include "media/facts/MovieProbe.h"

#include "media/facts/MovieTexts.h"
#include "model/Timecode.h"
#include "media/container/SampleTable.h"
#include "media/decode/VideoFrameData.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>
#include <limits>

namespace daylark {
namespace {

/// In pixels of the shape that is shown. The texts cut off what isn't whole: hence what is whole must be so exactly, which
/// a rounded quotient of the pixels' shape is not (792 x 12:11 is 864).
struct NaturalSize {
    double width = 0, height = 0;
};

NaturalSize naturalSizeOf(const MediaFile& file) {
    const AVCodecParameters* parameters = file.video()->codecpar;
    const AVRational aspect = pixelAspectOf(file.format(), file.video());
    NaturalSize size{double(parameters->width) * aspect.num / aspect.den, double(parameters->height)};
    if (rotationOf(*file.video()) % 180) std::swap(size.width, size.height);
    return size;
}

QString resolutionTextOf(NaturalSize size) {
    return QString::asprintf("%d x %d", int(size.width), int(size.height));
}

std::optional<Date> creationDateOf(const QFileInfo& info) {
    QDateTime date = info.birthTime();
    if (!date.isValid()) date = info.metadataChangeTime();
    if (!date.isValid()) return std::nullopt;
    return Date::fromUnixSeconds(double(date.toMSecsSinceEpoch()) / 1000);
}

double durationSecondsOf(const MediaFile& file, const SampleIndex& index) {
    const AVFormatContext* format = file.format();
    // A length guessed from the bit rate is worse than the samples' own.
    if (format->duration == AV_NOPTS_VALUE ||
        format->duration_estimation_method == AVFMT_DURATION_FROM_BITRATE || index.count() < 2)
        return index.duration().seconds();
    return double(format->duration) / AV_TIME_BASE;
}

AssetProperties assetPropertiesOf(const MediaFile& file, const SampleIndex& index) {
    AssetProperties asset;
    const AVRational rate = file.video()->avg_frame_rate;
    if (rate.num > 0 && rate.den > 0) {
        asset.mMovieFPS = float(av_q2d(rate));
        asset.frameRateText = frameRateTextOf(*asset.mMovieFPS);
    }
    asset.mMovieDurationSeconds = float(durationSecondsOf(file, index));
    asset.mMovieDurationFrames = durationFramesOf(*asset.mMovieDurationSeconds, asset.mMovieFPS.value_or(0));
    const NaturalSize size = naturalSizeOf(file);
    asset.mMovieResolutionString = resolutionTextOf(size);
    if (size.height > 0) asset.mMovieAspectRatio = float(size.width) / float(size.height);
    return asset;
}

/// 29.97 becomes 30 here; wanted.
float snappedRate(float fps) {
    if (fps > 23.5F && fps < 24.5F) return 24;
    if (fps > 24.5F && fps < 25.5F) return 25;
    if (fps > 29.0F && fps < 31.0F) return 30;
    return fps;
}

LegacyProperties legacyPropertiesOf(const MediaFile& file, const SampleIndex& index) {
    LegacyProperties legacy;
    legacy.hasVideo = true;
    const NaturalSize size = naturalSizeOf(file);
    legacy.mMovieResolutionString = resolutionTextOf(size);
    legacy.mMovieWidth = qint32(size.width);
    legacy.mMovieHeight = qint32(size.height);
    if (size.height > 0) legacy.mMovieAspectRatio = float(size.width) / float(size.height);
    legacy.mMovieDurationFrames = index.count();
    legacy.timeScale = index.timeScale;
    legacy.mMovieAdjustedDurationTimeValue =
        qint32(std::min<qint64>(index.endTicks, std::numeric_limits<qint32>::max()));
    legacy.isOneFrame = legacy.mMovieDurationFrames < 2;
    legacy.mMovieDurationSeconds = float(legacy.mMovieAdjustedDurationTimeValue) / float(index.timeScale);
    if (legacy.mMovieDurationSeconds > 0)
        legacy.mMovieFPS = snappedRate(float(legacy.mMovieDurationFrames) / legacy.mMovieDurationSeconds);
    legacy.frameRateText = frameRateTextOf(legacy.mMovieFPS);
    if (legacy.mMovieDurationFrames > 0)
        legacy.mMovieTimeValuePerStep =
            qint32(legacy.mMovieAdjustedDurationTimeValue / legacy.mMovieDurationFrames);
    return legacy;
}

} // namespace

Result<ProbeResult> probeMovie(const QString& path, const CancelFlag* cancel) {
    Result<MediaFile> file = MediaFile::open(path, cancel, MediaFile::Opening::forFacts);
    if (!file) return file.error();
    ProbeResult result;
    if (file->video()) {
        Result<SampleTable> table = buildSampleTable(*file);
        if (!table) return table.error();
        result.asset = assetPropertiesOf(*file, table->index);
        result.legacy = legacyPropertiesOf(*file, table->index);
    }
    const QFileInfo info(path);
    result.asset.fileSizeText = result.legacy.fileSizeText = fileSizeTextOf(info.size());
    result.asset.fileCreationDate = result.legacy.fileCreationDate = creationDateOf(info);
    result.asset.durationText = durationTextOf(result.asset.mMovieDurationSeconds.value_or(0));
    result.legacy.durationText = durationTextOf(result.legacy.mMovieDurationSeconds);
    return result;
}

} // namespace daylark
