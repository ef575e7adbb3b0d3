#include "ui/controls/ReadyStrip.h"

#include "playback/run/Player.h"
#include "ui/controls/PositionSlider.h"

namespace daylark {

ReadyStrip::ReadyStrip(Player& player, PositionSlider& slider, QObject* parent)
    : QObject(parent)
    , player_(player)
    , slider_(slider) {
    constexpr int fifthOfASecond = 200;
    timer_.setInterval(fifthOfASecond);
    connect(&timer_, &QTimer::timeout, this, &ReadyStrip::refresh);
    connect(&slider_, &PositionSlider::dragging, &player_, &Player::setDragging);
    timer_.start();
}

void ReadyStrip::refresh() {
    if (!slider_.isVisible()) return;
    std::vector<std::pair<double, double>> ticks;
    const SampleIndex& index = player_.index();
    for (const auto& [first, last] : player_.readyRanges()) {
        const qint64 end = last < index.count() ? index.timeOf(last).value : index.endTicks;
        ticks.emplace_back(double(index.timeOf(first - 1).value), double(end));
    }
    slider_.setReady(std::move(ticks));
    std::vector<std::pair<double, double>> missing;
    for (const qint64 frame : index.missing) {
        const auto end = double(frame + 1 < index.count() ? index.timeOf(frame + 1).value : index.endTicks);
        const auto begin = double(index.timeOf(frame).value);
        if (!missing.empty() && missing.back().second == begin)
            missing.back().second = end;
        else
            missing.emplace_back(begin, end);
    }
    slider_.setMissing(std::move(missing));
}

} // namespace daylark
