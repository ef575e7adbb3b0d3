#pragma once

#include "platform/UserDefaults.h"

namespace daylark {

/// Every preference key with its type and default, in the order of registration.
[[nodiscard]] UserDefaults::Table preferencesTable();

/// What start-up does with the stored values, in order: correct what older versions wrote, register the
/// table, check "loadFrame", force the values that every start resets, take over the default handles.
/// Interface thread, once.
void preparePreferences(UserDefaults& defaults);

/// Removes every stored key and synchronises; the registered table applies again.
void resetPreferences(UserDefaults& defaults);

} // namespace daylark
