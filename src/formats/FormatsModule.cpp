// The module that reads picture files: a library of its own, loaded when the first run is opened.
#include "formats/PictureChannels.h"
#include "media/sequence/PictureFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

namespace daylark::formats {

namespace {

using OIIO::ImageInput;
using OIIO::ImageSpec;
using OIIO::TypeDesc;

constexpr int largestSide = 65536;
constexpr qint64 mostBytes = qint64(2) << 30; // of one picture
constexpr qsizetype lineUnit = 64;

Error errorOf(ImageInput& input) {
    const QString said = QString::fromStdString(input.geterror()).simplified();
    return {said.isEmpty() ? QStringLiteral("cannot be read") : said};
}

/// By the name: a file that holds something else than it is called is none of ours, and no other reader gets hold of it.
const char* formatOf(const QString& path) {
    static constexpr std::pair<const char*, const char*> formats[] = {
        {"exr", "openexr"}, {"sxr", "openexr"}, {"mxr", "openexr"}, {"dpx", "dpx"},    {"cin", "cineon"}, {"tif", "tiff"},
        {"tiff", "tiff"},   {"png", "png"},     {"jpg", "jpeg"},    {"jpeg", "jpeg"},  {"jpe", "jpeg"},   {"jfif", "jpeg"},
        {"tga", "targa"},   {"webp", "webp"},   {"hdr", "hdr"},     {"rgbe", "hdr"},   {"psd", "psd"},    {"psb", "psd"},
        {"bmp", "bmp"},     {"sgi", "sgi"},     {"rgb", "sgi"},     {"ppm", "pnm"},    {"pgm", "pnm"},    {"pbm", "pnm"},
        {"pfm", "pnm"}};
    const QString suffix = QFileInfo(path).suffix().toLower();
    for (const auto& [extension, format] : formats)
        if (suffix == QLatin1String(extension)) return format;
    return nullptr;
}

/// What the readers themselves don't notice of a file that is still being written.
bool isCutOff(const QString& path, const char* format) {
    const bool isJpeg = std::strcmp(format, "jpeg") == 0, isDpx = std::strcmp(format, "dpx") == 0;
    const bool isCineon = std::strcmp(format, "cineon") == 0;
    if (!isJpeg && !isDpx && !isCineon) return false;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return true;
    if (isJpeg) { // its end mark, perhaps with a little behind it
        constexpr qint64 tail = 4096;
        file.seek(std::max<qint64>(0, file.size() - tail));
        return file.readAll().lastIndexOf(QByteArray("\xff\xd9", 2)) < 0;
    }
    // Both say in their first words how long they are.
    const qsizetype at = isDpx ? 16 : 20;
    const QByteArray head = file.read(at + 4);
    if (head.size() < at + 4) return true;
    const auto* bytes = reinterpret_cast<const uchar*>(head.constData());
    const bool isBig = head.startsWith("SDPX") || head.startsWith("\x80\x2a\x5f\xd7");
    const quint32 said = isBig ? qFromBigEndian<quint32>(bytes + at) : qFromLittleEndian<quint32>(bytes + at);
    return said != 0xffffffffU && qint64(said) > file.size();
}

struct Opened {
    std::unique_ptr<ImageInput> input;
    Parts parts;
};

Result<Opened> opened(const QString& path, bool allParts) {
    const char* format = formatOf(path);
    if (!format) return Error{QStringLiteral("is of no known kind")};
    Opened file;
    file.input = ImageInput::create(format);
    if (!file.input) return Error{QStringLiteral("is of no known kind")};
    ImageSpec first;
    if (!file.input->open(QFile::encodeName(path).toStdString(), first)) return errorOf(*file.input);
    file.parts.push_back(first);
    const bool mayHaveMore = std::strcmp(format, "openexr") == 0; // elsewhere these are previews and pages
    constexpr int mostParts = 1000;
    for (int part = 1; mayHaveMore && allParts && part < mostParts; ++part) {
        const ImageSpec spec = file.input->spec(part, 0);
        if (spec.format == TypeDesc::UNKNOWN || spec.nchannels < 1) break;
        file.parts.push_back(spec);
    }
    static_cast<void>(file.input->geterror()); // that there is no further part
    for (const ImageSpec& part : file.parts)
        if (part.channelformats.empty() && part.nchannels > 4096) return Error{QStringLiteral("has too many channels")};
    return file;
}

Result<void> checkSize(const ImageSpec& spec) {
    if (spec.deep) return Error{QStringLiteral("is deep: only flat pictures can be shown")};
    const int width = spec.full_width > 0 ? spec.full_width : spec.width;
    const int height = spec.full_height > 0 ? spec.full_height : spec.height;
    for (const int side : {width, height, spec.width, spec.height})
        if (side < 1 || side > largestSide) return Error{QStringLiteral("is too large, or has no pixels")};
    if (qint64(width) * height * 12 > mostBytes || qint64(spec.width) * spec.height * 16 > mostBytes)
        return Error{QStringLiteral("is too large")};
    return {};
}

QSize displaySizeOf(const ImageSpec& spec) {
    return spec.full_width > 0 && spec.full_height > 0 ? QSize(spec.full_width, spec.full_height)
                                                       : QSize(spec.width, spec.height);
}

double pixelAspectOf(const ImageSpec& spec) {
    const double aspect = double(spec.get_float_attribute("PixelAspectRatio", 1));
    return aspect > 0.05 && aspect < 20 ? aspect : 1;
}

int orientationOf(const ImageSpec& spec) {
    return spec.get_int_attribute("Orientation", 1);
}

/// The first that says a likely one.
double rateOf(const ImageSpec& spec) {
    constexpr double fastest = 1000;
    if (const auto* rational = spec.find_attribute("FramesPerSecond", OIIO::TypeRational)) {
        const int* parts = static_cast<const int*>(rational->data());
        if (parts[0] > 0 && parts[1] > 0 && double(parts[0]) / parts[1] <= fastest) return double(parts[0]) / parts[1];
    }
    for (const char* name : {"FramesPerSecond", "dpx:FrameRate", "dpx:TemporalFrameRate", "cineon:FrameRate"}) {
        const double rate = double(spec.get_float_attribute(name, 0));
        if (rate >= 1 && rate <= fastest) return rate;
    }
    return 0;
}

std::optional<std::array<int, 4>> timecodeOf(const ImageSpec& spec) {
    const auto* code = spec.find_attribute("smpte:TimeCode");
    if (!code || code->type() != OIIO::TypeTimeCode) return std::nullopt;
    const quint32 word = static_cast<const quint32*>(code->data())[0];
    if (word == 0 || word == 0xffffffffU) return std::nullopt; // what nobody filled in
    bool areDigits = true;
    const auto digits = [word, &areDigits](int shift, quint32 tens) { // beside the tens are flags: drop frame and the like
        areDigits = areDigits && (word >> shift & 15) < 10;
        return int((word >> (shift + 4) & tens) * 10 + (word >> shift & 15));
    };
    const std::array<int, 4> time{digits(24, 3), digits(16, 7), digits(8, 7), digits(0, 3)};
    const bool isTime = areDigits && time[0] < 24 && time[1] < 60 && time[2] < 60 && time[3] < 60;
    return isTime ? std::optional(time) : std::nullopt;
}

/// The space that primaries stand for; null where the file states none or others.
QString spaceOfPrimaries(const ImageSpec& spec) {
    const auto* stated = spec.find_attribute("chromaticities", TypeDesc(TypeDesc::FLOAT, 8));
    if (!stated) return {};
    const float* given = static_cast<const float*>(stated->data());
    struct Known {
        const char* name;
        float primaries[6];
    };
    static constexpr Known spaces[] = {{"ACES2065-1", {0.7347F, 0.2653F, 0, 1, 0.0001F, -0.077F}},
                                       {"ACEScg", {0.713F, 0.293F, 0.165F, 0.83F, 0.128F, 0.044F}},
                                       {"lin_rec709", {0.64F, 0.33F, 0.3F, 0.6F, 0.15F, 0.06F}},
                                       {"lin_rec2020", {0.708F, 0.292F, 0.17F, 0.797F, 0.131F, 0.046F}},
                                       {"lin_p3d65", {0.68F, 0.32F, 0.265F, 0.69F, 0.15F, 0.06F}}};
    for (const Known& known : spaces) {
        const bool same = std::equal(known.primaries, known.primaries + 6, given,
                                     [](float a, float b) { return std::abs(a - b) < 0.002F; });
        if (same) return QString::fromLatin1(known.name);
    }
    return {};
}

struct Form {
    ReadPicture::Numbers numbers;
    TypeDesc type; ///< as the library is asked for it
    int bytes;
};

Form formOf(const ImageSpec& spec, const ChannelChoice& choice) {
    bool isWide = false, isHalf = true, isByte = true, isIdentity = false;
    for (const int channel : choice.channels) {
        const auto base = TypeDesc(spec.channelformat(channel)).basetype;
        isIdentity = isIdentity || base == TypeDesc::UINT32 || base == TypeDesc::INT32;
        isWide = isWide || base == TypeDesc::FLOAT || base == TypeDesc::DOUBLE;
        isHalf = isHalf && base == TypeDesc::HALF;
        isByte = isByte && (base == TypeDesc::UINT8 || base == TypeDesc::INT8);
    }
    if (isIdentity) return {ReadPicture::Numbers::real, TypeDesc::UINT32, 4};
    if (isHalf && !choice.isData && !choice.range) return {ReadPicture::Numbers::half, TypeDesc::HALF, 2};
    if (isWide || isHalf) return {ReadPicture::Numbers::real, TypeDesc::FLOAT, 4};
    if (isByte) return {ReadPicture::Numbers::whole8, TypeDesc::UINT8, 1};
    return {ReadPicture::Numbers::whole16, TypeDesc::UINT16, 2};
}

/// The usual three: one pass.
template<class Sample>
void separateThree(const Sample* from, int count, Sample* __restrict red, Sample* __restrict green, Sample* __restrict blue) {
    for (int x = 0; x < count; ++x) {
        red[x] = from[3 * x];
        green[x] = from[3 * x + 1];
        blue[x] = from[3 * x + 2];
    }
}

template<class Sample>
void separate(const uchar* pixels, int step, const std::vector<int>& channels, int first, int count,
              const std::array<uchar*, 3>& lines) {
    if (step == 3 && channels == std::vector<int>{first, first + 1, first + 2})
        return separateThree(reinterpret_cast<const Sample*>(pixels), count, reinterpret_cast<Sample*>(lines[0]),
                             reinterpret_cast<Sample*>(lines[1]), reinterpret_cast<Sample*>(lines[2]));
    for (size_t plane = 0; plane < channels.size(); ++plane) {
        const Sample* from = reinterpret_cast<const Sample*>(pixels) + (channels[plane] - first);
        auto* to = reinterpret_cast<Sample*>(lines[plane]);
        for (int x = 0; x < count; ++x, from += step)
            to[x] = *from;
    }
}

/// Lines of the data window on their places in the display window.
class Placing {
public:
    Placing(const ImageSpec& spec, const ChannelChoice& choice, const Form& form, ReadPicture& picture, uchar* room)
        : choice_(choice)
        , form_(form)
        , picture_(picture)
        , room_(room)
        , first_(*std::min_element(choice.channels.begin(), choice.channels.end()))
        , end_(*std::max_element(choice.channels.begin(), choice.channels.end()) + 1)
        , left_(spec.x - spec.full_x)
        , top_(spec.y - spec.full_y)
        , width_(spec.width) {
        const QSize size = picture.size;
        if (left_ > 0 || top_ > 0 || left_ + spec.width < size.width() || top_ + spec.height < size.height())
            std::memset(room, 0, size_t(picture.stride) * size_t(size.height()) * choice.channels.size());
    }
    [[nodiscard]] int first() const { return first_; }
    [[nodiscard]] int end() const { return end_; }
    [[nodiscard]] size_t lineBytes() const { return size_t(width_) * size_t(end_ - first_) * size_t(form_.bytes); }

