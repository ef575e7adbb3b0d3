#include "ui/panels/ScopeView.h"

#include "picture/scopes/ScopeTrace.h"
#include "picture/scopes/Vectorscope.h"
#include "ui/common/Theme.h"
#include "viewer/display/ViewerScopes.h"

#include <QPainter>

#include <algorithm>

namespace daylark {

namespace {

constexpr int levelLines[] = {0, 10, 25, 50, 75, 90, 100}; // per cent
constexpr int labelledLevels[] = {0, 25, 50, 75, 100};
constexpr int roomAround = 6, roomForLabels = 34, roomUnder = 16;
const QColor scopeLine(0x5c, 0x5c, 0x5c, 150), scopeMark(0xa8, 0xa8, 0xa8, 200), skinMark(0xc8, 0x9a, 0x78, 200);

bool isLabelled(int level) {
    return std::find(std::begin(labelledLevels), std::end(labelledLevels), level) != std::end(labelledLevels);
}

} // namespace

ScopeView::ScopeView(ViewerScopes& scopes, QWidget* parent)
    : QWidget(parent)
    , scopes_(scopes) {
    setObjectName(QStringLiteral("scope"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    connect(&scopes_, &ViewerScopes::changed, this, qOverload<>(&QWidget::update));
}

QRectF ScopeView::plot() const {
    const QRectF room = QRectF(rect()).marginsRemoved(QMarginsF(roomAround, roomAround, roomAround, roomAround));
    switch (scopes_.kind()) {
    case ScopeKind::vectorscope: {
        const double side = std::min(room.width(), room.height());
        return {room.center() - QPointF(side, side) / 2, QSizeF(side, side)};
    }
    case ScopeKind::histogram:
        return room.adjusted(roomAround, 0, -roomAround, -roomUnder);
    default:
        return room.adjusted(roomForLabels, roomAround, 0, -roomAround);
    }
}

void ScopeView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(scopeDark));
    painter.setFont(theme::smallFont());
    const QRectF where = plot();
    if (const QImage& trace = scopes_.trace(); !trace.isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(where, trace);
    }
    switch (scopes_.kind()) {
    case ScopeKind::vectorscope:
        return paintVectorscope(painter, where);
    case ScopeKind::histogram:
        return paintLevelsAcross(painter, where);
    default:
        paintLevels(painter, where);
    }
}

void ScopeView::paintLevels(QPainter& painter, const QRectF& plot) const {
    for (const int level : levelLines) {
        const double y = plot.bottom() - plot.height() * level / 100;
        painter.setPen(scopeLine);
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
        if (!isLabelled(level)) continue;
        painter.setPen(theme::dimText);
        const QString text = level == 100 ? QStringLiteral("100%") : QString::number(level);
        painter.drawText(QRectF(0, y - 10, plot.left() - 2, 20), Qt::AlignRight | Qt::AlignVCenter, text);
    }
}

void ScopeView::paintLevelsAcross(QPainter& painter, const QRectF& plot) const {
    for (const int level : levelLines) {
        const double x = plot.left() + plot.width() * level / 100;
        painter.setPen(scopeLine);
        painter.drawLine(QPointF(x, plot.top()), QPointF(x, plot.bottom()));
        if (!isLabelled(level)) continue;
        painter.setPen(theme::dimText);
        const QString text = level == 100 ? QStringLiteral("100%") : QString::number(level);
        const QRectF label(std::clamp(x - 24, 0.0, width() - 48.0), plot.bottom() + 1, 48, roomUnder + roomAround - 1);
        const auto aside = level == 100 ? Qt::AlignRight : level == 0 ? Qt::AlignLeft : Qt::AlignHCenter;
        painter.drawText(label, aside | Qt::AlignVCenter, text);
    }
}

void ScopeView::paintVectorscope(QPainter& painter, const QRectF& plot) const {
    const QPointF middle = plot.center();
    const auto at = [&](QPointF differences) {
        return middle + QPointF(differences.x() * plot.width(), -differences.y() * plot.height());
    };
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(scopeLine);
    painter.drawEllipse(plot);
    painter.drawLine(at({-0.5, 0}), at({0.5, 0}));
    painter.drawLine(at({0, -0.5}), at({0, 0.5}));
    painter.setPen(skinMark);
    painter.drawLine(middle, at(skinLine()));
    painter.setPen(scopeMark);
    for (const VectorscopeTarget& target : vectorscopeTargets) {
        for (const auto& [amount, half] : {std::pair(0.75, 5.0), std::pair(1.0, 3.0)}) {
            const QPointF where = at(targetAt(target, amount));
            painter.drawRect(QRectF(where - QPointF(half, half), QSizeF(2 * half, 2 * half)));
        }
        // Beside the smaller one, towards the middle, where there is room in the corners of the cube as well.
        const QPointF label = at(targetAt(target, 0.58));
        painter.drawText(QRectF(label - QPointF(16, 10), QSizeF(32, 20)), Qt::AlignCenter, QLatin1String(target.name));
    }
}

} // namespace daylark
