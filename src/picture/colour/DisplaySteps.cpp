#include "picture/colour/DisplaySteps.h"

#include "picture/PictureKernels.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace daylark {

namespace {

using Curve = DisplayKernels::Curve;

constexpr float dimPower = -0.0188999772F; // of the luminance, for a surround that is dim in place of dark

bool isDiagonal(const ocio::MatrixTransform& transform) {
    double matrix[16];
    transform.getMatrix(matrix);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 4; ++j)
            if (i != j && matrix[4 * i + j] != 0) return false;
    return true;
}

/// Nothing but what is too small or too large is changed.
bool isPlainHold(const ocio::RangeTransform& range) {
    const bool holdsBelow = !range.hasMinInValue() || range.getMinInValue() == range.getMinOutValue();
    const bool holdsAbove = !range.hasMaxInValue() || range.getMaxInValue() == range.getMaxOutValue();
    return range.getStyle() == ocio::RANGE_CLAMP && holdsBelow && holdsAbove;
}

bool leavesChannelsAlone(const ocio::ConstTransformRcPtr& transform) {
    switch (transform->getTransformType()) {
    case ocio::TRANSFORM_TYPE_LOG:
    case ocio::TRANSFORM_TYPE_LOG_AFFINE:
    case ocio::TRANSFORM_TYPE_LOG_CAMERA:
    case ocio::TRANSFORM_TYPE_EXPONENT:
    case ocio::TRANSFORM_TYPE_EXPONENT_WITH_LINEAR:
    case ocio::TRANSFORM_TYPE_EXPOSURE_CONTRAST:
    case ocio::TRANSFORM_TYPE_RANGE:
    case ocio::TRANSFORM_TYPE_GRADING_RGB_CURVE:
        return true;
    case ocio::TRANSFORM_TYPE_LUT1D:
        return ocio::DynamicPtrCast<const ocio::Lut1DTransform>(transform)->getHueAdjust() == ocio::HUE_NONE;
    case ocio::TRANSFORM_TYPE_MATRIX:
        return isDiagonal(*ocio::DynamicPtrCast<const ocio::MatrixTransform>(transform));
    default:
        return false;
    }
}

/// How finely light goes through a curve; and code values, of which a small part is a large part of the light.
constexpr int lightBits = 9, codeBits = 12;

/// The numbers at the places of a curve's table.
std::vector<float> placesOf(int octaveBits) {
    const int perOctave = 1 << octaveBits, count = ((Curve::highest - Curve::lowest) << octaveBits) + 2;
    std::vector<float> values;
    for (int place = 0; place < count; ++place)
        values.push_back(std::ldexp(1.0F + float(place % perOctave) / float(perOctave), Curve::lowest + place / perOctave));
    return values;
}

float dimFactor(float luminance) {
    return std::pow(std::max(luminance, 1e-10F), dimPower);
}

/// Light as pictures have it, pure colours and what lies beyond the primaries among it; or code values.
std::vector<float> someColours(bool isLight) {
    constexpr int count = 6000;
    std::mt19937 random(3);
    std::normal_distribution<float> stops(-2.5F, 3.5F);
    std::uniform_real_distribution<float> codes(-0.05F, 1.05F);
    std::vector<float> rgba;
    for (int i = 0; i < count; ++i) {
        const float grey = isLight ? std::exp2(stops(random)) : codes(random);
        for (int channel = 0; channel < 3; ++channel) {
            const unsigned kind = random() % 16;
            const float any = isLight ? std::exp2(stops(random)) : codes(random);
            rgba.push_back(kind < 3 ? 0.0F : kind == 3 && isLight ? -any / 8 : kind < 8 ? grey : any);
        }
        rgba.push_back(1);
    }
    return rgba;
}

} // namespace

