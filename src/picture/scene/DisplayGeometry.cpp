#include "picture/scene/DisplayGeometry.h"

#include <cmath>

namespace daylark {

void DisplayGeometry::setArea(const QSizeF& size) {
    const QSizeF grown = size - area_;
    area_ = size;
    if (fitted_)
        fit();
    else
        view_.translate(grown.width() / 2, grown.height() / 2);
}

void DisplayGeometry::setMovie(int width, int height, float aspectRatio) {
    width_ = width;
    height_ = height;
    aspect_ = std::isfinite(aspectRatio) && aspectRatio > 0 ? aspectRatio
              : height > 0                                  ? float(width) / float(height)
                                                            : 0;
}

void DisplayGeometry::fit() {
    fitted_ = true;
    view_ = QRectF(QPointF(0, 0), area_);
}

void DisplayGeometry::actualPixels() {
    if (width_ <= 0 || height_ <= 0) return;
    fitted_ = false;
    resizeView(QSizeF(width_, height_), true);
}

void DisplayGeometry::zoomIn() {
    scaleView(1.2);
}

void DisplayGeometry::zoomOut() {
    scaleView(1 / 1.2);
}

// No limit either way: single pixels are looked at, and walls of screens.
void DisplayGeometry::scaleView(double factor) {
    fitted_ = false;
    resizeView(view_.size() * factor, false);
}

void DisplayGeometry::zoomAbout(const QPointF& point, double factor) {
    fitted_ = false;
    view_ = QRectF(point + (view_.topLeft() - point) * factor, view_.size() * factor);
}

void DisplayGeometry::resizeView(const QSizeF& size, bool wholePoints) {
    // Half the difference passes through single precision.
    const auto half = [&](double before, double after) {
        const float difference = float((before - after) / 2);
        return double(wholePoints ? std::trunc(difference) : difference);
    };
    view_ = QRectF(view_.x() + half(view_.width(), size.width()),
                   view_.y() + half(view_.height(), size.height()), size.width(), size.height());
}

void DisplayGeometry::moveViewTo(const QPointF& origin) {
    if (origin == view_.topLeft()) return;
    fitted_ = false;
    view_.moveTo(origin);
}

QRectF DisplayGeometry::picture() const {
    if (aspect_ <= 0 || view_.isEmpty()) return view_;
    QSizeF size(view_.height() * double(aspect_), view_.height());
    if (size.width() > view_.width()) size = QSizeF(view_.width(), view_.width() / double(aspect_));
    return {QPointF(view_.x() + (view_.width() - size.width()) / 2,
                    view_.y() + (view_.height() - size.height()) / 2),
            size};
}

double DisplayGeometry::viewerScaleX() const {
    return area_.width() > 0 ? view_.width() / area_.width() : 1;
}

QRectF DisplayGeometry::toTopLeft(const QRectF& rect) const {
    return {rect.x(), area_.height() - rect.y() - rect.height(), rect.width(), rect.height()};
}

std::optional<DisplayGeometry::MaskBars> DisplayGeometry::maskBars(double maskRatio) const {
    if (aspect_ <= 0 || view_.height() <= 0 || !(maskRatio > 0) || double(aspect_) > maskRatio)
        return std::nullopt;
    const bool pillarBoxed = view_.width() / view_.height() > double(aspect_);
    const double pictureWidth = pillarBoxed ? double(aspect_) * view_.height() : view_.width();
    const double opening = std::trunc(std::trunc(pictureWidth) / maskRatio);
    const double bar = view_.height() > opening ? std::trunc((view_.height() - opening) / 2) : 0;
    return MaskBars{{view_.x(), view_.y() + view_.height() - bar, view_.width(), bar},
                    {view_.x(), view_.y(), view_.width(), bar}};
}

std::optional<DisplayGeometry::WindowFrame> DisplayGeometry::windowFrame(const QString& title) const {
    if (width_ <= 0 || height_ <= 0) return std::nullopt;
    int divisor = 0;
    if (title == QLatin1String("1:1 (Actual Size)")) divisor = 1;
    if (title == QLatin1String("1:2 (Half Size)")) divisor = 2;
    if (title == QLatin1String("1:3 (Third Size)")) divisor = 3;
    if (divisor == 0) return std::nullopt;
    // The third size asks for more width than three times the narrowest window: the sizes that came first.
    const int enough = divisor == 3 ? 1440 : narrowestWindow * divisor;
    if (width_ < enough) return WindowFrame{{narrowestWindow, constrainedHeight(narrowestWindow)}, {}};
    WindowFrame frame{{width_ / divisor, height_ / divisor + controlsHeight}, {}};
    if (divisor == 1 && width_ >= 1920)
        frame.origin = QPoint(100, -1000); // up to the upper edge, as far as the desktop lets it
    return frame;
}

int DisplayGeometry::constrainedHeight(int windowWidth) const {
    return aspect_ > 0 ? int(float(windowWidth) / aspect_ + float(controlsHeight)) : windowWidth;
}

// One point wider and one higher than the picture needs: saved window sizes have them.
QSize DisplayGeometry::constrainedWindow() const {
    return {int(double(aspect_) * area_.height() + 1), int(area_.height() + controlsHeight + 1)};
}

} // namespace daylark
