#include "picture/PicturePlanes.h"

#include "picture/PictureKernels.h"
#include "media/decode/VideoFrameData.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>
#include <vector>

extern "C" {
#include <libavutil/intfloat.h>
}

namespace daylark {
namespace {

bool isJpegFormat(int format) {
    switch (format) {
    case AV_PIX_FMT_YUVJ420P:
    case AV_PIX_FMT_YUVJ422P:
    case AV_PIX_FMT_YUVJ444P:
    case AV_PIX_FMT_YUVJ440P:
    case AV_PIX_FMT_YUVJ411P:
        return true;
    default:
        return false;
    }
}

bool isRgb(const AVPixFmtDescriptor& format) {
    return format.flags & (AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL);
}

bool isFullRange(const AVFrame& frame, const AVPixFmtDescriptor& format) {
    if (isJpegFormat(frame.format)) return true;
    if (frame.color_range != AVCOL_RANGE_UNSPECIFIED) return frame.color_range == AVCOL_RANGE_JPEG;
    return format.nb_components <= 2;
}

struct LumaWeights {
    double red, blue;
};

LumaWeights lumaWeightsOf(const AVFrame& frame) {
    switch (frame.colorspace) {
    case AVCOL_SPC_BT709:
        return {0.2126, 0.0722};
    case AVCOL_SPC_BT470BG:
    case AVCOL_SPC_SMPTE170M:
        return {0.299, 0.114};
    case AVCOL_SPC_SMPTE240M:
        return {0.212, 0.087};
    case AVCOL_SPC_FCC:
        return {0.30, 0.11};
    case AVCOL_SPC_BT2020_NCL:
    case AVCOL_SPC_BT2020_CL: // shown as the non-constant kind
        return {0.2627, 0.0593};
    default: // the size tells what is likely meant
        return frame.height >= 720 ? LumaWeights{0.2126, 0.0722} : LumaWeights{0.299, 0.114};
    }
}

using Matrix = std::array<std::array<double, 3>, 3>;

/// From luma 0..1 and chroma -0.5..0.5.
Matrix matrixOf(const AVFrame& frame) {
    if (frame.colorspace == AVCOL_SPC_YCGCO) return {{{1, -1, 1}, {1, 1, 0}, {1, -1, -1}}};
    const auto [red, blue] = lumaWeightsOf(frame);
    const double green = 1 - red - blue;
    return {{{1, 0, 2 * (1 - red)},
             {1, -2 * (1 - blue) * blue / green, -2 * (1 - red) * red / green},
             {1, 2 * (1 - blue), 0}}};
}

/// Matrix and range of a picture that isn't RGB.
void setColour(PicturePlanes& picture, const AVFrame& frame, const AVPixFmtDescriptor& format) {
    const double white = std::pow(2.0, picture.depth) - 1;
    const double unit = std::pow(2.0, picture.depth - 8); // one 8-bit step
    const bool full = isFullRange(frame, format);
    const double lumaScale = full ? 1 : white / (219 * unit), black = full ? 0 : 16 * unit / white;
    const double chromaScale = full ? 1 : white / (224 * unit), zero = 128 * unit / white;
    if (picture.isGrey()) {
        picture.toRgb = {{{lumaScale, 0, 0}, {lumaScale, 0, 0}, {lumaScale, 0, 0}}};
        picture.offset = {black, 0, 0};
    } else if (frame.colorspace == AVCOL_SPC_RGB) { // green, blue, red in the places of luma and chroma
        picture.toRgb = {{{0, 0, lumaScale}, {lumaScale, 0, 0}, {0, lumaScale, 0}}};
        picture.offset = {black, black, black};
    } else {
        picture.toRgb = matrixOf(frame);
        for (auto& row : picture.toRgb)
            row = {row[0] * lumaScale, row[1] * chromaScale, row[2] * chromaScale};
        picture.offset = {black, zero, zero};
    }
}

/// Where nobody says, chroma lies on the left luma columns and between the lines, as broadcast standards have
/// it; in JPEG's formats it is centred.
void setChromaPosition(PicturePlanes& picture, const AVFrame& frame) {
    const double lastX = (1 << picture.log2ChromaWidth) - 1, lastY = (1 << picture.log2ChromaHeight) - 1;
    double x = 0, y = 0.5;
    switch (frame.chroma_location) {
    case AVCHROMA_LOC_LEFT:
        break;
    case AVCHROMA_LOC_CENTER:
        x = 0.5;
        break;
    case AVCHROMA_LOC_TOPLEFT:
        y = 0;
        break;
    case AVCHROMA_LOC_TOP:
        x = 0.5, y = 0;
        break;
    case AVCHROMA_LOC_BOTTOMLEFT:
        y = 1;
        break;
    case AVCHROMA_LOC_BOTTOM:
        x = 0.5, y = 1;
        break;
    default:
        if (isJpegFormat(frame.format)) x = 0.5;
    }
    picture.chromaX = x * lastX;
    picture.chromaY = y * lastY;
}

/// Which of our planes a component of the format is.
int planeOf(const AVPixFmtDescriptor& format, int component) {
    const bool alpha = (format.flags & AV_PIX_FMT_FLAG_ALPHA) && component == format.nb_components - 1;
    return alpha ? 3 : component;
}

QSize sizeOfPlane(const AVFrame& frame, const AVPixFmtDescriptor& format, int plane) {
    const bool chroma = (plane == 1 || plane == 2) && !isRgb(format);
    return chroma ? QSize(AV_CEIL_RSHIFT(frame.width, format.log2_chroma_w),
                          AV_CEIL_RSHIFT(frame.height, format.log2_chroma_h))
                  : QSize(frame.width, frame.height);
}

constexpr int nativeForeignFlag = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? AV_PIX_FMT_FLAG_BE : 0;

/// Planes of floats in this machine's byte order.
bool isReal(const AVPixFmtDescriptor& format) {
    return (format.flags & AV_PIX_FMT_FLAG_FLOAT) && (format.flags & (AV_PIX_FMT_FLAG_PLANAR | AV_PIX_FMT_FLAG_RGB)) !=
           AV_PIX_FMT_FLAG_RGB && format.comp[0].depth == 32 && !(format.flags & nativeForeignFlag);
}

/// Planes of whole samples in this machine's byte order, all as deep: they can be used where they lie.
bool isUsableInPlace(const AVPixFmtDescriptor& format) {
    if (format.flags & (AV_PIX_FMT_FLAG_PAL | AV_PIX_FMT_FLAG_BITSTREAM | AV_PIX_FMT_FLAG_FLOAT))
        return false;
    const int depth = format.comp[0].depth, bytes = depth > 8 ? 2 : 1;
    if (depth < 8 || depth > 16 || (bytes == 2 && (format.flags & nativeForeignFlag))) return false;
    for (int i = 0; i < format.nb_components; ++i) {
        const AVComponentDescriptor& component = format.comp[i];
        if (component.depth != depth || component.shift || component.offset || component.step != bytes)
            return false;
    }
    return true;
}

/// Room for every plane, which `picture` then points to and keeps; null where there is none to be had.
std::array<uchar*, 4> layOut(PicturePlanes& picture, const AVFrame& frame, const AVPixFmtDescriptor& format,
                             std::initializer_list<int> planes) {
    qsizetype bytes = 0;
    std::array<qsizetype, 4> at{};
    for (const int plane : planes) {
        const QSize size = sizeOfPlane(frame, format, plane);
        const qsizetype stride = (qsizetype(size.width()) * picture.bytesPerSample + 63) / 64 * 64;
        at[size_t(plane)] = bytes;
        picture.planes[size_t(plane)] = {nullptr, stride, size};
        bytes += stride * size.height();
    }
    const std::shared_ptr<uchar[]> samples(new (std::nothrow) uchar[size_t(bytes)]);
    if (!samples) return {};
    std::array<uchar*, 4> result{};
    for (const int plane : planes) {
        result[size_t(plane)] = samples.get() + at[size_t(plane)];
        picture.planes[size_t(plane)].data = result[size_t(plane)];
    }
    picture.keep = samples;
    return result;
}

void unpackPalette(PicturePlanes& picture, const AVFrame& frame, const AVPixFmtDescriptor& format) {
    const auto planes = layOut(picture, frame, format, {0, 1, 2, 3});
    if (!planes[0]) return;
    std::array<quint32, 256> palette; // alpha, red, green, blue from the top byte down
    std::memcpy(palette.data(), frame.data[1], sizeof palette);
    for (int y = 0; y < frame.height; ++y) {
        const uchar* source = frame.data[0] + qsizetype(y) * frame.linesize[0];
        const qsizetype row = y * picture.planes[0].stride;
        for (int x = 0; x < frame.width; ++x) {
            const quint32 colour = palette[source[x]];
            planes[0][row + x] = uchar(colour >> 16);
            planes[1][row + x] = uchar(colour >> 8);
            planes[2][row + x] = uchar(colour);
            planes[3][row + x] = uchar(colour >> 24);
        }
    }
}

/// How the numbers of one component are found in a row of its plane.
struct ComponentReader {
    int step, offset, shift;
    quint32 mask;
    int wordBytes;
    bool bigEndian;
};

template<class Word, bool Swap, class Sample>
void readWords(const uchar* source, const ComponentReader& reader, Sample* out, int count) {
    for (int x = 0; x < count; ++x, source += reader.step) {
        Word word;
        std::memcpy(&word, source, sizeof word);
        if (Swap) word = qbswap(word);
        out[x] = Sample((quint32(word) >> reader.shift) & reader.mask);
    }
}

template<class Sample>
void readComponentRow(const uchar* row, const ComponentReader& reader, Sample* out, int count) {
    const bool swap = reader.bigEndian == (Q_BYTE_ORDER == Q_LITTLE_ENDIAN);
    const uchar* source = row + reader.offset;
    if constexpr (sizeof(Sample) == 1) {
        if (reader.wordBytes == 1 && reader.shift == 0 && reader.mask == 0xff)
            return pictureKernels().pick8(source, reader.step, out, count);
    }
    if (reader.wordBytes == 1)
        readWords<quint8, false>(source, reader, out, count);
    else if (reader.wordBytes == 2)
        swap ? readWords<quint16, true>(source, reader, out, count)
             : readWords<quint16, false>(source, reader, out, count);
    else
        swap ? readWords<quint32, true>(source, reader, out, count)
             : readWords<quint32, false>(source, reader, out, count);
}

ComponentReader readerOf(const AVPixFmtDescriptor& format, const AVComponentDescriptor& component) {
    const bool bigEndian = format.flags & AV_PIX_FMT_FLAG_BE;
    const int bits = component.shift + component.depth;
    const int bytes = bits <= 8 ? 1 : bits <= 16 ? 2 : 4;
    // A component within one byte of a wider big-endian word stands behind its offset.
    return {component.step,  component.offset + (bytes == 1 && bigEndian),
            component.shift, quint32((quint64(1) << component.depth) - 1),
            bytes,           bigEndian};
}

/// The numbers of a component's row brought to 16 bits: floating point of 0 to 1, or whole numbers of any
/// depth.
void widenRow(const AVFrame& frame, const AVPixFmtDescriptor& format, int index, int y, quint16* out,
              int count, std::vector<quint32>& numbers) {
    const AVComponentDescriptor& component = format.comp[index];
    numbers.resize(size_t(count));
    if (format.flags & AV_PIX_FMT_FLAG_BITSTREAM)
        av_read_image_line2(numbers.data(), const_cast<const uint8_t**>(frame.data), frame.linesize, &format,
                            0, y, index, count, 0, 4);
    else
        readComponentRow(frame.data[component.plane] + qsizetype(y) * frame.linesize[component.plane],
                         readerOf(format, component), numbers.data(), count);
    if (format.flags & AV_PIX_FMT_FLAG_FLOAT) {
        for (int x = 0; x < count; ++x) {
            const float value = av_int2float(numbers[size_t(x)]);
            out[x] = quint16(value > 0 ? std::min(value, 1.0F) * 65535.0F + 0.5F : 0.0F);
        }
        return;
    }
    const quint64 white = (quint64(1) << component.depth) - 1;
    const quint64 flip = frame.format == AV_PIX_FMT_MONOWHITE ? white : 0;
    for (int x = 0; x < count; ++x)
        out[x] = quint16(((numbers[size_t(x)] ^ flip) * 65535 + white / 2) / white);
}

void unpack(PicturePlanes& picture, const AVFrame& frame, const AVPixFmtDescriptor& format) {
    const bool alpha = format.flags & AV_PIX_FMT_FLAG_ALPHA;
    const bool grey = format.nb_components - alpha == 1;
    const auto planes =
        grey    ? alpha ? layOut(picture, frame, format, {0, 3}) : layOut(picture, frame, format, {0})
           : alpha ? layOut(picture, frame, format, {0, 1, 2, 3})
                : layOut(picture, frame, format, {0, 1, 2});
    if (!planes[0]) return;
    std::vector<quint32> numbers;
    for (int i = 0; i < format.nb_components; ++i) {
        const AVComponentDescriptor& component = format.comp[i];
        const auto plane = size_t(planeOf(format, i));
        const PicturePlanes::Plane& target = picture.planes[plane];
        for (int y = 0; y < target.size.height(); ++y) {
            uchar* out = planes[plane] + y * target.stride;
            auto* wide = reinterpret_cast<quint16*>(out);
            const uchar* row = frame.data[component.plane] + qsizetype(y) * frame.linesize[component.plane];
            if (picture.depth != component.depth || (format.flags & AV_PIX_FMT_FLAG_BITSTREAM))
                widenRow(frame, format, i, y, wide, target.size.width(), numbers);
            else if (picture.bytesPerSample == 1)
                readComponentRow(row, readerOf(format, component), out, target.size.width());
            else
                readComponentRow(row, readerOf(format, component), wide, target.size.width());
        }
    }
}

/// Whole numbers of 8 to 16 bits, the same for all components, stay what they are; the rest is brought to 16
/// bits.
int depthWhenUnpacked(const AVPixFmtDescriptor& format) {
    const int depth = format.comp[0].depth;
    for (int i = 0; i < format.nb_components; ++i)
        if (format.comp[i].depth != depth) return 16;
    return depth >= 8 && depth <= 16 ? depth : 16;
}

/// Sensor mosaics and XYZ: no mere unpacking.
av::FramePtr madeRgb(const AVFrame& frame) {
    av::FramePtr made(av_frame_alloc());
    if (!made) return {};
    made->width = frame.width;
    made->height = frame.height;
    made->format = AV_PIX_FMT_GBRP16;
    if (av_frame_get_buffer(made.get(), 0) < 0) return {};
    const av::ScalerPtr scaler(sws_getContext(frame.width, frame.height, AVPixelFormat(frame.format),
                                              frame.width, frame.height, AV_PIX_FMT_GBRP16,
                                              SWS_POINT | SWS_ACCURATE_RND, nullptr, nullptr, nullptr));
    if (!scaler ||
        sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, made->data, made->linesize) <= 0)
        return {};
    return made;
}

/// Null planes when the format is beyond us.
PicturePlanes planesOfFrame(const AVFrame& frame, std::shared_ptr<const void> keep) {
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(AVPixelFormat(frame.format));
    if (!format || frame.width <= 0 || frame.height <= 0 || !frame.data[0] ||
        (format->flags & AV_PIX_FMT_FLAG_HWACCEL))
        return {};
    if ((format->flags & AV_PIX_FMT_FLAG_BAYER) || frame.format == AV_PIX_FMT_XYZ12LE ||
        frame.format == AV_PIX_FMT_XYZ12BE) {
        av::FramePtr made = madeRgb(frame);
        if (!made) return {};
        const std::shared_ptr<const AVFrame> shared = std::move(made);
        return planesOfFrame(*shared, shared);
    }
    PicturePlanes picture;
    if (!isRgb(*format)) {
        picture.log2ChromaWidth = format->log2_chroma_w;
        picture.log2ChromaHeight = format->log2_chroma_h;
    }
    if (isReal(*format)) picture.numbers = PicturePlanes::Numbers::real;
    if (isUsableInPlace(*format) || isReal(*format)) {
        picture.depth = isReal(*format) ? 16 : format->comp[0].depth; // of floats nobody asks
        picture.bytesPerSample = isReal(*format) ? 4 : picture.depth > 8 ? 2 : 1;
        for (int i = 0; i < format->nb_components; ++i) {
            const int plane = planeOf(*format, i), source = format->comp[i].plane;
            picture.planes[size_t(plane)] = {frame.data[source], frame.linesize[source],
                                             sizeOfPlane(frame, *format, plane)};
        }
        picture.keep = std::move(keep);
    } else if (format->flags & AV_PIX_FMT_FLAG_PAL) {
        unpackPalette(picture, frame, *format);
    } else {
        picture.depth = depthWhenUnpacked(*format);
        picture.bytesPerSample = picture.depth > 8 ? 2 : 1;
        unpack(picture, frame, *format);
    }
    if (isReal(*format) && !isRgb(*format)) // grey: there are no colour differences in floats
        picture.toRgb = {{{1, 0, 0}, {1, 0, 0}, {1, 0, 0}}};
    else if (!isRgb(*format))
        setColour(picture, frame, *format);
    setChromaPosition(picture, frame);
    return picture;
}

/// What the stream says of its numbers.
void takeOver(PicturePlanes& picture, const VideoFrame::Data& data) {
    if (data.isHalf) picture.numbers = PicturePlanes::Numbers::half;
    picture.isSceneLinear = data.isSceneLinear;
    picture.colourSpace = data.colourSpace;
    picture.channels = data.channels;
    picture.black = data.black;
    picture.white = data.white;
}

} // namespace

