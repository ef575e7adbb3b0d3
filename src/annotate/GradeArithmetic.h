#pragma once

#include "model/ColourTransform.h"
#include "model/Grade.h"

#include <array>

namespace daylark {

/// What a grade does to a picture's display-referred RGB, as arithmetic: the reference that both renderers
/// are measured against, and the short form that they work with. Pure functions; any thread; any eight
/// numbers give a defined picture.
///
/// Numbers that aren't finite count as neutral, and all are held to ranges far beyond what shows (see
/// `heldGrade`), so that single precision never meets infinity.

using Rgb = std::array<double, 3>;

/// The power is held to this much either way. Gamma 0 asks for an infinite one; at 4096 all that is darker
/// than white has become black as well, white stays white, and what is brighter than white comes out white.
inline constexpr double gradePowerLimit = 4096;
/// What the power may give at most; dividing by 0 asks for more.
inline constexpr double gradeCurveCeiling = 1048576;

/// The grade with every number finite and held to: exposure -20 to 20, brightness, contrast, saturation and
/// gains -1000 to 1000. Gamma is only made finite: its power is held.
[[nodiscard]] Grade heldGrade(const Grade& grade);

/// The six operations one after the other, in the order of a grade that is switched on: gains, gamma,
/// exposure, saturation, contrast, brightness; nothing is clamped between them. A negative number counts as 0
/// when it is raised to a power; gamma 1 raises nothing.
[[nodiscard]] Rgb graded(const Rgb& colour, const Grade& grade);

/// The same as one curve and one affine map.
[[nodiscard]] ColourTransform colourTransformOf(const Grade& grade);

/// What a transform does, in double precision.
[[nodiscard]] Rgb transformed(const Rgb& colour, const ColourTransform& transform);

} // namespace daylark
