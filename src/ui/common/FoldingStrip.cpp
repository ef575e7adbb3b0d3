#include "ui/common/FoldingStrip.h"

#include <QEvent>
#include <QLayout>
#include <QWidget>

#include <algorithm>

namespace daylark {

namespace {

int widthOf(const QWidget& control) {
    return std::max({control.sizeHint().width(), control.minimumSizeHint().width(), control.minimumWidth()});
}

} // namespace

FoldingStrip::FoldingStrip(QWidget& row, const std::vector<QWidget*>& leaving, int narrowest)
    : QObject(&row)
    , row_(row)
    , leaving_(leaving.begin(), leaving.end()) {
    row_.setMinimumWidth(narrowest);
    row_.installEventFilter(this);
}

bool FoldingStrip::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &row_ && (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest))
        fold();
    return QObject::eventFilter(watched, event);
}

/// Hidden ones and the gaps between included.
int FoldingStrip::widthOfAll() const {
    const QLayout* layout = row_.layout();
    const QMargins margins = layout->contentsMargins();
    int width = margins.left() + margins.right();
    for (int i = 0; i < layout->count(); ++i) {
        const QLayoutItem* item = layout->itemAt(i);
        const QWidget* control = const_cast<QLayoutItem*>(item)->widget();
        width += control ? widthOf(*control) + layout->spacing() : item->minimumSize().width();
    }
    return width;
}

void FoldingStrip::fold() {
    if (folding_) return;
    folding_ = true;
    int over = widthOfAll() - row_.width();
    for (const QPointer<QWidget>& control : leaving_) {
        if (!control) continue;
        const bool goes = over > 0;
        if (goes) over -= widthOf(*control) + row_.layout()->spacing();
        if (control->isHidden() != goes) control->setHidden(goes);
    }
    folding_ = false;
}

} // namespace daylark
