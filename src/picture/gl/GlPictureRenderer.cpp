#include "picture/gl/GlPictureRenderer.h"

#include <QtGui/qopenglext.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace daylark {

namespace {

// One triangle that covers the viewport.
constexpr const char* vertexSource = R"(#version 330 core
void main() {
    gl_Position = vec4(gl_VertexID == 1 ? 3.0 : -1.0, gl_VertexID == 2 ? 3.0 : -1.0, 0.0, 1.0);
}
)";

// The triangle filter looks at every sample within reach of the pixel's place; samples beyond the edge are
// the edge's.
constexpr const char* fragmentSource = R"(
#ifdef FLOATS
#define PLANE sampler2D
float valueOf(float value) { return value == value ? clamp(value, -1e30, 1e30) : 0.0; }
#else
#define PLANE usampler2D
float valueOf(uint value) { return float(value); }
#endif
uniform PLANE plane0, plane1, plane2, plane3;
uniform ivec2 corner; // the lower left pixel of the visible part in the framebuffer
uniform int rows;
uniform bool turned;
// A place on the grid of a plane's samples is whole + start + pixel * slope.
uniform ivec2 lumaWhole, chromaWhole;
uniform vec2 lumaStart, lumaSlope, lumaReach, chromaStart, chromaSlope, chromaReach;
uniform float white;
uniform mat3 toRgb;
uniform vec3 black;
uniform vec3 gain;
uniform float power, scale, curveOfZero;
uniform mat3 map;
uniform vec3 mapOffset;
out vec4 colour;

float resampled(PLANE plane, ivec2 whole, vec2 at, vec2 reach) {
    ivec2 first = ivec2(floor(at - reach)) + 1, last = ivec2(ceil(at + reach)) - 1;
    ivec2 edge = textureSize(plane, 0) - 1;
    float sum = 0.0, total = 0.0;
    for (int y = first.y; y <= last.y; ++y) {
        float rowWeight = 1.0 - abs(float(y) - at.y) / reach.y;
        int row = clamp(y + whole.y, 0, edge.y);
        for (int x = first.x; x <= last.x; ++x) {
            float weight = rowWeight * (1.0 - abs(float(x) - at.x) / reach.x);
            sum += weight * valueOf(texelFetch(plane, ivec2(clamp(x + whole.x, 0, edge.x), row), 0).r);
            total += weight;
        }
    }
    return sum / total;
}

void main() {
    ivec2 fragment = ivec2(gl_FragCoord.xy) - corner;
    vec2 pixel = vec2(float(fragment.x), float(rows - 1 - fragment.y));
    if (turned) pixel = pixel.yx;
    vec2 luma = lumaStart + pixel * lumaSlope;
    vec3 c = vec3(resampled(plane0, lumaWhole, luma, lumaReach), 0.0, 0.0);
#ifndef GREY
    vec2 chroma = chromaStart + pixel * chromaSlope;
    c.y = resampled(plane1, chromaWhole, chroma, chromaReach);
    c.z = resampled(plane2, chromaWhole, chroma, chromaReach);
#endif
    vec3 rgb = toRgb * (c * white) + black;
#ifdef DISPLAY
    rgb = displayed(vec4(rgb, 1.0)).rgb;
#endif
#ifdef CURVE
    vec3 bent = max(gain * rgb, 0.0);
    for (int i = 0; i < 3; ++i)
        bent[i] = bent[i] > 0.0 ? min(pow(bent[i], power), 1048576.0) : curveOfZero;
    rgb = scale * bent;
#endif
#ifdef MAP
    rgb = map * rgb + mapOffset;
#endif
    for (int i = 0; i < 3; ++i)
        rgb[i] = rgb[i] > 0.0 ? min(rgb[i], 1.0) : 0.0; // what is not a number is black
#ifdef ALPHA
    rgb *= resampled(plane3, lumaWhole, luma, lumaReach) * white;
#endif
    colour = vec4(rgb, 1.0);
}
)";

