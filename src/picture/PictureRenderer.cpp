#include "picture/PictureRenderer.h"

#include "base/jobs/ShareOut.h"
#include "picture/PictureKernels.h"
#include "picture/PicturePlanes.h"
#include "picture/PictureSampling.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace daylark {
namespace {

constexpr int lanes = PictureKernels::lanes;
constexpr int blockWidth = 256; // of a strip: what is worked on stays in the nearest cache
constexpr int linesAPiece = 64;
constexpr float log2Ceiling =
    20; // what the curve may give at most: single precision never meets infinity behind it

using Matrix34 = std::array<std::array<double, 4>, 3>;

/// `second` after `first`.
Matrix34 composed(const Matrix34& second, const Matrix34& first) {
    Matrix34 result{};
    for (size_t i = 0; i < 3; ++i)
        for (size_t j = 0; j < 4; ++j) {
            result[i][j] = j == 3 ? second[i][3] : 0;
            for (size_t k = 0; k < 3; ++k)
                result[i][j] += second[i][k] * first[k][j];
        }
    return result;
}

std::array<float, 12> narrowed(const Matrix34& matrix, const std::array<double, 3>& rowScale) {
    std::array<float, 12> result{};
    for (size_t i = 0; i < 12; ++i)
        result[i] = float(matrix[i / 4][i % 4] * rowScale[i / 4]);
    return result;
}

/// The stored numbers to finished components: one matrix, or two with the curve between them.
struct ColourSteps {
    bool curve = false;
    std::array<float, 12> toDisplay{}, toCurve{}, toPixels{};
    float power = 1, atZero = 0;
    const DisplayProcessor* display = nullptr; ///< between `toDisplay` and the rest
    bool quickly = false;

    ColourSteps(const PicturePlanes& picture, const PictureRequest& request)
        : display(request.display.get())
        , quickly(request.quickly) {
        const ColourTransform& colour = request.colour;
        const bool deep = request.deep;
        const double codes = picture.codes(), white = deep ? 65535 : 255;
        Matrix34 toRgb{};
        for (size_t i = 0; i < 3; ++i)
            for (size_t j = 0; j < 3; ++j) {
                toRgb[i][j] = picture.toRgb[i][j] / codes;
                toRgb[i][3] -= picture.toRgb[i][j] * picture.offset[j];
            }
        if (display) {
            toDisplay = narrowed(toRgb, {1, 1, 1});
            toRgb = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}}};
        }
        curve = colour.hasCurve();
        if (!curve) {
            toPixels = narrowed(composed(colour.map, toRgb), {white, white, white});
            return;
        }
        toCurve = narrowed(toRgb, colour.gain);
        Matrix34 map = colour.map;
        for (auto& row : map)
            for (size_t j = 0; j < 3; ++j)
                row[j] *= colour.scale;
        toPixels = narrowed(map, {white, white, white});
        power = float(colour.power);
        atZero = colour.power > 0 ? 0 : colour.power < 0 ? std::exp2(log2Ceiling) : 1;
    }
};

/// Where the finished pixels go: pixel u of line v lies at first + u * stepU + v * stepV.
struct PixelTarget {
    uchar* first;
    qsizetype stepU, stepV; ///< pixels; one of them is 1

    template<class Pixel>
    [[nodiscard]] Pixel* line(int v) const {
        return reinterpret_cast<Pixel*>(first) + v * stepV;
    }
};

struct PlaneOnGrid {
    const PicturePlanes::Plane* plane = nullptr;
    const SampledAxis* along = nullptr;
    const SampledAxis* across = nullptr;
};

/// One picture being made. The axes are those of the stored picture: along its lines, and across them.
class PictureWork {
public:
    PictureWork(const PicturePlanes& picture, const ColourSteps& colour, const PixelTarget& target)
        : picture_(picture)
        , colour_(colour)
        , target_(target)
        , kernels_(pictureKernels()) {}

    void setAxes(const std::array<SampledAxis, 2>& along, const std::array<SampledAxis, 2>& across) {
        for (size_t i = 0; i < 4; ++i) {
            const size_t kind = i == 1 || i == 2;
            if (picture_.planes[i].data) grids_[i] = {&picture_.planes[i], &along[kind], &across[kind]};
        }
        width_ = along[0].count;
        height_ = across[0].count;
        // Whole blocks of eight, and one beyond for loads that reach over the end.
        room_ = (std::max({width_, along[0].span, along[1].span}) + 2 * lanes - 1) / lanes * lanes;
    }

