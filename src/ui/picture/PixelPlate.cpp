#include "ui/picture/PixelPlate.h"

#include "ui/common/Theme.h"
#include "ui/picture/PictureView.h"

#include <QCursor>
#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <QTabletEvent>

#include <algorithm>

namespace daylark {

namespace {

constexpr int aroundPlate = 8, fromCorner = 12, fromPointer = 32, swatchSide = 36, hueHeight = 8, besideSwatch = 12;
constexpr int columnGap = 12, mostColumns = 4, plateRows = 6, widestChannel = 96;

QFont plateWords() {
    return theme::smallFont();
}

QFont plateNumbers() {
    QFont font = theme::numberFont();
    font.setPointSizeF(plateWords().pointSizeF());
    return font;
}

QColor colourOf(const PixelValues& values) {
    const std::array<int, 3> codes = values.shownCodes();
    return {codes[0], codes[1], codes[2]};
}

} // namespace

PixelPlate::PixelPlate(PixelReadOut& pixels, PictureView& picture)
    : QWidget(&picture)
    , pixels_(pixels)
    , picture_(picture) {
    setObjectName(QStringLiteral("pixelPlate"));
    setAccessibleName(tr("Pixel read-out"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    picture_.installEventFilter(this);
    connect(&pixels_, &PixelReadOut::changed, this, &PixelPlate::follow);
    follow();
}

void PixelPlate::follow() {
    const bool isOn = pixels_.isOn();
    if (isOn && !picture_.hasMouseTracking()) picture_.setMouseTracking(true);
    if (isOn && isHidden()) {
        measures_ = measured({});
        setVisible(true);
        raise();
        pointToCursor();
    }
    setVisible(isOn);
    if (isOn) say(pixels_.text());
}

void PixelPlate::pointTo(const QPointF& at) {
    pointer_ = at;
    pixels_.pointAt(at * picture_.devicePixelRatioF(), picture_.devicePixels());
    place();
}

void PixelPlate::pointToCursor() {
    const QPoint at = picture_.mapFromGlobal(QCursor::pos());
    if (picture_.isVisible() && picture_.rect().contains(at)) pointTo(at);
}

bool PixelPlate::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &picture_ || !pixels_.isOn()) return false;
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
        pointTo(static_cast<QMouseEvent*>(event)->position());
        break;
    case QEvent::TabletMove:
    case QEvent::TabletPress:
        pointTo(static_cast<QTabletEvent*>(event)->position());
        break;
    case QEvent::Leave:
        pointer_.reset();
        pixels_.pointNowhere();
        break;
    case QEvent::Resize:
        if (pointer_) pointTo(*pointer_);
        place();
        break;
    case QEvent::MouseTrackingChange: // full screen leaves without a thought of who else needs it
        if (!picture_.hasMouseTracking()) picture_.setMouseTracking(true);
        break;
    default:
        break;
    }
    return false;
}

PixelPlate::Measures PixelPlate::measured(const PixelReadOut::Text& text) const {
    const QFontMetrics words(plateWords()), numbers(plateNumbers());
    Measures measures{std::max(words.height(), numbers.height()) + 1, 0, numbers.horizontalAdvance(QStringLiteral("00.0000"))};
    for (const QString& head : {text.stored.what, text.shown.what, text.codes.what})
        measures.heads = std::max(measures.heads, words.horizontalAdvance(head));
    for (const QStringList& line : {text.stored.numbers, text.shown.numbers})
        for (const QString& number : line)
            measures.number = std::max(measures.number, numbers.horizontalAdvance(number));
    for (const QString& channel : text.channels)
        measures.number = std::max(measures.number, std::min(words.horizontalAdvance(channel), widestChannel));
    return measures;
}

// It grows with what it has to say and stays as large, so that nothing jumps about under the pointer.
void PixelPlate::say(const PixelReadOut::Text& text) {
    text_ = text;
    const Measures wanted = measured(text);
    measures_ = {wanted.row, std::max(wanted.heads, measures_.heads), std::max(wanted.number, measures_.number)};
    setAccessibleDescription(QStringList{text.place, text.stored.numbers.join(u' '), text.codes.numbers.join(u' ')}
                                 .join(QStringLiteral("; ")));
    place();
    update();
}

