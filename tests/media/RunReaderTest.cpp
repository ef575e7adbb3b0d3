#include "media/facts/MovieProbe.h"
#include "media/sequence/RunFacts.h"
#include "media/sequence/RunFiles.h"
#include "model/Movie.h"
#include "picture/PicturePlanes.h"

#include "RunFixture.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <sys/stat.h>

#include <cstring>
#include <map>
#include <random>

#include <sys/inotify.h>
#include <unistd.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;
using test::barCodePicture;
using test::WrittenPicture;
using test::writePicture;

class RunReaderTest : public test::RunFixture {};

TEST_F(RunReaderTest, EveryPictureIsItsNumbersForwardsBackwardsAndInJumps) {
    constexpr int first = 1001, count = 30;
    for (int number = first; number < first + count; ++number)
        writePicture(barCodePicture(pathOf(number), number));
    const auto reader = opened(address(first, first + count - 1));
    ASSERT_TRUE(reader);
    ASSERT_EQ(reader->index().count(), count);
    EXPECT_TRUE(reader->index().missing.empty());
    for (int n = 0; n < count; ++n)
        ASSERT_EQ(number(*reader, n), first + n);
    for (int n = count - 1; n >= 0; --n)
        ASSERT_EQ(number(*reader, n), first + n);
    std::mt19937 random(5);
    for (int jump = 0; jump < 60; ++jump) {
        const int n = int(random() % count);
        ASSERT_EQ(number(*reader, n), first + n);
        if (jump % 3 == 0 && n + 1 < count) {
            ASSERT_EQ(number(*reader, n + 1), first + n + 1);
        }
    }
    EXPECT_FALSE(reader->read(count));
    EXPECT_FALSE(reader->read(-1));
}

TEST_F(RunReaderTest, AMissingPictureMovesNoOtherAndIsHeldBlackOrASlate) {
    make({1001, 1002, 1005, 1006});
    const auto held = opened(address(1000, 1006));
    ASSERT_TRUE(held);
    EXPECT_EQ(held->index().missing, (std::vector<qint64>{0, 3, 4}));
    const int shown[] = {1001, 1001, 1002, 1002, 1002, 1005, 1006};
    for (int n = 0; n < 7; ++n)
        EXPECT_EQ(number(*held, n), shown[n]) << n;
    const auto black = opened(address(1000, 1006, MissingPicture::black));
    const QImage nothing = renderFrame(*black->read(3));
    EXPECT_EQ(nothing.size(), QSize(192, 108));
    for (const QPoint at : {QPoint(96, 54), QPoint(3, 3)})
        EXPECT_EQ(nothing.pixelColor(at), QColor(Qt::black));
    const auto slate = opened(address(1000, 1006, MissingPicture::slate));
    const QImage one = renderFrame(*slate->read(3)), other = renderFrame(*slate->read(4));
    EXPECT_NE(one, other) << "each says which it stands for";
    EXPECT_EQ(readBarCode(one), std::nullopt);
    EXPECT_EQ(number(*slate, 5), 1005);
}

