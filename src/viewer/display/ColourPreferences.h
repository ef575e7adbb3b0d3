#pragma once

#include "picture/colour/StillColours.h"
#include "preferences/Preferences.h"

namespace daylark {

/// By what pictures are brought to a display, as session and preferences say. Interface thread.
[[nodiscard]] inline ColourChoice colourChoiceOf(const Preferences& preferences, const QString& sessionConfiguration) {
    return {sessionConfiguration.isEmpty() ? preferences.colourConfiguration() : sessionConfiguration,
            preferences.colourDisplay(), preferences.colourView(), preferences.colourLook()};
}

} // namespace daylark
