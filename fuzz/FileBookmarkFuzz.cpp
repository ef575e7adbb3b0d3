// Bookmark data out of session files, which come from anywhere.
#include "platform/FileBookmark.h"

#include "SeedFolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

namespace {

/// A folder with one marked file, the sibling folder that it was moved to, and its bookmark to start from.
class BookmarkedFile {
public:
    BookmarkedFile() {
        QDir(folder_.path()).mkpath(QStringLiteral("day1"));
        QDir(folder_.path()).mkpath(QStringLiteral("day2"));
        QFile file(folder_.filePath(QStringLiteral("day1/clip.mov")));
        if (!file.open(QIODevice::WriteOnly)) std::abort();
        file.write("picture");
        file.close();
        bookmark_ = daylark::createFileBookmark(file.fileName());
        if (bookmark_.isEmpty() || !file.rename(moved())) std::abort();
    }
    [[nodiscard]] QString moved() const { return folder_.filePath(QStringLiteral("day2/other.mov")); }
    [[nodiscard]] QString gone() const { return folder_.filePath(QStringLiteral("day1/gone.mov")); }
    [[nodiscard]] const QByteArray& bookmark() const { return bookmark_; }

private:
    QTemporaryDir folder_;
    QByteArray bookmark_;
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    daylark::fuzz::seedCorpus(*argc, *argv, "bookmark", BookmarkedFile().bookmark());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const BookmarkedFile file;
    const QByteArray input(reinterpret_cast<const char*>(bytes), qsizetype(size));
    // As it comes.
    const auto found = daylark::resolveFileBookmark(input, file.moved());
    if (!found || found->isEmpty())
        std::abort(); // a file stands at the stored path, so there is always an answer
    // And as damage to a real bookmark: the first byte says where the rest is put.
    QByteArray damaged = file.bookmark();
    if (!input.isEmpty()) {
        const qsizetype at = quint8(input[0]) % damaged.size();
        damaged.replace(at, input.size() - 1, input.mid(1));
    }
    static_cast<void>(daylark::resolveFileBookmark(damaged, file.gone()));
    return 0;
}