constexpr const char* layerSource = R"(#version 330 core
uniform sampler2D layer;
uniform ivec2 corner;
uniform int rows;
out vec4 colour;
void main() {
    ivec2 fragment = ivec2(gl_FragCoord.xy) - corner;
    colour = texelFetch(layer, ivec2(fragment.x, rows - 1 - fragment.y), 0);
}
)";
constexpr int layerProgram = -1; // beside the variants of the picture's

constexpr int greyVariant = 1, alphaVariant = 2, curveVariant = 4, mapVariant = 8, floatVariant = 16,
              displayVariant = 32;

bool hasMap(const ColourTransform& colour) {
    return colour.map != ColourTransform{}.map;
}

/// Where target pixels lie on one axis of a plane, relative to the first visible one.
struct AxisPlacement {
    int whole = 0;
    double start = 0, slope = 1, reach = 1;
};

/// `samples`: the picture's luma samples along the axis; `pixels`: what it covers of the target, of which
/// `first` is the first wanted, counted backwards from the end when `backwards`. `step` and `shift`: the
/// plane's own grid on luma's.
AxisPlacement axisPlacement(int samples, int pixels, int first, bool backwards, int step, double shift) {
    const double perPixel = double(samples) / pixels;
    const double pixel = backwards ? double(pixels) - 1 - first : first;
    const double at = ((pixel + 0.5) * perPixel - 0.5 - shift) / step;
    AxisPlacement placement;
    placement.slope = (backwards ? -perPixel : perPixel) / step;
    placement.reach = std::max(1.0, perPixel / step);
    placement.whole = int(std::floor(at));
    placement.start = at - placement.whole;
    return placement;
}

} // namespace

Result<std::unique_ptr<GlPictureRenderer>>
GlPictureRenderer::create(const GlPictureFunctions::Resolver& resolve) {
    std::unique_ptr<GlPictureRenderer> renderer(new GlPictureRenderer);
    if (!renderer->gl_.load(resolve)) return Error{QStringLiteral("no OpenGL 3.3")};
    const GlPictureFunctions& gl = renderer->gl_;
    gl.GetIntegerv(GL_MAX_TEXTURE_SIZE, &renderer->largestTexture_);
    gl.GenVertexArrays(1, &renderer->vertexArray_);
    // Whether shaders work at all is told by the most common one.
    PicturePlanes plain;
    const uchar sample = 0;
    plain.planes[1].data = &sample;
    if (const Result<Program*> program = renderer->programFor(plain, {}); !program) return program.error();
    return renderer;
}

GlPictureRenderer::~GlPictureRenderer() {
    for (const Texture& texture : textures_)
        if (texture.id) gl_.DeleteTextures(1, &texture.id);
    for (const auto& [key, id] : layers_)
        gl_.DeleteTextures(1, &id);
    forgetDisplay();
    for (const auto& [key, program] : programs_)
        gl_.DeleteProgram(program.id);
    if (vertexArray_) gl_.DeleteVertexArrays(1, &vertexArray_);
}

QString GlPictureRenderer::deviceName() const {
    return QString::fromLatin1(reinterpret_cast<const char*>(gl_.GetString(GL_RENDERER)));
}

Result<GlPictureRenderer::Program*> GlPictureRenderer::built(int key, const std::string& fragment,
                                                             const std::vector<const char*>& names) {
    if (const auto found = programs_.find(key); found != programs_.end()) return &found->second;
    const GLuint id = gl_.CreateProgram();
    std::string log;
    for (const auto& [kind, source] :
         {std::pair(GL_VERTEX_SHADER, std::string(vertexSource)), std::pair(GL_FRAGMENT_SHADER, fragment)}) {
        const GLuint shader = gl_.CreateShader(GLenum(kind));
        const char* text = source.c_str();
        gl_.ShaderSource(shader, 1, &text, nullptr);
        gl_.CompileShader(shader);
        std::array<char, 200> said{};
        gl_.GetShaderInfoLog(shader, GLsizei(said.size()), nullptr, said.data());
        log += said.data();
        gl_.AttachShader(id, shader);
        gl_.DeleteShader(shader); // with its program
    }
    gl_.LinkProgram(id);
    GLint linked = 0;
    gl_.GetProgramiv(id, GL_LINK_STATUS, &linked);
    if (!linked) {
        gl_.DeleteProgram(id);
        return Error{QStringLiteral("shader: %1").arg(QString::fromLatin1(log.c_str()).simplified())};
    }
    Program& program = programs_[key];
    program.id = id;
    for (const char* name : names)
        program.places[name] = gl_.GetUniformLocation(id, name); // -1, which is ignored, where there is none
    return &program;
}

