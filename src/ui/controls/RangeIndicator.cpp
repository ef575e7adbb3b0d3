#include "ui/controls/RangeIndicator.h"

#include "viewer/transport/PlaybackRange.h"

#include <algorithm>

namespace daylark {

namespace {

constexpr int rangeBarHeight = 4;
const QString rangeBarStyle = QStringLiteral("background: #c9a25a;");

} // namespace

RangeIndicator::RangeIndicator(const PlaybackRange& range, QWidget* parent)
    : QWidget(parent)
    , rangeBar_(new QWidget(this)) {
    setObjectName(QStringLiteral("rangeIndicator"));
    setFixedHeight(rangeBarHeight);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
    rangeBar_->setObjectName(QStringLiteral("rangeBar"));
    rangeBar_->setStyleSheet(rangeBarStyle);
    connect(&range, &PlaybackRange::changed, this, [this, &range] { showRange(range); });
    showRange(range);
}

void RangeIndicator::showRange(const PlaybackRange& range) {
    const PlaybackRange::BarState& bars = range.bars();
    setMaxValue(bars.maxValue);
    setRangeFrom(bars.rangeStart, bars.rangeEnd);
    setVisible(bars.shown);
    const QString text = tr("Playback range: frames %1 to %2").arg(bars.rangeStart).arg(bars.rangeEnd);
    setAccessibleName(text);
}

void RangeIndicator::setRangeFrom(qint64 start, qint64 end) {
    rangeStart_ = start;
    rangeEnd_ = end;
    makeDisplay();
}

void RangeIndicator::makeDisplay() {
    if (maxValue_ < 2) { // the one frame there is, is the whole range
        rangeBar_->setGeometry(0, height() - rangeBarHeight, width(), rangeBarHeight);
        return;
    }
    const float unit = float(width()) / float(maxValue_ - 1);
    // A range marked beyond the movie's end stays inside what widgets can measure.
    const auto points = [](float value) { return int(std::clamp(value, -32000.0F, 32000.0F)); };
    rangeBar_->setGeometry(points(float(rangeStart_ - 1) * unit), height() - rangeBarHeight,
                           points(float(rangeEnd_ - rangeStart_) * unit), rangeBarHeight);
}

void RangeIndicator::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    makeDisplay();
}

} // namespace daylark
