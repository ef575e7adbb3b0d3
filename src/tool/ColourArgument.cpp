#include "tool/ColourArgument.h"

#include "media/decode/VideoFrame.h"
#include "tool/ToolContext.h"

#include <CLI/CLI.hpp>

namespace daylark::tool {

void ColourArguments::addTo(CLI::App& command) {
    command.add_option("--input-space", inputSpace, "how the picture's numbers are to be read, by the colour configuration");
    command.add_option("--display", display,
                       "a display of the colour configuration; default: the one remembered, else its first");
    command.add_option("--view", view, "a view of that display; default as above");
}

std::optional<std::shared_ptr<const DisplayProcessor>>
ColourArguments::processorFor(ToolContext& context, const VideoFrame& frame, ColourConfig::Source source,
                              const QString& byHand) const {
    const std::shared_ptr<const DisplayProcessor> untouched;
    QString space = inputSpace.empty() ? byHand : QString::fromStdString(inputSpace);
    source.ownWord = frame.colourSpace();
    source.isLight = frame.isSceneLinear();
    const bool isAsked = !space.isEmpty() || !display.empty() || !view.empty();
    if (!isAsked && !source.isLight && !source.isRun && source.ownWord.isEmpty()) return untouched;
    Preferences& preferences = context.preferences();
    const auto config = ColourConfig::chosen(preferences.colourConfiguration());
    if (!config) {
        const QString file = preferences.colourConfiguration();
        context.fail(file.isEmpty() ? qEnvironmentVariable("OCIO") : file, config.error().text);
        return {};
    }
    if (space.isEmpty()) space = (*config)->spaceOf(source);
    if (space.isEmpty()) return untouched;
    DisplayTransform transform{space, preferences.colourDisplay(), preferences.colourView(), preferences.colourLook()};
    if (!display.empty()) transform.display = QString::fromStdString(display);
    if (!view.empty()) transform.view = QString::fromStdString(view);
    const DisplayTransform fitted = (*config)->fitted(transform);
    if (!display.empty() && fitted.display != transform.display) {
        context.fail(transform.display, QStringLiteral("no display of the colour configuration, which has %1")
                                            .arg((*config)->displays().join(QStringLiteral(", "))));
        return {};
    }
    if (!view.empty() && fitted.view != transform.view) {
        context.fail(transform.view, QStringLiteral("no view of %1, which has %2")
                                         .arg(fitted.display, (*config)->views(fitted.display).join(QStringLiteral(", "))));
        return {};
    }
    const auto made = (*config)->processor(fitted);
    if (!made) {
        context.fail(source.path, made.error().text);
        return {};
    }
    return *made;
}

} // namespace daylark::tool
