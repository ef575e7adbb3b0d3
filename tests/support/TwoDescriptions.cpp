#include "support/TwoDescriptions.h"

#include "media/container/Av.h"
#include "media/container/MovBoxes.h"

#include <QFile>
#include <QtEndian>

#include <vector>

namespace daylark::truth {
namespace {

QByteArray number(quint64 value) {
    QByteArray bytes(4, '\0');
    qToBigEndian(quint32(value), bytes.data());
    return bytes;
}

QByteArray boxOf(MovBoxes::Type type, const QByteArray& content) {
    return number(quint64(content.size()) + 8) + number(type) + content;
}

/// The box's content with what lies down the path replaced.
QByteArray replaced(QByteArrayView content, const std::vector<MovBoxes::Type>& path, size_t depth,
                    const QByteArray& with) {
    QByteArray result;
    bool done = false;
    for (const MovBoxes::Box& box : MovBoxes::children(content)) {
        const bool hit = !done && box.type == path[depth];
        done = done || hit;
        if (!hit)
            result += boxOf(box.type, box.content.toByteArray());
        else if (depth + 1 == path.size())
            result += boxOf(box.type, with);
        else
            result += boxOf(box.type, replaced(box.content, path, depth + 1, with));
    }
    return result;
}

av::FormatPtr opened(const QString& path) {
    AVFormatContext* input = nullptr;
    if (avformat_open_input(&input, path.toUtf8().constData(), nullptr, nullptr) < 0) return nullptr;
    return av::FormatPtr(input);
}

/// Copies all packets, `shift` later; where the last one ends, or -1.
qint64 copyPackets(AVFormatContext& input, AVFormatContext& output, qint64 shift, int& count) {
    const av::PacketPtr packet(av_packet_alloc());
    const AVRational from = input.streams[0]->time_base, to = output.streams[0]->time_base;
    qint64 end = shift;
    count = 0;
    while (av_read_frame(&input, packet.get()) >= 0) {
        ++count;
        av_packet_rescale_ts(packet.get(), from, to);
        packet->pts += shift;
        packet->dts += shift;
        end = std::max<qint64>(end, packet->pts + packet->duration);
        packet->stream_index = 0;
        packet->pos = -1;
        if (av_write_frame(&output, packet.get()) < 0) return -1;
        av_packet_unref(packet.get());
    }
    return end;
}

/// How many samples the first file had; 0: it failed.
int copyBoth(const QString& first, const QString& second, const QString& joined) {
    const av::FormatPtr one = opened(first), two = opened(second);
    AVFormatContext* output = nullptr;
    const QByteArray path = joined.toUtf8();
    if (!one || !two || avformat_alloc_output_context2(&output, nullptr, "mov", path.constData()) < 0) return 0;
    AVStream* stream = avformat_new_stream(output, nullptr);
    avcodec_parameters_copy(stream->codecpar, one->streams[0]->codecpar);
    stream->codecpar->codec_tag = 0;
    stream->time_base = one->streams[0]->time_base;
    stream->avg_frame_rate = one->streams[0]->avg_frame_rate;
    int count = 0, rest = 0;
    if (avio_open(&output->pb, path.constData(), AVIO_FLAG_WRITE) >= 0) {
        if (avformat_write_header(output, nullptr) >= 0) {
            const qint64 end = copyPackets(*one, *output, 0, count);
            if (end < 0 || copyPackets(*two, *output, end, rest) < 0) count = 0;
            av_write_trailer(output);
        }
        avio_closep(&output->pb);
    }
    avformat_free_context(output);
    return count;
}

} // namespace

Result<void> joinWithTwoDescriptions(const QString& first, const QString& second, const QString& joined) {
    const Error failed{QStringLiteral("no two descriptions")};
    const int before = copyBoth(first, second, joined);
    const Result<MovBoxes> boxes = MovBoxes::read(joined), other = MovBoxes::read(second);
    if (before == 0 || !boxes || !other || boxes->tracks().empty() || other->tracks().empty()) return failed;
    constexpr auto fourCc = MovBoxes::fourCc;
    const std::vector<MovBoxes::Type> table{fourCc("trak"), fourCc("mdia"), fourCc("minf"), fourCc("stbl")};
    const auto descriptionsOf = [&](const MovBoxes& movie) {
        const auto stsd = MovBoxes::find(movie.tracks()[0].content, {fourCc("mdia"), fourCc("minf"), fourCc("stbl"),
                                                                    fourCc("stsd")});
        return stsd ? stsd->sliced(8).toByteArray() : QByteArray();
    };
    const auto samples = boxes->samples(boxes->tracks()[0]);
    if (!samples) return samples.error();
    QByteArray places = number(0) + number(samples->size()); // a chunk a sample
    for (const MovBoxes::Sample& sample : *samples)
        places += number(sample.position);
    const QByteArray chunks = number(0) + number(2) + number(1) + number(1) + number(1) +
                              number(quint64(before) + 1) + number(1) + number(2);
    QByteArray header = boxes->movie().toByteArray();
    const auto replace = [&](MovBoxes::Type type, const QByteArray& with) {
        std::vector<MovBoxes::Type> path = table;
        path.push_back(type);
        header = replaced(header, path, 0, with);
    };
    replace(fourCc("stsd"), number(0) + number(2) + descriptionsOf(*boxes) + descriptionsOf(*other));
    replace(fourCc("stsc"), chunks);
    replace(fourCc("stco"), places);
    QFile file(joined);
    if (!file.open(QIODevice::ReadWrite)) return failed;
    const QByteArray bytes = file.readAll();
    const qsizetype at = bytes.lastIndexOf("moov") - 4;
    if (at < 0 || !file.resize(at) || !file.seek(at)) return failed;
    const QByteArray moov = boxOf(fourCc("moov"), header);
    return file.write(moov) == moov.size() ? Result<void>() : failed;
}

} // namespace daylark::truth
