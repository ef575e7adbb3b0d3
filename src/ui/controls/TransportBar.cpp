#include "ui/controls/TransportBar.h"

#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "ui/commands/Commands.h"
#include "ui/common/FlagPopUp.h"
#include "ui/common/FoldingStrip.h"
#include "ui/common/ListOpener.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"
#include "ui/controls/LayerButton.h"
#include "ui/controls/ViewChoiceButton.h"
#include "ui/controls/VolumeButton.h"
#include "ui/controls/ZoomButton.h"
#include "viewer/MoviePlayerController.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QMenu>
#include <QToolButton>

#include <algorithm>
#include <cmath>
#include <vector>

namespace daylark {

namespace {

constexpr int stripHeight = 56;
constexpr int betweenNumbers = 12; // so that a production's number doesn't run into the timecode

struct RepeatChoice {
    RepeatMode mode;
    const char* icon;
};
constexpr RepeatChoice repeatChoices[] = {{RepeatMode::loopMovie, "loop"},
                                          {RepeatMode::oneShot, "playOnce"},
                                          {RepeatMode::pingPong, "pingPong"},
                                          {RepeatMode::playMovieOnce, "playOnce"},
                                          {RepeatMode::playPlaylistOnce, "playlist"},
                                          {RepeatMode::loopPlaylist, "loopPlaylist"}};

} // namespace

TransportBar::TransportBar(MoviePlayerController& controller, Commands& commands, QWidget* parent)
    : QWidget(parent)
    , controller_(controller)
    , commands_(commands) {
    setFixedHeight(stripHeight);
    setObjectName(QStringLiteral("transportBar"));
    elapsed_ = readOut(QStringLiteral("elapsed"), tr("Elapsed time"), QStringLiteral("0:00:00"));
    counter_ = readOut(QStringLiteral("counter"), tr("Frame"), QStringLiteral("00000 / 00000"));
    timecode_ = readOut(QStringLiteral("timecode"), tr("Timecode"), QStringLiteral("TC 00:00:00:00"));
    timecode_->setContentsMargins(betweenNumbers, 0, 0, 0);
    timecode_->setMinimumWidth(timecode_->minimumWidth() + betweenNumbers);
    rate_ = readOut(QStringLiteral("rate"), tr("Speed"), QStringLiteral("×−00.0"));
    rate_->setAlignment(Qt::AlignCenter);
    repeat_ = repeatPopUp();
    volume_ = new VolumeButton(controller_.transport(), this);
    flag_ = new FlagPopUp(commands_, controller_.preferences(), this);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 4, 12, 12);
    layout->setSpacing(4);
    layout->addWidget(elapsed_);
    layout->addWidget(counter_);
    layout->addWidget(timecode_);
    layout->addStretch(1);
    for (const char* id : {"viewer.previousMovie", "viewer.firstFrame", "viewer.stepBackward",
                           "viewer.playBackwards", "viewer.playPause", "viewer.playForwards",
                           "viewer.stepForward", "viewer.lastFrame", "viewer.nextMovie"})
        layout->addWidget(commandButton(QLatin1String(id)));
    layout->addSpacing(4);
    layout->addWidget(rate_);
    layout->addStretch(1);
    layout->addWidget(repeat_);
    layout->addWidget(volume_);
    layout->addWidget(flag_);
    layout->addSpacing(8);
    layout->addWidget(new LayerButton(controller_.run(), this));
    using Choice = ViewChoiceButton::Choice;
    for (const auto& [choice, button] : {std::pair(Choice::display, &display_), std::pair(Choice::view, &view_)}) {
        *button = new ViewChoiceButton(choice, controller_.colour(), commands_.action(QStringLiteral("viewer.colour")), this);
        layout->addWidget(*button);
    }
    layout->addWidget(new ZoomButton(commands_, controller_.geometry(), this));
    for (const char* id : {"viewer.notes", "viewer.drawingTools", "viewer.gradeTools", "viewer.bookmarks",
                           "viewer.options", "viewer.playlistDrawer", "viewer.fullScreen"})
        layout->addWidget(commandButton(QLatin1String(id)));
    showTimes();
    showState();
    showRepeatType();
    letItFold();
}

