#include "preferences/Preferences.h"

#include <cmath>
#include <limits>

namespace daylark {

namespace coerced {

bool truth(const QVariant& value) {
    if (value.typeId() != QMetaType::QString) return value.toBool();
    const QString text = value.toString().trimmed();
    return !text.isEmpty() && QStringLiteral("YyTt123456789").contains(text.front());
}

int integer(const QVariant& value) {
    if (value.typeId() != QMetaType::Double && value.typeId() != QMetaType::Float) return value.toInt();
    // The variant rounds; a number object truncates.
    const double real = std::trunc(value.toDouble());
    const bool fits = real >= std::numeric_limits<int>::min() && real <= std::numeric_limits<int>::max();
    return fits ? int(real) : 0;
}

QColor colour(const QVariant& value) {
    return value.typeId() == QMetaType::QString ? QColor(value.toString()) : value.value<QColor>();
}

} // namespace coerced

PreferenceItem::PreferenceItem(Preferences& owner, const QString& key, const QVariant& standard)
    : owner_(owner)
    , key_(key) {
    owner.adopt(*this, standard);
}

QVariant PreferenceItem::value() const {
    return owner_.store_.value(key_);
}

bool PreferenceItem::isStored() const {
    return owner_.store_.hasStoredValue(key_);
}

void PreferenceItem::store(const QVariant& value) {
    owner_.store_.set(key_, value);
}

void PreferenceItem::reset() {
    owner_.store_.remove(key_);
}

Preferences::Preferences(const QString& file)
    : store_(file) {
    store_.registerDefaults(std::exchange(table_, {}));
    QObject::connect(&store_, &UserDefaults::changed, &store_, [this](const QString& key) {
        if (PreferenceItem* item = find(key)) Q_EMIT item->changed();
    });
}

void Preferences::adopt(PreferenceItem& item, const QVariant& standard) {
    items_.insert(item.key(), &item);
    if (standard.isValid()) table_.emplace_back(item.key(), standard);
}

void Preferences::overrideForThisRun(const QString& key, const QString& text) {
    store_.overrideForThisRun(key, text);
}

void Preferences::resetAll() {
    for (const QString& key : store_.storedKeys())
        store_.remove(key);
    store_.synchronise();
}

void Preferences::synchronise() {
    store_.synchronise();
}

QString Preferences::statusName(const QString& code) const {
    for (const Preference<QString>& name : statusNames)
        if (name.key() == code) return name();
    return {};
}

std::optional<qint64> Preferences::usualFirstFrameNumber() const {
    switch (firstFrameNumber()) {
    case FirstFrameNumber::thousandAndOne:
        return 1001;
    case FirstFrameNumber::timecode:
        return std::nullopt;
    case FirstFrameNumber::other:
        return otherFirstFrameNumber();
    case FirstFrameNumber::one:
        break;
    }
    return 1;
}

} // namespace daylark
