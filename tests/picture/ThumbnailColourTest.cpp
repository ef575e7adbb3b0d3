#include "media/decode/FrameReader.h"
#include "model/runs/MovieRun.h"
#include "picture/PictureRenderer.h"
#include "picture/Thumbnail.h"
#include "support/MovieMaker.h"
#include "support/PictureMaker.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

/// The largest difference of a component.
int worstBetween(const QImage& one, const QImage& other) {
    if (one.size() != other.size()) return 255;
    int worst = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y), b = other.pixel(x, y);
            worst = std::max({worst, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                              std::abs(qBlue(a) - qBlue(b))});
        }
    return worst;
}

class ThumbnailColourTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (int number = 1001; number <= 1008; ++number)
            test::writePicture(test::barCodePicture(folder_.filePath(u"sh010.%1.exr"_s.arg(number)), number, {400, 224}, 4));
    }
    [[nodiscard]] ThumbnailRequest request(const QString& view, const QString& space = u"ACEScg"_s) const {
        return {run_, u"Middle Frame"_s, false, {{{}, {}, view, {}}, space, colours_}};
    }
    /// The picture at that place as the viewer's renderer makes it in this size.
    [[nodiscard]] QImage asInViewer(qint64 frame, const QString& view, QSize size) const {
        const auto reader = FrameReader::open(run_);
        if (!reader) return {};
        const auto picture = (*reader)->read(frame);
        const auto config = ColourConfig::own();
        const auto made = config->processor(config->fitted({u"ACEScg"_s, {}, view, {}}));
        if (!picture || !made) return {};
        PictureRequest request;
        request.size = size;
        request.display = *made;
        return renderPicture(*picture, request);
    }

    const QTemporaryDir folder_;
    const QString run_ = mediaAddress(folder_.filePath(u"sh010.1001.exr"_s),
                                      MovieRun{{u"sh010."_s, u".exr"_s, 4, false, 1001, 1008, 1}, {}, false, {}});
    const std::shared_ptr<StillColours> colours_ = std::make_shared<StillColours>();
};

TEST_F(ThumbnailColourTest, AThumbnailIsThePictureThatTheViewerShows) {
    const ThumbnailResult made = makeThumbnail(request({}));
    const QImage small = made.thumbnail.decode();
    ASSERT_EQ(small.size(), QSize(100, 56));
    EXPECT_LE(worstBetween(small, asInViewer(4, {}, small.size())), 1);
    EXPECT_GT(worstBetween(small, asInViewer(4, u"Raw"_s, small.size())), 20);
    // Light needs nobody's word; without anything to bring it to a display by it is shown raw.
    EXPECT_EQ(makeThumbnail(request({}, {})).thumbnail, made.thumbnail);
    ThumbnailRequest raw = request({});
    raw.colour = {};
    EXPECT_EQ(worstBetween(makeThumbnail(raw).thumbnail.decode(), asInViewer(4, u"Raw"_s, small.size())), 0);
    ThumbnailRequest broken = request({});
    broken.colour.choice.configuration = folder_.filePath(u"nothing.ocio"_s);
    EXPECT_EQ(makeThumbnail(broken).thumbnail, makeThumbnail(raw).thumbnail);
    broken.colour.inputSpace = u"Sepia"_s;
    broken.colour.choice.configuration.clear();
    EXPECT_EQ(makeThumbnail(broken).thumbnail, makeThumbnail(raw).thumbnail);
}

TEST_F(ThumbnailColourTest, TheSameFrameIsFoundAgainWhateverViewTheSmallOneWasMadeBy) {
    const Image raw = makeThumbnail(request(u"Raw"_s)).thumbnail;
    for (const QString& view : {QString(), u"Raw"_s, u"Colorimetric"_s}) {
        const QImage large = largerThumbnail(raw, request(view), 400);
        ASSERT_EQ(large.size(), QSize(400, 224)) << view.toStdString();
        EXPECT_LE(worstBetween(large, asInViewer(4, view, large.size())), 1) << view.toStdString();
    }
    const Image anew = sameThumbnailAnew(raw, request({}));
    EXPECT_LE(worstBetween(anew.decode(), asInViewer(4, {}, {100, 56})), 1);
    // One that a person chose is none of those, and is left alone.
    QImage chosen(100, 56, QImage::Format_RGB32);
    for (int y = 0; y < 56; ++y)
        for (int x = 0; x < 100; ++x)
            chosen.setPixel(x, y, qRgb(x * 2, y * 4, (x * y) % 256));
    EXPECT_TRUE(largerThumbnail(Image::fromQImage(chosen), request({}), 400).isNull());
    EXPECT_TRUE(sameThumbnailAnew(Image::fromQImage(chosen), request({})).isNil());
}

TEST_F(ThumbnailColourTest, AMovieIsUntouchedUntilAPersonGivesItASpace) {
    MovieSpec spec;
    spec.path = folder_.filePath(u"shot.mov"_s);
    spec.frames = 8;
    ASSERT_TRUE(makeMovie(spec));
    const ThumbnailRequest plain{spec.path, u"Middle Frame"_s};
    ThumbnailRequest coloured = plain;
    coloured.colour = {{{}, {}, u"Colorimetric"_s, {}}, {}, colours_};
    EXPECT_EQ(makeThumbnail(coloured).thumbnail.encoded(), makeThumbnail(plain).thumbnail.encoded());
    coloured.colour.inputSpace = u"ACEScct"_s;
    EXPECT_NE(makeThumbnail(coloured).thumbnail.encoded(), makeThumbnail(plain).thumbnail.encoded());
    const Image back = sameThumbnailAnew(makeThumbnail(coloured).thumbnail, plain); // taken away again
    EXPECT_EQ(worstBetween(back.decode(), makeThumbnail(plain).thumbnail.decode()), 0);
}

} // namespace
} // namespace daylark
