// Where the module is looked for: beside the program, as it is built and as it is installed.
#include "media/sequence/PictureFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QLibrary>

#include <mutex>

namespace daylark {

namespace {

const PictureFiles* loaded(QString& trouble) {
    // By the kernel: there may be no application object yet, or none at all.
    const QDir home = QFileInfo(QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget()).dir();
    QLibrary module(QDir::cleanPath(home.filePath(QStringLiteral(DAYLARK_MODULES "/daylark-formats"))));
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
    static const PictureFiles* files = nullptr;
    static QString trouble;
    std::call_once(once, [] { files = loaded(trouble); });
    if (!files) return Error{trouble};
    return files;
}

} // namespace daylark
