#include "ui/common/Binding.h"

#include "picture/scene/DisplayGeometry.h"
#include "ui/common/Theme.h"

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
void follow(Control* control, PreferenceItem& preference, Show show) {
    control->setObjectName(preference.key());
    const auto update = [control, show] {
        const QSignalBlocker blocker(control);
        show();
    };
    update();
    QObject::connect(&preference, &PreferenceItem::changed, control, update);
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

void toBool(QCheckBox* box, Preference<bool>& preference) {
    follow(box, preference, [box, &preference] { box->setChecked(preference()); });
    QObject::connect(box, &QCheckBox::toggled, box, [&preference](bool on) { preference.set(on); });
}

void toOpposite(QCheckBox* box, Preference<bool>& preference) {
    follow(box, preference, [box, &preference] { box->setChecked(!preference()); });
    QObject::connect(box, &QCheckBox::toggled, box, [&preference](bool on) { preference.set(!on); });
}

void toInteger(QSpinBox* box, Preference<int>& preference) {
    follow(box, preference, [box, &preference] { box->setValue(preference()); });
    QObject::connect(box, &QSpinBox::valueChanged, box, [&preference](int value) { preference.set(value); });
}

void toNumber(QDoubleSpinBox* box, Preference<double>& preference) {
    follow(box, preference, [box, &preference] { box->setValue(preference()); });
    QObject::connect(box, &QDoubleSpinBox::valueChanged, box,
                     [&preference](double value) { preference.set(value); });
}

void toText(QLineEdit* field, Preference<QString>& preference) {
    follow(field, preference, [field, &preference] {
        const QString text = preference();
        if (field->text() != text) // leaves the cursor where the person types
            field->setText(text);
    });
    QObject::connect(field, &QLineEdit::textEdited, field,
                     [&preference](const QString& text) { preference.set(text); });
}

void toFraction(QSlider* slider, Preference<float>& preference) {
    follow(slider, preference, [slider, &preference] {
        slider->setValue(int(std::lround(double(preference()) * slider->maximum())));
    });
    QObject::connect(slider, &QSlider::valueChanged, slider, [slider, &preference](int value) {
        preference.set(float(double(value) / slider->maximum()));
    });
}

void toChoice(QComboBox* box, PreferenceItem& preference, const std::vector<Choice>& choices) {
    for (const Choice& choice : choices)
        box->addItem(choice.first, choice.second);
    follow(box, preference, [box, &preference] {
        const QVariant stored = preference.value();
        int shown = -1;
        for (int at = 0; at < box->count() && shown < 0; ++at)
            if (sameChoice(stored, box->itemData(at))) shown = at;
        box->setCurrentIndex(shown);
    });
    QObject::connect(box, &QComboBox::currentIndexChanged, box, [box, &preference](int at) {
        if (at >= 0) preference.store(box->itemData(at));
    });
}

std::vector<Choice> maskRatioChoices() {
    std::vector<Choice> choices;
    for (const MaskRatio& mask : maskRatios)
        choices.emplace_back(QLatin1String(mask.title), mask.ratio);
    return choices;
}

} // namespace binding

ColourButton::ColourButton(Preference<QColor>& preference, QWidget* parent)
    : QWidget(parent)
    , preference_(preference) {
    setObjectName(preference.key());
    setFixedSize(48, 24);
    setFocusPolicy(Qt::StrongFocus);
    connect(&preference_, &PreferenceItem::changed, this, qOverload<>(&QWidget::update));
}

QColor ColourButton::colour() const {
    return preference_();
}

void ColourButton::setColour(const QColor& colour) {
    if (colour.isValid()) preference_.set(colour);
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
