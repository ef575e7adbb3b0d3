#include "ViewerWindowFixture.h"

#include "support/BusyWatch.h"

#include <QTemporaryDir>

#include <iostream>

namespace daylark {
namespace {

using test::BusyWatch, test::mostBusyMs;

/// Movies whose single picture takes a decoder long, in the real window.
class LargeMoviesTest : public ViewerWindowFixture {
protected:
    QString made(const char* name, const char* encoder, QSize size) const {
        MovieSpec spec;
        spec.path = folder_.filePath(QLatin1String(name));
        spec.encoder = QLatin1String(encoder);
        spec.size = size;
        spec.frames = 5;
        spec.groupSize = 5;
        spec.encoderOptions = {{u"preset"_qs, u"ultrafast"_qs}};
        if (spec.encoder == QLatin1String("libx265")) spec.encoderOptions[u"x265-params"_qs] = u"log-level=none"_qs;
        const Result<void> done = makeMovie(spec);
        EXPECT_TRUE(done) << (done ? "" : done.error().text.toStdString());
        return spec.path;
    }

    QTemporaryDir folder_;
};

TEST_F(LargeMoviesTest, TheFirstPictureAndStepsComeWithoutAPauseOfTheInterface) {
    const std::pair<const char*, QString> movies[] = {{"4K HEVC", made("4k.mp4", "libx265", {3840, 2160})},
                                                      {"4K H.264", made("4k.mov", "libx264", {3840, 2160})}};
    for (const auto& [name, path] : movies) {
        BusyWatch watch;
        show({record(path)});
        ASSERT_TRUE(pictureIsDrawn());
        key(Qt::Key_Right);
        ASSERT_TRUE(settled() && pictureIsDrawn());
        key(Qt::Key_End);
        ASSERT_TRUE(settled() && pictureIsDrawn());
        const double busy = watch.longestMs();
        std::cout << name << ": longest turn " << busy << " ms\n";
        EXPECT_LT(busy, mostBusyMs) << name;
        EXPECT_SHOWN(5);
    }
}

} // namespace
} // namespace daylark
