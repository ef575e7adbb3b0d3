#include "picture/colour/ColourConfig.h"

#include "picture/PicturePlanes.h"
#include "picture/PictureRenderer.h"
#include "support/MadeFrame.h"
#include "support/Places.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <array>
#include <cmath>
#include <cstring>
#include <random>

namespace daylark {
namespace {

using Config = std::shared_ptr<const ColourConfig>;

QString ownFile() {
    return sourceFolder() + QStringLiteral("/resources/colour/daylark.ocio");
}

/// Numbers through a display transform by the colour library's own Python module, without any optimisation.
std::vector<float> byPython(const QString& config, const DisplayTransform& t, const std::vector<float>& rgb) {
    const QTemporaryDir folder;
    QFile in(folder.filePath(QStringLiteral("in")));
    if (!in.open(QIODevice::WriteOnly)) return {};
    in.write(reinterpret_cast<const char*>(rgb.data()), qint64(rgb.size() * sizeof(float)));
    in.close();
    const QString script = QStringLiteral(R"(
import sys, array, PyOpenColorIO as O
config, source, display, view, look, exposure, gamma, folder = sys.argv[1:]
c = O.Config.CreateFromFile(config)
p = O.LegacyViewingPipeline()
p.setDisplayViewTransform(O.DisplayViewTransform(src=source, display=display, view=view))
p.setLinearCC(O.ExposureContrastTransform(style=O.EXPOSURE_CONTRAST_LINEAR, pivot=0.18,
                                          exposure=float(exposure), gamma=1 / float(gamma)))
if look:
    p.setLooksOverrideEnabled(True)
    p.setLooksOverride(look)
cpu = p.getProcessor(c).getOptimizedCPUProcessor(O.BIT_DEPTH_F32, O.BIT_DEPTH_F32, O.OPTIMIZATION_NONE)
numbers = array.array('f')
numbers.frombytes(open(folder + '/in', 'rb').read())
array.array('f', cpu.applyRGB(numbers.tolist())).tofile(open(folder + '/out', 'wb'))
)");
    QProcess python;
    python.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral("-c"), script, config, t.inputSpace, t.display, t.view, t.look,
                  QString::number(t.exposure), QString::number(t.gamma), folder.path()});
    python.waitForFinished(120000);
    QFile out(folder.filePath(QStringLiteral("out")));
    if (python.exitCode() != 0 || !out.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << python.readAllStandardError().toStdString();
        return {};
    }
    const QByteArray bytes = out.readAll();
    std::vector<float> result(size_t(bytes.size()) / sizeof(float));
    std::memcpy(result.data(), bytes.constData(), size_t(bytes.size()));
    return result;
}

std::shared_ptr<const DisplayProcessor> processorOf(const Config& config, const DisplayTransform& transform) {
    auto made = config->processor(transform);
    if (made) return *made;
    ADD_FAILURE() << made.error().text.toStdString();
    return nullptr;
}

/// The samples of a planar RGB picture of 16 bits, 0 to 1, pixel by pixel.
std::vector<float> samplesOf(const PicturePlanes& picture) {
    std::vector<float> rgb;
    for (int y = 0; y < picture.size().height(); ++y)
        for (int x = 0; x < picture.size().width(); ++x) {
            std::array<double, 3> c{};
            for (size_t i = 0; i < 3; ++i) {
                quint16 sample = 0;
                std::memcpy(&sample, picture.planes[i].data + y * picture.planes[i].stride + x * 2, 2);
                c[i] = sample / 65535.0 - picture.offset[i];
            }
            for (const auto& row : picture.toRgb)
                rgb.push_back(float(row[0] * c[0] + row[1] * c[1] + row[2] * c[2]));
        }
    return rgb;
}

double step(float value) {
    return std::isnan(value) ? 0 : std::clamp(double(value), 0.0, 1.0) * 255;
}

int worstAgainst(const QImage& image, const std::vector<float>& wanted) {
    double worst = 0;
    size_t i = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            for (const int value : {qRed(pixel), qGreen(pixel), qBlue(pixel)})
                worst = std::max(worst, std::abs(value - step(wanted[i++])));
        }
    return int(std::ceil(worst - 0.51)); // whole steps beyond rounding
}

