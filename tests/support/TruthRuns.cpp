// The truth table's runs of numbered pictures, made by OpenImageIO, or byte by byte where it writes none of a kind.
#include "support/PictureMaker.h"
#include "support/TruthRows.h"

#include "model/runs/MovieRun.h"

#include <QDataStream>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace daylark::truth {
namespace {

using test::WrittenPicture;
using Change = std::function<void(WrittenPicture&)>;

const QSize runSize{192, 108};

/// A line of the table: a run of so many frames, all of which are whole and there unless it says otherwise.
struct RunRow {
    const char *name, *codec, *extension, *numbers = "half";
    Change change = {};
    int first = 1001, step = 1, padding = 4, count = 14;
    std::vector<int> missing = {}, cutOff = {}; ///< frames from 0
    MissingPicture instead = MissingPicture::held;
    Rate rate = r24;
    bool isRateInFile = false;
    QSize shape = runSize;
    void (*write)(const WrittenPicture& picture, const QString& path) = nullptr; ///< null: by the library
};

Change texts(const char* name, const char* value) {
    return [=](WrittenPicture& picture) { picture.texts.emplace_back(name, value); };
}

Change packed(const char* compression, bool tiles = false, bool mipped = false) {
    return [=](WrittenPicture& picture) {
        picture.texts.emplace_back("compression", compression);
        picture.tiles = tiles || mipped;
        if (mipped) picture.levels = WrittenPicture::Levels::halved;
    };
}

/// Only lines and columns of the data window are in the file.
WrittenPicture cropped(const WrittenPicture& whole, const QRect& part) {
    WrittenPicture picture = whole;
    picture.pixels.clear();
    const size_t channels = whole.channels.size();
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x) {
            const bool isInside = x >= 0 && y >= 0 && x < whole.width && y < whole.height;
            for (size_t channel = 0; channel < channels; ++channel)
                picture.pixels.push_back(
                    isInside ? whole.pixels[(size_t(y) * size_t(whole.width) + size_t(x)) * channels + channel] : 0.5F);
        }
    picture.fullWidth = whole.width;
    picture.fullHeight = whole.height;
    picture.x = part.x();
    picture.y = part.y();
    picture.width = part.width();
    picture.height = part.height();
    return picture;
}

Change window(const QRect& part, int fullX = 0, int fullY = 0) {
    return [=](WrittenPicture& picture) {
        picture = cropped(picture, part);
        picture.fullX = fullX;
        picture.fullY = fullY;
        picture.x += fullX;
        picture.y += fullY;
    };
}

/// Light in place of a display's numbers, as bright: the bar code is read off it as it is.
void asGrey(WrittenPicture& picture) {
    WrittenPicture grey = picture;
    grey.channels = {"Y"};
    grey.pixels.clear();
    for (size_t i = 0; i < picture.pixels.size(); i += 3)
        grey.pixels.push_back(picture.pixels[i + 1]);
    picture = grey;
}

void withAlphaAndDepth(WrittenPicture& picture) {
    test::addChannel(picture, "A", [](int, int) { return 1.0F; });
    test::addChannel(picture, "Z", [](int x, int) { return float(x); });
}

/// The colours stand in the first part; another one has other pictures.
void inTwoParts(WrittenPicture& picture) {
    WrittenPicture other = test::barCodePicture({}, 4711, runSize);
    other.path = picture.path;
    picture.partName = "beauty";
    other.partName = "matte";
    picture.further = {other};
}

void wide(WrittenPicture& picture) {
    picture.reals = {{"PixelAspectRatio", 2.0F}};
}

quint8 byteOf(float value) {
    return quint8(std::lround(std::clamp(value, 0.0F, 1.0F) * 255));
}