std::unique_ptr<const DisplaySteps> DisplaySteps::of(const ocio::ConstProcessorRcPtr& whole, bool isLight) {
    const ocio::GroupTransformRcPtr transforms =
        whole->getOptimizedProcessor(ocio::OPTIMIZATION_DEFAULT)->createGroupTransform();
    auto steps = std::make_unique<DisplaySteps>();
    Alone waiting;
    for (int i = 0; i < transforms->getNumTransforms(); ++i)
        if (!steps->take(transforms->getTransform(i), waiting, isLight)) return nullptr;
    if (!steps->takeCurves(waiting, isLight) || !steps->isNear(onFloats(whole), isLight)) return nullptr;
    return steps;
}

bool DisplaySteps::take(const ocio::ConstTransformRcPtr& transform, Alone& waiting, bool isLight) {
    if (leavesChannelsAlone(transform)) {
        waiting.push_back(transform);
        return true;
    }
    if (!takeCurves(waiting, isLight)) return false;
    if (const auto matrix = ocio::DynamicPtrCast<const ocio::MatrixTransform>(transform)) {
        if (matrix->getDirection() == ocio::TRANSFORM_DIR_FORWARD) takeMatrix(matrix);
        return matrix->getDirection() == ocio::TRANSFORM_DIR_FORWARD;
    }
    const auto function = ocio::DynamicPtrCast<const ocio::FixedFunctionTransform>(transform);
    return function && takeFunction(function);
}

void DisplaySteps::takeMatrix(const ocio::ConstMatrixTransformRcPtr& transform) {
    double matrix[16], offset[4];
    transform->getMatrix(matrix);
    transform->getOffset(offset);
    Step step;
    for (size_t i = 0; i < 3; ++i) {
        for (size_t j = 0; j < 3; ++j)
            step.matrix[4 * i + j] = float(matrix[4 * i + j]);
        step.matrix[4 * i + 3] = float(offset[i]);
    }
    steps_.push_back(std::move(step));
}

bool DisplaySteps::takeFunction(const ocio::ConstFixedFunctionTransformRcPtr& function) {
    if (function->getDirection() != ocio::TRANSFORM_DIR_FORWARD) return false;
    Step step;
    switch (function->getStyle()) {
    case ocio::FIXED_FUNCTION_ACES_GLOW_10:
        step.kind = Kind::glow;
        break;
    case ocio::FIXED_FUNCTION_ACES_RED_MOD_10:
        step.kind = Kind::darkenRed;
        break;
    case ocio::FIXED_FUNCTION_ACES_DARK_TO_DIM_10: {
        step.kind = Kind::dim;
        step.curves = std::make_unique<Curves>();
        std::vector<float>& values = step.curves->values[0];
        values = placesOf(lightBits);
        const float zero = dimFactor(0), nearest = values.front();
        std::transform(values.begin(), values.end(), values.begin(), dimFactor);
        step.curves->curves[0] = {values.data(), lightBits, zero, (values.front() - zero) / nearest, 0};
        break;
    }
    default:
        return false;
    }
    steps_.push_back(std::move(step));
    return true;
}

