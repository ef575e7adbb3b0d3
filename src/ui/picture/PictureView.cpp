#include "ui/picture/PictureView.h"

#include "ui/picture/GlPictureContext.h"
#include "ui/picture/PictureSurface.h"
#include "ui/picture/PictureWorker.h"

#include <QFutureWatcher>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWheelEvent>
#include <QtConcurrent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace daylark {

namespace {

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

QRect pixelRect(const QRectF& rect, qreal scaleX, qreal scaleY) {
    const QSize size(int(std::lround(rect.width() * scaleX)), int(std::lround(rect.height() * scaleY)));
    return {QPoint(int(std::lround(rect.x() * scaleX)), int(std::lround(rect.y() * scaleY))),
            size.expandedTo({1, 1})};
}

} // namespace

PictureView::PictureView(QWidget* parent)
    : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Picture"));
    setObjectName(QStringLiteral("picture"));
}

PictureView::~PictureView() {
    delete std::exchange(surface_, nullptr); // paints through this view's members
}

void PictureView::setFrame(const VideoFrame& frame) {
    if (moving_ && frameWanted_ > shown_ && !frame_.isNull()) ++skipped_;
    frame_ = frame;
    pictureChanged(Make::away);
    frameWanted_ = wanted_;
}

void PictureView::clear() {
    setFrame({});
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
}

void PictureView::setHeadsUp(const HeadsUp& headsUp) {
    if (headsUp == headsUp_) return;
    headsUp_ = headsUp;
    // While the picture that they belong to is being made, they wait for it.
    if (surface_ || shown_ == wanted_ || asked_ != wanted_) refresh();
}

void PictureView::setStatistics(const QString& lines) {
    if (lines == statistics_) return;
    statistics_ = lines;
    refresh();
}

void PictureView::setColourTransform(const ColourTransform& colour) {
    if (colour == colour_) return;
    colour_ = colour;
    pictureChanged(Make::away);
}

void PictureView::setMirroring(bool leftRight, bool upsideDown) {
    if (leftRight == mirrorLeftRight_ && upsideDown == mirrorUpsideDown_) return;
    mirrorLeftRight_ = leftRight;
    mirrorUpsideDown_ = upsideDown;
    refreshOverlay(); // what is drawn on the picture follows it
    pictureChanged(moving_ ? Make::away : Make::atPainting);
}

void PictureView::setPictureRect(std::optional<QRectF> rect) {
    if (rect == rect_) return;
    rect_ = rect;
    refreshOverlay();
    pictureChanged(moving_ ? Make::away : Make::atPainting);
}

