#include "archive/Encoder.h"

namespace daylark {

void Encoder::encodeUrl(const char* key, const QUrl& value) {
    if (value.isEmpty())
        encode(key, Value());
    else
        encode(key, Value(ArchivedUrl{QString::fromLatin1(value.toEncoded()), {}}));
}

void Encoder::encodeText(const char* key, const std::optional<AttributedString>& value) {
    encode(key, value ? Value(*value) : Value());
}

} // namespace daylark
