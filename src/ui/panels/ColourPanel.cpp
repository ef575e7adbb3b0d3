#include "ui/panels/ColourPanel.h"

#include "platform/Panels.h"
#include "preferences/Preferences.h"
#include "ui/common/Binding.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"
#include "viewer/MoviePlayerController.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>

namespace daylark {

namespace {

constexpr int colourChoiceWidth = 216;
const QString chooseFile = QStringLiteral("\n"); // no path, and no name of a configuration

/// Titles with the values that they stand for; one that is not among them is shown all the same.
void fillChoices(QComboBox* box, const QStringList& values, const QString& current) {
    const QSignalBlocker silence(box);
    box->clear();
    for (const QString& value : values)
        box->addItem(plain::line(value), value);
    if (!current.isEmpty() && box->findData(current) < 0) box->addItem(plain::line(current), current);
    box->setCurrentIndex(box->findData(current));
}

} // namespace

ColourPanel::ColourPanel(MoviePlayerController& controller, QWidget* parent)
    : QWidget(parent)
    , controller_(controller)
    , colour_(controller.colour())
    , grid_(new QGridLayout) {
    setObjectName(QStringLiteral("colourPanel"));
    grid_->setHorizontalSpacing(12);
    grid_->setVerticalSpacing(4);
    grid_->setColumnStretch(0, 1);
    space_ = addChoice(QStringLiteral("inputSpace"), tr("Input space"), &ViewerColour::setInputSpace);
    display_ = addChoice(QStringLiteral("display"), tr("Display"), &ViewerColour::setDisplay);
    view_ = addChoice(QStringLiteral("view"), tr("View"), &ViewerColour::setView);
    look_ = addChoice(QStringLiteral("look"), tr("Look"), &ViewerColour::setLook);
    exposure_ = addNumber(QStringLiteral("lookingExposure"), tr("Exposure for looking, stops"), -20, 20,
                          &ViewerColour::setExposure);
    exposure_->setDecimals(1);
    exposure_->setSingleStep(0.5);
    gamma_ = addNumber(QStringLiteral("lookingGamma"), tr("Gamma for looking"), 0.1, 10, &ViewerColour::setGamma);
    gamma_->setSingleStep(0.1);
    reset_ = new QPushButton(tr("Look at It as It Is"), this);
    reset_->setFocusPolicy(Qt::NoFocus);
    reset_->setFixedWidth(colourChoiceWidth);
    connect(reset_, &QPushButton::clicked, &colour_, &ViewerColour::resetLooking);
    addRow({}, reset_);
    addConfiguration();
    addFirstFrame();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 8, 12, 12);
    layout->addLayout(grid_);
    layout->addStretch(1);
    connect(&colour_, &ViewerColour::changed, this, &ColourPanel::refresh);
    connect(&controller_, &MoviePlayerController::movieShown, this, &ColourPanel::refresh);
    connect(&controller_.time(), &TimeDisplay::changed, this, [this] {
        if (isVisible() && !firstFrame_->hasFocus()) refresh();
    });
    refresh();
}

void ColourPanel::addRow(const QString& label, QWidget* control) {
    const int row = grid_->rowCount();
    if (!label.isEmpty()) grid_->addWidget(new PlainLabel(label, this), row, 0);
    grid_->addWidget(control, row, 1, Qt::AlignRight);
}

QComboBox* ColourPanel::addChoice(const QString& name, const QString& label,
                                  void (ViewerColour::*choose)(const QString&)) {
    auto* box = new QComboBox(this);
    box->setObjectName(name);
    box->setAccessibleName(label);
    box->setFixedWidth(colourChoiceWidth);
    box->setFocusPolicy(Qt::NoFocus); // keys stay the viewer's
    connect(box, &QComboBox::activated, this,
            [this, box, choose](int index) { (colour_.*choose)(box->itemData(index).toString()); });
    addRow(label, box);
    return box;
}

QDoubleSpinBox* ColourPanel::addNumber(const QString& name, const QString& label, double least, double most,
                                       void (ViewerColour::*choose)(double)) {
    auto* number = new QDoubleSpinBox(this);
    number->setRange(least, most); // before anybody listens: nobody has chosen anything yet
    number->setObjectName(name);
    number->setAccessibleName(label);
    number->setFixedWidth(88);
    number->setFocusPolicy(Qt::ClickFocus);
    number->setKeyboardTracking(false);
    connect(number, &QDoubleSpinBox::valueChanged, &colour_, choose);
    addRow(label, number);
    return number;
}

