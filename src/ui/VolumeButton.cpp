#include "ui/VolumeButton.h"

#include "ui/Theme.h"
#include "viewer/Transport.h"

#include <QFrame>
#include <QSlider>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace daylark {

namespace {
constexpr int volumeSteps = 100;
}

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
    slider_->setFixedHeight(120);
    slider_->setAccessibleName(tr("Volume"));
    slider_->setObjectName(QStringLiteral("volumeSlider"));
    slider_->installEventFilter(this);
    layout->addWidget(slider_, 0, Qt::AlignHCenter);
    popUp_->hide();

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
    setToolTip(tr("Volume %1 %").arg(percent));
    const QSignalBlocker quiet(slider_);
    slider_->setValue(percent);
}

void VolumeButton::togglePopUp() {
    if (popUp_->isVisible()) return hidePopUp();
    displayVolume(transport_.volume());
    popUp_->setParent(window());
    popUp_->adjustSize();
    const QPoint foot = mapTo(window(), QPoint(width() / 2, -4));
    popUp_->move(foot - QPoint(popUp_->width() / 2, popUp_->height()));
    popUp_->raise();
    popUp_->show();
    slider_->setFocus(Qt::PopupFocusReason);
}

void VolumeButton::hidePopUp() {
    if (popUp_->isHidden()) return;
    popUp_->hide();
}

bool VolumeButton::eventFilter(QObject* watched, QEvent* event) {
    // A press on the button itself hides it through `togglePopUp`.
    if (watched == slider_ && event->type() == QEvent::FocusOut && !underMouse()) hidePopUp();
    return QToolButton::eventFilter(watched, event);
}

void VolumeButton::wheelEvent(QWheelEvent* event) {
    const int notches = event->angleDelta().y() > 0 ? 5 : event->angleDelta().y() < 0 ? -5 : 0;
    slider_->setValue(slider_->value() + notches);
    event->accept();
}

} // namespace daylark
