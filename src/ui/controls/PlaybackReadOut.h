#pragma once

#include <QObject>
#include <QTimer>

namespace daylark {

class PictureView;
class Player;
class Preferences;

/// The small read-out of how playing goes: rate reached, frames dropped, cache fill, decoder and renderer.
/// Off unless the preference "displayPlaybackStatistics" is on; then it is looked up twice a second while the
/// picture is seen, and never otherwise. Owned by the viewer window, which outlives neither player nor
/// preferences; interface thread.
class PlaybackReadOut : public QObject {
    Q_OBJECT
public:
    PlaybackReadOut(const Player& player, PictureView& picture, const Preferences& preferences,
                    QObject* parent = nullptr);

    [[nodiscard]] QString text() const; ///< as it would read now

private:
    bool eventFilter(QObject* object, QEvent* event) override;
    void follow();
    void show();

    const Player& player_;
    PictureView& picture_;
    const Preferences& preferences_;
    QTimer timer_;
};

} // namespace daylark
