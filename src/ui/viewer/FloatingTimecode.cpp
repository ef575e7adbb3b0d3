#include "ui/viewer/FloatingTimecode.h"

#include "preferences/Preferences.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"
#include "ui/viewer/ViewerPanelHost.h"

#include <QCloseEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

namespace daylark {

namespace {

constexpr int leastHeight = 32, mostLeastHeight = 240, roomBeside = 12;

QFont figuresAt(int fieldHeight) {
    QFont font = theme::numberFont();
    font.setPointSizeF(fieldHeight * 0.5 + 8.0);
    return font;
}

int widthOfText(const QFont& font) {
    return QFontMetrics(font).horizontalAdvance(QStringLiteral("TC 00:00:00:00")) + 2 * roomBeside;
}

/// From which on the figures are no higher than the window; they grow more slowly than it does.
int heightThatFits() {
    int height = leastHeight;
    while (height < mostLeastHeight && QFontMetrics(figuresAt(height)).height() > height)
        height += 4;
    return height;
}

} // namespace

FloatingTimecode::FloatingTimecode(Preferences& preferences, QWidget* viewer)
    : QWidget(viewer, Qt::Tool)
    , preferences_(preferences)
    , field_(new PlainLabel(this)) {
    setObjectName(QStringLiteral("timecodeWindow"));
    setWindowTitle(tr("Timecode"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setMinimumHeight(heightThatFits());
    field_->setObjectName(QStringLiteral("timecodeFloating"));
    field_->setAccessibleName(tr("Timecode"));
    field_->setAlignment(Qt::AlignCenter);
    field_->setMinimumSize(1, 1);
    field_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(field_);
    const int height = std::max(64, minimumHeight());
    resize(widthOfText(figuresAt(height)), height);
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

// The figures grow with the window, and the window is never narrower than they are.
void FloatingTimecode::resizeEvent(QResizeEvent*) {
    const QFont font = figuresAt(height());
    field_->setFont(font);
    setMinimumWidth(std::min(widthOfText(font), screen()->availableSize().width()));
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
