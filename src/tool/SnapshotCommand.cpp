#include "annotate/GradeArithmetic.h"
#include "media/decode/FrameReader.h"
#include "media/facts/TimecodeTrack.h"
#include "model/runs/FrameNumbers.h"
#include "picture/scene/Scene.h"
#include "tool/ColourArgument.h"
#include "tool/SessionItem.h"
#include "tool/ToolContext.h"
#include "viewer/RunPreferences.h"
#include "viewer/display/Snapshots.h"
#include "viewer/display/ViewerScene.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>

#include <algorithm>
#include <memory>

namespace daylark::tool {
namespace {

struct SnapshotArguments {
    SessionItemArguments item;
    ColourArguments colour;
    qint64 frame = 1;
    bool isProductionNumber = false;
    std::string size, out, layer;
};

QSize parsedSize(const std::string& text) {
    const QStringList sides = QString::fromStdString(text).split(QLatin1Char('x'));
    constexpr int most = 32767;
    return sides.size() == 2 ? QSize(std::min(most, sides[0].toInt()), std::min(most, sides[1].toInt()))
                             : QSize();
}

/// The format by the name's extension.
SnapshotFormat formatOf(const QString& path) {
    const QString extension = QFileInfo(path).suffix().toLower();
    if (extension == QLatin1String("jpg") || extension == QLatin1String("jpeg")) return SnapshotFormat::jpeg;
    if (extension == QLatin1String("png")) return SnapshotFormat::png;
    if (extension == QLatin1String("tif") || extension == QLatin1String("tiff")) return SnapshotFormat::tiff;
    return SnapshotFormat::none;
}

/// The player area as the viewer would show it: the picture fitted, with what the record and the preferences
/// lay over it.
Scene sceneOf(Movie& movie, const VideoFrame& frame, qint64 number, const QSize& size,
              const Preferences& preferences) {
    Scene scene;
    scene.frame = frame;
    const QSize shown = frame.displaySize();
    scene.geometry.setArea(size);
    scene.geometry.setMovie(shown.width(), shown.height(), float(shown.width()) / float(shown.height()));
    scene.mirrorLeftRight = preferences.mirrorY();
    scene.mirrorUpsideDown = preferences.mirrorX();
    if (movie.applyGrade) scene.colour = colourTransformOf(movie.grade());
    if (preferences.showMask()) scene.maskRatio = preferences.movieMaskRatio();
    scene.maskOpacity = std::clamp(double(preferences.movieMaskOpacity()), 0.0, 1.0);
    scene.movieSize = movie.mMovieWidth > 0 && movie.mMovieHeight > 0
                          ? QSizeF(movie.mMovieWidth, movie.mMovieHeight)
                          : QSizeF(shown);
    if (!preferences.displayDrawings()) return scene;
    Drawing together;
    for (const auto& bookmark : movie.bookmarksForFrame(number))
        if (bookmark->hasDrawings()) together.append(bookmark->drawings);
    const auto canvas = std::make_shared<DrawingCanvas>();
    canvas->setStrokes(eachStrokeOnce(together));
    scene.drawing = canvas;
    if (scene.hasStrokes()) scene.background = sceneBackgroundOf(preferences.drawingBackgroundColour());
    return scene;
}

/// From 1; none, and told, where the production has no such number.
std::optional<qint64> countedFrame(ToolContext& context, const SnapshotArguments& arguments, const Movie& movie) {
    if (!arguments.isProductionNumber) return arguments.frame;
    const std::optional<qint64> usual = context.preferences().usualFirstFrameNumber();
    std::optional<SmpteTime> start;
    if (isNumberedByTimecode(movie, usual)) start = firstTimecodeOf(movie.filepathString);
    const std::optional<qint64> frame = frameNumbersOf(movie, usual, start).frameOf(arguments.frame);
    if (frame && *frame >= 1) return frame;
    context.fail(movie.filepathString, QStringLiteral("has no frame of the number %1").arg(arguments.frame));
    return {};
}

void snapshot(ToolContext& context, const SnapshotArguments& arguments) {
    const QString out = QString::fromStdString(arguments.out);
    const QSize size = parsedSize(arguments.size);
    if (size.isEmpty()) return context.fail(out, QStringLiteral("no such size, it wants WIDTHxHEIGHT"));
    const SnapshotFormat format = formatOf(out);
    if (format == SnapshotFormat::none)
        return context.fail(out, QStringLiteral("no such format, it wants .jpg, .png or .tif"));
    const std::optional<SessionItem> item = findItem(context, arguments.item);
    if (!item) return;
    if (!arguments.layer.empty() && item->movie->frameRun)
        item->movie->frameRun->layer = QString::fromStdString(arguments.layer);
    const QString path = item->movie->mediaAddress(runViewOf(context.preferences()));
    const Result<std::unique_ptr<FrameReader>> reader = FrameReader::open(path);
    if (!reader) return context.fail(path, reader.error().text);
    const std::optional<qint64> number = countedFrame(context, arguments, *item->movie);
    if (!number) return;
    const Result<VideoFrame> frame = (*reader)->read(*number - 1);
    if (!frame) return context.fail(path, frame.error().text);
    const Movie& movie = *item->movie;
    const auto display = arguments.colour.processorFor(
        context, *frame, {movie.filepathString, {}, false, movie.frameRun.has_value()},
        {movie.inputColourSpace, item->session.colourConfiguration});
    if (!display) return;
    Scene scene = sceneOf(*item->movie, *frame, *number, size, context.preferences());
    scene.display = *display;
    const float quality = context.preferences().compressionQuality();
    if (const Result<void> written = writeSnapshot(renderScene(scene, size), out, format, quality); !written)
        context.fail(out, written.error().text);
}

} // namespace

void addSnapshotCommand(CLI::App& app, ToolContext& context) {
    const auto arguments = std::make_shared<SnapshotArguments>();
    CLI::App* command =
        app.add_subcommand("snapshot", "The player area as the viewer would show it, as an image file.");
    command->footer("Example: daylark-tool snapshot day1.dls --playlist 1 --item 3 --frame 42 --size "
                    "1280x720 --out still.jpg");
    arguments->item.addTo(*command);
    command->add_option("--frame", arguments->frame, "frame number, from 1")->required();
    command->add_flag("--frame-number", arguments->isProductionNumber, "N is the production's own number, such as 1001");
    arguments->colour.addTo(*command);
    command->add_option("--size", arguments->size, "WIDTHxHEIGHT of the player area in pixels")->required();
    command->add_option("--layer", arguments->layer, "of a run: a layer or a channel, as probe lists them");
    command->add_option("--out", arguments->out, "a .jpg, .png or .tif file")->required();
    command->callback([&context, arguments] { snapshot(context, *arguments); });
}

} // namespace daylark::tool
