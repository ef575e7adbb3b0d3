#include "ui/picture/PictureView.h"

#include "picture/gl/GlPictureContext.h"
#include "ui/picture/PictureSurface.h"
#include "ui/picture/PictureWorker.h"
#include "viewer/display/ViewerScene.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>
#include <utility>

namespace daylark {

namespace {

constexpr int strokesShownEveryMs = 100; ///< while a large drawing is being painted

/// What draws where windows are shown; empty with a reason when there is no OpenGL 3.3.
struct OpenGlProbe {
    QString device, problem;
};

OpenGlProbe probeOpenGl(const QString& platform) {
    const auto where = platform.startsWith(QLatin1String("wayland")) ? GlPictureContext::Where::wayland
                       : platform == QLatin1String("xcb")            ? GlPictureContext::Where::x11
                                                                     : GlPictureContext::Where::device;
    const auto context = GlPictureContext::create(where);
    if (!context) return {{}, context.error().text};
    return {(*context)->deviceName(), {}};
}

} // namespace

PictureView::PictureView(QWidget* parent)
    : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Picture"));
    setObjectName(QStringLiteral("picture"));
    strokesBehind_.setSingleShot(true);
    connect(&strokesBehind_, &QTimer::timeout, this, &PictureView::goOnWithStrokes);
}

PictureView::~PictureView() {
    delete std::exchange(surface_, nullptr); // paints through this view's members
}

void PictureView::follow(const ViewerScene& viewer) {
    connect(&viewer, &ViewerScene::changed, this, [this, &viewer] { setScene(viewer.scene()); });
    connect(&viewer, &ViewerScene::strokesChanged, this, &PictureView::showStrokes);
    setScene(viewer.scene());
}

void PictureView::setScene(const Scene& scene) {
    const bool frame = scene.frame.data() != scene_.frame.data();
    const bool made = frame || !(scene.colour == scene_.colour) || scene.display != scene_.display;
    const bool place = !(scene.geometry == scene_.geometry) ||
                       scene.mirrorLeftRight != scene_.mirrorLeftRight ||
                       scene.mirrorUpsideDown != scene_.mirrorUpsideDown;
    const bool above = place || scene.background != scene_.background ||
                       scene.maskRatio != scene_.maskRatio || scene.maskOpacity != scene_.maskOpacity ||
                       scene.drawing != scene_.drawing || scene.movieSize != scene_.movieSize;
    if (frame && moving_ && frameWanted_ > shown_ && !scene_.frame.isNull()) ++skipped_;
    const QString statistics = scene_.readOuts.statistics;
    const ReadOuts before = scene_.readOuts;
    scene_ = scene;
    scene_.readOuts.statistics = statistics;
    if (above) refreshOverlay(); // what is drawn on the picture follows it
    if (place)
        pictureChanged(moving_ ? Make::away : Make::atPainting);
    else if (made)
        pictureChanged(Make::away);
    else if (scene_.readOuts != before)
        readOutsChanged();
    if (frame) frameWanted_ = wanted_;
}

void PictureView::showStrokes(bool replaced) {
    if (replaced) painter_.strokesChanged();
    const QRectF changed = painter_.updateStrokes(scene_, devicePixelRatioF());
    if (!changed.isEmpty()) refreshOverlay(changed.toAlignedRect());
    if (painter_.isBehind()) strokesBehind_.start();
}

void PictureView::goOnWithStrokes() {
    strokesDue_ |= painter_.updateStrokes(scene_, devicePixelRatioF());
    if (painter_.isBehind()) strokesBehind_.start();
    if (painter_.isBehind() && strokesSeen_.isValid() && !strokesSeen_.hasExpired(strokesShownEveryMs)) return;
    strokesSeen_.start();
    if (const QRectF due = std::exchange(strokesDue_, {}); !due.isEmpty()) refreshOverlay(due.toAlignedRect());
}

void PictureView::setMoving(bool moving) {
    if (moving == moving_) return;
    moving_ = moving;
    if (moving_) {
        skipped_ = 0;
        return;
    }
    if (worker_) worker_->forget();
    asked_ = 0;
    refresh();
    refine();
}