void ColourPanel::addConfiguration() {
    configuration_ = new QComboBox(this);
    configuration_->setObjectName(QStringLiteral("configuration"));
    configuration_->setAccessibleName(tr("Configuration"));
    configuration_->setFixedWidth(colourChoiceWidth);
    configuration_->setFocusPolicy(Qt::NoFocus);
    connect(configuration_, &QComboBox::activated, this,
            [this](int index) { chooseConfiguration(configuration_->itemData(index).toString()); });
    addRow(tr("Configuration"), configuration_);
    ofSession_ = new QCheckBox(tr("This session only"), this);
    ofSession_->setObjectName(QStringLiteral("configurationOfSession"));
    ofSession_->setFocusPolicy(Qt::NoFocus);
    ofSession_->setFixedWidth(colourChoiceWidth);
    ofSession_->setToolTip(tr("Kept in the session: goes before the one chosen here, which goes before $OCIO"));
    connect(ofSession_, &QCheckBox::clicked, &colour_, &ViewerColour::setConfigurationOfSession);
    addRow({}, ofSession_);
    problem_ = new PlainLabel(QString(), this);
    problem_->setWordWrap(true);
    problem_->setStyleSheet(QStringLiteral("color: %1").arg(theme::warning.name()));
    grid_->addWidget(problem_, grid_->rowCount(), 0, 1, 2);
}

void ColourPanel::addFirstFrame() {
    firstFrame_ = new QLineEdit(this);
    firstFrame_->setObjectName(QStringLiteral("firstFrameNumber"));
    firstFrame_->setFixedWidth(88);
    firstFrame_->setAlignment(Qt::AlignRight);
    firstFrame_->setFocusPolicy(Qt::ClickFocus);
    firstFrame_->setAccessibleName(tr("Production number of the first frame"));
    firstFrame_->setToolTip(tr("Empty: by its pictures, else as below"));
    connect(firstFrame_, &QLineEdit::editingFinished, this, [this] {
        const auto movie = controller_.currentMovie();
        bool isNumber = false;
        const qint64 number = firstFrame_->text().trimmed().toLongLong(&isNumber);
        if (movie && (isNumber || firstFrame_->text().trimmed().isEmpty()) && firstFrame_->isModified())
            controller_.edits().setFirstFrameNumber(movie, isNumber ? std::optional(number) : std::nullopt);
        firstFrame_->setModified(false);
        refresh();
    });
    addRow(tr("First frame is production number"), firstFrame_);
    usualFirstFrame_ = new QComboBox(this);
    usualFirstFrame_->setObjectName(QStringLiteral("usualFirstFrame"));
    usualFirstFrame_->setAccessibleName(tr("Production number where nobody gave one"));
    usualFirstFrame_->setFixedWidth(colourChoiceWidth);
    usualFirstFrame_->setFocusPolicy(Qt::NoFocus);
    for (const auto& [title, value] : {std::pair(QStringLiteral("1"), FirstFrameNumber::one),
                                       std::pair(QStringLiteral("1001"), FirstFrameNumber::thousandAndOne),
                                       std::pair(tr("That of its timecode"), FirstFrameNumber::timecode),
                                       std::pair(tr("Another number"), FirstFrameNumber::other)})
        usualFirstFrame_->addItem(title, int(value));
    connect(usualFirstFrame_, &QComboBox::activated, this, [this](int index) {
        controller_.preferences().firstFrameNumber.set(FirstFrameNumber(usualFirstFrame_->itemData(index).toInt()));
    });
    addRow(tr("Where nobody gave one"), usualFirstFrame_);
    otherFirstFrame_ = new QSpinBox(this);
    otherFirstFrame_->setObjectName(QStringLiteral("otherFirstFrame"));
    otherFirstFrame_->setAccessibleName(tr("The other number"));
    otherFirstFrame_->setRange(-1'000'000, 100'000'000);
    otherFirstFrame_->setFixedWidth(112);
    otherFirstFrame_->setFocusPolicy(Qt::ClickFocus);
    otherFirstFrame_->setKeyboardTracking(false);
    binding::toInteger(otherFirstFrame_, controller_.preferences().otherFirstFrameNumber);
    addRow({}, otherFirstFrame_);
}

// It is read when somebody looks for what it has.
void ColourPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    colour_.readConfig();
    refresh();
}