    template<class Pixel>
    void run() {
        stepsAreSimple() ? runRows<Pixel>() : runStrips<Pixel>();
    }

private:
    /// Along the lines nothing has to be filtered but chroma doubled.
    [[nodiscard]] bool stepsAreSimple() {
        if (target_.stepU != 1) return false;
        for (size_t i = 0; i < 4; ++i)
            if (grids_[i].along && !grids_[i].along->isCopy() &&
                !grids_[i].along->isDoubling(pairsBegin_, pairsEnd_))
                return false;
        return true;
    }

    /// One line of a plane as it lies there, filtered across the lines.
    void blend(const PlaneOnGrid& grid, int line, float* out) {
        const SampledAxis& across = *grid.across;
        const int first = across.first + across.start[size_t(line)];
        const uchar* data = grid.plane->data + qsizetype(grid.along->first) * picture_.bytesPerSample;
        rows_.resize(size_t(across.taps));
        for (int t = 0; t < across.taps; ++t)
            rows_[size_t(t)] = data + (first + t) * grid.plane->stride;
        const float* weights = across.weightsOf(line);
        if (picture_.numbers == PicturePlanes::Numbers::half)
            kernels_.blendHalf(rows_.data(), weights, across.taps, out, grid.along->span);
        else if (picture_.numbers == PicturePlanes::Numbers::real)
            kernels_.blendReal(rows_.data(), weights, across.taps, out, grid.along->span);
        else if (picture_.bytesPerSample == 1)
            kernels_.blend8(rows_.data(), weights, across.taps, out, grid.along->span);
        else
            kernels_.blend16(rows_.data(), weights, across.taps, out, grid.along->span);
    }

    template<class Pixel>
    void runRows() {
        std::vector<float> buffer(size_t(room_) * 5);
        float* const narrow = buffer.data() + 4 * room_;
        std::array<float*, 4> channels{};
        for (size_t i = 0; i < 4; ++i)
            channels[i] = buffer.data() + qsizetype(i) * room_;
        for (int line = 0; line < height_; ++line) {
            for (size_t i = 0; i < 4; ++i) {
                if (!grids_[i].plane) continue;
                const bool copy = grids_[i].along->taps == 1;
                blend(grids_[i], line, copy ? channels[i] : narrow);
                if (!copy) doubleRow(*grids_[i].along, narrow, channels[i]);
            }
            finish(channels, width_);
            pack(channels, target_.line<Pixel>(line), width_);
        }
    }

    void doubleRow(const SampledAxis& along, const float* in, float* out) {
        const auto single = [&](int from, int to) {
            for (int x = from; x < to; ++x) {
                const float* weights = along.weightsOf(x);
                const float* samples = in + along.start[size_t(x)];
                out[x] = weights[0] * samples[0] + weights[1] * samples[1];
            }
        };
        single(0, pairsBegin_);
        kernels_.doubled(in + along.start[size_t(pairsBegin_)], in + along.start[size_t(pairsBegin_) + 1],
                         along.weightsOf(pairsBegin_), out + pairsBegin_, (pairsEnd_ - pairsBegin_) / 2);
        single(pairsEnd_, width_);
    }