bool PictureView::isRefinable() const {
    return !moving_ && !surface_ && scene_.display && scene_.display->hasQuickForm();
}

void PictureView::refine() {
    if (!isRefinable() || refined_ == wanted_ || image_.isNull() || !isVisible()) return;
    refined_ = ++wanted_;
    wantPicture();
}

// While the picture that they belong to is being made, they wait for it.
void PictureView::readOutsChanged() {
    if (surface_ || shown_ == wanted_ || asked_ != wanted_) refresh();
}

void PictureView::setStatistics(const QString& lines) {
    if (lines == scene_.readOuts.statistics) return;
    scene_.readOuts.statistics = lines;
    refresh();
}

void PictureView::refreshOverlay(const QRect& part) {
    const QRect changed = part.isNull() ? rect() : part;
    if (part.isNull() && !isDrawn()) return; // comes with its picture
    if (surface_) overlay_.change(changed);
    surface_ ? refresh() : update(changed);
}

QSize PictureView::devicePixels() const {
    const qreal ratio = devicePixelRatioF();
    return {int(std::lround(width() * ratio)), int(std::lround(height() * ratio))};
}

QRectF PictureView::pictureRect() const {
    const QRect whole = placementOf(scene_, devicePixels()).whole;
    if (whole.isEmpty()) return {};
    const qreal ratio = devicePixelRatioF();
    return {QPointF(whole.topLeft()) / ratio, QSizeF(whole.size()) / ratio};
}

void PictureView::pictureChanged(Make make) {
    ++wanted_;
    if (make == Make::away && !surface_ && !image_.isNull() && isVisible())
        wantPicture();
    else
        refresh();
}

void PictureView::refresh() {
    if (surface_)
        paintSurface();
    else
        update();
}

void PictureView::wantPicture() {
    if (!worker_) {
        worker_ = std::make_unique<PictureWorker>();
        connect(worker_.get(), &PictureWorker::made, this, &PictureView::takePicture);
    }
    const ScenePlacement placement = placementOf(scene_, devicePixels());
    if (placement.request.size.isEmpty()) return update();
    asked_ = wanted_;
    PictureRequest request = placement.request;
    request.quickly = refined_ != wanted_;
    worker_->want({wanted_, scene_.frame, request, placement.visible.topLeft()});
}

// Any that is newer than the one shown will do until the wanted one is there.
void PictureView::takePicture(quint64 serial, const QImage& image, QPoint at) {
    if (serial <= shown_) return;
    image_ = image;
    imageAt_ = at;
    shown_ = serial;
    update();
    if (serial == wanted_) refine();
}

void PictureView::paintPicture(QPainter& painter) {
    const ScenePlacement placement = placementOf(scene_, devicePixels());
    if (placement.request.size.isEmpty()) {
        image_ = {};
        shown_ = wanted_;
    } else if (shown_ != wanted_ && (asked_ != wanted_ || image_.isNull())) {
        PictureRequest request = placement.request;
        request.quickly = true;
        image_ = renderPicture(scene_.frame, request);
        imageAt_ = placement.visible.topLeft();
        shown_ = wanted_;
        if (isRefinable()) QMetaObject::invokeMethod(this, &PictureView::refine, Qt::QueuedConnection);
    }
    const qreal ratio = devicePixelRatioF();
    const QRectF covered(QPointF(imageAt_) / ratio, QSizeF(image_.size()) / ratio);
    QRegion bare(rect());
    if (covered.toRect() == covered) bare -= covered.toRect(); // else the edges fall between points
    for (const QRect& part : bare)
        painter.fillRect(part, Qt::black);
    if (image_.isNull()) return;
    image_.setDevicePixelRatio(ratio);
    painter.drawImage(covered.topLeft(), image_);
}

void PictureView::paintEvent(QPaintEvent* event) {
    if (surface_) return; // covers all
    QPainter painter(this);
    paintPicture(painter);
    const qreal ratio = devicePixelRatioF();
    painter.save();
    painter.setClipRect(event->rect()); // no more than that is painted
    painter_.paintOverlay(painter, scene_, ratio);
    painter.restore();
    if (painter_.isBehind()) strokesBehind_.start();
    painter_.paintReadOuts(painter, scene_, ratio);
}

