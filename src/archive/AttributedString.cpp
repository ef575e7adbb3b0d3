#include "archive/AttributedString.h"

namespace daylark {

AttributedString::AttributedString(const QString& plain) {
    append(plain);
}

void AttributedString::append(const QString& text, const TextAttributes& attributes) {
    if (text.isEmpty()) return;
    string_ += text;
    if (!runs_.empty() && runs_.back().attributes == attributes)
        runs_.back().length += text.size();
    else
        runs_.push_back({text.size(), attributes});
}

} // namespace daylark
