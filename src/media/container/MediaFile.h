#pragma once

#include "media/container/Av.h"
#include "media/decode/FrameReader.h"
#include "media/decode/PictureMemory.h"

#include <chrono>

namespace daylark {

/// An opened media file with its first real video stream (cover pictures don't count) and its first sound
/// stream, if it has them; at least one of them, unless it was opened for facts. Only the packets of one
/// stream are delivered: the video stream's, unless `deliver` says otherwise. Every wait on the file can be
/// cancelled; opening gives up after a few seconds whatever the file says, reading a packet after half a minute. Internal
/// to media/. One thread at a time. Fails for what is no regular file, is empty, or has none of the formats that a review
/// needs: a file that names others (a list of pieces, a description of streams) is none of these, whatever it is called, and
/// no other file is ever opened for it.
class MediaFile {
public:
    /// What a decoder's threads share out: one picture's slices bring it out soonest, several pictures at a
    /// time decode the most.
    enum class Sharing { slices, pictures };
    /// How the streams' parameters are found out. `forReading` leaves out what a decoder tells by itself once
    /// it decodes: where the header says enough (QuickTime and MP4; MXF and Matroska of pictures that stand
    /// for themselves) the pixel format, the colours and the pixel aspect that stand in the picture's data
    /// alone, which would cost decoding a picture. `forFacts` finds out all of them, and opens a QuickTime or MP4
    /// file that has neither picture nor sound.
    enum class Opening { forReading, forFacts };

    [[nodiscard]] static Result<MediaFile> open(const QString& path, const CancelFlag* cancel,
                                                Opening opening = Opening::forReading);
    /// The same file from its beginning, for what cannot be wound back.
    [[nodiscard]] Result<MediaFile> reopened() const {
        Result<MediaFile> fresh = open(path_, interrupt_->cancel);
        if (fresh) fresh->memory_ = memory_;
        return fresh;
    }

    [[nodiscard]] const QString& path() const { return path_; }
    [[nodiscard]] qint64 size() const { return size_; }         ///< when it was opened; bytes
    [[nodiscard]] qint64 modified() const { return modified_; } ///< likewise; milliseconds since 1970
    [[nodiscard]] AVFormatContext* format() const { return format_.get(); }
    [[nodiscard]] PictureMemory& pictures() const { return *memory_; }
    [[nodiscard]] AVStream* video() const { return video_; } ///< null: sound only
    [[nodiscard]] AVStream* sound() const { return sound_; } ///< null: none
    /// Why there is no video(): none at all, or one that is coded in an unknown way.
    [[nodiscard]] Error noPicture() const;
    [[nodiscard]] bool hasUnknownPicture() const { return !video_ && unknownPicture(); }
    void deliver(const AVStream* stream);                    ///< video() or sound(); from the next packet on
    /// The next packet of the stream delivered; AVERROR_EOF at the end of what can be read, AVERROR_EXIT when
    /// cancelled.
    [[nodiscard]] int readPacket(AVPacket* packet) const;
    void setCancel(const CancelFlag* cancel) const { interrupt_->cancel = cancel; }
    [[nodiscard]] bool cancelled() const { return interrupt_->cancel && interrupt_->cancel->load(); }

    /// A decoder for the video stream (to be closed before the file and those reopened from it), with frame
    /// and slice threads; `reorderDepth` is how many frames may come between a sample's place in the file and
    /// its place on the screen. `strict`: gives no picture that is known to be damaged in part, where the
    /// decoder leaves the choice.
    [[nodiscard]] Result<av::CodecPtr> openDecoder(int reorderDepth, bool strict = true,
                                                   Sharing sharing = Sharing::pictures) const;
    /// The parts of one picture can be shared out evenly.
    [[nodiscard]] bool hasEvenSlices() const;

private:
    struct Interrupt {
        const CancelFlag* cancel = nullptr;
        std::chrono::steady_clock::time_point deadline;
    };
    static int interrupted(void* opaque);
    [[nodiscard]] const AVStream* unknownPicture() const;

    MediaFile() = default;
    QString path_;
    qint64 size_ = 0, modified_ = 0;
    std::shared_ptr<PictureMemory> memory_ = std::make_shared<PictureMemory>(); ///< the decoders' pictures
    std::unique_ptr<Interrupt> interrupt_; ///< outlives format_, which points to it
    av::FormatPtr format_;
    AVStream* video_ = nullptr;
    AVStream* sound_ = nullptr;
    int delivered_ = -1; ///< the stream's number
};

} // namespace daylark