Result<GlPictureRenderer::Program*> GlPictureRenderer::programFor(const PicturePlanes& picture,
                                                                  const ColourTransform& colour) {
    const int variant = (picture.isGrey() ? greyVariant : 0) | (picture.hasAlpha() ? alphaVariant : 0) |
                        (colour.hasCurve() ? curveVariant : 0) | (hasMap(colour) ? mapVariant : 0) |
                        (picture.numbers == PicturePlanes::Numbers::whole ? 0 : floatVariant) |
                        (display_ ? displayVariant : 0);
    std::string source = "#version 330 core\n";
    if (display_) source += "#define DISPLAY\n" + display_->shader().text;
    if (variant & greyVariant) source += "#define GREY\n";
    if (variant & alphaVariant) source += "#define ALPHA\n";
    if (variant & curveVariant) source += "#define CURVE\n";
    if (variant & mapVariant) source += "#define MAP\n";
    if (variant & floatVariant) source += "#define FLOATS\n";
    std::vector<const char*> names{
        "plane0",      "plane1",      "plane2",      "plane3", "corner", "rows",  "turned", "lumaWhole",
        "lumaStart",   "lumaSlope",   "lumaReach",   "chromaWhole", "chromaStart", "chromaSlope", "chromaReach",
        "white",       "toRgb",       "black",       "gain",   "power",  "scale", "curveOfZero", "map", "mapOffset"};
    for (const DisplayTable& table : displayTables_)
        names.push_back(table.sampler.c_str());
    return built(variant, source + fragmentSource, names);
}

void GlPictureRenderer::uploadPlane(Texture& texture, const PicturePlanes& picture, size_t place) {
    const PicturePlanes::Plane& plane = picture.planes[place];
    const int bytesPerSample = picture.bytesPerSample;
    const bool isHalf = picture.numbers == PicturePlanes::Numbers::half;
    const bool isWhole = picture.numbers == PicturePlanes::Numbers::whole;
    const GLenum type = isHalf                ? GL_HALF_FLOAT
                        : !isWhole            ? GL_FLOAT
                        : bytesPerSample == 1 ? GL_UNSIGNED_BYTE
                                              : GL_UNSIGNED_SHORT;
    const GLint inside = isHalf ? GL_R16F : !isWhole ? GL_R32F : bytesPerSample == 1 ? GL_R8UI : GL_R16UI;
    const GLenum form = isWhole ? GL_RED_INTEGER : GL_RED;
    if (!texture.id) {
        gl_.GenTextures(1, &texture.id);
        gl_.BindTexture(GL_TEXTURE_2D, texture.id);
        for (const GLenum filter : {GL_TEXTURE_MIN_FILTER, GL_TEXTURE_MAG_FILTER})
            gl_.TexParameteri(GL_TEXTURE_2D, filter, GL_NEAREST);
        gl_.TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
    }
    gl_.BindTexture(GL_TEXTURE_2D, texture.id);
    if (texture.size != plane.size || texture.inside != inside) {
        gl_.TexImage2D(GL_TEXTURE_2D, 0, inside, plane.size.width(), plane.size.height(), 0, form, type, nullptr);
        texture.size = plane.size;
        texture.inside = inside;
    }
    const bool inOneGo =
        plane.stride >= qsizetype(plane.size.width()) * bytesPerSample && plane.stride % bytesPerSample == 0;
    const int rows =
        inOneGo ? plane.size.height() : 1; // upside down, or nothing a row length can say: row by row
    gl_.PixelStorei(GL_UNPACK_ROW_LENGTH, inOneGo ? GLint(plane.stride / bytesPerSample) : 0);
    for (int y = 0; y < plane.size.height(); y += rows)
        gl_.TexSubImage2D(GL_TEXTURE_2D, 0, 0, y, plane.size.width(), rows, form, type,
                          plane.data + y * plane.stride);
}

