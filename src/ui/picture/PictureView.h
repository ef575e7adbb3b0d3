#pragma once

#include "base/jobs/WorkQueue.h"
#include "picture/scene/OverlayTiles.h"
#include "picture/scene/Scene.h"
#include "picture/scene/ScenePainter.h"
#include "preferences/PreferenceWords.h"

#include <QElapsedTimer>
#include <QImage>
#include <QTimer>
#include <QWidget>

#include <memory>

namespace daylark {

class PictureSurface;
class PictureWorker;
class ViewerScene;

/// The player area: shows a scene at the screen's own pixels; of the picture only what is seen is computed.
/// Two renderers give the same picture: software, which makes the pictures of a run on a worker (the newest
/// wins, an older one never follows a newer) and a standing one at once, exactly; and OpenGL, which is taken
/// up where a graphics device is at hand, while the window is hidden, and given up for software without a
/// word when it fails. Owned by the viewer window; interface thread.
class PictureView : public QWidget {
    Q_OBJECT
public:
    explicit PictureView(QWidget* parent = nullptr);
    ~PictureView() override;

    void follow(const ViewerScene& viewer); ///< shows it from now on; it outlives this
    /// Anything in it may have changed but the strokes on its canvas (`showStrokes`).
    void setScene(const Scene& scene);
    [[nodiscard]] const Scene& scene() const { return scene_; }
    /// The stroke in progress grew, or (`replaced`) the strokes are others than before.
    void showStrokes(bool replaced);
    /// Pictures follow one another: they may come a moment later than they were set; the one that stays is
    /// there when painted.
    void setMoving(bool moving);
    /// The small read-out of how playing goes, below the counter; empty: none.
    void setStatistics(const QString& lines);

    /// Where the whole picture lies now, in the area's points, on device pixels; empty without a picture.
    [[nodiscard]] QRectF pictureRect() const;

    [[nodiscard]] QSize devicePixels() const; ///< the area's size on the screen

    /// "Software" or "OpenGL: <what the driver calls itself>"; with the reason where OpenGL failed.
    [[nodiscard]] QString rendererName() const;
    /// Taken up while the window is hidden, so at the latest when it opens the next time; until then all is
    /// drawn in software.
    void chooseRenderer(RendererChoice wanted);
    /// Of the pictures set in the run under way or the last one, those that never came to the screen.
    [[nodiscard]] qint64 skippedPictures() const { return skipped_; }
    /// What was set last is what a painting shows; false while it is still being made.
    [[nodiscard]] bool isDrawn() const { return surface_ || shown_ == wanted_ || asked_ != wanted_; }

    [[nodiscard]] QSize sizeHint() const override { return {1280, 720}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {320, 180}; }

Q_SIGNALS:
    void rendererChanged();
    void pressed(); ///< a click that no tool took
    /// One event of the wheel, up above zero; `command`: with Ctrl held.
    void wheelTurned(double deltaY, bool command);
    void wheelZoomed(double deltaY, const QPointF& at); ///< with Shift held; where, from the upper left

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    enum class Make { away, atPainting };
    /// What is to be on screen differs: frame or colour, made away from the interface thread; or its place,
    /// which what lies above must not run ahead of.
    void pictureChanged(Make make);
    void readOutsChanged();
    void refreshOverlay(const QRect& part = {}); ///< `part`: only there, in the area's points
    void refresh();     ///< paints again
    void wantPicture(); ///< has the worker make the current one
    /// A display whose exact form takes long is shown by its quick one first; at rest the exact one follows.
    void refine();
    [[nodiscard]] bool isRefinable() const;
    void takePicture(quint64 serial, const QImage& image, QPoint at);
    void paintPicture(QPainter& painter);
    void paintSurface(); ///< what the OpenGL surface is to show
    void goOnWithStrokes(); ///< of a drawing too large to be painted at once
    void adoptRenderer();
    void giveUpOpenGl(const QString& reason);

    Scene scene_;
    ScenePainter painter_{ScenePainter::Pace::stepwise};
    QTimer strokesBehind_;         ///< runs while the painter is behind
    QElapsedTimer strokesSeen_;    ///< since what came of them was last put on screen
    QRectF strokesDue_;            ///< what came since
    bool moving_ = false;
    quint64 wanted_ = 1, shown_ = 0; ///< numbers of the picture that is to be, and that is, on screen
    quint64 frameWanted_ = 0;        ///< `wanted_` when the frame was set
    quint64 asked_ = 0;              ///< the worker was asked for this one last
    quint64 refined_ = 0;            ///< the one that was asked for in its exact form
    qint64 skipped_ = 0;
    QImage image_; ///< the visible part as it was made last
    QPoint imageAt_;
    std::unique_ptr<PictureWorker> worker_; ///< none before the first picture that follows another

    OverlayTiles overlay_; ///< what lies above the picture, as layers for OpenGL

    PictureSurface* surface_ = nullptr; ///< covers the area in OpenGL mode; none in software
    bool openGlWanted_ = false;
    QString openGlProblem_;
    quint64 choice_ = 0; ///< number of the last `chooseRenderer`
    WorkQueue probing_; ///< last: waits for its work
};

} // namespace daylark
