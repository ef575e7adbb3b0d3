#include "ui/picture/PictureSurface.h"

#include "picture/gl/GlPictureRenderer.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <cmath>

namespace daylark {

PictureSurface::PictureSurface(QWidget* view, Layers layers)
    : QOpenGLWidget(view)
    , layers_(std::move(layers)) {
    QSurfaceFormat wanted;
    wanted.setVersion(3, 3);
    wanted.setProfile(QSurfaceFormat::CoreProfile);
    setFormat(wanted);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

PictureSurface::~PictureSurface() {
    release();
    if (context()) context()->disconnect(this); // it goes after this part of the object
}

void PictureSurface::showPicture(Shown shown) {
    if (shown.frame.data() != shown_.frame.data()) planes_ = {};
    shown_ = std::move(shown);
    update();
}

void PictureSurface::initializeGL() {
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &PictureSurface::release,
            Qt::UniqueConnection);
    auto made = GlPictureRenderer::create([](const char* name) {
        return reinterpret_cast<QFunctionPointer>(QOpenGLContext::currentContext()->getProcAddress(name));
    });
    if (!made) return fail(made.error().text);
    renderer_ = std::move(*made);
    deviceName_ = renderer_->deviceName();
    Q_EMIT ready();
}

void PictureSurface::paintGL() {
    QOpenGLFunctions* gl = context()->functions();
    gl->glClearColor(0, 0, 0, 1);
    gl->glClear(GL_COLOR_BUFFER_BIT);
    if (renderer_) {
        const qreal ratio = devicePixelRatioF();
        const QSize target(int(std::lround(width() * ratio)), int(std::lround(height() * ratio)));
        if (planes_.isNull()) planes_ = planesOf(shown_.frame);
        const Result<void> picture = renderer_->draw(planes_, shown_.request, target, shown_.at);
        if (!picture) fail(picture.error().text);
        renderer_->drawLayers(layers_(), target);
    }
    Q_EMIT drawn();
}

void PictureSurface::release() {
    if (!renderer_) return;
    makeCurrent();
    renderer_.reset();
    doneCurrent();
}

void PictureSurface::fail(const QString& reason) {
    if (!std::exchange(failed_, true)) Q_EMIT failed(reason);
}

} // namespace daylark
