#pragma once

#include <QWidget>


namespace daylark {

class PlainLabel;
class Commands;
class MoviePlayerController;
class PositionSlider;

/// The floating controls, for full screen: a second position slider with its range bar, transport buttons,
/// read-outs and volume. Fades in when it is shown, and answers to the same commands as the strip under the
/// picture. Interface thread.
class ControlsPanel : public QWidget {
    Q_OBJECT
public:
    ControlsPanel(MoviePlayerController& controller, Commands& commands, QWidget* parent = nullptr);

    [[nodiscard]] PositionSlider* slider() const { return slider_; }
    [[nodiscard]] QString counterText() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    PlainLabel* readOut(const QString& name, const QString& widest);
    void showTimes();

    MoviePlayerController& controller_;
    PositionSlider* slider_;
    PlainLabel *elapsed_, *counter_, *timecode_;
};

} // namespace daylark
