#include "ui/common/notice/PassingLine.h"

#include "review/ManyChanges.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QToolButton>

#include <algorithm>
#include <chrono>

namespace daylark {

namespace {

constexpr std::chrono::seconds shownFor{8};
constexpr int fromTheFoot = 12;

} // namespace

PassingLine::PassingLine(QWidget& over)
    : QWidget(&over)
    , over_(over)
    , text_(new PlainLabel(this))
    , button_(new QToolButton(this)) {
    setObjectName(QStringLiteral("passingLine"));
    setAccessibleName(tr("Message"));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QStringLiteral("#passingLine { background: %1; border: 1px solid #5a5a5a; border-radius: 4px; }")
                      .arg(theme::raised.name()));
    button_->setFocusPolicy(Qt::NoFocus);
    button_->setMinimumHeight(24);
    button_->setObjectName(QStringLiteral("passingLineButton"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 4, 8, 4);
    layout->setSpacing(12);
    layout->addWidget(text_);
    layout->addWidget(button_);
    hide();
    over_.installEventFilter(this);
    passing_.setSingleShot(true);
    passing_.setInterval(shownFor);
    connect(&passing_, &QTimer::timeout, this, &PassingLine::goAway);
    connect(button_, &QToolButton::clicked, this, [this] {
        const auto action = action_;
        goAway();
        if (action) action();
    });
}

void PassingLine::say(const QString& text, const QString& button, std::function<void()> action) {
    text_->setText(text);
    text_->setAccessibleName(text);
    button_->setText(button);
    button_->setAccessibleName(button);
    button_->setToolTip(plain::toolTip(button));
    button_->setVisible(!button.isEmpty());
    action_ = std::move(action);
    place();
    show();
    raise();
    if (!underMouse()) passing_.start();
    QAccessibleEvent said(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

void PassingLine::goAway() {
    passing_.stop();
    hide();
}

QString PassingLine::text() const {
    return isHidden() ? QString() : text_->text();
}

void PassingLine::place() {
    layout()->activate();
    const QSize size = sizeHint().boundedTo(over_.size() - QSize(2 * fromTheFoot, fromTheFoot));
    setGeometry(QRect({(over_.width() - size.width()) / 2, over_.height() - size.height() - fromTheFoot}, size));
}

bool PassingLine::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &over_ && event->type() == QEvent::Resize && !isHidden()) place();
    return QWidget::eventFilter(watched, event);
}

void PassingLine::enterEvent(QEnterEvent* event) {
    passing_.stop();
    QWidget::enterEvent(event);
}

void PassingLine::leaveEvent(QEvent* event) {
    if (!isHidden()) passing_.start();
    QWidget::leaveEvent(event);
}

void tellOf(ManyChanges& changes, PassingLine& line, std::function<bool()> isWanted) {
    QObject::connect(&changes, &ManyChanges::told, &line, [&changes, &line, isWanted](const QString& text) {
        if (isWanted()) line.say(text, PassingLine::tr("Undo"), [&changes] { changes.undo(); });
    });
    QObject::connect(&changes, &ManyChanges::past, &line, [&line] { line.goAway(); });
}

} // namespace daylark
