#pragma once

#include "media/sound/SoundForm.h"

#include <QByteArray>

namespace daylark {

/// A WAVE file's parts, as bytes; an RF64 file where 4 GiB are not enough. Any thread; cannot fail.

/// What stands before the samples: `frames` of them follow, and `waveEnd`.
[[nodiscard]] QByteArray waveHeader(const SoundForm& form, qint64 frames);
/// What stands behind them.
[[nodiscard]] QByteArray waveEnd(const SoundForm& form, qint64 frames);
/// Samples from -1 to 1 at a depth; what is louder than a whole number can say is cut off there.
[[nodiscard]] QByteArray waveSamples(const double* samples, qint64 count, SoundDepth depth);

} // namespace daylark
