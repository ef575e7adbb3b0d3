#include "Effects.h"

#include "support/BarCode.h"

#include <QFile>
#include <QImage>
#include <QPainter>

#include <OpenImageIO/imageio.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <vector>

namespace daylark::demo {

namespace {

constexpr int firstFrame = 1001, frames = 24;
constexpr std::array missingFrames{1009, 1010};
const QSize effectsSize{960, 540};

/// A furnace in the dark: the picture's brightest parts are many times white.
QImage paintedFurnace(int number) {
    QImage image(effectsSize, QImage::Format_RGB32);
    const double w = image.width(), h = image.height(), t = double(number - firstFrame) / (frames - 1);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient wall(0, 0, w, h);
    wall.setColorAt(0, QColor(26, 34, 48));
    wall.setColorAt(1, QColor(62, 44, 40));
    painter.fillRect(image.rect(), wall);
    painter.setPen(Qt::NoPen);
    constexpr std::array colours{QColor(230, 40, 30), QColor(40, 200, 60), QColor(50, 70, 235), QColor(230, 200, 40)};
    for (size_t i = 0; i < colours.size(); ++i) {
        QRadialGradient ball(w * (0.2 + 0.2 * double(i)), h * 0.62, h * 0.13);
        ball.setColorAt(0, colours[i].lighter(150));
        ball.setColorAt(1, colours[i].darker(320));
        painter.setBrush(ball);
        painter.drawEllipse(QPointF(w * (0.2 + 0.2 * double(i)), h * (0.66 - 0.08 * std::sin(6.28 * t + double(i)))), h * 0.12,
                            h * 0.12);
    }
    painter.setBrush(QColor(255, 250, 240));
    painter.drawEllipse(QPointF(w * (0.1 + 0.8 * t), h * 0.3), h * 0.07, h * 0.07);
    QFont font(QStringLiteral("PT Mono"));
    font.setPixelSize(int(h * 0.06));
    painter.setFont(font);
    painter.setPen(QColor(200, 200, 200));
    painter.drawText(QRectF(0, h * 0.88, w * 0.97, h * 0.08), Qt::AlignRight, QString::number(number));
    drawBarCode(painter, image.size(), number);
    return image;
}

double lightOf(int code) {
    const double value = code / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

/// From a screen's colours to ACEScg, what is nearly white as bright as a fire.
std::vector<float> lightIn(const QImage& image) {
    constexpr double toAp1[3][3] = {{0.613132422, 0.339538016, 0.047416696},
                                    {0.070124380, 0.916394011, 0.013451524},
                                    {0.020587658, 0.109574572, 0.869785405}};
    std::vector<float> light;
    light.reserve(size_t(image.width()) * size_t(image.height()) * 3);
    const int barCodeEnd = image.height() / 8 + 1;
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const double red = lightOf(qRed(row[x])), green = lightOf(qGreen(row[x])), blue = lightOf(qBlue(row[x]));
            const double gain = y > barCodeEnd && blue > 0.85 ? 24 : 1;
            for (const auto& line : toAp1)
                light.push_back(float(gain * (line[0] * red + line[1] * green + line[2] * blue)));
        }
    }
    return light;
}

std::optional<QString> writePicture(const QString& path, int number) {
    const auto out = OIIO::ImageOutput::create("exr");
    if (!out) return QString::fromStdString(OIIO::geterror());
    OIIO::ImageSpec spec(effectsSize.width(), effectsSize.height(), 3, OIIO::TypeDesc::HALF);
    spec.attribute("compression", "zip");
    constexpr float acescg[8] = {0.713F, 0.293F, 0.165F, 0.83F, 0.128F, 0.044F, 0.32168F, 0.33767F};
    spec.attribute("chromaticities", OIIO::TypeDesc(OIIO::TypeDesc::FLOAT, 8), acescg);
    constexpr int rate[2] = {24, 1};
    spec.attribute("FramesPerSecond", OIIO::TypeRational, rate);
    const std::vector<float> light = lightIn(paintedFurnace(number));
    const bool isWritten = out->open(QFile::encodeName(path).toStdString(), spec) &&
                           out->write_image(OIIO::TypeDesc::FLOAT, light.data()) && out->close();
    if (isWritten) return std::nullopt;
    return path + QStringLiteral(": ") + QString::fromStdString(out->geterror());
}

} // namespace

std::optional<QString> makeEffectsShot(const QDir& root) {
    if (!root.mkpath(QStringLiteral("Effects"))) return QStringLiteral("cannot make folders in ") + root.path();
    for (int number = firstFrame; number < firstFrame + frames; ++number) {
        const QString path = root.filePath(QStringLiteral("Effects/DLK_030_0010_comp_v003.%1.exr").arg(number));
        bool isWanted = !QFile::exists(path);
        for (const int missing : missingFrames)
            isWanted = isWanted && number != missing;
        if (!isWanted) continue;
        const QString unfinished = path + QStringLiteral(".making");
        if (const auto wrong = writePicture(unfinished, number)) return wrong;
        if (!QFile::rename(unfinished, path)) return path + QStringLiteral(": cannot be renamed");
    }
    const QString folder = root.filePath(QStringLiteral("Effects"));
    std::printf("made %s: %d to %d, two of them missing\n", qUtf8Printable(folder), firstFrame, firstFrame + frames - 1);
    return std::nullopt;
}

} // namespace daylark::demo
