#include "support/BarCode.h"

#include <QPainter>

#include <array>

namespace daylark {
namespace {

// White, black, sixteen bits from the highest, four check bits, black, white; each cell a block of full
// height.
constexpr int cells = 24, numberBits = 16, checkBits = 4, bandShare = 8;

int checkOf(int number) {
    int sum = 5;
    for (int nibble = 0; nibble < 4; ++nibble)
        sum += ((number >> (4 * nibble)) & 15) * (nibble + 1);
    return sum & 15;
}

std::array<bool, cells> cellsOf(int number) {
    std::array<bool, cells> white{};
    white[0] = true;
    const int word = (number << checkBits) | checkOf(number);
    for (int bit = 0; bit < numberBits + checkBits; ++bit)
        white[size_t(2 + bit)] = (word >> (numberBits + checkBits - 1 - bit)) & 1;
    white[cells - 1] = true;
    return white;
}

/// Mean grey of the inner part of a cell, so that neighbours and lossy edges don't count.
double greyOf(const QImage& picture, int cell) {
    const double width = double(picture.width()) / cells, height = double(picture.height()) / bandShare;
    const int left = int((cell + 0.3) * width), right = std::max(left + 1, int((cell + 0.7) * width));
    const int top = int(0.3 * height), bottom = std::max(top + 1, int(0.7 * height));
    double sum = 0;
    int count = 0;
    for (int y = top; y < bottom && y < picture.height(); ++y)
        for (int x = left; x < right && x < picture.width(); ++x, ++count)
            sum += qGray(picture.pixel(x, y));
    return count ? sum / count : 0;
}

} // namespace

void drawBarCode(QPainter& painter, QSize size, int number) {
    const auto white = cellsOf(number);
    const double width = double(size.width()) / cells;
    painter.fillRect(QRectF(0, 0, size.width(), double(size.height()) / bandShare), Qt::black);
    for (int cell = 0; cell < cells; ++cell)
        if (white[size_t(cell)])
            painter.fillRect(QRectF(cell * width, 0, width, double(size.height()) / bandShare), Qt::white);
}

std::optional<int> readBarCode(const QImage& picture) {
    if (picture.width() < cells || picture.height() < bandShare) return std::nullopt;
    const double bright = (greyOf(picture, 0) + greyOf(picture, cells - 1)) / 2;
    const double dark = (greyOf(picture, 1) + greyOf(picture, cells - 2)) / 2;
    if (bright - dark < 60) return std::nullopt;
    int word = 0;
    for (int bit = 0; bit < numberBits + checkBits; ++bit)
        word = (word << 1) | (greyOf(picture, 2 + bit) > (bright + dark) / 2 ? 1 : 0);
    const int number = word >> checkBits;
    if (checkOf(number) != (word & 15)) return std::nullopt;
    return number;
}

} // namespace daylark
