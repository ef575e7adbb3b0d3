#pragma once

#include "preferences/Preference.h"

#include <QCoreApplication>
#include <QColor>
#include <QString>
#include <QVariant>
#include <QWidget>

#include <utility>
#include <vector>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLineEdit;
class QSlider;
class QSpinBox;

namespace daylark {

/// Ties a control to a preference, both ways and at once: the control shows what the preference is now and
/// whenever it changes, and stores what the person sets. Lasts as long as the control. Interface thread.
namespace binding {

void toBool(QCheckBox* box, Preference<bool>& preference);
/// The box says what is there, the preference what is not.
void toOpposite(QCheckBox* box, Preference<bool>& preference);
void toInteger(QSpinBox* box, Preference<int>& preference);
void toNumber(QDoubleSpinBox* box, Preference<double>& preference);
void toText(QLineEdit* field, Preference<QString>& preference);
/// A slider of whole steps over 0 to 1.
void toFraction(QSlider* slider, Preference<float>& preference);

using Choice = std::pair<QString, QVariant>; ///< title and stored value
/// A value that is none of the choices shows as no choice and stays until one is picked. Numbers are compared
/// as numbers.
void toChoice(QComboBox* box, PreferenceItem& preference, const std::vector<Choice>& choices);

[[nodiscard]] std::vector<Choice> maskRatioChoices();
/// Choices that show the very words by which they are stored.
template<PreferenceEnum E>
[[nodiscard]] std::vector<Choice> wordChoices() {
    std::vector<Choice> choices;
    for (const QString& word : allWords<E>())
        choices.emplace_back(QCoreApplication::translate("Words", word.toUtf8().constData()), word);
    return choices;
}

} // namespace binding

/// A button that shows a colour and opens the colour chooser. Bound to a preference as above. Interface
/// thread.
class ColourButton : public QWidget {
    Q_OBJECT
public:
    explicit ColourButton(Preference<QColor>& preference, QWidget* parent = nullptr);
    [[nodiscard]] QColor colour() const;
    void setColour(const QColor& colour); ///< stores it

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void choose();

    Preference<QColor>& preference_;
};

} // namespace daylark
