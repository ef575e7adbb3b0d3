#include "picture/scene/ReadOutPlates.h"

#include "base/PlainText.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace daylark {

namespace {

constexpr int headsUpMargin = 12;
constexpr QMarginsF platePadding(8, 4, 8, 4);
const QColor headsUpShade(0, 0, 0, 150);

} // namespace

void ReadOutPlates::setTexts(const ReadOuts& texts, QSize size) {
    plates_.clear();
    QFont numbers = texts.numbers, words = texts.words;
    numbers.setPixelSize(std::clamp(size.height() / 36, 13, 28));
    words.setPixelSize(numbers.pixelSize());
    const QRectF room = QRectF(QPointF(), QSizeF(size)).marginsRemoved(QMarginsF(1, 1, 1, 1) * headsUpMargin);
    const auto add = [this](const QString& text, const QRectF& where, Qt::Alignment alignment,
                            const QFont& font, const QColor& colour, bool shaded = true) {
        if (!text.isEmpty() && where.isValid())
            plates_.push_back({plain::paragraph(text), where, int(alignment) | Qt::TextWordWrap, font, colour, shaded});
    };

    // What the person chose for texts on the picture holds for all of them.
    const QColor colour = texts.overlayColour.isValid() ? texts.overlayColour : texts.text;
    add(texts.counter, room, Qt::AlignLeft | Qt::AlignTop, numbers, colour);
    add(texts.timecode, room, Qt::AlignLeft | Qt::AlignBottom, numbers, colour);
    if (!texts.statistics.isEmpty()) {
        QFont small = numbers;
        small.setPixelSize(std::clamp(size.height() / 60, 11, 16));
        const int below = texts.counter.isEmpty() ? 0 : QFontMetrics(numbers).height() + 16;
        add(texts.statistics, room.adjusted(0, below, 0, 0), Qt::AlignLeft | Qt::AlignTop, small, texts.text);
    }
    const QString name =
        QFontMetrics(words).elidedText(plain::line(texts.filename), Qt::ElideMiddle, int(room.width() * 0.6));
    add(name, room, Qt::AlignRight | Qt::AlignTop, words, colour);
    const qreal aside = room.width() * 0.2; // beside the timecode, never over it
    const QRectF besideTimecode = room.adjusted(aside, 0, 0, 0);
    add(texts.looking, besideTimecode, Qt::AlignRight | Qt::AlignBottom, words, texts.text);
    const QSizeF said = QFontMetricsF(words)
                            .boundingRect(besideTimecode.marginsRemoved(platePadding), Qt::TextWordWrap,
                                          plain::paragraph(texts.looking))
                            .size();
    add(texts.message, room, Qt::AlignCenter, words, texts.dimText, false);

    words.setPixelSize(std::clamp(size.height() / 28, 15, 40));
    // Over what is said at the right, where that is long: why a picture is shown raw.
    const bool isLong = !texts.looking.isEmpty() && said.width() + platePadding.left() + platePadding.right() > aside;
    const qreal foot = isLong ? said.height() + platePadding.top() + platePadding.bottom() + platePadding.top() : 0;
    add(texts.overlayText, room.adjusted(aside, 0, -aside, -foot), Qt::AlignHCenter | Qt::AlignBottom, words,
        texts.overlayColour);
}

ReadOutPlates::Image ReadOutPlates::made(const Plate& plate, qreal pixelRatio) {
    const QRectF text = QFontMetricsF(plate.font)
                            .boundingRect(plate.room.marginsRemoved(platePadding), plate.flags, plate.text);
    const QRectF bounds = text.marginsAdded(platePadding).intersected(plate.room); // never beyond its frame
    const QPoint first(int(std::floor(bounds.left() * pixelRatio)),
                       int(std::floor(bounds.top() * pixelRatio)));
    const QSize pixels(int(std::ceil(bounds.right() * pixelRatio)) - first.x(),
                       int(std::ceil(bounds.bottom() * pixelRatio)) - first.y());
    Image image{plate, pixelRatio, {QImage(pixels, QImage::Format_ARGB32_Premultiplied), first}};
    image.layer.image.fill(Qt::transparent);
    image.layer.image.setDevicePixelRatio(pixelRatio);
    QPainter painter(&image.layer.image);
    painter.translate(-QPointF(first) / pixelRatio);
    if (plate.shaded) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(headsUpShade);
        painter.drawRoundedRect(bounds, 4, 4);
    }
    painter.setPen(plate.colour);
    painter.setFont(plate.font);
    // A little more room than was measured: text that just fits must not wrap.
    painter.drawText(text.adjusted(-1, 0, 1, 0), plate.flags, plate.text);
    return image;
}

std::vector<PictureLayer> ReadOutPlates::layers(qreal pixelRatio) {
    std::vector<Image> images;
    std::vector<PictureLayer> layers;
    for (const Plate& plate : plates_) {
        const auto found = std::find_if(images_.begin(), images_.end(), [&](const Image& image) {
            return image.plate == plate && image.pixelRatio == pixelRatio;
        });
        images.push_back(found != images_.end() ? *found : made(plate, pixelRatio));
        layers.push_back(images.back().layer);
    }
    images_ = std::move(images);
    return layers;
}

void ReadOutPlates::paint(QPainter& painter, qreal pixelRatio) {
    for (const PictureLayer& layer : layers(pixelRatio))
        painter.drawImage(QPointF(layer.at) / pixelRatio, layer.image);
}

} // namespace daylark