void GlPictureRenderer::upload(const PicturePlanes& picture) {
    const auto same = [](const PicturePlanes& a, const PicturePlanes& b) {
        for (size_t i = 0; i < a.planes.size(); ++i)
            if (a.planes[i].data != b.planes[i].data || a.planes[i].size != b.planes[i].size) return false;
        return a.keep && a.bytesPerSample == b.bytesPerSample && a.numbers == b.numbers;
    };
    if (same(uploaded_, picture)) return;
    gl_.PixelStorei(GL_UNPACK_ALIGNMENT, 1);
    for (size_t i = 0; i < textures_.size(); ++i)
        if (picture.planes[i].data) uploadPlane(textures_[i], picture, i);
    gl_.PixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    gl_.PixelStorei(GL_UNPACK_ALIGNMENT, 4);
    uploaded_ = picture;
}

void GlPictureRenderer::setGeometry(const Program& program, const PicturePlanes& picture,
                                    const PictureRequest& request, QSize target, QPoint at) const {
    const QRect visible = request.visible.isNull() ? QRect({}, request.size) : request.visible;
    const auto place = [&](const char* name) { return program.places.at(name); };
    gl_.Viewport(at.x(), target.height() - at.y() - visible.height(), visible.width(), visible.height());
    gl_.Uniform2i(place("corner"), at.x(), target.height() - at.y() - visible.height());
    gl_.Uniform1i(place("rows"), visible.height());

    // Turned clockwise by 90 degrees, the row shown is found along the columns of samples, from the bottom
    // up.
    const bool turned = picture.orientation.isTurned();
    gl_.Uniform1i(place("turned"), turned);
    const bool backwardsX = request.mirrorLeftRight != picture.orientation.flipsX();
    const bool backwardsY = request.mirrorUpsideDown != picture.orientation.flipsY();
    struct Shown {
        int pixels, first;
        bool backwards;
    };
    Shown forX{request.size.width(), visible.x(), backwardsX},
        forY{request.size.height(), visible.y(), backwardsY};
    if (turned) std::swap(forX, forY);
    const auto setGrid = [&](const std::string& grid, int stepX, int stepY, double shiftX, double shiftY) {
        const AxisPlacement x =
            axisPlacement(picture.size().width(), forX.pixels, forX.first, forX.backwards, stepX, shiftX);
        const AxisPlacement y =
            axisPlacement(picture.size().height(), forY.pixels, forY.first, forY.backwards, stepY, shiftY);
        const auto part = [&](const char* name) { return program.places.at(grid + name); };
        gl_.Uniform2i(part("Whole"), x.whole, y.whole);
        gl_.Uniform2f(part("Start"), float(x.start), float(y.start));
        gl_.Uniform2f(part("Slope"), float(x.slope), float(y.slope));
        gl_.Uniform2f(part("Reach"), float(x.reach), float(y.reach));
    };
    setGrid("luma", 1, 1, 0, 0);
    setGrid("chroma", 1 << picture.log2ChromaWidth, 1 << picture.log2ChromaHeight, picture.chromaX,
            picture.chromaY);
}

