#pragma once

#include <QDir>
#include <QString>

#include <optional>

namespace daylark::demo {

/// A shot as an effects house sends it: numbered pictures from 1001 in scene-linear light (half floats, ACEScg), two of which
/// have not been rendered yet. What is wrong, or nothing.
[[nodiscard]] std::optional<QString> makeEffectsShot(const QDir& root);

} // namespace daylark::demo
