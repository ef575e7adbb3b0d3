// A module of its own, so that only tests of picture files wait for the library.
#include "PictureWriting.h"

#include <OpenImageIO/deepdata.h>
#include <OpenImageIO/imageio.h>

#include <algorithm>

namespace {

using daylark::test::WrittenPicture;
using OIIO::ImageSpec;
using OIIO::TypeDesc;

ImageSpec specOf(const WrittenPicture& picture) {
    const bool isTen = picture.numbers == "uint10";
    ImageSpec spec(picture.width, picture.height, int(picture.channels.size()),
                   TypeDesc(isTen ? "uint16" : picture.numbers.c_str()));
    spec.x = picture.x;
    spec.y = picture.y;
    spec.full_x = picture.fullX;
    spec.full_y = picture.fullY;
    spec.full_width = picture.fullWidth > 0 ? picture.fullWidth : picture.width;
    spec.full_height = picture.fullHeight > 0 ? picture.fullHeight : picture.height;
    spec.channelnames = picture.channels;
    spec.alpha_channel = -1;
    if (isTen) spec.attribute("oiio:BitsPerSample", 10);
    for (const auto& [name, text] : picture.texts)
        spec.attribute(name, text);
    for (const auto& [name, value] : picture.reals)
        spec.attribute(name, value);
    if (picture.chromaticities.size() == 8)
        spec.attribute("chromaticities", TypeDesc(TypeDesc::FLOAT, 8), picture.chromaticities.data());
    if (picture.rate > 0) {
        const int rational[2] = {picture.rate, picture.rateScale};
        spec.attribute("FramesPerSecond", OIIO::TypeRational, rational);
    }
    if (picture.orientation != 1) spec.attribute("Orientation", picture.orientation);
    if (picture.timecode) {
        const unsigned words[2] = {picture.timecode, 0};
        spec.attribute("smpte:TimeCode", OIIO::TypeTimeCode, words);
    }
    if (picture.tiles) spec.tile_width = spec.tile_height = 32;
    if (picture.levels != WrittenPicture::Levels::one) {
        spec.attribute("textureformat", "Plain Texture"); // what has levels, to this library
        if (picture.levels == WrittenPicture::Levels::eachWay) spec.attribute("openexr:levelmode", 2);
        if (picture.levels == WrittenPicture::Levels::halvedUp) spec.attribute("openexr:roundingmode", 1);
    }
    if (!picture.partName.empty()) spec.attribute("oiio:subimagename", picture.partName);
    spec.deep = picture.deep;
    return spec;
}

bool writeDeep(OIIO::ImageOutput& out, const ImageSpec& spec, const std::vector<float>& pixels) {
    OIIO::DeepData deep(spec);
    for (int pixel = 0; pixel < spec.width * spec.height; ++pixel) {
        deep.set_samples(pixel, 1);
        for (int channel = 0; channel < spec.nchannels; ++channel)
            deep.set_deep_value(pixel, channel, 0, pixels[size_t(pixel) * size_t(spec.nchannels) + size_t(channel)]);
    }
    return out.write_deep_image(deep);
}

/// Where the format has none, as further pages.
bool writeLevels(OIIO::ImageOutput& out, const std::string& path, ImageSpec spec, WrittenPicture::Levels levels) {
    const bool up = levels == WrittenPicture::Levels::halvedUp, isEachWay = levels == WrittenPicture::Levels::eachWay;
    const auto how = out.supports("mipmap") ? OIIO::ImageOutput::AppendMIPLevel : OIIO::ImageOutput::AppendSubimage;
    // Of those halved each way, the ones that are halved as often across as down.
    while (isEachWay ? spec.width > 1 && spec.height > 1 : spec.width > 1 || spec.height > 1) {
        spec.width = std::max(1, (spec.width + up) / 2);
        spec.height = std::max(1, (spec.height + up) / 2);
        spec.full_width = spec.width;
        spec.full_height = spec.height;
        const std::vector<float> white(size_t(spec.width) * size_t(spec.height) * size_t(spec.nchannels), 1.0F);
        if (!out.open(path, spec, how) ||
            !out.write_image(TypeDesc::FLOAT, white.data()))
            return false;
    }
    return true;
}

} // namespace

extern "C" __attribute__((visibility("default"))) bool daylarkWritePicture(const WrittenPicture& picture,
                                                                           std::string& trouble) {
    auto out = OIIO::ImageOutput::create(picture.path);
    if (!out) {
        trouble = OIIO::geterror();
        return false;
    }
    std::vector<const WrittenPicture*> parts{&picture};
    for (const WrittenPicture& each : picture.further)
        parts.push_back(&each);
    std::vector<ImageSpec> specs;
    for (const WrittenPicture* each : parts)
        specs.push_back(specOf(*each));
    bool good =
        parts.size() == 1 ? out->open(picture.path, specs[0]) : out->open(picture.path, int(specs.size()), specs.data());
    for (size_t part = 0; good && part < parts.size(); ++part) {
        if (part > 0) good = out->open(picture.path, specs[part], OIIO::ImageOutput::AppendSubimage);
        good = good && (specs[part].deep ? writeDeep(*out, specs[part], parts[part]->pixels)
                                         : out->write_image(TypeDesc::FLOAT, parts[part]->pixels.data()));
        if (good && parts[part]->levels != WrittenPicture::Levels::one)
            good = writeLevels(*out, picture.path, specs[part], parts[part]->levels);
    }
    if (!good) trouble = out->geterror();
    return out->close() && good;
}