    template<class Pixel>
    void runStrips() {
        const qsizetype strip = qsizetype(room_) * lanes, block = qsizetype(blockWidth) * lanes;
        std::vector<float> buffer(size_t(strip + block) * 4 + size_t(strip));
        float* const rows = buffer.data() + 4 * (strip + block);
        std::array<float*, 4> strips{}, channels{};
        for (size_t i = 0; i < 4; ++i) {
            strips[i] = buffer.data() + qsizetype(i) * strip;
            channels[i] = buffer.data() + 4 * strip + qsizetype(i) * block;
        }
        std::vector<Pixel> pixels(static_cast<size_t>(block));
        for (int line = 0; line < height_; line += lanes) {
            const int used = std::min(lanes, height_ - line);
            for (size_t i = 0; i < 4; ++i) {
                if (!grids_[i].plane) continue;
                for (int l = 0; l < used; ++l)
                    blend(grids_[i], line + l, rows + qsizetype(l) * room_);
                kernels_.toStrip(rows, room_, strips[i], grids_[i].along->span);
            }
            for (int x = 0; x < width_; x += blockWidth) {
                const int count = std::min(blockWidth, width_ - x);
                for (size_t i = 0; i < 4; ++i)
                    if (const SampledAxis* along = grids_[i].along)
                        kernels_.resample(strips[i], along->start.data() + x, along->weightsOf(x),
                                          along->taps, channels[i], count);
                finish(channels, count * lanes);
                pack(channels, pixels.data(), count * lanes);
                place(pixels.data(), target_.line<Pixel>(line) + x * target_.stepU, count, used);
            }
        }
    }

    /// What stands before the last matrix.
    void finish(const std::array<float*, 4>& channels, int count) {
        if (colour_.display) display(channels, count);
        if (!colour_.curve) return;
        kernels_.multiply(channels.data(), colour_.toCurve.data(), count);
        for (size_t i = 0; i < 3; ++i)
            kernels_.raise(channels[i], colour_.power, log2Ceiling, colour_.atZero, count);
    }

    /// What is no number counts as 0, and nothing is beyond what single precision computes with.
    static float held(float value) {
        constexpr float most = PicturePlanes::largest;
        return value == value ? std::clamp(value, -most, most) : 0.0F;
    }

    void display(const std::array<float*, 4>& channels, int count) {
        if (picture_.isGrey())
            for (const size_t i : {1, 2})
                std::fill_n(channels[i], count, 0.0F); // multiplied by 0, whatever stood there
        kernels_.multiply(channels.data(), colour_.toDisplay.data(), count);
        if (colour_.quickly && colour_.display->hasQuickForm()) return displayQuickly(channels, count);
        rgba_.resize(size_t(count) * 4);
        for (int x = 0; x < count; ++x) {
            float* pixel = rgba_.data() + qsizetype(x) * 4;
            pixel[0] = held(channels[0][x]), pixel[1] = held(channels[1][x]), pixel[2] = held(channels[2][x]);
            pixel[3] = 1;
        }
        colour_.display->apply(rgba_.data(), count);
        for (int x = 0; x < count; ++x) {
            const float* pixel = rgba_.data() + qsizetype(x) * 4;
            channels[0][x] = held(pixel[0]), channels[1][x] = held(pixel[1]), channels[2][x] = held(pixel[2]);
        }
    }

    void displayQuickly(const std::array<float*, 4>& channels, int count) const {
        colour_.display->applyQuickly(channels.data(), count);
        for (size_t i = 0; i < 3; ++i)
            std::transform(channels[i], channels[i] + count, channels[i], held);
    }

    template<class Pixel>
    void pack(const std::array<float*, 4>& channels, Pixel* out, int count) {
        const float* alpha = picture_.hasAlpha() ? channels[3] : nullptr;
        const auto alphaScale = float(1 / picture_.codes());
        if constexpr (sizeof(Pixel) == 8)
            kernels_.pack16(channels.data(), alpha, alphaScale, colour_.toPixels.data(), out, count);
        else
            kernels_.pack8(channels.data(), alpha, alphaScale, colour_.toPixels.data(), out, count);
    }

    template<class Pixel>
    void place(const Pixel* strip, Pixel* out, int count, int used) const {
        if constexpr (sizeof(Pixel) == sizeof(quint32)) {
            if (used == lanes && target_.stepU == 1)
                return kernels_.fromStrip(strip, out, target_.stepV, count);
        }
        for (int x = 0; x < count; ++x, strip += lanes, out += target_.stepU)
            for (int l = 0; l < used; ++l)
                out[l * target_.stepV] = strip[l];
    }

    const PicturePlanes& picture_;
    const ColourSteps& colour_;
    const PixelTarget target_;
    const PictureKernels& kernels_;
    std::array<PlaneOnGrid, 4> grids_;
    std::vector<const quint8*> rows_;
    std::vector<float> rgba_;
    int width_ = 0, height_ = 0, room_ = 0, pairsBegin_ = 0, pairsEnd_ = 0;
};

