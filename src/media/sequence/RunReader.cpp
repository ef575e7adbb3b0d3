#include "media/sequence/RunReader.h"

#include "base/PlainText.h"
#include "base/jobs/WorkQueue.h"
#include "media/decode/PictureMemory.h"
#include "media/decode/VideoFrameData.h"
#include "media/sequence/StandInPicture.h"

#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>

namespace daylark {

namespace {

using namespace std::chrono_literals;

AVPixelFormat formatOf(const ReadPicture& picture) {
    const bool grey = picture.planes == 1;
    switch (picture.numbers) {
    case ReadPicture::Numbers::whole8:
        return grey ? AV_PIX_FMT_GRAY8 : AV_PIX_FMT_GBRP;
    case ReadPicture::Numbers::whole16:
    case ReadPicture::Numbers::half:
        return grey ? AV_PIX_FMT_GRAY16 : AV_PIX_FMT_GBRP16;
    case ReadPicture::Numbers::real:
        break;
    }
    return grey ? AV_PIX_FMT_GRAYF32 : AV_PIX_FMT_GBRPF32;
}

/// As cameras and scanners write it beside their pictures.
Orientation orientationOfExif(int value) {
    switch (value) {
    case 2:
        return {0, true};
    case 3:
        return {180, false};
    case 4:
        return {180, true};
    case 5:
        return {90, true};
    case 6:
        return {90, false};
    case 7:
        return {270, true};
    case 8:
        return {270, false};
    default:
        return {};
    }
}

AVRational pixelAspectOf(double said) {
    const AVRational aspect = av_d2q(said, 1 << 16);
    return aspect.num > 0 && aspect.den > 0 ? aspect : AVRational{1, 1};
}

/// The planes as they lie in the block, which the picture now owns.
VideoFrame pictureOf(const ReadPicture& read, AVBufferRef* block) {
    auto data = std::make_shared<VideoFrame::Data>();
    data->frame.reset(av_frame_alloc());
    if (!data->frame) {
        av_buffer_unref(&block);
        return {};
    }
    AVFrame& frame = *data->frame;
    frame.buf[0] = block;
    frame.format = formatOf(read);
    frame.width = read.size.width();
    frame.height = read.size.height();
    frame.color_range = AVCOL_RANGE_JPEG;
    const auto plane = [&](int place) { return block->data + read.stride * read.size.height() * place; };
    if (read.planes == 1) {
        frame.data[0] = plane(0);
    } else { // red, green, blue; the library's order is green, blue, red
        frame.data[0] = plane(1);
        frame.data[1] = plane(2);
        frame.data[2] = plane(0);
    }
    for (int i = 0; i < read.planes; ++i)
        frame.linesize[i] = int(read.stride);
    frame.extended_data = frame.data;
    data->pixelAspect = pixelAspectOf(read.pixelAspect);
    data->orientation = orientationOfExif(read.exifOrientation);
    data->isHalf = read.numbers == ReadPicture::Numbers::half;
    data->isSceneLinear = read.isSceneLinear;
    data->colourSpace = read.colourSpace;
    data->channels = read.channels;
    data->black = read.black;
    data->white = read.white;
    return VideoFrame(std::move(data));
}

class PicturesReader final : public FrameReader {
public:
    PicturesReader(RunFiles files, const PictureFiles& reader, const PictureFacts& facts)
        : files_(std::move(files))
        , reader_(reader)
        , shape_{facts.size, pixelAspectOf(facts.pixelAspect), orientationOfExif(facts.exifOrientation)}
        , index_(indexOf(files_, facts.framesPerSecond))
        , usualBytes_(qint64(facts.size.width()) * facts.size.height() * widestPixel)
        , ahead_(int(std::clamp<qint64>(mostBytesAhead / std::max<qint64>(1, usualBytes_), 1,
                                        std::clamp(QThread::idealThreadCount(), 1, mostAhead))))
        , work_(ahead_) {}
    ~PicturesReader() override {
        work_.forgetWaiting();
        work_.wait();
    }

