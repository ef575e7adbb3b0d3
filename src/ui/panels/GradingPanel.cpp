#include "ui/panels/GradingPanel.h"

#include "ui/commands/Commands.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"
#include "viewer/MoviePlayerController.h"

#include <QDoubleSpinBox>
#include <QEvent>
#include <QGridLayout>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace daylark {

namespace {

constexpr int stepsOfAUnit = 200; // of a slider

} // namespace

GradingPanel::GradingPanel(MoviePlayerController& controller, const Commands& commands, QWidget* parent)
    : QWidget(parent)
    , controller_(controller)
    , grade_(controller.grade()) {
    setObjectName(QStringLiteral("gradingPanel"));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(2);
    grid->setColumnStretch(1, 1);
    addRow(*grid, ViewerGrade::exposure, tr("Exposure"), -5, 5);
    addRow(*grid, ViewerGrade::contrast, tr("Contrast"), 0, 4);
    addRow(*grid, ViewerGrade::brightness, tr("Brightness"), -1, 1);
    addRow(*grid, ViewerGrade::gamma, tr("Gamma"), 0.1, 4);
    addRow(*grid, ViewerGrade::saturation, tr("Saturation"), 0, 4);
    addRow(*grid, ViewerGrade::red, tr("Red"), 0, 4);
    addRow(*grid, ViewerGrade::green, tr("Green"), 0, 4);
    addRow(*grid, ViewerGrade::blue, tr("Blue"), 0, 4);

    auto* foot = new QHBoxLayout;
    foot->setSpacing(4);
    for (const char* id : {"viewer.toggleGrade", "viewer.copyGrade", "viewer.pasteGrade", "viewer.gradeAll"})
        foot->addWidget(commands.button(QLatin1String(id), this));
    foot->addStretch(1);
    foot->addWidget(commands.button(QStringLiteral("viewer.resetGrade"), this));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 8, 12, 8);
    layout->setSpacing(8);
    layout->addLayout(grid);
    layout->addLayout(foot);
    layout->addStretch(1);
    setMinimumWidth(340);

    connect(&grade_, &ViewerGrade::gradeChanged, this, &GradingPanel::showGrade);
    connect(&controller_, &MoviePlayerController::movieShown, this, &GradingPanel::showGrade);
    showGrade();
}

void GradingPanel::addRow(QGridLayout& grid, int tag, const QString& name, double least, double most) {
    Row row;
    auto* label = new PlainLabel(name, this);
    label->setToolTip(plain::toolTip(tr("Double-click resets %1").arg(name)));
    label->setProperty("tag", tag);
    label->installEventFilter(this);
    row.slider = new QSlider(Qt::Horizontal, this);
    row.slider->setRange(int(std::lround(least * stepsOfAUnit)), int(std::lround(most * stepsOfAUnit)));
    row.slider->setPageStep(stepsOfAUnit / 10);
    row.slider->setFocusPolicy(Qt::NoFocus); // keys stay the viewer's
    row.slider->setAccessibleName(name);
    row.number = new QDoubleSpinBox(this);
    row.number->setRange(-1000, 1000);
    row.number->setDecimals(3);
    row.number->setSingleStep(0.05);
    row.number->setFocusPolicy(Qt::ClickFocus);
    row.number->setKeyboardTracking(false);
    row.number->setButtonSymbols(QAbstractSpinBox::NoButtons);
    row.number->setFixedWidth(72);
    row.number->setAlignment(Qt::AlignRight);
    row.number->setAccessibleName(tr("%1, number").arg(name));
    row.reset = new QToolButton(this);
    row.reset->setAutoRaise(true);
    row.reset->setFocusPolicy(Qt::NoFocus);
    row.reset->setIcon(theme::icon(QStringLiteral("reset")));
    row.reset->setIconSize({16, 16});
    row.reset->setFixedSize(24, 24);
    row.reset->setToolTip(plain::toolTip(tr("Reset %1").arg(name)));
    row.reset->setAccessibleName(row.reset->toolTip());
    const int line = grid.rowCount();
    grid.addWidget(label, line, 0);
    grid.addWidget(row.slider, line, 1);
    grid.addWidget(row.number, line, 2);
    grid.addWidget(row.reset, line, 3);
    const auto control = ViewerGrade::Tag(tag);
    connect(row.slider, &QSlider::valueChanged, this,
            [this, control](int steps) { grade_.setValue(control, double(steps) / stepsOfAUnit); });
    // One drag is one step.
    UndoHistory& history = controller_.edits().history();
    connect(row.slider, &QSlider::sliderPressed, &history, &UndoHistory::holdRun);
    connect(row.slider, &QSlider::sliderReleased, &history, &UndoHistory::endRun);
    connect(row.number, &QDoubleSpinBox::valueChanged, this,
            [this, control](double value) { grade_.setValue(control, value); });
    connect(row.number, &QDoubleSpinBox::editingFinished, this, &GradingPanel::giveKeyboardBack);
    connect(row.reset, &QToolButton::clicked, this, [this, tag] { grade_.setGrade({{}, tag}); });
    rows_[tag] = row;
}

bool GradingPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonDblClick && watched->property("tag").isValid()) {
        grade_.setGrade({{}, watched->property("tag").toInt()});
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void GradingPanel::giveKeyboardBack() {
    if (QWidget* viewer = parentWidget() ? parentWidget()->parentWidget() : nullptr) viewer->activateWindow();
}

void GradingPanel::showGrade() {
    const bool usable = controller_.currentMovie() != nullptr;
    for (const auto& [tag, row] : rows_) {
        const double value = grade_.value(ViewerGrade::Tag(tag));
        const QSignalBlocker sliderSilence(row.slider), numberSilence(row.number);
        row.slider->setValue(int(std::lround(std::clamp(value, -1000.0, 1000.0) * stepsOfAUnit)));
        row.number->setValue(value);
        row.slider->setEnabled(usable);
        row.number->setEnabled(usable);
        row.reset->setEnabled(usable);
    }
}

} // namespace daylark
