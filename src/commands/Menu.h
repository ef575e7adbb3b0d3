#pragma once

#include <QString>

#include <initializer_list>
#include <vector>

namespace daylark {

/// A menu as a list of commands, lines between them and menus below it; what is made of it for the screen is
/// the windows'. A value.
struct Menu {
    struct Entry {
        Entry(const char* id)
            : command(QLatin1String(id)) {}
        Entry(QString id)
            : command(std::move(id)) {}
        Entry(Menu menu);
        [[nodiscard]] bool isLine() const { return command.isEmpty() && below.empty(); }

        QString command;         ///< its ID; empty with no menu below: a line
        std::vector<Menu> below; ///< one or none
    };
    static constexpr const char* line = "";

    QString title; ///< with mnemonic
    std::vector<Entry> entries = {};

    /// Every command in it and in the menus below, in order.
    [[nodiscard]] std::vector<QString> commands() const;
};

} // namespace daylark
