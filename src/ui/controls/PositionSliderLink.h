#pragma once

#include <QObject>

namespace daylark {

class MoviePlayerController;
class PositionSlider;

/// Between a position slider and the viewer's controller: the slider shows the movie, where it stands, its
/// bookmarks and what is ready, and seeks where it is pulled. The viewer has two sliders, both the same.
/// Owned by the slider; interface thread.
class PositionSliderLink : public QObject {
    Q_OBJECT
public:
    PositionSliderLink(MoviePlayerController& controller, PositionSlider& slider);

private:
    void showPosition();
    void showBookmarks();

    MoviePlayerController& controller_;
    PositionSlider& slider_;
};

} // namespace daylark
