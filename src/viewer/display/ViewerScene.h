#pragma once

#include "picture/scene/Scene.h"
#include "preferences/PreferenceWords.h"

#include <QObject>

namespace daylark {

class CurrentMovie;
class DrawingVisibility;
class FrameDrawings;
class Player;
class ViewerColour;
class ViewerGeometry;
class ViewerGrade;

[[nodiscard]] SceneBackground sceneBackgroundOf(DrawingBackground background);

/// The one scene that the viewer shows, put together from its parts and kept up with them. The window draws
/// it, in full screen too, and so do snapshots. The drawing in it is the canvas that is drawn on. Owned by
/// the viewer's controller; interface thread.
class ViewerScene : public QObject {
    Q_OBJECT
public:
    struct Parts {
        CurrentMovie& current;
        Player& player;
        ViewerGeometry& geometry;
        ViewerGrade& grade;
        FrameDrawings& drawings;
        DrawingVisibility& visibility;
        ViewerColour& colour;
    };
    explicit ViewerScene(const Parts& parts, QObject* parent = nullptr);

    [[nodiscard]] const Scene& scene() const { return scene_; }
    void clear();        ///< no picture; else the last one stays until another movie's comes
    void refreshPlace(); ///< the movie's size may be known better
    void setReadOuts(const ReadOuts& readOuts);

Q_SIGNALS:
    void changed(); ///< anything but the strokes
    /// After `changed`: the stroke in progress grew, or (`replaced`) the strokes are others.
    void strokesChanged(bool replaced);

private:
    void showDrawing();

    Parts parts_;
    Scene scene_;
};

} // namespace daylark