bool DisplaySteps::takeCurves(Alone& waiting, bool isLight) {
    if (waiting.empty()) return true;
    Step step;
    if (const auto range = ocio::DynamicPtrCast<const ocio::RangeTransform>(waiting.front());
        waiting.size() == 1 && range && isPlainHold(*range)) {
        step.kind = Kind::hold;
        constexpr float most = std::numeric_limits<float>::max();
        step.least = range->hasMinInValue() ? float(range->getMinInValue()) : -most;
        step.most = range->hasMaxInValue() ? float(range->getMaxInValue()) : most;
        waiting.clear();
        steps_.push_back(std::move(step));
        return true;
    }
    const auto group = ocio::GroupTransform::Create();
    for (const ocio::ConstTransformRcPtr& each : waiting)
        group->appendTransform(each->createEditableCopy());
    waiting.clear();
    const int bits = isLight || !steps_.empty() ? lightBits : codeBits;
    std::vector<float> values = placesOf(bits), rgba;
    const size_t zeroAt = values.size();
    values.push_back(0);
    constexpr int leastBelow = -10, mostBelow = 4; // what matters of numbers below zero, in octaves
    for (int octave = leastBelow; octave <= mostBelow; ++octave)
        values.push_back(-std::ldexp(1.0F, octave));
    for (const float value : values)
        rgba.insert(rgba.end(), {value, value, value, 1.0F});
    applyTo(onFloats(ocio::Config::CreateRaw()->getProcessor(group)), rgba.data(), qsizetype(values.size()));
    step.kind = Kind::curves;
    step.curves = std::make_unique<Curves>();
    Curves& curves = *step.curves;
    for (size_t channel = 0; channel < 3; ++channel) {
        const auto result = [&](size_t at) { return rgba[4 * at + channel]; };
        std::vector<float>& table = curves.values[channel];
        for (size_t place = 0; place < zeroAt; ++place)
            table.push_back(result(place));
        const float zero = result(zeroAt), below = (zero - result(values.size() - 1)) / -values.back();
        // Below zero nothing but a straight line is known.
        for (size_t at = zeroAt + 1; at < values.size(); ++at) {
            const float line = zero + below * values[at];
            if (!(std::abs(line - result(at)) <= 1e-4F * (1 + std::abs(line)))) return false;
        }
        if (channel > 0 && table == curves.values[0]) table.clear();
        const std::vector<float>& used = table.empty() ? curves.values[0] : table;
        curves.curves[channel] = {used.data(), bits, zero, (used.front() - zero) / values.front(), below};
    }
    steps_.push_back(std::move(step));
    return true;
}

bool DisplaySteps::isNear(const ocio::ConstCPUProcessorRcPtr& exact, bool isLight) const {
    constexpr float nearEnough = 0.25F / 255;
    std::vector<float> rgba = someColours(isLight);
    const size_t count = rgba.size() / 4;
    std::array<std::vector<float>, 3> planes;
    for (size_t i = 0; i < rgba.size(); ++i)
        if (i % 4 < 3) planes[i % 4].push_back(rgba[i]);
    float* const rgb[] = {planes[0].data(), planes[1].data(), planes[2].data()};
    apply(rgb, qsizetype(count));
    applyTo(exact, rgba.data(), qsizetype(count));
    for (size_t i = 0; i < rgba.size(); ++i) {
        if (i % 4 == 3) continue;
        const float wanted = std::clamp(rgba[i], 0.0F, 1.0F), made = std::clamp(planes[i % 4][i / 4], 0.0F, 1.0F);
        if (!(std::abs(wanted - made) <= nearEnough)) return false;
    }
    return true;
}

void DisplaySteps::apply(float* const* rgb, qsizetype count) const {
    constexpr qsizetype block = 1024; // stays in the nearest cache
    constexpr float largest = 1e9F;   // squares of it can be computed with
    const DisplayKernels& kernels = displayKernels();
    const PictureKernels& common = pictureKernels();
    for (qsizetype done = 0; done < count; done += block) {
        float* const part[] = {rgb[0] + done, rgb[1] + done, rgb[2] + done};
        const int pixels = int(std::min(block, count - done));
        kernels.hold(part, -largest, largest, pixels);
        for (const Step& step : steps_)
            switch (step.kind) {
            case Kind::matrix:
                common.multiply(part, step.matrix.data(), pixels);
                break;
            case Kind::hold:
                kernels.hold(part, step.least, step.most, pixels);
                break;
            case Kind::curves:
                for (size_t channel = 0; channel < 3; ++channel)
                    kernels.lookUp(part[channel], step.curves->curves[channel], pixels);
                break;
            case Kind::glow:
                kernels.glow(part, pixels);
                break;
            case Kind::darkenRed:
                kernels.darkenRed(part, pixels);
                break;
            case Kind::dim:
                kernels.dim(part, step.curves->curves[0], pixels);
                break;
            }
    }
}

} // namespace daylark