void PictureView::resizeEvent(QResizeEvent*) {
    if (surface_) surface_->setGeometry(rect());
    scene_.geometry.setArea(size());
    overlay_.clear();
    pictureChanged(moving_ ? Make::away : Make::atPainting);
}

void PictureView::paintSurface() {
    const ScenePlacement placement = placementOf(scene_, devicePixels());
    surface_->showPicture({scene_.frame, placement.request, placement.visible.topLeft()});
}

QString PictureView::rendererName() const {
    if (surface_) return QStringLiteral("OpenGL: %1").arg(surface_->deviceName());
    return openGlProblem_.isEmpty() ? QStringLiteral("Software")
                                    : QStringLiteral("Software (OpenGL: %1)").arg(openGlProblem_);
}

void PictureView::chooseRenderer(RendererChoice wanted) {
    const bool always = wanted == RendererChoice::openGl;
    const quint64 choice = ++choice_;
    openGlWanted_ = false;
    openGlProblem_.clear();
    if (wanted == RendererChoice::software || (!always && !hasGraphicsDevice())) return adoptRenderer();
    // Drivers take their time to load.
    probing_.run([this, choice, always, platform = QGuiApplication::platformName()] {
        WorkQueue::deliver(this, [this, choice, always, found = probeOpenGl(platform)] {
            if (choice != choice_) return;
            openGlWanted_ = found.problem.isEmpty() && (always || !isSoftwareRasteriser(found.device));
            openGlProblem_ = found.problem;
            adoptRenderer();
        });
    });
}

void PictureView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
    Q_EMIT pressed();
}

// Touchpads tell pixels, some of them nothing else.
void PictureView::wheelEvent(QWheelEvent* event) {
    const QPoint turned = event->angleDelta().isNull() ? event->pixelDelta() : event->angleDelta();
    const Qt::KeyboardModifiers held = event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier);
    if (held == Qt::ShiftModifier)
        Q_EMIT wheelZoomed(turned.y() != 0 ? turned.y() : turned.x(), event->position()); // some desktops turn it aside
    else
        Q_EMIT wheelTurned(turned.y(), event->modifiers() & Qt::ControlModifier);
    event->accept();
}

void PictureView::hideEvent(QHideEvent*) {
    QMetaObject::invokeMethod(this, &PictureView::adoptRenderer, Qt::QueuedConnection);
}

// Not on a window that is seen: the first surface in a window makes the window anew.
void PictureView::adoptRenderer() {
    if (window()->isVisible()) return;
    if (openGlWanted_ == bool(surface_)) return;
    if (surface_) {
        delete std::exchange(surface_, nullptr);
    } else {
        surface_ = new PictureSurface(this, [this] {
            const qreal ratio = devicePixelRatioF();
            std::vector<PictureLayer> layers =
                overlay_.update(devicePixels(), ratio, [this, ratio](QPainter& painter) {
                    painter_.paintOverlay(painter, scene_, ratio);
                });
            if (painter_.isBehind()) strokesBehind_.start();
            for (PictureLayer& plate : painter_.readOuts(scene_, ratio))
                layers.push_back(std::move(plate));
            return layers;
        });
        connect(surface_, &PictureSurface::ready, this, &PictureView::rendererChanged);
        connect(surface_, &PictureSurface::drawn, this, [this] { shown_ = wanted_; });
        connect(surface_, &PictureSurface::failed, this, &PictureView::giveUpOpenGl, Qt::QueuedConnection);
        surface_->setGeometry(rect());
        surface_->lower();
        surface_->show();
        overlay_.clear();
        image_ = {};
        paintSurface();
    }
    shown_ = 0;
    Q_EMIT rendererChanged();
}

void PictureView::giveUpOpenGl(const QString& reason) {
    if (!surface_) return;
    delete std::exchange(surface_, nullptr);
    openGlWanted_ = false;
    openGlProblem_ = reason;
    shown_ = 0;
    update();
    Q_EMIT rendererChanged();
}

} // namespace daylark
