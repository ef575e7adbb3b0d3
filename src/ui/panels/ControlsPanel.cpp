#include "ui/panels/ControlsPanel.h"

#include "ui/commands/Commands.h"
#include "ui/common/FoldingStrip.h"
#include "ui/common/PlainLabel.h"
#include "ui/controls/PositionSlider.h"
#include "ui/controls/PositionSliderLink.h"
#include "ui/controls/RangeIndicator.h"
#include "ui/common/Theme.h"
#include "ui/controls/VolumeButton.h"
#include "viewer/MoviePlayerController.h"

#include <QGraphicsOpacityEffect>
#include <QHBoxLayout>
#include <QPropertyAnimation>
#include <QSlider>
#include <QToolButton>

namespace daylark {

namespace {

constexpr int fadeMilliseconds = 120;
constexpr int beforeTimecode = 12, leastControls = 560; // points

} // namespace

ControlsPanel::ControlsPanel(MoviePlayerController& controller, Commands& commands, QWidget* parent)
    : QWidget(parent)
    , controller_(controller)
    , slider_(new PositionSlider(this)) {
    setObjectName(QStringLiteral("controlsPanel"));
    slider_->setObjectName(QStringLiteral("positionSlider2"));
    new PositionSliderLink(controller_, *slider_); // the slider owns it
    auto* range = new RangeIndicator(controller_.range(), this);
    range->setObjectName(QStringLiteral("rangeIndicator2"));
    auto* rangeRow = new QHBoxLayout; // as wide as the slider's track
    rangeRow->setContentsMargins(PositionSlider::sliderMargin, 0, PositionSlider::sliderMargin, 0);
    rangeRow->addWidget(range);

    elapsed_ = readOut(tr("Elapsed time"), QStringLiteral("0:00:00"));
    counter_ = readOut(tr("Frame"), QStringLiteral("00000 / 00000"));
    timecode_ = readOut(tr("Timecode"), QStringLiteral("TC 00:00:00:00"));
    timecode_->setContentsMargins(beforeTimecode, 0, 0, 0); // a production's number doesn't run into it
    timecode_->setMinimumWidth(timecode_->minimumWidth() + beforeTimecode);
    auto* row = new QWidget(this);
    auto* buttons = new QHBoxLayout(row);
    buttons->setContentsMargins(12, 0, 12, 8);
    buttons->setSpacing(4);
    buttons->addWidget(elapsed_);
    buttons->addWidget(counter_);
    buttons->addWidget(timecode_);
    buttons->addStretch(1);
    const auto add = [&](const char* id) {
        QToolButton* button = commands.button(QLatin1String(id), this);
        button->setMinimumSize(32, 32);
        button->setIconSize({20, 20});
        buttons->addWidget(button);
    };
    for (const char* id : {"viewer.previousMovie", "viewer.firstFrame", "viewer.stepBackward",
                           "viewer.playBackwards", "viewer.playPause", "viewer.playForwards",
                           "viewer.stepForward", "viewer.lastFrame", "viewer.nextMovie"})
        add(id);
    buttons->addStretch(1);
    auto* volume = new VolumeButton(controller_.transport(), this);
    volume->setObjectName(QStringLiteral("volume2"));
    volume->slider()->setObjectName(QStringLiteral("volumeSlider2"));
    buttons->addWidget(volume);
    buttons->addSpacing(4);
    add("viewer.addBookmark");
    add("viewer.fullScreen");
    // A production's number beside the counter may need the room that the times have.
    new FoldingStrip(*row, {elapsed_, timecode_}, leastControls); // the row owns it

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 4, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(slider_);
    layout->addLayout(rangeRow);
    layout->addSpacing(4);
    layout->addWidget(row);

    connect(&controller_.time(), &TimeDisplay::changed, this, &ControlsPanel::showTimes);
    connect(&controller_, &MoviePlayerController::movieShown, this, &ControlsPanel::showTimes);
    showTimes();
}

PlainLabel* ControlsPanel::readOut(const QString& name, const QString& widest) {
    auto* label = new PlainLabel(this);
    label->setAccessibleName(name);
    label->setToolTip(plain::toolTip(name));
    label->setFont(theme::numberFont());
    label->setMinimumWidth(QFontMetrics(label->font()).horizontalAdvance(widest) + 8);
    return label;
}

void ControlsPanel::showTimes() {
    elapsed_->setText(controller_.currentMovie() ? controller_.time().currentTimeForDisplay() : QString());
    counter_->setText(controller_.time().stripFrameOfFrames());
    timecode_->setText(controller_.time().stripTimecode());
}

QString ControlsPanel::counterText() const {
    return counter_->text();
}

// The effect goes with the end of the fade: painted through it, everything costs twice.
void ControlsPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (event->spontaneous() || graphicsEffect()) return;
    auto* opacity = new QGraphicsOpacityEffect(this);
    opacity->setOpacity(0);
    setGraphicsEffect(opacity);
    auto* fading = new QPropertyAnimation(opacity, "opacity", opacity);
    fading->setDuration(fadeMilliseconds);
    fading->setStartValue(0.0);
    fading->setEndValue(1.0);
    connect(
        fading, &QAbstractAnimation::finished, this, [this] { setGraphicsEffect(nullptr); },
        Qt::QueuedConnection);
    fading->start();
}

} // namespace daylark
