#pragma once

#include "media/container/MediaFile.h"
#include "media/encode/ExportWatch.h"
#include "media/encode/SoundEncoder.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace daylark {

/// Copies the streams of an opened movie into another file, packet by packet, with a sound of its own or an encoded one beside
/// the pictures. Internal to media/encode; one thread; called once.
class MovieCopy {
public:
    /// `path`: written as `container`, whatever it is called.
    MovieCopy(const QString& path, const AVOutputFormat& container);
    ~MovieCopy();
    MovieCopy(const MovieCopy&) = delete;
    MovieCopy& operator=(const MovieCopy&) = delete;

    void setOption(const char* name, const QByteArray& value) { av_dict_set(&options_, name, value.constData(), 0); }
    /// Null movie: the sound alone. `sound` null: none but what is copied; else it begins at `soundStart`, seconds on the
    /// movie's clock. Errors: the library's words, "cancelled".
    [[nodiscard]] Result<void> copy(MediaFile* movie, bool withOwnSound, SoundEncoder* sound, double soundStart,
                                    const ExportWatch& watch);

private:
    [[nodiscard]] Result<void> addStreams(const AVFormatContext& movie, bool withOwnSound);
    [[nodiscard]] Result<void> addEncoded(const SoundEncoder& sound);
    [[nodiscard]] Result<void> encodeUntil(double seconds, const ExportWatch& watch);
    [[nodiscard]] Result<void> copyPackets(MediaFile& movie, const ExportWatch& watch);
    [[nodiscard]] Result<void> begin();
    [[nodiscard]] Result<void> end();

    const QByteArray url_;
    AVFormatContext* output_ = nullptr;
    AVDictionary* options_ = nullptr;
    std::vector<int> streamOf_; ///< of each of the movie's; -1: left out
    SoundEncoder* sound_ = nullptr;
    int soundStream_ = -1;
    qint64 soundShift_ = 0; ///< ticks of the encoder
    double soundStart_ = 0;
};

} // namespace daylark
