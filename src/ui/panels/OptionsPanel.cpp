#include "ui/panels/OptionsPanel.h"

#include "preferences/Preferences.h"
#include "ui/commands/Commands.h"
#include "ui/common/Binding.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"
#include "viewer/MoviePlayerController.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace daylark {

namespace {

constexpr int optionRowHeight = 24, headingGap = 2, optionFieldWidth = 64, optionChoiceWidth = 152;

} // namespace

OptionsPanel::OptionsPanel(MoviePlayerController& controller, Commands& commands, QWidget* parent)
    : QWidget(parent)
    , controller_(controller)
    , grid_(new QGridLayout) {
    setObjectName(QStringLiteral("optionsPanel"));
    grid_->setHorizontalSpacing(12);
    grid_->setVerticalSpacing(0);
    grid_->setColumnStretch(0, 1);
    addOverlayRows();
    addPictureRows();
    addRangeRows(commands);
    addPlaybackRows();
    addFullScreenRows();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 4, 12, 4); // docked, it fits beside the picture on the smallest screen
    layout->addLayout(grid_);
    layout->addStretch(1);
}

void OptionsPanel::addOverlayRows() {
    Preferences& preferences = controller_.preferences();
    heading(tr("Over the picture"));
    QSpinBox* start = number(tr("Counter starts at"), preferences.counterStartFrame, -1000000, 1000000);
    auto* toOne = new QPushButton(tr("Set to 1"), this);
    toOne->setObjectName(QStringLiteral("counterToOne"));
    toOne->setMinimumWidth(std::max(optionChoiceWidth - optionFieldWidth - 8, toOne->sizeHint().width()));
    toOne->setFocusPolicy(Qt::NoFocus);
    toOne->setToolTip(tr("The frame on screen counts as 1"));
    connect(toOne, &QPushButton::clicked, &controller_.time(), &TimeDisplay::setFrameCounterToOne);
    addRow(check(tr("Frame counter, from"), preferences.displayFrameCounter), inOneRow({start, toOne}));
    addRow(check(tr("Timecode"), preferences.displayTimecode),
           choice(tr("Where the timecode stands"), preferences.timecodeDisplayType,
                  {{tr("Over the picture"), wordOf(TimecodePlace::fixed)},
                   {tr("In a window of its own"), wordOf(TimecodePlace::floating)}}));
    addRow(check(tr("File name"), preferences.displayFilename));
    auto* colour = new ColourButton(preferences.onscreenTextColour, this);
    colour->setFocusPolicy(Qt::NoFocus);
    colour->setAccessibleName(tr("Text Colour"));
    colour->setToolTip(tr("Colour of the texts over the picture…"));
    addRow(check(tr("Bookmark texts"), preferences.displayBookmarkText), colour);
    addRow(tr("Drawings"), choice(tr("When drawings are shown"), preferences.displayDrawingsOptions,
                                  binding::wordChoices<DrawingsShown>()));
}

void OptionsPanel::addPictureRows() {
    Preferences& preferences = controller_.preferences();
    heading(tr("Picture"));
    ViewerGeometry& geometry = controller_.geometry();
    QComboBox* ratio = choice(tr("Mask ratio"), preferences.movieMaskRatio, binding::maskRatioChoices());
    // A ratio that is chosen is to be seen.
    connect(ratio, &QComboBox::textActivated, this,
            [&geometry](const QString& title) { geometry.resizeMaskElements({title}); });
    addRow(check(tr("Mask"), preferences.showMask), ratio);
    auto* opacity = new QSlider(Qt::Horizontal, this);
    opacity->setRange(0, 100);
    opacity->setFocusPolicy(Qt::NoFocus);
    opacity->setAccessibleName(tr("Mask opacity"));
    opacity->setFixedWidth(optionChoiceWidth);
    binding::toFraction(opacity, preferences.movieMaskOpacity);
    addRow(tr("Mask opacity"), opacity);
    QCheckBox* flop = check(tr("Flop, left to right"), preferences.mirrorY);
    QCheckBox* flip = check(tr("Flip, upside down"), preferences.mirrorX);
    addRow(flop, flip);
}

void OptionsPanel::addRangeRows(Commands& commands) {
    Preferences& preferences = controller_.preferences();
    heading(tr("Range"));
    QSpinBox* head = number(tr("Head handle, frames"), preferences.handleHead, 0, 1000000);
    QSpinBox* tail = number(tr("Tail handle, frames"), preferences.handleTail, 0, 1000000);
    QList<QWidget*> buttons;
    for (const char* id : {"viewer.markIn", "viewer.markOut", "viewer.resetHandles"}) {
        QToolButton* button = commands.button(QLatin1String(id), this);
        button->setFocusPolicy(Qt::NoFocus);
        buttons << button;
    }
    addRow(check(tr("Trim handles"), preferences.trimHandles), inOneRow(buttons));
    addRow(tr("Head and tail, frames"), inOneRow({head, tail}));
}

