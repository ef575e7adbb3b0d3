#include "archive/Value.h"

#include "archive/Archivable.h"

#include <limits>

namespace daylark {

bool numberToBool(const Number& number) {
    return std::visit([](auto value) { return value != decltype(value){}; }, number);
}

qint64 numberToInt64(const Number& number) {
    if (const bool* value = std::get_if<bool>(&number)) return *value ? 1 : 0;
    if (const qint64* value = std::get_if<qint64>(&number)) return *value;
    if (const quint64* value = std::get_if<quint64>(&number))
        return *value <= quint64(std::numeric_limits<qint64>::max()) ? qint64(*value) : 0;
    const double value = std::get<double>(number);
    // The bounds are the doubles nearest to the range's ends; the comparison is false for NaN as well.
    return value >= -9223372036854775808.0 && value < 9223372036854775808.0 ? qint64(value) : 0;
}

double numberToDouble(const Number& number) {
    return std::visit([](auto value) { return double(value); }, number);
}

Value::Value(const Value& other) = default;
Value::Value(Value&& other) noexcept = default;
Value& Value::operator=(const Value& other) = default;
Value& Value::operator=(Value&& other) noexcept = default;
Value::~Value() = default;

Value::Value(AttributedString text)
    : state_(std::make_shared<const AttributedString>(std::move(text))) {}

Value::Value(Array array)
    : state_(std::make_shared<const Array>(std::move(array))) {}

Value::Value(Dictionary dictionary)
    : state_(std::make_shared<const Dictionary>(std::move(dictionary))) {}

Value::Value(const QString& string) {
    if (!string.isNull()) state_ = string;
}

Value::Value(const QByteArray& data) {
    if (!data.isNull()) state_ = data;
}

Value::Value(const QColor& colour) {
    if (colour.isValid()) state_ = colour;
}

Value::Value(Image image) {
    if (!image.isNil()) state_ = std::make_shared<const Image>(std::move(image));
}

Value::Value(std::shared_ptr<Archivable> object) {
    if (object) state_ = std::move(object);
}

QString Value::string() const {
    const QString* string = std::get_if<QString>(&state_);
    return string ? *string : QString();
}

QByteArray Value::data() const {
    const QByteArray* data = std::get_if<QByteArray>(&state_);
    return data ? *data : QByteArray();
}

QColor Value::colour() const {
    const QColor* colour = std::get_if<QColor>(&state_);
    return colour ? *colour : QColor();
}

const AttributedString* Value::attributedString() const {
    const auto* text = std::get_if<std::shared_ptr<const AttributedString>>(&state_);
    return text ? text->get() : nullptr;
}

const Image* Value::image() const {
    const auto* image = std::get_if<std::shared_ptr<const Image>>(&state_);
    return image ? image->get() : nullptr;
}

const Value::Array* Value::array() const {
    const auto* array = std::get_if<std::shared_ptr<const Array>>(&state_);
    return array ? array->get() : nullptr;
}

const Value::Dictionary* Value::dictionary() const {
    const auto* dictionary = std::get_if<std::shared_ptr<const Dictionary>>(&state_);
    return dictionary ? dictionary->get() : nullptr;
}

std::shared_ptr<Archivable> Value::object() const {
    const auto* object = std::get_if<std::shared_ptr<Archivable>>(&state_);
    return object ? *object : nullptr;
}

Value Value::operator[](QStringView key) const {
    if (const Dictionary* entries = dictionary())
        for (const auto& [name, value] : *entries)
            if (name.isString() && std::get<QString>(name.state_) == key) return value;
    return {};
}

} // namespace daylark