/// Every combination of light, dark and colour between these, red, green, blue, alpha.
std::vector<float> lights(float least, float most) {
    std::vector<float> rgba;
    constexpr int edge = 14;
    const auto level = [&](int i) { return i == 0 ? least : most * std::exp2(-12.0F * float(edge - 1 - i) / (edge - 2)); };
    for (int r = 0; r < edge; ++r)
        for (int g = 0; g < edge; ++g)
            for (int b = 0; b < edge; ++b)
                rgba.insert(rgba.end(), {level(r), level(g), level(b), 0.25F});
    return rgba;
}

/// Light and colours as pictures have them: 2.5 stops about middle grey, some of them strong.
std::vector<float> litPicture() {
    std::mt19937 random(3);
    std::normal_distribution<float> spread(0, 1);
    std::vector<float> rgba;
    for (int i = 0; i < 20000; ++i) {
        const float light = 0.18F * std::exp2(2.5F * spread(random));
        for (int channel = 0; channel < 3; ++channel)
            rgba.push_back(light * std::exp2(0.6F * spread(random)));
        rgba.push_back(1);
    }
    return rgba;
}

/// Code values of a camera's or a grade's logarithm.
std::vector<float> codes() {
    std::mt19937 random(4);
    std::vector<float> rgba;
    for (int i = 0; i < 80000; ++i)
        rgba.push_back(i % 4 == 3 ? 1.0F : float(random() % 65536) / 65535);
    return rgba;
}

/// By the form for pictures of a run, which takes planes.
void applyQuickly(const DisplayProcessor& processor, std::vector<float>& rgba) {
    std::array<std::vector<float>, 3> planes;
    for (size_t i = 0; i < rgba.size(); ++i)
        if (i % 4 < 3) planes[i % 4].push_back(rgba[i]);
    float* const rgb[] = {planes[0].data(), planes[1].data(), planes[2].data()};
    processor.applyQuickly(rgb, qsizetype(rgba.size() / 4));
    for (size_t i = 0; i < rgba.size(); ++i)
        if (i % 4 < 3) rgba[i] = planes[i % 4][i / 4];
}

std::vector<float> withoutAlpha(const std::vector<float>& rgba) {
    std::vector<float> rgb;
    for (size_t i = 0; i < rgba.size(); ++i)
        if (i % 4 != 3) rgb.push_back(rgba[i]);
    return rgb;
}

