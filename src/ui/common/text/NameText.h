#pragma once

#include "app/arrangement/ShownNames.h"

#include <QColor>
#include <QFontMetrics>
#include <QRect>

#include <vector>

class QPainter;

namespace daylark::nameText {

/// A name in little room: broken behind its separators into as many lines as there are, its common beginning dimmed; where
/// it doesn't fit so, that is left out first, and only then something from the middle of what tells it apart. Pure but for
/// `paint`. Interface thread.

struct Line {
    QString text;
    qsizetype dimmed = 0; ///< so many at its beginning are common
};

[[nodiscard]] std::vector<Line> layOut(const ShownName& name, const QFontMetrics& metrics, int width, int mostLines);

/// With the painter's font, from the left, upright in the middle of `place`.
void paint(QPainter& painter, const QRect& place, const ShownName& name, int mostLines, const QColor& colour,
           const QColor& dimmed, Qt::AlignmentFlag vertical = Qt::AlignVCenter);

} // namespace daylark::nameText