/// The number is orange, and the only thing on the slate that is.
TEST_F(RunReaderTest, ASlatesNumberIsWholeAndItSaysWhyThereIsNoPicture) {
    const auto slateOf = [&](int missing, QSize size) {
        writePicture(barCodePicture(pathOf(1), 1, size));
        const auto reader = opened(address(1, missing, MissingPicture::slate));
        const Result<VideoFrame> frame = reader->read(missing - 1);
        const QImage slate = frame ? renderFrame(*frame) : QImage();
        if (const QString shots = qEnvironmentVariable("DAYLARK_PANEL_SHOTS"); !shots.isEmpty())
            slate.save(shots + u"/slate-%1-%2.png"_s.arg(missing).arg(size.width()));
        return slate;
    };
    const auto numberOn = [](const QImage& slate) {
        QRect orange;
        for (int y = 0; y < slate.height(); ++y)
            for (int x = 0; x < slate.width(); ++x)
                if (const QColor at = slate.pixelColor(x, y); at.red() > at.blue() + 40) orange |= QRect(x, y, 1, 1);
        return orange;
    };
    for (const QSize size : {QSize(192, 108), QSize(1920, 1080), QSize(108, 192), QSize(2048, 300)})
        for (const int missing : {2, 1008, 999'999}) {
            const QRect number = numberOn(slateOf(missing, size));
            ASSERT_FALSE(number.isNull());
            EXPECT_TRUE(QRect(QPoint(), size).adjusted(1, 1, -1, -1).contains(number)) << size.width() << ' ' << missing;
            EXPECT_NEAR(number.center().x(), size.width() / 2, size.width() / 20.0) << "as much on either side";
        }
    // One that is not there and one that is cut off have different reasons; the numbers are the same.
    const QSize usual(640, 360);
    const QImage absent = slateOf(2, usual);
    QFile broken(pathOf(2));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("v/1\x01 cut off");
    broken.close();
    const QImage damaged = slateOf(2, usual);
    EXPECT_EQ(numberOn(absent), numberOn(damaged));
    EXPECT_NE(absent, damaged);
}

/// A slate's background is as dark as no picture's here, and its crossed lines meet in its middle.
TEST_F(RunReaderTest, WhatStandsInIsShownInTheShapeOfTheRunsPictures) {
    struct Shape {
        const char *name, *text;
        float aspect;
        QSize shown;
    };
    for (const Shape& shape : {Shape{"exr", nullptr, 2, {384, 108}}, Shape{"exr", nullptr, 0.5F, {96, 108}},
                               Shape{"tif", "6", 1, {108, 192}}, Shape{"tif", "8", 1, {108, 192}},
                               Shape{"tif", "3", 1, {192, 108}}, Shape{"tif", "5", 1, {108, 192}}}) {
        SCOPED_TRACE(std::string(shape.name) + ' ' + (shape.text ? shape.text : "") + ' ' + std::to_string(shape.aspect));
        RunAddress run = address(1001, 1003);
        run.movie.run.suffix = u'.' + QLatin1String(shape.name);
        for (const int number : {1001, 1003}) {
            WrittenPicture picture = barCodePicture(run.pathOf(number), number);
            picture.reals = {{"PixelAspectRatio", shape.aspect}};
            picture.orientation = shape.text ? std::atoi(shape.text) : 1;
            if (shape.text) picture.numbers = "uint8";
            writePicture(picture);
        }
        for (const MissingPicture missing : {MissingPicture::held, MissingPicture::black, MissingPicture::slate}) {
            run.view.missing = missing;
            const auto reader = opened(run);
            ASSERT_TRUE(reader);
            const Result<VideoFrame> whole = reader->read(0), other = reader->read(1);
            ASSERT_TRUE(whole && other);
            EXPECT_EQ(whole->displaySize(), shape.shown);
            EXPECT_EQ(other->displaySize(), shape.shown) << int(missing);
        }
        // The number stands upright, in letters of the usual shape: much the same as on a plain slate of that size.
        const auto orange = [](const QImage& slate) {
            QRect found;
            for (int y = 0; y < slate.height(); ++y)
                for (int x = 0; x < slate.width(); ++x)
                    if (const QColor at = slate.pixelColor(x, y); at.red() > at.blue() + 40) found |= QRect(x, y, 1, 1);
            return found;
        };
        RunAddress plain = address(1, 2, MissingPicture::slate);
        plain.movie.run.prefix = u"plain."_s;
        writePicture(barCodePicture(plain.pathOf(1), 1, shape.shown));
        plain.movie.run.last = 1002;
        const QRect usual = orange(renderFrame(*opened(plain)->read(1001)));
        const QRect seen = orange(renderFrame(*opened(run)->read(1)).scaled(shape.shown));
        ASSERT_FALSE(usual.isNull() || seen.isNull());
        EXPECT_NEAR(seen.center().x(), usual.center().x(), 3);
        EXPECT_NEAR(seen.center().y(), usual.center().y(), 3);
        EXPECT_NEAR(seen.width(), usual.width(), 5);
        EXPECT_NEAR(seen.height(), usual.height(), 5);
    }
}

TEST_F(RunReaderTest, AHalfWrittenPictureIsMissingUntilItIsWhole) {
    make({1001, 1002, 1003});
    QFile file(pathOf(1002));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    file.close();
    const auto write = [&](const QByteArray& bytes) {
        QFile out(pathOf(1002));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    };
    for (const qsizetype length : {whole.size() / 2, whole.size() - 100, qsizetype(40), qsizetype(0)}) {
        write(whole.left(length));
        const auto reader = opened(address(1001, 1003));
        EXPECT_EQ(number(*reader, 1), 1001) << length;
        EXPECT_EQ(number(*reader, 2), 1003) << length;
        write(whole);
        EXPECT_EQ(number(*reader, 1), 1002) << "looked for anew";
    }
    write(whole.left(50));
    EXPECT_TRUE(probeMovie(address(1002, 1003).text())) << "the first header that can be read will do";
}

TEST_F(RunReaderTest, PicturesOfEveryKindKeepTheirNumbers) {
    struct Kind {
        const char *extension, *numbers;
        PicturePlanes::Numbers read;
        double tolerance;
    };
    using Numbers = PicturePlanes::Numbers;
    for (const Kind& kind : {Kind{"exr", "half", Numbers::half, 1e-3}, Kind{"exr", "float", Numbers::real, 1e-6},
                             Kind{"dpx", "uint10", Numbers::whole, 2e-3}, Kind{"dpx", "uint8", Numbers::whole, 3e-3},
                             Kind{"tif", "uint8", Numbers::whole, 3e-3}, Kind{"tif", "uint16", Numbers::whole, 2e-5},
                             Kind{"tif", "float", Numbers::real, 1e-6}, Kind{"png", "uint8", Numbers::whole, 3e-3},
                             Kind{"png", "uint16", Numbers::whole, 2e-5}, Kind{"jpg", "uint8", Numbers::whole, 0.03},
                             Kind{"tga", "uint8", Numbers::whole, 3e-3}, Kind{"webp", "uint8", Numbers::whole, 0.06},
                             Kind{"hdr", "float", Numbers::real, 0.01}}) {
        const QString what = u"%1 %2"_s.arg(QLatin1String(kind.extension), QLatin1String(kind.numbers));
        for (const int number : {7, 8}) {
            WrittenPicture picture =
                barCodePicture(folder.filePath(u"a.%1.%2"_s.arg(number).arg(QLatin1String(kind.extension))), number);
            picture.numbers = kind.numbers;
            writePicture(picture);
        }
        RunAddress run;
        run.folder = folder.path();
        run.movie.run = {u"a."_s, u"."_s + QLatin1String(kind.extension), 0, false, 7, 8, 1};
        const auto reader = opened(run);
        ASSERT_TRUE(reader) << what.toStdString();
        EXPECT_EQ(number(*reader, 1), 8) << what.toStdString();
        const Result<VideoFrame> frame = reader->read(0);
        ASSERT_TRUE(frame);
        const PicturePlanes planes = planesOf(*frame);
        EXPECT_EQ(planes.numbers, kind.read) << what.toStdString();
        const QImage image = renderFrame(*frame, {}, true);
        const QColor colour = image.pixelColor(96, 80);
        EXPECT_NEAR(colour.redF(), 200 / 255.0, kind.tolerance + 1e-4) << what.toStdString();
        EXPECT_NEAR(colour.blueF(), 40 / 255.0, kind.tolerance + 1e-4) << what.toStdString();
    }
}

TEST_F(RunReaderTest, LightBeyondWhiteIsThereWhenItIsDarkened) {
    for (const char* numbers : {"half", "float"}) {
        WrittenPicture bright = barCodePicture(pathOf(1), 4711, {192, 108}, 8); // white is eight times white
        bright.numbers = numbers;
        writePicture(bright);
        const auto reader = opened(address(1, 1));
        const Result<VideoFrame> frame = reader->read(0);
        ASSERT_TRUE(frame);
        EXPECT_TRUE(frame->isSceneLinear());
        EXPECT_GE(frame->byteCount(), 192 * 108 * 3 * (numbers[0] == 'h' ? 2 : 4)) << "counts at its size";
        EXPECT_EQ(renderFrame(*frame).pixelColor(96, 80), QColor(Qt::white));
        PictureRequest darker;
        darker.colour.map = {{{0.125, 0, 0, 0}, {0, 0.125, 0, 0}, {0, 0, 0.125, 0}}};
        const QColor seen = renderPicture(*frame, darker).pixelColor(96, 80);
        EXPECT_NEAR(seen.red(), 200, 1) << numbers;
        EXPECT_NEAR(seen.green(), 120, 1) << numbers;
        EXPECT_NEAR(seen.blue(), 40, 1) << numbers;
        EXPECT_EQ(readBarCode(renderPicture(*frame, darker)), 4711);
    }
}

TEST_F(RunReaderTest, LayersPartsAndSingleChannels) {
    WrittenPicture picture = barCodePicture(pathOf(1), 11);
    test::addLayer(picture, u"diffuse"_s, 22);
    test::addChannel(picture, "A", [](int x, int) { return x < 96 ? 0.5F : 1.0F; });
    test::addChannel(picture, "Z", [](int x, int) { return x < 10 ? 1e10F : 100.0F + float(x); });
    WrittenPicture part = barCodePicture(QString(), 33);
    part.path = picture.path;
    part.partName = "right";
    picture.partName = "left";
    picture.further = {part};
    writePicture(picture);
    const QStringList layers = layersOfRun(address(1, 1));
    for (const QString& name : {u"diffuse"_s, u"A"_s, u"Z"_s, u"right"_s, u"diffuse.R"_s})
        EXPECT_TRUE(layers.contains(name)) << name.toStdString() << " of " << layers.join(u' ').toStdString();
    const auto shown = [&](const QString& layer) {
        RunAddress run = address(1, 1);
        run.movie.layer = layer;
        const auto reader = opened(run);
        const Result<VideoFrame> frame = reader ? reader->read(0) : Error{};
        return frame ? renderFrame(*frame) : QImage();
    };
    EXPECT_EQ(readBarCode(shown({})), 11);
    EXPECT_EQ(readBarCode(shown(u"diffuse"_s)), 22);
    EXPECT_EQ(readBarCode(shown(u"right"_s)), 33);
    EXPECT_EQ(shown(u"diffuse.R"_s).pixelColor(96, 80), QColor(200, 200, 200));
    EXPECT_NEAR(shown(u"A"_s).pixelColor(20, 80).green(), 128, 1);
    const QImage depth = shown(u"Z"_s); // 110 to 291, what is as good as infinite left out
    EXPECT_EQ(depth.pixelColor(10, 80).green(), 0);
    EXPECT_EQ(depth.pixelColor(191, 80).green(), 255);
    EXPECT_EQ(depth.pixelColor(3, 80).green(), 255);
    EXPECT_NEAR(shown(u"Z[100,400]"_s).pixelColor(100, 80).green(), 85, 1);
    RunAddress none = address(1, 1);
    none.movie.layer = u"Z"_s;
    EXPECT_EQ(opened(none)->read(0)->colourSpace(), u"data"_s) << "no colour: not through a display's view";
    none.movie.layer = u"specular"_s;
    const Result<VideoFrame> nothing = opened(none)->read(0);
    ASSERT_FALSE(nothing);
    EXPECT_TRUE(nothing.error().text.contains(u"has no layer \"specular\""_s)) << nothing.error().text.toStdString();
}

TEST_F(RunReaderTest, APictureThatLacksTheLayerIsMissingAndNeverShownAsItsColours) {
    for (const int number : {1001, 1002, 1003}) {
        WrittenPicture picture = barCodePicture(pathOf(number), 1);
        if (number != 1002) test::addLayer(picture, u"diffuse"_s, number);
        writePicture(picture);
    }
    const auto opening = [&](MissingPicture missing) {
        RunAddress run = address(1001, 1003, missing);
        run.movie.layer = u"diffuse"_s;
        return opened(run);
    };
    const auto held = opening(MissingPicture::held);
    const int shown[] = {1001, 1001, 1003};
    for (const int n : {1, 0, 2, 1}) // in jumps and by reading ahead
        EXPECT_EQ(number(*held, n), shown[n]) << n;
    EXPECT_EQ(renderFrame(*opening(MissingPicture::black)->read(1)).pixelColor(96, 54), QColor(Qt::black));
    const auto slate = opening(MissingPicture::slate);
    EXPECT_EQ(number(*slate, 1), std::nullopt);
    EXPECT_EQ(number(*slate, 2), 1003);
    // A layer that none has leaves nothing to be held.
    RunAddress none = address(1001, 1003);
    none.movie.layer = u"specular"_s;
    EXPECT_FALSE(opened(none)->read(1));
}

/// What comes down a level further is white: none of it may show, whatever is asked for.
TEST_F(RunReaderTest, OfSmallerLevelsNoneIsShown) {
    for (const QString& suffix : {u"exr"_s, u"tif"_s})
        for (const QSize size : {QSize(192, 108), QSize(193, 109), QSize(181, 97)})
            for (const auto levels : {WrittenPicture::Levels::halved, WrittenPicture::Levels::halvedUp,
                                      WrittenPicture::Levels::eachWay}) {
                if (suffix == u"tif"_s && levels != WrittenPicture::Levels::halved) continue;
                const QString path = folder.filePath(u"levels.0001."_s + suffix);
                WrittenPicture picture = barCodePicture(path, 1234, size);
                picture.tiles = true;
                picture.levels = levels;
                if (suffix == u"exr"_s) test::addLayer(picture, u"diffuse"_s, 2345);
                writePicture(picture);
                RunAddress run;
                run.folder = folder.path();
                run.movie.run = {u"levels."_s, u'.' + suffix, 4, false, 1, 1, 1};
                for (const bool ofLayer : {false, true}) {
                    if (ofLayer && suffix != u"exr"_s) continue;
                    run.movie.layer = ofLayer ? u"diffuse"_s : QString();
                    const auto reader = opened(run);
                    ASSERT_TRUE(reader);
                    const Result<VideoFrame> frame = reader->read(0);
                    ASSERT_TRUE(frame) << frame.error().text.toStdString();
                    const QImage shown = renderFrame(*frame);
                    EXPECT_EQ(shown.size(), size);
                    EXPECT_EQ(readBarCode(shown), ofLayer ? 2345 : 1234) << path.toStdString() << ' ' << int(levels);
                }
            }
}

TEST_F(RunReaderTest, DataWindowsPixelShapesAndTiles) {
    WrittenPicture inner = barCodePicture(pathOf(1), 1, {96, 54});
    inner.x = 48, inner.y = 27, inner.fullWidth = 192, inner.fullHeight = 108;
    writePicture(inner);
    WrittenPicture outer = barCodePicture(pathOf(2), 2, {192, 108});
    outer.x = -20, outer.y = -30, outer.fullWidth = 100, outer.fullHeight = 50;
    outer.tiles = true;
    writePicture(outer);
    WrittenPicture wide = barCodePicture(pathOf(3), 3);
    wide.reals = {{"PixelAspectRatio", 2.0F}};
    writePicture(wide);
    const auto reader = opened(address(1, 3));
    const QImage placed = renderFrame(*reader->read(0));
    EXPECT_EQ(placed.size(), QSize(192, 108));
    EXPECT_EQ(placed.pixelColor(20, 20), QColor(Qt::black));
    EXPECT_EQ(readBarCode(placed.copy(48, 27, 96, 54)), 1);
    const QImage cut = renderFrame(*reader->read(1));
    EXPECT_EQ(cut.size(), QSize(100, 50));
    EXPECT_EQ(cut.pixelColor(50, 25), QColor(200, 120, 40)) << "a picture of tiles, cut to its display window";
    EXPECT_EQ(reader->read(2)->displaySize(), QSize(384, 108));
}

TEST_F(RunReaderTest, DeepPicturesAndOtherThingsAreRefusedWithAReason) {
    WrittenPicture deep = barCodePicture(pathOf(1), 1, {16, 16});
    deep.deep = true;
    writePicture(deep);
    const auto refused = FrameReader::open(address(1, 1).text());
    ASSERT_FALSE(refused);
    EXPECT_TRUE(refused.error().text.contains(u"deep"_s)) << refused.error().text.toStdString();
    QFile text(pathOf(2));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(4000, 'x'));
    text.close();
    EXPECT_FALSE(FrameReader::open(address(2, 2).text()));
    EXPECT_FALSE(FrameReader::open(address(5, 9).text())) << "none there";
    EXPECT_FALSE(probeMovie(address(5, 9).text()));
}