// In the smallest window the transport, the counter, the volume and full screen are left beside the way to the others. What a
// key or a menu does as well goes first; through what the picture is looked at is seen as long as there is room.
void TransportBar::letItFold() {
    std::vector<QWidget*> leaving{repeat_, elapsed_};
    for (const char* id : {"viewer.options", "viewer.gradeTools", "viewer.drawingTools", "viewer.bookmarks", "viewer.notes",
                           "viewer.playlistDrawer"})
        leaving.push_back(buttons_[QLatin1String(id)]);
    leaving.insert(leaving.end(), {rate_, findChild<ZoomButton*>(), display_, view_, flag_, timecode_});
    for (const char* id :
         {"viewer.previousMovie", "viewer.nextMovie", "viewer.firstFrame", "viewer.lastFrame"})
        leaving.push_back(buttons_[QLatin1String(id)]);
    leaving.erase(std::remove(leaving.begin(), leaving.end(), nullptr), leaving.end());
    auto* strip = new FoldingStrip(*this, leaving, 420); // the row owns it
    for (ViewChoiceButton* button : {display_, view_}) {
        const auto follow = [strip, button] { strip->setWanted(button, button->isWanted()); };
        connect(button, &ViewChoiceButton::wantedChanged, strip, follow);
        follow();
    }
}

PlainLabel* TransportBar::readOut(const QString& name, const QString& accessibleName, const QString& widest) {
    auto* label = new PlainLabel(this);
    label->setObjectName(name);
    label->setAccessibleName(accessibleName);
    label->setToolTip(plain::toolTip(accessibleName));
    label->setFont(theme::numberFont());
    label->setMinimumWidth(QFontMetrics(label->font()).horizontalAdvance(widest) + 8);
    return label;
}

QToolButton* TransportBar::commandButton(const QString& id) {
    QToolButton* button = commands_.button(id, this);
    button->setMinimumSize(32, 32);
    button->setIconSize({20, 20});
    buttons_[id] = button;
    return button;
}

QToolButton* TransportBar::repeatPopUp() {
    auto* button = new QToolButton(this);
    button->setObjectName(QStringLiteral("repeatPopUp"));
    button->setAutoRaise(true);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setIconSize({16, 16});
    button->setMinimumHeight(28);
    button->setFocusPolicy(Qt::TabFocus);
    auto* choices = new QMenu(tr("R&epeat"), button);
    auto* group = new QActionGroup(choices);
    for (const RepeatChoice& choice : repeatChoices) {
        const QString title = wordOf(choice.mode);
        const QString shown = QCoreApplication::translate("Words", title.toUtf8().constData());
        QAction* action = choices->addAction(theme::icon(QLatin1String(choice.icon)), plain::menuTitle(shown));
        action->setCheckable(true);
        action->setIconVisibleInMenu(false); // a mark beside the one in force says more
        action->setData(title);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, title] { setRepeatType(title); });
    }
    letOpen(*button, choices);
    return button;
}

void TransportBar::setRepeatType(const QString& title) {
    const RepeatMode mode = valueOfWord<RepeatMode>(title);
    // These two are the control's own to store.
    if (mode == RepeatMode::oneShot || mode == RepeatMode::pingPong)
        controller_.preferences().repeatType.set(mode);
    controller_.transport().setRepeatMode({title, 0});
}

void TransportBar::showTimes() {
    elapsed_->setText(controller_.currentMovie() ? controller_.time().currentTimeForDisplay() : QString());
    counter_->setText(controller_.time().stripFrameOfFrames());
    timecode_->setText(controller_.time().stripTimecode());
}

QMenu* TransportBar::repeatMenu() const {
    return repeat_->menu();
}

QString TransportBar::counterText() const {
    return counter_->text();
}

void TransportBar::showState() {
    const bool running = controller_.transport().isRunning();
    const double rate =
        running ? double(controller_.player().rate()) : controller_.preferences().rateMultiplier();
    rate_->setText(QStringLiteral("×%1%2")
                       .arg(rate < 0 ? QStringLiteral("−") : QString())
                       .arg(std::abs(rate), 0, 'f', 1));
    rate_->setEnabled(running);
    rate_->setToolTip(plain::toolTip(tr("Speed %1").arg(controller_.time().approxFrameRate())));
}

void TransportBar::showRepeatType() {
    const QString current = controller_.preferences().repeatType.text();
    const auto actions = repeat_->menu()->actions();
    for (QAction* action : actions) {
        action->setChecked(action->data().toString() == current);
        if (!action->isChecked()) continue;
        repeat_->setText(QStringLiteral(" ") + action->text()); // a little air beside the icon
        repeat_->setIcon(action->icon());
    }
    const QString shown = QCoreApplication::translate("Words", current.toUtf8().constData());
    repeat_->setToolTip(plain::toolTip(tr("Repeat: %1").arg(shown)));
    repeat_->setAccessibleName(repeat_->toolTip());
}

void TransportBar::showFlag() {
    flag_->showFlagOf(controller_.currentMovie().get());
}

} // namespace daylark
