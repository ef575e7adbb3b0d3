#pragma once

#include <QWidget>

#include <map>

class QDoubleSpinBox;
class QGridLayout;
class QSlider;
class QToolButton;

namespace daylark {

class Commands;
class MoviePlayerController;
class ViewerGrade;

/// The grading panel: a slider, a number and a reset a control, and what concerns the whole grade below. It
/// renders the grade of the movie on screen and sends changes at once, so that the picture follows the hand.
/// Numbers may go beyond what the sliders reach; a double click on a control's name resets it. Interface
/// thread.
class GradingPanel : public QWidget {
    Q_OBJECT
public:
    /// `commands` has "viewer.grade…".
    GradingPanel(MoviePlayerController& controller, const Commands& commands, QWidget* parent = nullptr);

    [[nodiscard]] QSlider* slider(int tag) const { return rows_.at(tag).slider; }
    [[nodiscard]] QDoubleSpinBox* number(int tag) const { return rows_.at(tag).number; }
    [[nodiscard]] QToolButton* reset(int tag) const { return rows_.at(tag).reset; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Row {
        QSlider* slider = nullptr;
        QDoubleSpinBox* number = nullptr;
        QToolButton* reset = nullptr;
    };
    void addRow(QGridLayout& grid, int tag, const QString& name, double least, double most);
    void showGrade();
    void giveKeyboardBack();

    MoviePlayerController& controller_;
    ViewerGrade& grade_;
    std::map<int, Row> rows_;
};

} // namespace daylark