/// Planes of bytes, nothing packed.
void writePhotoshop(const WrittenPicture& picture, const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return;
    QDataStream out(&file);
    out.writeRawData("8BPS", 4);
    out << quint16(1) << quint32(0) << quint16(0) << quint16(3) << quint32(picture.height) << quint32(picture.width)
        << quint16(8) << quint16(3) << quint32(0) << quint32(0) << quint32(0) << quint16(0);
    for (size_t channel = 0; channel < 3; ++channel)
        for (size_t i = channel; i < picture.pixels.size(); i += 3)
            out << byteOf(picture.pixels[i]);
}

/// Ten bits of each colour in a word, behind a header of the sizes alone.
void writeCineon(const WrittenPicture& picture, const QString& path) {
    constexpr quint32 undefined = 0xffffffffU, headerBytes = 2048;
    QByteArray header(headerBytes, char(0xff));
    const auto put = [&header](int at, quint32 value) {
        for (int i = 0; i < 4; ++i)
            header[at + i] = char(value >> (8 * (3 - i)));
    };
    const quint32 fileBytes = headerBytes + quint32(picture.width) * quint32(picture.height) * 4;
    const quint32 words[] = {0x802a5fd7U, headerBytes, 1024, 1024, 0, fileBytes};
    for (int i = 0; i < 6; ++i)
        put(4 * i, words[i]);
    std::fill(header.begin() + 24, header.begin() + 192, '\0');
    header[192] = 0; // left to right, top to bottom
    header[193] = 3; // channels
    for (int channel = 0; channel < 3; ++channel) {
        const int at = 196 + 28 * channel;
        header[at] = 0;
        header[at + 1] = char(channel + 1);
        header[at + 2] = 10;
        header[at + 3] = 0;
        put(at + 4, quint32(picture.width));
        put(at + 8, quint32(picture.height));
        put(at + 12, 0);
        put(at + 16, undefined);
        put(at + 20, 1023);
        put(at + 24, undefined);
    }
    header[680] = 0; // by pixel
    header[681] = 5; // words of 32 bits, filled up at the end
    header[682] = 0;
    header[683] = 0;
    put(684, 0);
    put(688, 0);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return;
    file.write(header);
    QDataStream out(&file);
    for (size_t i = 0; i + 2 < picture.pixels.size(); i += 3) {
        quint32 word = 0;
        for (size_t channel = 0; channel < 3; ++channel)
            word = word << 10 | quint32(std::lround(std::clamp(picture.pixels[i + channel], 0.0F, 1.0F) * 1023));
        out << (word << 2);
    }
}

std::vector<RunRow> lightRuns() {
    const QRect small(0, 0, runSize.width(), 60), large(-20, -10, runSize.width() + 45, runSize.height() + 30);
    return {
        {"RunExrHalfZip", "exr", "exr", "half", packed("zip")},
        {"RunExrFloatZips", "exr", "exr", "float", packed("zips")},
        {"RunExrHalfPiz", "exr", "exr", "half", packed("piz")},
        {"RunExrFloatPiz", "exr", "exr", "float", packed("piz")},
        {"RunExrHalfRle", "exr", "exr", "half", packed("rle")},
        {"RunExrPxr24", "exr", "exr", "float", packed("pxr24")},
        {"RunExrB44", "exr", "exr", "half", packed("b44")},
        {"RunExrB44a", "exr", "exr", "half", packed("b44a")},
        {"RunExrDwaa", "exr", "exr", "half", packed("dwaa:45")},
        {"RunExrDwab", "exr", "exr", "float", packed("dwab:45")},
        {"RunExrNotPacked", "exr", "exr", "half", packed("none")},
        {"RunExrTiles", "exr", "exr", "half", packed("zip", true)},
        {"RunExrMipLevels", "exr", "exr", "half", packed("zip", true, true)},
        {"RunExrTwoParts", "exr", "exr", "half", inTwoParts},
        {"RunExrGreyAlone", "exr", "exr", "half", asGrey},
        {"RunExrAlphaAndDepth", "exr", "exr", "half", withAlphaAndDepth},
        {"RunExrDataWindowSmall", "exr", "exr", "half", window(small)},
        {"RunExrDataWindowLarge", "exr", "exr", "half", window(large)},
        {"RunExrDisplayWindowAway", "exr", "exr", "half", window(large, 300, -40)},
        {.name = "RunExrPixelAspect", .codec = "exr", .extension = "exr", .change = wide,
         .shape = {2 * runSize.width(), runSize.height()}},
        {"RunHdr", "hdr", "hdr", "float"},
    };
}

