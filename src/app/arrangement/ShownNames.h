#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace daylark {

/// A name as a list shows it: its text, and how much of its beginning all names of the list have alike.
struct ShownName {
    QString text;
    qsizetype common = 0; ///< UTF-16 units; never all of the text
};

/// What the names of one list have in common at their beginning, so that what tells them apart (a shot's number) stays
/// readable where there is little room. The common beginning ends behind a separator, or before the number that it would
/// cut. Pure; a name without its extension is what is left before the last full stop. Any thread.
class ShownNames {
public:
    struct Looks {
        bool extensions = true; ///< names are shown with them
        bool common = true;     ///< the common beginning is looked for
    };
    ShownNames() = default;
    ShownNames(const QStringList& names, const Looks& looks);

    [[nodiscard]] ShownName shown(const QString& name) const; ///< of one of the names; one line, ready for showing
    [[nodiscard]] qsizetype common() const { return common_; }

private:
    Looks looks_;
    qsizetype common_ = 0;
};

} // namespace daylark
