#pragma once

#include "archive/Archivable.h"
#include "model/Movie.h"

#include <QByteArray>

#include <memory>

namespace daylark {

/// One movie packed with its review record, as a bundle file keeps it: three keys whose names are the file's, not the fields'.
/// Whoever holds it owns it; any thread, one at a time.
class DLMovieBundle : public Archivable {
public:
    QByteArray mAudioData;            ///< an added sound; null as everybody builds it
    std::shared_ptr<Movie> mMetaData; ///< the record with all its keys
    /// The movie file's bytes, or what stands for them in a `LargeArchive`; null where the writer had its media framework's own
    /// object there.
    QByteArray mQTMovieData;

    [[nodiscard]] const char* archiveClassName() const override { return "DLMovieBundle"; }
    void encodeWithCoder(Encoder& coder) const override; ///< "audio", "metadata", "video", in this order
    void initWithCoder(const Decoder& coder) override;
};

/// What a movie gives to a bundle file: nothing, and so the files hold nothing. Wanted: it is what existing ones contain. That
/// the legacy movie is opened for it, whose properties stay on the record, is the caller's, who has a disk.
[[nodiscard]] std::shared_ptr<DLMovieBundle> exportDLM(const Movie& movie);
/// The receiver as it was, whatever the bundle holds.
[[nodiscard]] std::shared_ptr<Movie> initWithDLM(std::shared_ptr<Movie> receiver, const DLMovieBundle* bundle);

/// Archives whose root is a dictionary with the one key "movie", or with none when there is nothing to stand there. On copies,
/// or the interface thread.
[[nodiscard]] QByteArray encodeMovieRoot(const std::shared_ptr<Movie>& movie);
[[nodiscard]] QByteArray encodeBundleRoot(const std::shared_ptr<DLMovieBundle>& bundle);

/// An independent copy that a worker may encode.
[[nodiscard]] std::shared_ptr<Movie> snapshotOf(const std::shared_ptr<Movie>& movie);

} // namespace daylark
