#include "commands/viewer/ViewerParts.h"

namespace daylark {

void bindAudioCommands(CommandSet& commands, MoviePlayerController& controller, const ViewerConditions& when) {
    MovieAudio& audio = controller.audio();
    const auto whenSound = [&](std::function<bool()> ask) -> const Condition* {
        return &commands.when(std::move(ask))
                    .follows(controller, &MoviePlayerController::movieShown, &MoviePlayerController::movieLoading,
                             &MoviePlayerController::windowOpened, &MoviePlayerController::windowClosed)
                    .follows(controller.edits(), &ReviewEdits::movieChanged);
    };
    const auto id = [](const char* name) { return QStringLiteral("viewer.%1").arg(QLatin1String(name)); };
    commands.bind(
        id("linkAudio"), [&audio] { audio.addAudioTrack(); }, &when.hasMovie);
    commands.bind(
        id("revertAudio"), [&audio] { audio.revertMovieAudioTracks(); }, whenSound([&audio] { return audio.isChanged(); }));
    commands.bind(
        id("removeAudio"), [&audio] { audio.removeMovieAudioTracks(); },
        whenSound([&controller, &audio] { return controller.currentMovie() && !audio.isSilenced(); }));
    commands.bind(
        id("saveAudio"), [&audio] { audio.saveMovieAudioTracks(); }, &when.hasMovie);
    commands.bind(
        id("saveMovie"), [&audio] { audio.saveMovieAs(); }, &when.hasMovie);
}

} // namespace daylark