PicturePlanes planesOf(const VideoFrame& frame) {
    if (frame.isNull()) return {};
    PicturePlanes picture = planesOfFrame(*frame.data()->frame, std::make_shared<VideoFrame>(frame));
    picture.orientation = frame.data()->orientation;
    takeOver(picture, *frame.data());
    return picture;
}

PictureLines linesOf(const VideoFrame& frame, int first, int count) {
    if (frame.isNull()) return {};
    const AVFrame& whole = *frame.data()->frame;
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(AVPixelFormat(whole.format));
    const av::FramePtr part(av_frame_alloc());
    if (!format || !part || whole.height <= 0) return {};
    const int step = std::max(1 << format->log2_chroma_h, format->flags & AV_PIX_FMT_FLAG_BAYER ? 2 : 1);
    const int from = std::clamp(first, 0, whole.height - 1) / step * step;
    part->format = whole.format;
    part->width = whole.width;
    part->height = std::clamp(first + count - from, std::min(step, whole.height - from), whole.height - from);
    part->color_range = whole.color_range;
    part->colorspace = whole.colorspace;
    part->chroma_location = whole.chroma_location;
    for (int plane = 0; plane < AV_NUM_DATA_POINTERS && whole.data[plane]; ++plane) {
        const bool isTable = plane > 0 && (format->flags & AV_PIX_FMT_FLAG_PAL);
        const int log2Step = plane == 1 || plane == 2 ? format->log2_chroma_h : 0;
        part->linesize[plane] = whole.linesize[plane];
        part->data[plane] = whole.data[plane] + (isTable ? 0 : qsizetype(from >> log2Step) * whole.linesize[plane]);
    }
    PictureLines lines{planesOfFrame(*part, std::make_shared<VideoFrame>(frame)), from};
    // What is likely meant goes by the whole picture's size.
    if (!isRgb(*format) && !isReal(*format) && !lines.planes.isNull()) setColour(lines.planes, whole, *format);
    takeOver(lines.planes, *frame.data());
    return lines;
}

} // namespace daylark