TEST_F(RunReaderTest, ARunGrowsAtItsEndUnlessItKeepsItsEnds) {
    make({1001, 1002, 1003, 1004, 1005});
    RunAddress run = address(1001, 1003);
    EXPECT_EQ(opened(run)->index().count(), 5);
    Movie movie(pathOf(1001));
    movie.frameRun = run.movie;
    applyRun(movie, probeMovie(run.text())->run);
    EXPECT_EQ(movie.frameRun->run.last, 1005);
    EXPECT_EQ(movie.frameRun->run.first, 1001);
    run.movie.isFixed = true;
    EXPECT_EQ(opened(run)->index().count(), 3);
}

TEST_F(RunReaderTest, WhatATypedPathMeans) {
    make({1001, 1002, 1004});
    const auto meant = [this](const QString& name) {
        const Result<RunAddress> run = runMeantBy(folder.filePath(name));
        return run ? run->movie.run.text() : run.error().text;
    };
    for (const QString& name : {u"sh010.####.exr"_s, u"sh010.%04d.exr"_s, u"sh010.#.exr"_s, u"sh010.1001-1004#.exr"_s, u"."_s,
                                u"sh010.1002.exr"_s})
        EXPECT_EQ(meant(name), u"sh010.1001-1004#.exr"_s) << name.toStdString();
    EXPECT_EQ(meant(u"sh010.1002-1003#.exr"_s), u"sh010.1002-1003#.exr"_s);
    EXPECT_FALSE(runMeantBy(folder.filePath(u"sh020.####.exr"_s)));
    for (const int number : {1, 2, 3})
        writePicture(barCodePicture(folder.filePath(u"sh010.%1.exr"_s.arg(number)), number));
    EXPECT_FALSE(runMeantBy(folder.path())) << "two runs: which?";
    EXPECT_EQ(meant(u"sh010.@.exr"_s), u"sh010.1-3@.exr"_s);
    EXPECT_EQ(mediaMeantBy(u"/no/such.mov"_s, {}).operator*(), u"/no/such.mov"_s);
}

