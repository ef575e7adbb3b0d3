// Bundles from strangers, read without their large data: what is left on the disk lies in the file.
#include "archive/LargeArchive.h"

#include "SeedFolder.h"
#include "model/Session.h"
#include "model/bundle/MovieBundle.h"

#include <cstdint>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

using namespace daylark;

namespace {

constexpr qint64 large = 24;

void use(const LargeArchive& archive, qint64 size) {
    const auto bundle = std::dynamic_pointer_cast<DLMovieBundle>(archive.root()[u"movie"].object());
    if (!bundle) return;
    for (const QByteArray& data : {bundle->mAudioData, bundle->mQTMovieData})
        if (const auto place = archive.left(data))
            if (place->length < large || place->offset < 8 || place->offset > size - place->length) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    auto bundle = std::make_shared<DLMovieBundle>();
    bundle->mMetaData = std::make_shared<Movie>(QStringLiteral("/dailies/A001.mov"), QByteArray("bookmark"));
    bundle->mQTMovieData = QByteArray(300, 'm');
    bundle->mAudioData = QByteArray(large, 'a');
    fuzz::seedCorpus(*argc, *argv, "bundle", encodeBundleRoot(bundle));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const int file = ::memfd_create("bundle", MFD_CLOEXEC);
    if (file < 0 || ::write(file, bytes, size) != ssize_t(size)) std::abort();
    const auto archive = LargeArchive::read(QStringLiteral("/proc/self/fd/%1").arg(file), recordClasses(), large);
    if (archive) use(*archive, qint64(size));
    ::close(file);
    return 0;
}
