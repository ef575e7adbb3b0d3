#include "ui/controls/LayerButton.h"

#include "base/PlainText.h"
#include "ui/common/ListOpener.h"
#include "viewer/transport/ViewerRun.h"

#include <QActionGroup>
#include <QFontMetrics>
#include <QInputDialog>
#include <QMenu>

namespace daylark {

LayerButton::LayerButton(ViewerRun& run, QWidget* parent)
    : QToolButton(parent)
    , run_(run) {
    setObjectName(QStringLiteral("layerPopUp"));
    setAutoRaise(true);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setMinimumHeight(28);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(tr("Layer"));
    auto* list = new QMenu(tr("&Layer"), this);
    letOpen(*this, list);
    connect(list, &QMenu::aboutToShow, this, &LayerButton::fillList);
    connect(&run_, &ViewerRun::changed, this, &LayerButton::showLayers);
    showLayers();
}

void LayerButton::showLayers() {
    setVisible(run_.isRun());
    const QString layer = run_.layer();
    const QString name = layer.isEmpty() ? tr("RGB") : layer;
    constexpr int widest = 120;
    setText(plain::menuTitle(QFontMetrics(font()).elidedText(name, Qt::ElideMiddle, widest)));
    setToolTip(plain::toolTip(tr("Layer: %1").arg(name)));
}

void LayerButton::fillList() {
    menu()->clear();
    auto* group = new QActionGroup(menu());
    const QString shown = run_.layerAlone();
    const auto add = [&](const QString& title, const QString& layer) {
        QAction* action = menu()->addAction(plain::menuTitle(title));
        action->setCheckable(true);
        action->setChecked(layer == shown);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, layer] { run_.setLayer(layer); });
    };
    add(tr("RGB"), {});
    for (const QString& layer : run_.layers())
        add(layer, layer);
    menu()->addSeparator();
    QAction* range = menu()->addAction(tr("Black and White Point…"), this, &LayerButton::askForRange);
    range->setEnabled(!shown.isEmpty());
    menu()->addAction(tr("Frame Rate…"), this, &LayerButton::askForRate);
    QAction* fixed = menu()->addAction(tr("Keep These Frames"));
    fixed->setCheckable(true);
    fixed->setChecked(run_.isFixed());
    fixed->setToolTip(tr("Whatever comes into its folder"));
    connect(fixed, &QAction::triggered, &run_, &ViewerRun::setFixed);
    menu()->addAction(tr("Look for New Pictures"), &run_, &ViewerRun::look);
}

void LayerButton::askForRate() {
    bool isChosen = false;
    constexpr double fastest = 1000;
    const double rate = QInputDialog::getDouble(this, tr("Frame Rate"), tr("Frames a second; 0 for what the pictures say:"),
                                                run_.rate().value(), 0, fastest, 3, &isChosen);
    if (isChosen) run_.setRate(RunRate::of(rate));
}

/// For depth and other data: which numbers are black and which are white.
void LayerButton::askForRange() {
    QString numbers = run_.blackAndWhite();
    QString question = tr("Two numbers, such as 0, 100; nothing for what the picture reaches over:");
    bool isChosen = true, isTaken = false;
    while (isChosen && !isTaken) {
        numbers = QInputDialog::getText(this, tr("Black and White Point"), question, QLineEdit::Normal, numbers, &isChosen);
        isTaken = isChosen && run_.setBlackAndWhite(numbers);
        question = tr("These are no two different numbers. Black and white, such as 0, 100; nothing for what the picture "
                      "reaches over:");
    }
}

} // namespace daylark
