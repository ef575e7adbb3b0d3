#pragma once

#include <QWidget>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace daylark {

class MoviePlayerController;
class ViewerColour;

/// The colour management panel: from which space the movie on screen is read, by which display, view and look it is shown,
/// exposure and gamma for looking, which configuration all that is from, and the production's number of the movie's first
/// frame. Renders the viewer's state and sends what is chosen. Interface thread.
class ColourPanel : public QWidget {
    Q_OBJECT
public:
    explicit ColourPanel(MoviePlayerController& controller, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QComboBox* addChoice(const QString& name, const QString& label, void (ViewerColour::*choose)(const QString&));
    QDoubleSpinBox* addNumber(const QString& name, const QString& label, double least, double most,
                              void (ViewerColour::*choose)(double));
    void addConfiguration();
    void addFirstFrame();
    void addRow(const QString& label, QWidget* control);
    void refresh();
    void fillSpaces();
    void showConfiguration();
    void showFirstFrame();
    void chooseConfiguration(const QString& chosen);

    MoviePlayerController& controller_;
    ViewerColour& colour_;
    QGridLayout* grid_;
    QComboBox *space_, *display_, *view_, *look_, *configuration_ = nullptr, *usualFirstFrame_ = nullptr;
    QDoubleSpinBox *exposure_, *gamma_;
    QPushButton* reset_ = nullptr;
    QCheckBox* ofSession_ = nullptr;
    QLabel* problem_ = nullptr;
    QLineEdit* firstFrame_ = nullptr;
    QSpinBox* otherFirstFrame_ = nullptr;
};

} // namespace daylark
