#pragma once

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

class UserDefaults;

/// Ties a control to a preference, both ways and at once: the control shows what the preference is now and
/// whenever it changes, and stores what the person sets. Lasts as long as the control. Interface thread.
namespace binding {

void toBool(QCheckBox* box, UserDefaults& defaults, const QString& key);
void toInteger(QSpinBox* box, UserDefaults& defaults, const QString& key);
void toNumber(QDoubleSpinBox* box, UserDefaults& defaults, const QString& key);
void toText(QLineEdit* field, UserDefaults& defaults, const QString& key);
/// A slider of whole steps over 0 to `most` of the preference.
void toFraction(QSlider* slider, UserDefaults& defaults, const QString& key, double most = 1.0);

using Choice = std::pair<QString, QVariant>; ///< title and stored value
/// A value that is none of the choices shows as no choice and stays until one is picked. Numbers are compared
/// as numbers.
void toChoice(QComboBox* box, UserDefaults& defaults, const QString& key, const std::vector<Choice>& choices);

[[nodiscard]] std::vector<Choice> maskRatioChoices(); ///< for the preference "movieMaskRatio"

} // namespace binding

/// A button that shows a colour and opens the colour chooser. Bound to a preference as above. Interface
/// thread.
class ColourButton : public QWidget {
    Q_OBJECT
public:
    ColourButton(UserDefaults& defaults, const QString& key, QWidget* parent = nullptr);
    [[nodiscard]] QColor colour() const;
    void setColour(const QColor& colour); ///< stores it

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void choose();

    UserDefaults& defaults_;
    QString key_;
};

} // namespace daylark
