#pragma once

#include "picture/colour/DisplayProcessor.h"

#include <OpenColorIO/OpenColorIO.h>

namespace daylark {

namespace ocio = OCIO_NAMESPACE;

/// What a `DisplayProcessor` is of the library's. Internal to picture/colour.
struct DisplayProcessor::Library {
    ocio::ConstProcessorRcPtr processor;
    ocio::ConstCPUProcessorRcPtr exact, quick; ///< `quick` null: exact is quick enough
};

} // namespace daylark