    void place(const uchar* pixels, int line) const { // counted from the data window's first
        const int y = line + top_;
        if (y < 0 || y >= picture_.size.height()) return;
        const int skipped = std::max(0, -left_), x = std::max(0, left_);
        const int count = std::min(width_ - skipped, picture_.size.width() - x);
        if (count <= 0) return;
        const int step = end_ - first_;
        std::array<uchar*, 3> lines{};
        for (size_t plane = 0; plane < choice_.channels.size(); ++plane)
            lines[plane] =
                room_ + picture_.stride * (qsizetype(plane) * picture_.size.height() + y) + qsizetype(x) * form_.bytes;
        pixels += size_t(skipped) * size_t(step) * size_t(form_.bytes);
        if (form_.bytes == 1)
            separate<quint8>(pixels, step, choice_.channels, first_, count, lines);
        else if (form_.bytes == 2)
            separate<quint16>(pixels, step, choice_.channels, first_, count, lines);
        else
            separate<quint32>(pixels, step, choice_.channels, first_, count, lines);
    }

private:
    const ChannelChoice& choice_;
    const Form form_;
    const ReadPicture& picture_;
    uchar* const room_;
    const int first_, end_, left_, top_, width_;
};

/// Whole blocks of lines, as the usual compressions have them, so that none is unpacked twice.
Result<void> readLines(ImageInput& input, const ImageSpec& spec, int part, const Placing& placing, const Form& form) {
    constexpr int blockLines = 256;
    constexpr size_t mostKept = size_t(16) << 20;
    const int lines = spec.tile_width > 0 ? spec.height : std::min(spec.height, blockLines);
    thread_local std::vector<uchar> buffer; // as large as the largest block that this thread has read
    buffer.resize(placing.lineBytes() * size_t(lines));
    // As they stand in the file, where that is what is wanted: whoever names the type, even the same, has the library make a
    // buffer of 64 MiB for every block, and copy from it.
    const bool isAsWanted = spec.channelformats.empty() && spec.format == form.type;
    const TypeDesc type = isAsWanted ? TypeDesc(TypeDesc::UNKNOWN) : form.type;
    for (int line = 0; line < spec.height; line += lines) {
        const int count = std::min(lines, spec.height - line);
        const bool isRead = spec.tile_width > 0
                                ? input.read_image(part, 0, placing.first(), placing.end(), type, buffer.data())
                                : input.read_scanlines(part, 0, spec.y + line, spec.y + line + count, 0, placing.first(),
                                                       placing.end(), type, buffer.data());
        if (!isRead) return errorOf(input);
        for (int each = 0; each < count; ++each)
            placing.place(buffer.data() + placing.lineBytes() * size_t(each), line + each);
    }
    if (buffer.size() > mostKept) std::vector<uchar>().swap(buffer);
    return {};
}

void widen(const ReadPicture& picture, uchar* room) {
    for (qsizetype line = 0; line < qsizetype(picture.planes) * picture.size.height(); ++line)
        for (int x = 0; x < picture.size.width(); ++x) {
            uchar* at = room + picture.stride * line + qsizetype(x) * 4;
            quint32 whole = 0;
            std::memcpy(&whole, at, sizeof whole);
            const auto value = float(whole);
            std::memcpy(at, &value, sizeof value);
        }
}

/// Numbers that are no colours brought to black and white: by the range that is asked for, else by what they reach over, where
/// what is as good as infinite doesn't count.
void bringBetweenBlackAndWhite(ReadPicture& picture, uchar* room, std::optional<std::pair<double, double>> range) {
    constexpr float asGoodAsInfinite = 1e8F;
    const auto each = [&](const auto& act) {
        for (qsizetype line = 0; line < qsizetype(picture.planes) * picture.size.height(); ++line) {
            auto* row = reinterpret_cast<float*>(room + picture.stride * line);
            for (int x = 0; x < picture.size.width(); ++x)
                act(row[x]);
        }
    };
    if (!range) {
        float low = std::numeric_limits<float>::max(), high = std::numeric_limits<float>::lowest();
        each([&](float value) {
            if (!(std::abs(value) < asGoodAsInfinite)) return;
            low = std::min(low, value);
            high = std::max(high, value);
        });
        range = low < high ? std::pair(double(low), double(high)) : std::pair(0.0, 1.0);
    }
    const double low = range->first, scale = 1 / (range->second - range->first);
    picture.black = range->first;
    picture.white = range->second;
    each([&](float& value) { value = float((double(value) - low) * scale); });
}

class LibraryFiles final : public PictureFiles {
public:
    Result<PictureFacts> facts(const QString& path) const override {
        return guarded<PictureFacts>([&]() -> Result<PictureFacts> {
            const Result<Opened> file = opened(path, true);
            if (!file) return file.error();
            const ImageSpec& spec = file->parts.front();
            if (const Result<void> sized = checkSize(spec); !sized) return sized.error();
            PictureFacts facts;
            facts.size = displaySizeOf(spec);
            facts.pixelAspect = pixelAspectOf(spec);
            facts.exifOrientation = orientationOf(spec);
            facts.framesPerSecond = rateOf(spec);
            facts.timecode = timecodeOf(spec);
            facts.layers = layersOf(file->parts);
            return facts;
        });
    }

