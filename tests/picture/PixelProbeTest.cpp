#include "picture/PixelProbe.h"

#include "media/decode/FrameReader.h"
#include "media/sequence/RunFiles.h"
#include "picture/PictureRenderer.h"
#include "picture/scene/ScenePixel.h"
#include "support/MadeFrame.h"
#include "support/PictureMaker.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <set>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

/// What the renderer makes of the whole picture at its own size, 16 bits a component.
QImage wholePicture(const VideoFrame& frame, const PixelLook& look) {
    PictureRequest request;
    request.size = uprightSize(frame);
    request.colour = look.colour;
    request.display = look.display;
    request.deep = true;
    return renderPicture(frame, request);
}

int worstOf(const VideoFrame& frame, const PixelLook& look, unsigned seed) {
    const QImage whole = wholePicture(frame, look);
    std::mt19937 random(seed);
    double worst = 0;
    for (int i = 0; i < 60; ++i) {
        const bool isCorner = i < 4;
        const QPoint at(isCorner ? (i % 2) * (whole.width() - 1) : int(random() % unsigned(whole.width())),
                        isCorner ? (i / 2) * (whole.height() - 1) : int(random() % unsigned(whole.height())));
        const auto pixel = pixelAt(frame, at, look);
        if (!pixel) return 65535;
        const QRgba64 wanted = reinterpret_cast<const QRgba64*>(whole.constScanLine(at.y()))[at.x()];
        const double shown[] = {pixel->shown[0] * 65535, pixel->shown[1] * 65535, pixel->shown[2] * 65535};
        worst = std::max({worst, std::abs(shown[0] - wanted.red()), std::abs(shown[1] - wanted.green()),
                          std::abs(shown[2] - wanted.blue())});
    }
    return int(std::ceil(worst));
}

TEST(PixelProbeTest, IsWhatTheRendererMakesOfItHoweverThePictureIsStored) {
    ColourTransform brighter;
    brighter.map[0][0] = 1.25;
    brighter.map[1][3] = 0.1;
    for (const char* format : {"yuv420p", "yuv422p10le", "yuv444p12be", "yuv410p", "yuv440p", "nv12", "p010le", "uyvy422",
                               "rgb24", "bgra", "gbrp10le", "gbrapf32le", "gray", "gray16be", "rgb565le", "monow", "yuva420p"})
        for (const int rotation : {0, 90, 180, 270})
            for (const bool mirrored : {false, true}) {
                FrameWish wish;
                wish.format = format;
                wish.size = {46, 38};
                wish.rotation = rotation;
                wish.mirrored = mirrored;
                const VideoFrame frame = madeFrame(wish);
                ASSERT_FALSE(frame.isNull()) << format;
                EXPECT_LE(worstOf(frame, {nullptr, mirrored ? brighter : ColourTransform{}}, unsigned(rotation) + 1), 2)
                    << format << " " << rotation << " " << mirrored;
            }
    // Which colours are meant where nobody says goes by the picture's height, not by that of a few lines.
    FrameWish tall;
    tall.size = {16, 736};
    tall.colourSpace = 2;
    EXPECT_LE(worstOf(madeFrame(tall), {}, 9), 2);
}

TEST(PixelProbeTest, SaysCodeValuesOfWhatIsStoredAndNothingBesideThePicture) {
    FrameWish wish;
    wish.format = "yuv422p10le";
    const VideoFrame frame = madeFrame(wish);
    const auto pixel = pixelAt(frame, {40, 10}, {});
    ASSERT_TRUE(pixel);
    ASSERT_EQ(pixel->stored.size(), 3u);
    EXPECT_EQ(pixel->stored[0].channel, u"Y"_s);
    EXPECT_EQ(pixel->stored[1].channel, u"Cb"_s);
    EXPECT_TRUE(pixel->isCode);
    EXPECT_EQ(pixel->depth, 10);
    EXPECT_TRUE(pixel->stored[0].value == 0 || pixel->stored[0].value == 1023); // lines of black and white are drawn there
    for (const QPoint beside : {QPoint(-1, 0), QPoint(0, -1), QPoint(96, 0), QPoint(0, 64)})
        EXPECT_FALSE(pixelAt(frame, beside, {}));
    EXPECT_FALSE(pixelAt({}, {0, 0}, {}));
    wish.format = "bgra";
    const auto packed = pixelAt(madeFrame(wish), {5, 5}, {});
    ASSERT_TRUE(packed);
    ASSERT_EQ(packed->stored.size(), 4u);
    EXPECT_EQ(packed->stored[0].channel, u"R"_s);
    EXPECT_EQ(packed->stored[3].channel, u"A"_s);
}

