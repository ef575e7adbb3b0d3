#include "ui/panels/DrawingPanel.h"

#include "preferences/Preferences.h"
#include "ui/commands/Commands.h"
#include "ui/common/Binding.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"
#include "viewer/MoviePlayerController.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QPainter>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>

#include <cmath>

namespace daylark {

namespace {

constexpr int widest = 100; // movie pixels

QIcon swatch(const QColor& colour, int side) {
    QPixmap pixmap(side * 2, side * 2); // crisp at twice the points
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(theme::line, 2));
    painter.setBrush(colour);
    painter.drawRoundedRect(QRectF(1, 1, side * 2 - 2, side * 2 - 2), 6, 6);
    painter.end();
    pixmap.setDevicePixelRatio(2);
    return QIcon(pixmap);
}

QDoubleSpinBox* numberField(QWidget* parent, double least, double most, int decimals) {
    auto* number = new QDoubleSpinBox(parent);
    number->setRange(least, most);
    number->setDecimals(decimals);
    number->setButtonSymbols(QAbstractSpinBox::NoButtons);
    number->setFocusPolicy(Qt::ClickFocus);
    number->setKeyboardTracking(false);
    number->setAlignment(Qt::AlignRight);
    number->setFixedWidth(56);
    return number;
}

QSlider* valueSlider(QWidget* parent, int least, int most) {
    auto* slider = new QSlider(Qt::Horizontal, parent);
    slider->setRange(least, most);
    slider->setFocusPolicy(Qt::NoFocus); // keys stay the viewer's
    slider->setMinimumWidth(120);
    return slider;
}

} // namespace

DrawingPanel::DrawingPanel(MoviePlayerController& controller, const Commands& commands, QWidget* parent)
    : QWidget(parent)
    , controller_(controller)
    , width_(valueSlider(this, 1, widest))
    , opacity_(valueSlider(this, 0, 100))
    , widthNumber_(numberField(this, 1, 1000, 0))
    , opacityNumber_(numberField(this, 0, 1, 2)) {
    setObjectName(QStringLiteral("drawingPanel"));
    DrawingTools& tools = controller_.drawingTools();
    DrawingVisibility& visibility = controller_.drawingVisibility();
    Preferences& preferences = controller_.preferences();

    auto* toolRow = new QHBoxLayout;
    toolRow->setSpacing(4);
    draw_ = addTool(*toolRow, QStringLiteral("Draw"), QStringLiteral("draw"),
                    tr("Draw with the brush (T changes)"));
    erase_ =
        addTool(*toolRow, QStringLiteral("Erase"), QStringLiteral("eraser"), tr("Erase from the drawing"));
    scroll_ =
        addTool(*toolRow, QStringLiteral("Scroll"), QStringLiteral("pan"), tr("Move the zoomed picture"));
    toolRow->addStretch(1);
    for (const char* id : {"edit.undo", "edit.redo"})
        toolRow->addWidget(commands.button(QLatin1String(id), this));

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(4);
    grid->setColumnStretch(1, 1);
    grid->addWidget(new PlainLabel(tr("Width"), this), 0, 0);
    grid->addWidget(width_, 0, 1);
    grid->addWidget(widthNumber_, 0, 2);
    grid->addWidget(new PlainLabel(tr("Opacity"), this), 1, 0);
    grid->addWidget(opacity_, 1, 1);
    grid->addWidget(opacityNumber_, 1, 2);
    width_->setAccessibleName(tr("Width of the tool"));
    widthNumber_->setAccessibleName(tr("Width of the tool"));
    opacity_->setAccessibleName(tr("Opacity of the tool"));
    opacityNumber_->setAccessibleName(tr("Opacity of the tool"));
    width_->setToolTip(tr("Width in pixels of the movie ([ and ])"));

    auto* shows = new QComboBox(this);
    shows->setFocusPolicy(Qt::NoFocus);
    shows->setAccessibleName(tr("When drawings are shown"));
    binding::toChoice(shows, preferences.displayDrawingsOptions, binding::wordChoices<DrawingsShown>());
    auto* background = new QComboBox(this);
    background->setFocusPolicy(Qt::NoFocus);
    background->setAccessibleName(tr("Behind drawings"));
    background->addItems(allWords<DrawingBackground>());
    background->setCurrentText(visibility.drawingBackground());
    connect(background, &QComboBox::textActivated, &visibility, &DrawingVisibility::setDrawingBackground);
    grid->addWidget(new PlainLabel(tr("Shown"), this), 2, 0);
    grid->addWidget(shows, 2, 1, 1, 2);
    grid->addWidget(new PlainLabel(tr("Behind"), this), 3, 0);
    grid->addWidget(background, 3, 1, 1, 2);
    auto* automatic = new QCheckBox(tr("Take up the brush when they open"), this);
    automatic->setFocusPolicy(Qt::NoFocus);
    binding::toBool(automatic, preferences.autoSwitchToDrawingMode);
    grid->addWidget(automatic, 4, 0, 1, 3);

    auto* foot = new QHBoxLayout;
    foot->setSpacing(4);
    for (const char* id : {"viewer.removeLatestStroke", "viewer.deleteDrawings", "viewer.deleteAllDrawings"})
        foot->addWidget(commands.button(QLatin1String(id), this));
    foot->addStretch(1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 8, 12, 8);
    layout->setSpacing(8);
    layout->addLayout(toolRow);
    layout->addLayout(colours());
    layout->addLayout(grid);
    layout->addLayout(foot);
    layout->addStretch(1);
    setMinimumWidth(260);

    connect(width_, &QSlider::valueChanged, this, [&tools](int value) { tools.setToolWidth(value); });
    connect(opacity_, &QSlider::valueChanged, this,
            [&tools](int value) { tools.setToolOpacity(value / 100.0); });
    connect(widthNumber_, &QDoubleSpinBox::valueChanged, &tools, &DrawingTools::setToolWidth);
    connect(opacityNumber_, &QDoubleSpinBox::valueChanged, &tools, &DrawingTools::setToolOpacity);
    connect(&tools, &DrawingTools::modeChanged, this, &DrawingPanel::showMode);
    connect(&visibility, &DrawingVisibility::changed, background, [background, &visibility] {
        const int at = background->findText(visibility.drawingBackground());
        background->setCurrentIndex(std::max(0, at));
    });
    showMode();
}

