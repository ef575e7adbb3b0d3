#include "ui/viewer/MovieListOverlay.h"

#include "ui/viewer/PlaylistDrawer.h"
#include "ui/common/Theme.h"
#include "viewer/MoviePlayerController.h"

#include <QEvent>
#include <QListView>
#include <QMouseEvent>
#include <QPropertyAnimation>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace daylark {

namespace {
constexpr int listWidth = 280, listSlideMs = 110;
} // namespace

MovieListOverlay::MovieListOverlay(MoviePlayerController& controller, QWidget& area)
    : QWidget(&area)
    , list_(new PlaylistDrawer(controller.list(), controller.edits(), controller.preferences(), this))
    , slide_(new QPropertyAnimation(this, "pos", this)) {
    setObjectName(QStringLiteral("movieListOverlay"));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QStringLiteral("#movieListOverlay { background: %1; border-left: 1px solid %2; }")
                      .arg(theme::panel.name(), theme::line.name()));
    setCursor(Qt::ArrowCursor);
    list_->view()->setFocusPolicy(Qt::NoFocus);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 8, 0, 8);
    layout->addWidget(list_);
    slide_->setDuration(listSlideMs);
    slide_->setEasingCurve(QEasingCurve::OutCubic);
    connect(slide_, &QPropertyAnimation::finished, this, [this] {
        if (!shown_) hide();
    });
    connect(&controller, &MoviePlayerController::movieProbed, list_, &PlaylistDrawer::movieUpdated);
    area.installEventFilter(this);
    hide();
}

QPoint MovieListOverlay::place(bool shown) const {
    return {parentWidget()->width() - (shown ? width() : 0), 0};
}

void MovieListOverlay::setShown(bool shown) {
    if (shown == shown_) return;
    shown_ = shown;
    resize(listWidth, parentWidget()->height());
    if (isHidden()) move(place(false));
    show();
    raise();
    slide_->stop();
    slide_->setStartValue(pos());
    slide_->setEndValue(place(shown));
    slide_->start();
    QListView* rows = list_->view();
    if (shown) rows->scrollTo(rows->currentIndex());
}

bool MovieListOverlay::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize && !isHidden()) {
        slide_->stop();
        setGeometry({place(shown_), QSize(listWidth, parentWidget()->height())});
        setVisible(shown_);
    }
    return QWidget::eventFilter(watched, event);
}

void MovieListOverlay::wheelEvent(QWheelEvent* event) {
    event->accept();
}

void MovieListOverlay::mousePressEvent(QMouseEvent* event) {
    event->accept();
}

} // namespace daylark
