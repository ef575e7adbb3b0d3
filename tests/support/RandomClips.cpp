#include "support/RandomClips.h"

#include "media/container/MediaFile.h"
#include "media/decode/VideoFrameData.h"
#include "picture/PictureRenderer.h"
#include "support/TruthRows.h"

#include <algorithm>
#include <initializer_list>
#include <numeric>

namespace daylark::truth {
namespace {

struct Kind {
    const char* encoder;
    const char* pixels;
    std::vector<const char*> containers;
    int mostBFrames; ///< of the codec; -1: every picture stands alone
    Options options;
    int step = 2; ///< sizes are multiples of it
};

std::vector<Kind> kinds() {
    return {
        {"libx264", "yuv420p", {"mov", "mp4", "mkv", "ts", "m2ts", "flv"}, 5, {}},
        {"libx264", "yuv422p10le", {"mov", "mkv", "ts"}, 3, {}},
        {"libx265", "yuv420p", {"mov", "mp4", "mkv", "ts"}, 4, x265("open-gop=0:b-pyramid=1")},
        {"libx265", "yuv420p10le", {"mp4", "mkv", "ts"}, 3, x265("open-gop=1")},
        {"mpeg2video", "yuv420p", {"mov", "mkv", "ts", "mpg"}, 2, closed},
        {"mpeg4", "yuv420p", {"mov", "mp4", "avi", "mkv"}, 2, {}},
        {"libvpx", "yuv420p", {"webm", "mkv"}, 0, hiddenVpx},
        {"libvpx-vp9", "yuv420p", {"webm", "mkv", "mp4"}, 0, fastVpx},
        {"libvpx-vp9", "yuv420p", {"webm", "mkv", "mp4"}, 0, hiddenVpx},
        {"libsvtav1", "yuv420p", {"mp4", "mkv", "webm"}, 0, fastSvt},
        {"prores_ks", "yuv422p10le", {"mov", "mkv", "mxf"}, -1, {}},
        {"dnxhd", "yuv422p", {"mov", "mxf"}, -1, squeezed},
        {"mjpeg", "yuvj420p", {"mov", "avi", "mkv"}, -1, {}},
        {"png", "rgb24", {"mov", "mkv"}, -1, {}, 1},
        {"ffv1", "yuv420p", {"mkv", "avi"}, -1, {}},
    };
}

class Drawing {
public:
    explicit Drawing(std::mt19937& random)
        : random_(random) {}

    Clip clip();

private:
    int between(int least, int most) { return least + int(random_() % quint32(most - least + 1)); }
    bool oneIn(int times) { return random_() % quint32(times) == 0; }
    template<class T>
    const T& oneOf(const std::vector<T>& all) {
        return all[random_() % all.size()];
    }
    bool isIn(std::initializer_list<const char*> containers) const {
        return std::any_of(containers.begin(), containers.end(),
                           [&](const char* one) { return spec_.path == QLatin1String(one); });
    }
    void say(const QString& what) { name_ += u'_' + what; }
    void drawTimes();
    void drawEdits();
    void drawLooks();
    void drawCompany();

