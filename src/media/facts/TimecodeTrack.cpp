#include "media/facts/TimecodeTrack.h"

#include "media/container/MediaFile.h"
#include "media/container/MovBoxes.h"
#include "media/container/RegularFile.h"
#include "media/sequence/RunFacts.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <limits>

namespace daylark {

namespace {

constexpr quint32 tmcd = MovBoxes::fourCc("tmcd"), tc64 = MovBoxes::fourCc("tc64");
constexpr size_t mostSamples = 1 << 20; // a track has one; days of one a frame are a broken file

std::optional<qint64> frameNumberOf(const TimecodeSampleBuffer& sample) {
    BoxBytes bytes(sample.data);
    const qint64 number = sample.mediaSubtype == tc64 ? bytes.i64() : bytes.i32();
    const bool known = sample.mediaSubtype == tc64 || sample.mediaSubtype == tmcd;
    return known && !bytes.failed() ? std::optional(number) : std::nullopt;
}

/// Frames a second as the scale and the duration of one have it; 0 where they say nothing likely.
double statedRate(const TimecodeSampleBuffer& sample) {
    constexpr double highest = 255; // what quanta can say
    const double rate = sample.frameDuration > 0 ? double(sample.timeScale) / sample.frameDuration : 0;
    return rate <= highest ? rate : 0;
}

/// Whole frames a second. Some cameras write 29 beside 30000/1001: where the two contradict each other the
/// rate decides.
quint64 quantaOf(const TimecodeSampleBuffer& sample) {
    const double rate = statedRate(sample);
    const bool contradicts = sample.frameQuanta > 0 && rate >= 1 && std::abs(rate - sample.frameQuanta) > 0.5;
    return contradicts ? quint64(std::lround(rate)) : sample.frameQuanta;
}

/// Numbers left out a minute: those of 30 frames a second whatever the quanta (wanted), unless the stated rate
/// is a multiple of 29.97, which loses as many times more.
quint64 droppedAMinute(const TimecodeSampleBuffer& sample) {
    constexpr double ntsc = 30000.0 / 1001;
    const double times = statedRate(sample) / ntsc;
    const long whole = std::lround(times);
    return whole > 1 && std::abs(times - double(whole)) < 0.0005 ? quint64(whole) * 2 : 2;
}

/// The numbers that dropping leaves out up to a frame.
quint64 droppedNumbers(quint64 frame, quint64 quanta, quint64 aMinute) {
    const quint64 perTenMinutes = quanta * 600 - 9 * aMinute;
    const quint64 rest = frame % perTenMinutes;
    quint64 dropped = 9 * aMinute * (frame / perTenMinutes);
    if (rest >= quanta * 60) dropped += ((rest - quanta * 60) / (quanta * 60 - aMinute)) * aMinute + aMinute;
    return dropped;
}

/// What the sample description says after its data reference: reserved, flags, time scale, frame duration,
/// quanta.
TimecodeSampleBuffer descriptionOf(const MovBoxes::Box& entry) {
    TimecodeSampleBuffer sample;
    BoxBytes bytes(entry.content);
    bytes.skip(4);
    sample.flags = bytes.u32();
    sample.timeScale = bytes.u32();
    sample.frameDuration = bytes.u32();
    sample.frameQuanta = bytes.u8();
    sample.mediaSubtype = bytes.failed() ? 0 : entry.type;
    return sample;
}

/// Where the samples of a track would lie if the file were whole: some of them may be there.
Result<std::vector<MovBoxes::Sample>> samplesOfCutFile(const MovBoxes& boxes, size_t track) {
    const auto stsz = MovBoxes::find(boxes.tracks().at(track).content,
                                     {MovBoxes::fourCc("mdia"), MovBoxes::fourCc("minf"),
                                      MovBoxes::fourCc("stbl"), MovBoxes::fourCc("stsz")});
    BoxBytes sizes(stsz.value_or(QByteArrayView()));
    sizes.skip(8);
    if (const quint32 count = sizes.u32(); sizes.failed() || count > mostSamples)
        return Error{QStringLiteral("no likely sample sizes")};
    const MovBoxes whole = MovBoxes::of(boxes.movie().toByteArray(), std::numeric_limits<qint64>::max());
    return whole.samples(whole.tracks().at(track));
}

} // namespace

std::optional<SmpteTime> smpteTimeOf(const TimecodeSampleBuffer& sample) {
    const std::optional<qint64> number = frameNumberOf(sample);
    const quint64 quanta = quantaOf(sample);
    if (!number || quanta == 0) return std::nullopt;
    bool negative = *number < 0;
    quint64 frame = negative ? 0 - quint64(*number) : quint64(*number);
    if (sample.flags & TimecodeSampleBuffer::dropFrame)
        frame += droppedNumbers(frame, quanta, droppedAMinute(sample));
    const quint64 whole = frame / quanta;
    quint64 hours = whole / 3600;
    if (sample.flags & TimecodeSampleBuffer::twentyFourHourMax) {
        hours %= 24;
        if (negative && !(sample.flags & TimecodeSampleBuffer::negativeTimesOk)) {
            hours = 23 - hours;
            negative = false;
        }
    }
    constexpr int negativeMark = 128;
    SmpteTime time;
    time.flags = 1; // valid
    time.hours = qint16(hours);
    time.minutes = qint16(whole / 60 % 60 + (negative ? negativeMark : 0));
    time.seconds = qint16(whole % 60);
    time.frames = qint16(frame % quanta);
    return time;
}

std::optional<SmpteTime> smpteTimeOfText(QStringView text) {
    static const QRegularExpression form(
        QStringLiteral("\\A([0-9]{2}):([0-5][0-9]):([0-5][0-9])[:;.,]([0-9]{2,3})\\z"));
    const QRegularExpressionMatch match = form.match(text.trimmed().toString());
    if (!match.hasMatch()) return std::nullopt;
    SmpteTime time;
    time.flags = 1;
    time.hours = match.capturedView(1).toShort();
    time.minutes = match.capturedView(2).toShort();
    time.seconds = match.capturedView(3).toShort();
    time.frames = match.capturedView(4).toShort();
    return time;
}

std::vector<SmpteTime> AVTimecodeReader::readTimecodeSamples() {
    timecodeSamples_.clear();
    if (const std::optional<RunAddress> run = RunAddress::of(sourceAsset_)) {
        if (const auto start = timecodeOfRun(*run, cancel_)) timecodeSamples_.push_back(*start);
        return std::move(timecodeSamples_);
    }
    if (!readTrack()) readStartTimecode();
    return std::move(timecodeSamples_);
}

std::optional<SmpteTime> firstTimecodeOf(const QString& sourceAsset, const CancelFlag* cancel) {
    const std::vector<SmpteTime> samples = AVTimecodeReader(sourceAsset, cancel).readTimecodeSamples();
    return samples.empty() ? std::nullopt : std::optional(samples.front());
}

void AVTimecodeReader::outputTimecodeDescriptionForSampleBuffer(const TimecodeSampleBuffer& sample) {
    if (const std::optional<SmpteTime> time = smpteTimeOf(sample)) timecodeSamples_.push_back(*time);
}

/// False: the container is not of the kind that has timecode tracks.
bool AVTimecodeReader::readTrack() {
    if (!RegularFile::at(sourceAsset_, cancel_)) return true;
    const Result<MovBoxes> boxes = MovBoxes::read(sourceAsset_);
    if (!boxes) return false;
    const std::vector<MovBoxes::Track> tracks = boxes->tracks();
    const auto track =
        std::find_if(tracks.begin(), tracks.end(), [](const auto& t) { return t.handler == tmcd; });
    if (track == tracks.end()) return true;
    const std::vector<MovBoxes::Box> descriptions = MovBoxes::sampleDescriptions(*track);
    Result<std::vector<MovBoxes::Sample>> samples = boxes->samples(*track);
    if (!samples) samples = samplesOfCutFile(*boxes, size_t(track - tracks.begin()));
    QFile file(sourceAsset_);
    if (!samples || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) return true;
    constexpr qint64 longestPayload = 8;
    for (const MovBoxes::Sample& sample : *samples) {
        if (cancelled() || timecodeSamples_.size() == mostSamples) break;
        if (sample.description < 1 || sample.description > descriptions.size()) continue;
        TimecodeSampleBuffer buffer = descriptionOf(descriptions[sample.description - 1]);
        if (!file.seek(qint64(sample.position))) continue;
        buffer.data = file.read(std::min<qint64>(sample.size, longestPayload));
        outputTimecodeDescriptionForSampleBuffer(buffer);
    }
    return true;
}

/// The start that the file as a whole states, or else its picture, or else any of its streams.
void AVTimecodeReader::readStartTimecode() {
    const Result<MediaFile> file = MediaFile::open(sourceAsset_, cancel_);
    if (!file) return;
    const AVFormatContext* format = file->format();
    if (QByteArray(format->iformat->name).split(',').contains("mov")) return; // has tracks for it, or nothing
    std::vector<const AVDictionary*> statements{format->metadata};
    if (file->video()) statements.push_back(file->video()->metadata);
    for (unsigned i = 0; i < format->nb_streams; ++i)
        statements.push_back(format->streams[i]->metadata);
    for (const AVDictionary* statement : statements) {
        const AVDictionaryEntry* entry = av_dict_get(statement, "timecode", nullptr, 0);
        const auto time = entry ? smpteTimeOfText(QString::fromUtf8(entry->value)) : std::nullopt;
        if (!time) continue;
        timecodeSamples_.push_back(*time);
        return;
    }
}

} // namespace daylark
