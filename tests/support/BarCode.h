#pragma once

#include "support/MovieMaker.h"

namespace daylark {

/// Draws a number from 0 to 65535 as a bar code across the topmost eighth of a picture of this size.
void drawBarCode(QPainter& painter, QSize size, int number);

} // namespace daylark
