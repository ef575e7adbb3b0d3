#pragma once

#include "picture/colour/ColourConfig.h"

#include <QElapsedTimer>
#include <QString>

#include <deque>
#include <memory>
#include <mutex>

namespace daylark {

class VideoFrame;

/// By what stills beside the viewer are brought to a display: what was chosen, by its names. A plain value.
struct ColourChoice {
    QString configuration; ///< as `ColourConfig::chosen` takes it
    QString display, view, look;
    /// One text for each choice; empty for the one where nothing was chosen.
    [[nodiscard]] QString text() const;
    bool operator==(const ColourChoice&) const = default;
};

/// The configuration and the processors that stills were made with last, for several workers that make them: who comes second
/// waits for what the first one reads. A configuration that cannot be used is looked for anew after a while. Any thread but
/// the interface's, which must not wait.
class StillColours {
public:
    /// What a picture from there goes through; null: its numbers are shown as they are, since they are a display's already or
    /// there is no way to bring them to one. `source.ownWord` and `source.isLight` are read off the picture; `byHand` is the
    /// space that a person gave it.
    [[nodiscard]] std::shared_ptr<const DisplayProcessor> processorFor(const ColourChoice& choice, const VideoFrame& frame,
                                                                       ColourConfig::Source source, const QString& byHand);

private:
    struct Kept {
        DisplayTransform transform;
        std::shared_ptr<const DisplayProcessor> processor; ///< null: there is none
    };
    [[nodiscard]] std::shared_ptr<const ColourConfig> configOf(const QString& configuration);

    std::mutex mutex_;
    bool isRead_ = false;
    QString read_; ///< what `config_` was asked for by
    QElapsedTimer sinceRead_;
    std::shared_ptr<const ColourConfig> config_; ///< null: it cannot be used
    std::deque<Kept> kept_;                      ///< of that configuration, the newest first
};

/// What a worker needs to bring one item's pictures to a display. A value.
struct StillColour {
    ColourChoice choice;
    QString inputSpace; ///< by hand; empty: as the file says
    std::shared_ptr<StillColours> colours = {}; ///< null: numbers are shown as they are
    /// `media` is what opened the item.
    [[nodiscard]] std::shared_ptr<const DisplayProcessor> processorFor(const VideoFrame& frame, const QString& media) const;
};

} // namespace daylark