double worstStep(const std::vector<float>& a, const std::vector<float>& b) {
    double worst = a.size() == b.size() && !a.empty() ? 0 : 256;
    for (size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        worst = std::max(worst, std::abs(step(a[i]) - step(b[i])));
    return worst;
}

TEST(DisplayColourTest, PicturesGoThroughEveryViewAsTheLibraryAloneSends) {
    const Config config = ColourConfig::own();
    ASSERT_TRUE(config);
    const VideoFrame frame = madeFrame({"gbrp16le", {40, 24}, 0, true});
    const std::vector<float> samples = samplesOf(planesOf(frame));
    const auto sRgb = [](const char* space, const char* view) {
        return DisplayTransform{QString::fromLatin1(space), QStringLiteral("sRGB"), QString::fromLatin1(view), {}};
    };
    std::vector<DisplayTransform> transforms{sRgb("ACEScg", "ACES SDR Video"), sRgb("ACEScg", "Raw"),
                                             sRgb("ACEScct", "Colorimetric"), sRgb("ARRI LogC (EI 800)", "ACES SDR Cinema"),
                                             sRgb("sRGB Texture", "ACES SDR Video"), sRgb("Raw", "ACES SDR Video")};
    for (const QString& display : config->displays())
        transforms.push_back({QStringLiteral("Linear Rec.709"), display, config->views(display).value(0), {}});
    DisplayTransform looking = sRgb("ACEScg", "ACES SDR Video");
    looking.exposure = 1.5;
    looking.gamma = 1.4;
    transforms.push_back(looking);
    looking.look = QStringLiteral("Gamut Compression");
    transforms.push_back(looking);
    for (const DisplayTransform& transform : transforms) {
        PictureRequest request;
        request.display = processorOf(config, transform);
        ASSERT_TRUE(request.display);
        const QImage image = renderPicture(frame, request);
        EXPECT_LE(worstAgainst(image, byPython(ownFile(), transform, samples)), 1)
            << qPrintable(transform.inputSpace + u' ' + transform.display + u' ' + transform.view);
    }
    // Nothing is anything else than with the picture's numbers taken as a display's: every bit of it.
    PictureRequest raw, untouched;
    raw.display = processorOf(config, sRgb("Raw", "Raw"));
    EXPECT_EQ(renderPicture(frame, raw), renderPicture(frame, untouched));
}

TEST(DisplayColourTest, LightBeyondWhiteAndBelowBlackGoesThroughAndTheQuickFormStaysNear) {
    const Config config = ColourConfig::own();
    const DisplayTransform transform{QStringLiteral("ACEScg"), QStringLiteral("sRGB"), QStringLiteral("ACES SDR Video"), {}};
    const auto processor = processorOf(config, transform);
    ASSERT_TRUE(processor && processor->hasQuickForm());
    const std::vector<float> rgba = lights(-0.05F, 64);
    std::vector<float> exact = rgba;
    processor->apply(exact.data(), qsizetype(exact.size() / 4));
    EXPECT_LE(worstStep(withoutAlpha(exact), byPython(ownFile(), transform, withoutAlpha(rgba))), 0.5);
    for (size_t i = 3; i < exact.size(); i += 4)
        ASSERT_EQ(exact[i], 0.25F); // alpha is nobody's colour
    // Pictures of a run as well: every view, pure colours and light below zero among them.
    for (const char* space : {"ACEScg", "ACEScct", "Linear Rec.709"})
        for (const QString& display : config->displays())
            for (const QString& view : config->views(display)) {
                const auto some = processorOf(config, {QString::fromLatin1(space), display, view, {}});
                ASSERT_TRUE(some);
                if (!some->hasQuickForm()) continue;
                const bool isCode = QByteArray(space) == "ACEScct";
                std::vector<float> quick = isCode ? codes() : litPicture();
                const std::vector<float> strong = lights(-0.05F, 64);
                if (!isCode) quick.insert(quick.end(), strong.begin(), strong.end());
                exact = quick;
                some->apply(exact.data(), qsizetype(exact.size() / 4));
                applyQuickly(*some, quick);
                EXPECT_LE(worstStep(withoutAlpha(exact), withoutAlpha(quick)), 1)
                    << space << " " << qPrintable(display + u' ' + view);
            }
    DisplayTransform back{QStringLiteral("ACEScg"), QStringLiteral("sRGB"), QStringLiteral("ACES SDR Video"), {}};
    back.exposure = 1.5;
    back.gamma = 0.9;
    const auto looked = processorOf(config, back);
    std::vector<float> quick = litPicture();
    exact = quick;
    looked->apply(exact.data(), qsizetype(exact.size() / 4));
    applyQuickly(*looked, quick);
    EXPECT_LE(worstStep(withoutAlpha(exact), withoutAlpha(quick)), 1) << "exposure and gamma for looking";
    // What costs little has one form only.
    EXPECT_FALSE(processorOf(config, {QStringLiteral("ACEScg"), QStringLiteral("sRGB"), QStringLiteral("Colorimetric"), {}})
                     ->hasQuickForm());
}

TEST(DisplayColourTest, TheImageToolShowsTheSame) {
    const Config config = ColourConfig::own();
    const QTemporaryDir folder;
    const VideoFrame frame = madeFrame({"gbrp16le", {64, 40}, 0, true});
    const QString in = folder.filePath(QStringLiteral("in.png")), out = folder.filePath(QStringLiteral("out.png"));
    ASSERT_TRUE(renderFrame(frame, {}, true).save(in));
    for (const char* space : {"ACEScg", "ACEScct"})
        for (const QString& display : config->displays()) {
            const QString view = config->views(display).value(0), name = QString::fromLatin1(space);
            QProcess tool;
            tool.start(QStringLiteral("oiiotool"),
                       {QStringLiteral("--colorconfig"), ownFile(), in,
                        QStringLiteral("--ociodisplay:from=%1").arg(name), display, view, QStringLiteral("-d"),
                        QStringLiteral("uint8"), QStringLiteral("-o"), out});
            tool.waitForFinished(60000);
            ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().toStdString();
            const QImage theirs = QImage(out).convertToFormat(QImage::Format_RGB32);
            PictureRequest request;
            request.display = processorOf(config, {name, display, view, {}});
            const QImage ours = renderPicture(frame, request);
            ASSERT_EQ(ours.size(), theirs.size());
            int worst = 0;
            for (int y = 0; y < ours.height(); ++y)
                for (int x = 0; x < ours.width() * 4; ++x)
                    worst = std::max(worst, std::abs(ours.constScanLine(y)[x] - theirs.constScanLine(y)[x]));
            EXPECT_LE(worst, 1) << qPrintable(display + u' ' + view);
        }
}

// The grade is on what the display gets; pieces that several cores make fit together, turned pictures included.
TEST(DisplayColourTest, GradeComesAfterTheViewOnEveryLineOfAnyPicture) {
    const Config config = ColourConfig::own();
    PictureRequest request;
    request.display = processorOf(
        config, {QStringLiteral("sRGB Texture"), QStringLiteral("sRGB"), QStringLiteral("Colorimetric"), {}});
    ASSERT_TRUE(request.display); // the same numbers again, but for rounding
    for (const char* format : {"yuv420p", "gray", "yuva444p10le", "gbrp16le"})
        for (const int rotation : {0, 90}) {
            const VideoFrame frame = madeFrame({format, {211, 150}, rotation});
            PictureRequest untouched;
            untouched.size = request.size = {300, 190};
            for (const bool graded : {false, true}) {
                if (graded) {
                    request.colour.gain = {1.2, 0.9, 0.7};
                    request.colour.power = 0.6;
                    request.colour.map = {{{1.3, -0.2, -0.1, 0.05}, {-0.1, 1.2, -0.1, -0.02}, {-0.3, -0.2, 1.5, 0.1}}};
                } else {
                    request.colour = {};
                }
                untouched.colour = request.colour;
                const QImage ours = renderPicture(frame, request), wanted = renderPicture(frame, untouched);
                ASSERT_EQ(ours.size(), wanted.size());
                int worst = 0;
                for (int y = 0; y < ours.height(); ++y)
                    for (int x = 0; x < ours.width() * 4; ++x)
                        worst = std::max(worst, std::abs(ours.constScanLine(y)[x] - wanted.constScanLine(y)[x]));
                EXPECT_LE(worst, 1) << format << rotation << graded;
            }
        }
}

TEST(ColourConfigTest, NamesThatAConfigurationLacksGiveWayToItsDefaults) {
    const Config config = ColourConfig::own();
    EXPECT_EQ(config->displays().value(0), QStringLiteral("sRGB"));
    EXPECT_EQ(config->views(QStringLiteral("P3 D65")).value(0), QStringLiteral("ACES SDR Video (P3 limited)"));
    EXPECT_EQ(config->spaceNamed(QStringLiteral("scene_linear")), QStringLiteral("ACEScg"));
    EXPECT_TRUE(config->spaceNamed(QStringLiteral("Sepia")).isNull());
    EXPECT_EQ(config->spaceByRule(QStringLiteral("/shots/a.1001.exr")), QStringLiteral("ACEScg"));
    EXPECT_TRUE(config->spaceByRule(QStringLiteral("/shots/a.mov")).isNull());
    const DisplayTransform fitted =
        config->fitted({QStringLiteral("ACEScg"), QStringLiteral("Wall"), QStringLiteral("Film"), QStringLiteral("Warm")});
    const DisplayTransform wanted{QStringLiteral("ACEScg"), QStringLiteral("sRGB"), QStringLiteral("ACES SDR Video"), {}};
    EXPECT_EQ(fitted, wanted);
    const auto unknown = config->processor({QStringLiteral("Sepia"), QStringLiteral("sRGB"), QStringLiteral("Raw"), {}});
    ASSERT_FALSE(unknown);
    EXPECT_TRUE(unknown.error().text.contains(QStringLiteral("Sepia")));
}

/// A configuration with a file rule, a look and a table that a context variable names.
QByteArray studioConfig() {
    return R"(ocio_profile_version: 2
search_path: luts
environment: {DAYLARK_TEST_SHOT: none}
roles: {default: plates, scene_linear: lin}
file_rules:
  - !<Rule> {name: plates, regex: ".*/plates/.*", colorspace: plates}
  - !<Rule> {name: Default, colorspace: lin}
displays:
  Suite:
    - !<View> {name: Shot, colorspace: shot}
    - !<View> {name: Plain, colorspace: plates}
looks:
  - !<Look>
    name: Half
    process_space: lin
    transform: !<MatrixTransform> {matrix: [0.5, 0, 0, 0, 0, 0.5, 0, 0, 0, 0, 0.5, 0, 0, 0, 0, 1]}
colorspaces:
  - !<ColorSpace> {name: lin, isdata: false}
  - !<ColorSpace> {name: plates, to_reference: !<ExponentTransform> {value: 2}}
  - !<ColorSpace> {name: shot, from_reference: !<FileTransform> {src: "${DAYLARK_TEST_SHOT}.spi1d"}}
)";
}

