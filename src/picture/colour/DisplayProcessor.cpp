#include "picture/colour/DisplayProcessor.h"

#include "picture/colour/ColourLibrary.h"
#include "picture/colour/DisplaySteps.h"

#include <algorithm>
#include <array>
#include <vector>

namespace daylark {

namespace {

constexpr unsigned tableEdge = 65;
/// Light from 0 to 2^7, by stops above 2^-8 and evenly below.
constexpr float darkestStop = -8, brightestStop = 7, lightAtZero = 0.00390625F;
constexpr unsigned widestTexture = 4096;

/// Steps that cost more than looking things up in a table.
bool takesLong(const ocio::ConstProcessorRcPtr& processor) {
    const ocio::GroupTransformRcPtr steps = processor->createGroupTransform();
    for (int i = 0; i < steps->getNumTransforms(); ++i)
        switch (steps->getTransform(i)->getTransformType()) {
        case ocio::TRANSFORM_TYPE_FIXED_FUNCTION:
        case ocio::TRANSFORM_TYPE_GRADING_PRIMARY:
        case ocio::TRANSFORM_TYPE_GRADING_RGB_CURVE:
        case ocio::TRANSFORM_TYPE_GRADING_TONE:
            return true;
        default:
            break;
        }
    return false;
}

/// The numbers that a table of that edge stands for.
ocio::AllocationTransformRcPtr tableScale(bool isLight) {
    const auto scale = ocio::AllocationTransform::Create();
    if (isLight) {
        const float stops[] = {darkestStop, brightestStop, lightAtZero};
        scale->setAllocation(ocio::ALLOCATION_LG2);
        scale->setVars(3, stops);
    } else {
        const float wholeRange[] = {0, 1};
        scale->setAllocation(ocio::ALLOCATION_UNIFORM);
        scale->setVars(2, wholeRange);
    }
    return scale;
}

} // namespace

DisplayProcessor::DisplayProcessor(const DisplayTransform& transform, std::unique_ptr<Library> library)
    : transform_(transform)
    , library_(std::move(library)) {
    library_->exact = onFloats(library_->processor);
    makeShader();
}

DisplayProcessor::~DisplayProcessor() = default;

bool DisplayProcessor::hasQuickForm() const {
    return library_->steps || library_->table;
}

void DisplayProcessor::apply(float* rgba, qsizetype pixels) const {
    applyTo(library_->exact, rgba, pixels);
}

void DisplayProcessor::applyQuickly(float* const* rgb, qsizetype pixels) const {
    if (library_->steps) return library_->steps->apply(rgb, pixels);
    constexpr qsizetype block = 1024;
    std::array<float, 4 * block> rgba;
    for (qsizetype done = 0; done < pixels; done += block) {
        const qsizetype count = std::min(block, pixels - done);
        for (qsizetype x = 0; x < count; ++x) {
            float* const pixel = rgba.data() + 4 * x;
            for (qsizetype channel = 0; channel < 3; ++channel)
                pixel[channel] = rgb[channel][done + x];
            pixel[3] = 1;
        }
        applyTo(library_->table ? library_->table : library_->exact, rgba.data(), count);
        for (qsizetype x = 0; x < count; ++x)
            for (qsizetype channel = 0; channel < 3; ++channel)
                rgb[channel][done + x] = rgba[size_t(4 * x + channel)];
    }
}

void DisplayProcessor::makeQuickForm(bool isLight) {
    if (!takesLong(library_->processor)) return;
    library_->steps = DisplaySteps::of(library_->processor, isLight);
    if (!library_->steps) makeTable(isLight);
}

void DisplayProcessor::makeTable(bool isLight) {
    const auto nothing = ocio::Config::CreateRaw();
    const ocio::AllocationTransformRcPtr there = tableScale(isLight), back = tableScale(isLight);
    back->setDirection(ocio::TRANSFORM_DIR_INVERSE);
    std::vector<float> lattice(size_t(tableEdge) * tableEdge * tableEdge * 4, 1.0F);
    const float step = 1.0F / float(tableEdge - 1);
    float* out = lattice.data();
    for (unsigned r = 0; r < tableEdge; ++r)
        for (unsigned g = 0; g < tableEdge; ++g)
            for (unsigned b = 0; b < tableEdge; ++b, out += 4)
                out[0] = float(r) * step, out[1] = float(g) * step, out[2] = float(b) * step;
    const auto pixels = qsizetype(lattice.size() / 4);
    applyTo(onFloats(nothing->getProcessor(back)), lattice.data(), pixels);
    applyTo(library_->exact, lattice.data(), pixels);
    const auto table = ocio::Lut3DTransform::Create(tableEdge);
    table->setInterpolation(ocio::INTERP_TETRAHEDRAL);
    const float* in = lattice.data();
    for (unsigned r = 0; r < tableEdge; ++r)
        for (unsigned g = 0; g < tableEdge; ++g)
            for (unsigned b = 0; b < tableEdge; ++b, in += 4)
                table->setValue(r, g, b, in[0], in[1], in[2]);
    const auto both = ocio::GroupTransform::Create();
    both->appendTransform(there);
    both->appendTransform(table);
    library_->table = onFloats(nothing->getProcessor(both));
}

void DisplayProcessor::makeShader() {
    ocio::GpuShaderDescRcPtr description = ocio::GpuShaderDesc::CreateShaderDesc();
    description->setLanguage(ocio::GPU_LANGUAGE_GLSL_1_3);
    description->setFunctionName("displayed");
    description->setResourcePrefix("display_");
    description->setTextureMaxWidth(widestTexture);
    library_->processor->getDefaultGPUProcessor()->extractGpuShaderInfo(description);
    shader_.text = description->getShaderText();
    for (unsigned i = 0; i < description->getNum3DTextures(); ++i) {
        const char *texture = nullptr, *sampler = nullptr;
        unsigned edge = 0;
        ocio::Interpolation interpolation{};
        description->get3DTexture(i, texture, sampler, edge, interpolation);
        const float* values = nullptr;
        description->get3DTextureValues(i, values);
        const int side = int(edge);
        shader_.tables.push_back({sampler, 3, side, side, side, 3, interpolation != ocio::INTERP_NEAREST,
                                  std::vector<float>(values, values + size_t(edge) * edge * edge * 3)});
    }
    for (unsigned i = 0; i < description->getNumTextures(); ++i) {
        const char *texture = nullptr, *sampler = nullptr;
        unsigned width = 0, height = 0;
        ocio::GpuShaderDesc::TextureType channel{};
        ocio::Interpolation interpolation{};
        description->getTexture(i, texture, sampler, width, height, channel, interpolation);
        const float* values = nullptr;
        description->getTextureValues(i, values);
        const int channels = channel == ocio::GpuShaderDesc::TEXTURE_RED_CHANNEL ? 1 : 3;
        // A table of one row is looked up along a line.
        shader_.tables.push_back({sampler, height > 1 ? 2 : 1, int(width), int(height), 1, channels,
                                  interpolation != ocio::INTERP_NEAREST,
                                  std::vector<float>(values, values + size_t(width) * height * size_t(channels))});
    }
}

} // namespace daylark