void PictureView::setOverlayPainter(std::function<void(QPainter&)> painter) {
    overlayPainter_ = std::move(painter);
    refreshOverlay();
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

PictureView::Placement PictureView::placementIn(QSizeF area, QSize pixels) const {
    Placement placement;
    const QSize picture = frame_.isNull() ? QSize() : frame_.displaySize();
    if (picture.isEmpty() || area.isEmpty() || pixels.isEmpty()) return placement;
    if (rect_) {
        if (rect_->isEmpty()) return placement;
        placement.whole = pixelRect(*rect_, pixels.width() / area.width(), pixels.height() / area.height());
    } else {
        const QSize fitted = picture.scaled(pixels, Qt::KeepAspectRatio).expandedTo({1, 1});
        placement.whole = {{(pixels.width() - fitted.width()) / 2, (pixels.height() - fitted.height()) / 2},
                           fitted};
    }
    placement.visible = placement.whole & QRect({}, pixels);
    placement.request = {placement.visible.isEmpty() ? QSize() : placement.whole.size(),
                         placement.visible.translated(-placement.whole.topLeft()),
                         mirrorLeftRight_,
                         mirrorUpsideDown_,
                         colour_,
                         false};
    return placement;
}

QRectF PictureView::pictureRect() const {
    const QRect whole = placementIn(size(), devicePixels()).whole;
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
    const Placement placement = placementIn(size(), devicePixels());
    if (placement.request.size.isEmpty()) return update();
    asked_ = wanted_;
    worker_->want({wanted_, frame_, placement.request, placement.visible.topLeft()});
}

// Any that is newer than the one shown will do until the wanted one is there.
void PictureView::takePicture(quint64 serial, const QImage& image, QPoint at) {
    if (serial <= shown_) return;
    image_ = image;
    imageAt_ = at;
    shown_ = serial;
    update();
}

void PictureView::paintPicture(QPainter& painter) {
    const Placement placement = placementIn(size(), devicePixels());
    if (placement.request.size.isEmpty()) {
        image_ = {};
        shown_ = wanted_;
    } else if (shown_ != wanted_ && (asked_ != wanted_ || image_.isNull())) {
        image_ = renderPicture(frame_, placement.request);
        imageAt_ = placement.visible.topLeft();
        shown_ = wanted_;
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
    if (overlayPainter_) {
        painter.save();
        painter.setClipRect(event->rect()); // told to the overlay, which paints no more than that
        overlayPainter_(painter);
        painter.restore();
    }
    const qreal ratio = devicePixelRatioF();
    plates_.setTexts(headsUp_, statistics_, size(), font());
    plates_.paint(painter, ratio);
}

void PictureView::resizeEvent(QResizeEvent*) {
    if (surface_) surface_->setGeometry(rect());
    overlay_.clear();
    pictureChanged(moving_ ? Make::away : Make::atPainting);
}

void PictureView::paintSurface() {
    const Placement placement = placementIn(size(), devicePixels());
    surface_->setScene({frame_, placement.request, placement.visible.topLeft()});
}

QImage PictureView::renderArea(QSize pixels, Layers layers) const {
    if (pixels.isEmpty()) pixels = devicePixels();
    QImage area(pixels, QImage::Format_RGB32);
    area.fill(Qt::black);
    QPainter painter(&area);
    const Placement placement = placementIn(size(), pixels);
    if (!placement.request.size.isEmpty())
        painter.drawImage(placement.visible.topLeft(), renderPicture(frame_, placement.request));
    if (size().isEmpty()) return area;
    // The screen's own ratio where it is that: the rounded sizes give another.
    const qreal ratio = devicePixelRatioF();
    if (pixels == devicePixels())
        painter.scale(ratio, ratio);
    else
        painter.scale(double(pixels.width()) / width(), double(pixels.height()) / height());
    if (overlayPainter_) {
        painter.save();
        overlayPainter_(painter);
        painter.restore();
    }
    if (layers == Layers::all) {
        PictureHeadsUp plates;
        plates.setTexts(headsUp_, {}, size(), font());
        plates.paint(painter, double(pixels.width()) / width());
    }
    return area;
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
    auto* probe = new QFutureWatcher<OpenGlProbe>(this);
    connect(probe, &QFutureWatcherBase::finished, this, [this, probe, choice, always] {
        probe->deleteLater();
        if (choice != choice_) return;
        const OpenGlProbe found = probe->result();
        openGlWanted_ = found.problem.isEmpty() && (always || !isSoftwareRasteriser(found.device));
        openGlProblem_ = found.problem;
        adoptRenderer();
    });
    probe->setFuture(QtConcurrent::run(probeOpenGl, QGuiApplication::platformName()));
}

void PictureView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
    Q_EMIT pressed();
}

// Touchpads tell pixels, some of them nothing else.
void PictureView::wheelEvent(QWheelEvent* event) {
    const QPoint turned = event->angleDelta().isNull() ? event->pixelDelta() : event->angleDelta();
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
            plates_.setTexts(headsUp_, statistics_, size(), font());
            std::vector<PictureLayer> layers;
            if (overlayPainter_)
                layers = overlay_.update(devicePixels(), devicePixelRatioF(), overlayPainter_);
            for (PictureLayer& plate : plates_.layers(devicePixelRatioF()))
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
