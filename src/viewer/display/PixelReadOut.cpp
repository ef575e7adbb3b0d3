#include "viewer/display/PixelReadOut.h"

#include "picture/scene/ScenePixel.h"
#include "preferences/Preferences.h"
#include "viewer/display/ViewerScene.h"

#include <cmath>

namespace daylark {

namespace {

constexpr int significantDigits = 5; // a half has not even four

QString storedText(const PixelValues& values, double number) {
    if (std::isnan(number)) return QStringLiteral("nan");
    if (std::isinf(number)) return number > 0 ? QStringLiteral("inf") : QStringLiteral("-inf");
    return values.isCode ? QString::number(qint64(number)) : QString::number(number, 'g', significantDigits);
}

} // namespace

PixelReadOut::PixelReadOut(ViewerScene& scene, Preferences& preferences, QObject* parent)
    : QObject(parent)
    , scene_(scene)
    , preferences_(preferences) {
    connect(&scene_, &ViewerScene::changed, this, &PixelReadOut::look);
    connect(&preferences_.displayPixelReadOut, &PreferenceItem::changed, this, [this] {
        look();
        Q_EMIT changed();
    });
}

bool PixelReadOut::isOn() const {
    return preferences_.displayPixelReadOut();
}

void PixelReadOut::pointAt(QPointF at, QSize area) {
    pointer_ = Pointer{at, area};
    look();
}

void PixelReadOut::pointNowhere() {
    pointer_.reset();
    look();
}

void PixelReadOut::look() {
    if (!isOn() || !pointer_) {
        if (!values_) return;
        values_.reset();
        return Q_EMIT changed();
    }
    const Scene& scene = scene_.scene();
    const auto place = pixelUnder(scene, pointer_->area, pointer_->at);
    if (!place && !values_) return;
    values_ = place ? pixelAt(scene.frame, *place, {scene.display, scene.colour}) : std::nullopt;
    Q_EMIT changed();
}

PixelReadOut::Text PixelReadOut::text() const {
    Text text;
    if (!values_) return text;
    const PixelValues& values = *values_;
    text.place = tr("x %1   y %2").arg(values.place.x()).arg(values.place.y());
    text.stored.what = values.isCode ? tr("Picture, %1 bit").arg(values.depth) : tr("Picture");
    for (const PixelValues::Number& number : values.stored) {
        text.channels << number.channel;
        text.stored.numbers << storedText(values, number.value);
    }
    text.shown.what = tr("Display");
    text.codes.what = tr("Display, 8 bit");
    const std::array<int, 3> codes = values.shownCodes();
    for (size_t i = 0; i < codes.size(); ++i) {
        text.shown.numbers << QString::number(values.shown[i], 'f', 4);
        text.codes.numbers << QString::number(codes[i]);
    }
    return text;
}

} // namespace daylark
