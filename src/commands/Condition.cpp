#include "commands/Condition.h"

#include <utility>

namespace daylark {

Condition::Condition(std::function<bool()> ask, QObject* parent)
    : QObject(parent)
    , ask_(std::move(ask))
    , holds_(ask_()) {}

void Condition::look() {
    const bool now = ask_();
    if (std::exchange(holds_, now) != now) Q_EMIT changed();
}

} // namespace daylark
