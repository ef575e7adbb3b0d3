#include "support/PictureMaker.h"

#include "support/BarCode.h"
#include "support/Places.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QLibrary>
#include <QPainter>

namespace daylark::test {

namespace {

QImage painted(int number, QSize size) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(200, 120, 40));
    QPainter painter(&image);
    drawBarCode(painter, size, number);
    return image;
}

} // namespace

WrittenPicture barCodePicture(const QString& path, int number, QSize size, float white) {
    WrittenPicture picture;
    picture.path = QFile::encodeName(path).toStdString();
    picture.width = size.width();
    picture.height = size.height();
    picture.channels = {"R", "G", "B"};
    const QImage image = painted(number, size);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            for (const int value : {qRed(pixel), qGreen(pixel), qBlue(pixel)})
                picture.pixels.push_back(white * float(value) / 255);
        }
    return picture;
}

void addChannel(WrittenPicture& picture, const char* name, float (*value)(int x, int y)) {
    const size_t before = picture.channels.size();
    std::vector<float> pixels;
    pixels.reserve(picture.pixels.size() / before * (before + 1));
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            const auto from = picture.pixels.begin() + qsizetype((size_t(y) * size_t(picture.width) + size_t(x)) * before);
            pixels.insert(pixels.end(), from, from + qsizetype(before));
            pixels.push_back(value(x, y));
        }
    picture.channels.emplace_back(name);
    picture.pixels = std::move(pixels);
}

void addLayer(WrittenPicture& picture, const QString& layer, int number) {
    const WrittenPicture other = barCodePicture({}, number, {picture.width, picture.height});
    const size_t before = picture.channels.size();
    std::vector<float> pixels;
    for (size_t pixel = 0; pixel < size_t(picture.width) * size_t(picture.height); ++pixel) {
        pixels.insert(pixels.end(), picture.pixels.begin() + qsizetype(pixel * before),
                      picture.pixels.begin() + qsizetype((pixel + 1) * before));
        pixels.insert(pixels.end(), other.pixels.begin() + qsizetype(pixel * 3),
                      other.pixels.begin() + qsizetype(pixel * 3 + 3));
    }
    for (const char* channel : {".R", ".G", ".B"})
        picture.channels.push_back(layer.toStdString() + channel);
    picture.pixels = std::move(pixels);
}

void writePicture(const WrittenPicture& picture) {
    static QLibrary module(programFolder() + QStringLiteral("/picture_writing"));
    module.setLoadHints(QLibrary::PreventUnloadHint);
    const auto write = reinterpret_cast<decltype(&daylarkWritePicture)>(module.resolve("daylarkWritePicture"));
    ASSERT_TRUE(write) << module.errorString().toStdString();
    std::string trouble;
    ASSERT_TRUE(write(picture, trouble)) << picture.path << ": " << trouble;
}

unsigned packedTimecode(int hours, int minutes, int seconds, int frames) {
    const auto digits = [](int value) { return unsigned(value / 10 << 4 | value % 10); };
    return digits(hours) << 24 | digits(minutes) << 16 | digits(seconds) << 8 | digits(frames);
}

} // namespace daylark::test
