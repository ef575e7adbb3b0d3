#pragma once

#include <QWidget>

class QComboBox;
class QDoubleSpinBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

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
    void chooseConfiguration();

    MoviePlayerController& controller_;
    ViewerColour& colour_;
    QGridLayout* grid_;
    QComboBox *space_, *display_, *view_, *look_, *usualFirstFrame_ = nullptr;
    QDoubleSpinBox *exposure_, *gamma_;
    QPushButton* reset_ = nullptr;
    QLabel *configuration_ = nullptr, *problem_ = nullptr;
    QLineEdit* firstFrame_ = nullptr;
};

} // namespace daylark