TEST(PixelProbeTest, HueIsThatOfWhatIsShown) {
    const auto hueOf = [](double red, double green, double blue) {
        PixelValues values;
        values.shown = {red, green, blue};
        return values.hue();
    };
    EXPECT_FALSE(hueOf(0.5, 0.5, 0.5));
    EXPECT_NEAR(*hueOf(1, 0, 0), 0, 1e-9);
    EXPECT_NEAR(*hueOf(0.5, 0.5, 0), 60, 1e-9);
    EXPECT_NEAR(*hueOf(0, 0.2, 0.2), 180, 1e-9);
    EXPECT_NEAR(*hueOf(0.3, 0, 0.3), 300, 1e-9);
}

/// A picture of 4 x 3 whose data fill two pixels of the middle line, with a layer and a depth.
class LayersTest : public ::testing::Test {
protected:
    void SetUp() override {
        test::WrittenPicture picture;
        picture.path = folder.filePath(u"layers.1001.exr"_s).toStdString();
        picture.x = picture.y = 1;
        picture.width = 2;
        picture.height = 1;
        picture.fullWidth = 4;
        picture.fullHeight = 3;
        picture.channels = {"R", "G", "B", "diffuse.R", "diffuse.G", "diffuse.B", "Z"};
        picture.pixels = {0.18F, -2.5F, 12, 0.5F, 0.25F, 0.125F, 35, 1, std::numeric_limits<float>::infinity(), 0, 0, 0, 0, 110};
        test::writePicture(picture);
    }
    std::optional<PixelValues> pixel(const QString& layer, QPoint at) {
        RunAddress address;
        address.folder = folder.path();
        address.movie.run = {u"layers."_s, u".exr"_s, 4, false, 1001, 1001, 1};
        address.movie.layer = layer;
        auto reader = FrameReader::open(address.text());
        const auto frame = reader ? (*reader)->read(0) : Result<VideoFrame>(reader.error());
        if (!frame) ADD_FAILURE() << frame.error().text.toStdString();
        return frame ? pixelAt(*frame, at, {}) : std::nullopt;
    }
    QTemporaryDir folder;
};

TEST_F(LayersTest, NumbersAreTheFilesOwnUnderTheFilesOwnNames) {
    const auto colours = pixel({}, {1, 1});
    ASSERT_TRUE(colours);
    ASSERT_EQ(colours->stored.size(), 3u);
    EXPECT_FALSE(colours->isCode);
    EXPECT_EQ(colours->stored[1].channel, u"G"_s);
    EXPECT_NEAR(colours->stored[0].value, 0.18, 1e-4);
    EXPECT_EQ(colours->stored[1].value, -2.5);
    EXPECT_EQ(colours->stored[2].value, 12);
    EXPECT_EQ(colours->shownCodes()[1], 0); // a display has nothing below black, nor above white
    EXPECT_EQ(colours->shownCodes()[2], 255);
    EXPECT_TRUE(std::isinf(pixel({}, {2, 1})->stored[1].value));
    EXPECT_EQ(pixel({}, {0, 0})->stored[0].value, 0); // of the display window, beside the data
    const auto layer = pixel(u"diffuse"_s, {1, 1});
    ASSERT_TRUE(layer);
    EXPECT_EQ(layer->stored[0].channel, u"diffuse.R"_s);
    EXPECT_EQ(layer->stored[2].value, 0.125);
    // Brought between black and white for the eye, but not for whoever asks.
    const auto depth = pixel(u"Z[10,110]"_s, {1, 1});
    ASSERT_TRUE(depth);
    ASSERT_EQ(depth->stored.size(), 1u);
    EXPECT_EQ(depth->stored[0].channel, u"Z"_s);
    EXPECT_NEAR(depth->stored[0].value, 35, 1e-3);
    EXPECT_NEAR(depth->shown[0], 0.25, 1e-3);
}

