#include "media/facts/MediaTypes.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <string_view>

namespace daylark {
namespace {

// Both sorted; sound-only extensions stand in neither.
constexpr std::array<std::string_view, 47> movieExtensions{
    "264",   "265",  "3g2",  "3gp",  "3gpp", "amv", "asf",  "avi", "dif",  "divx", "dv",  "f4v",
    "flv",   "gxf",  "h264", "h265", "hevc", "ivf", "m1v",  "m2t", "m2ts", "m2v",  "m4v", "mj2",
    "mjpeg", "mjpg", "mk3d", "mkv",  "moov", "mov", "mp4",  "mpe", "mpeg", "mpg",  "mpv", "mts",
    "mxf",   "nut",  "ogm",  "ogv",  "qt",   "rm",  "rmvb", "ts",  "vob",  "webm", "wmv"};
constexpr std::array<std::string_view, 47> imageExtensions{
    "avif", "bmp", "cin", "cr2", "dib",  "dng", "dpx", "exr",  "gif",  "hdr", "heic", "heif",
    "icns", "ico", "j2c", "j2k", "jfif", "jif", "jp2", "jpe",  "jpeg", "jpf", "jpg",  "jpx",
    "jxl",  "nef", "pbm", "pcx", "pfm",  "pgm", "pic", "pict", "png",  "pnm", "ppm",  "psb",
    "psd",  "ras", "rgb", "sgi", "sun",  "tga", "tif", "tiff", "webp", "xbm", "xpm"};
static_assert(std::is_sorted(movieExtensions.begin(), movieExtensions.end()));
static_assert(std::is_sorted(imageExtensions.begin(), imageExtensions.end()));

} // namespace

MediaType mediaTypeOfPath(const QString& path) {
    const QByteArray extension = QFileInfo(path).suffix().toLower().toUtf8();
    const std::string_view key(extension.constData(), size_t(extension.size()));
    if (std::binary_search(movieExtensions.begin(), movieExtensions.end(), key)) return MediaType::movie;
    if (std::binary_search(imageExtensions.begin(), imageExtensions.end(), key)) return MediaType::image;
    return MediaType::other;
}

QStringList extensionsOf(MediaType type) {
    QStringList extensions;
    const auto add = [&extensions](const auto& table) {
        for (const std::string_view each : table)
            extensions << QString::fromLatin1(each.data(), qsizetype(each.size()));
    };
    if (type == MediaType::movie) add(movieExtensions);
    if (type == MediaType::image) add(imageExtensions);
    return extensions;
}

} // namespace daylark
