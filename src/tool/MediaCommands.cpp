#include "annotate/GradeArithmetic.h"
#include "media/decode/FrameReader.h"
#include "media/facts/MovieProbe.h"
#include "picture/PictureRenderer.h"
#include "picture/Thumbnail.h"
#include "media/sequence/RunFacts.h"
#include "media/sequence/RunFiles.h"
#include "tool/ColourArgument.h"
#include "tool/GradeArgument.h"
#include "tool/MediaArgument.h"
#include "tool/ToolContext.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <memory>

namespace daylark::tool {
namespace {

QJsonObject assetJson(const AssetProperties& asset) {
    QJsonObject json{{QStringLiteral("fileSizeText"), asset.fileSizeText},
                     {QStringLiteral("durationText"), asset.durationText}};
    if (asset.mMovieFPS) json[QStringLiteral("mMovieFPS")] = double(*asset.mMovieFPS);
    if (asset.frameRateText) json[QStringLiteral("frameRateText")] = *asset.frameRateText;
    if (asset.mMovieDurationFrames)
        json[QStringLiteral("mMovieDurationFrames")] = *asset.mMovieDurationFrames;
    if (asset.mMovieDurationSeconds)
        json[QStringLiteral("mMovieDurationSeconds")] = double(*asset.mMovieDurationSeconds);
    if (asset.mMovieResolutionString)
        json[QStringLiteral("mMovieResolutionString")] = *asset.mMovieResolutionString;
    if (asset.mMovieAspectRatio) json[QStringLiteral("mMovieAspectRatio")] = double(*asset.mMovieAspectRatio);
    return json;
}

QJsonObject legacyJson(const LegacyProperties& legacy) {
    QJsonObject json{{QStringLiteral("fileSizeText"), legacy.fileSizeText},
                     {QStringLiteral("durationText"), legacy.durationText}};
    if (!legacy.hasVideo) return json;
    json[QStringLiteral("mMovieFPS")] = double(legacy.mMovieFPS);
    json[QStringLiteral("frameRateText")] = legacy.frameRateText;
    json[QStringLiteral("mMovieDurationFrames")] = legacy.mMovieDurationFrames;
    json[QStringLiteral("mMovieDurationSeconds")] = double(legacy.mMovieDurationSeconds);
    json[QStringLiteral("mMovieResolutionString")] = legacy.mMovieResolutionString;
    json[QStringLiteral("mMovieAspectRatio")] = double(legacy.mMovieAspectRatio);
    json[QStringLiteral("mMovieWidth")] = legacy.mMovieWidth;
    json[QStringLiteral("mMovieHeight")] = legacy.mMovieHeight;
    json[QStringLiteral("mMovieTimeValuePerStep")] = legacy.mMovieTimeValuePerStep;
    json[QStringLiteral("mMovieAdjustedDurationTimeValue")] = legacy.mMovieAdjustedDurationTimeValue;
    json[QStringLiteral("isOneFrame")] = legacy.isOneFrame;
    return json;
}

QJsonObject runJson(const RunAddress& address, const FrameRun& run) {
    RunAddress whole = address;
    whole.movie.run = run;
    QJsonArray missing;
    if (const Result<RunFiles> files = RunFiles::look(whole))
        for (const qint64 frame : files->missing())
            missing.append(run.numberAt(frame));
    return {{QStringLiteral("name"), run.text()},
            {QStringLiteral("first"), run.first},
            {QStringLiteral("last"), run.last},
            {QStringLiteral("step"), run.step},
            {QStringLiteral("missing"), missing},
            {QStringLiteral("layers"), QJsonArray::fromStringList(layersOfRun(whole))}};
}

void probe(ToolContext& context, const std::vector<std::string>& files) {
    QJsonArray array;
    for (const std::string& file : files) {
        const QString path = QString::fromStdString(file);
        QJsonObject json{{QStringLiteral("filenameString"), QFileInfo(path).fileName()},
                         {QStringLiteral("filepathString"), QFileInfo(path).absoluteFilePath()}};
        const std::optional<QString> media = mediaArgument(context, file);
        if (!media) continue;
        const Result<ProbeResult> result = probeMovie(*media);
        if (const auto run = RunAddress::of(*media); result && run) {
            json[QStringLiteral("filenameString")] = run->movie.run.nameOf(run->movie.run.first);
            json[QStringLiteral("filepathString")] = run->pathOf(run->movie.run.first);
            json[QStringLiteral("run")] = runJson(*run, result->run.value_or(run->movie.run));
        }
        if (result) {
            json[QStringLiteral("asset")] = assetJson(result->asset);
            json[QStringLiteral("legacy")] = legacyJson(result->legacy);
        } else {
            json[QStringLiteral("error")] = result.error().text;
            context.fail(path, result.error().text);
        }
        array.append(json);
    }
    context.print(QJsonDocument(array));
}

void printIndex(ToolContext& context, const std::string& file) {
    const std::optional<QString> media = mediaArgument(context, file);
    if (!media) return;
    const QString path = *media;
    const Result<std::unique_ptr<FrameReader>> reader = FrameReader::open(path);
    if (!reader) return context.fail(path, reader.error().text);
    const SampleIndex& index = (*reader)->index();
    QJsonArray frames;
    for (const SampleIndex::Sample& sample : index.samples)
        frames.append(QJsonObject{{QStringLiteral("pts"), sample.pts}, {QStringLiteral("key"), sample.key}});
    context.print(QJsonDocument(QJsonObject{
        {QStringLiteral("frames"), frames},
        {QStringLiteral("timeBase"), QJsonArray{index.timeBaseNum, index.timeBaseDen}},
    }));
}

struct FrameArguments {
    std::string file, out, grade, layer;
    qint64 number = 1;
    ColourArguments colour;
    bool isRunNumber = false; ///< the run's own, not counted from 1
    int width = 0;
};

void writeFrame(ToolContext& context, const FrameArguments& arguments) {
    const std::optional<QString> media = mediaArgument(context, arguments.file, arguments.layer);
    if (!media) return;
    const QString path = *media, out = QString::fromStdString(arguments.out);
    const std::optional<qint64> wanted =
        arguments.isRunNumber ? frameOfNumber(context, path, arguments.number) : std::optional(arguments.number);
    if (!wanted) return;
    const qint64 number = *wanted;
    const int width = arguments.width;
    const Result<std::unique_ptr<FrameReader>> reader = FrameReader::open(path);
    if (!reader) return context.fail(path, reader.error().text);
    const qint64 count = (*reader)->index().count();
    if (number < 1 || number > count)
        return context.fail(path, QStringLiteral("has frames 1 to %1, not %2").arg(count).arg(number));
    const Result<VideoFrame> frame = (*reader)->read(number - 1);
    if (!frame) return context.fail(path, frame.error().text);
    const QSize whole = frame->displaySize();
    const QSize size =
        width > 0 ? QSize(width, std::max(1, qRound(double(width) * whole.height() / whole.width()))) : whole;
    PictureRequest request;
    request.size = size;
    request.deep = frame->bitDepth() > 8;
    if (const Result<Grade> grade = gradeArgument(QString::fromStdString(arguments.grade)))
        request.colour = colourTransformOf(*grade);
    const auto processor =
        arguments.colour.processorFor(context, *frame, {pathOfAddress(path), {}, false, RunAddress::of(path).has_value()});
    if (!processor) return;
    request.display = *processor;
    const QImage picture = renderPicture(*frame, request);
    if (picture.isNull()) return context.fail(path, QStringLiteral("its pictures are of no known format"));
    if (!picture.save(out, "PNG")) context.fail(out, QStringLiteral("cannot be written"));
}

void writeThumbnail(ToolContext& context, const std::string& file, const std::string& layer, const QString& out,
                    const QString& choice, const ColourArguments& colour) {
    const std::optional<QString> media = mediaArgument(context, file, layer);
    if (!media) return;
    const std::optional<StillColour> display = colour.stillColour(context);
    if (!display) return;
    const QString path = *media;
    const ThumbnailResult result = makeThumbnail({path, choice, false, *display});
    if (result.thumbnail.isNil())
        return context.fail(path, result.creatingThumbnailText.value_or(QStringLiteral("has no picture")));
    if (!result.thumbnail.decode().save(out, "PNG")) context.fail(out, QStringLiteral("cannot be written"));
}

} // namespace

void addMediaCommands(CLI::App& app, ToolContext& context) {
    struct Arguments {
        std::vector<std::string> files;
        std::string file, out, choice, layer;
        ColourArguments colour;
    };
    const auto arguments = std::make_shared<Arguments>();

    CLI::App* probing = app.add_subcommand("probe", "What the two rule sets read from files");
    probing->footer("Example: daylark-tool probe shot_010.mov shot_020.mov shot_030.####.exr");
    probing->add_option("FILE", arguments->files)->required();
    probing->callback([=, &context] { probe(context, arguments->files); });

    CLI::App* index = app.add_subcommand("index", "The movie's frames in presentation order");
    index->footer("Example: daylark-tool index shot_010.mov");
    index->add_option("FILE", arguments->file)->required();
    index->callback([=, &context] { printIndex(context, arguments->file); });

    CLI::App* frame = app.add_subcommand(
        "frame", "One frame, decoded exactly, as a PNG (16 bit when the source is deeper than 8)");
    const auto frameArguments = std::make_shared<FrameArguments>();
    frame->footer(
        "Example: daylark-tool frame shot_010.mov 42 frame.png --width 960 --grade exposure=1,gamma=1.2");
    frame->add_option("FILE", frameArguments->file)->required();
    frame->add_option("N", frameArguments->number, "frame number, counted from 1")->required();
    frame->add_option("OUT", frameArguments->out)->required();
    frame->add_flag("--frame-number", frameArguments->isRunNumber, "N is the run's own number, such as 1001");
    frame->add_option("--layer", frameArguments->layer, "of a run: a layer or a channel, as probe lists them");
    frameArguments->colour.addTo(*frame);
    frame->add_option("--width", frameArguments->width, "pixels; the height follows the picture")
        ->check(CLI::Range(1, 65536));
    frame
        ->add_option("--grade", frameArguments->grade,
                     "exposure, contrast, saturation, gamma, brightness, redChannel, ...")
        ->check([](const std::string& text) {
            const Result<Grade> grade = gradeArgument(QString::fromStdString(text));
            return grade ? std::string() : grade.error().text.toStdString();
        });
    frame->callback([=, &context] { writeFrame(context, *frameArguments); });

    CLI::App* thumbnail = app.add_subcommand("thumbnail", "The thumbnail as the library makes it");
    thumbnail->footer("Example: daylark-tool thumbnail shot_010.mov thumb.png --choice \"First Frame\"");
    thumbnail->add_option("FILE", arguments->file)->required();
    thumbnail->add_option("OUT", arguments->out)->required();
    thumbnail->add_option("--layer", arguments->layer, "of a run: a layer or a channel, as probe lists them");
    arguments->colour.addTo(*thumbnail);
    thumbnail->add_option("--choice", arguments->choice,
                          "which frame, e.g. \"Middle Frame\"; default: the preference");
    thumbnail->callback([=, &context] {
        const QString choice = arguments->choice.empty() ? context.preferences().thumbnailFrame.text()
                                                         : QString::fromStdString(arguments->choice);
        writeThumbnail(context, arguments->file, arguments->layer, QString::fromStdString(arguments->out), choice,
                       arguments->colour);
    });
}

} // namespace daylark::tool
