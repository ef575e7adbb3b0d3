#include "ui/common/Binding.h"

#include "platform/UserDefaults.h"
#include "ui/common/Theme.h"
#include "viewer/display/DisplayGeometry.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

#include <cmath>

namespace daylark {

namespace {

/// Calls `show` now and whenever the preference changes.
template<class Control, class Show>
void follow(Control* control, UserDefaults& defaults, const QString& key, Show show) {
    const auto update = [control, show] {
        const QSignalBlocker blocker(control);
        show();
    };
    update();
    QObject::connect(&defaults, &UserDefaults::changed, control, [key, update](const QString& changed) {
        if (changed == key) update();
    });
}

bool sameChoice(const QVariant& stored, const QVariant& choice) {
    bool storedIsNumber = false, choiceIsNumber = false;
    const double a = stored.toString().toDouble(&storedIsNumber);
    const double b = choice.toString().toDouble(&choiceIsNumber);
    if (storedIsNumber && choiceIsNumber) return std::abs(a - b) < 1e-6;
    return stored.toString() == choice.toString();
}

} // namespace

namespace binding {

void toBool(QCheckBox* box, UserDefaults& defaults, const QString& key) {
    box->setObjectName(key);
    follow(box, defaults, key, [box, &defaults, key] { box->setChecked(defaults.boolForKey(key)); });
    QObject::connect(box, &QCheckBox::toggled, box, [&defaults, key](bool on) { defaults.set(key, on); });
}

void toInteger(QSpinBox* box, UserDefaults& defaults, const QString& key) {
    box->setObjectName(key);
    follow(box, defaults, key, [box, &defaults, key] { box->setValue(defaults.integerForKey(key)); });
    QObject::connect(box, &QSpinBox::valueChanged, box,
                     [&defaults, key](int value) { defaults.set(key, value); });
}

void toNumber(QDoubleSpinBox* box, UserDefaults& defaults, const QString& key) {
    box->setObjectName(key);
    follow(box, defaults, key, [box, &defaults, key] { box->setValue(defaults.doubleForKey(key)); });
    QObject::connect(box, &QDoubleSpinBox::valueChanged, box,
                     [&defaults, key](double value) { defaults.set(key, value); });
}

void toText(QLineEdit* field, UserDefaults& defaults, const QString& key) {
    field->setObjectName(key);
    follow(field, defaults, key, [field, &defaults, key] {
        const QString text = defaults.stringForKey(key);
        if (field->text() != text) // leaves the cursor where the person types
            field->setText(text);
    });
    QObject::connect(field, &QLineEdit::textEdited, field,
                     [&defaults, key](const QString& text) { defaults.set(key, text); });
}

void toFraction(QSlider* slider, UserDefaults& defaults, const QString& key, double most) {
    slider->setObjectName(key);
    follow(slider, defaults, key, [slider, &defaults, key, most] {
        slider->setValue(int(std::lround(defaults.doubleForKey(key) / most * slider->maximum())));
    });
    QObject::connect(slider, &QSlider::valueChanged, slider, [slider, &defaults, key, most](int value) {
        defaults.set(key, double(value) / slider->maximum() * most);
    });
}

void toChoice(QComboBox* box, UserDefaults& defaults, const QString& key,
              const std::vector<Choice>& choices) {
    box->setObjectName(key);
    for (const Choice& choice : choices)
        box->addItem(choice.first, choice.second);
    follow(box, defaults, key, [box, &defaults, key] {
        const QVariant stored = defaults.value(key);
        int shown = -1;
        for (int at = 0; at < box->count() && shown < 0; ++at)
            if (sameChoice(stored, box->itemData(at))) shown = at;
        box->setCurrentIndex(shown);
    });
    QObject::connect(box, &QComboBox::currentIndexChanged, box, [box, &defaults, key](int at) {
        if (at >= 0) defaults.set(key, box->itemData(at));
    });
}

std::vector<Choice> maskRatioChoices() {
    std::vector<Choice> choices;
    for (const MaskRatio& mask : maskRatios)
        choices.emplace_back(QLatin1String(mask.title), mask.ratio);
    return choices;
}

} // namespace binding

ColourButton::ColourButton(UserDefaults& defaults, const QString& key, QWidget* parent)
    : QWidget(parent)
    , defaults_(defaults)
    , key_(key) {
    setObjectName(key);
    setFixedSize(48, 24);
    setFocusPolicy(Qt::StrongFocus);
    connect(&defaults_, &UserDefaults::changed, this, [this](const QString& changed) {
        if (changed == key_) update();
    });
}

QColor ColourButton::colour() const {
    return defaults_.colourForKey(key_);
}

void ColourButton::setColour(const QColor& colour) {
    if (colour.isValid()) defaults_.set(key_, colour);
}

void ColourButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFocus() ? theme::focus : theme::line);
    painter.setBrush(colour());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
}

void ColourButton::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) choose();
}

void ColourButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        choose();
    else
        QWidget::keyPressEvent(event);
}

void ColourButton::choose() {
    setColour(QColorDialog::getColor(colour(), this, accessibleName(), QColorDialog::DontUseNativeDialog));
}

} // namespace daylark
