#include "support/MadeFrame.h"

#include "picture/PicturePlanes.h"
#include "picture/PictureRenderer.h"
#include "picture/gl/GlPictureContext.h"
#include "picture/gl/GlPictureRenderer.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

/// Milliseconds for a picture, from the decoder's planes to finished pixels: the software renderer, and
/// OpenGL on the graphics device (or what stands in for it) with the upload and until it is done. Needs no
/// display.
namespace daylark {

namespace {

template<class Function>
Function glBenchFunction(const char* name) {
    return reinterpret_cast<Function>(GlPictureContext::resolver()(name));
}

double medianMs(const std::function<void(int)>& work) {
    std::vector<double> times;
    for (int i = 0; i < 9; ++i) {
        QElapsedTimer timer;
        timer.start();
        work(i);
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void bindTarget(QSize size) {
    GLuint texture = 0, buffer = 0;
    glBenchFunction<void (*)(GLsizei, GLuint*)>("glGenTextures")(1, &texture);
    glBenchFunction<void (*)(GLenum, GLuint)>("glBindTexture")(GL_TEXTURE_2D, texture);
    glBenchFunction<void (*)(GLenum, GLint, GLint, GLsizei, GLsizei, GLint, GLenum, GLenum, const void*)>(
        "glTexImage2D")(GL_TEXTURE_2D, 0, GL_RGBA8, size.width(), size.height(), 0, GL_RGBA, GL_UNSIGNED_BYTE,
                        nullptr);
    glBenchFunction<void (*)(GLsizei, GLuint*)>("glGenFramebuffers")(1, &buffer);
    glBenchFunction<void (*)(GLenum, GLuint)>("glBindFramebuffer")(GL_FRAMEBUFFER, buffer);
    glBenchFunction<void (*)(GLenum, GLenum, GLenum, GLuint, GLint)>("glFramebufferTexture2D")(
        GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
}

void run() {
    auto context = GlPictureContext::create(GlPictureContext::Where::device);
    auto renderer = context ? GlPictureRenderer::create(GlPictureContext::resolver()) : context.error();
    std::printf("OpenGL: %s\n", context ? qPrintable((*context)->deviceName()) : "none");
    ColourTransform grade;
    grade.gain = {1.1, 1, 0.9};
    grade.power = 0.8;
    grade.map = {{{1.2, -0.1, -0.1, 0.02}, {-0.1, 1.2, -0.1, 0.02}, {-0.1, -0.1, 1.2, 0.02}}};
    for (const char* format : {"yuv420p", "yuv422p10le", "gbrap12le"})
        for (const QSize size : {QSize(1280, 720), QSize(1920, 1080)})
            for (const bool graded : {false, true}) {
                // Two, so that each has to be uploaded.
                const VideoFrame frames[] = {madeFrame({format, {1920, 1080}}),
                                             madeFrame({format, {1920, 1080}})};
                PictureRequest request;
                request.size = size;
                if (graded) request.colour = grade;
                const double software = medianMs([&](int i) { (void)renderPicture(frames[i % 2], request); });
                double openGl = -1;
                if (renderer) {
                    bindTarget(size);
                    openGl = medianMs([&](int i) {
                        (void)(*renderer)->draw(planesOf(frames[i % 2]), request, size, {});
                        glBenchFunction<void (*)()>("glFinish")();
                    });
                }
                std::printf("%-12s 1920x1080 -> %4dx%-4d %-7s software %6.2f ms   OpenGL %6.2f ms\n", format,
                            size.width(), size.height(), graded ? "graded" : "neutral", software, openGl);
                std::fflush(stdout);
            }
}

} // namespace

} // namespace daylark

int main() {
    daylark::run();
    return 0;
}