void ColourPanel::fillSpaces() {
    const QSignalBlocker silence(space_);
    space_->clear();
    const QString byHand = colour_.inputSpaceByHand(), ofFile = byHand.isEmpty() ? colour_.inputSpace() : QString();
    space_->addItem(ofFile.isEmpty() ? tr("As the file says") : tr("As the file says: %1").arg(plain::line(ofFile)), QString());
    QString family;
    if (const auto& config = colour_.config())
        for (const ColourConfig::Space& space : config->spaces()) {
            if (space.family != family) space_->insertSeparator(space_->count());
            family = space.family;
            space_->addItem(plain::line(space.name), space.name);
        }
    if (!byHand.isEmpty() && space_->findData(byHand) < 0) space_->addItem(plain::line(byHand), byHand);
    space_->setCurrentIndex(byHand.isEmpty() ? 0 : space_->findData(byHand));
}

void ColourPanel::refresh() {
    const auto& config = colour_.config();
    const auto movie = controller_.currentMovie();
    const DisplayTransform transform = colour_.transform();
    const bool isManaged = colour_.isManaged() && config;
    fillSpaces();
    fillChoices(display_, config ? config->displays() : QStringList(), transform.display);
    fillChoices(view_, config ? config->views(transform.display) : QStringList(), transform.view);
    fillChoices(look_, config ? config->looks() : QStringList(), transform.look);
    const QSignalBlocker lookSilence(look_), exposureSilence(exposure_), gammaSilence(gamma_);
    look_->insertItem(0, tr("None"), QString());
    if (transform.look.isEmpty()) look_->setCurrentIndex(0);
    exposure_->setValue(transform.exposure);
    gamma_->setValue(transform.gamma);
    space_->setEnabled(movie && config);
    for (QWidget* control : std::initializer_list<QWidget*>{display_, view_, look_})
        control->setEnabled(bool(config));
    for (QWidget* control : std::initializer_list<QWidget*>{exposure_, gamma_, reset_})
        control->setEnabled(isManaged);
    showConfiguration();
    showFirstFrame();
}

/// One that cannot be used is named all the same.
void ColourPanel::showConfiguration() {
    const QSignalBlocker silence(configuration_);
    const QString chosen = colour_.configuration(), environment = qEnvironmentVariable("OCIO");
    configuration_->clear();
    const QString named = plain::line(QFileInfo(environment).fileName());
    const QString usual = named.isEmpty() ? tr("The usual one: Daylark's own") : tr("The usual one: $OCIO, %1").arg(named);
    configuration_->addItem(usual, QString());
    configuration_->addItem(tr("Daylark's own"), ColourConfig::ownName);
    if (!chosen.isEmpty() && chosen != ColourConfig::ownName)
        configuration_->addItem(plain::line(QFileInfo(chosen).fileName()), chosen);
    configuration_->insertSeparator(configuration_->count());
    configuration_->addItem(tr("Choose…"), chooseFile);
    configuration_->setCurrentIndex(std::max(0, configuration_->findData(chosen)));
    configuration_->setToolTip(plain::toolTip(chosen.isEmpty() ? environment : chosen));
    ofSession_->setChecked(colour_.configurationIsOfSession());
    problem_->setText(colour_.problem());
    problem_->setMinimumHeight(problem_->text().isEmpty() ? 0 : problem_->heightForWidth(2 * colourChoiceWidth));
    problem_->setVisible(!colour_.problem().isEmpty());
}

void ColourPanel::showFirstFrame() {
    const auto movie = controller_.currentMovie();
    const FirstFrameNumber usual = controller_.preferences().firstFrameNumber();
    firstFrame_->setEnabled(bool(movie));
    usualFirstFrame_->setCurrentIndex(usualFirstFrame_->findData(int(usual)));
    otherFirstFrame_->setVisible(usual == FirstFrameNumber::other);
    if (firstFrame_->isModified()) return;
    const auto byHand = movie ? movie->firstFrameNumber : std::nullopt;
    firstFrame_->setText(byHand ? QString::number(numberToInt64(*byHand)) : QString());
    firstFrame_->setPlaceholderText(QString::number(controller_.time().frameNumbers().first));
}

void ColourPanel::chooseConfiguration(const QString& chosen) {
    if (chosen != chooseFile) return colour_.chooseConfig(chosen);
    showConfiguration(); // what is in force, until another one is chosen
    OpenPanel panel;
    panel.title = tr("Colour Configuration");
    panel.prompt = tr("Use");
    panel.allowedTypes = {QStringLiteral("ocio")};
    panel.typesTitle = tr("Colour configurations");
    const QStringList files = controller_.panelsOfDesktop().runOpen(panel);
    if (!files.isEmpty()) colour_.chooseConfig(files.front());
}

} // namespace daylark
