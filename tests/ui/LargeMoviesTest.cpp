#include "ViewerWindowFixture.h"

#include "support/BusyWatch.h"

#include <QTemporaryDir>

#include <iostream>

namespace daylark {
namespace {

using test::allowedMs, test::BusyWatch, test::mostBusyMs;

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
    /// The longest turn in milliseconds.
    double turnOf(const char* name, const QString& path) {
        BusyWatch watch;
        show({record(path)});
        EXPECT_TRUE(pictureIsDrawn());
        key(Qt::Key_Right);
        EXPECT_TRUE(settled() && pictureIsDrawn());
        key(Qt::Key_End);
        EXPECT_TRUE(settled() && pictureIsDrawn());
        const double busy = watch.longestMs();
        std::cout << name << ": longest turn " << busy << " ms\n";
        return busy;
    }

    QTemporaryDir folder_;
};

TEST_F(LargeMoviesTest, TheFirstPictureAndStepsComeWithoutAPauseOfTheInterface) {
    const std::pair<const char*, QString> movies[] = {{"4K HEVC", made("4k.mp4", "libx265", {3840, 2160})},
                                                      {"4K H.264", made("4k.mov", "libx264", {3840, 2160})}};
    for (const auto& [name, path] : movies) {
        const double busy = turnOf(name, path);
        EXPECT_SHOWN(5);
        const double most = busy < mostBusyMs ? mostBusyMs
                                              : allowedMs(mostBusyMs, turnOf("small", made("small.mov", "libx264", {160, 90})));
        EXPECT_LT(busy, most) << name;
    }
}

} // namespace
} // namespace daylark
