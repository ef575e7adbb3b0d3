#include "media/index/SampleTable.h"

#include "media/facts/FrameRate.h"
#include "media/index/MovEdits.h"
#include "media/index/SampleOrder.h"
#include "media/index/SampleReading.h"

#include <algorithm>

namespace daylark {
namespace {


/// How many samples at most come later on the screen than one that follows them in the file.
int reorderDepthOf(const std::vector<SampleTable::Packet>& packets) {
    constexpr size_t deepest = 16;
    int depth = 0;
    for (size_t place = 1; place < packets.size(); ++place) {
        if (packets[place].frame < 0) continue;
        int later = 0;
        for (size_t back = 1; back <= std::min(place, deepest); ++back)
            later += packets[place - back].frame > packets[place].frame;
        depth = std::max(depth, later);
    }
    return depth;
}

SampleTable tableOf(const std::vector<RawSample>& samples, std::vector<qint32> order,
                    const AVStream& stream) {
    SampleTable table;
    table.packets.reserve(samples.size());
    for (const RawSample& sample : samples) {
        table.packets.push_back(
            {sample.pts, sample.position, sample.content, -1, sample.key, sample.description});
        table.halves = table.halves || sample.secondField;
    }
    table.packetOfFrame = std::move(order);
    table.index.timeBaseNum = stream.time_base.num;
    table.index.timeBaseDen = stream.time_base.den;
    for (size_t n = 0; n < table.packetOfFrame.size(); ++n) {
        SampleTable::Packet& packet = table.packets[size_t(table.packetOfFrame[n])];
        packet.frame = qint32(n);
        table.index.samples.push_back({packet.stamp, 0, packet.key});
    }
    const auto& shown = table.packetOfFrame;
    const RawSample last = shown.empty() ? RawSample() : samples[size_t(shown.back())];
    setClock(table.index, stream, last.duration, last.still ? LastFrame::stands : LastFrame::asOthers);
    table.reorderDepth = reorderDepthOf(table.packets);
    return table;
}

} // namespace

bool SampleTable::isAt(size_t place, const AVPacket& packet) const {
    if (place >= packets.size()) return false;
    const Packet& entry = packets[place];
    if (entry.position >= 0 && packet.pos >= 0 && entry.position != packet.pos) return false;
    if (entry.content && entry.content != contentOf(packet)) return false;
    return !stampsHold || entry.stamp == (packet.pts != unknownTime ? packet.pts : packet.dts);
}

bool SampleTable::canRecognise(size_t place) const {
    if (stampsHold || packets[place].position >= 0) return true;
    return std::count_if(packets.begin(), packets.end(),
                         [&](const Packet& packet) { return packet.content == packets[place].content; }) == 1;
}

Result<SampleTable> buildSampleTable(const MediaFile& file) {
    if (!file.video()) return file.noPicture();
    Result<RawSamples> read = readSamples(file);
    if (!read) return read.error();
    std::vector<RawSample>& samples = read->samples;
    std::vector<qint64> stamps;
    stamps.reserve(samples.size());
    for (const RawSample& sample : samples)
        stamps.push_back(sample.pts != unknownTime ? sample.pts : sample.dts);
    const bool stampsHold = std::none_of(samples.begin(), samples.end(),
                                         [](const RawSample& s) { return s.pts == unknownTime; }) ||
                            !(file.format()->iformat->flags & AVFMT_TS_DISCONT);
    evenOutRunsAhead(file, samples);
    joinRestarts(file, samples);
    if (const auto done = completeTimes(file, samples); !done) return done.error();
    placeByEdits(file, samples);
    if (const auto done = dropUndecodableStart(file, samples); !done) return done.error();
    Result<std::vector<qint32>> order = orderOfShown(file, samples);
    if (!order) return order.error();
    SampleTable table = tableOf(samples, std::move(*order), *file.video());
    table.stampsHold = stampsHold;
    table.readThrough = read->readThrough;
    table.descriptions = std::move(read->descriptions);
    for (size_t place = 0; place < stamps.size(); ++place)
        table.packets[place].stamp = stamps[place];
    return table;
}

} // namespace daylark
