#include "picture/gl/GlPictureContext.h"

#include <QDir>
#include <QFile>
#include <QLatin1String>

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <array>
#include <vector>

namespace daylark {

namespace {

bool hasExtension(EGLDisplay display, const char* name) {
    const char* all = eglQueryString(display, EGL_EXTENSIONS);
    return all && QByteArray(all).split(' ').contains(name);
}

EGLDisplay platformDisplay(EGLenum platform, void* native) {
    const auto get =
        reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
    return get ? get(platform, native, nullptr) : EGL_NO_DISPLAY;
}

/// The displays to try, the best first.
std::vector<EGLDisplay> displaysOf(GlPictureContext::Where where) {
    switch (where) {
    case GlPictureContext::Where::x11:
        return {platformDisplay(EGL_PLATFORM_X11_EXT, EGL_DEFAULT_DISPLAY)};
    case GlPictureContext::Where::wayland:
        return {platformDisplay(EGL_PLATFORM_WAYLAND_EXT, EGL_DEFAULT_DISPLAY)};
    case GlPictureContext::Where::device:
        break;
    }
    std::vector<EGLDisplay> displays;
    const auto query = reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
    std::array<EGLDeviceEXT, 16> devices{};
    EGLint count = 0;
    if (query && query(EGLint(devices.size()), devices.data(), &count))
        for (size_t i = 0; i < size_t(count); ++i)
            displays.push_back(platformDisplay(EGL_PLATFORM_DEVICE_EXT, devices[i]));
    displays.push_back(platformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY));
    return displays;
}

EGLContext contextIn(EGLDisplay display) {
    const std::array<EGLint, 5> wanted{EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_SURFACE_TYPE, 0, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglChooseConfig(display, wanted.data(), &config, 1, &count) || count < 1) return EGL_NO_CONTEXT;
    const std::array<EGLint, 7> version{EGL_CONTEXT_MAJOR_VERSION,
                                        3,
                                        EGL_CONTEXT_MINOR_VERSION,
                                        3,
                                        EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                        EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                        EGL_NONE};
    return eglCreateContext(display, config, EGL_NO_CONTEXT, version.data());
}

} // namespace

Result<std::unique_ptr<GlPictureContext>> GlPictureContext::create(Where where) {
    for (EGLDisplay display : displaysOf(where)) {
        EGLint major = 0, minor = 0;
        if (display == EGL_NO_DISPLAY || !eglInitialize(display, &major, &minor)) continue;
        if (eglBindAPI(EGL_OPENGL_API) && hasExtension(display, "EGL_KHR_surfaceless_context")) {
            EGLContext context = contextIn(display);
            if (context != EGL_NO_CONTEXT &&
                eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context)) {
                std::unique_ptr<GlPictureContext> made(new GlPictureContext);
                made->display_ = display;
                made->context_ = context;
                return made;
            }
            if (context != EGL_NO_CONTEXT) eglDestroyContext(display, context);
        }
        eglTerminate(display);
    }
    eglReleaseThread();
    return Error{QStringLiteral("no OpenGL 3.3 context")};
}

GlPictureContext::~GlPictureContext() {
    eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(display_, context_);
    eglTerminate(display_);
    eglReleaseThread();
}

GlPictureFunctions::Resolver GlPictureContext::resolver() {
    return [](const char* name) { return reinterpret_cast<QFunctionPointer>(eglGetProcAddress(name)); };
}

QString GlPictureContext::deviceName() const {
    using GetString = const GLubyte*(QOPENGLF_APIENTRYP)(GLenum);
    const auto get = reinterpret_cast<GetString>(eglGetProcAddress("glGetString"));
    return get ? QString::fromLatin1(reinterpret_cast<const char*>(get(GL_RENDERER))) : QString();
}

bool isSoftwareRasteriser(const QString& deviceName) {
    for (const char* name : {"llvmpipe", "softpipe", "swrast", "swr", "swiftshader", "software"})
        if (deviceName.contains(QLatin1String(name), Qt::CaseInsensitive)) return true;
    return deviceName.isEmpty();
}

bool hasGraphicsDevice() {
    return !QDir(QStringLiteral("/dev/dri"))
                .entryList({QStringLiteral("renderD*"), QStringLiteral("card*")}, QDir::System)
                .isEmpty() ||
           QFile::exists(QStringLiteral("/dev/nvidiactl"));
}

} // namespace daylark