    const SampleIndex& index() const override { return index_; }
    QString decoderName() const override {
        return QStringLiteral("OpenImageIO, %1 pictures at a time").arg(ahead_);
    }
    Result<VideoFrame> read(qint64 n, const CancelFlag* cancel) override;
    Result<VideoFrame> readThrough(qint64 n, const std::function<void(qint64, const VideoFrame&)>&,
                                   const CancelFlag* cancel) override {
        return read(n, cancel); // each stands for itself: there is nothing on the way
    }
    qint64 pictureBytes() const override { return qint64(memory_->byteCount()); }
    void limitDecoders(qint64 bytes) override { memory_->limitIdle(size_t(std::max<qint64>(0, bytes / 4))); }
    qint64 keyFrameBefore(qint64 n) const override {
        return std::clamp<qint64>(n, 0, std::max<qint64>(0, index_.count() - 1));
    }

private:
    static constexpr int mostAhead = 8;
    /// What is read at once fits into a machine, whatever strangers' headers say: fewer of large ones, and none that is much
    /// larger than the run's first.
    static constexpr qint64 widestPixel = 12, mostBytesAhead = qint64(4) << 30, alwaysRead = qint64(512) << 20;
    /// A picture being read, or waiting for it.
    struct Reading {
        bool isDone = false, isWanted = true;
        VideoFrame picture; ///< null: there is none
        QString trouble;    ///< why there is none
    };

    [[nodiscard]] QString pathOf(qint64 frame) const {
        return files_.address.pathOf(files_.address.movie.run.numberAt(frame));
    }
    VideoFrame readFile(qint64 frame, QString* trouble = nullptr);
    std::shared_ptr<Reading> begin(qint64 frame);
    void readAhead(qint64 frame);
    Result<VideoFrame> whole(qint64 frame, const CancelFlag* cancel);
    VideoFrame standIn(qint64 frame, const CancelFlag* cancel);

    const RunFiles files_;
    const PictureFiles& reader_;
    const PictureShape shape_; ///< of what stands in for pictures
    const SampleIndex index_;
    const std::shared_ptr<PictureMemory> memory_ = std::make_shared<PictureMemory>();
    const qint64 usualBytes_;
    const int ahead_;
    qint64 last_ = -1; ///< the frame that was read last
    int direction_ = 0;
    QString trouble_; ///< of the last that could not be read

    std::mutex mutex_; // guards down to the blank line
    std::condition_variable done_;
    std::map<qint64, std::shared_ptr<Reading>> readings_;

