#include "archive/BinaryPlistWriter.h"

#include "archive/PlistGuard.h"

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <cstring>

namespace daylark {

namespace {

constexpr char kMagic[] = "bplist00";
constexpr qsizetype kMagicSize = 8;

char* putBigEndian(char* out, quint64 value, int size) {
    for (int shift = (size - 1) * 8; shift >= 0; shift -= 8)
        *out++ = char(value >> shift);
    return out;
}

/// The smallest of 1, 2, 4 and 8 bytes that holds the value.
int byteWidth(quint64 value) {
    if (value <= 0xFF) return 1;
    if (value <= 0xFFFF) return 2;
    return value <= 0xFFFFFFFF ? 4 : 8;
}

/// An integer object; the widths below 8 bytes are unsigned.
char* putInteger(char* out, quint64 value) {
    const int width = byteWidth(value);
    *out++ = char(0x10 | std::countr_zero(unsigned(width)));
    return putBigEndian(out, value, width);
}

int headerSize(quint64 count) {
    return count < 15 ? 1 : 2 + byteWidth(count);
}

char* putHeader(char* out, int marker, quint64 count) {
    if (count < 15) {
        *out++ = char(marker | int(count));
        return out;
    }
    *out++ = char(marker | 15);
    return putInteger(out, count);
}

} // namespace

BinaryPlistWriter::Ref BinaryPlistWriter::addObject(Object object) {
    objects_.push_back(object);
    return Ref(objects_.size() - 1);
}

BinaryPlistWriter::Ref BinaryPlistWriter::addScalar(const char* bytes, qsizetype count) {
    const Object object{Kind::Scalar, quint64(scalars_.size()), quint64(count)};
    scalars_.append(bytes, count);
    return addObject(object);
}

BinaryPlistWriter::Ref BinaryPlistWriter::addString(const QString& text) {
    const auto begin = reinterpret_cast<const char16_t*>(text.utf16());
    // Readers take a NUL in the one-byte form for the end of the text.
    const auto isPlain = [](char16_t unit) { return unit > 0 && unit < 0x80; };
    const bool ascii = std::all_of(begin, begin + text.size(), isPlain);
    const qsizetype position = scalars_.size();
    scalars_.resize(position + headerSize(quint64(text.size())) + text.size() * (ascii ? 1 : 2));
    char* out = putHeader(scalars_.data() + position, ascii ? 0x50 : 0x60, quint64(text.size()));
    if (ascii)
        std::transform(begin, begin + text.size(), out, [](char16_t unit) { return char(unit); });
    else
        qToBigEndian<quint16>(begin, text.size(), out);
    return addObject({Kind::Scalar, quint64(position), quint64(scalars_.size() - position)});
}

BinaryPlistWriter::Ref BinaryPlistWriter::string(const QString& text) {
    const auto found = strings_.constFind(text);
    if (found != strings_.constEnd()) return *found;
    const Ref ref = addString(text);
    strings_.insert(text, ref);
    return ref;
}

BinaryPlistWriter::Ref BinaryPlistWriter::key(const char* text) {
    // Names are literals, so the address nearly always tells; the text is compared because it need not.
    KnownKey& known = keysByAddress_[text];
    if (known.text.isNull() || known.text != text) known = {QByteArray(text), string(QString::fromUtf8(text))};
    return known.ref;
}

BinaryPlistWriter::Ref BinaryPlistWriter::boolean(bool value) {
    Ref& known = booleans_[value ? 1 : 0];
    if (known == 0) {
        const char marker = value ? 0x09 : 0x08;
        known = addScalar(&marker, 1) + 1;
    }
    return known - 1;
}

BinaryPlistWriter::Ref BinaryPlistWriter::integer(qint64 value) {
    const auto found = integers_.constFind(value);
    if (found != integers_.constEnd()) return *found;
    char bytes[9];
    const Ref ref = addScalar(bytes, putInteger(bytes, quint64(value)) - bytes);
    integers_.insert(value, ref);
    return ref;
}

BinaryPlistWriter::Ref BinaryPlistWriter::unsignedInteger(quint64 value) {
    const auto found = unsigneds_.constFind(value);
    if (found != unsigneds_.constEnd()) return *found;
    // Sixteen bytes, so that the top bit isn't a sign.
    char bytes[17] = {0x14};
    putBigEndian(bytes + 9, value, 8);
    const Ref ref = addScalar(bytes, sizeof bytes);
    unsigneds_.insert(value, ref);
    return ref;
}

BinaryPlistWriter::Ref BinaryPlistWriter::real(double value) {
    const auto bits = std::bit_cast<quint64>(value);
    const auto found = reals_.constFind(bits);
    if (found != reals_.constEnd()) return *found;
    char bytes[9] = {0x23};
    putBigEndian(bytes + 1, bits, 8);
    const Ref ref = addScalar(bytes, sizeof bytes);
    reals_.insert(bits, ref);
    return ref;
}

BinaryPlistWriter::Ref BinaryPlistWriter::data(const QByteArray& bytes) {
    data_.push_back(bytes);
    return addObject({Kind::Data, quint64(data_.size() - 1), quint64(bytes.size())});
}

BinaryPlistWriter::Ref BinaryPlistWriter::uid(quint32 value) {
    if (value >= uids_.size()) uids_.resize(std::max<size_t>(size_t(value) + 1, uids_.size() * 2));
    if (uids_[value] == 0) {
        char bytes[5];
        const int width = byteWidth(value);
        bytes[0] = char(0x80 | (width - 1));
        uids_[value] = addScalar(bytes, putBigEndian(bytes + 1, value, width) - bytes) + 1;
    }
    return uids_[value] - 1;
}

BinaryPlistWriter::Ref BinaryPlistWriter::array(const std::vector<Ref>& elements) {
    const Object object{Kind::Array, references_.size(), elements.size()};
    references_.insert(references_.end(), elements.begin(), elements.end());
    return addObject(object);
}

BinaryPlistWriter::Ref BinaryPlistWriter::dictionary(const std::vector<Ref>& keys,
                                                     const std::vector<Ref>& values) {
    const Object object{Kind::Dictionary, references_.size(), keys.size()};
    references_.insert(references_.end(), keys.begin(), keys.end());
    references_.insert(references_.end(), values.begin(), values.end());
    return addObject(object);
}

quint64 BinaryPlistWriter::serialisedSize(const Object& object, int referenceSize) const {
    switch (object.kind) {
    case Kind::Scalar:
        return object.count;
    case Kind::Data:
        return quint64(headerSize(object.count)) + object.count;
    case Kind::Array:
        return quint64(headerSize(object.count)) + object.count * quint64(referenceSize);
    case Kind::Dictionary:
        break;
    }
    return quint64(headerSize(object.count)) + 2 * object.count * quint64(referenceSize);
}

char* BinaryPlistWriter::serialise(const Object& object, int referenceSize, char* out) const {
    const auto append = [&out](const char* bytes, quint64 count) {
        if (count > 0) std::memcpy(out, bytes, size_t(count));
        out += count;
    };
    if (object.kind == Kind::Scalar) {
        append(scalars_.constData() + object.position, object.count);
        return out;
    }
    if (object.kind == Kind::Data) {
        out = putHeader(out, 0x40, object.count);
        append(data_[object.position].constData(), object.count);
        return out;
    }
    const bool isArray = object.kind == Kind::Array;
    out = putHeader(out, isArray ? 0xA0 : 0xD0, object.count);
    const Ref* references = references_.data() + object.position;
    for (const Ref* end = references + object.count * (isArray ? 1 : 2); references != end; ++references)
        out = putBigEndian(out, *references, referenceSize);
    return out;
}

QByteArray BinaryPlistWriter::finish(Ref top) const {
    const int referenceSize = byteWidth(objects_.size());
    quint64 tableOffset = kMagicSize;
    for (const Object& object : objects_)
        tableOffset += serialisedSize(object, referenceSize);
    const int offsetSize = byteWidth(tableOffset);

    QByteArray bytes(qsizetype(tableOffset + objects_.size() * quint64(offsetSize)) + kPlistTrailerSize,
                     Qt::Uninitialized);
    char* const begin = bytes.data();
    std::memcpy(begin, kMagic, kMagicSize);
    char* out = begin + kMagicSize;
    char* table = begin + tableOffset;
    for (const Object& object : objects_) {
        table = putBigEndian(table, quint64(out - begin), offsetSize);
        out = serialise(object, referenceSize, out);
    }
    std::memset(table, 0, 6);
    table[6] = char(offsetSize);
    table[7] = char(referenceSize);
    putBigEndian(table + 8, objects_.size(), 8);
    putBigEndian(table + 16, top, 8);
    putBigEndian(table + 24, tableOffset, 8);
    return bytes;
}

} // namespace daylark