QToolButton* DrawingPanel::addTool(QHBoxLayout& row, const QString& title, const QString& icon,
                                   const QString& hint) {
    auto* button = new QToolButton(this);
    button->setObjectName(title);
    button->setAutoRaise(true);
    button->setCheckable(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setIcon(theme::icon(icon));
    button->setIconSize({24, 24});
    button->setFixedSize(36, 36);
    button->setToolTip(plain::toolTip(hint));
    button->setAccessibleName(title);
    connect(button, &QToolButton::clicked, this, [this, title] {
        controller_.drawingTools().chooseInteractiveTool({title});
        showMode(); // whatever the button made of itself
    });
    row.addWidget(button);
    return button;
}

QToolButton* DrawingPanel::tool(const QString& title) const {
    return title == QLatin1String("Draw") ? draw_ : title == QLatin1String("Erase") ? erase_ : scroll_;
}

QLayout* DrawingPanel::colours() {
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    well_ = new QToolButton(this);
    well_->setObjectName(QStringLiteral("colourWell"));
    well_->setFocusPolicy(Qt::NoFocus);
    well_->setAutoRaise(true);
    well_->setIconSize({24, 24});
    well_->setFixedSize(36, 32);
    well_->setToolTip(tr("Colour of the brush…"));
    well_->setAccessibleName(tr("Colour of the brush"));
    connect(well_, &QToolButton::clicked, this, &DrawingPanel::chooseColour);
    row->addWidget(well_);
    row->addSpacing(4);
    const std::pair<QString, QColor> swatches[] = {
        {tr("Yellow"), QColor(255, 230, 0)},  {tr("Red"), QColor(235, 50, 40)},
        {tr("Green"), QColor(60, 200, 80)},   {tr("Blue"), QColor(60, 130, 255)},
        {tr("White"), QColor(255, 255, 255)}, {tr("Black"), QColor(0, 0, 0)}};
    for (const auto& [name, colour] : swatches) {
        auto* button = new QToolButton(this);
        button->setFocusPolicy(Qt::NoFocus);
        button->setAutoRaise(true);
        button->setIcon(swatch(colour, 20)); // a pen hits it
        button->setIconSize({20, 20});
        button->setFixedSize(28, 28);
        button->setToolTip(plain::toolTip(name));
        button->setAccessibleName(name);
        connect(button, &QToolButton::clicked, this,
                [this, chosen = colour] { controller_.drawingTools().setBrushColour(chosen); });
        row->addWidget(button);
    }
    row->addStretch(1);
    return row;
}

void DrawingPanel::chooseColour() {
    if (!colourDialog_) {
        colourDialog_ = new QColorDialog(this);
        colourDialog_->setWindowTitle(tr("Colour of the Brush"));
        colourDialog_->setOption(QColorDialog::NoButtons);
        connect(colourDialog_, &QColorDialog::currentColorChanged, &controller_.drawingTools(),
                &DrawingTools::setBrushColour);
    }
    const QSignalBlocker silence(colourDialog_);
    colourDialog_->setCurrentColor(controller_.drawingTools().brushColour());
    colourDialog_->show();
    colourDialog_->raise();
}

void DrawingPanel::closeColourDialog() {
    if (colourDialog_) colourDialog_->hide();
}

void DrawingPanel::showMode() {
    const DrawingTools& tools = controller_.drawingTools();
    draw_->setChecked(tools.brushToolButton());
    erase_->setChecked(tools.eraserToolButton());
    scroll_->setChecked(tools.scrollToolButton());
    well_->setIcon(swatch(tools.brushColour(), 24));
    well_->setAccessibleDescription(tools.brushColour().name());
    const QSignalBlocker widthSilence(width_), opacitySilence(opacity_), widthNumberSilence(widthNumber_),
        opacityNumberSilence(opacityNumber_);
    width_->setValue(int(std::lround(tools.currentWidth())));
    widthNumber_->setValue(tools.currentWidth());
    opacity_->setValue(int(std::lround(tools.currentOpacity() * 100)));
    opacityNumber_->setValue(tools.currentOpacity());
}

} // namespace daylark
