#include "ui/controls/PositionSliderLink.h"

#include "playback/run/Player.h"
#include "ui/controls/PositionSlider.h"
#include "ui/controls/ReadyStrip.h"
#include "viewer/MoviePlayerController.h"

#include <memory>
#include <unordered_set>

namespace daylark {

PositionSliderLink::PositionSliderLink(MoviePlayerController& controller, PositionSlider& slider)
    : QObject(&slider)
    , controller_(controller)
    , slider_(slider) {
    new ReadyStrip(controller_.player(), slider_, this);
    slider_.setDescription([this](double ticks) {
        const SampleIndex& index = controller_.player().index();
        const qint64 frame = index.frameAt({qint64(ticks) + index.step / 2, index.timeScale}) + 1;
        const QString own = controller_.time().productionTextOf(frame);
        return tr("Frame %1\n%2").arg(frame).arg(controller_.time().computeTimecodeFromFrameNumber(frame)) +
               (own.isEmpty() ? own : u'\n' + own);
    });
    connect(&slider_, &PositionSlider::sought, this,
            [this](double ticks) { controller_.transport().setSliderTime(ticks); });
    connect(&slider_, &PositionSlider::frameSought, this, [this](qint64 frame) {
        controller_.transport().setSliderTime(double(controller_.player().index().timeOf(frame - 1).value));
    });
    connect(&controller_.player(), &Player::positionChanged, this, &PositionSliderLink::showPosition);
    connect(&controller_.time(), &TimeDisplay::changed, this, &PositionSliderLink::showPosition);
    const auto showAll = [this] {
        showPosition();
        showBookmarks();
    };
    connect(&controller_, &MoviePlayerController::movieShown, this, showAll);
    connect(&controller_, &MoviePlayerController::movieLoading, this, showAll);
    connect(&controller_, &MoviePlayerController::windowClosed, this, showAll);
    connect(&controller_.bookmarks(), &ViewerBookmarks::bookmarksChanged, this,
            &PositionSliderLink::showBookmarks);
    connect(&controller_.bookmarks(), &ViewerBookmarks::activeBookmarksChanged, this,
            &PositionSliderLink::showBookmarks);
    showAll();
}

void PositionSliderLink::showPosition() {
    const TimeDisplay& time = controller_.time();
    const Player& player = controller_.player();
    const bool open = player.isOpen();
    slider_.setMovie(open ? time.sliderMaximum() : 0, open ? double(player.index().endTicks) : 0,
                     open ? player.index().count() : 0, open ? time.tickCount() : 0);
    slider_.setPosition(open ? time.sliderTime() : 0, player.currentFrame());
}

void PositionSliderLink::showBookmarks() {
    std::vector<PositionSlider::Bar> bars;
    if (controller_.player().isOpen()) {
        const SampleIndex& index = controller_.player().index();
        const auto& lit = controller_.bookmarks().activeBookmarks();
        const std::unordered_set<std::shared_ptr<Bookmark>> active(lit.begin(), lit.end());
        for (const auto& bookmark : controller_.bookmarks().bookmarks()) {
            if (!bookmark || bookmark->firstFrame > index.count()) continue;
            PositionSlider::Bar bar;
            bar.from = double(index.timeOf(bookmark->firstFrame - 1).value);
            bar.to = double(index.timeOf(bookmark->lastFrame - 1).value);
            bar.muted = bookmark->mute;
            bar.active = active.contains(bookmark);
            bars.push_back(bar);
        }
    }
    slider_.setBars(std::move(bars));
}

} // namespace daylark
