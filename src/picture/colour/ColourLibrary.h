#pragma once

#include "picture/colour/DisplayProcessor.h"

#include <OpenColorIO/OpenColorIO.h>

namespace daylark {

namespace ocio = OCIO_NAMESPACE;

class DisplaySteps;

/// What a `DisplayProcessor` is of the library's. Internal to picture/colour.
struct DisplayProcessor::Library {
    ocio::ConstProcessorRcPtr processor;
    ocio::ConstCPUProcessorRcPtr exact;
    std::shared_ptr<const DisplaySteps> steps; ///< null, with `table`: exact is quick enough
    ocio::ConstCPUProcessorRcPtr table;        ///< null where there are steps
};

/// The library's optimised form of it, on floats in and out.
[[nodiscard]] inline ocio::ConstCPUProcessorRcPtr onFloats(const ocio::ConstProcessorRcPtr& processor) {
    return processor->getOptimizedCPUProcessor(ocio::BIT_DEPTH_F32, ocio::BIT_DEPTH_F32, ocio::OPTIMIZATION_DEFAULT);
}

/// On so many pixels of red, green, blue, alpha, in place.
inline void applyTo(const ocio::ConstCPUProcessorRcPtr& processor, float* rgba, qsizetype pixels) {
    ocio::PackedImageDesc image(rgba, long(pixels), 1, 4);
    processor->apply(image);
}

} // namespace daylark