    WorkQueue work_; ///< last: its jobs touch the rest
};

/// Whoever reads a file may meet it half written: then there is none as yet.
VideoFrame PicturesReader::readFile(qint64 frame, QString* trouble) {
    AVBufferRef* block = nullptr;
    const auto room = [&](size_t bytes) -> uchar* {
        if (qint64(bytes) > std::max(2 * usualBytes_, alwaysRead)) return nullptr;
        block = memory_->block(bytes);
        return block ? block->data : nullptr;
    };
    const Result<ReadPicture> read = reader_.read(pathOf(frame), files_.address.movie.layer, room);
    if (read && block) return pictureOf(*read, block);
    av_buffer_unref(&block);
    if (trouble && !read)
        *trouble = QFileInfo::exists(pathOf(frame)) ? plain::line(read.error().text) : QStringLiteral("no such file");
    return {};
}

/// With the lock held.
std::shared_ptr<PicturesReader::Reading> PicturesReader::begin(qint64 frame) {
    if (const auto known = readings_.find(frame); known != readings_.end()) return known->second;
    auto reading = std::make_shared<Reading>();
    readings_.emplace(frame, reading);
    work_.run([this, frame, reading] {
        {
            const std::lock_guard lock(mutex_);
            if (!reading->isWanted) return;
        }
        QString trouble;
        VideoFrame picture = readFile(frame, &trouble);
        {
            const std::lock_guard lock(mutex_);
            reading->picture = std::move(picture);
            reading->trouble = trouble;
            reading->isDone = true;
        }
        done_.notify_all();
    });
    return reading;
}

/// What is likely to be read next: as many as there are cores, in the direction of the last two; the rest is wanted no more.
/// With the lock held.
void PicturesReader::readAhead(qint64 frame) {
    const qint64 end = frame + direction_ * ahead_;
    for (auto at = readings_.begin(); at != readings_.end();) {
        const bool isAhead = direction_ > 0 ? at->first > frame && at->first <= end : at->first < frame && at->first >= end;
        if (at->first == frame || (direction_ != 0 && isAhead)) {
            ++at;
            continue;
        }
        at->second->isWanted = false;
        at = readings_.erase(at);
    }
    for (qint64 next = frame + direction_; direction_ != 0 && next != end + direction_; next += direction_)
        if (next >= 0 && next < index_.count() && files_.contains(files_.address.movie.run.numberAt(next))) begin(next);
}

Result<VideoFrame> PicturesReader::whole(qint64 frame, const CancelFlag* cancel) {
    std::unique_lock lock(mutex_);
    const std::shared_ptr<Reading> reading = begin(frame);
    while (!reading->isDone) {
        if (cancel && cancel->load()) return Error{QStringLiteral("cancelled")};
        done_.wait_for(lock, 5ms);
    }
    trouble_ = reading->trouble;
    return reading->picture;
}

Result<VideoFrame> PicturesReader::read(qint64 n, const CancelFlag* cancel) {
    if (n < 0 || n >= index_.count()) return Error{QStringLiteral("no such frame")};
    direction_ = n == last_ + 1 ? 1 : n == last_ - 1 ? -1 : n == last_ ? direction_ : 0;
    {
        const std::lock_guard lock(mutex_);
        begin(n); // before those that come after it
        readAhead(n);
    }
    Result<VideoFrame> picture = whole(n, cancel);
    if (!picture) return picture.error();
    last_ = n;
    {
        const std::lock_guard lock(mutex_);
        readings_.erase(n);
    }
    if (!picture->isNull()) return picture;
    const VideoFrame other = standIn(n, cancel);
    if (cancel && cancel->load()) return Error{QStringLiteral("cancelled")};
    if (!other.isNull()) return other;
    return Error{QStringLiteral("no picture can be read") + (trouble_.isEmpty() ? QString() : QStringLiteral(": ") + trouble_)};
}

VideoFrame PicturesReader::standIn(qint64 frame, const CancelFlag* cancel) {
    const FrameRun& run = files_.address.movie.run;
    const qint64 number = run.numberAt(frame);
    if (files_.address.view.missing == MissingPicture::black) return blackPicture(shape_);
    if (files_.address.view.missing == MissingPicture::slate)
        return slatePicture(shape_, number, run.nameOf(number), trouble_);
    const auto isStopped = [cancel] { return cancel && cancel->load(); };
    const auto after = std::lower_bound(files_.numbers.begin(), files_.numbers.end(), number);
    constexpr int mostTries = 20; // of files that are there and cannot be read
    int tries = 0;
    for (auto at = after; at != files_.numbers.begin() && tries < mostTries && !isStopped(); ++tries)
        if (VideoFrame held = readFile(*run.frameOf(*--at)); !held.isNull()) return held;
    for (auto at = after; at != files_.numbers.end() && tries < 2 * mostTries && !isStopped(); ++at, ++tries)
        if (VideoFrame held = readFile(*run.frameOf(*at)); !held.isNull()) return held;
    return {};
}

} // namespace

SampleIndex indexOf(const RunFiles& files, double statedRate) {
    const RunAddress& address = files.address;
    RunRate rate = address.movie.rate.isKnown() ? address.movie.rate : RunRate::of(statedRate);
    if (!rate.isKnown()) rate = address.view.usualRate.isKnown() ? address.view.usualRate : RunRate{24, 1};
    SampleIndex index;
    index.timeBaseNum = rate.seconds;
    index.timeBaseDen = rate.frames;
    index.timeScale = rate.frames;
    index.step = rate.seconds;
    const qint64 count = address.movie.run.count();
    index.samples.resize(size_t(count));
    for (qint64 frame = 0; frame < count; ++frame)
        index.samples[size_t(frame)] = {frame, frame * rate.seconds, true};
    index.endTicks = count * rate.seconds;
    index.missing = files.missing();
    return index;
}

Result<PictureFacts> factsOf(const RunFiles& files, const PictureFiles& reader, const CancelFlag* cancel) {
    Error trouble{QStringLiteral("no picture can be read")};
    constexpr size_t mostTries = 20;
    for (size_t at = 0; at < files.numbers.size() && at < mostTries && !(cancel && cancel->load()); ++at) {
        Result<PictureFacts> facts = reader.facts(files.address.pathOf(files.numbers[at]));
        if (facts) return facts;
        if (at == 0) trouble = facts.error();
    }
    return trouble;
}

Result<std::unique_ptr<FrameReader>> openRun(const RunAddress& address, const CancelFlag* cancel) {
    Result<RunFiles> files = RunFiles::look(address, cancel);
    if (!files) return files.error();
    const Result<const PictureFiles*> reader = pictureFiles();
    if (!reader) return reader.error();
    const Result<PictureFacts> facts = factsOf(*files, **reader, cancel);
    if (!facts) return facts.error();
    return std::unique_ptr<FrameReader>(std::make_unique<PicturesReader>(std::move(*files), **reader, *facts));
}

} // namespace daylark
