#pragma once

#include "archive/Value.h"

#include <QString>

#include <vector>

namespace daylark {

/// One condition of a smartlist, in the words that it is stored in ("status" "is" "904"). Words that this version
/// doesn't know are kept as they are. A value.
struct SmartRule {
    QString subject, relation, value;
    bool operator==(const SmartRule&) const = default;
};

/// The question that a smartlist asks: conditions, and whether all of them must hold or any. Stored with its playlist
/// beside the other keys, so that a reader that doesn't know it loses nothing of the rest. A value; any thread.
struct SmartRules {
    bool any = false; ///< one of them will do
    std::vector<SmartRule> rules;

    [[nodiscard]] bool isEmpty() const { return rules.empty(); }
    bool operator==(const SmartRules&) const = default;

    [[nodiscard]] Value toValue() const; ///< nil when empty
    /// What makes no sense is left out; the bytes may be a stranger's.
    [[nodiscard]] static SmartRules fromValue(const Value& value);
};

} // namespace daylark
