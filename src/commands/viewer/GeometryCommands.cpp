#include "commands/viewer/ViewerCommands.h"
#include "commands/viewer/ViewerParts.h"
#include "preferences/Preferences.h"

#include <cmath>

namespace daylark {

namespace {

/// The actions are told apart by their titles, which are the commands'.
template<class Action>
void bindByTitle(CommandSet& commands, const QString& id, ViewerGeometry& geometry, Action action,
                 const Condition* enabled, const Condition* checked = nullptr) {
    commands.bind(
        id, [&geometry, action, title = commands.command(id).text] { (geometry.*action)({title}); }, enabled,
        checked);
}

void bindMask(CommandSet& commands, ViewerGeometry& geometry, Preferences& preferences) {
    const QString mask = QStringLiteral("viewer.mask");
    const Preference<bool>& shown = preferences.showMask;
    Condition& isShown = commands.when([&shown] { return shown(); }).follows(shown, &PreferenceItem::changed);
    commands.bind(
        mask, [&geometry] { geometry.toggleMask(); }, nullptr, &isShown);
    const auto retitle = [&commands, &geometry, mask] { commands.setText(mask, geometry.maskMenuTitle()); };
    QObject::connect(&isShown, &Condition::changed, &commands, retitle);
    retitle();
    const Preference<double>& ratio = preferences.movieMaskRatio;
    for (const auto& [title, value] : maskRatios)
        bindByTitle(commands, viewerCommand::maskRatio(title), geometry, &ViewerGeometry::resizeMaskElements,
                    nullptr,
                    &commands.when([&ratio, value = value] { return std::abs(ratio() - value) < 1e-6; })
                         .follows(ratio, &PreferenceItem::changed));
}

} // namespace

void bindGeometryCommands(CommandSet& commands, MoviePlayerController& controller,
                          const ViewerConditions& when) {
    ViewerGeometry& geometry = controller.geometry();
    Preferences& preferences = controller.preferences();
    for (const char* id : viewerCommand::zooms)
        bindByTitle(commands, QLatin1String(id), geometry, &ViewerGeometry::scaleMovie, &when.isPlayable);
    const auto isInWindow = [&movie = when.isPlayable, &full = when.fullScreen] { return movie.holds() && !full.holds(); };
    const Condition& inWindow = commands.when(isInWindow)
                                    .follows(when.isPlayable, &Condition::changed)
                                    .follows(when.fullScreen, &Condition::changed);
    for (const char* id : {"viewer.windowActual", "viewer.windowHalf", "viewer.windowThird"})
        bindByTitle(commands, QLatin1String(id), geometry, &ViewerGeometry::scaleWindow, &inWindow);
    const Preference<int>& favourite = preferences.panelLayout1.viewerWidth;
    bindByTitle(commands, QStringLiteral("viewer.windowFavourite"), geometry, &ViewerGeometry::scaleWindow,
                &commands
                     .when([&inWindow, &favourite] {
                         return inWindow.holds() && favourite() >= DisplayGeometry::narrowestWindow;
                     })
                     .follows(inWindow, &Condition::changed)
                     .follows(favourite, &PreferenceItem::changed));
    bindByTitle(commands, QStringLiteral("viewer.flop"), geometry, &ViewerGeometry::mirrorMovie, nullptr,
                &commands.when([&geometry] { return geometry.mirrorsLeftRight(); })
                     .follows(geometry, &ViewerGeometry::changed));
    bindByTitle(commands, QStringLiteral("viewer.flip"), geometry, &ViewerGeometry::mirrorMovie, nullptr,
                &commands.when([&geometry] { return geometry.mirrorsUpsideDown(); })
                     .follows(geometry, &ViewerGeometry::changed));
    bindMask(commands, geometry, preferences);
    for (const auto& [title, value] : viewerCommand::pixelAspects)
        bindByTitle(
            commands, viewerCommand::pixelAspect(title), geometry, &ViewerGeometry::setPixelAspectRatio,
            nullptr,
            &commands.when([&geometry, value = value] { return geometry.pixelAspectRatio() == value; })
                 .follows(geometry, &ViewerGeometry::changed));
    Preference<bool>& constrain = preferences.constrainViewerToMovieProportions;
    commands.bind(
        QStringLiteral("viewer.constrain"),
        [&geometry, &constrain] {
            constrain.flip();
            geometry.setConstrainViewerProportions();
        },
        nullptr,
        &commands.when([&constrain] { return constrain(); }).follows(constrain, &PreferenceItem::changed));
}

} // namespace daylark
