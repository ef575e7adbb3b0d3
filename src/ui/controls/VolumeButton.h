#pragma once

#include <QToolButton>

class QFrame;
class QGraphicsOpacityEffect;
class QPropertyAnimation;
class QSlider;

namespace daylark {

class Transport;

/// The volume: a button whose icon tells how loud it is, and a slider that pops up over it, inside the
/// window, so that the keys of the viewer work on while it is open. Every transport action, every key but the
/// slider's own, a second press and the loss of the focus fade it out. Owned by the controls strip; interface
/// thread.
class VolumeButton : public QToolButton {
    Q_OBJECT
public:
    explicit VolumeButton(Transport& transport, QWidget* parent = nullptr);
    /// The icon's name at a volume; empty means "leave it as it is".
    [[nodiscard]] static QString iconName(float volume);
    [[nodiscard]] QSlider* slider() const { return slider_; }
    void hidePopUp();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void togglePopUp();
    void placePopUp();
    void displayVolume(float volume);

    Transport& transport_;
    QFrame* popUp_ = nullptr; ///< a child of the window, made when first wanted
    QSlider* slider_;
    QGraphicsOpacityEffect* opacity_ = nullptr;
    QPropertyAnimation* fading_ = nullptr;
};

} // namespace daylark
