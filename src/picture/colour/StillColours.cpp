#include "picture/colour/StillColours.h"

#include "media/decode/VideoFrame.h"
#include "model/runs/MovieRun.h"

#include <QStringList>

#include <algorithm>

namespace daylark {

namespace {

constexpr size_t mostStillProcessors = 12;
constexpr qint64 patienceWithBrokenMs = 30'000;

} // namespace

QString ColourChoice::text() const {
    const QStringList parts{configuration, display, view, look};
    return std::all_of(parts.begin(), parts.end(), [](const QString& part) { return part.isEmpty(); })
               ? QString()
               : parts.join(QLatin1Char('\n'));
}

std::shared_ptr<const ColourConfig> StillColours::configOf(const QString& configuration) {
    const bool isStale = !config_ && isRead_ && sinceRead_.hasExpired(patienceWithBrokenMs);
    if (isRead_ && read_ == configuration && !isStale) return config_;
    const auto read = ColourConfig::chosen(configuration);
    config_ = read ? *read : nullptr;
    read_ = configuration;
    isRead_ = true;
    sinceRead_.start();
    kept_.clear();
    return config_;
}

std::shared_ptr<const DisplayProcessor> StillColours::processorFor(const ColourChoice& choice, const VideoFrame& frame,
                                                                   ColourConfig::Source source, const QString& byHand) {
    source.ownWord = frame.colourSpace();
    source.isLight = frame.isSceneLinear();
    if (byHand.isEmpty() && !source.isLight && !source.isRun && source.ownWord.isEmpty()) return nullptr;
    const std::lock_guard lock(mutex_);
    const auto config = configOf(choice.configuration);
    if (!config) return nullptr;
    const QString space = byHand.isEmpty() ? config->spaceOf(source) : byHand;
    if (space.isEmpty()) return nullptr;
    const DisplayTransform transform = config->fitted({space, choice.display, choice.view, choice.look});
    const auto found =
        std::find_if(kept_.begin(), kept_.end(), [&](const Kept& kept) { return kept.transform == transform; });
    if (found != kept_.end()) return found->processor;
    const auto made = config->processor(transform);
    kept_.push_front({transform, made ? *made : nullptr});
    if (kept_.size() > mostStillProcessors) kept_.pop_back();
    return kept_.front().processor;
}

std::shared_ptr<const DisplayProcessor> StillColour::processorFor(const VideoFrame& frame, const QString& media) const {
    if (!colours || frame.isNull()) return nullptr;
    return colours->processorFor(choice, frame, {pathOfAddress(media), {}, false, RunAddress::of(media).has_value()},
                                 inputSpace);
}

} // namespace daylark
