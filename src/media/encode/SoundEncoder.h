#pragma once

#include "media/container/Av.h"
#include "media/sound/RecordedSound.h"

extern "C" {
#include <libavutil/audio_fifo.h>
#include <libswresample/swresample.h>
}

#include <functional>
#include <memory>

namespace daylark {

/// A recorded sound on its way into a movie: as whole numbers or fractions of its own depth where the container takes them,
/// else coded without loss, else as that container codes sound. Internal to media/encode; one thread.
class SoundEncoder {
public:
    /// `length`: frames of `sound` that the movie has room for; an earlier end of the sound ends it, but in a container that
    /// wants sound for every picture. The sound outlives it.
    [[nodiscard]] static Result<std::unique_ptr<SoundEncoder>> open(RecordedSound& sound, qint64 length,
                                                                    const AVOutputFormat& container);
    ~SoundEncoder();
    SoundEncoder(const SoundEncoder&) = delete;
    SoundEncoder& operator=(const SoundEncoder&) = delete;

    [[nodiscard]] const AVCodecContext& codec() const { return *codec_; }
    /// How far it has come, seconds.
    [[nodiscard]] double seconds() const { return double(read_) / sound_.form().rate; }
    [[nodiscard]] double length() const { return double(length_) / sound_.form().rate; }
    [[nodiscard]] bool hasEnded() const { return ended_; }
    /// Reads some more and hands on what becomes of it; time stamps count samples from 0. Errors: the codec's, "cancelled",
    /// those of `packet`.
    [[nodiscard]] Result<void> encodeSome(const std::function<Result<void>(AVPacket*)>& packet, const CancelFlag* cancel);

private:
    SoundEncoder(RecordedSound& sound, qint64 length);
    [[nodiscard]] Result<void> openCodec(AVCodecID id, const AVOutputFormat& container);
    [[nodiscard]] Result<void> drain(bool all, const std::function<Result<void>(AVPacket*)>& packet);

    RecordedSound& sound_;
    qint64 length_;
    qint64 read_ = 0, sent_ = 0;
    bool fillsUp_ = false; ///< with silence
    bool ended_ = false;
    av::CodecPtr codec_;
    SwrContext* resampler_ = nullptr;
    AVAudioFifo* waiting_ = nullptr;
};

} // namespace daylark
