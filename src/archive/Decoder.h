#pragma once

#include "archive/Archivable.h"
#include "archive/Value.h"

#include <QUrl>

namespace daylark {

/// What a record reads its fields from. A missing key, a value of another class or an unreadable one gives
/// null, 0 or false; there are no errors here. Narrowing: integers are truncated to the width asked for.
class Decoder {
public:
    virtual ~Decoder() = default;

    /// The value under the key; nil when there is none. Records inside arrays are decoded with it.
    [[nodiscard]] virtual Value decode(const char* key) const = 0;

    [[nodiscard]] QString decodeString(const char* key) const { return decode(key).string(); }
    [[nodiscard]] QByteArray decodeData(const char* key) const { return decode(key).data(); }
    [[nodiscard]] QUrl decodeUrl(const char* key) const;
    [[nodiscard]] std::optional<Date> decodeDate(const char* key) const;
    [[nodiscard]] QColor decodeColour(const char* key) const { return decode(key).colour(); }
    [[nodiscard]] Image decodeImage(const char* key) const;
    [[nodiscard]] std::optional<AttributedString> decodeText(const char* key) const;
    [[nodiscard]] std::optional<Number> decodeNumber(const char* key) const;
    [[nodiscard]] bool decodeBool(const char* key) const;
    [[nodiscard]] qint32 decodeInt32(const char* key) const;
    [[nodiscard]] qint64 decodeInt64(const char* key) const;
    [[nodiscard]] float decodeFloat(const char* key) const;
    [[nodiscard]] double decodeDouble(const char* key) const;
    /// The integer value of whatever stands under the key: a number, or the number that a string begins with
    /// (else 0).
    [[nodiscard]] qint32 decodeIntegerValue(const char* key) const;

    /// The records of class T of an array, others left out; a missing or non-array value gives a nil list.
    template<class T>
    [[nodiscard]] ObjectList<T> decodeList(const char* key) const {
        ObjectList<T> list;
        const Value value = decode(key);
        const Value::Array* array = value.array();
        if (!array) {
            list.isNil = true;
            return list;
        }
        list.reserve(array->size());
        for (const Value& element : *array)
            if (auto record = std::dynamic_pointer_cast<T>(element.object()))
                list.push_back(std::move(record));
        return list;
    }
};

} // namespace daylark
