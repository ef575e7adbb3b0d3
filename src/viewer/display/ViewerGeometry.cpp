#include "viewer/display/ViewerGeometry.h"

#include "preferences/Preferences.h"
#include "viewer/CurrentMovie.h"
#include "viewer/display/ViewerPanels.h"
#include "viewer/review/DrawingTools.h"

#include <utility>

namespace daylark {

namespace {

bool isOneOf(const QString& title, const char* longForm, const char* shortForm) {
    return title == QLatin1String(longForm) || title == QLatin1String(shortForm);
}

} // namespace

ViewerGeometry::ViewerGeometry(CurrentMovie& current, Preferences& preferences, DrawingTools& tools,
                               ViewerPanels& panels, QObject* parent)
    : QObject(parent)
    , preferences_(preferences)
    , tools_(tools)
    , panels_(panels) {
    current.handTo(this, &ViewerGeometry::setMovie);
    for (const PreferenceItem* item : std::initializer_list<PreferenceItem*>{
             &preferences_.showMask, &preferences_.movieMaskRatio, &preferences_.movieMaskOpacity,
             &preferences_.mirrorX, &preferences_.mirrorY})
        connect(item, &PreferenceItem::changed, this, &ViewerGeometry::changed);
}

void ViewerGeometry::setMovie(const std::shared_ptr<Movie>& movie) {
    movie_ = movie;
    geometry_.setMovie(movie ? movie->mMovieWidth : 0, movie ? movie->mMovieHeight : 0,
                       movie ? movie->mMovieAspectRatio : 0);
    // Versions are compared at one frame and in one place.
    if (movie && !geometry_.isFitted() && preferences_.loadFrame() == StartFrame::sameFrame) {
        Q_EMIT changed();
        return;
    }
    scaleMovieToFitViewer();
}

void ViewerGeometry::setPictureSize(const QSize& pixels) {
    if (pixels.isEmpty()) return;
    geometry_.setMovie(pixels.width(), pixels.height(), float(pixels.width()) / float(pixels.height()));
    Q_EMIT changed();
    if (std::exchange(constrainWhenKnown_, false)) setConstrainViewerProportions();
}

void ViewerGeometry::setArea(const QSizeF& size) {
    if (size == geometry_.area()) return;
    geometry_.setArea(size);
    Q_EMIT changed();
}

void ViewerGeometry::scaleMovieToFitViewer() {
    tools_.setInteractiveModeState(QStringLiteral("off"));
    tools_.resetBrush();
    geometry_.fit();
    Q_EMIT changed();
}

void ViewerGeometry::scaleMovie(const Sender& sender) {
    const QString scroll = QStringLiteral("scroll");
    if (isOneOf(sender.title, "Fit Image To Viewer", "Fit")) return scaleMovieToFitViewer();
    if (isOneOf(sender.title, "1:1 Pixels (Actual Size)", "1:1"))
        geometry_.actualPixels();
    else if (isOneOf(sender.title, "Zoom In", "+"))
        geometry_.zoomIn();
    else if (isOneOf(sender.title, "Zoom Out", "-"))
        geometry_.zoomOut();
    else
        return;
    tools_.setInteractiveModeState(scroll);
    Q_EMIT changed();
}

void ViewerGeometry::zoomAbout(const QPointF& point, double factor) {
    if (!movie_ || !(factor > 0)) return;
    geometry_.zoomAbout(point, factor);
    if (!tools_.isDrawMode()) tools_.setInteractiveModeState(QStringLiteral("scroll"));
    Q_EMIT changed();
}

void ViewerGeometry::scaleWindow(const Sender& sender) {
    if (panels_.isFullScreen()) return;
    if (sender.title == QLatin1String("Favourite Viewer Size")) {
        panels_.restoreFavouriteFrame(DisplayGeometry::narrowestWindow);
    } else if (const auto frame = geometry_.windowFrame(sender.title)) {
        Q_EMIT windowFrameWanted(*frame, false);
    }
}

void ViewerGeometry::setPixelAspectRatio(const Sender& sender) {
    if (sender.title == QLatin1String("1:1")) mPixelAspectRatio_ = 1.0f;
    if (sender.title == QLatin1String("PAL 4:3 (1.067)")) mPixelAspectRatio_ = 1.067f;
    if (sender.title == QLatin1String("PAL 16:9 (1.422)")) mPixelAspectRatio_ = 1.422f;
    if (sender.title == QLatin1String("2:1")) mPixelAspectRatio_ = 2.0f;
    Q_EMIT changed();
}

// "Flop" exchanges left and right under the name mirrorY, "Flip" turns over under mirrorX: stored preferences mean that.
void ViewerGeometry::mirrorMovie(const Sender& sender) {
    if (sender.title == QLatin1String("Flop Display")) preferences_.mirrorY.flip();
    if (sender.title == QLatin1String("Flip Display")) preferences_.mirrorX.flip();
    Q_EMIT changed();
}

bool ViewerGeometry::mirrorsLeftRight() const {
    return preferences_.mirrorY();
}

bool ViewerGeometry::mirrorsUpsideDown() const {
    return preferences_.mirrorX();
}

QString ViewerGeometry::maskMenuTitle() const {
    return preferences_.showMask() ? tr("Hide Mask") : tr("Show Mask");
}

void ViewerGeometry::toggleMask() {
    preferences_.showMask.flip();
    Q_EMIT changed();
}

void ViewerGeometry::resizeMaskElements(const Sender& sender) {
    const bool fromControl = sender.tag >= 201 && sender.tag <= 204;
    if (sender.tag != 201 && sender.tag != 202)
        for (const MaskRatio& mask : maskRatios)
            if (sender.title == QLatin1String(mask.title)) {
                preferences_.movieMaskRatio.set(mask.ratio);
                preferences_.showMask.set(true);
            }
    if (fromControl) preferences_.showMask.set(true);
    Q_EMIT changed();
}

std::optional<double> ViewerGeometry::maskRatio() const {
    if (!preferences_.showMask()) return std::nullopt;
    return preferences_.movieMaskRatio();
}

double ViewerGeometry::maskOpacity() const {
    return std::clamp(double(preferences_.movieMaskOpacity()), 0.0, 1.0);
}

void ViewerGeometry::panBy(const QPointF& origin) {
    if (!tools_.isScrollMode()) return;
    geometry_.moveViewTo(origin);
    Q_EMIT changed();
}

QSize ViewerGeometry::windowWillResize(const QSize& proposed) const {
    if (!preferences_.constrainViewerToMovieProportions() || !movie_ || !movie_->mMovieHasBeenVisited ||
        panels_.isFullScreen() || !geometry_.knowsMovie())
        return proposed;
    return {proposed.width(), geometry_.constrainedHeight(proposed.width())};
}

void ViewerGeometry::setConstrainViewerProportions() {
    if (panels_.isFullScreen() || !preferences_.constrainViewerToMovieProportions() || !movie_) return;
    constrainWhenKnown_ = !geometry_.knowsMovie(); // a movie new to the library: with its first picture
    if (constrainWhenKnown_) return;
    Q_EMIT windowFrameWanted({geometry_.constrainedWindow(), {}}, true);
}

void ViewerGeometry::windowWillEnterFullScreen() {
    panels_.closeForFullScreen();
    viewerWasConstrainedBeforeFullScreen_ = preferences_.constrainViewerToMovieProportions();
    preferences_.constrainViewerToMovieProportions.set(false);
}

void ViewerGeometry::windowWillExitFullScreen() {
    panels_.show(ViewerPanel::playlistDrawer, false);
    preferences_.constrainViewerToMovieProportions.set(viewerWasConstrainedBeforeFullScreen_);
    panels_.show(ViewerPanel::controls, false);
}

void ViewerGeometry::windowDidExitFullScreen() {
    scaleMovie({QStringLiteral("Fit")});
    resizeMaskElements({});
    setConstrainViewerProportions();
    mirrorMovie({});
}

} // namespace daylark
