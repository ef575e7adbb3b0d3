#include "ui/controls/ZoomButton.h"

#include "base/PlainText.h"
#include "ui/commands/Commands.h"
#include "ui/common/ListOpener.h"
#include "ui/common/Theme.h"
#include "viewer/display/ViewerGeometry.h"

#include <QMenu>

#include <cmath>

namespace daylark {

ZoomButton::ZoomButton(const Commands& commands, const ViewerGeometry& geometry, QWidget* parent)
    : QToolButton(parent)
    , geometry_(geometry) {
    setObjectName(QStringLiteral("zoom"));
    setAutoRaise(true);
    setIconSize({20, 20});
    setMinimumSize(32, 32);
    setFocusPolicy(Qt::TabFocus);
    auto* list = new QMenu(tr("&Zoom"), this);
    for (const char* id : {"viewer.fit", "viewer.actualPixels", "viewer.zoomIn", "viewer.zoomOut", "",
                           "viewer.flop", "viewer.flip", "viewer.mask"}) {
        if (*id)
            list->addAction(commands.action(QLatin1String(id)));
        else
            list->addSeparator();
    }
    letOpen(*this, list);
    connect(&geometry_, &ViewerGeometry::changed, this, &ZoomButton::showZoom);
    showZoom();
}

void ZoomButton::showZoom() {
    const DisplayGeometry& lies = geometry_.geometry();
    setIcon(theme::icon(lies.isFitted() ? QStringLiteral("zoomFit") : QStringLiteral("zoomIn")));
    const int percent = int(std::lround(std::min(lies.viewerScaleX(), 1e6) * 100));
    setToolTip(plain::toolTip(lies.isFitted() ? tr("Zoom: fits the viewer")
                               : tr("Zoom: %1 % of the viewer's width").arg(percent)));
    setAccessibleName(tr("Zoom"));
}

} // namespace daylark
