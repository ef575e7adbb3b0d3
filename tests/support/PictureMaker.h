#pragma once

#include "support/pictures/PictureWriting.h"

#include <QSize>
#include <QString>

namespace daylark::test {

/// A picture with the bar code of a number, grey and in three colours below; white at `white`. To be changed further, then
/// written.
[[nodiscard]] WrittenPicture barCodePicture(const QString& path, int number, QSize size = {192, 108}, float white = 1);
/// Adds "LAYER.R", ".G", ".B" with the bar code of another number.
void addLayer(WrittenPicture& picture, const QString& layer, int number);
/// One more channel, every pixel `value(x, y)`.
void addChannel(WrittenPicture& picture, const char* name, float (*value)(int x, int y));
/// By OpenImageIO, a library that the program's own readers are checked against. Fails the test where it cannot.
void writePicture(const WrittenPicture& picture);
/// What its 32 bits hold of a time.
[[nodiscard]] unsigned packedTimecode(int hours, int minutes, int seconds, int frames);

} // namespace daylark::test
