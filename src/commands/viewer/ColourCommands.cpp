#include "commands/viewer/ViewerParts.h"
#include "preferences/Preferences.h"

namespace daylark {

namespace {

constexpr double stopStep = 0.5, gammaStep = 0.1;

} // namespace

// Only what goes through a view can be looked at otherwise than it is.
void bindColourCommands(CommandSet& commands, MoviePlayerController& controller, const ViewerConditions&) {
    ViewerColour& colour = controller.colour();
    const Condition& isManaged = commands.when([&colour] { return colour.isManaged(); })
                                     .follows(colour, &ViewerColour::changed)
                                     .follows(controller, &MoviePlayerController::movieShown);
    const auto bind = [&](const char* id, std::function<void()> run) {
        commands.bind(QLatin1String(id), std::move(run), &isManaged);
    };
    bind("viewer.lookBrighter", [&colour] { colour.setExposure(colour.transform().exposure + stopStep); });
    bind("viewer.lookDarker", [&colour] { colour.setExposure(colour.transform().exposure - stopStep); });
    bind("viewer.lookHigherGamma", [&colour] { colour.setGamma(colour.transform().gamma + gammaStep); });
    bind("viewer.lookLowerGamma", [&colour] { colour.setGamma(colour.transform().gamma - gammaStep); });
    bind("viewer.lookAsItIs", [&colour] { colour.resetLooking(); });
    bindSwitch(commands, "viewer.pixelReadOut", controller.preferences().displayPixelReadOut);
    commands.bind(
        QStringLiteral("viewer.nextScope"), [&scopes = controller.scopes()] { scopes.chooseNext(); },
        &whenPanelIsShown(commands, controller.panels(), ViewerPanel::scopes));
}

} // namespace daylark