void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

TEST(ColourConfigTest, RulesContextVariablesAndLooksOfAStudioAreObeyed) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QString::fromUtf8("kläuse config.ocio"));
    writeFile(path, studioConfig());
    QDir(folder.path()).mkdir(QStringLiteral("luts"));
    writeFile(folder.filePath(QStringLiteral("luts/sh010.spi1d")),
              "Version 1\nFrom 0.0 1.0\nLength 2\nComponents 1\n{\n0.0\n0.25\n}\n");
    const auto shown = [&](const char* space, const char* view, const char* look) {
        const auto config = ColourConfig::read(path);
        if (!config) return -1.0F;
        const auto made = (*config)->processor({QString::fromLatin1(space), QStringLiteral("Suite"),
                                                QString::fromLatin1(view), QString::fromLatin1(look)});
        std::array<float, 4> pixel{0.8F, 0.8F, 0.8F, 1};
        if (!made) return -2.0F;
        (*made)->apply(pixel.data(), 1);
        return pixel[1];
    };
    EXPECT_NEAR(shown("plates", "Plain", ""), 0.8F, 1e-5);
    EXPECT_NEAR(shown("lin", "Plain", "Half"), std::sqrt(0.4F), 1e-5);
    EXPECT_EQ(shown("lin", "Shot", ""), -2); // no table of that name: said, not shown wrong
    qputenv("DAYLARK_TEST_SHOT", "sh010");
    EXPECT_NEAR(shown("lin", "Shot", ""), 0.2F, 1e-5);
    qunsetenv("DAYLARK_TEST_SHOT");
    const auto config = ColourConfig::read(path);
    ASSERT_TRUE(config);
    EXPECT_EQ((*config)->spaceByRule(QStringLiteral("/day/plates/a.dpx")), QStringLiteral("plates"));
    EXPECT_TRUE((*config)->spaceByRule(QStringLiteral("/day/a.dpx")).isNull()); // the default speaks of nothing
    EXPECT_EQ((*config)->spaceOfLight(), QStringLiteral("lin"));
}

