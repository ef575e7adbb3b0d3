#pragma once

#include <QPixmap>
#include <QString>

#include <vector>

namespace daylark {

/// What hangs on the pointer while rows are dragged: their first pictures as a small stack (without any, a name beside a
/// handle) and, of several rows, how many there are. Interface thread.
[[nodiscard]] QPixmap dragPicture(const std::vector<QPixmap>& pictures, const QString& name, qsizetype rows,
                                  qreal devicePixelRatio);

} // namespace daylark
