// Names of files as strangers give them: each is one picture of one run or stands alone, and a run gives its names back.
#include "model/runs/RunNames.h"

#include "SeedFolder.h"

#include <cstdint>
#include <cstdlib>

using namespace daylark;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    fuzz::seedCorpus(*argc, *argv, "folder",
                     "sh010_v002.1001.exr\nsh010_v002.1002.exr\nsh010_v002.0999.exr\na-001.png\na-002.png\na1");
    fuzz::seedCorpus(*argc, *argv, "patterns", "sh010.%04d.exr\nsh010.####.exr\nsh010.1001-1099x2@@@.exr\na.-5--1#.png\n#1-2#");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    QStringList names = QString::fromUtf8(reinterpret_cast<const char*>(bytes), qsizetype(size)).split(QLatin1Char('\n'));
    names.removeDuplicates();
    const FolderNames folder = takeApart(names);
    qsizetype told = folder.others.size();
    for (const NamedRun& run : folder.runs) {
        if (!run.run.isValid() || run.numbers.empty()) std::abort();
        told += qsizetype(run.numbers.size());
        for (const qint64 number : run.numbers) {
            const QString name = run.run.nameOf(number);
            if (!names.contains(name) || run.run.numberIn(name) != number || !run.run.frameOf(number)) std::abort();
        }
    }
    if (told != names.size()) std::abort();
    for (const QString& name : names)
        if (const auto pattern = runPatternOf(name)) {
            if (!pattern->run.isValid()) std::abort();
            static_cast<void>(pattern->run.text());
            static_cast<void>(pattern->run.addressText());
        }
    return 0;
}