TEST(ColourConfigTest, AMissingOrBrokenFileIsASentence) {
    const QTemporaryDir folder;
    const auto problemOf = [](const QString& path) {
        const auto config = ColourConfig::read(path);
        return config ? QString() : config.error().text;
    };
    EXPECT_FALSE(problemOf(folder.filePath(QStringLiteral("none.ocio"))).isEmpty());
    EXPECT_FALSE(problemOf(folder.path()).isEmpty());
    const QString path = folder.filePath(QStringLiteral("broken.ocio"));
    const QByteArray whole = studioConfig();
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("ocio_profile_version: 2\n"), QByteArray("\xff\xfe\0\0nonsense", 12), whole.left(220),
          QByteArray(whole).replace("colorspace: plates}", "colorspace: nowhere}"),
          QByteArray(whole).replace("ocio_profile_version: 2", "ocio_profile_version: 99")}) {
        writeFile(path, bytes);
        const QString problem = problemOf(path);
        EXPECT_FALSE(problem.isEmpty()) << bytes.left(60).constData();
        EXPECT_FALSE(problem.contains(u'\n'));
    }
}

TEST(ColourConfigTest, NothingButFilesOfAUsualSizeIsReadForAStrangersConfiguration) {
    const QTemporaryDir folder;
    const auto problemOf = [](const QString& path) {
        const auto config = ColourConfig::chosen(path);
        return config ? QString() : config.error().text;
    };
    const QString pipe = folder.filePath(QStringLiteral("pipe.ocio")), path = folder.filePath(QStringLiteral("studio.ocio"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_TRUE(problemOf(pipe).endsWith(QStringLiteral("not a file")));
    EXPECT_TRUE(problemOf(QStringLiteral("/dev/zero")).endsWith(QStringLiteral("not a file")));

    // What its tables are: pipes, devices and files without an end, wherever in it they are named.
    const QString table = folder.filePath(QStringLiteral("without end.cube"));
    writeFile(table, "LUT_1D_SIZE 2\n");
    ASSERT_TRUE(QFile::resize(table, qint64(1) << 40)); // nothing of it is on the disk
    const QByteArray whole = studioConfig();
    for (const QString& name : {pipe, QStringLiteral("/dev/zero"), table}) {
        const QByteArray src = name.toUtf8();
        writeFile(path, QByteArray(whole).replace("${DAYLARK_TEST_SHOT}.spi1d", src));
        EXPECT_TRUE(problemOf(path).contains(name)) << problemOf(path).toStdString();
    }
    writeFile(path, whole);
    EXPECT_TRUE(problemOf(path).isEmpty()) << problemOf(path).toStdString();
    const QString remarks = folder.filePath(QStringLiteral("remarks.cube"));
    writeFile(remarks, "CSPLUTV100\n3D\n\nBEGIN METADATA\nand so on\n");
    writeFile(path, QByteArray(whole).replace("${DAYLARK_TEST_SHOT}.spi1d", remarks.toUtf8()));
    EXPECT_TRUE(problemOf(path).contains(remarks)) << problemOf(path).toStdString();

    // A thousand bytes that would be some billion transforms.
    QByteArray parts = "&a0 !<GroupTransform> {children: [!<MatrixTransform> {offset: [0, 0, 0, 0]}]}";
    for (int level = 1; level < 20; ++level) {
        const QByteArray before = "*a" + QByteArray::number(level - 1);
        parts += ", &a" + QByteArray::number(level) + " !<GroupTransform> {children: [" + before + ", " + before + ", " +
                 before + "]}";
    }
    writeFile(path, QByteArray(whole).replace("!<FileTransform> {src: \"${DAYLARK_TEST_SHOT}.spi1d\"}",
                                              "!<GroupTransform> {children: [" + parts + "]}"));
    EXPECT_TRUE(problemOf(path).contains(QStringLiteral("repeats its own parts")));

    // Spaces and looks that lead back to themselves, and a chain whose every link doubles what came before.
    const auto spaces = [](const QByteArray& more) {
        return "ocio_profile_version: 1\nroles: {default: a, scene_linear: a}\ndisplays:\n  d:\n    - !<View> {name: v, "
               "colorspace: b}\nlooks:\n  - !<Look> {name: l, process_space: b, transform: !<MatrixTransform> {}}\n"
               "colorspaces:\n  - !<ColorSpace> {name: a}\n" + more;
    };
    const auto space = [](const QByteArray& name, const QByteArray& of) {
        return "  - !<ColorSpace> {name: " + name + ", from_reference: " + of + "}\n";
    };
    const auto between = [](const QByteArray& from) { return "!<ColorSpaceTransform> {src: " + from + ", dst: a}"; };
    QByteArray chain = space("b", between("s29"));
    for (int link = 29; link > 0; --link) {
        const QByteArray before = "s" + QByteArray::number(link - 1);
        chain += space("s" + QByteArray::number(link),
                       "!<GroupTransform> {children: [" + between(before) + ", " + between(before) + "]}");
    }
    for (const QByteArray& endless :
         {space("b", between("b")), space("b", between("c")) + space("c", between("b")),
          space("b", "!<LookTransform> {src: a, dst: a, looks: +l}"), chain + space("s0", "!<MatrixTransform> {}")}) {
        writeFile(path, spaces(endless));
        EXPECT_TRUE(problemOf(path).contains(QStringLiteral("refer to themselves"))) << problemOf(path).toStdString();
    }
    writeFile(path, spaces(space("b", between("c")) + space("c", "!<MatrixTransform> {}")));
    EXPECT_TRUE(problemOf(path).isEmpty()) << problemOf(path).toStdString();
}

} // namespace
} // namespace daylark
