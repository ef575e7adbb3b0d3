#include "ui/library/RecentSessionsMenu.h"

#include "app/PlaylistController.h"
#include "app/sessions/RecentSessions.h"
#include "base/PlainText.h"
#include "preferences/Preferences.h"

#include <QAction>
#include <QFileInfo>
#include <QMenu>

namespace daylark {

namespace {

QMenu* menuOf(const QAction& action) {
    for (QObject* shown : action.associatedObjects())
        if (auto* menu = qobject_cast<QMenu*>(shown)) return menu;
    return nullptr;
}

} // namespace

RecentSessionsMenu::RecentSessionsMenu(PlaylistController& controller, QAction& clear)
    : QObject(menuOf(clear))
    , controller_(controller)
    , clear_(clear)
    , menu_(menuOf(clear)) {
    menu_->setToolTipsVisible(true);
    connect(&controller.preferences().recentSessions, &PreferenceItem::changed, this, &RecentSessionsMenu::fill);
    connect(&controller.sessionFiles(), &SessionFiles::pathChanged, this, &RecentSessionsMenu::fill);
    fill();
}

void RecentSessionsMenu::fill() {
    for (QAction* action : menu_->actions()) {
        menu_->removeAction(action);
        if (action != &clear_) action->deleteLater(); // it may be the one that is being chosen
    }
    const QString current = controller_.sessionFiles().currentSessionPath();
    for (const QString& path : recentSessions::paths(controller_.preferences())) {
        QAction* action = menu_->addAction(plain::menuTitle(plain::line(QFileInfo(path).completeBaseName(), 60)));
        action->setToolTip(plain::toolTip(path));
        action->setCheckable(true);
        action->setChecked(path == current);
        connect(action, &QAction::triggered, this, [this, action, path, current] {
            action->setChecked(path == current); // what a click made of it
            controller_.sessionFiles().dragSessionImport(path);
        });
    }
    menu_->addSeparator();
    menu_->addAction(&clear_);
}

} // namespace daylark