/// At the upper right below the file's name, or at the lower right where the pointer is near that.
void PixelPlate::place() {
    const int columns = std::clamp(int(text_.channels.size()), 3, mostColumns);
    const QSize size(2 * aroundPlate + swatchSide + besideSwatch + measures_.heads + columns * (measures_.number + columnGap),
                     2 * aroundPlate + plateRows * measures_.row);
    const ReadOuts& beside = picture_.scene().readOuts;
    const int plate = std::clamp(picture_.height() / 36, 13, 28) * 3 / 2 + fromCorner; // of such a text
    const int left = picture_.width() - fromCorner - size.width();
    QRect frame({left, fromCorner + (beside.filename.isEmpty() ? 0 : plate)}, size);
    const QRect near = frame.adjusted(-fromPointer, -fromPointer, fromPointer, fromPointer);
    if (pointer_ && near.contains(pointer_->toPoint()))
        frame.moveTop(picture_.height() - fromCorner - size.height() - (beside.looking.isEmpty() ? 0 : plate));
    if (frame != geometry()) setGeometry(frame);
}

void PixelPlate::paintSwatches(QPainter& painter) const {
    if (!pixels_.values()) return;
    const PixelValues& values = *pixels_.values();
    const QRect swatch(aroundPlate, aroundPlate, swatchSide, swatchSide);
    painter.fillRect(swatch, theme::line);
    painter.fillRect(swatch.adjusted(1, 1, -1, -1), colourOf(values));
    const QRect hue(swatch.left(), swatch.bottom() + 1 + hueHeight / 2, swatchSide, hueHeight);
    const auto degrees = values.hue();
    painter.fillRect(hue, degrees ? QColor::fromHsvF(float(*degrees / 360), 0.85F, 0.9F) : theme::line);
}

void PixelPlate::paintLine(QPainter& painter, const QString& head, const QStringList& numbers, int row,
                           const QColor& colour) const {
    const int top = aroundPlate + row * measures_.row, left = aroundPlate + swatchSide + besideSwatch;
    const bool areNames = head.isEmpty();
    painter.setFont(plateWords());
    painter.setPen(theme::dimText);
    painter.drawText(QRect(left, top, measures_.heads, measures_.row), Qt::AlignLeft | Qt::AlignVCenter, head);
    painter.setFont(areNames ? plateWords() : plateNumbers());
    painter.setPen(colour);
    for (int i = 0; i < std::min<int>(int(numbers.size()), mostColumns); ++i) {
        const QRect cell(left + measures_.heads + columnGap + i * (measures_.number + columnGap), top, measures_.number,
                         measures_.row);
        const QString text = areNames ? painter.fontMetrics().elidedText(numbers[i], Qt::ElideLeft, cell.width()) : numbers[i];
        painter.drawText(cell, Qt::AlignRight | Qt::AlignVCenter, text);
    }
}

void PixelPlate::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(16, 16, 16, 225));
    painter.drawRoundedRect(rect(), 4, 4);
    painter.setRenderHint(QPainter::Antialiasing, false);
    paintSwatches(painter);
    painter.setFont(plateNumbers());
    const bool isRead = !text_.place.isEmpty();
    painter.setPen(isRead ? theme::text : theme::disabled);
    painter.drawText(QRect(aroundPlate + swatchSide + besideSwatch, aroundPlate, width(), measures_.row),
                     Qt::AlignLeft | Qt::AlignVCenter, isRead ? text_.place : QStringLiteral("–"));
    if (!isRead) return;
    paintLine(painter, {}, text_.channels, 1, theme::dimText);
    paintLine(painter, text_.stored.what, text_.stored.numbers, 2, theme::text);
    paintLine(painter, {}, {QStringLiteral("R"), QStringLiteral("G"), QStringLiteral("B")}, 3, theme::dimText);
    paintLine(painter, text_.shown.what, text_.shown.numbers, 4, theme::text);
    paintLine(painter, text_.codes.what, text_.codes.numbers, 5, theme::text);
}

} // namespace daylark
