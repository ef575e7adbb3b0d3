#include "ui/common/FlagPopUp.h"

#include "base/PlainText.h"
#include "commands/viewer/ViewerCommands.h"
#include "model/Movie.h"
#include "model/StatusCodes.h"
#include "preferences/Preferences.h"
#include "ui/commands/Commands.h"
#include "ui/common/ListOpener.h"
#include "ui/common/Theme.h"

#include <QMenu>

namespace daylark {

namespace {
constexpr int flagPopUpWidth = 152;
}

FlagPopUp::FlagPopUp(Commands& commands, Preferences& preferences, QWidget* parent)
    : QToolButton(parent)
    , preferences_(preferences) {
    setObjectName(QStringLiteral("flagPopUp"));
    setAutoRaise(true);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setIconSize({16, 16});
    setMinimumHeight(28);
    setFixedWidth(flagPopUpWidth);
    setFocusPolicy(Qt::TabFocus);
    auto* choices = new QMenu(tr("&Flag"), this);
    for (int tag = status::none; tag <= status::skip; ++tag) {
        choices->addAction(commands.action(viewerCommand::flag(tag)));
        if (tag == status::none) choices->addSeparator();
    }
    letOpen(*this, choices);
    showFlagOf(nullptr);
}

void FlagPopUp::showFlagOf(const Movie* movie) {
    bool known = false;
    const int code = movie ? movie->flagString.toInt(&known) : status::none;
    const int tag = known && code > status::none && code <= status::skip ? code : status::none;
    const QString title = tag == status::none ? tr("No Flag") : flagTitle(tag, preferences_);
    setIcon(theme::icon(flagIcon(tag)));
    setText(QStringLiteral(" ") +
            plain::menuTitle(fontMetrics().elidedText(plain::line(title), Qt::ElideRight, flagPopUpWidth - 40)));
    const QString says = tr("Flag: %1").arg(plain::line(title));
    setToolTip(plain::toolTip(says));
    setAccessibleName(says);
    setEnabled(movie != nullptr);
}

QString FlagPopUp::flagTitle(int tag, const Preferences& preferences) {
    return tag == status::none ? tr("None") : preferences.statusName(QString::number(tag));
}

QString FlagPopUp::flagIcon(int tag) {
    return tag == status::none ? QStringLiteral("flag_None") : status::flagImageName(QString::number(tag));
}

} // namespace daylark
