// Pictures of runs as strangers give them: headers told, pictures and layers read, through the module as the program loads it.
// The first byte says what the file is called.
#include "media/sequence/PictureFiles.h"

#include "SeedFolder.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace daylark;

namespace {

constexpr const char* suffixes[] = {"exr",  "dpx", "cin", "tif", "png", "jpg", "tga",
                                    "webp", "hdr", "psd", "bmp", "sgi", "ppm", "pfm"};
constexpr size_t mostBytes = size_t(64) << 20; // of one picture, here

void readPicture(const PictureFiles& files, const QString& path, const QString& layer, const PictureFacts& facts) {
    std::vector<uchar> room;
    const auto picture = files.read(path, layer, [&room](size_t bytes) -> uchar* {
        if (bytes > mostBytes) return nullptr;
        room.resize(bytes);
        return room.data();
    });
    if (!picture) return;
    if (picture->size != facts.size && layer.isEmpty()) std::abort();
    if (picture->planes != 1 && picture->planes != 3) std::abort();
    if (picture->stride * picture->size.height() * picture->planes != qsizetype(room.size())) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    if (!pictureFiles()) {
        std::fprintf(stderr, "the module for pictures is not there\n");
        std::abort();
    }
    fuzz::seedCorpus(*argc, *argv, "grey", QByteArray("\x0c") + "P5 2 2 255\n" + "abcd");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    if (size < 1) return 0;
    QFile file(folder.filePath(QStringLiteral("fuzzed.") + QLatin1String(suffixes[data[0] % std::size(suffixes)])));
    if (!file.open(QIODevice::WriteOnly)) return 0;
    file.write(reinterpret_cast<const char*>(data) + 1, qint64(size) - 1);
    file.close();
    const PictureFiles& files = **pictureFiles();
    if (const auto facts = files.facts(file.fileName())) {
        readPicture(files, file.fileName(), {}, *facts);
        for (const QString& layer : facts->layers.mid(0, 3))
            readPicture(files, file.fileName(), layer, *facts);
    }
    file.remove();
    return 0;
}
