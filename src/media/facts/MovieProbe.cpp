#include "media/facts/MovieProbe.h"

#include "media/facts/MovieTexts.h"
#include "model/Timecode.h"
#include "media/container/MovBoxes.h"
#include "media/index/SampleTable.h"
#include "media/index/SampleTables.h"
#include "media/decode/VideoFrameData.h"
#include "media/sequence/RunReader.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>
#include <cstring>
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
    if (orientationOf(*file.video()).isTurned()) std::swap(size.width, size.height);
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

/// Fragments may begin at any time; the library counts from zero to where the last one ends.
bool isFragmented(const MediaFile& file) {
    if (!std::strstr(file.format()->iformat->name, "mov")) return false;
    const Result<MovBoxes> boxes = MovBoxes::read(file.path());
    return boxes && boxes->isFragmented();
}

double durationSecondsOf(const MediaFile& file, const SampleIndex& index) {
    const AVFormatContext* format = file.format();
    // A length guessed from the bit rate is worse than the samples' own.
    if (format->duration == AV_NOPTS_VALUE ||
        format->duration_estimation_method == AVFMT_DURATION_FROM_BITRATE || index.count() < 2 ||
        isFragmented(file))
        return index.duration().seconds();
    return double(format->duration) / AV_TIME_BASE;
}

/// The mean rate that the container states, else the nominal one, else what the samples' times say; 0 where
/// there is nothing to tell it from.
double frameRateOf(const AVStream& stream, const SampleIndex& index) {
    for (const AVRational rate : {stream.avg_frame_rate, stream.r_frame_rate})
        if (rate.num > 0 && rate.den > 0) return av_q2d(rate);
    if (index.count() < 2) return 0;
    if (index.step > 0) return double(index.timeScale) / index.step;
    return index.duration().seconds() > 0 ? double(index.count()) / index.duration().seconds() : 0;
}

AssetProperties assetPropertiesOf(const MediaFile& file, const SampleIndex& index) {
    AssetProperties asset;
    if (const double rate = frameRateOf(*file.video(), index); rate > 0) {
        asset.mMovieFPS = float(rate);
        asset.frameRateText = frameRateTextOf(*asset.mMovieFPS);
    }
    asset.mMovieDurationSeconds = float(durationSecondsOf(file, index));
    asset.mMovieDurationFrames = durationFramesOf(*asset.mMovieDurationSeconds, asset.mMovieFPS.value_or(0));
    const NaturalSize size = naturalSizeOf(file);
    asset.mMovieResolutionString = resolutionTextOf(size);
    if (size.height > 0) asset.mMovieAspectRatio = float(size.width) / float(size.height);
    return asset;
}

/// 29.97 becomes 30 here, as sessions hold it.
float snappedRate(float fps) {
    if (fps > 23.5F && fps < 24.5F) return 24;
    if (fps > 24.5F && fps < 25.5F) return 25;
    if (fps > 29.0F && fps < 31.0F) return 30;
    return fps;
}

LegacyProperties legacyPropertiesOf(NaturalSize size, const SampleIndex& index) {
    LegacyProperties legacy;
    legacy.hasVideo = true;
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

/// A run of pictures is a movie of as many frames as it has numbers, as large as all its files together.
Result<ProbeResult> probeRun(const RunAddress& address, const CancelFlag* cancel) {
    const Result<RunFiles> files = RunFiles::look(address, cancel);
    if (!files) return files.error();
    const Result<const PictureFiles*> reader = pictureFiles();
    if (!reader) return reader.error();
    const Result<PictureFacts> facts = factsOf(*files, **reader, cancel);
    if (!facts) return facts.error();
    const SampleIndex index = indexOf(*files, facts->framesPerSecond);
    const NaturalSize size{double(facts->size.width()) * facts->pixelAspect, double(facts->size.height())};
    ProbeResult result;
    AssetProperties& asset = result.asset;
    asset.mMovieFPS = float(double(index.timeScale) / index.step);
    asset.frameRateText = frameRateTextOf(*asset.mMovieFPS);
    asset.mMovieDurationSeconds = float(index.duration().seconds());
    asset.mMovieDurationFrames = index.count();
    asset.mMovieResolutionString = resolutionTextOf(size);
    asset.mMovieAspectRatio = float(size.width / size.height);
    result.legacy = legacyPropertiesOf(size, index);
    qint64 bytes = 0;
    for (const qint64 number : files->numbers) {
        if (cancel && cancel->load()) return Error{QStringLiteral("cancelled")};
        bytes += QFileInfo(files->address.pathOf(number)).size();
    }
    asset.fileSizeText = result.legacy.fileSizeText = fileSizeTextOf(bytes);
    asset.fileCreationDate = result.legacy.fileCreationDate =
        creationDateOf(QFileInfo(files->address.pathOf(files->numbers.front())));
    asset.durationText = durationTextOf(*asset.mMovieDurationSeconds);
    result.legacy.durationText = durationTextOf(result.legacy.mMovieDurationSeconds);
    result.run = files->address.movie.run;
    return result;
}

} // namespace

Result<ProbeResult> probeMovie(const QString& path, const CancelFlag* cancel, SampleTables* tables) {
    if (const std::optional<RunAddress> run = RunAddress::of(path)) return probeRun(*run, cancel);
    Result<MediaFile> file = MediaFile::open(path, cancel, MediaFile::Opening::forFacts);
    if (!file) return file.error();
    if (file->hasUnknownPicture()) return file->noPicture();
    ProbeResult result;
    if (file->video()) {
        SampleTables own;
        const Result<SampleTables::Table> table = (tables ? *tables : own).tableOf(*file);
        if (!table) return table.error();
        result.asset = assetPropertiesOf(*file, (*table)->index);
        result.legacy = legacyPropertiesOf(naturalSizeOf(*file), (*table)->index);
    }
    const QFileInfo info(path);
    result.asset.fileSizeText = result.legacy.fileSizeText = fileSizeTextOf(info.size());
    result.asset.fileCreationDate = result.legacy.fileCreationDate = creationDateOf(info);
    result.asset.durationText = durationTextOf(result.asset.mMovieDurationSeconds.value_or(0));
    result.legacy.durationText = durationTextOf(result.legacy.mMovieDurationSeconds);
    return result;
}

} // namespace daylark