TEST_F(RunReaderTest, APipeADeviceOrAFolderAmongThePicturesIsNoPictureAndKeepsNobodyWaiting) {
    make({2, 5});
    ASSERT_EQ(::mkfifo(QFile::encodeName(pathOf(1)).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(u"/dev/zero"_s, pathOf(3)));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pathOf(4)).constData(), 0600), 0);
    ASSERT_TRUE(QDir(folder.path()).mkdir(pathOf(6)));
    const auto reader = opened(address(1, 6));
    ASSERT_TRUE(reader);
    for (const auto& [frame, shown] : std::map<int, int>{{0, 2}, {1, 2}, {2, 2}, {3, 2}, {4, 5}, {5, 5}})
        EXPECT_EQ(number(*reader, frame), shown) << frame;

    QFile::remove(pathOf(2));
    QFile::remove(pathOf(5));
    const auto none = FrameReader::open(address(1, 6).text());
    ASSERT_FALSE(none);
    EXPECT_EQ(none.error().text, u"not a file"_s);
}

TEST_F(RunReaderTest, PicturesThatClaimMoreThanThereCanBeAreRefused) {
    make({1});
    QFile file(pathOf(1));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    QByteArray bytes = file.readAll();
    for (const qint32 far : {99'999, 2'000'000'000, -5}) {
        for (const QByteArray& window : {QByteArray("dataWindow"), QByteArray("displayWindow")}) {
            const qsizetype at = bytes.indexOf(window) + window.size() + 1 + 6 + 4; // its kind and size, then the near corner
            ASSERT_GT(at, 20);
            std::memcpy(bytes.data() + at + 8, &far, sizeof far);
            std::memcpy(bytes.data() + at + 12, &far, sizeof far);
        }
        ASSERT_TRUE(file.seek(0) && file.write(bytes) == bytes.size() && file.flush());
        EXPECT_FALSE(FrameReader::open(address(1, 1).text())) << far;
    }
}

