#include "media/encode/WaveFile.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <limits>

namespace daylark {
namespace {

constexpr qint64 mostOfRiff = 0xFFFFFFFFLL;

template<class Number>
void appendLittle(QByteArray& bytes, Number number) {
    const Number little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

/// Plain PCM of one or two channels is said as programs of all ages read it, the rest with speakers and true depth.
QByteArray formatChunk(const SoundForm& form) {
    constexpr quint16 pcm = 1, ieeeFloat = 3, extensible = 0xFFFE;
    const quint16 kind = isFloat(form.depth) ? ieeeFloat : pcm;
    const bool plain = form.channels <= 2 && form.depth == SoundDepth::bits16;
    const int frame = form.channels * bytesOf(form.depth), bits = bytesOf(form.depth) * 8;
    QByteArray bytes("fmt ");
    appendLittle<quint32>(bytes, plain ? 16 : 40);
    appendLittle<quint16>(bytes, plain ? kind : extensible);
    appendLittle<quint16>(bytes, quint16(form.channels));
    appendLittle<quint32>(bytes, quint32(form.rate));
    appendLittle<quint32>(bytes, quint32(form.rate) * quint32(frame));
    appendLittle<quint16>(bytes, quint16(frame));
    appendLittle<quint16>(bytes, quint16(bits));
    if (plain) return bytes;
    appendLittle<quint16>(bytes, 22);
    appendLittle<quint16>(bytes, quint16(bits));
    appendLittle<quint32>(bytes, form.speakers);
    appendLittle<quint16>(bytes, kind);
    bytes.append("\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 14); // what all of Microsoft's kinds end with
    return bytes;
}

} // namespace

QByteArray waveHeader(const SoundForm& form, qint64 frames) {
    const qint64 data = frames * form.channels * bytesOf(form.depth);
    QByteArray chunks = formatChunk(form);
    if (isFloat(form.depth)) {
        chunks.append("fact");
        appendLittle<quint32>(chunks, 4);
        appendLittle<quint32>(chunks, quint32(std::min(frames, mostOfRiff)));
    }
    const qint64 riff = 4 + chunks.size() + 8 + data + data % 2;
    const bool large = riff > mostOfRiff;
    QByteArray bytes(large ? "RF64" : "RIFF");
    appendLittle<quint32>(bytes, large ? quint32(mostOfRiff) : quint32(riff));
    bytes.append("WAVE");
    if (large) {
        constexpr quint32 size = 28;
        bytes.append("ds64");
        appendLittle<quint32>(bytes, size);
        appendLittle<quint64>(bytes, quint64(riff + 8 + size));
        appendLittle<quint64>(bytes, quint64(data));
        appendLittle<quint64>(bytes, quint64(frames));
        appendLittle<quint32>(bytes, 0);
    }
    bytes.append(chunks).append("data");
    appendLittle<quint32>(bytes, quint32(std::min(data, mostOfRiff)));
    return bytes;
}

QByteArray waveEnd(const SoundForm& form, qint64 frames) {
    return QByteArray(frames * form.channels * bytesOf(form.depth) % 2, '\0');
}

QByteArray waveSamples(const double* samples, qint64 count, SoundDepth depth) {
    const int size = bytesOf(depth);
    QByteArray bytes;
    bytes.reserve(count * size);
    const double one = std::ldexp(1.0, size * 8 - 1);
    for (qint64 i = 0; i < count; ++i) {
        if (depth == SoundDepth::float32) {
            appendLittle(bytes, float(samples[i]));
        } else if (depth == SoundDepth::float64) {
            appendLittle(bytes, samples[i]);
        } else {
            // A sample that is no number is none: silence.
            const double whole = std::isnan(samples[i]) ? 0 : std::clamp(samples[i] * one, -one, one - 1);
            const qint32 little = qToLittleEndian(qint32(std::lrint(whole)));
            bytes.append(reinterpret_cast<const char*>(&little), size);
        }
    }
    return bytes;
}

} // namespace daylark
