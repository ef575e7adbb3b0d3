#include "ui/common/FoldingStrip.h"

#include "ui/common/ListOpener.h"
#include "ui/common/PlainLabel.h"

#include <QAction>
#include <QEvent>
#include <QLayout>
#include <QMenu>
#include <QToolButton>

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
    , leaving_(leaving.begin(), leaving.end())
    , more_(new QToolButton(&row))
    , menu_(new QMenu(more_)) {
    more_->setObjectName(QStringLiteral("moreControls"));
    more_->setAutoRaise(true);
    more_->setText(QStringLiteral("»"));
    more_->setToolTip(tr("More Controls"));
    more_->setAccessibleName(tr("More Controls"));
    more_->setMinimumSize(24, 32);
    more_->setFocusPolicy(Qt::TabFocus);
    letOpen(*more_, menu_);
    more_->hide();
    row_.layout()->addWidget(more_);
    connect(menu_, &QMenu::aboutToShow, this, &FoldingStrip::fillMenu);
    row_.setMinimumWidth(narrowest);
    row_.installEventFilter(this);
}

bool FoldingStrip::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (watched == &row_ && (type == QEvent::Resize || type == QEvent::LayoutRequest || type == QEvent::Show)) fold();
    return QObject::eventFilter(watched, event);
}

bool FoldingStrip::leaves(const QWidget* control) const {
    return std::find(leaving_.begin(), leaving_.end(), control) != leaving_.end();
}

void FoldingStrip::setWanted(const QWidget* control, bool wanted) {
    if (unwanted_.contains(control) != wanted) return;
    wanted ? void(unwanted_.remove(control)) : void(unwanted_.insert(control));
    fold();
}

/// Folded ones and the gaps between included, the way to them not, nor what is not there at all.
int FoldingStrip::widthOfAll() const {
    const QLayout* layout = row_.layout();
    const QMargins margins = layout->contentsMargins();
    int width = margins.left() + margins.right();
    for (int i = 0; i < layout->count(); ++i) {
        const QLayoutItem* item = layout->itemAt(i);
        const QWidget* control = const_cast<QLayoutItem*>(item)->widget();
        const bool isAway = control && control->isHidden() && (!leaves(control) || unwanted_.contains(control));
        if (control == more_ || isAway) continue;
        width += control ? widthOf(*control) + layout->spacing() : item->minimumSize().width();
    }
    return width;
}

void FoldingStrip::fold() {
    if (folding_) return;
    folding_ = true;
    for (const QPointer<QWidget>& control : leaving_)
        if (control && unwanted_.contains(control)) control->hide();
    const int gap = row_.layout()->spacing();
    int over = widthOfAll() - row_.width();
    const bool folds = over > 0;
    if (folds) over += widthOf(*more_) + gap;
    for (const QPointer<QWidget>& control : leaving_) {
        if (!control) continue;
        const bool isWanted = !unwanted_.contains(control), goes = isWanted && over > 0;
        if (goes) over -= widthOf(*control) + gap;
        const bool hides = goes || !isWanted;
        if (control->isHidden() != hides) control->setHidden(hides);
    }
    if (more_->isHidden() == folds) more_->setVisible(folds);
    folding_ = false;
}

/// In the order of the row.
void FoldingStrip::fillMenu() {
    menu_->clear();
    const QLayout* layout = row_.layout();
    for (int i = 0; i < layout->count(); ++i) {
        QWidget* control = layout->itemAt(i)->widget();
        if (!control || !control->isHidden() || !leaves(control) || unwanted_.contains(control)) continue;
        if (const auto* button = qobject_cast<QToolButton*>(control)) {
            if (QMenu* below = button->menu())
                menu_->addMenu(below);
            else if (QAction* action = button->defaultAction())
                menu_->addAction(action);
        } else if (const auto* readOut = qobject_cast<PlainLabel*>(control)) {
            const QString says = QStringLiteral("%1: %2").arg(readOut->accessibleName(), readOut->text());
            menu_->addAction(plain::menuTitle(says))->setEnabled(false);
        }
    }
}

} // namespace daylark