void GlPictureRenderer::setColour(const Program& program, const PicturePlanes& picture,
                                  const ColourTransform& colour) const {
    const auto place = [&](const char* name) { return program.places.at(name); };
    const auto setMatrix = [&](const char* name, const auto& rows) {
        std::array<float, 9> columns{};
        for (size_t row = 0; row < 3; ++row)
            for (size_t column = 0; column < 3; ++column)
                columns[column * 3 + row] = float(rows[row][column]);
        gl_.UniformMatrix3fv(place(name), 1, GL_FALSE, columns.data());
    };
    const auto setVector = [&](const char* name, const std::array<double, 3>& values) {
        gl_.Uniform3f(place(name), float(values[0]), float(values[1]), float(values[2]));
    };
    gl_.Uniform1f(place("white"), float(1.0 / picture.codes()));
    setMatrix("toRgb", picture.toRgb);
    std::array<double, 3> black{};
    for (size_t row = 0; row < 3; ++row)
        for (size_t column = 0; column < 3; ++column)
            black[row] -= picture.toRgb[row][column] * picture.offset[column];
    setVector("black", black);
    setVector("gain", colour.gain);
    gl_.Uniform1f(place("power"), float(colour.power));
    gl_.Uniform1f(place("scale"), float(colour.scale));
    gl_.Uniform1f(place("curveOfZero"), float(std::min(std::pow(0.0, colour.power), 1048576.0)));
    setMatrix("map", colour.map);
    setVector("mapOffset", {colour.map[0][3], colour.map[1][3], colour.map[2][3]});
}

Result<void> GlPictureRenderer::draw(const PicturePlanes& picture, const PictureRequest& request,
                                     QSize target, QPoint at) {
    if (picture.isNull() || request.size.isEmpty()) return {};
    if (picture.size().width() > largestTexture_ || picture.size().height() > largestTexture_)
        return Error{QStringLiteral("the picture is larger than the device's textures")};
    takeDisplay(request.display);
    Result<Program*> program = programFor(picture, request.colour);
    if (!program) return program.error();
    upload(picture);
    for (size_t i = 0; i < displayTables_.size(); ++i) {
        gl_.ActiveTexture(GL_TEXTURE0 + GLenum(textures_.size() + i));
        gl_.BindTexture(displayTables_[i].target, displayTables_[i].id);
    }
    gl_.ActiveTexture(GL_TEXTURE0);
    for (const GLenum state :
         {GL_BLEND, GL_DEPTH_TEST, GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_CULL_FACE, GL_DITHER})
        gl_.Disable(state);
    gl_.UseProgram((*program)->id);
    setGeometry(**program, picture, request, target, at);
    setColour(**program, picture, request.colour);
    for (size_t i = 0; i < displayTables_.size(); ++i)
        gl_.Uniform1i((*program)->places.at(displayTables_[i].sampler), GLint(textures_.size() + i));
    for (size_t i = textures_.size(); i-- > 0;) {
        gl_.Uniform1i((*program)->places.at("plane" + std::to_string(i)), GLint(i));
        gl_.ActiveTexture(GL_TEXTURE0 + GLenum(i));
        gl_.BindTexture(GL_TEXTURE_2D, textures_[i].id);
    }
    gl_.BindVertexArray(vertexArray_);
    gl_.DrawArrays(GL_TRIANGLES, 0, 3);
    gl_.BindVertexArray(0);
    for (size_t i = textures_.size(); i-- > 0;) {
        gl_.ActiveTexture(GL_TEXTURE0 + GLenum(i));
        gl_.BindTexture(GL_TEXTURE_2D, 0);
    }
    gl_.UseProgram(0);
    gl_.Viewport(0, 0, target.width(), target.height());
    return {};
}

void GlPictureRenderer::forgetDisplay() {
    for (const DisplayTable& table : displayTables_)
        gl_.DeleteTextures(1, &table.id);
    displayTables_.clear();
    std::erase_if(programs_, [this](const auto& entry) {
        if (entry.first < 0 || !(entry.first & displayVariant)) return false;
        gl_.DeleteProgram(entry.second.id);
        return true;
    });
    display_.reset();
}

void GlPictureRenderer::takeDisplay(const std::shared_ptr<const DisplayProcessor>& display) {
    if (display == display_) return;
    forgetDisplay();
    display_ = display;
    if (!display_) return;
    for (const DisplayShader::Table& table : display_->shader().tables)
        uploadTable(table);
}