/// Every opening of a file in a folder, as the kernel tells it.
class OpenedFiles {
public:
    explicit OpenedFiles(const QString& folder)
        : queue_(::inotify_init1(IN_NONBLOCK)) {
        ::inotify_add_watch(queue_, QFile::encodeName(folder).constData(), IN_OPEN);
    }
    ~OpenedFiles() { ::close(queue_); }
    OpenedFiles(const OpenedFiles&) = delete;
    OpenedFiles& operator=(const OpenedFiles&) = delete;
    [[nodiscard]] QSet<QByteArray> names() const {
        QSet<QByteArray> names;
        alignas(inotify_event) char buffer[65536];
        for (ssize_t size = 0; (size = ::read(queue_, buffer, sizeof buffer)) > 0;)
            for (const char* at = buffer; at < buffer + size;) {
                const auto* event = reinterpret_cast<const inotify_event*>(at);
                if (event->len > 0) names.insert(event->name);
                at += sizeof(inotify_event) + event->len;
            }
        return names;
    }

private:
    int queue_;
};

TEST_F(RunReaderTest, AThousandPicturesAreOpenedByTheirNamesAndOneHeader) {
    make({1001});
    for (int number = 1002; number <= 2000; ++number)
        ASSERT_TRUE(QFile::link(pathOf(1001), pathOf(number)));
    const OpenedFiles files(folder.path());
    const auto reader = opened(address(1001, 2000));
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->index().count(), 1000);
    EXPECT_EQ(files.names(), QSet<QByteArray>{"sh010.1001.exr"});
}

