#include "commands/viewer/ViewerCommands.h"

#include "commands/HistoryCommands.h"
#include "commands/viewer/ViewerParts.h"
#include "model/StatusCodes.h"
#include "preferences/Preferences.h"

namespace daylark {

namespace {

const auto id = [](const char* name) { return QStringLiteral("viewer.%1").arg(QLatin1String(name)); };

/// What follows the movie on screen, besides the signals of its own subject.
Condition& withMovie(CommandSet& commands, MoviePlayerController& controller, std::function<bool()> ask) {
    return commands.when(std::move(ask))
        .follows(controller, &MoviePlayerController::movieShown, &MoviePlayerController::movieLoading,
                 &MoviePlayerController::windowOpened, &MoviePlayerController::windowClosed);
}

ViewerConditions conditionsOf(CommandSet& commands, MoviePlayerController& controller,
                              const Condition& fullScreen) {
    const auto bookmarked = [&controller] {
        const auto movie = controller.currentMovie();
        return movie && !movie->bookmarkStore.empty();
    };
    const auto withBookmarks = [&](std::function<bool()> ask) -> const Condition& {
        return withMovie(commands, controller, std::move(ask))
            .follows(controller.bookmarks(), &ViewerBookmarks::bookmarksChanged);
    };
    return {withMovie(commands, controller, [&controller] { return controller.currentMovie() != nullptr; }),
            withMovie(commands, controller, [&controller] { return controller.isPlayable(); }),
            withBookmarks(bookmarked),
            withBookmarks([&controller, bookmarked] { return controller.isPlayable() && bookmarked(); }),
            whenPanelIsShown(commands, controller.panels(), ViewerPanel::drawing), fullScreen};
}

void bindTransport(CommandSet& commands, MoviePlayerController& controller, const ViewerConditions& when) {
    Transport& transport = controller.transport();
    const auto onMovie = [&](const char* name, std::function<void()> run) {
        commands.bind(id(name), std::move(run), &when.isPlayable);
    };
    onMovie("playPause", [&transport] { transport.playPauseMovie(); });
    onMovie("playForwards", [&transport] { transport.playMovieForwards(); });
    onMovie("playBackwards", [&transport] { transport.playMovieBackwards(); });
    onMovie("pause", [&transport] { transport.pauseMovie(); });
    onMovie("stepForward", [&transport] { transport.jumpToNextFrame(); });
    onMovie("stepBackward", [&transport] { transport.jumpToPreviousFrame(); });
    onMovie("firstFrame", [&transport] { transport.jumpToFirstFrame(); });
    onMovie("lastFrame", [&transport] { transport.jumpToLastFrame(); });
    QObject::connect(&transport, &Transport::stateChanged, &commands, [&commands, &transport] {
        commands.setIcon(id("playPause"),
                         transport.isRunning() ? QStringLiteral("pause") : QStringLiteral("play"));
    });
}

void bindRange(CommandSet& commands, MoviePlayerController& controller, const ViewerConditions& when) {
    PlaybackRange& range = controller.range();
    const Preference<bool>& trims = controller.preferences().trimHandles;
    commands.bind(
        id("markIn"), [&range] { range.markInPoint(); }, &when.isPlayable);
    commands.bind(
        id("markOut"), [&range] { range.markOutPoint(); }, &when.isPlayable);
    commands.bind(
        id("trimHandles"), [&range] { range.toggleTrimHandles(); }, &when.isPlayable,
        &commands.when([&trims] { return trims(); }).follows(trims, &PreferenceItem::changed));
    commands.bind(
        id("resetHandles"), [&range] { range.resetHandles(); }, &when.isPlayable);
    commands.bind(
        id("counterToOne"), [&controller] { controller.time().setFrameCounterToOne(); }, &when.isPlayable);
}

void bindFlags(CommandSet& commands, MoviePlayerController& controller, const ViewerConditions& when) {
    for (int tag = status::none; tag <= status::skip; ++tag) {
        const auto isShown = [&controller, tag] {
            const auto movie = controller.currentMovie();
            return movie && (movie->flagString == QString::number(tag) ||
                             (tag == status::none && movie->flagString.isEmpty()));
        };
        commands.bind(
            viewerCommand::flag(tag),
            [&controller, tag] {
                const QString code = QString::number(tag);
                controller.setFlagImage(
                    {tag == status::none ? QStringLiteral("None") : controller.preferences().statusName(code),
                     tag});
            },
            &when.hasMovie,
            &withMovie(commands, controller, isShown)
                 .follows(controller.edits(), &ReviewEdits::movieChanged));
    }
}

void bindMovie(CommandSet& commands, MoviePlayerController& controller, const ViewerConditions& when,
               const ViewerWindowActions& window) {
    ViewerList& list = controller.list();
    // Movies to be skipped count for both.
    const auto neighbour = [&](std::function<bool()> ask) -> const Condition* {
        return &withMovie(commands, controller, std::move(ask))
                    .follows(list, &ViewerList::moviesChanged, &ViewerList::selectionChanged)
                    .follows(controller.edits(), &ReviewEdits::movieChanged);
    };
    commands.bind(
        id("previousMovie"), [&controller] { controller.transport().displayPreviousMovie(); },
        neighbour([&list] { return list.findPreviousMovie() >= 0; }));
    commands.bind(
        id("nextMovie"), [&controller] { controller.transport().displayNextMovie(); },
        neighbour([&list] { return list.findNextMovie() >= 0; }));
    const auto onMovie = [&](const char* name, std::function<void()> run) {
        commands.bind(id(name), std::move(run), &when.hasMovie);
    };
    const auto isThere = [&controller] {
        const auto movie = controller.currentMovie();
        return movie && movie->creatingThumbnailText != fileNotFoundText;
    };
    commands.bind(
        id("reveal"), [&controller] { controller.revealInFinder(); },
        &withMovie(commands, controller, isThere).follows(controller.edits(), &ReviewEdits::movieChanged));
    onMovie("copyPath", [&controller] { controller.copyPath(); });
    onMovie("copyFilename", [&controller] { controller.copyFilename(); });
    onMovie("copyTimecode", [&controller] { controller.copyTimecode(); });
    onMovie("writeNotes", window.writeNotes);
    commands.bind(id("goToFrame"), window.goToFrame, &when.isPlayable);
    for (const char* choice : viewerCommand::thumbnailChoices)
        commands.bind(
            viewerCommand::thumbnail(choice),
            [make = window.makeThumbnail, title = QString::fromLatin1(choice)] { make(title); },
            &when.isPlayable);
}

void bindView(CommandSet& commands, Preferences& preferences, const ViewerConditions& when,
              const ViewerWindowActions& window) {
    bindSwitch(commands, "viewer.counter", preferences.displayFrameCounter);
    bindSwitch(commands, "viewer.timecode", preferences.displayTimecode);
    bindSwitch(commands, "viewer.filename", preferences.displayFilename);
    bindSwitch(commands, "viewer.bookmarkText", preferences.displayBookmarkText);
    bindSwitch(commands, "viewer.statistics", preferences.displayPlaybackStatistics);
    commands.bind(id("fullScreen"), window.toggleFullScreen, nullptr, &when.fullScreen);
    QObject::connect(&when.fullScreen, &Condition::changed, &commands, [&commands, &on = when.fullScreen] {
        commands.setIcon(id("fullScreen"),
                         on.holds() ? QStringLiteral("leaveFullScreen") : QStringLiteral("fullScreen"));
    });
    commands.bind(id("leave"), window.leave);
    commands.bind(id("bringForward"), window.bringForward);
    commands.bind(id("close"), window.close);
    commands.bind(id("keys"), window.showKeys);
}

} // namespace

ViewerWindowState bindViewerCommands(CommandSet& commands, MoviePlayerController& controller,
                                     const ViewerWindowActions& window) {
    Condition& fullScreen = commands.when(window.isFullScreen);
    const ViewerConditions when = conditionsOf(commands, controller, fullScreen);
    bindTransport(commands, controller, when);
    bindRange(commands, controller, when);
    bindMovie(commands, controller, when, window);
    bindFlags(commands, controller, when);
    bindView(commands, controller.preferences(), when, window);
    // Without a bookmark these two say so.
    commands.bind(id("editBookmarkText"), window.editBookmarkText, &when.hasMovie);
    commands.bind(id("loopBookmark"), window.loopBookmark, &when.isPlayable);
    commands.bind(id("goToBookmark"), window.goToSelectedBookmark, &when.bookmarksReached);
    commands.bind(id("deleteBookmark"), window.deleteSelectedBookmark, &when.hasBookmarks);
    bindHistoryCommands(commands, controller.edits().history(),
                        [&controller] { return !controller.drawings().canvas().isDrawing(); });
    bindAudioCommands(commands, controller, when);
    bindBookmarkCommands(commands, controller, when);
    bindDrawingCommands(commands, controller, when);
    bindGradeCommands(commands, controller, when);
    bindColourCommands(commands, controller, when);
    bindGeometryCommands(commands, controller, when);
    bindPanelCommands(commands, controller, when);
    return {fullScreen};
}

void bindSwitch(CommandSet& commands, const char* command, Preference<bool>& preference) {
    commands.bind(
        QLatin1String(command), [&preference] { preference.flip(); }, nullptr,
        &commands.when([&preference] { return preference(); }).follows(preference, &PreferenceItem::changed));
}

QString viewerCommand::flag(int tag) {
    return QStringLiteral("viewer.flag.%1").arg(tag);
}

QString viewerCommand::thumbnail(const char* choice) {
    return QStringLiteral("viewer.thumbnail.%1").arg(QString::fromLatin1(choice).remove(QLatin1Char(' ')));
}

QString viewerCommand::maskRatio(const char* ratio) {
    return QStringLiteral("viewer.mask.%1").arg(QLatin1String(ratio));
}

QString viewerCommand::pixelAspect(const char* title) {
    return QStringLiteral("viewer.pixelAspect.%1").arg(QLatin1String(title));
}

} // namespace daylark
