#pragma once

namespace daylark {

class Preferences;
enum class StartFrame;

/// Where movies start, as a person chose it, is kept over a start; what is not becomes the first frame there.
[[nodiscard]] bool isKeptAtStart(StartFrame start);

/// What start-up does with the stored preferences, in order: correct what older versions wrote, check where
/// movies start, force the values that every start resets, take over the default handles. Interface thread,
/// once, before anything reads them.
void correctAtStart(Preferences& preferences);

} // namespace daylark
