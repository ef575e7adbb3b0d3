#pragma once

#include "archive/Archivable.h"
#include "archive/Value.h"

#include <QUrl>

namespace daylark {

/// What a record writes its fields to, key by key, in the record's own order. Null strings, null data, empty
/// URLs, invalid colours, nil images and null pointers are written as nil ($null). Scalars are boxed as
/// number objects. One object at a time: `encodeWithCoder` must use the coder that it was given and not keep
/// it.
class Encoder {
public:
    virtual ~Encoder() = default;

    virtual void encode(const char* key, const Value& value) = 0;
    virtual void encodeArray(const char* key,
                             const std::vector<std::shared_ptr<const Archivable>>& objects) = 0;

    void encodeString(const char* key, const QString& value) { encode(key, Value(value)); }
    void encodeData(const char* key, const QByteArray& value) { encode(key, Value(value)); }
    void encodeUrl(const char* key, const QUrl& value);
    void encodeDate(const char* key, const std::optional<Date>& value) {
        encode(key, value ? Value(*value) : Value());
    }
    void encodeColour(const char* key, const QColor& value) { encode(key, Value(value)); }
    void encodeImage(const char* key, const Image& value) { encode(key, Value(value)); }
    void encodeText(const char* key, const std::optional<AttributedString>& value);
    void encodeNumber(const char* key, const std::optional<Number>& value) {
        encode(key, value ? Value(*value) : Value());
    }
    void encodeBool(const char* key, bool value) { encode(key, Value(value)); }
    void encodeInt(const char* key, qint64 value) { encode(key, Value(value)); }
    void encodeDouble(const char* key, double value) { encode(key, Value(value)); }
    void encodeFloat(const char* key, float value) { encode(key, Value(double(value))); }

    template<class T>
    void encodeList(const char* key, const ObjectList<T>& list) {
        if (list.isNil)
            encode(key, Value());
        else
            encodeArray(key, {list.begin(), list.end()});
    }
};

} // namespace daylark
