#pragma once

#include "base/Result.h"
#include "media/container/MovBoxes.h"
#include "media/encode/ExportWatch.h"

#include <QString>

#include <optional>
#include <vector>

namespace daylark {

/// A QuickTime or MP4 file put together anew from tracks of files that have them: every sample is copied byte for byte, every
/// box about a track as it stands (edit list, timecode, colours, matrix, names); only where samples lie is written anew. What
/// no kept track refers to is left out. Internal to media/encode; one thread. A file whose tables can't be vouched for
/// (fragments, samples elsewhere, contradictions) is refused before anything is written.
class MovAssembly {
public:
    /// With or without its own sound.
    [[nodiscard]] static Result<MovAssembly> of(const QString& movie, bool withSound);
    /// Ticks a second of the movie's clock, in which a track to be added must tell its length.
    [[nodiscard]] quint32 timeScale() const { return timeScale_; }
    /// The sound tracks of another such file, with the movie's time scale.
    [[nodiscard]] Result<void> addSound(const QString& file);
    /// Into an open, empty file. Errors: the system's words, "cancelled".
    [[nodiscard]] Result<void> write(int handle, const ExportWatch& watch);

private:
    struct Chunk {
        qint64 from = 0, length = 0;
        qint64 to = 0;
    };
    struct Track {
        int file = 0; ///< its place in files_
        quint32 id = 0;
        MovBoxes::Track boxes;
        std::vector<Chunk> chunks;
    };
    struct File {
        QString path;
        MovBoxes boxes;
    };

    MovAssembly() = default;
    [[nodiscard]] Result<void> addTracks(int file, bool withSound, bool onlySound, quint32 idsFrom);
    [[nodiscard]] Result<void> readOtherBoxes();
    [[nodiscard]] Result<void> copyChunks(int handle, const ExportWatch& watch);
    [[nodiscard]] QByteArray header() const;
    [[nodiscard]] QByteArray trackBox(const Track& track, QByteArrayView content, int depth) const;
    [[nodiscard]] QByteArray offsets(const Track& track) const;
    [[nodiscard]] QByteArray references(QByteArrayView content) const;

    std::vector<File> files_;
    std::vector<Track> tracks_;
    QByteArray before_; ///< boxes that stand before the samples, whole
    bool soundChanges_ = false;
    quint32 timeScale_ = 0, nextId_ = 1;
};

} // namespace daylark
