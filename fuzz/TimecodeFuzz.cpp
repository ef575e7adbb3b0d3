// Movie headers from strangers, read for their timecode tracks; and start timecodes as text.
#include "media/facts/TimecodeTrack.h"

#include "../tests/support/TimecodeMovie.h"
#include "SeedFolder.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>

using namespace daylark;
using test::TimecodeMovie;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    const TimecodeMovie::Track track{
        "tmcd", 3, 30, {TimecodeMovie::bytes(qint32(107562)), TimecodeMovie::bytes(1)}};
    fuzz::seedCorpus(*argc, *argv, "timecode", TimecodeMovie::header({track}, 8));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const QTemporaryDir folder;
    const QByteArray input(reinterpret_cast<const char*>(bytes), qsizetype(size));
    QFile file(folder.filePath(QStringLiteral("fuzzed.mov")));
    if (!file.open(QIODevice::WriteOnly)) return 0;
    file.write(TimecodeMovie::box("mdat", QByteArray(64, '\1')) + TimecodeMovie::box("moov", input));
    file.close();
    const std::vector<SmpteTime> samples = AVTimecodeReader(file.fileName()).readTimecodeSamples();
    if (!samples.empty()) static_cast<void>(timecodeText(1, 29.97F, samples.back()));
    static_cast<void>(smpteTimeOfText(QString::fromUtf8(input)));
    return 0;
}
