#include "tool/ColourArgument.h"

#include "media/decode/VideoFrame.h"
#include "tool/ToolContext.h"
#include "viewer/display/ColourPreferences.h"

#include <CLI/CLI.hpp>

namespace daylark::tool {

void ColourArguments::addTo(CLI::App& command) {
    command.add_option("--input-space", inputSpace, "how the picture's numbers are to be read, by the colour configuration");
    command.add_option("--display", display,
                       "a display of the colour configuration; default: the one remembered, else its first");
    command.add_option("--view", view, "a view of that display; default as above");
}

ColourChoice ColourArguments::choice(ToolContext& context, const QString& sessionConfiguration) const {
    ColourChoice choice = colourChoiceOf(context.preferences(), sessionConfiguration);
    if (!display.empty()) choice.display = QString::fromStdString(display);
    if (!view.empty()) choice.view = QString::fromStdString(view);
    return choice;
}

std::shared_ptr<const ColourConfig> ColourArguments::configFor(ToolContext& context, const ColourChoice& choice) const {
    const auto read = ColourConfig::chosen(choice.configuration);
    if (!read) {
        context.fail(choice.configuration.isEmpty() ? qEnvironmentVariable("OCIO") : choice.configuration, read.error().text);
        return nullptr;
    }
    const ColourConfig& config = **read;
    const DisplayTransform fitted = config.fitted({{}, choice.display, choice.view, choice.look});
    if (!display.empty() && fitted.display != choice.display) {
        context.fail(choice.display, QStringLiteral("no display of the colour configuration, which has %1")
                                         .arg(config.displays().join(QStringLiteral(", "))));
        return nullptr;
    }
    if (!view.empty() && fitted.view != choice.view) {
        context.fail(choice.view, QStringLiteral("no view of %1, which has %2")
                                      .arg(fitted.display, config.views(fitted.display).join(QStringLiteral(", "))));
        return nullptr;
    }
    return *read;
}

std::optional<std::shared_ptr<const DisplayProcessor>>
ColourArguments::processorFor(ToolContext& context, const VideoFrame& frame, ColourConfig::Source source,
                              const Known& known) const {
    const std::shared_ptr<const DisplayProcessor> untouched;
    QString space = inputSpace.empty() ? known.inputSpace : QString::fromStdString(inputSpace);
    source.ownWord = frame.colourSpace();
    source.isLight = frame.isSceneLinear();
    const bool isAsked = !space.isEmpty() || !display.empty() || !view.empty();
    if (!isAsked && !source.isLight && !source.isRun && source.ownWord.isEmpty()) return untouched;
    const ColourChoice chosen = choice(context, known.configuration);
    const auto config = configFor(context, chosen);
    if (!config) return {};
    if (space.isEmpty()) space = config->spaceOf(source);
    if (space.isEmpty()) return untouched;
    const auto made = config->processor(config->fitted({space, chosen.display, chosen.view, chosen.look}));
    if (made) return *made;
    context.fail(source.path, made.error().text);
    return {};
}

std::optional<StillColour> ColourArguments::stillColour(ToolContext& context) const {
    const ColourChoice chosen = choice(context, {});
    const QString space = QString::fromStdString(inputSpace);
    if (!space.isEmpty() || !display.empty() || !view.empty()) {
        const auto config = configFor(context, chosen);
        if (!config) return {};
        if (!space.isEmpty() && config->spaceNamed(space).isEmpty()) {
            context.fail(space, QStringLiteral("no space of the colour configuration"));
            return {};
        }
    }
    return StillColour{chosen, space, std::make_shared<StillColours>()};
}

} // namespace daylark::tool
