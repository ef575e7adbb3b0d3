#pragma once

#include "picture/PicturePlanes.h"
#include "picture/PictureRenderer.h"
#include "media/decode/VideoFrame.h"
#include "ui/picture/PictureLayer.h"

#include <QOpenGLWidget>

#include <functional>
#include <memory>
#include <vector>

namespace daylark {

class GlPictureRenderer;

/// What the picture view shows in OpenGL mode: covers it, takes no events, shows one scene. Owned by the
/// view; interface thread. Announces once that it cannot draw.
class PictureSurface : public QOpenGLWidget {
    Q_OBJECT
public:
    struct Scene {
        VideoFrame frame;
        PictureRequest request; ///< `visible` within the picture, or an empty size for no picture
        QPoint at;              ///< where its upper left pixel lies in the area, device pixels
    };
    using Layers = std::function<std::vector<PictureLayer>()>;
    /// `layers` tells, at every painting, what lies over the picture, from below to above.
    PictureSurface(QWidget* view, Layers layers);
    ~PictureSurface() override;

    void setScene(Scene scene);
    [[nodiscard]] QString deviceName() const { return deviceName_; }

Q_SIGNALS:
    void ready(); ///< the driver's name is known
    void failed(const QString& reason);
    void drawn(); ///< the scene is on its way to the screen

protected:
    void initializeGL() override;
    void paintGL() override;

private:
    void release();
    void fail(const QString& reason);

    Layers layers_;
    std::unique_ptr<GlPictureRenderer> renderer_;
    Scene scene_;
    PicturePlanes planes_; ///< of the scene's frame; null: to be made
    QString deviceName_;
    bool failed_ = false;
};

} // namespace daylark
