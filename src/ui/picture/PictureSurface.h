#pragma once

#include "media/decode/VideoFrame.h"
#include "picture/PicturePlanes.h"
#include "picture/PictureRenderer.h"
#include "picture/scene/PictureLayer.h"

#include <QOpenGLWidget>

#include <functional>
#include <memory>
#include <vector>

namespace daylark {

class GlPictureRenderer;

/// What the picture view shows in OpenGL mode: covers it, takes no events, shows one picture. Owned by the
/// view; interface thread. Announces once that it cannot draw.
class PictureSurface : public QOpenGLWidget {
    Q_OBJECT
public:
    struct Shown {
        VideoFrame frame;
        PictureRequest request; ///< `visible` within the picture, or an empty size for no picture
        QPoint at;              ///< where its upper left pixel lies in the area, device pixels
    };
    using Layers = std::function<std::vector<PictureLayer>()>;
    /// `layers` tells, at every painting, what lies over the picture, from below to above.
    PictureSurface(QWidget* view, Layers layers);
    ~PictureSurface() override;

    void showPicture(Shown shown);
    [[nodiscard]] QString deviceName() const { return deviceName_; }

Q_SIGNALS:
    void ready(); ///< the driver's name is known
    void failed(const QString& reason);
    void drawn(); ///< the picture is on its way to the screen

protected:
    void initializeGL() override;
    void paintGL() override;

private:
    void release();
    void fail(const QString& reason);

    Layers layers_;
    std::unique_ptr<GlPictureRenderer> renderer_;
    Shown shown_;
    PicturePlanes planes_; ///< of the frame; null: to be made
    QString deviceName_;
    bool failed_ = false;
};

} // namespace daylark
