#include "ui/library/DragPicture.h"

#include "ui/common/Theme.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace daylark {

namespace {

constexpr int mostPictures = 3, pictureWidth = 96, pictureHeight = 54, step = 6;

void paintCount(QPainter& painter, const QRect& area, qsizetype rows) {
    QFont font = QApplication::font();
    font.setBold(true);
    painter.setFont(font);
    const QString text = QString::number(rows);
    const QFontMetrics metrics(font);
    QRect badge(0, 0, std::max(metrics.horizontalAdvance(text) + 12, metrics.height() + 6), metrics.height() + 6);
    badge.moveTopRight(area.topRight());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme::selection);
    painter.drawRoundedRect(badge, badge.height() / 2.0, badge.height() / 2.0);
    painter.setPen(theme::selectedText);
    painter.drawText(badge, Qt::AlignCenter, text);
}

} // namespace

QPixmap dragPicture(const std::vector<QPixmap>& pictures, const QString& name, qsizetype rows,
                    qreal devicePixelRatio) {
    const int shown = std::min<int>(mostPictures, int(pictures.size()));
    const QFontMetrics metrics(QApplication::font());
    const QString label = metrics.elidedText(name, Qt::ElideMiddle, 200);
    const QSize inside = shown > 0 ? QSize(pictureWidth + (shown - 1) * step, pictureHeight + (shown - 1) * step)
                                   : QSize(metrics.horizontalAdvance(label) + 32, 24);
    const int margin = rows > 1 ? 10 : 0;
    const QSize size = inside + QSize(margin * 2, margin);
    QPixmap whole(size * devicePixelRatio);
    whole.setDevicePixelRatio(devicePixelRatio);
    whole.fill(Qt::transparent);
    QPainter painter(&whole);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(0.9);
    for (int at = shown - 1; at >= 0; --at) {
        const QRect place(at * step, margin + at * step, pictureWidth, pictureHeight);
        painter.fillRect(place.adjusted(-1, -1, 1, 1), theme::line);
        painter.fillRect(place, Qt::black);
        const QPixmap& picture = pictures[size_t(at)];
        if (picture.isNull()) continue;
        QRect target(QPoint(), picture.size().scaled(place.size(), Qt::KeepAspectRatio));
        target.moveCenter(place.center());
        painter.drawPixmap(target, picture);
    }
    if (shown == 0) {
        const QRect place(0, margin, inside.width(), inside.height());
        painter.fillRect(place, theme::raised);
        theme::icon(QStringLiteral("dl-grabIcon-01.png")).paint(&painter, QRect(4, margin + 4, 16, 16));
        painter.setPen(theme::text);
        painter.drawText(place.adjusted(24, 0, -4, 0), Qt::AlignLeft | Qt::AlignVCenter, label);
    }
    painter.setOpacity(1.0);
    if (rows > 1) paintCount(painter, QRect(QPoint(), size), rows);
    return whole;
}

} // namespace daylark