/// The stored picture's axis that lies along the shown one, `horizontal` or not: how it is counted.
struct ShownAxis {
    bool reversed;
    int targetSize, first, count;
};

/// Axes for luma (and alpha) and for chroma.
std::array<SampledAxis, 2> axesOf(const PicturePlanes& picture, const ShownAxis& shown, bool alongLines) {
    const auto pick = [&](QSize size) { return alongLines ? size.width() : size.height(); };
    AxisSpec spec;
    spec.lumaSize = spec.planeSize = pick(picture.size());
    spec.targetSize = shown.targetSize;
    spec.first = shown.first;
    spec.count = shown.count;
    spec.reversed = shown.reversed;
    std::array<SampledAxis, 2> axes{sampledAxis(spec), {}};
    if (picture.isGrey()) return axes;
    spec.planeSize = pick(picture.planes[1].size);
    spec.log2Step = alongLines ? picture.log2ChromaWidth : picture.log2ChromaHeight;
    spec.origin = alongLines ? picture.chromaX : picture.chromaY;
    axes[1] = sampledAxis(spec);
    return axes;
}

} // namespace

QImage renderPicture(const VideoFrame& frame, const PictureRequest& request) {
    if (!request.size.isEmpty()) return renderPicture(planesOf(frame), request);
    PictureRequest whole = request;
    whole.size = frame.displaySize();
    return renderPicture(planesOf(frame), whole);
}

QImage renderPicture(const PicturePlanes& picture, const PictureRequest& request) {
    if (picture.isNull()) return {};
    const QSize upright = picture.orientation.isTurned() ? picture.size().transposed() : picture.size();
    const QSize size = request.size.isEmpty() ? upright : request.size;
    const QRect wanted = request.visible.isNull() ? QRect(QPoint(), size) : request.visible;
    QImage image(wanted.size(), request.deep ? QImage::Format_RGBX64 : QImage::Format_RGB32);
    if (image.isNull()) return {};
    const QRect part = wanted.intersected(QRect(QPoint(), size));
    if (part != wanted) image.fill(Qt::black);
    if (part.isEmpty()) return image;

    // Turning the picture: which way each shown axis runs through the stored one.
    const bool turned = picture.orientation.isTurned();
    const bool flipsX = request.mirrorLeftRight != picture.orientation.flipsX();
    const bool flipsY = request.mirrorUpsideDown != picture.orientation.flipsY();
    const ShownAxis x{flipsX, size.width(), part.x(), part.width()};
    const ShownAxis y{flipsY, size.height(), part.y(), part.height()};
    const std::array<SampledAxis, 2> along = axesOf(picture, turned ? y : x, true);
    const ShownAxis lines = turned ? x : y;

    const int pixelBytes = request.deep ? 8 : 4;
    const qsizetype line = image.bytesPerLine() / pixelBytes;
    uchar* const bits = image.bits();
    const QPoint corner = part.topLeft() - wanted.topLeft();
    const PixelTarget target{bits + corner.y() * image.bytesPerLine() + corner.x() * pixelBytes,
                             turned ? line : 1, turned ? 1 : line};
    const ColourSteps colour(picture, request);
    const auto run = [&](const ShownAxis& some, const PixelTarget& there) {
        PictureWork work(picture, colour, there);
        const std::array<SampledAxis, 2> across = axesOf(picture, some, false);
        work.setAxes(along, across);
        request.deep ? work.run<quint64>() : work.run<quint32>();
    };
    if (!request.display) {
        run(lines, target);
        return image;
    }
    // A display's arithmetic takes long: every core takes lines.
    const int pieces = (lines.count + linesAPiece - 1) / linesAPiece;
    shareOut(pieces, [&](int piece) {
        const int from = piece * linesAPiece;
        ShownAxis some = lines;
        some.first += from;
        some.count = std::min(linesAPiece, lines.count - from);
        run(some, {target.first + from * target.stepV * pixelBytes, target.stepU, target.stepV});
    });
    return image;
}

QImage renderFrame(const VideoFrame& frame, QSize size, bool deep) {
    PictureRequest request;
    request.size = size;
    request.deep = deep;
    return renderPicture(frame, request);
}

} // namespace daylark
