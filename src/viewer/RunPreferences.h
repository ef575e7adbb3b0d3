#pragma once

#include "model/runs/MovieRun.h"
#include "preferences/Preferences.h"

namespace daylark {

/// How runs of pictures are read, as the preferences say. Interface thread.
[[nodiscard]] inline RunView runViewOf(const Preferences& preferences) {
    RunView view;
    const MissingPictures missing = preferences.missingPictures();
    view.missing = missing == MissingPictures::black   ? MissingPicture::black
                   : missing == MissingPictures::slate ? MissingPicture::slate
                                                       : MissingPicture::held;
    if (const RunRate rate = RunRate::of(preferences.runFrameRate()); rate.isKnown()) view.usualRate = rate;
    return view;
}

} // namespace daylark
