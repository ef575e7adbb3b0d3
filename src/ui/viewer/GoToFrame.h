#pragma once

#include <QFrame>

class QLabel;
class QLineEdit;

namespace daylark {

class MoviePlayerController;
class PictureView;

/// A field at the foot of the picture that asks where to go: a number, a timecode, so many frames on or back. Return goes
/// there and closes it, Escape and a click elsewhere close it; what is no place in the movie is said to be none and stays to
/// be mended. Lies in the picture view, which owns it; interface thread.
class GoToFrame : public QFrame {
    Q_OBJECT
public:
    GoToFrame(MoviePlayerController& controller, PictureView& picture);

    void ask();
    [[nodiscard]] QLineEdit* field() const { return field_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void go();
    void place();
    void showHint();

    MoviePlayerController& controller_;
    PictureView& picture_;
    QLineEdit* field_;
    QLabel* hint_;
};

} // namespace daylark