/// Each pixel of a small picture is found under the pointer where it is drawn, with the colour that it is drawn in.
TEST(ScenePixelTest, ThePixelUnderThePointerIsTheOneThatIsDrawnThere) {
    for (const int rotation : {0, 90, 180, 270})
        for (int mirrors = 0; mirrors < 8; ++mirrors)
            for (const int aspect : {1, 2}) {
                FrameWish wish;
                wish.format = "gbrp";
                wish.size = {8, 6};
                wish.rotation = rotation;
                wish.mirrored = mirrors & 1;
                wish.pixelAspect = aspect;
                Scene scene;
                scene.frame = madeFrame(wish);
                scene.mirrorLeftRight = mirrors & 2;
                scene.mirrorUpsideDown = mirrors & 4;
                const QSize upright = uprightSize(scene.frame), shown = scene.frame.displaySize();
                const int across = 5 * shown.width() / upright.width(), down = 5 * shown.height() / upright.height();
                ASSERT_EQ(across * down, 25 * aspect); // pixels of the screen a pixel
                const QSize area(5 * shown.width() + 40, 5 * shown.height());
                scene.geometry.setArea(area);
                scene.geometry.setMovie(shown.width(), shown.height(), float(shown.width()) / float(shown.height()));
                const QImage image = renderScene(scene, area);
                std::set<std::pair<int, int>> found;
                for (int y = 0; y < upright.height(); ++y)
                    for (int x = 0; x < upright.width(); ++x) {
                        const QPoint at(20 + x * across + across / 2, y * down + down / 2);
                        const auto place = pixelUnder(scene, area, QPointF(at) + QPointF(0.3, 0.3));
                        ASSERT_TRUE(place);
                        found.insert({place->x(), place->y()});
                        if (across != 5 || down != 5) continue; // its middle lies between two
                        const auto pixel = pixelAt(scene.frame, *place, {});
                        ASSERT_TRUE(pixel);
                        const QColor drawn = image.pixelColor(at);
                        ASSERT_EQ(pixel->shownCodes(), (std::array<int, 3>{drawn.red(), drawn.green(), drawn.blue()}))
                            << rotation << " " << mirrors << " at " << x << ", " << y;
                    }
                EXPECT_EQ(found.size(), size_t(upright.width() * upright.height())); // each once
                EXPECT_FALSE(pixelUnder(scene, area, {19.9, 3}));
                EXPECT_FALSE(pixelUnder(scene, area, {area.width() - 20.0, 3}));
            }
}

TEST(ScenePixelTest, ZoomedAndMovedItIsStillTheOneThatIsSeen) {
    FrameWish wish;
    wish.format = "gbrp";
    wish.size = {64, 36};
    Scene scene;
    scene.frame = madeFrame(wish);
    scene.geometry.setArea({640, 360});
    scene.geometry.setMovie(64, 36, 64.0F / 36);
    EXPECT_EQ(pixelUnder(scene, {640, 360}, {320, 180}), QPoint(32, 18));
    scene.geometry.zoomAbout({640, 0}, 4); // the lower right corner stays
    EXPECT_EQ(pixelUnder(scene, {640, 360}, {639.5, 359.5}), QPoint(63, 35));
    EXPECT_EQ(pixelUnder(scene, {640, 360}, {639.5 - 40 * 3, 359.5 - 40 * 2}), QPoint(60, 33));
    EXPECT_EQ(pixelUnder(scene, {1280, 720}, {1279.5, 719.5}), QPoint(63, 35)); // on a finer screen
    scene.geometry.moveViewTo({2000, 0});
    EXPECT_FALSE(pixelUnder(scene, {640, 360}, {320, 180}));
    EXPECT_FALSE(pixelUnder({}, {640, 360}, {320, 180}));
}

} // namespace
} // namespace daylark
