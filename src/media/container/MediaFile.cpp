#include "media/container/MediaFile.h"

#include "media/container/RegularFile.h"

#include <QFile>

#include <algorithm>
#include <thread>
#include <vector>

namespace daylark {

using namespace std::chrono_literals;

Error av::errorOf(const char* what, int code) {
    if (code == AVERROR_EXIT) return {QStringLiteral("cancelled")};
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(code, text, sizeof text);
    return {QStringLiteral("%1: %2").arg(QString::fromLatin1(what), QString::fromLocal8Bit(text))};
}

namespace {

constexpr auto openingLimit = 4s;
constexpr auto readingLimit = 30s; // a packet: others may be stepped over on the way
constexpr int lowestTrustedProbe = 5; // a score below comes from chance matches in arbitrary bytes

/// The readers that a review needs, by the library's names: movies, sound, stills. None of them opens a second file: left out is
/// whatever lists pieces, describes streams, goes to the network or runs a script.
constexpr char reviewFormats[] =
    // movies
    "mov,mp4,m4a,3gp,3g2,mj2,mxf,avi,matroska,webm,mpegts,mpeg,mpegvideo,m4v,h264,hevc,av1,obu,ivf,flv,"
    "asf,asf_o,dv,gxf,nut,ogg,rm,mjpeg,mjpeg_2000,dnxhd,vc1,dirac,yuv4mpegpipe,lxf,r3d,"
    // sound
    "wav,w64,aiff,au,caf,flac,mp3,aac,ac3,eac3,dts,dtshd,truehd,mlp,amr,wv,tta,ape,voc,"
    // stills
    "image2,gif,apng,ico,png_pipe,jpeg_pipe,jpegls_pipe,jpegxl_pipe,jpegxl_anim,j2k_pipe,tiff_pipe,"
    "bmp_pipe,dpx_pipe,exr_pipe,webp_pipe,psd_pipe,sgi_pipe,sunrast_pipe,pbm_pipe,pgm_pipe,pgmyuv_pipe,"
    "ppm_pipe,pam_pipe,pfm_pipe,phm_pipe,pcx_pipe,qdraw_pipe,pictor_pipe,gif_pipe,qoi_pipe,photocd_pipe,"
    "xbm_pipe,xpm_pipe,xwd_pipe,hdr_pipe,cri_pipe,dds_pipe,gem_pipe";

Error noKnownFormat() {
    return {QStringLiteral("no known format")};
}

struct OpeningOptions {
    AVDictionary* dictionary = nullptr;
    OpeningOptions() {
        // A "%04d" in a name is part of the name, and a file must not make us open others.
        av_dict_set(&dictionary, "pattern_type", "none", 0);
        av_dict_set(&dictionary, "protocol_whitelist", "file", 0);
        av_dict_set(&dictionary, "format_whitelist", reviewFormats, 0);
        av_dict_set(&dictionary, "probesize", "5000000", 0);
    }
    ~OpeningOptions() { av_dict_free(&dictionary); }
    OpeningOptions(const OpeningOptions&) = delete;
    OpeningOptions& operator=(const OpeningOptions&) = delete;
};

bool isVideo(const AVStream* stream) {
    return stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
           !(stream->disposition & (AV_DISPOSITION_ATTACHED_PIC | AV_DISPOSITION_TIMED_THUMBNAILS));
}

/// A drawing in words may name other files; its reader is none of ours, by whatever way it was found.
bool isRealVideo(const AVStream* stream) {
    const AVCodecID codec = stream->codecpar->codec_id;
    return isVideo(stream) && codec != AV_CODEC_ID_NONE && codec != AV_CODEC_ID_SVG;
}

/// For people: by the codec's own name, or the four letters under which the container knows it.
QString codecNameOf(const AVCodecParameters& parameters) {
    if (parameters.codec_id != AV_CODEC_ID_NONE) {
        const AVCodecDescriptor* descriptor = avcodec_descriptor_get(parameters.codec_id);
        const char* name = descriptor && descriptor->long_name ? descriptor->long_name
                                                               : avcodec_get_name(parameters.codec_id);
        return QString::fromUtf8(name);
    }
    char text[AV_FOURCC_MAX_STRING_SIZE] = {};
    return QStringLiteral("\"%1\"").arg(
        QString::fromLatin1(av_fourcc_make_string(text, parameters.codec_tag)));
}

/// What more than about this lies in a decoder at once, in pictures begun by its threads, is too much.
constexpr qint64 mostUnderWay = qint64(512) << 20;

/// Bytes; deep where nobody says.
qint64 pictureBytesOf(const AVCodecParameters& parameters) {
    const int known = av_image_get_buffer_size(AVPixelFormat(parameters.format), parameters.width,
                                               parameters.height, 1);
    return known > 0 ? known : std::max<qint64>(1, qint64(parameters.width) * parameters.height * 3);
}

/// The headers of these containers say all about such a stream but what its decoder finds out for itself.
bool isSaidByHeader(const AVFormatContext& format, const AVCodecParameters& parameters) {
    const QByteArray name(format.iformat->name);
    const bool isQuickTime = name.contains("mov");
    if (!isQuickTime && name != "mxf" && !name.contains("matroska")) return false;
    if (parameters.width <= 0 || parameters.height <= 0 || parameters.format != AV_PIX_FMT_NONE) return false;
    switch (parameters.codec_id) {
    case AV_CODEC_ID_H264:
    case AV_CODEC_ID_HEVC:
        return isQuickTime && parameters.extradata_size > 0;
    case AV_CODEC_ID_PRORES:
    case AV_CODEC_ID_DNXHD:
    case AV_CODEC_ID_JPEG2000:
        return true;
    default:
        return false;
    }
}

/// Finds out about the streams without decoding pictures of those that the header speaks of: they get some
/// pixel format while the library looks, so that it doesn't miss one.
int findStreams(AVFormatContext* format, MediaFile::Opening opening) {
    std::vector<AVDictionary*> options(format->nb_streams, nullptr);
    std::vector<bool> isSpared(options.size(), false);
    for (size_t i = 0; opening == MediaFile::Opening::forReading && i < options.size(); ++i) {
        AVCodecParameters& parameters = *format->streams[i]->codecpar;
        if (!isSaidByHeader(*format, parameters)) continue;
        isSpared[i] = true;
        av_dict_set(&options[i], "skip_frame", "all", 0);
        parameters.format = AV_PIX_FMT_YUV420P;
    }
    const int code = avformat_find_stream_info(format, options.empty() ? nullptr : options.data());
    for (size_t i = 0; i < options.size(); ++i) {
        if (isSpared[i]) format->streams[i]->codecpar->format = AV_PIX_FMT_NONE;
        av_dict_free(&options[i]);
    }
    return code;
}

} // namespace

int MediaFile::interrupted(void* opaque) {
    const auto* state = static_cast<const Interrupt*>(opaque);
    if (state->cancel && state->cancel->load()) return 1;
    return std::chrono::steady_clock::now() > state->deadline ? 1 : 0;
}

Result<MediaFile> MediaFile::open(const QString& path, const CancelFlag* cancel, Opening opening) {
    const Result<RegularFile> regular = RegularFile::at(path, cancel);
    if (!regular) return regular.error();
    if (path.endsWith(QLatin1String(".y"), Qt::CaseInsensitive)) return noKnownFormat(); // one plane of three files
    av_log_set_level(AV_LOG_QUIET);
    MediaFile file;
    file.path_ = path;
    file.size_ = regular->size;
    file.modified_ = regular->modified;
    file.interrupt_ = std::make_unique<Interrupt>();
    file.interrupt_->cancel = cancel;
    file.interrupt_->deadline = std::chrono::steady_clock::now() + openingLimit;
    AVFormatContext* context = avformat_alloc_context();
    context->interrupt_callback = {&MediaFile::interrupted, file.interrupt_.get()};
    OpeningOptions options;
    const QByteArray url = "file:" + QFile::encodeName(path);
    int code = avformat_open_input(&context, url.constData(), nullptr, &options.dictionary);
    if (code == AVERROR(EINVAL)) return noKnownFormat(); // that is how the library refuses what the list lacks
    if (code < 0) return av::errorOf("opening", code);
    file.format_.reset(context);
    if (context->probe_score < lowestTrustedProbe) return noKnownFormat();
    code = findStreams(context, opening);
    if (code < 0) return av::errorOf("reading the streams", code);
    if (interrupted(file.interrupt_.get())) return av::errorOf("opening", AVERROR_EXIT);
    for (unsigned i = 0; i < context->nb_streams; ++i) {
        AVStream* stream = context->streams[i];
        if (!file.video_ && isRealVideo(stream)) file.video_ = stream;
        if (!file.sound_ && stream->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) file.sound_ = stream;
    }
    if (!file.video_ && !file.sound_) {
        // A track of timecode alone is a movie all the same; what else gives neither is none.
        const bool isMovie = QByteArray(context->iformat->name).contains("mov") && context->nb_streams > 0;
        if (file.unknownPicture()) return file.noPicture();
        if (opening != Opening::forFacts || !isMovie) return Error{QStringLiteral("neither picture nor sound")};
    }
    if (const AVStream* stream = file.video_ ? file.video_ : file.sound_) file.deliver(stream);
    file.interrupt_->deadline = std::chrono::steady_clock::time_point::max();
    return file;
}

const AVStream* MediaFile::unknownPicture() const {
    for (unsigned i = 0; i < format_->nb_streams; ++i)
        if (isVideo(format_->streams[i])) return format_->streams[i];
    return nullptr;
}

Error MediaFile::noPicture() const {
    const AVStream* unknown = unknownPicture();
    if (!unknown) return {QStringLiteral("no picture")};
    return {QStringLiteral("unknown codec %1").arg(codecNameOf(*unknown->codecpar))};
}

void MediaFile::deliver(const AVStream* stream) {
    delivered_ = stream->index;
    for (unsigned i = 0; i < format_->nb_streams; ++i)
        format_->streams[i]->discard = int(i) == delivered_ ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
}

int MediaFile::readPacket(AVPacket* packet) const {
    for (;;) {
        av_packet_unref(packet);
        if (cancelled()) return AVERROR_EXIT;
        interrupt_->deadline = std::chrono::steady_clock::now() + readingLimit;
        const int code = av_read_frame(format_.get(), packet);
        if (code == AVERROR(EAGAIN)) continue;
        // A read error in the middle is the end of what can be read.
        if (code < 0) return cancelled() ? AVERROR_EXIT : AVERROR_EOF;
        if (packet->stream_index == delivered_) return 0;
    }
}

bool MediaFile::hasEvenSlices() const {
    return video_->codecpar->codec_id == AV_CODEC_ID_PRORES ||
           video_->codecpar->codec_id == AV_CODEC_ID_DNXHD;
}

Result<av::CodecPtr> MediaFile::openDecoder(int reorderDepth, bool strict, Sharing sharing) const {
    const AVCodec* decoder = avcodec_find_decoder(video_->codecpar->codec_id);
    if (!decoder) return Error{QStringLiteral("no decoder for %1").arg(codecNameOf(*video_->codecpar))};
    av::CodecPtr codec(avcodec_alloc_context3(decoder));
    avcodec_parameters_to_context(codec.get(), video_->codecpar);
    codec->pkt_timebase = video_->time_base;
    codec->has_b_frames = std::max(codec->has_b_frames, std::min(reorderDepth, 16));
    codec->thread_type =
        sharing == Sharing::slices && hasEvenSlices() ? FF_THREAD_SLICE : FF_THREAD_FRAME | FF_THREAD_SLICE;
    // Pictures wait for those they refer to: with two threads more than cores there is always one that can go
    // on.
    const unsigned cores = std::max(1U, std::thread::hardware_concurrency());
    const unsigned waiting = codec->thread_type == FF_THREAD_SLICE || cores == 1 ? 0 : 2;
    const qint64 affordable = std::max<qint64>(1, mostUnderWay / pictureBytesOf(*video_->codecpar));
    codec->thread_count = int(std::min({qint64(cores + waiting), affordable, qint64(8)}));
    if (codec->thread_count < int(std::min(cores, 2U))) { // too large for several: one, by all hands
        codec->thread_type = FF_THREAD_SLICE;
        codec->thread_count = int(std::min(cores, 8U));
    }
    // These would give half a picture without a word.
    const bool silent = decoder->id == AV_CODEC_ID_DNXHD || decoder->id == AV_CODEC_ID_MJPEG ||
                        decoder->id == AV_CODEC_ID_PNG;
    if (silent && strict) codec->err_recognition |= AV_EF_EXPLODE | AV_EF_CRCCHECK;
    memory_->serve(*codec);
    AVDictionary* options = nullptr;
    // Scene-linear pictures are shown as a display would: through its transfer curve.
    if (decoder->id == AV_CODEC_ID_EXR) av_dict_set(&options, "apply_trc", "iec61966_2_1", 0);
    const int code = avcodec_open2(codec.get(), decoder, &options);
    av_dict_free(&options);
    if (code < 0) return av::errorOf("opening the decoder", code);
    return codec;
}

} // namespace daylark