void GlPictureRenderer::uploadTable(const DisplayShader::Table& table) {
    DisplayTable made;
    made.sampler = table.sampler;
    made.target = table.dimensions == 1 ? GL_TEXTURE_1D : table.dimensions == 2 ? GL_TEXTURE_2D : GL_TEXTURE_3D;
    gl_.ActiveTexture(GL_TEXTURE0);
    gl_.GenTextures(1, &made.id);
    gl_.BindTexture(made.target, made.id);
    const GLint filter = table.interpolated ? GL_LINEAR : GL_NEAREST;
    for (const auto& [name, value] :
         {std::pair(GL_TEXTURE_MIN_FILTER, filter), std::pair(GL_TEXTURE_MAG_FILTER, filter),
          std::pair(GL_TEXTURE_WRAP_S, GLint(GL_CLAMP_TO_EDGE)), std::pair(GL_TEXTURE_WRAP_T, GLint(GL_CLAMP_TO_EDGE)),
          std::pair(GL_TEXTURE_WRAP_R, GLint(GL_CLAMP_TO_EDGE)), std::pair(GL_TEXTURE_MAX_LEVEL, 0)})
        gl_.TexParameteri(made.target, GLenum(name), value);
    const GLint format = table.channels == 1 ? GL_R32F : GL_RGB32F;
    const GLenum layout = table.channels == 1 ? GL_RED : GL_RGB;
    const float* values = table.values.data();
    if (table.dimensions == 1)
        gl_.TexImage1D(made.target, 0, format, table.width, 0, layout, GL_FLOAT, values);
    else if (table.dimensions == 2)
        gl_.TexImage2D(made.target, 0, format, table.width, table.height, 0, layout, GL_FLOAT, values);
    else
        gl_.TexImage3D(made.target, 0, format, table.width, table.height, table.depth, 0, layout, GL_FLOAT, values);
    gl_.BindTexture(made.target, 0);
    displayTables_.push_back(std::move(made));
}

void GlPictureRenderer::drawLayers(const std::vector<PictureLayer>& layers, QSize target) {
    std::map<qint64, GLuint> kept;
    const Result<Program*> program = built(layerProgram, layerSource, {"layer", "corner", "rows"});
    if (!program) return;
    gl_.UseProgram((*program)->id);
    gl_.BindVertexArray(vertexArray_);
    gl_.ActiveTexture(GL_TEXTURE0);
    gl_.Uniform1i((*program)->places.at("layer"), 0);
    gl_.Enable(GL_BLEND);
    gl_.BlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    for (const PictureLayer& layer : layers) {
        if (layer.image.isNull()) continue;
        GLuint& id = kept[layer.image.cacheKey()];
        if (const auto found = layers_.find(layer.image.cacheKey()); !id && found != layers_.end()) {
            id = found->second;
            layers_.erase(found);
        }
        const bool fresh = !id;
        if (fresh) gl_.GenTextures(1, &id);
        gl_.BindTexture(GL_TEXTURE_2D, id);
        if (fresh) {
            gl_.TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
            gl_.TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
            gl_.TexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, layer.image.width(), layer.image.height(), 0, GL_BGRA,
                           GL_UNSIGNED_INT_8_8_8_8_REV, layer.image.constBits());
        }
        const QPoint corner(layer.at.x(), target.height() - layer.at.y() - layer.image.height());
        gl_.Uniform2i((*program)->places.at("corner"), corner.x(), corner.y());
        gl_.Uniform1i((*program)->places.at("rows"), layer.image.height());
        gl_.Viewport(corner.x(), corner.y(), layer.image.width(), layer.image.height());
        gl_.DrawArrays(GL_TRIANGLES, 0, 3);
    }
    for (const auto& [key, id] : layers_)
        gl_.DeleteTextures(1, &id);
    layers_ = std::move(kept);
    gl_.Disable(GL_BLEND);
    gl_.BindTexture(GL_TEXTURE_2D, 0);
    gl_.BindVertexArray(0);
    gl_.UseProgram(0);
    gl_.Viewport(0, 0, target.width(), target.height());
}

} // namespace daylark
