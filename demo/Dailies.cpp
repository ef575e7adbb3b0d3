// daylark-demo-dailies DIR: two folders of dailies and an effects shot to try Daylark on.
#include "Effects.h"
#include "support/MovieMaker.h"

#include <QDir>
#include <QFileInfo>
#include <QFont>
#include <QGuiApplication>
#include <QPainter>

#include <atomic>
#include <cmath>
#include <cstdio>
#include <optional>
#include <thread>

using namespace daylark;

namespace {

struct Shot {
    const char* folder;
    const char* file;
    const char* encoder;
    const char* pixelFormat;
    int rateNum, rateDen, seconds;
    const char* timecode;
    bool sound;
    int hue;
};

constexpr Shot shots[] = {
    {"Day 1", "DLK_010_0010_comp_v002.mov", "libx264", "yuv420p", 24, 1, 6, "01:00:00:00", false, 210},
    {"Day 1", "DLK_010_0020_comp_v004.mov", "prores_ks", "yuv422p10le", 24000, 1001, 4, "01:00:06:00", false,
     28},
    {"Day 1", "DLK_010_0030_anim_v011.mov", "libx264", "yuv420p", 25, 1, 5, "10:02:11:05", true, 145},
    {"Day 1", "DLK_010_0040_plate_v001.mp4", "libx264", "yuv420p", 30000, 1001, 5, "", false, 260},
    {"Day 2", "DLK_020_0010_comp_v001.mov", "libx264", "yuv420p", 24000, 1001, 6, "01:10:00:00", false, 190},
    {"Day 2", "DLK_020_0020_lighting_v007.mov", "prores_ks", "yuv422p10le", 24, 1, 3, "", false, 45},
    {"Day 2", "DLK_020_0030_fx_v003.mov", "libx264", "yuv420p", 25, 1, 6, "01:10:12:00", true, 330},
};

QString timecodeAt(int frame, const Shot& shot) {
    const int rate = int(std::lround(double(shot.rateNum) / shot.rateDen));
    const int seconds = frame / rate;
    return QString::asprintf("%02d:%02d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60,
                             frame % rate);
}

/// A dusk over hills, a sun that travels with the frame number, a slate line and the burnt-in number.
void paintShot(QPainter& painter, const Shot& shot, QSize size, int number, int frames) {
    const double w = size.width(), h = size.height(), t = double(number - 1) / std::max(1, frames - 1);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, h);
    sky.setColorAt(0, QColor::fromHsv(shot.hue, 110, 50));
    sky.setColorAt(0.62, QColor::fromHsv((shot.hue + 20) % 360, 120, 150));
    sky.setColorAt(0.63, QColor::fromHsv((shot.hue + 340) % 360, 90, 60));
    sky.setColorAt(1, QColor::fromHsv((shot.hue + 340) % 360, 80, 24));
    painter.fillRect(QRectF(0, 0, w, h), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(250, 214, 150));
    painter.drawEllipse(QPointF(w * (0.1 + 0.8 * t), h * (0.52 - 0.28 * std::sin(t * M_PI))), h * 0.06,
                        h * 0.06);
    for (int hill = 0; hill < 3; ++hill) {
        painter.setBrush(QColor::fromHsv((shot.hue + 330) % 360, 70, 46 - 12 * hill));
        QPolygonF outline{QPointF(0, h)};
        for (int x = 0; x <= 48; ++x)
            outline << QPointF(w * x / 48, h * (0.63 + 0.08 * hill) -
                                               h * 0.05 * std::sin(x * 0.31 + hill * 1.7 + t * (0.6 + hill)));
        outline << QPointF(w, h);
        painter.drawPolygon(outline);
    }
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(int(h * 0.030));
    painter.setFont(font);
    painter.setPen(QColor(235, 235, 235, 200));
    const QRectF foot(w * 0.03, h * 0.92, w * 0.94, h * 0.05);
    painter.drawText(foot, Qt::AlignLeft | Qt::AlignVCenter,
                     QFileInfo(QString::fromLatin1(shot.file)).completeBaseName());
    painter.drawText(foot, Qt::AlignHCenter | Qt::AlignVCenter, timecodeAt(number - 1, shot));
    QFont big(QStringLiteral("PT Mono"));
    big.setBold(true);
    big.setPixelSize(int(h * 0.07));
    painter.setFont(big);
    painter.drawText(foot.adjusted(0, -h * 0.02, 0, h * 0.01), Qt::AlignRight | Qt::AlignVCenter,
                     QString::asprintf("%04d", number));
}

/// Makes one shot unless it is there; what is wrong, or nothing.
std::optional<QString> makeShot(const Shot& shot, const QDir& root) {
    MovieSpec spec;
    const QString finalPath =
        root.filePath(QString::fromLatin1(shot.folder) + QLatin1Char('/') + QString::fromLatin1(shot.file));
    if (QFileInfo::exists(finalPath)) return std::nullopt;
    // A half-made movie under the final name would be taken for a whole one by the next run.
    const QFileInfo info(finalPath);
    spec.path = info.dir().filePath(QStringLiteral(".making.") + info.fileName());
    spec.encoder = QString::fromLatin1(shot.encoder);
    spec.pixelFormat = QString::fromLatin1(shot.pixelFormat);
    spec.size = QSize(1280, 720);
    spec.rateNum = shot.rateNum;
    spec.rateDen = shot.rateDen;
    spec.frames = int(std::lround(double(shot.seconds) * shot.rateNum / shot.rateDen));
    spec.groupSize = 48;
    spec.bFrames = 2;
    spec.sound = shot.sound;
    spec.timecode = QString::fromLatin1(shot.timecode);
    spec.paint = [&](QPainter& painter, int number) {
        paintShot(painter, shot, spec.size, number, spec.frames);
    };
    if (const Result<void> made = makeMovie(spec); !made)
        return finalPath + QStringLiteral(": ") + made.error().text;
    if (!QFile::rename(spec.path, finalPath)) return finalPath + QStringLiteral(": cannot be renamed");
    std::printf("made %s: %d frames at %d/%d\n", qUtf8Printable(finalPath), spec.frames, shot.rateNum,
                shot.rateDen);
    return std::nullopt;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen"); // painting text wants an application, not a display
    QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: daylark-demo-dailies DIR\n");
        return 2;
    }
    const QDir root(QString::fromLocal8Bit(argv[1]));
    for (const Shot& shot : shots)
        if (!root.mkpath(QString::fromLatin1(shot.folder))) {
            std::fprintf(stderr, "daylark-demo-dailies: cannot make folders in %s\n", argv[1]);
            return 1;
        }
    // Painting takes most of the time and runs on one core: two shots at once.
    std::atomic<size_t> next = 0;
    std::atomic<bool> failed = false;
    const auto work = [&] {
        for (size_t i = next++; i < std::size(shots); i = next++)
            if (const std::optional<QString> wrong = makeShot(shots[i], root)) {
                failed = true;
                std::fprintf(stderr, "daylark-demo-dailies: %s\n", qUtf8Printable(*wrong));
            }
    };
    std::thread second(work);
    work();
    second.join();
    if (const std::optional<QString> wrong = demo::makeEffectsShot(root)) {
        failed = true;
        std::fprintf(stderr, "daylark-demo-dailies: %s\n", qUtf8Printable(*wrong));
    }
    return failed ? 1 : 0;
}
