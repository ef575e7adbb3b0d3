#include <QFile>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

/// render-icon IN.svg SIZE OUT.png: a square picture of an icon. Runs while the program is built.
int main(int argc, char** argv) {
    if (argc != 4) return 2;
    QSvgRenderer renderer(QFile::decodeName(argv[1]));
    const int side = QString::fromLocal8Bit(argv[2]).toInt();
    if (!renderer.isValid() || side < 1 || side > 2048) return 1;
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter);
    painter.end();
    return picture.save(QFile::decodeName(argv[3])) ? 0 : 1;
}
