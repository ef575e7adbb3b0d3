#include "ui/controls/PositionSlider.h"

#include "base/PlainText.h"
#include "ui/common/Theme.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_set>

namespace daylark {

namespace {

constexpr int trackY = 12, trackHeight = 4, headRadius = 7, barsY = 26, barHeight = 6, shortestBar = 6, readyY = 15,
              readyHeight = 2;
const QColor readyColour(0x4f, 0x6a, 0x86);
const QColor barColour(0x5f, 0x8f, 0x62), activeBarColour(0x8f, 0xd0, 0x93), mutedBarColour(0x4a, 0x4a, 0x4a);

} // namespace

PositionSlider::PositionSlider(QWidget* parent)
    : QAbstractSlider(parent) {
    setOrientation(Qt::Horizontal);
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(tr("Position"));
    setObjectName(QStringLiteral("positionSlider"));
    setTracking(true);
    connect(this, &QAbstractSlider::actionTriggered, this, [this] {
        if (isUsable()) Q_EMIT frameSought(sliderPosition());
    });
}

void PositionSlider::setMovie(double last, double end, qint64 frames, qint64 tickMarks) {
    last_ = std::max(0.0, last);
    end_ = std::max(0.0, end);
    frames_ = std::min<qint64>(frames, std::numeric_limits<int>::max());
    tickMarks_ = tickMarks;
    setRange(isUsable() ? 1 : 0, int(frames_));
    setPageStep(std::max(1, int(frames_ / 10)));
    setEnabled(isUsable());
    update();
}

void PositionSlider::setPosition(double ticks, qint64 frame) {
    setValue(int(std::clamp<qint64>(frame, minimum(), maximum())));
    // Where there are tick marks the playhead stands on one, wherever in the frame the player stands.
    if (tickMarks_ > 1) ticks = last_ * double(value() - 1) / double(tickMarks_ - 1);
    if (ticks == position_) return;
    position_ = ticks;
    update();
}

void PositionSlider::setBars(std::vector<Bar> bars) {
    if (bars == bars_) return;
    bars_ = std::move(bars);
    update();
}

void PositionSlider::setReady(std::vector<std::pair<double, double>> ranges) {
    if (ranges == ready_) return;
    ready_ = std::move(ranges);
    update();
}

void PositionSlider::setMissing(std::vector<std::pair<double, double>> ranges) {
    if (ranges == missing_) return;
    missing_ = std::move(ranges);
    update();
}

int PositionSlider::xOf(double ticks) const {
    const double part = last_ > 0 ? std::clamp(ticks / last_, 0.0, 1.0) : 0.0;
    return sliderMargin + int(std::lround(part * (width() - 2 * sliderMargin)));
}

double PositionSlider::ticksAt(int x) const {
    const double room = std::max(1, width() - 2 * sliderMargin);
    double part = std::clamp((x - sliderMargin) / room, 0.0, 1.0);
    if (tickMarks_ > 1) part = std::round(part * double(tickMarks_ - 1)) / double(tickMarks_ - 1);
    return part * last_;
}

void PositionSlider::seek(int x) {
    const double ticks = ticksAt(x);
    if (dragging_ && ticks == position_) return;
    position_ = ticks; // follows the hand even while the picture is on its way
    update();
    Q_EMIT sought(ticks);
}

void PositionSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !isUsable()) return event->ignore();
    Q_EMIT dragging(true);
    seek(event->position().toPoint().x());
    dragging_ = true;
    setSliderDown(true);
}

void PositionSlider::mouseMoveEvent(QMouseEvent* event) {
    hoverX_ = event->position().toPoint().x();
    if (dragging_) seek(hoverX_);
    if (isUsable() && describe_) {
        QString text = describe_(ticksAt(hoverX_));
        const int y = event->position().toPoint().y();
        if (!dragging_ && y >= readyY && y < readyY + 2 * readyHeight + 2)
            text += tr("\nBlue strip: frames that are ready");
        QToolTip::showText(mapToGlobal(QPoint(hoverX_ - 40, -76)), plain::toolTip(text), this); // clear of the playhead
    }
    update();
}

void PositionSlider::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return event->ignore();
    if (std::exchange(dragging_, false)) Q_EMIT dragging(false);
    setSliderDown(false);
}

void PositionSlider::leaveEvent(QEvent* event) {
    hoverX_ = -1;
    update();
    QAbstractSlider::leaveEvent(event);
}

void PositionSlider::paintTicks(QPainter& painter) const {
    const int room = width() - 2 * sliderMargin;
    if (tickMarks_ < 2 || room / tickMarks_ < 3) return; // closer than that they are a grey smear
    painter.setPen(theme::disabled);
    for (qint64 tick = 0; tick < tickMarks_; ++tick) {
        const int x = xOf(last_ * double(tick) / double(tickMarks_ - 1));
        painter.drawLine(x, trackY + 7, x, trackY + 10);
    }
}

void PositionSlider::paintReady(QPainter& painter) const {
    for (const auto& [from, to] : ready_) {
        const int left = xOf(from);
        painter.fillRect(QRect(left, readyY, std::max(1, xOf(to) - left), readyHeight), readyColour);
    }
}

/// On the track itself, so that neither bars nor what is ready hides them.
void PositionSlider::paintMissing(QPainter& painter) const {
    constexpr QColor missingColour(255, 128, 0); // as items whose file is missing
    for (const auto& [from, to] : missing_) {
        const int left = xOf(from);
        painter.fillRect(QRect(left, trackY - trackHeight, std::max(2, xOf(to) - left), 2 * trackHeight), missingColour);
    }
}

void PositionSlider::paintBars(QPainter& painter) const {
    std::unordered_set<quint64> painted; // what lies on the same pixels is painted once, however many there are
    for (const Bar& bar : bars_) {
        const int from = xOf(bar.from);
        const int to = std::max(xOf(bar.to), from + shortestBar);
        const quint64 place =
            quint64(quint32(from)) << 34 | quint64(quint32(to)) << 2 | quint64(bar.muted) << 1 | quint64(bar.active);
        if (!painted.insert(place).second) continue;
        painter.fillRect(QRect(from, barsY, std::min(to, width() - sliderMargin + 4) - from, barHeight),
                         bar.muted    ? mutedBarColour
                         : bar.active ? activeBarColour
                                      : barColour);
    }
}

void PositionSlider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect track(sliderMargin, trackY - trackHeight / 2, width() - 2 * sliderMargin, trackHeight);
    painter.fillRect(track, theme::line);
    if (!isUsable()) return;
    paintTicks(painter);
    paintBars(painter);
    paintReady(painter);
    paintMissing(painter);
    const int head = xOf(position_);
    painter.fillRect(QRect(track.left(), track.top(), head - track.left(), trackHeight), theme::dimText);
    if (hoverX_ >= 0 && !dragging_) {
        painter.setPen(theme::dimText);
        const int x = xOf(ticksAt(hoverX_));
        painter.drawLine(x, trackY - 7, x, trackY + 6);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFocus() ? QPen(theme::focus, 2) : QPen(theme::window, 1));
    painter.setBrush(theme::text);
    painter.drawEllipse(QPointF(head, trackY), headRadius, headRadius);
}

} // namespace daylark
