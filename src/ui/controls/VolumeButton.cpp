#include "ui/controls/VolumeButton.h"

#include "base/PlainText.h"
#include "ui/common/Theme.h"
#include "viewer/transport/Transport.h"

#include <QCoreApplication>
#include <QFrame>
#include <QGraphicsOpacityEffect>
#include <QKeyEvent>
#include <QPropertyAnimation>
#include <QSlider>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace daylark {

namespace {
constexpr int volumeSteps = 100;
constexpr int volumeFadeMs = 100;
constexpr int volumeSliderLength = 120, popUpGap = 4;

/// Keys that turn the volume while its slider has the focus.
bool isSliderKey(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Left || key == Qt::Key_Right ||
           key == Qt::Key_PageUp || key == Qt::Key_PageDown || key == Qt::Key_Home || key == Qt::Key_End;
}
} // namespace

VolumeButton::VolumeButton(Transport& transport, QWidget* parent)
    : QToolButton(parent)
    , transport_(transport)
    , slider_(new QSlider(Qt::Vertical)) {
    setObjectName(QStringLiteral("volume"));
    setAutoRaise(true);
    setIconSize({16, 16});
    setMinimumSize(28, 28);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(tr("Volume"));

    popUp_ = new QFrame(this);
    popUp_->setObjectName(QStringLiteral("volumePopUp"));
    popUp_->setStyleSheet(
        QStringLiteral("#volumePopUp { background: %1; border: 1px solid %2; border-radius: 4px; }")
            .arg(theme::panel.name(), theme::line.name()));
    auto* layout = new QVBoxLayout(popUp_);
    layout->setContentsMargins(8, 8, 8, 8);
    slider_->setRange(0, volumeSteps);
    slider_->setPageStep(10);
    slider_->setAccessibleName(tr("Volume"));
    slider_->setObjectName(QStringLiteral("volumeSlider"));
    slider_->installEventFilter(this);
    layout->addWidget(slider_, 0, Qt::AlignHCenter);
    popUp_->hide();
    opacity_ = new QGraphicsOpacityEffect(popUp_);
    popUp_->setGraphicsEffect(opacity_);
    fading_ = new QPropertyAnimation(opacity_, "opacity", this);
    fading_->setDuration(volumeFadeMs);
    fading_->setEndValue(0.0);
    connect(fading_, &QPropertyAnimation::finished, popUp_, &QWidget::hide);

    connect(this, &QToolButton::clicked, this, &VolumeButton::togglePopUp);
    connect(slider_, &QSlider::valueChanged, this,
            [this](int value) { transport_.setVolume(float(value) / volumeSteps); });
    connect(&transport_, &Transport::volumeChanged, this, &VolumeButton::displayVolume);
    connect(&transport_, &Transport::actionDone, this, &VolumeButton::hidePopUp);
    displayVolume(transport_.volume());
}

QString VolumeButton::iconName(float volume) {
    if (volume < 0) return {};
    if (volume == 0.0F) return QStringLiteral("dl-volume-01.png");
    if (volume < 0.35F) return QStringLiteral("dl-volume-02.png");
    return volume < 0.8F ? QStringLiteral("dl-volume-03.png") : QStringLiteral("dl-volume-04.png");
}

void VolumeButton::displayVolume(float volume) {
    if (const QString name = iconName(volume); !name.isEmpty()) setIcon(theme::icon(name));
    const int percent = int(std::lround(volume * volumeSteps));
    setToolTip(plain::toolTip(tr("Volume %1 %").arg(percent)));
    const QSignalBlocker quiet(slider_);
    slider_->setValue(percent);
}

void VolumeButton::togglePopUp() {
    if (popUp_->isVisible() && fading_->state() != QAbstractAnimation::Running) return hidePopUp();
    fading_->stop();
    opacity_->setOpacity(1.0);
    displayVolume(transport_.volume());
    popUp_->setParent(window());
    placePopUp();
    popUp_->raise();
    popUp_->show();
    slider_->setFocus(Qt::PopupFocusReason);
    QCoreApplication::instance()->installEventFilter(this);
}

/// Above the button; where the window has no room there (the floating controls), the slider lies.
void VolumeButton::placePopUp() {
    const QPoint foot = mapTo(window(), QPoint(width() / 2, -popUpGap));
    for (const Qt::Orientation orientation : {Qt::Vertical, Qt::Horizontal}) {
        slider_->setOrientation(orientation);
        const QSize hint = slider_->sizeHint();
        slider_->setFixedSize(orientation == Qt::Vertical ? QSize(hint.width(), volumeSliderLength)
                                                          : QSize(volumeSliderLength, hint.height()));
        popUp_->adjustSize();
        if (popUp_->height() <= foot.y()) break;
    }
    const int farthest = std::max(popUpGap, window()->width() - popUp_->width() - popUpGap);
    popUp_->move(std::clamp(foot.x() - popUp_->width() / 2, popUpGap, farthest),
                 std::max(0, foot.y() - popUp_->height()));
}

void VolumeButton::hidePopUp() {
    if (popUp_->isHidden() || fading_->state() == QAbstractAnimation::Running) return;
    QCoreApplication::instance()->removeEventFilter(this);
    fading_->start();
}

bool VolumeButton::eventFilter(QObject* watched, QEvent* event) {
    // A press on the button itself hides it through `togglePopUp`.
    if (watched == slider_ && event->type() == QEvent::FocusOut && !underMouse()) hidePopUp();
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (watched != slider_ || !isSliderKey(key)) {
            const auto* widget = qobject_cast<QWidget*>(watched);
            if (widget && widget->window() == window()) hidePopUp();
        }
    }
    return QToolButton::eventFilter(watched, event);
}

void VolumeButton::wheelEvent(QWheelEvent* event) {
    const int notches = event->angleDelta().y() > 0 ? 5 : event->angleDelta().y() < 0 ? -5 : 0;
    slider_->setValue(slider_->value() + notches);
    event->accept();
}

} // namespace daylark