    Result<ReadPicture> read(const QString& path, const QString& layer, const PictureRoom& room) const override {
        return guarded<ReadPicture>([&]() -> Result<ReadPicture> {
            if (const char* format = formatOf(path); format && isCutOff(path, format))
                return Error{QStringLiteral("is cut off")};
            Result<Opened> file = opened(path, !layer.isEmpty());
            if (!file) return file.error();
            const Result<ChannelChoice> choice = channelsOf(file->parts, layer);
            if (!choice) return choice.error();
            const ImageSpec& spec = file->parts[size_t(choice->part)];
            if (const Result<void> sized = checkSize(spec); !sized) return sized.error();
            return readChoice(*file->input, spec, *choice, room);
        });
    }

private:
    /// The library throws where memory is short, and what it is made of may for other reasons.
    template<class Answer, class Act>
    static Result<Answer> guarded(const Act& act) {
        try {
            return act();
        } catch (const std::exception& trouble) {
            return Error{QString::fromLocal8Bit(trouble.what()).simplified()};
        }
    }

    static Result<ReadPicture> readChoice(ImageInput& input, const ImageSpec& spec, const ChannelChoice& choice,
                                          const PictureRoom& room) {
        const Form form = formOf(spec, choice);
        ReadPicture picture;
        picture.size = displaySizeOf(spec);
        picture.numbers = form.numbers;
        picture.planes = int(choice.channels.size());
        picture.stride = (qsizetype(picture.size.width()) * form.bytes + lineUnit - 1) / lineUnit * lineUnit;
        picture.pixelAspect = pixelAspectOf(spec);
        picture.exifOrientation = orientationOf(spec);
        uchar* bytes = room(size_t(picture.stride) * size_t(picture.size.height()) * size_t(picture.planes));
        if (!bytes) return Error{QStringLiteral("there is no memory for it")};
        const Placing placing(spec, choice, form, picture, bytes);
        if (const Result<void> lines = readLines(input, spec, choice.part, placing, form); !lines) return lines.error();
        if (form.type == TypeDesc::UINT32) widen(picture, bytes);
        const bool isReal = form.numbers == ReadPicture::Numbers::real || form.numbers == ReadPicture::Numbers::half;
        if ((choice.isData || choice.range) && form.numbers == ReadPicture::Numbers::real)
            bringBetweenBlackAndWhite(picture, bytes, choice.range);
        picture.isSceneLinear = isReal && choice.isColour;
        for (const int channel : choice.channels)
            if (size_t(channel) < spec.channelnames.size())
                picture.channels << QString::fromStdString(spec.channelnames[size_t(channel)]);
        // What is no colour goes to no display: the name under which configurations know such numbers.
        picture.colourSpace = choice.isColour ? spaceOf(spec, isReal) : QStringLiteral("data");
        return picture;
    }

    /// What the file itself says; what the library merely supposes of every file of a kind doesn't count.
    static QString spaceOf(const ImageSpec& spec, bool isReal) {
        if (const QString space = QString::fromStdString(spec.get_string_attribute("colorInteropID")); !space.isEmpty())
            return space;
        if (spec.get_int_attribute("acesImageContainerFlag") == 1) return QStringLiteral("ACES2065-1");
        return isReal ? spaceOfPrimaries(spec) : QString();
    }
};

} // namespace

} // namespace daylark::formats

extern "C" __attribute__((visibility("default"))) const daylark::PictureFiles* daylarkPictureFiles(int version) {
    static const daylark::formats::LibraryFiles files;
    return version == daylark::PictureFiles::version ? &files : nullptr;
}
