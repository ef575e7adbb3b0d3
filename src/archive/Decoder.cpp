#include "archive/Decoder.h"

#include <algorithm>
#include <limits>

namespace daylark {

namespace {

/// The integer that a text begins with after white space, saturated to 32 bits; 0 when it begins with none.
qint32 leadingInteger(QStringView text) {
    text = text.trimmed();
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+')) text = text.mid(1);
    qint64 value = 0;
    for (const QChar character : text) {
        if (character < u'0' || character > u'9') break;
        value = std::min<qint64>(value * 10 + (character.unicode() - u'0'), qint64(1) << 40);
    }
    if (negative) value = -value;
    return qint32(
        std::clamp<qint64>(value, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()));
}

} // namespace

QUrl Decoder::decodeUrl(const char* key) const {
    const Value value = decode(key);
    const ArchivedUrl* url = value.url();
    if (!url) return {};
    return url->base.isEmpty() ? QUrl(url->relative) : QUrl(url->base).resolved(QUrl(url->relative));
}

std::optional<Date> Decoder::decodeDate(const char* key) const {
    const Value value = decode(key);
    return value.date() ? std::optional(*value.date()) : std::nullopt;
}

Image Decoder::decodeImage(const char* key) const {
    const Value value = decode(key);
    return value.image() ? *value.image() : Image();
}

std::optional<AttributedString> Decoder::decodeText(const char* key) const {
    const Value value = decode(key);
    return value.attributedString() ? std::optional(*value.attributedString()) : std::nullopt;
}

std::optional<Number> Decoder::decodeNumber(const char* key) const {
    const Value value = decode(key);
    return value.number() ? std::optional(*value.number()) : std::nullopt;
}

bool Decoder::decodeBool(const char* key) const {
    const Value value = decode(key);
    return value.number() && numberToBool(*value.number());
}

qint32 Decoder::decodeInt32(const char* key) const {
    return qint32(decodeInt64(key));
}

qint64 Decoder::decodeInt64(const char* key) const {
    const Value value = decode(key);
    return value.number() ? numberToInt64(*value.number()) : 0;
}

float Decoder::decodeFloat(const char* key) const {
    const double wide = decodeDouble(key);
    // Beyond a float's range the conversion is undefined; infinity is what it would round to.
    constexpr double limit = std::numeric_limits<float>::max();
    if (wide > limit) return std::numeric_limits<float>::infinity();
    if (wide < -limit) return -std::numeric_limits<float>::infinity();
    return float(wide);
}

double Decoder::decodeDouble(const char* key) const {
    const Value value = decode(key);
    return value.number() ? numberToDouble(*value.number()) : 0;
}

qint32 Decoder::decodeIntegerValue(const char* key) const {
    const Value value = decode(key);
    if (value.isString()) return leadingInteger(value.string());
    return value.number() ? qint32(numberToInt64(*value.number())) : 0;
}

} // namespace daylark
