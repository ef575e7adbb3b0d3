#include "ui/commands/ViewerCommands.h"

#include "model/StatusCodes.h"
#include "preferences/Preferences.h"
#include "ui/commands/BookmarkCommands.h"
#include "ui/commands/Commands.h"
#include "ui/commands/DrawingCommands.h"
#include "ui/commands/GeometryCommands.h"
#include "ui/commands/GradeCommands.h"
#include "ui/commands/PanelCommands.h"
#include "ui/commands/ViewerKeys.h"
#include "ui/common/FlagPopUp.h"
#include "viewer/MoviePlayerController.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>
#include <QMenuBar>

namespace daylark {

namespace {

QString viewerText(const char* text) {
    return QCoreApplication::translate("ViewerWindow", text);
}

QString viewerId(const char* name) {
    return QStringLiteral("viewer.%1").arg(QLatin1String(name));
}

/// One line of the table of commands.
struct ViewerCommand {
    const char* name;
    const char* text;
    const char* icon;
    QKeySequence key;
    std::function<void()> run;
    std::function<bool()> enabled = {};
    std::function<bool()> checked = {};
};

void addAll(Commands& commands, std::vector<ViewerCommand> list) {
    for (ViewerCommand& command : list) {
        QAction* action = commands.add({viewerId(command.name),
                                        viewerText(command.text),
                                        QLatin1String(command.icon),
                                        command.key,
                                        std::move(command.run),
                                        std::move(command.enabled),
                                        std::move(command.checked),
                                        {}});
        action->setAutoRepeat(false);
    }
}

void addTransport(Commands& commands, MoviePlayerController& controller) {
    Transport& transport = controller.transport();
    const auto hasMovie = [&controller] { return controller.currentMovie() != nullptr; };
    addAll(commands, {{"playPause", QT_TRANSLATE_NOOP("ViewerWindow", "&Play/Pause"), "play", Qt::Key_Space,
                       [&] { transport.playPauseMovie(); }, hasMovie},
                      {"playForwards", QT_TRANSLATE_NOOP("ViewerWindow", "Play &Forwards"), "fastForward",
                       Qt::Key_L, [&] { transport.playMovieForwards(); }, hasMovie},
                      {"playBackwards", QT_TRANSLATE_NOOP("ViewerWindow", "Play &Backwards"), "fastBackward",
                       Qt::Key_J, [&] { transport.playMovieBackwards(); }, hasMovie},
                      {"pause", QT_TRANSLATE_NOOP("ViewerWindow", "P&ause"), "pause", Qt::Key_K,
                       [&] { transport.pauseMovie(); }, hasMovie},
                      {"stepForward", QT_TRANSLATE_NOOP("ViewerWindow", "&Next Frame"), "stepForward",
                       Qt::Key_Right, [&] { transport.jumpToNextFrame(); }, hasMovie},
                      {"stepBackward", QT_TRANSLATE_NOOP("ViewerWindow", "P&revious Frame"), "stepBackward",
                       Qt::Key_Left, [&] { transport.jumpToPreviousFrame(); }, hasMovie},
                      {"firstFrame", QT_TRANSLATE_NOOP("ViewerWindow", "F&irst Frame"), "firstFrame",
                       Qt::Key_Home, [&] { transport.jumpToFirstFrame(); }, hasMovie},
                      {"lastFrame", QT_TRANSLATE_NOOP("ViewerWindow", "&Last Frame"), "lastFrame",
                       Qt::Key_End, [&] { transport.jumpToLastFrame(); }, hasMovie}});
    for (const char* held : {"stepForward", "stepBackward"})
        commands.action(viewerId(held))->setAutoRepeat(true);
}

void addMovie(Commands& commands, MoviePlayerController& controller) {
    const auto hasMovie = [&controller] { return controller.currentMovie() != nullptr; };
    addAll(commands, {{"previousMovie", QT_TRANSLATE_NOOP("ViewerWindow", "&Previous Movie"), "previousMovie",
                       Qt::Key_PageUp, [&] { controller.transport().displayPreviousMovie(); },
                       [&] { return controller.list().findPreviousMovie() >= 0; }},
                      {"nextMovie", QT_TRANSLATE_NOOP("ViewerWindow", "&Next Movie"), "nextMovie",
                       Qt::Key_PageDown, [&] { controller.transport().displayNextMovie(); },
                       [&] { return controller.list().findNextMovie() >= 0; }},
                      {"reveal", QT_TRANSLATE_NOOP("ViewerWindow", "&Reveal in File Browser"), "reveal",
                       Qt::CTRL | Qt::Key_R, [&] { controller.revealInFinder(); }, hasMovie},
                      {"copyPath",
                       QT_TRANSLATE_NOOP("ViewerWindow", "&Copy File Path"),
                       "copy",
                       {},
                       [&] { controller.copyPath(); },
                       hasMovie},
                      {"copyFilename",
                       QT_TRANSLATE_NOOP("ViewerWindow", "Copy &Filename"),
                       "copy",
                       {},
                       [&] { controller.copyFilename(); },
                       hasMovie},
                      {"copyTimecode",
                       QT_TRANSLATE_NOOP("ViewerWindow", "Copy &Timecode"),
                       "",
                       {},
                       [&] { controller.copyTimecode(); },
                       hasMovie}});
    for (int tag = status::none; tag <= status::skip; ++tag) {
        const auto isShown = [&controller, tag] {
            const auto movie = controller.currentMovie();
            return movie && (movie->flagString == QString::number(tag) ||
                             (tag == status::none && movie->flagString.isEmpty()));
        };
        const QString title = FlagPopUp::flagTitle(tag, controller.preferences());
        commands
            .add({FlagPopUp::commandId(tag),
                  title,
                  FlagPopUp::flagIcon(tag),
                  QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_0 + tag - status::none)),
                  [&controller, tag] {
                      controller.setFlagImage({FlagPopUp::flagTitle(tag, controller.preferences()), tag});
                  },
                  hasMovie,
                  isShown,
                  {}})
            ->setAutoRepeat(false);
    }
    renameFlagCommands(commands, controller);
}

