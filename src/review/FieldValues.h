#pragma once

#include "model/Bookmark.h"
#include "model/Grade.h"
#include "model/MediaTime.h"
#include "model/Movie.h"
#include "model/SmartRules.h"

#include <cmath>
#include <type_traits>

namespace daylark::fields {

/// What a field of a record is as a value and back, by its type. What cannot be read gives the type's empty
/// value. Any thread.

inline Value box(const QString& text) {
    return text;
}
inline Value box(const QByteArray& data) {
    return data;
}
inline Value box(const QUrl& url) {
    return url.isEmpty() ? Value() : Value(ArchivedUrl{QString::fromLatin1(url.toEncoded()), {}});
}
inline Value box(const Image& image) {
    return image;
}
inline Value box(const QColor& colour) {
    return colour;
}
template<class T>
requires std::is_integral_v<T>
Value box(T number) {
    if constexpr (std::is_same_v<T, bool>)
        return Value(number);
    else
        return Value(qint64(number));
}
template<class T>
requires std::is_floating_point_v<T>
Value box(T number) {
    return Value(double(number));
}
template<class T>
Value box(const std::optional<T>& value) {
    return value ? Value(*value) : Value();
}
inline Value box(const MediaTime& time) {
    return Value::Array{time.value, time.scale, time.flags};
}
inline Value box(const Grade& g) {
    return Value::Array{g.exposure,   g.contrast,   g.saturation,   g.gamma,
                        g.brightness, g.redChannel, g.greenChannel, g.blueChannel};
}
inline Value box(const Drawing& drawing) {
    return drawing.toValue();
}
inline Value box(const std::map<QString, Drawing>& byFrame) {
    Value::Dictionary dictionary;
    for (const auto& [frameKey, drawing] : byFrame)
        dictionary.emplace_back(frameKey, drawing.toValue());
    return dictionary;
}
inline Value box(const SmartRules& rules) {
    return rules.toValue();
}
/// Simple bookmarks never change once they are made: they go along as the objects that they are.
inline Value box(const ObjectList<MovieBookmark>& list) {
    if (list.isNil) return {};
    Value::Array array;
    for (const auto& bookmark : list)
        array.emplace_back(bookmark);
    return array;
}

inline Value box(const std::optional<MovieRun>& run) {
    return run ? run->toValue() : Value();
}

inline void unbox(const Value& value, std::optional<MovieRun>& run) {
    run = MovieRun::fromValue(value);
}
inline void unbox(const Value& value, QString& text) {
    text = value.string();
}
inline void unbox(const Value& value, QByteArray& data) {
    data = value.data();
}
inline void unbox(const Value& value, QUrl& url) {
    url = value.url() ? QUrl(value.url()->relative) : QUrl();
}
inline void unbox(const Value& value, Image& image) {
    image = value.image() ? *value.image() : Image();
}
inline void unbox(const Value& value, QColor& colour) {
    colour = value.colour();
}
template<class T>
requires std::is_arithmetic_v<T>
void unbox(const Value& value, T& number) {
    const Number* boxed = value.number();
    if constexpr (std::is_same_v<T, bool>)
        number = boxed && numberToBool(*boxed);
    else if constexpr (std::is_integral_v<T>)
        number = boxed ? T(numberToInt64(*boxed)) : T();
    else
        number = boxed ? T(numberToDouble(*boxed)) : T();
}
inline void unbox(const Value& value, std::optional<AttributedString>& text) {
    text = value.attributedString() ? std::optional(*value.attributedString()) : std::nullopt;
}
inline void unbox(const Value& value, std::optional<Date>& date) {
    date = value.date() ? std::optional(*value.date()) : std::nullopt;
}
inline void unbox(const Value& value, std::optional<Number>& number) {
    number = value.number() ? std::optional(*value.number()) : std::nullopt;
}
template<class T>
void unboxEach(const Value& value, std::initializer_list<T*> numbers) {
    const Value::Array* array = value.array();
    size_t i = 0;
    for (T* number : numbers)
        unbox(array && i < array->size() ? (*array)[i] : Value(), *number), ++i;
}
inline void unbox(const Value& value, SmartRules& rules) {
    rules = SmartRules::fromValue(value);
}
inline void unbox(const Value& value, MediaTime& time) {
    unboxEach(value, {&time.value, &time.scale, &time.flags});
}
inline void unbox(const Value& value, Grade& g) {
    unboxEach(value, {&g.exposure, &g.contrast, &g.saturation, &g.gamma, &g.brightness, &g.redChannel,
                      &g.greenChannel, &g.blueChannel});
}
inline void unbox(const Value& value, Drawing& drawing) {
    drawing = Drawing::fromValue(value);
}
inline void unbox(const Value& value, std::map<QString, Drawing>& byFrame) {
    byFrame.clear();
    if (const Value::Dictionary* dictionary = value.dictionary())
        for (const auto& [frameKey, drawing] : *dictionary)
            byFrame.emplace(frameKey.string(), Drawing::fromValue(drawing));
}
inline void unbox(const Value& value, ObjectList<MovieBookmark>& list) {
    list.clear();
    const Value::Array* array = value.array();
    list.isNil = !array;
    if (!array) return;
    for (const Value& element : *array)
        if (auto bookmark = std::dynamic_pointer_cast<MovieBookmark>(element.object()))
            list.push_back(std::move(bookmark));
}

template<class T>
bool same(const T& a, const T& b) {
    return a == b;
}
/// Not a number is no change of itself.
inline bool same(float a, float b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}
inline bool same(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}
/// A null text is another one than an empty text: archives tell them apart.
inline bool same(const QString& a, const QString& b) {
    return a == b && a.isNull() == b.isNull();
}
inline bool same(const QByteArray& a, const QByteArray& b) {
    return a == b && a.isNull() == b.isNull();
}
inline bool same(const ObjectList<MovieBookmark>& a, const ObjectList<MovieBookmark>& b) {
    return a == b && a.isNil == b.isNil;
}
inline bool same(const QColor& a, const QColor& b) {
    return a == b || (!a.isValid() && !b.isValid());
}

} // namespace daylark::fields
