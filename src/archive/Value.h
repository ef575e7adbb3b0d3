#pragma once

#include "archive/AttributedString.h"
#include "archive/Image.h"

#include <QByteArray>
#include <QColor>
#include <QPointF>
#include <QString>
#include <QUuid>

#include <memory>
#include <optional>
#include <type_traits>
#include <variant>
#include <vector>

namespace daylark {

class Archivable;

/// A boxed number as an archive keeps it: its kind survives the round trip ("true" is not 1).
using Number = std::variant<bool, qint64, quint64, double>;

[[nodiscard]] bool numberToBool(const Number& number);
[[nodiscard]] qint64
numberToInt64(const Number& number); ///< truncates towards zero; out of range or NaN gives 0
[[nodiscard]] double numberToDouble(const Number& number);

/// A point in time, in seconds from 2001-01-01 00:00 UTC (kept as the archive's double, so nothing is
/// rounded).
struct Date {
    double secondsSince2001 = 0;
    [[nodiscard]] static Date fromUnixSeconds(double seconds) { return {seconds - 978307200.0}; }
    [[nodiscard]] double toUnixSeconds() const { return secondsSince2001 + 978307200.0; }
    bool operator==(const Date&) const = default;
};

/// A URL in its two archived halves; `base` is null when the URL is absolute.
struct ArchivedUrl {
    QString relative;
    QString base;
    bool operator==(const ArchivedUrl&) const = default;
};

/// Anything that can stand in a keyed archive: nil, one of the value classes, an array, a dictionary, or one
/// of our records. Copies are cheap; arrays and dictionaries are shared and never change once made. Any
/// thread.
class Value {
public:
    using Array = std::vector<Value>;
    using Dictionary = std::vector<std::pair<Value, Value>>; ///< key and value, in archived order

    Value() = default; ///< nil
    // Out of line: what copies and destroys fourteen kinds would otherwise be compiled in every source.
    Value(const Value& other);
    Value(Value&& other) noexcept;
    Value& operator=(const Value& other);
    Value& operator=(Value&& other) noexcept;
    ~Value();
    Value(Number number)
        : state_(number) {}
    Value(bool number)
        : state_(Number(number)) {}
    Value(int number)
        : state_(Number(qint64(number))) {}
    Value(qint64 number)
        : state_(Number(number)) {}
    Value(double number)
        : state_(Number(number)) {}
    Value(const QString& string);  ///< a null string is nil
    Value(const QByteArray& data); ///< a null byte array is nil
    Value(Date date)
        : state_(date) {}
    Value(ArchivedUrl url)
        : state_(std::move(url)) {}
    Value(const QColor& colour); ///< an invalid colour is nil
    Value(QPointF point)
        : state_(point) {}
    Value(QUuid uuid)
        : state_(uuid) {}
    Value(AttributedString text);
    Value(Image image); ///< a nil image is nil
    Value(Array array);
    Value(Dictionary dictionary);
    Value(std::shared_ptr<Archivable> object); ///< a null pointer is nil
    template<class T>
    requires std::is_convertible_v<T*, Archivable*> Value(std::shared_ptr<T> record)
        : Value(std::shared_ptr<Archivable>(std::move(record))) {}

    [[nodiscard]] bool isNil() const { return state_.index() == 0; }

    // Each gives nullptr (or a null value) when the value is of another class: readers of archives test,
    // never assume.
    [[nodiscard]] const Number* number() const { return std::get_if<Number>(&state_); }
    [[nodiscard]] QString string() const;
    [[nodiscard]] bool isString() const { return std::holds_alternative<QString>(state_); }
    [[nodiscard]] QByteArray data() const;
    [[nodiscard]] bool isData() const { return std::holds_alternative<QByteArray>(state_); }
    [[nodiscard]] const Date* date() const { return std::get_if<Date>(&state_); }
    [[nodiscard]] const ArchivedUrl* url() const { return std::get_if<ArchivedUrl>(&state_); }
    [[nodiscard]] QColor colour() const;
    [[nodiscard]] const QPointF* point() const { return std::get_if<QPointF>(&state_); }
    [[nodiscard]] const QUuid* uuid() const { return std::get_if<QUuid>(&state_); }
    [[nodiscard]] const AttributedString* attributedString() const;
    [[nodiscard]] const Image* image() const;
    [[nodiscard]] const Array* array() const;
    [[nodiscard]] const Dictionary* dictionary() const;
    [[nodiscard]] std::shared_ptr<Archivable> object() const;

    /// The value under a string key of a dictionary; nil when this is no dictionary or has no such key.
    [[nodiscard]] Value operator[](QStringView key) const;

private:
    std::variant<std::monostate, Number, QString, QByteArray, Date, ArchivedUrl, QColor, QPointF, QUuid,
                 std::shared_ptr<const AttributedString>, std::shared_ptr<const Image>,
                 std::shared_ptr<const Array>, std::shared_ptr<const Dictionary>, std::shared_ptr<Archivable>>
        state_;
};

} // namespace daylark
