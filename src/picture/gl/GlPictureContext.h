#pragma once

#include "base/Result.h"
#include "picture/gl/GlPictureFunctions.h"

#include <QString>

#include <memory>

namespace daylark {

/// An OpenGL 3.3 core context without a window, by way of EGL: to learn what draws before a window takes it
/// up, and to draw where there is no display. Current on the thread that made it from creation to
/// destruction, which happens on that thread too. Touches nothing of Qt's own connection to the display, so
/// any thread will do.
class GlPictureContext {
public:
    /// `x11` and `wayland`: what windows there would be drawn by. `device`: the graphics device itself, or
    /// the software rasteriser where there is none; needs no display.
    enum class Where { x11, wayland, device };
    [[nodiscard]] static Result<std::unique_ptr<GlPictureContext>> create(Where where);
    ~GlPictureContext();
    GlPictureContext(const GlPictureContext&) = delete;
    GlPictureContext& operator=(const GlPictureContext&) = delete;

    [[nodiscard]] static GlPictureFunctions::Resolver resolver();
    [[nodiscard]] QString deviceName() const;

private:
    GlPictureContext() = default;
    void* display_ = nullptr;
    void* context_ = nullptr;
};

/// A driver that calls itself so draws with the processor.
[[nodiscard]] bool isSoftwareRasteriser(const QString& deviceName);
/// Whether there is a graphics device at all; asked before any driver is loaded. Looks at a few device nodes;
/// any thread.
[[nodiscard]] bool hasGraphicsDevice();

} // namespace daylark
