#include "commands/viewer/ViewerParts.h"
#include "media/facts/MediaTypes.h"

namespace daylark {

void bindAudioCommands(CommandSet& commands, MoviePlayerController& controller, const ViewerConditions& when) {
    MovieAudio& audio = controller.audio();
    const auto whenSound = [&](std::function<bool()> ask) -> const Condition* {
        return &commands.when(std::move(ask))
                    .follows(when.isPlayable, &Condition::changed)
                    .follows(controller, &MoviePlayerController::movieShown, &MoviePlayerController::movieLoading)
                    .follows(audio, &MovieAudio::soundKnown)
                    .follows(controller.edits(), &ReviewEdits::movieChanged);
    };
    const Condition* isHeard = whenSound([&playable = when.isPlayable, &audio] { return playable.holds() && audio.isHeard(); });
    // Pictures without a container have nothing that a sound could be saved with.
    const Condition* isMovie = whenSound([&controller] {
        const auto movie = controller.currentMovie();
        return controller.isPlayable() && movie && !movie->frameRun &&
               mediaTypeOfPath(movie->filepathString) != MediaType::image;
    });
    const auto id = [](const char* name) { return QStringLiteral("viewer.%1").arg(QLatin1String(name)); };
    commands.bind(
        id("linkAudio"), [&audio] { audio.addAudioTrack(); }, &when.isPlayable);
    commands.bind(
        id("revertAudio"), [&audio] { audio.revertMovieAudioTracks(); }, whenSound([&audio] { return audio.isChanged(); }));
    commands.bind(
        id("removeAudio"), [&audio] { audio.removeMovieAudioTracks(); }, isHeard);
    commands.bind(
        id("saveAudio"), [&audio] { audio.saveMovieAudioTracks(); }, isHeard);
    commands.bind(
        id("saveMovie"), [&audio] { audio.saveMovieAs(); }, isMovie);
}

} // namespace daylark