std::vector<RunRow> codeRuns() {
    return {
        {"RunDpx8", "dpx", "dpx", "uint8"},
        {"RunDpx10", "dpx", "dpx", "uint10"},
        {"RunDpx16", "dpx", "dpx", "uint16"},
        {"RunDpx10LittleEnd", "dpx", "dpx", "uint10", texts("oiio:Endian", "little")},
        {.name = "RunCineon", .codec = "cineon", .extension = "cin", .numbers = "uint10", .write = writeCineon},
        {"RunTiff8Lzw", "tiff", "tif", "uint8", texts("compression", "lzw")},
        {"RunTiff16", "tiff", "tif", "uint16", texts("compression", "zip")},
        {"RunTiffFloat", "tiff", "tiff", "float", texts("compression", "none")},
        {"RunTiffPlanes", "tiff", "tif", "uint16", texts("planarconfig", "separate")},
        {"RunTiffTiles", "tiff", "tif", "uint8", packed("zip", true)},
        {"RunTiffMipLevels", "tiff", "tif", "uint8", packed("zip", true, true)},
        {"RunPng8", "png", "png", "uint8"},
        {"RunPng16", "png", "png", "uint16"},
        {"RunJpeg", "jpeg", "jpg", "uint8"},
        {"RunTga", "targa", "tga", "uint8"},
        {"RunTgaRle", "targa", "tga", "uint8", texts("compression", "rle")},
        {"RunWebp", "webp", "webp", "uint8"},
        {"RunBmp", "bmp", "bmp", "uint8"},
        {.name = "RunPhotoshop", .codec = "psd", .extension = "psd", .numbers = "uint8", .write = writePhotoshop},
    };
}

/// What is missing, and files that a program is still writing: as good as missing, whatever they are.
std::vector<RunRow> gappyRuns() {
    std::vector<RunRow> rows{
        {.name = "RunGapsHeld", .codec = "exr", .extension = "exr", .count = 24, .missing = {3, 9, 10, 11, 20}},
        {.name = "RunGapsBlack", .codec = "exr", .extension = "exr", .count = 24, .missing = {3, 9, 10, 11, 20},
         .instead = MissingPicture::black},
        {.name = "RunGapsSlate", .codec = "exr", .extension = "exr", .count = 24, .missing = {3, 9, 10, 11, 20},
         .instead = MissingPicture::slate},
    };
    struct Kind {
        const char *name, *codec, *extension, *numbers;
        void (*write)(const WrittenPicture& picture, const QString& path) = nullptr;
    };
    static constexpr Kind kinds[] = {{"RunHalfWrittenExr", "exr", "exr", "half"},
                                     {"RunHalfWrittenDpx", "dpx", "dpx", "uint10"},
                                     {"RunHalfWrittenCineon", "cineon", "cin", "uint10", writeCineon},
                                     {"RunHalfWrittenTiff", "tiff", "tif", "uint16"},
                                     {"RunHalfWrittenPng", "png", "png", "uint8"},
                                     {"RunHalfWrittenJpeg", "jpeg", "jpg", "uint8"},
                                     {"RunHalfWrittenTga", "targa", "tga", "uint8"},
                                     {"RunHalfWrittenWebp", "webp", "webp", "uint8"},
                                     {"RunHalfWrittenHdr", "hdr", "hdr", "float"},
                                     {"RunHalfWrittenBmp", "bmp", "bmp", "uint8"},
                                     {"RunHalfWrittenPhotoshop", "psd", "psd", "uint8", writePhotoshop}};
    for (const Kind& kind : kinds)
        rows.push_back({.name = kind.name, .codec = kind.codec, .extension = kind.extension, .numbers = kind.numbers,
                        .cutOff = {2, 7, 8}, .write = kind.write});
    return rows;
}