void OptionsPanel::addPlaybackRows() {
    Preferences& preferences = controller_.preferences();
    heading(tr("Playback"));
    Transport& transport = controller_.transport();
    QComboBox* repeat = choice(tr("Repeat"), preferences.repeatType, binding::wordChoices<RepeatMode>());
    connect(repeat, &QComboBox::activated, this,
            [&transport, repeat](int at) { transport.setRepeatMode({repeat->itemData(at).toString()}); });
    addRow(tr("Repeat"), repeat);

    auto* rate = new QDoubleSpinBox(this);
    rate->setRange(0.05, 16);
    rate->setDecimals(2);
    rate->setSingleStep(0.25);
    rate->setPrefix(QStringLiteral("× "));
    rate->setFixedWidth((optionChoiceWidth - 8) / 2);
    rate->setAccessibleName(tr("Speed"));
    binding::toNumber(rate, preferences.rateMultiplier);
    connect(rate, &QDoubleSpinBox::valueChanged, this,
            [&transport] { transport.setRateMultiplier({QStringLiteral("Set")}); });
    givesKeyboardBack(rate);
    auto* reset = new QPushButton(tr("Reset"), this);
    reset->setObjectName(QStringLiteral("resetRate"));
    reset->setMinimumWidth(std::max((optionChoiceWidth - 8) / 2, reset->sizeHint().width()));
    reset->setFocusPolicy(Qt::NoFocus);
    reset->setToolTip(tr("Plays at the movie's own rate"));
    connect(reset, &QPushButton::clicked, this,
            [&transport] { transport.setRateMultiplier({QStringLiteral("Reset")}); });
    addRow(tr("Speed"), inOneRow({rate, reset}));
    addRow(tr("Movies start at"),
           choice(tr("Where a movie starts"), preferences.loadFrame, binding::wordChoices<StartFrame>()));
    addRow(tr("New bookmarks last, frames"),
           number(tr("Frames of a new bookmark"), preferences.bookmarkDuration, 1, 1000000));
}

void OptionsPanel::addFullScreenRows() {
    Preferences& preferences = controller_.preferences();
    heading(tr("Full screen"));
    addRow(checkOpposite(tr("Playlist at the right edge"), preferences.disableRightMouseZone));
    addRow(checkOpposite(tr("Controls at the lower edge"), preferences.disableLowerMouseZone));
    addRow(checkOpposite(tr("Single keys work"), preferences.disableHotkeysInFullScreenMode));
}

void OptionsPanel::heading(const QString& text) {
    auto* label = new PlainLabel(text, this);
    label->setFont(theme::smallFont());
    label->setForegroundRole(QPalette::PlaceholderText);
    const int row = grid_->rowCount();
    if (row > 1) grid_->setRowMinimumHeight(row, headingGap);
    grid_->addWidget(label, row + 1, 0, 1, 2);
}

void OptionsPanel::addRow(QWidget* left, QWidget* right) {
    const int row = grid_->rowCount();
    grid_->setRowMinimumHeight(row, optionRowHeight);
    grid_->addWidget(left, row, 0, 1, right ? 1 : 2, Qt::AlignVCenter);
    if (right) grid_->addWidget(right, row, 1, Qt::AlignVCenter | Qt::AlignLeft);
}

void OptionsPanel::addRow(const QString& label, QWidget* right) {
    addRow(new PlainLabel(label, this), right);
}

QWidget* OptionsPanel::inOneRow(const QList<QWidget*>& widgets) {
    auto* together = new QWidget(this);
    auto* row = new QHBoxLayout(together);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    for (QWidget* widget : widgets)
        row->addWidget(widget);
    row->addStretch(1);
    return together;
}

QCheckBox* OptionsPanel::check(const QString& text, Preference<bool>& preference) {
    auto* box = new QCheckBox(text, this);
    box->setFocusPolicy(Qt::NoFocus); // keys stay the viewer's
    binding::toBool(box, preference);
    return box;
}

QCheckBox* OptionsPanel::checkOpposite(const QString& text, Preference<bool>& preference) {
    auto* box = new QCheckBox(text, this);
    box->setFocusPolicy(Qt::NoFocus);
    binding::toOpposite(box, preference);
    return box;
}

QComboBox* OptionsPanel::choice(const QString& name, PreferenceItem& preference,
                                const std::vector<binding::Choice>& choices) {
    auto* box = new QComboBox(this);
    box->setFocusPolicy(Qt::NoFocus);
    box->setAccessibleName(name);
    binding::toChoice(box, preference, choices);
    box->setMinimumWidth(std::max(optionChoiceWidth, box->sizeHint().width())); // whatever the size of text
    return box;
}

QSpinBox* OptionsPanel::number(const QString& name, Preference<int>& preference, int least, int most) {
    auto* field = new QSpinBox(this);
    field->setRange(least, most);
    field->setAccessibleName(name);
    field->setToolTip(plain::toolTip(name));
    field->setFixedWidth(std::max(optionFieldWidth, field->fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 16));
    givesKeyboardBack(field);
    binding::toInteger(field, preference);
    return field;
}

void OptionsPanel::givesKeyboardBack(QAbstractSpinBox* field) {
    field->setButtonSymbols(QAbstractSpinBox::NoButtons);
    field->setAlignment(Qt::AlignRight);
    field->setFocusPolicy(Qt::ClickFocus);
    field->setKeyboardTracking(false);
    connect(field, &QAbstractSpinBox::editingFinished, this, [this, field] {
        if (!field->hasFocus()) return; // it went elsewhere by itself
        field->clearFocus();
        Q_EMIT keyboardUnused();
    });
}

} // namespace daylark
