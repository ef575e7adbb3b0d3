#pragma once

#include "archive/Value.h"
#include "model/runs/FrameRun.h"

#include <QString>

#include <optional>

namespace daylark {

/// Frames a second as a fraction; 0/1: nobody says.
struct RunRate {
    qint32 frames = 0, seconds = 1;
    [[nodiscard]] bool isKnown() const { return frames > 0 && seconds > 0; }
    [[nodiscard]] double value() const { return isKnown() ? double(frames) / seconds : 0; }
    /// The nearest of the usual rates (23.976 is 24000/1001) or of thousandths; unknown for what is no rate (1 to 1000).
    [[nodiscard]] static RunRate of(double framesPerSecond);
    bool operator==(const RunRate&) const = default;
};

/// What an item is besides its file when it is a run of pictures: its pictures stand in the folder of the item's path, which
/// is that of the first one. Kept in the archive beside the keys that every reader knows. A value; any thread.
struct MovieRun {
    FrameRun run;
    RunRate rate;         ///< by hand; unknown: the pictures' own, else a preference
    bool isFixed = false; ///< keeps its ends whatever comes into the folder
    QString layer;        ///< what of the pictures is shown; null: their colours

    [[nodiscard]] Value toValue() const;
    /// None where it makes no sense; the bytes may be a stranger's.
    [[nodiscard]] static std::optional<MovieRun> fromValue(const Value& value);
    bool operator==(const MovieRun&) const = default;
};

/// What stands where a picture is missing.
enum class MissingPicture { held, black, slate };

/// How a run is read, by preferences and not by the item.
struct RunView {
    MissingPicture missing = MissingPicture::held;
    RunRate usualRate{24, 1}; ///< where neither hand nor pictures say one
    bool operator==(const RunView&) const = default;
};

/// A run as whoever opens media is told of it: one text in the place of a path, so that everybody who passes paths on passes
/// runs on as well. No path that the library holds is spelt like it, since it begins with "run:" and not with "/".
struct RunAddress {
    QString folder;
    MovieRun movie;
    RunView view;

    [[nodiscard]] QString text() const;
    /// None for what is a path, or makes no sense.
    [[nodiscard]] static std::optional<RunAddress> of(const QString& text);
    [[nodiscard]] QString pathOf(qint64 number) const;
    bool operator==(const RunAddress&) const = default;
};

/// What opens an item: its path, or the address of its run, whose pictures stand where `path` does.
[[nodiscard]] QString mediaAddress(const QString& path, const std::optional<MovieRun>& run, const RunView& view = {});
/// The path of a file that stands for it: what it is told by, and what a file system can be asked about.
[[nodiscard]] QString pathOfAddress(const QString& address);

} // namespace daylark