TEST_F(RunReaderTest, OneOfAnotherSizeIsShownAsItIs) {
    make({1001, 1003});
    writePicture(barCodePicture(pathOf(1002), 1002, {96, 54}));
    const auto reader = opened(address(1001, 1003));
    EXPECT_EQ(reader->read(1)->displaySize(), QSize(96, 54));
    EXPECT_EQ(number(*reader, 1), 1002);
    EXPECT_EQ(number(*reader, 2), 1003);
}

TEST_F(RunReaderTest, AFolderThatIsRenamedAwayIsMissedAndFoundAgain) {
    make({1001, 1002, 1030}); // the last lies beyond what is read ahead
    const auto reader = opened(address(1001, 1030));
    EXPECT_EQ(number(*reader, 0), 1001);
    const QString away = folder.path() + u"-away"_s;
    ASSERT_TRUE(QDir().rename(folder.path(), away));
    const Result<VideoFrame> none = reader->read(29);
    EXPECT_FALSE(none);
    EXPECT_FALSE(FrameReader::open(address(1001, 1030).text()));
    ASSERT_TRUE(QDir().rename(away, folder.path()));
    EXPECT_EQ(number(*reader, 29), 1030) << "looked for anew";
}

TEST_F(RunReaderTest, RunsThatDifferInTheirPaddingAloneAreTwo) {
    for (const int number : {1, 2, 3, 4}) {
        writePicture(barCodePicture(folder.filePath(u"a.%1.png"_s.arg(number, 4, 10, QLatin1Char('0'))), number));
        writePicture(barCodePicture(folder.filePath(u"a.%1.png"_s.arg(number)), number + 100));
    }
    const auto shown = [this](int padding) {
        RunAddress run;
        run.folder = folder.path();
        run.movie.run = {u"a."_s, u".png"_s, padding, false, 1, 4, 1};
        const auto reader = opened(run);
        return reader ? number(*reader, 2) : std::nullopt;
    };
    EXPECT_EQ(shown(4), 3);
    EXPECT_EQ(shown(0), 103);
    EXPECT_EQ(picturesTakenApart(fileNamesIn(folder.path())).runs.size(), 2U);
}

} // namespace
} // namespace daylark