void addRange(Commands& commands, MoviePlayerController& controller) {
    PlaybackRange& range = controller.range();
    const auto hasMovie = [&controller] { return controller.currentMovie() != nullptr; };
    const auto trims = [&controller] { return controller.preferences().trimHandles(); };
    addAll(commands, {{"markIn", QT_TRANSLATE_NOOP("ViewerWindow", "Mark &In"), "setIn", Qt::Key_I,
                       [&] { range.markInPoint(); }, hasMovie},
                      {"markOut", QT_TRANSLATE_NOOP("ViewerWindow", "Mark &Out"), "setOut", Qt::Key_U,
                       [&] { range.markOutPoint(); }, hasMovie},
                      {"trimHandles", QT_TRANSLATE_NOOP("ViewerWindow", "&Trim Handles"), "handles",
                       Qt::Key_R, [&] { range.toggleTrimHandles(); }, hasMovie, trims},
                      {"resetHandles", QT_TRANSLATE_NOOP("ViewerWindow", "&Reset Handles"), "reset",
                       Qt::SHIFT | Qt::Key_R, [&] { range.resetHandles(); }, hasMovie},
                      {"counterToOne",
                       QT_TRANSLATE_NOOP("ViewerWindow", "Set Frame Counter to &One"),
                       "",
                       {},
                       [&] { controller.time().setFrameCounterToOne(); },
                       hasMovie}});
}

constexpr const char* thumbnailChoices[] = {"Set Thumbnail Image", "First Frame", "Second Frame",
                                            "Middle Frame", "Last Frame"};

QString thumbnailCommandId(const char* choice) {
    return QStringLiteral("viewer.thumbnail.%1").arg(QString::fromLatin1(choice).remove(QLatin1Char(' ')));
}

void addThumbnails(Commands& commands, MoviePlayerController& controller, const ViewerWindowActions& window) {
    for (const char* choice : thumbnailChoices) {
        const QString title = QString::fromLatin1(choice);
        commands.add({thumbnailCommandId(choice),
                      title,
                      {},
                      {},
                      [make = window.makeThumbnail, title] { make(title); },
                      [&controller] { return controller.currentMovie() != nullptr; }});
    }
}

/// A preference that is on or off, as a command.
ViewerCommand switchOf(Preference<bool>& preference, const char* name, const char* text,
                       QKeySequence shortcut = {}) {
    return {name,
            text,
            "",
            shortcut,
            [&preference] { preference.flip(); },
            {},
            [&preference] { return preference(); }};
}

void addBookmarksAndView(Commands& commands, MoviePlayerController& controller,
                         const ViewerWindowActions& window) {
    Preferences& preferences = controller.preferences();
    const auto hasMovie = [&controller] { return controller.currentMovie() != nullptr; };
    addAll(commands,
           {{"addBookmark",
             QT_TRANSLATE_NOOP("ViewerWindow", "&Add Bookmark"),
             "addBookmark",
             {},
             [&] { controller.bookmarks().addBookmark(); },
             hasMovie},
            {"editBookmarkText", QT_TRANSLATE_NOOP("ViewerWindow", "&Edit Bookmark Text"), "", Qt::Key_F2,
             window.editBookmarkText, hasMovie},
            {"loopBookmark", QT_TRANSLATE_NOOP("ViewerWindow", "&Loop Bookmark"), "loop",
             Qt::CTRL | Qt::Key_L, window.loopBookmark, hasMovie},
            {"goToBookmark",
             QT_TRANSLATE_NOOP("ViewerWindow", "&Go to First Frame of Bookmark"),
             "goToFirst",
             {},
             window.goToSelectedBookmark,
             hasMovie},
            {"deleteBookmark",
             QT_TRANSLATE_NOOP("ViewerWindow", "&Delete Bookmark"),
             "remove",
             {},
             window.deleteSelectedBookmark,
             hasMovie},
            {"fullScreen",
             QT_TRANSLATE_NOOP("ViewerWindow", "&Full Screen"),
             "fullScreen",
             Qt::Key_F11,
             window.toggleFullScreen,
             {},
             window.isFullScreen},
            {"writeNotes", QT_TRANSLATE_NOOP("ViewerWindow", "&Write Notes"), "notes", Qt::CTRL | Qt::Key_N,
             window.writeNotes, hasMovie},
            {"leave", QT_TRANSLATE_NOOP("ViewerWindow", "&Leave Text or Full Screen"), "", Qt::Key_Escape,
             window.leave},
            {"close", QT_TRANSLATE_NOOP("ViewerWindow", "&Close Viewer"), "close", Qt::CTRL | Qt::Key_W,
             window.close},
            {"keys", QT_TRANSLATE_NOOP("ViewerWindow", "&Keys…"), "help", Qt::Key_F1, window.showKeys},
            switchOf(preferences.displayFrameCounter, "counter",
                     QT_TRANSLATE_NOOP("ViewerWindow", "Frame &Counter on Picture")),
            switchOf(preferences.displayTimecode, "timecode",
                     QT_TRANSLATE_NOOP("ViewerWindow", "&Timecode on Picture")),
            switchOf(preferences.displayFilename, "filename",
                     QT_TRANSLATE_NOOP("ViewerWindow", "File &Name on Picture")),
            switchOf(preferences.displayBookmarkText, "bookmarkText",
                     QT_TRANSLATE_NOOP("ViewerWindow", "Bookmark Te&xt on Picture")),
            switchOf(preferences.displayPlaybackStatistics, "statistics",
                     QT_TRANSLATE_NOOP("ViewerWindow", "Playback &Statistics"))});
}