std::vector<RunRow> numberedRuns() {
    const auto grows = [](WrittenPicture& picture) { // one of another size among them
        const int number = picture.number;
        if (number % 7 == 3) {
            const std::string path = picture.path;
            picture = test::barCodePicture({}, number, {240, 160});
            picture.path = path;
        }
    };
    return {
        {.name = "RunUnpadded", .codec = "exr", .extension = "exr", .first = 7, .padding = 0},
        {.name = "RunNegative", .codec = "exr", .extension = "exr", .first = -6},
        {.name = "RunEverySecond", .codec = "png", .extension = "png", .numbers = "uint8", .step = 2, .missing = {4}},
        {.name = "RunSixDigits", .codec = "png", .extension = "png", .numbers = "uint8", .first = 86400, .padding = 6},
        {.name = "RunRateOfFilm", .codec = "exr", .extension = "exr", .rate = film, .isRateInFile = true},
        {.name = "RunRateByHand", .codec = "png", .extension = "png", .numbers = "uint8", .rate = ntsc},
        {.name = "RunOtherSizeInTheMiddle", .codec = "exr", .extension = "exr", .change = grows, .shape = {}},
    };
}

Result<Expectation> makeRun(const RunRow& row, const QString& folder) {
    RunAddress address;
    address.folder = folder;
    address.movie.run = {QString::fromLatin1(row.name) + QLatin1Char('.'),
                         QLatin1Char('.') + QString::fromLatin1(row.extension),
                         row.padding,
                         false,
                         row.first,
                         row.first + (row.count - 1) * row.step,
                         row.step};
    address.view.missing = row.instead;
    if (!row.isRateInFile) address.movie.rate = {row.rate.num, row.rate.den};
    const auto among = [](const std::vector<int>& frames, int n) {
        return std::find(frames.begin(), frames.end(), n) != frames.end();
    };
    Expectation expected;
    int held = 0;
    for (int n = 0; n < row.count; ++n) {
        const int number = n + 1;
        const bool isThere = !among(row.missing, n), isWhole = isThere && !among(row.cutOff, n);
        const QString path = address.pathOf(address.movie.run.numberAt(n));
        WrittenPicture picture = test::barCodePicture(path, number, runSize);
        picture.numbers = row.numbers;
        picture.number = number;
        if (row.isRateInFile) picture.rate = row.rate.num, picture.rateScale = row.rate.den;
        if (row.change) row.change(picture);
        if (isThere) row.write ? row.write(picture, path) : test::writePicture(picture);
        QFile file(path);
        if (isThere && !isWhole && !file.resize(file.size() * 3 / 5)) return Error{file.errorString()};
        if (isWhole) held = number;
        const bool isShown = isWhole || row.instead == MissingPicture::held;
        expected.pictures.push_back(isShown ? held : Expectation::none);
        expected.starts.push_back(qint64(n) * row.rate.den);
    }
    expected.scale = row.rate.num;
    expected.end = qint64(row.count) * row.rate.den;
    expected.shape = row.shape;
    expected.media = address.text();
    return expected;
}

} // namespace

std::vector<Clip> runClips() {
    std::vector<Clip> clips;
    for (const std::vector<RunRow>& rows : {lightRuns(), codeRuns(), gappyRuns(), numberedRuns()})
        for (const RunRow& row : rows) {
            Clip clip;
            clip.name = row.name;
            clip.spec.path = QStringLiteral("run of pictures");
            clip.spec.encoder = QString::fromLatin1(row.codec);
            clip.make = [row](const MovieSpec& spec) { return makeRun(row, QFileInfo(spec.path).absolutePath()); };
            clips.push_back(clip);
        }
    return clips;
}

} // namespace daylark::truth
