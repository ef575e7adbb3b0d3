#pragma once

#include "base/Result.h"
#include "picture/PicturePlanes.h"
#include "picture/PictureRenderer.h"
#include "picture/gl/GlPictureFunctions.h"
#include "picture/scene/PictureLayer.h"

#include <QPoint>
#include <QSize>
#include <QString>

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace daylark {

/// Draws pictures with OpenGL 3.3 core, by the same arithmetic as the software renderer and within one step
/// of 255 of it: whole numbers in, weights, matrix and what a display wants in the shader, in floating point. Textures are kept
/// from picture to picture of a size; a picture that is drawn again is not uploaded again. Knows no window:
/// the context must be current on the calling thread in every call, the destructor's included. Fails only on
/// creation and for pictures larger than the device's textures.
class GlPictureRenderer {
public:
    [[nodiscard]] static Result<std::unique_ptr<GlPictureRenderer>>
    create(const GlPictureFunctions::Resolver& resolve);
    ~GlPictureRenderer();
    GlPictureRenderer(const GlPictureRenderer&) = delete;
    GlPictureRenderer& operator=(const GlPictureRenderer&) = delete;

    /// Draws `request.visible` into the bound framebuffer of size `target`, its upper left pixel on pixel
    /// `at` counted from the framebuffer's upper left. `request.size` must not be empty, `visible` must lie
    /// within the picture; `deep` is not looked at. Leaves blending, depth test and scissor off.
    [[nodiscard]] Result<void> draw(const PicturePlanes& picture, const PictureRequest& request, QSize target,
                                    QPoint at);

    /// Lays them over what is there, pixel on pixel, the first lowest. Keeps the textures of these until the
    /// next call.
    void drawLayers(const std::vector<PictureLayer>& layers, QSize target);

    [[nodiscard]] QString deviceName() const; ///< what the driver calls itself

private:
    struct Texture {
        GLuint id = 0;
        QSize size;
        GLint inside = 0; ///< how the device keeps it
    };
    /// One variant of the shader, and where its parameters are.
    struct Program {
        GLuint id = 0;
        std::map<std::string, GLint> places;
    };
    GlPictureRenderer() = default;
    [[nodiscard]] Result<Program*> built(int key, const std::string& fragment,
                                         const std::vector<const char*>& names);
    [[nodiscard]] Result<Program*> programFor(const PicturePlanes& picture, const ColourTransform& colour);
    void takeDisplay(const std::shared_ptr<const DisplayProcessor>& display);
    void forgetDisplay();
    void uploadTable(const DisplayShader::Table& table);
    void upload(const PicturePlanes& picture);
    void uploadPlane(Texture& texture, const PicturePlanes& picture, size_t place);
    void setGeometry(const Program& program, const PicturePlanes& picture, const PictureRequest& request,
                     QSize target, QPoint at) const;
    void setColour(const Program& program, const PicturePlanes& picture, const ColourTransform& colour) const;

    GlPictureFunctions gl_;
    GLuint vertexArray_ = 0;
    GLint largestTexture_ = 0;
    std::array<Texture, 4> textures_;
    PicturePlanes uploaded_;          ///< kept, so that its address stands for it
    std::map<qint64, GLuint> layers_; ///< textures by the image's key
    std::map<int, Program> programs_;
    /// What pictures are brought to a display by: part of the programs that say so, with tables of its own.
    struct DisplayTable {
        GLuint id = 0;
        GLenum target = 0;
        std::string sampler;
    };
    std::shared_ptr<const DisplayProcessor> display_;
    std::vector<DisplayTable> displayTables_;
};

} // namespace daylark
