#include "model/SmartRules.h"

namespace daylark {

namespace {

const QString matchKey = QStringLiteral("match"), rulesKey = QStringLiteral("rules"),
              subjectKey = QStringLiteral("subject"), relationKey = QStringLiteral("relation"),
              valueKey = QStringLiteral("value"), anyWord = QStringLiteral("any"), allWord = QStringLiteral("all");
/// More than anybody asks; a stranger's file shall not make every keystroke slow.
constexpr size_t mostRules = 200;

} // namespace

Value SmartRules::toValue() const {
    if (rules.empty()) return {};
    Value::Array list;
    for (const SmartRule& rule : rules)
        list.emplace_back(Value::Dictionary{{subjectKey, rule.subject},
                                            {relationKey, rule.relation},
                                            {valueKey, rule.value.isNull() ? QStringLiteral("") : rule.value}});
    return Value::Dictionary{{matchKey, any ? anyWord : allWord}, {rulesKey, std::move(list)}};
}

SmartRules SmartRules::fromValue(const Value& value) {
    SmartRules read;
    read.any = value[matchKey].string() == anyWord;
    const Value list = value[rulesKey];
    const Value::Array* rules = list.array();
    if (!rules) return read;
    for (const Value& each : *rules) {
        const SmartRule rule{each[subjectKey].string(), each[relationKey].string(), each[valueKey].string()};
        if (!rule.subject.isEmpty() && read.rules.size() < mostRules) read.rules.push_back(rule);
    }
    return read;
}

} // namespace daylark
