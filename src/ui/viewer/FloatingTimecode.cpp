#include "ui/viewer/FloatingTimecode.h"

#include "preferences/Preferences.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"
#include "ui/viewer/ViewerPanelHost.h"

#include <QCloseEvent>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <QWindow>

namespace daylark {

namespace {} // namespace

FloatingTimecode::FloatingTimecode(Preferences& preferences, QWidget* viewer)
    : QWidget(viewer, Qt::Tool)
    , preferences_(preferences)
    , field_(new PlainLabel(this)) {
    setObjectName(QStringLiteral("timecodeWindow"));
    setWindowTitle(tr("Timecode"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setMinimumSize(120, 32);
    field_->setObjectName(QStringLiteral("timecodeFloating"));
    field_->setAccessibleName(tr("Timecode"));
    field_->setAlignment(Qt::AlignCenter);
    field_->setMinimumSize(1, 1);
    field_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(field_);
    resize(360, 64);
}

void FloatingTimecode::showText(const QString& text, const QColor& colour) {
    field_->setText(text);
    if (colour == colour_) return;
    colour_ = colour;
    QPalette palette = field_->palette();
    palette.setColor(QPalette::WindowText, colour);
    field_->setPalette(palette);
}

void FloatingTimecode::setShown(bool shown) {
    if (shown == isVisible()) return;
    if (!shown) {
        remember();
        return hide();
    }
    const auto stored = QByteArray::fromBase64(preferences_.timecodeWindowGeometry().toLatin1());
    if (!restoreGeometry(stored)) {
        const QRect viewer = parentWidget()->window()->geometry();
        move(viewer.center().x() - width() / 2, viewer.top() + 48);
    }
    setGeometry(ViewerPanelHost::broughtOntoAScreen(geometry()));
    show();
    raise();
}

void FloatingTimecode::remember() {
    preferences_.timecodeWindowGeometry.set(QString::fromLatin1(saveGeometry().toBase64()));
}

// The figures grow with the window.
void FloatingTimecode::resizeEvent(QResizeEvent*) {
    QFont font = theme::numberFont();
    font.setPointSizeF(height() * 0.5 + 8.0);
    field_->setFont(font);
}

void FloatingTimecode::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && windowHandle()) windowHandle()->startSystemMove();
}

void FloatingTimecode::closeEvent(QCloseEvent* event) {
    remember();
    event->accept();
    if (event->spontaneous()) Q_EMIT closed();
}

} // namespace daylark
