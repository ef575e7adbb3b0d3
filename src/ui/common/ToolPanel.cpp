#include "ui/common/ToolPanel.h"

#include "base/PlainText.h"
#include "ui/common/PanelTitle.h"
#include "ui/common/Theme.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCloseEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QTimer>
#include <QWindow>

namespace daylark {

namespace {

constexpr int lookAgainMilliseconds = 60;

} // namespace

ToolPanel::ToolPanel(const QString& title, QWidget* content, QWidget* viewer)
    : QDockWidget(title, viewer)
    , title_(new PanelTitle(title, this)) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    setTitleBarWidget(title_);
    setWidget(content);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow* window) {
        if (window && window == windowHandle())
            QTimer::singleShot(lookAgainMilliseconds, this, &ToolPanel::lookAtKeyboard);
    });
    connect(title_, &PanelTitle::closeClicked, this, &ToolPanel::closeWanted);
    connect(this, &QDockWidget::topLevelChanged, this, &ToolPanel::nameWindow);
}

void ToolPanel::setTitle(const QString& title) {
    title_->setTitle(title);
    nameWindow();
}

void ToolPanel::setTabWord(const QString& word) {
    tabWord_ = word;
    nameWindow();
}

/// Docked, a window's title is seen on its tab alone.
void ToolPanel::nameWindow() {
    setWindowTitle(plain::windowTitle(isFloating() || tabWord_.isEmpty() ? title_->title() : tabWord_));
}

bool ToolPanel::takesKeys(const QWidget* widget) {
    const auto isOne = [](const QWidget* candidate) {
        return qobject_cast<const QLineEdit*>(candidate) || qobject_cast<const QTextEdit*>(candidate) ||
               qobject_cast<const QPlainTextEdit*>(candidate) ||
               qobject_cast<const QAbstractSpinBox*>(candidate) ||
               qobject_cast<const QAbstractItemView*>(candidate);
    };
    return isOne(widget) || (widget->parentWidget() && isOne(widget->parentWidget()));
}

bool ToolPanel::usesKeyboard() const {
    const QWidget* focus = focusWidget();
    return focus && isAncestorOf(focus) && takesKeys(focus);
}

// Not under a hand that still presses, nor under an open menu.
void ToolPanel::lookAtKeyboard() {
    if (!isFloating() || QApplication::activeWindow() != this) return;
    if (QApplication::mouseButtons() != Qt::NoButton || QApplication::activePopupWidget()) {
        QTimer::singleShot(lookAgainMilliseconds, this, &ToolPanel::lookAtKeyboard);
    } else if (pressedElsewhere_ || !usesKeyboard()) {
        forgetFocus(); // a window that becomes active gives the focus to its first field by itself
        Q_EMIT keyboardUnused();
    }
}

void ToolPanel::forgetFocus() {
    pressedElsewhere_ = false;
    if (focusWidget()) focusWidget()->clearFocus();
}

// The desktop's own way to close a window. When the program ends, windows are closed without having been
// asked to by a person: what is open stays remembered as open.
void ToolPanel::closeEvent(QCloseEvent* event) {
    if (!event->spontaneous()) return QDockWidget::closeEvent(event);
    event->ignore();
    Q_EMIT closeWanted();
}

void ToolPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), theme::panel);
    if (!isFloating()) return;
    painter.setPen(theme::line);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace daylark
