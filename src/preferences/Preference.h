#pragma once

#include "preferences/PreferenceWords.h"

#include <QByteArray>
#include <QColor>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <type_traits>

namespace daylark {

class Preferences;

/// One preference without its type: what is stored under a key, and that it changed. Member of the
/// `Preferences`, which it outlives nowhere. Interface thread.
class PreferenceItem : public QObject {
    Q_OBJECT
public:
    [[nodiscard]] const QString& key() const { return key_; }
    /// What holds for this run, uncoerced: an override, what is stored, the default; invalid when nowhere.
    [[nodiscard]] QVariant value() const;
    [[nodiscard]] QString text() const { return value().toString(); } ///< as stored, letter by letter
    [[nodiscard]] bool isStored() const;
    void store(const QVariant& value); ///< announces when it differs
    void reset();                      ///< forgets what is stored; the default applies again

Q_SIGNALS:
    void changed();

protected:
    PreferenceItem(Preferences& owner, const QString& key, const QVariant& standard);

private:
    Preferences& owner_;
    QString key_;
};

/// How stored values become the types of preferences: numbers as number objects give them (truth,
/// truncation), so that a value written by hand as YES works. What cannot be read is nothing: 0, null, an
/// invalid colour.
namespace coerced {
[[nodiscard]] bool truth(const QVariant& value);
[[nodiscard]] int integer(const QVariant& value); ///< towards 0; 0 beyond what fits
[[nodiscard]] QColor colour(const QVariant& value);
} // namespace coerced

/// A preference with its type; called, it gives what holds now.
template<class T>
class Preference : public PreferenceItem {
public:
    Preference(Preferences& owner, const char* key)
        : PreferenceItem(owner, QLatin1String(key), {}) {}
    Preference(Preferences& owner, const QString& key)
        : PreferenceItem(owner, key, {}) {}
    template<class Standard>
    Preference(Preferences& owner, const char* key, const Standard& standard)
        : PreferenceItem(owner, QLatin1String(key), stored(standard)) {}

    [[nodiscard]] T operator()() const {
        if constexpr (PreferenceEnum<T>)
            return valueOfWord<T>(text());
        else if constexpr (std::is_same_v<T, bool>)
            return coerced::truth(value());
        else if constexpr (std::is_same_v<T, int>)
            return coerced::integer(value());
        else if constexpr (std::is_same_v<T, QColor>)
            return coerced::colour(value());
        else
            return value().template value<T>();
    }
    void set(const T& value) { store(stored(value)); }
    void flip() requires std::is_same_v<T, bool> { set(!(*this)()); }

private:
    /// A default may be given as a text where the table words a number so.
    template<class Value>
    [[nodiscard]] static QVariant stored(const Value& value) {
        if constexpr (PreferenceEnum<Value>)
            return wordOf(value);
        else if constexpr (!std::is_same_v<Value, T> && std::is_convertible_v<Value, const char*>)
            return QString::fromLatin1(value);
        else
            return QVariant::fromValue(T(value));
    }
};

} // namespace daylark
