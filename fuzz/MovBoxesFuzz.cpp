// Headers of QuickTime and MP4 files from anywhere: walked, and their sample tables read.
#include "media/container/MovBoxes.h"

#include "SeedFolder.h"

#include <QtEndian>

#include <cstdint>
#include <cstdlib>

using namespace daylark;

namespace {

constexpr qint64 fileSize = 1 << 20;

QByteArray number(quint32 value) {
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray numbers(std::initializer_list<quint32> values) {
    QByteArray bytes;
    for (const quint32 value : values)
        bytes += number(value);
    return bytes;
}

QByteArray box(const char* type, const QByteArray& content) {
    return number(quint32(content.size() + 8)) + QByteArray(type, 4) + content;
}

/// A track of three samples in two chunks, with every table that is read.
QByteArray seedHeader() {
    const QByteArray tables = box("stsd", numbers({0, 1}) + box("avc1", QByteArray(78, '\0'))) +
                              box("stsz", numbers({0, 0, 3, 10, 20, 30})) +
                              box("stz2", numbers({0, 4, 3}) + QByteArray("\x12\x30", 2)) +
                              box("stsc", numbers({0, 2, 1, 2, 1, 2, 1, 1})) +
                              box("stco", numbers({0, 2, 100, 200})) + box("ctts", numbers({0, 1, 3, 512}));
    const QByteArray media = box("mdhd", numbers({0, 0, 0, 12288, 1536})) +
                             box("hdlr", numbers({0, 0}) + QByteArray("vide")) +
                             box("minf", box("stbl", tables));
    return box("trak", box("tkhd", numbers({0, 0, 0, 1})) + box("mdia", media)) + box("mvex", {});
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    fuzz::seedCorpus(*argc, *argv, "header", seedHeader());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MovBoxes boxes =
        MovBoxes::of(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)), fileSize);
    static_cast<void>(boxes.isFragmented());
    for (const MovBoxes::Track& track : boxes.tracks()) {
        for (const MovBoxes::Box& description : MovBoxes::sampleDescriptions(track))
            if (description.content.size() > qsizetype(size)) std::abort();
        const auto samples = boxes.samples(track);
        if (!samples) continue;
        for (const MovBoxes::Sample& sample : *samples)
            if (sample.position + sample.size > quint64(fileSize)) std::abort(); // outside the file
    }
    return 0;
}
