#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <initializer_list>
#include <optional>
#include <vector>

namespace daylark {

/// The header of a QuickTime or MP4 file (its `moov` box) as a tree of boxes, read into memory once: for what
/// the codec library does not hand out as it stands in the file. Every size is checked against the box around
/// it and the file, so that a box never reaches beyond its parent; what does not fit ends the walk there. The
/// views it gives live as long as the object. Owned by whoever reads; one thread at a time, usually a worker.
/// Fails for a file without a readable `moov` box, a compressed one, and one of more than 512 MiB.
class MovBoxes {
public:
    /// A box type: fourCc("stsd").
    using Type = quint32;
    static constexpr Type fourCc(const char (&text)[5]) {
        return Type(quint8(text[0])) << 24 | Type(quint8(text[1])) << 16 | Type(quint8(text[2])) << 8 |
               quint8(text[3]);
    }

    struct Box {
        Type type = 0;
        QByteArrayView content; ///< without size and type
    };

    /// A `trak` box.
    struct Track {
        quint32 id = 0;
        Type handler = 0;       ///< "vide", "soun", "tmcd"
        quint32 timeScale = 0;  ///< of the media, ticks a second
        quint64 duration = 0;   ///< of the media, in timeScale ticks
        QByteArrayView content; ///< of the track box; find({"mdia", "minf", "stbl", ...}) starts here
    };

    /// Where a sample lies in the file.
    struct Sample {
        quint64 position = 0;    ///< bytes from the file's beginning
        quint32 size = 0;        ///< bytes
        quint32 description = 1; ///< its sample description, from 1
    };

    [[nodiscard]] static Result<MovBoxes> read(const QString& path);
    /// Of a `moov` box's content that is in memory already, in a file of `fileSize` bytes.
    [[nodiscard]] static MovBoxes of(QByteArray content, qint64 fileSize);

    [[nodiscard]] QByteArrayView movie() const { return bytes_; } ///< content of the moov box
    [[nodiscard]] std::vector<Track> tracks() const;              ///< in the file's order
    [[nodiscard]] bool isFragmented() const;                      ///< it has samples outside this header

    /// The boxes inside a box's content, in order; stops at the first that does not fit.
    [[nodiscard]] static std::vector<Box> children(QByteArrayView content);
    /// The content of the first box down a path of types; none where there is no such box.
    [[nodiscard]] static std::optional<QByteArrayView> find(QByteArrayView content,
                                                            std::initializer_list<Type> path);
    /// The sample descriptions of a track (`stsd` entries): type is the format ("avc1", "tmcd"), content what
    /// follows the data reference index (8 bytes after the entry's size and type).
    [[nodiscard]] static std::vector<Box> sampleDescriptions(const Track& track);
    /// Where a track's samples lie (stsz or stz2, stsc, stco or co64). Fails where the tables are missing or
    /// contradict each other, a sample lies outside the file, or there are more of them than the tables'
    /// bytes can stand for.
    [[nodiscard]] Result<std::vector<Sample>> samples(const Track& track) const;

private:
    QByteArray bytes_;
    qint64 fileSize_ = 0;
};

/// Reads big-endian numbers off the front of bytes; past the end it gives 0 and `failed()` says so for good.
class BoxBytes {
public:
    explicit BoxBytes(QByteArrayView bytes)
        : rest_(bytes) {}
    quint8 u8() { return quint8(number(1)); }
    quint16 u16() { return quint16(number(2)); }
    quint32 u24() { return quint32(number(3)); }
    quint32 u32() { return quint32(number(4)); }
    quint64 u64() { return number(8); }
    qint32 i32() { return qint32(u32()); }
    qint64 i64() { return qint64(u64()); }
    void skip(qsizetype bytes);
    [[nodiscard]] QByteArrayView rest() const { return rest_; }
    [[nodiscard]] bool failed() const { return failed_; }

private:
    quint64 number(int bytes);
    QByteArrayView rest_;
    bool failed_ = false;
};

} // namespace daylark