    std::mt19937& random_;
    Kind kind_{};
    MovieSpec spec_;
    Making make_ = asEncoded();
    QString name_;
    bool plain_ = true; ///< nothing done to the times yet
};

void Drawing::drawTimes() {
    const bool anyTimes = isIn({"mov", "mp4", "mkv", "ts", "m2ts", "webm"});
    const bool counted = spec_.encoder == QLatin1String("libsvtav1"); // takes no clock of milliseconds
    if (!anyTimes || counted || !oneIn(3)) return;
    plain_ = false;
    const int manner = between(0, 3);
    if (manner == 3 && isIn({"ts", "m2ts"}) && spec_.rateDen == 1) {
        constexpr qint64 wrapSeconds = 95443;
        const qint64 begin = wrapSeconds * spec_.rateNum - spec_.frames;
        for (int n = 0; n < spec_.frames; ++n)
            spec_.ticks.push_back(begin + n);
        return say(QStringLiteral("wrap"));
    }
    if (manner == 0 && spec_.rateDen == 1) {
        const int begin = between(1, 4000);
        for (int n = 0; n < spec_.frames; ++n)
            spec_.ticks.push_back(n + begin);
        return say(QStringLiteral("late%1").arg(begin));
    }
    spec_.rateNum = 1000;
    spec_.rateDen = 1;
    qint64 at = oneIn(2) ? 0 : between(1, 20000);
    for (int n = 0; n < spec_.frames; ++n, at += oneIn(9) ? between(500, 4000) : between(15, 130))
        spec_.ticks.push_back(at);
    say(QStringLiteral("varied"));
}

void Drawing::drawEdits() {
    const bool whole = spec_.rateDen == 1 && spec_.rateNum <= 60;
    if (!plain_ || !whole || !isIn({"mov", "mp4"}) || !oneIn(2)) return;
    plain_ = false;
    std::vector<Edit> edits;
    if (oneIn(4)) edits.push_back({between(1, 12), -1});
    int at = 0;
    const int parts = between(1, 3);
    for (int part = 0; part < parts && at < spec_.frames - 2; ++part) {
        const int from = between(at, spec_.frames - 2), frames = between(1, spec_.frames - from);
        edits.push_back({frames, from});
        at = from + frames;
    }
    QStringList said;
    for (const Edit& edit : edits)
        said << QStringLiteral("%1from%2").arg(edit.frames).arg(edit.from);
    say(QStringLiteral("edits") + said.join(u'+').replace(u'-', u'm'));
    make_ = edited(edits);
}

void Drawing::drawLooks() {
    if (isIn({"mov", "mp4"}) && oneIn(3)) {
        spec_.rotation = 90 * between(0, 3);
        spec_.mirrored = oneIn(2);
        say(QStringLiteral("turn%1%2").arg(spec_.rotation).arg(spec_.mirrored ? u"m"_qs : u""_qs));
    }
    const bool hasAspect = isIn({"mov", "mp4", "mkv"}) && spec_.rotation == 0;
    if (hasAspect && oneIn(4)) {
        spec_.pixelAspectNum = between(1, 2) * 2;
        spec_.pixelAspectDen = 3;
        say(QStringLiteral("aspect%1to3").arg(spec_.pixelAspectNum));
    }
    const bool hasFields = spec_.encoder == QLatin1String("mpeg2video") || spec_.encoder == QLatin1String("prores_ks") ||
                           spec_.encoder == QLatin1String("libx264");
    if (hasFields && oneIn(4)) {
        spec_.interlaced = true;
        spec_.size.setHeight(160);
        say(QStringLiteral("fields"));
    }
}

void Drawing::drawCompany() {
    if (plain_ && isIn({"ts", "m2ts"}) && oneIn(3)) {
        const int copies = between(2, 3);
        make_ = joined(copies);
        plain_ = false;
        say(QStringLiteral("joined%1").arg(copies));
        return;
    }
    if (plain_ && isIn({"mov", "mp4"}) && oneIn(3)) {
        const bool fragments = oneIn(2);
        spec_.muxerOptions[QStringLiteral("movflags")] =
            fragments ? QStringLiteral("frag_keyframe+empty_moov") : QStringLiteral("faststart");
        say(fragments ? QStringLiteral("fragments") : QStringLiteral("front"));
    }
    // Beside sound a muxer moves the first fragment's pictures.
    const bool fragmented = spec_.muxerOptions.count(QStringLiteral("movflags")) > 0;
    if (spec_.ticks.empty() && isIn({"mov", "mp4", "mkv", "ts"}) && plain_ && !fragmented && oneIn(3)) {
        spec_.sound = true;
        say(QStringLiteral("sound"));
        if (isIn({"mov"}) && oneIn(2) && spec_.rateNum >= 24) {
            spec_.timecode = QStringLiteral("10:00:00:00");
            say(QStringLiteral("timecode"));
        }
    }
}

Clip Drawing::clip() {
    const std::vector<Kind> all = kinds();
    const std::vector<Rate> rates{{1, 3}, {1, 1}, r12, film, r24, r25, ntsc, r30, r48, {50, 1}, r60, {60, 1}};
    kind_ = oneOf(all);
    spec_.path = QLatin1String(oneOf(kind_.containers));
    spec_.encoder = QLatin1String(kind_.encoder);
    spec_.pixelFormat = QLatin1String(kind_.pixels);
    spec_.encoderOptions = kind_.options;
    const bool broadcast = isIn({"mpg", "mxf"}) || spec_.encoder == QLatin1String("mpeg2video");
    const Rate rate = broadcast ? oneOf(std::vector<Rate>{film, r24, r25, ntsc}) : oneOf(rates);
    spec_.rateNum = rate.num;
    spec_.rateDen = rate.den;
    spec_.frames = between(3, 70);
    spec_.groupSize = kind_.mostBFrames < 0 ? 1 : between(2, 40);
    spec_.bFrames = kind_.mostBFrames <= 0 ? 0 : between(0, kind_.mostBFrames);
    spec_.size = QSize(128 + between(0, 80) * kind_.step, 96 + between(0, 40) * kind_.step);
    if (spec_.encoder == QLatin1String("dnxhd")) spec_.size = QSize(256, 120 + between(0, 20) * 2);
    name_ = QStringLiteral("%1_%2_%3to%4_%5x%6_%7frames_group%8_b%9")
                .arg(spec_.encoder, spec_.path)
                .arg(rate.num)
                .arg(rate.den)
                .arg(spec_.size.width())
                .arg(spec_.size.height())
                .arg(spec_.frames)
                .arg(spec_.groupSize)
                .arg(spec_.bFrames);
    drawTimes();
    drawEdits();
    drawLooks();
    drawCompany();
    return {name_.replace(u'-', u'_').toStdString(), spec_, make_};
}

} // namespace

Clip randomClip(std::mt19937& random) {
    return Drawing(random).clip();
}

std::vector<int> picturesOfLibrary(const QString& path) {
    std::vector<int> numbers;
    const Result<MediaFile> file = MediaFile::open(path, nullptr, MediaFile::Opening::forFacts);
    if (!file || !file->video()) return numbers;
    const AVCodec* decoder = avcodec_find_decoder(file->video()->codecpar->codec_id);
    const av::CodecPtr codec(avcodec_alloc_context3(decoder));
    avcodec_parameters_to_context(codec.get(), file->video()->codecpar);
    codec->pkt_timebase = file->video()->time_base;
    codec->thread_count = 1;
    if (avcodec_open2(codec.get(), decoder, nullptr) < 0) return numbers;
    const av::PacketPtr packet(av_packet_alloc());
    for (bool atEnd = false; !atEnd;) {
        atEnd = file->readPacket(packet.get()) < 0;
        avcodec_send_packet(codec.get(), atEnd ? nullptr : packet.get());
        for (;;) {
            auto data = std::make_shared<VideoFrame::Data>();
            data->frame.reset(av_frame_alloc());
            if (avcodec_receive_frame(codec.get(), data->frame.get()) < 0) break;
            data->pixelAspect = pixelAspectOf(file->format(), file->video(), data->frame.get());
            data->orientation = orientationOf(*file->video());
            const VideoFrame frame(std::move(data));
            numbers.push_back(readBarCode(renderFrame(frame, QSize(192, 96))).value_or(-1));
        }
    }
    return numbers;
}

} // namespace daylark::truth
