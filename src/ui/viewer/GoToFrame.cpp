#include "ui/viewer/GoToFrame.h"

#include "playback/run/Player.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"
#include "ui/picture/PictureView.h"
#include "viewer/MoviePlayerController.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>

namespace daylark {

namespace {

constexpr int goToFieldWidth = 140, goToFootMargin = 24;

} // namespace

GoToFrame::GoToFrame(MoviePlayerController& controller, PictureView& picture)
    : QFrame(&picture)
    , controller_(controller)
    , picture_(picture)
    , field_(new QLineEdit(this))
    , hint_(new PlainLabel(QString(), this)) {
    setObjectName(QStringLiteral("goToFrame"));
    setAutoFillBackground(true);
    setFrameShape(QFrame::StyledPanel);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 8, 12, 8);
    layout->setSpacing(8);
    layout->addWidget(new PlainLabel(tr("Go to"), this));
    layout->addWidget(field_);
    layout->addWidget(hint_);
    field_->setFixedWidth(goToFieldWidth);
    field_->setFont(theme::numberFont());
    field_->setAccessibleName(tr("Frame number or timecode"));
    field_->setToolTip(tr("A number is the production's where the movie has its own, else counted from 1. "
                          "\"#\" before it counts from 1 in any case."));
    field_->installEventFilter(this);
    picture_.installEventFilter(this);
    connect(field_, &QLineEdit::returnPressed, this, &GoToFrame::go);
    connect(field_, &QLineEdit::textEdited, this, &GoToFrame::showHint);
    hide();
}

void GoToFrame::ask() {
    field_->clear();
    showHint();
    place();
    show();
    raise();
    field_->setFocus();
}

void GoToFrame::showHint() {
    const FrameNumbers numbers = controller_.time().frameNumbers();
    const qint64 last = controller_.player().index().count();
    // What is meant by what stands there, in both numbers, before one goes.
    if (const std::optional<qint64> meant = controller_.time().frameOfEntry(field_->text())) {
        const QString own = controller_.time().productionTextOf(*meant);
        hint_->setText(tr("Frame %1").arg(*meant) + (own.isEmpty() ? own : QStringLiteral("   ") + own));
        hint_->setStyleSheet({});
        return place();
    }
    const QString fromOne = tr("#1 to #%1").arg(last);
    hint_->setText(numbers.areOwn()
                       ? tr("Prod %1 to %2, %3, a timecode, +8, -8").arg(numbers.first).arg(numbers.numberOf(last)).arg(fromOne)
                       : tr("1 to %1, a timecode, +8, -8").arg(last));
    hint_->setStyleSheet({});
    place();
}

void GoToFrame::go() {
    const std::optional<qint64> frame = controller_.time().frameOfEntry(field_->text());
    if (!frame) {
        hint_->setText(tr("No such frame in this movie"));
        hint_->setStyleSheet(QStringLiteral("color: %1").arg(theme::warning.name()));
        field_->selectAll();
        return;
    }
    picture_.setFocus();
    hide();
    if (controller_.transport().isRunning()) controller_.transport().pauseMovie();
    controller_.bookmarks().goToFrame(*frame);
}

void GoToFrame::place() {
    adjustSize();
    move((picture_.width() - width()) / 2, picture_.height() - height() - goToFootMargin);
}

bool GoToFrame::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &picture_ && event->type() == QEvent::Resize && isVisible()) place();
    if (watched != field_) return false;
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        picture_.setFocus();
        hide();
        return true;
    }
    if (event->type() == QEvent::FocusOut) hide();
    return false;
}

} // namespace daylark
