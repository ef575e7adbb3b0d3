// Files of a cache folder that anyone may have written: what is taken for a table holds together.
#include "media/index/SampleTableFile.h"

#include "SeedFolder.h"

#include <QtEndian>

#include <cstdint>
#include <cstdlib>

extern "C" {
#include <libavutil/crc.h>
}

using namespace daylark;

namespace {

const TableFileKey key{QStringLiteral("/movies/shot.mkv"), 1 << 20, 1000};

/// Three frames, reordered, with a second set of parameters.
SampleTable seedTable() {
    SampleTable table;
    table.descriptions = {QByteArray("\1\2\3", 3)};
    table.packets = {{0, 100, 7, 0, true, 0}, {80, 200, 8, 2, false, 1}, {40, 300, 9, 1, false, 1}};
    table.index.samples = {{0, 0, true}, {40, 1, false}, {80, 2, false}};
    table.index.timeBaseDen = 1000;
    table.index.timeScale = 25;
    table.index.step = 1;
    table.index.endTicks = 3;
    return table;
}

/// Writes the check sum that these bytes would have: past it lies what is worth trying.
bool mendSum(QByteArray& bytes) {
    constexpr qsizetype head = 12, at = 8;
    if (bytes.size() <= head) return false;
    const quint32 sum = av_crc(av_crc_get_table(AV_CRC_32_IEEE), 0,
                               reinterpret_cast<const uint8_t*>(bytes.constData()) + head, size_t(bytes.size() - head));
    qToBigEndian(sum, bytes.data() + at);
    return true;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    fuzz::seedCorpus(*argc, *argv, "table", encodeTable(key, seedTable()));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    for (const bool mended : {false, true}) {
        if (mended && !mendSum(bytes)) return 0;
        const std::optional<SampleTable> table = decodeTable(key, bytes);
        if (!table) continue;
        if (table->packetOfFrame.size() != table->index.samples.size() || table->packetOfFrame.empty()) std::abort();
        for (size_t n = 0; n < table->packetOfFrame.size(); ++n)
            if (table->packets.at(size_t(table->packetOfFrame[n])).frame != qint32(n)) std::abort();
        for (const SampleTable::Packet& packet : table->packets)
            if (packet.description > table->descriptions.size()) std::abort();
    }
    return 0;
}
