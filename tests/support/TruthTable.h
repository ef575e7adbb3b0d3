#pragma once

#include "base/Result.h"
#include "support/MovieMaker.h"
#include "support/TruthReport.h"

#include <QSize>
#include <QString>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace daylark::truth {

/// What a movie must show, known from how it was made and never from what reads it. Frames count from 0.
struct Expectation {
    static constexpr int any = 0;   ///< builds on a damaged picture: some picture stands there
    static constexpr int none = -1; ///< a picture without any number in it

    std::vector<int> pictures;  ///< by frame: the number drawn into the picture, or `any`
    std::vector<qint64> starts; ///< by frame: when it is shown, in 1/scale seconds from the first
    qint64 end = 0;             ///< where the last frame ends; 0: the file doesn't say
    qint64 scale = 1;
    QString media; ///< what opens it, where that isn't the file's path
    QSize shape; ///< of the pictures as they are shown; empty: nobody says
    int mayLack = 0;  ///< so many frames at the end may be missing: they were cut off
    int looseEnd = 0; ///< so many of the last frames that there are may show anything

    [[nodiscard]] qint64 count() const { return qint64(pictures.size()); }
    /// Which frame stands at a time on any scale; clamped.
    [[nodiscard]] qint64 frameAt(qint64 ticks, qint64 timeScale) const;
};

/// One clip of the table: how it is made and what it must show.
struct Clip {
    std::string name;
    MovieSpec spec; ///< its path is the file's extension
    std::function<Result<Expectation>(MovieSpec spec)> make;

    /// Makes it in this folder and gives its path.
    [[nodiscard]] Result<Expectation> makeIn(const QString& folder, QString& path) const;
};

std::ostream& operator<<(std::ostream& out, const Clip& clip);

/// The table: every codec, container, rate and oddity several times, without their whole product.
[[nodiscard]] std::vector<Clip> clips();

} // namespace daylark::truth
