// Where the module is looked for: beside the program, as it is built and as it is installed. And what it never gets to see.
#include "media/container/RegularFile.h"
#include "media/sequence/PictureFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLibrary>

#include <dlfcn.h>

#include <chrono>
#include <memory>
#include <mutex>
#include <thread>

namespace daylark {

namespace {

/// Nothing but a regular file reaches the library, which would wait at a pipe for ever, and only on a disk that answers.
class RegularPictureFiles final : public PictureFiles {
public:
    explicit RegularPictureFiles(const PictureFiles& library)
        : library_(library) {}
    Result<PictureFacts> facts(const QString& path) const override {
        const auto file = RegularFile::at(path);
        return file ? library_.facts(path) : Result<PictureFacts>(file.error());
    }
    Result<ReadPicture> read(const QString& path, const QString& layer, const PictureRoom& room) const override {
        const auto file = RegularFile::at(path);
        return file ? library_.read(path, layer, room) : Result<ReadPicture>(file.error());
    }

private:
    const PictureFiles& library_;
};

/// Whoever begins a thread while a library is loaded waits for it, the interface too, and all that the module needs at once
/// takes a second. So they come one after the other, those first that need none of the rest, with a gap after each for who
/// waits; that is quicker besides, since each looks for its names among few. The build writes the list; what it names in vain
/// the module finds itself.
void loadNeeds(const QString& list) {
    QFile file(list);
    if (!file.open(QIODevice::ReadOnly)) return;
    const QList<QByteArray> names = file.readAll().split('\n');
    for (auto name = names.crbegin(); name != names.crend(); ++name) {
        if (name->isEmpty()) continue;
        static_cast<void>(dlopen(name->constData(), RTLD_LAZY | RTLD_LOCAL)); // they stay, as the module does
        std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
}

const PictureFiles* loaded(QString& trouble) {
    // By the kernel: there may be no application object yet, or none at all.
    const QDir home = QFileInfo(QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget()).dir();
    const QString name = QDir::cleanPath(home.filePath(QStringLiteral(DAYLARK_MODULES "/daylark-formats")));
    loadNeeds(name + QStringLiteral(".needs"));
    QLibrary module(name);
    module.setLoadHints(QLibrary::PreventUnloadHint);
    using Entry = const PictureFiles* (*)(int);
    const auto entry = reinterpret_cast<Entry>(module.resolve("daylarkPictureFiles"));
    if (!entry) {
        trouble = QStringLiteral("the module for runs of pictures cannot be loaded: %1").arg(module.errorString());
        return nullptr;
    }
    const PictureFiles* files = entry(PictureFiles::version);
    if (!files) trouble = QStringLiteral("the module for runs of pictures is of another version (%1)").arg(module.fileName());
    return files;
}

} // namespace

Result<const PictureFiles*> pictureFiles() {
    static std::once_flag once;
    static std::unique_ptr<const PictureFiles> files;
    static QString trouble;
    std::call_once(once, [] {
        if (const PictureFiles* library = loaded(trouble)) files = std::make_unique<RegularPictureFiles>(*library);
    });
    if (!files) return Error{trouble};
    return files.get();
}

} // namespace daylark
