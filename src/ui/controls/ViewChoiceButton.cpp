#include "ui/controls/ViewChoiceButton.h"

#include "base/PlainText.h"
#include "ui/common/ListOpener.h"
#include "ui/common/Theme.h"
#include "viewer/display/ViewerColour.h"

#include <QActionGroup>
#include <QFontMetrics>
#include <QMenu>

namespace daylark {

namespace {

constexpr int widestChoice = 112, widestReason = 480;

} // namespace

ViewChoiceButton::ViewChoiceButton(Choice choice, ViewerColour& colour, QAction* panel, QWidget* parent)
    : QToolButton(parent)
    , choice_(choice)
    , colour_(colour)
    , panel_(panel) {
    const bool isDisplay = choice_ == Choice::display;
    setObjectName(isDisplay ? QStringLiteral("displayPopUp") : QStringLiteral("viewPopUp"));
    setAutoRaise(true);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setMinimumHeight(28);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(isDisplay ? tr("Display") : tr("View"));
    auto* list = new QMenu(isDisplay ? tr("&Display") : tr("&View"), this);
    letOpen(*this, list);
    connect(list, &QMenu::aboutToShow, this, &ViewChoiceButton::fillList);
    connect(&colour_, &ViewerColour::changed, this, &ViewChoiceButton::refresh);
    refresh();
}

bool ViewChoiceButton::isWanted() const {
    const bool isShownByOne = colour_.isManaged() && colour_.config();
    return isShownByOne || (choice_ == Choice::display && !colour_.problem().isEmpty());
}

void ViewChoiceButton::refresh() {
    const bool isDisplay = choice_ == Choice::display, isRaw = isDisplay && !colour_.problem().isEmpty();
    const DisplayTransform transform = colour_.transform();
    const QString name = isRaw ? tr("Shown Raw") : isDisplay ? transform.display : transform.view;
    setText(plain::menuTitle(QFontMetrics(font()).elidedText(name, Qt::ElideMiddle, widestChoice)));
    setToolTip(plain::toolTip(isRaw       ? colour_.problem()
                              : isDisplay ? tr("Display: %1").arg(name)
                                          : tr("View: %1").arg(name)));
    if (isRaw != wasRaw_) setStyleSheet(isRaw ? QStringLiteral("color: %1").arg(theme::warning.name()) : QString());
    wasRaw_ = isRaw;
    if (isWanted() == wasWanted_) return;
    wasWanted_ = isWanted();
    Q_EMIT wantedChanged();
}

void ViewChoiceButton::fillList() {
    menu()->clear();
    if (const QString problem = colour_.problem(); !problem.isEmpty()) {
        const QString line = QFontMetrics(menu()->font()).elidedText(plain::line(problem), Qt::ElideRight, widestReason);
        menu()->addAction(plain::menuTitle(line))->setEnabled(false);
    }
    if (const auto& config = colour_.config()) {
        const DisplayTransform transform = colour_.transform();
        const bool isDisplay = choice_ == Choice::display;
        auto* group = new QActionGroup(menu());
        const QStringList names = isDisplay ? config->displays() : config->views(transform.display);
        for (const QString& name : names) {
            QAction* action = menu()->addAction(plain::menuTitle(name));
            action->setCheckable(true);
            action->setChecked(name == (isDisplay ? transform.display : transform.view));
            group->addAction(action);
            connect(action, &QAction::triggered, this,
                    [this, name, isDisplay] { isDisplay ? colour_.setDisplay(name) : colour_.setView(name); });
        }
    }
    menu()->addSeparator();
    menu()->addAction(panel_);
}

} // namespace daylark
