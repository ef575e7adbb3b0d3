#include "ui/viewer/MouseZones.h"

#include <QMouseEvent>
#include <QWidget>

namespace daylark {

namespace {

const QString zoneNames[] = {QStringLiteral("movieListArea"), QStringLiteral("notesArea"),
                             QStringLiteral("playbackArea")};

} // namespace

MouseZones::MouseZones(QWidget& area)
    : QObject(&area)
    , area_(area) {
    area_.installEventFilter(this);
}

void MouseZones::setEnabled(bool enabled) {
    enabled_ = enabled;
    area_.setMouseTracking(enabled);
    inside_.clear();
}

QRect MouseZones::zone(const QString& name, const QSize& area) {
    const int high = area.height() - foot;
    if (name == zoneNames[0]) return {area.width() - side, 0, side, high};
    if (name == zoneNames[1]) return {0, 0, side, high};
    if (name == zoneNames[2]) return {0, high, area.width(), foot};
    return {};
}

bool MouseZones::eventFilter(QObject* watched, QEvent* event) {
    if (enabled_ && event->type() == QEvent::Leave) moveTo({});
    if (enabled_ && event->type() == QEvent::MouseMove) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        QString now;
        for (const QString& name : zoneNames)
            if (zone(name, area_.size()).contains(mouse->position().toPoint())) now = name;
        if (mouse->buttons() == Qt::NoButton) moveTo(now);
    }
    return QObject::eventFilter(watched, event);
}

void MouseZones::moveTo(const QString& zone) {
    if (zone == inside_) return;
    if (!inside_.isEmpty()) Q_EMIT exited();
    inside_ = zone;
    if (!inside_.isEmpty()) Q_EMIT entered(inside_);
}

} // namespace daylark
