#pragma once

#include "picture/colour/DisplayTransform.h"

#include <QtGlobal>

#include <memory>
#include <string>
#include <vector>

namespace daylark {

class ColourConfig;

/// A display transform in the form that a shader evaluates: a function `vec4 displayed(vec4)` and the tables that it looks
/// things up in. No type of the colour library.
struct DisplayShader {
    struct Table {
        std::string sampler;
        int dimensions = 2; ///< 1, 2 or 3
        int width = 1, height = 1, depth = 1;
        int channels = 3; ///< 1 or 3
        bool interpolated = true;
        std::vector<float> values;
    };
    std::string text; ///< declarations and the function
    std::vector<Table> tables;
};

/// A display transform made ready to be carried out on RGB, by the colour library. Two forms: the exact one, and a quick one
/// for the pictures of a run where the exact one takes long. The quick one is `DisplaySteps`, a quarter of a step of 255
/// away at most; of a transform whose steps are unknown to us a table of 65 x 65 x 65 behind a logarithm, for light: a tenth
/// of a step off on average, ten and more where colours are nearly pure, and without light below zero. Made by a
/// `ColourConfig`, by any thread; never changes; any thread.
class DisplayProcessor {
public:
    ~DisplayProcessor();
    DisplayProcessor(const DisplayProcessor&) = delete;
    DisplayProcessor& operator=(const DisplayProcessor&) = delete;

    [[nodiscard]] const DisplayTransform& transform() const { return transform_; }
    /// On so many pixels of red, green, blue, alpha, in place; alpha stays.
    void apply(float* rgba, qsizetype pixels) const;
    /// The same by the quick form where there is one, on planes of red, green and blue, in place. What is no number may
    /// become any.
    void applyQuickly(float* const* rgb, qsizetype pixels) const;
    [[nodiscard]] bool hasQuickForm() const;
    [[nodiscard]] const DisplayShader& shader() const { return shader_; }

private:
    friend class ColourConfig;
    struct Library; ///< the library's processors
    DisplayProcessor(const DisplayTransform& transform, std::unique_ptr<Library> library);
    void makeQuickForm(bool isLight);
    void makeTable(bool isLight);
    void makeShader();

    DisplayTransform transform_;
    std::unique_ptr<Library> library_;
    DisplayShader shader_;
};

} // namespace daylark
