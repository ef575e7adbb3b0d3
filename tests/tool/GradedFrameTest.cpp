#include "annotate/GradeArithmetic.h"
#include "support/MovieMaker.h"
#include "support/Places.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>

namespace daylark {
namespace {

/// A chart of colours, stored without loss.
QColor chartColour(int column, int row) {
    return QColor(column * 255 / 15, row * 255 / 8, (column * 37 + row * 101) % 256);
}

QString chartMovie(const QTemporaryDir& folder) {
    MovieSpec spec;
    spec.path = folder.filePath(QStringLiteral("chart.mov"));
    spec.encoder = QStringLiteral("png");
    spec.pixelFormat = QStringLiteral("rgb24");
    spec.size = QSize(160, 90);
    spec.frames = 1;
    spec.bFrames = 0;
    spec.barCode = false;
    spec.paint = [](QPainter& painter, int) {
        for (int i = 0; i < 16 * 9; ++i)
            painter.fillRect(i % 16 * 10, i / 16 * 10, 10, 10, chartColour(i % 16, i / 16));
    };
    return makeMovie(spec) ? spec.path : QString();
}

int runFrame(const QString& movie, const QString& out, const QString& grade) {
    return QProcess::execute(
        programFolder() + QStringLiteral("/daylark-tool"),
        {QStringLiteral("frame"), movie, QStringLiteral("1"), out, QStringLiteral("--grade"), grade});
}

TEST(GradedFrame, ChartEqualsTheReferenceWithinOneStep) {
    const QTemporaryDir folder;
    const QString movie = chartMovie(folder), out = folder.filePath(QStringLiteral("out.png"));
    ASSERT_FALSE(movie.isEmpty());
    struct Tested {
        const char* text;
        Grade grade; // exposure, contrast, saturation, gamma, brightness, red, green, blue
    };
    const Tested all[] = {
        {"", {}},
        {"exposure=0.7", {0.7}},
        {"contrast=1.4,brightness=-0.1", {0, 1.4, 1, 1, -0.1}},
        {"saturation=0", {0, 1, 0}},
        {"saturation=2.5,gamma=0.6", {0, 1, 2.5, 0.6}},
        {"gamma=0", {0, 1, 1, 0}},
        {"gamma=4,redChannel=1.5,greenChannel=0.5,blueChannel=0", {0, 1, 1, 4, 0, 1.5, 0.5, 0}},
        {"exposure=-1,contrast=2,saturation=1.5,gamma=2.2,brightness=0.2,redChannel=0.9",
         {-1, 2, 1.5, 2.2, 0.2, 0.9}}};
    for (const Tested& tested : all) {
        ASSERT_EQ(runFrame(movie, out, QString::fromLatin1(tested.text)), 0) << tested.text;
        const QImage picture(out);
        ASSERT_EQ(picture.size(), QSize(160, 90));
        for (int i = 0; i < 16 * 9; ++i) {
            const QColor painted = chartColour(i % 16, i / 16),
                         seen = picture.pixelColor(i % 16 * 10 + 5, i / 16 * 10 + 5);
            const Rgb exact = graded({painted.red() / 255.0, painted.green() / 255.0, painted.blue() / 255.0},
                                     tested.grade);
            const int channels[] = {seen.red(), seen.green(), seen.blue()};
            for (size_t c = 0; c < 3; ++c)
                EXPECT_NEAR(channels[c], std::clamp(exact[c], 0.0, 1.0) * 255, 0.51)
                    << tested.text << " " << i;
        }
    }
    EXPECT_EQ(runFrame(movie, out, QStringLiteral("hue=2")), 2);
    EXPECT_EQ(runFrame(movie, out, QStringLiteral("gamma=much")), 2);
}

TEST(GradedFrame, AMovieWithAnInputSpaceGoesThroughAViewAsTheImageToolSendsIt) {
    const QTemporaryDir folder;
    const QString movie = chartMovie(folder), plain = folder.filePath(QStringLiteral("plain.png")),
                  ours = folder.filePath(QStringLiteral("ours.png")), theirs = folder.filePath(QStringLiteral("theirs.png"));
    const auto frame = [&](const QString& out, const QStringList& options) {
        QProcess tool;
        tool.start(programFolder() + QStringLiteral("/daylark-tool"),
                   QStringList{QStringLiteral("frame"), movie, QStringLiteral("1"), out} + options);
        tool.waitForFinished(60000);
        return std::pair(tool.exitCode(), QString::fromUtf8(tool.readAllStandardError()));
    };
    ASSERT_EQ(frame(plain, {}).first, 0);
    ASSERT_EQ(frame(ours, {QStringLiteral("--input-space"), QStringLiteral("ACEScct"), QStringLiteral("--display"),
                           QStringLiteral("Rec.709"), QStringLiteral("--view"), QStringLiteral("ACES SDR Cinema")})
                  .first,
              0);
    ASSERT_EQ(QProcess::execute(QStringLiteral("oiiotool"),
                                {QStringLiteral("--colorconfig"),
                                 sourceFolder() + QStringLiteral("/resources/colour/daylark.ocio"), plain,
                                 QStringLiteral("--ociodisplay:from=ACEScct"), QStringLiteral("Rec.709"),
                                 QStringLiteral("ACES SDR Cinema"), QStringLiteral("-d"), QStringLiteral("uint8"),
                                 QStringLiteral("-o"), theirs}),
              0);
    const QImage a(ours), b(theirs);
    ASSERT_EQ(a.size(), b.size());
    EXPECT_NE(a, QImage(plain));
    int worst = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QColor left = a.pixelColor(x, y), right = b.pixelColor(x, y);
            worst = std::max({worst, std::abs(left.red() - right.red()), std::abs(left.green() - right.green()),
                              std::abs(left.blue() - right.blue())});
        }
    EXPECT_LE(worst, 1);
    // What the configuration lacks is said, with what it has.
    const auto [status, said] = frame(ours, {QStringLiteral("--input-space"), QStringLiteral("ACEScg"),
                                             QStringLiteral("--view"), QStringLiteral("Sepia")});
    EXPECT_EQ(status, 1);
    EXPECT_TRUE(said.contains(QStringLiteral("ACES SDR Video"))) << qPrintable(said);
    EXPECT_EQ(frame(ours, {QStringLiteral("--input-space"), QStringLiteral("Sepia")}).first, 1);
}

} // namespace
} // namespace daylark
