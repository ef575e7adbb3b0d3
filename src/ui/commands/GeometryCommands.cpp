#include "ui/commands/GeometryCommands.h"

#include "preferences/Preferences.h"
#include "ui/commands/Commands.h"
#include "viewer/MoviePlayerController.h"

#include <QAction>
#include <QMenu>

#include <cmath>
#include <functional>

namespace daylark {

namespace {

struct SizeCommand {
    const char* id;
    const char* title;
    const char* icon;
    QKeySequence key;
};

const SizeCommand zooms[] = {
    {"viewer.fit", "Fit Image To Viewer", "zoomFit", Qt::CTRL | Qt::SHIFT | Qt::Key_F},
    {"viewer.actualPixels", "1:1 Pixels (Actual Size)", "zoomActual", Qt::CTRL | Qt::SHIFT | Qt::Key_1},
    {"viewer.zoomIn", "Zoom In", "zoomIn", Qt::CTRL | Qt::Key_Plus},
    {"viewer.zoomOut", "Zoom Out", "zoomOut", Qt::CTRL | Qt::Key_Minus}};
const SizeCommand windows[] = {{"viewer.windowActual", "1:1 (Actual Size)", "", {}},
                               {"viewer.windowHalf", "1:2 (Half Size)", "", {}},
                               {"viewer.windowThird", "1:3 (Third Size)", "", {}},
                               {"viewer.windowFavourite", "Favourite Viewer Size", "", {}}};
const SizeCommand mirrors[] = {{"viewer.flop", "Flop Display", "flop", {}},
                               {"viewer.flip", "Flip Display", "flip", {}}};
const char* const pixelAspects[] = {"1:1", "PAL 4:3 (1.067)", "PAL 16:9 (1.422)", "2:1"};
constexpr float pixelAspectValues[] = {1.0f, 1.067f, 1.422f, 2.0f};

QString ratioId(const char* ratio) {
    return QStringLiteral("viewer.mask.%1").arg(QLatin1String(ratio));
}

QString aspectId(const char* title) {
    return QStringLiteral("viewer.pixelAspect.%1").arg(QLatin1String(title));
}

} // namespace

void addGeometryCommands(Commands& commands, MoviePlayerController& controller) {
    ViewerGeometry& geometry = controller.geometry();
    Preferences& preferences = controller.preferences();
    const auto hasMovie = [&controller] { return controller.currentMovie() != nullptr; };
    for (const SizeCommand& zoom : zooms)
        commands.add({QLatin1String(zoom.id), QLatin1String(zoom.title), QLatin1String(zoom.icon), zoom.key,
                      [&geometry, title = QString::fromLatin1(zoom.title)] { geometry.scaleMovie({title}); },
                      hasMovie});
    for (const SizeCommand& window : windows)
        commands.add(
            {QLatin1String(window.id),
             QLatin1String(window.title),
             {},
             {},
             [&geometry, title = QString::fromLatin1(window.title)] { geometry.scaleWindow({title}); },
             hasMovie});
    for (const SizeCommand& mirror : mirrors) {
        const bool flop = QLatin1String(mirror.id) == QLatin1String("viewer.flop");
        commands.add(
            {QLatin1String(mirror.id),
             QLatin1String(mirror.title),
             QLatin1String(mirror.icon),
             {},
             [&geometry, title = QString::fromLatin1(mirror.title)] { geometry.mirrorMovie({title}); },
             {},
             [&geometry, flop] { return flop ? geometry.mirrorsLeftRight() : geometry.mirrorsUpsideDown(); },
             {}});
    }
    commands.add({QStringLiteral("viewer.mask"),
                  QStringLiteral("Show Mask"),
                  QStringLiteral("mask"),
                  {},
                  [&geometry] { geometry.toggleMask(); },
                  {},
                  [&preferences] { return preferences.showMask(); },
                  {}});
    for (const auto& [ratio, value] : maskRatios)
        commands.add(
            {ratioId(ratio),
             QLatin1String(ratio),
             {},
             {},
             [&geometry, title = QString::fromLatin1(ratio)] { geometry.resizeMaskElements({title}); },
             {},
             [&preferences, value = value] { return std::abs(preferences.movieMaskRatio() - value) < 1e-6; },
             {}});
    for (size_t at = 0; at < std::size(pixelAspects); ++at)
        commands.add({aspectId(pixelAspects[at]),
                      QLatin1String(pixelAspects[at]),
                      {},
                      {},
                      [&geometry, &commands, title = QString::fromLatin1(pixelAspects[at])] {
                          geometry.setPixelAspectRatio({title});
                          commands.refresh();
                      },
                      {},
                      [&geometry, at] { return geometry.pixelAspectRatio() == pixelAspectValues[at]; },
                      {}});
    commands.add({QStringLiteral("viewer.constrain"),
                  QStringLiteral("Constrain Viewer To Movie Proportions"),
                  {},
                  {},
                  [&geometry, &preferences] {
                      preferences.constrainViewerToMovieProportions.flip();
                      geometry.setConstrainViewerProportions();
                  },
                  {},
                  [&preferences] { return preferences.constrainViewerToMovieProportions(); },
                  {}});
    QObject::connect(&geometry, &ViewerGeometry::changed, &commands, &Commands::refresh);
    const auto retitle = [mask = commands.action(QStringLiteral("viewer.mask")), &geometry] {
        mask->setText(geometry.maskMenuTitle());
    };
    QObject::connect(&geometry, &ViewerGeometry::changed, &commands, retitle);
    retitle();
}

void fillPictureMenu(QMenu* menu, const Commands& commands) {
    for (const SizeCommand& zoom : zooms)
        menu->addAction(commands.action(QLatin1String(zoom.id)));
    menu->addSeparator();
    for (const SizeCommand& mirror : mirrors)
        menu->addAction(commands.action(QLatin1String(mirror.id)));
    menu->addSeparator();
    menu->addAction(commands.action(QStringLiteral("viewer.mask")));
    QMenu* ratios = menu->addMenu(QObject::tr("Mask &Ratio"));
    for (const auto& [ratio, value] : maskRatios)
        ratios->addAction(commands.action(ratioId(ratio)));
    QMenu* aspects = menu->addMenu(QObject::tr("Pixel &Aspect"));
    for (const char* title : pixelAspects)
        aspects->addAction(commands.action(aspectId(title)));
}

void fillWindowMenu(QMenu* menu, const Commands& commands) {
    for (const SizeCommand& window : windows)
        menu->addAction(commands.action(QLatin1String(window.id)));
    menu->addSeparator();
    menu->addAction(commands.action(QStringLiteral("viewer.constrain")));
}

} // namespace daylark
