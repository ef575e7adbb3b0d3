#include "ui/common/PanelTitle.h"

#include "base/PlainText.h"
#include "ui/common/Theme.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <QWindow>

namespace daylark {

namespace {

constexpr int titleMargin = 12;

} // namespace

PanelTitle::PanelTitle(const QString& title, QWidget* parent)
    : QWidget(parent)
    , close_(new QToolButton(this)) {
    setObjectName(QStringLiteral("panelTitle"));
    setFont(theme::smallFont());
    close_->setObjectName(QStringLiteral("closePanel"));
    close_->setAutoRaise(true);
    close_->setIcon(theme::icon(QStringLiteral("close")));
    close_->setIconSize({12, 12});
    close_->setFixedSize(24, 24);
    close_->setFocusPolicy(Qt::NoFocus);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 2, 4, 2);
    layout->addStretch(1);
    layout->addWidget(close_);
    connect(close_, &QToolButton::clicked, this, &PanelTitle::closeClicked);
    setTitle(title);
}

void PanelTitle::setTitle(const QString& title) {
    title_ = plain::line(title);
    const QString hides = tr("Hide %1").arg(title_);
    close_->setToolTip(plain::toolTip(hides));
    close_->setAccessibleName(hides);
    setAccessibleName(title_);
    update();
}

/// On Wayland windows don't know where they stand, so that the panel can't move itself.
bool PanelTitle::isMovedByDesktop() const {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland")) && parentWidget()->isWindow();
}

void PanelTitle::mousePressEvent(QMouseEvent* event) {
    event->setAccepted(isMovedByDesktop());
}

void PanelTitle::mouseMoveEvent(QMouseEvent* event) {
    event->setAccepted(isMovedByDesktop());
    if (event->isAccepted() && (event->buttons() & Qt::LeftButton)) window()->windowHandle()->startSystemMove();
}

void PanelTitle::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), theme::raised);
    const QRect room = rect().adjusted(titleMargin, 0, -(close_->width() + 8), 0);
    painter.setPen(theme::text);
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(title_, Qt::ElideMiddle, room.width()));
}

} // namespace daylark
