#include "commands/Menu.h"

namespace daylark {

Menu::Entry::Entry(Menu menu)
    : below{std::move(menu)} {}

std::vector<QString> Menu::commands() const {
    std::vector<QString> all;
    for (const Entry& entry : entries) {
        if (!entry.command.isEmpty()) all.push_back(entry.command);
        for (const Menu& menu : entry.below) {
            const auto inner = menu.commands();
            all.insert(all.end(), inner.begin(), inner.end());
        }
    }
    return all;
}

} // namespace daylark
