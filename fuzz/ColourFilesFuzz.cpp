// Colour configurations and the tables that they name, from anywhere: read, made a processor of, applied. The first byte says
// which of them the rest is.
#include "picture/colour/ColourConfig.h"
#include "picture/colour/DisplayProcessor.h"

#include "SeedFolder.h"

#include <OpenColorIO/OpenColorIO.h>

#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

using namespace daylark;

namespace {

/// 0: the configuration itself.
constexpr const char* tables[] = {"",    "cube", "spi1d", "spi3d", "spimtx", "3dl", "csp", "clf", "ctf",
                                  "cc",  "ccc",  "cdl",   "lut",   "vf",     "hdl", "cub", "itx", "icc"};

constexpr char configWithTable[] = "ocio_profile_version: 1\n"
                                   "search_path: .\n"
                                   "roles:\n  default: a\n  scene_linear: a\n"
                                   "displays:\n  d:\n    - !<View> {name: v, colorspace: b}\n"
                                   "colorspaces:\n"
                                   "  - !<ColorSpace> {name: a}\n"
                                   "  - !<ColorSpace>\n    name: b\n"
                                   "    from_reference: !<FileTransform> {src: table.%1, interpolation: linear}\n";

bool write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    fuzz::seedCorpus(*argc, *argv, "config", QByteArray(1, '\0') + QByteArray(configWithTable).replace("%1", "cube"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    if (size < 1) return 0;
    const QByteArray bytes(reinterpret_cast<const char*>(data) + 1, qsizetype(size) - 1);
    const QByteArray suffix = tables[data[0] % std::size(tables)];
    const QString path = folder.filePath(QStringLiteral("config.ocio")),
                  table = folder.filePath(QStringLiteral("table.") + QString::fromLatin1(suffix));
    const bool isConfig = suffix.isEmpty();
    if (!write(path, isConfig ? bytes : QByteArray(configWithTable).replace("%1", suffix))) return 0;
    if (!isConfig && !write(table, bytes)) return 0;
    OCIO_NAMESPACE::ClearAllCaches(); // what was read under this name before
    if (const auto config = ColourConfig::read(path)) {
        const ColourConfig& read = **config;
        for (const ColourConfig::Space& space : read.spaces())
            static_cast<void>(read.spaceNamed(space.name));
        static_cast<void>(read.spaceByRule(QStringLiteral("/shots/sh010_lin.1001.exr")));
        static_cast<void>(read.spaceOf({QStringLiteral("/a.exr"), QStringLiteral("ACEScg"), true, true}));
        DisplayTransform transform = read.fitted({});
        transform.inputSpace = read.spaces().empty() ? QString() : read.spaces().front().name;
        if (const auto processor = read.processor(transform)) {
            float pixels[] = {0, 0, 0, 1, 0.18F, 1, -1, 1, 1e10F, -1e10F, 65504, 0};
            (*processor)->apply(pixels, 3);
        }
    }
    if (!isConfig) QFile::remove(table);
    return 0;
}
