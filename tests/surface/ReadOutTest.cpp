#include "viewer/ViewerFixture.h"

#include "support/MovieMaker.h"
#include "ui/picture/PictureView.h"
#include "ui/picture/PixelPlate.h"
#include "ui/viewer/ViewerWindow.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

#include <set>

namespace daylark {

using namespace Qt::StringLiterals;

namespace {

/// The whole viewer in a display of its own, and a pointer that the display moves: what the read-out says is what the screen
/// shows there, by either renderer.
class PictureViewReadOutTest : public ViewerFixture, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        if (QGuiApplication::platformName() != u"xcb"_s) GTEST_SKIP() << "no pointer, and no screen to look at";
        preferences.pictureRenderer.set(valueOfWord<RendererChoice>(QLatin1String(GetParam())));
        preferences.displayPixelReadOut.set(true);
        window = std::make_unique<ViewerWindow>(controller);
        window->resize(1280, 860);
        ASSERT_TRUE(bench::waitUntil([this] { return view()->rendererName().startsWith(QLatin1String(GetParam())); }))
            << qPrintable(view()->rendererName());
        MovieSpec spec;
        spec.path = folder.filePath(u"squares.mov"_s);
        spec.size = size;
        spec.frames = 4;
        spec.barCode = false;
        spec.paint = [](QPainter& painter, int) {
            for (int row = 0; row < 5; ++row)
                for (int column = 0; column < 10; ++column)
                    painter.fillRect(column * 32, row * 36, 32, 36,
                                     QColor::fromHsv(36 * column, 60 + 40 * row, 80 + 15 * column));
        };
        ASSERT_TRUE(makeMovie(spec));
        show({record(spec.path)});
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
    [[nodiscard]] PictureView* view() const { return window->picture(); }
    /// What a person sees, around that point of the picture view.
    [[nodiscard]] QImage onScreen(const QPoint& at) const {
        const QPoint global = view()->mapToGlobal(at);
        const QPixmap seen = view()->screen()->grabWindow(0, global.x() - 1, global.y() - 1, 3, 3);
        return seen.toImage().convertToFormat(QImage::Format_RGB32);
    }
    [[nodiscard]] static bool isEven(const QImage& part) {
        for (int y = 0; y < part.height(); ++y)
            for (int x = 0; x < part.width(); ++x)
                if (part.pixel(x, y) != part.pixel(0, 0)) return false;
        return !part.isNull();
    }
    static constexpr QSize size{320, 180};
    QTemporaryDir folder;
    std::unique_ptr<ViewerWindow> window;
};

TEST_P(PictureViewReadOutTest, SaysWhatTheScreenShowsUnderThePointer) {
    const auto* plate = window->findChild<PixelPlate*>();
    ASSERT_TRUE(plate && plate->isVisible());
    std::set<QRgb> compared;
    for (const bool graded : {false, true}) {
        if (graded) controller.grade().setValue(ViewerGrade::exposure, 0.7);
        ASSERT_TRUE(bench::waitUntil([this] { return view()->isDrawn() && player.pictureIsCurrent(); }));
        const QRect picture = view()->pictureRect().toAlignedRect().intersected(view()->rect());
        for (int row = 1; row < 6; ++row)
            for (int column = 1; column < 12; ++column) {
                const QPoint at(picture.left() + picture.width() * column / 12, picture.top() + picture.height() * row / 6);
                QCursor::setPos(view()->mapToGlobal(at));
                const QRectF shown = view()->pictureRect();
                const QPoint pixel(int((at.x() + 0.5 - shown.x()) * size.width() / shown.width()),
                                   int((at.y() + 0.5 - shown.y()) * size.height() / shown.height()));
                const auto isThere = [&] {
                    const auto& values = controller.pixels().values();
                    return values && (values->place - pixel).manhattanLength() <= 2;
                };
                ASSERT_TRUE(bench::waitUntil(isThere)) << at.x() << ' ' << at.y();
                // The plate steps aside, and the screen follows a moment later.
                QColor colour;
                std::array<int, 3> said{};
                const bool agrees = bench::waitUntil([&] {
                    const QImage seen = onScreen(at);
                    colour = isEven(seen) ? seen.pixelColor(1, 1) : QColor(); // else between two of the picture's pixels
                    said = controller.pixels().values()->shownCodes();
                    return !colour.isValid() ||
                           std::max({std::abs(said[0] - colour.red()), std::abs(said[1] - colour.green()),
                                     std::abs(said[2] - colour.blue())}) <= 2;
                });
                EXPECT_TRUE(agrees) << at.x() << ' ' << at.y() << ": " << said[0] << ' ' << said[1] << ' ' << said[2] << ", "
                                    << qPrintable(colour.name()) << (graded ? " graded" : "");
                if (colour.isValid()) compared.insert(colour.rgb());
            }
    }
    EXPECT_GE(compared.size(), 30U) << "too even a picture to tell anything";
}

INSTANTIATE_TEST_SUITE_P(Renderers, PictureViewReadOutTest, ::testing::Values("Software", "OpenGL"),
                         [](const auto& renderer) { return std::string(renderer.param); });

} // namespace
} // namespace daylark