void fill(QMenu* menu, const Commands& commands, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        if (*name == '-')
            menu->addSeparator();
        else
            menu->addAction(commands.action(viewerId(name)));
    }
}

} // namespace

void addViewerCommands(Commands& commands, MoviePlayerController& controller,
                       const ViewerWindowActions& window) {
    addTransport(commands, controller);
    addMovie(commands, controller);
    addRange(commands, controller);
    addThumbnails(commands, controller, window);
    addBookmarksAndView(commands, controller, window);
    addBookmarkCommands(commands, controller);
    addPanelCommands(commands, controller);
    addGradeCommands(commands, controller);
    addDrawingCommands(commands, controller);
    addGeometryCommands(commands, controller);
    ViewerKeys::addCommands(commands, controller);
    commands.setAlternative(viewerId("fullScreen"), Qt::CTRL | Qt::Key_F);
}

void buildViewerMenus(QMenuBar& menuBar, const Commands& commands) {
    fill(menuBar.addMenu(viewerText("&Playback")), commands,
         {"playPause", "playForwards", "playBackwards", "pause", "-", "stepForward", "stepBackward",
          "firstFrame", "lastFrame", "-"});
    QMenu* movie = menuBar.addMenu(viewerText("&Movie"));
    fill(movie, commands, {"previousMovie", "nextMovie", "-"});
    QMenu* flags = movie->addMenu(viewerText("&Flag"));
    for (int tag = status::none; tag <= status::skip; ++tag)
        flags->addAction(commands.action(FlagPopUp::commandId(tag)));
    QMenu* thumbnails = movie->addMenu(viewerText("&Thumbnail"));
    for (const char* choice : thumbnailChoices)
        thumbnails->addAction(commands.action(thumbnailCommandId(choice)));
    fill(movie, commands,
         {"-", "writeNotes", "-", "reveal", "copyPath", "copyFilename", "copyTimecode", "-", "close"});
    fill(menuBar.addMenu(viewerText("&Range")), commands,
         {"markIn", "markOut", "-", "trimHandles", "resetHandles"});
    QMenu* bookmarks = menuBar.addMenu(viewerText("&Bookmarks"));
    fill(bookmarks, commands,
         {"addBookmark", "editBookmarkText", "loopBookmark", "goToBookmark", "deleteBookmark", "-"});
    fillBookmarkMenu(bookmarks, commands);
    fillDrawingMenu(menuBar.addMenu(viewerText("&Drawing")), commands);
    fillGradeMenu(menuBar.addMenu(viewerText("&Grade")), commands);
    fillPictureMenu(menuBar.addMenu(viewerText("P&icture")), commands);
    fill(menuBar.addMenu(viewerText("&View")), commands,
         {"counter", "counterToOne", "timecode", "filename", "bookmarkText", "-", "statistics", "-",
          "fullScreen", "leave"});
    fillPanelMenu(menuBar.addMenu(viewerText("Pa&nels")), commands);
    fillWindowMenu(menuBar.addMenu(viewerText("&Window")), commands);
    fill(menuBar.addMenu(viewerText("&Help")), commands, {"keys"});
}

void renameFlagCommands(const Commands& commands, MoviePlayerController& controller) {
    for (int tag = status::none; tag <= status::skip; ++tag) {
        QString title = FlagPopUp::flagTitle(tag, controller.preferences());
        QAction* action = commands.action(FlagPopUp::commandId(tag));
        action->setToolTip(title);
        action->setText(title.replace(u'&', QStringLiteral("&&")));
        action->setIconText(viewerText(QT_TRANSLATE_NOOP("ViewerWindow", "Flag: %1")).arg(action->toolTip()));
    }
}

} // namespace daylark
