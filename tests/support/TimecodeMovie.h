#pragma once

#include <QByteArray>
#include <QtEndian>

#include <initializer_list>
#include <vector>

namespace daylark::test {

/// A QuickTime file of nothing but timecode tracks, byte by byte, with whatever is wrong about it.
struct TimecodeMovie {
    struct Track {
        const char* subtype = "tmcd";
        quint32 flags = 0;
        quint8 quanta = 24;
        std::vector<QByteArray> samples;
        int claimedSamples = -1; ///< in the tables; -1: as many as there are
    };

    template<class Number>
    static QByteArray bytes(Number number) {
        QByteArray written(sizeof(Number), 0);
        qToBigEndian(number, written.data());
        return written;
    }
    static QByteArray box(const char* type, const QByteArray& content) {
        return bytes(quint32(content.size() + 8)) + type + content;
    }

    /// Header first when `headerFirst`, so that a cut file loses samples and not the header.
    static QByteArray file(const std::vector<Track>& tracks, bool headerFirst = true) {
        const QByteArray start = box("ftyp", "qt  " + bytes(quint32(512)) + "qt  ");
        const auto size = quint32(box("moov", header(tracks, 0)).size());
        QByteArray media;
        for (const Track& track : tracks)
            for (const QByteArray& sample : track.samples)
                media += sample;
        if (!headerFirst)
            return start + box("mdat", media) + box("moov", header(tracks, quint32(start.size()) + 8));
        return start + box("moov", header(tracks, quint32(start.size()) + size + 8)) + box("mdat", media);
    }

    /// The content of the header box of a file whose samples follow each other from a place on.
    static QByteArray header(const std::vector<Track>& tracks, quint32 place) {
        QByteArray content = box("mvhd", QByteArray(12, 0) + bytes(quint32(600)) + QByteArray(84, 0));
        for (const Track& track : tracks) {
            content += trackBox(track, place);
            for (const QByteArray& sample : track.samples)
                place += quint32(sample.size());
        }
        return content;
    }

private:
    static QByteArray trackBox(const Track& track, quint32 place) {
        const auto u = [](quint32 number) { return bytes(number); };
        const quint32 count =
            track.claimedSamples < 0 ? quint32(track.samples.size()) : quint32(track.claimedSamples);
        const QByteArray description = QByteArray(6, 0) + bytes(quint16(1)) + u(0) + u(track.flags) +
                                       u(track.quanta * 1000U) + u(1000) + char(track.quanta) + '\0';
        QByteArray sizes;
        for (const QByteArray& sample : track.samples)
            sizes += u(quint32(sample.size()));
        const QByteArray tables = box("stsd", u(0) + u(1) + box(track.subtype, description)) +
                                  box("stts", u(0) + u(1) + u(count) + u(1000)) +
                                  box("stsc", u(0) + u(1) + u(1) + u(count) + u(1)) +
                                  box("stsz", u(0) + u(0) + u(count) + sizes) +
                                  box("stco", u(0) + u(1) + u(place));
        return box("trak", box("tkhd", u(1) + QByteArray(8, 0) + u(1) + QByteArray(68, 0)) +
                               box("mdia", box("mdhd", QByteArray(12, 0) + u(24000) + u(48000) + u(0)) +
                                               box("hdlr", u(0) + "mhlrtmcd" + QByteArray(13, 0)) +
                                               box("minf", box("stbl", tables))));
    }
};

} // namespace daylark::test
