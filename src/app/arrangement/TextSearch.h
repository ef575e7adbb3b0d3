#pragma once

#include <QString>

namespace daylark {

/// Looks for a text in others without regard to case and accents, thousands of times a keystroke: what is looked for
/// is folded once, plain ASCII is compared as it stands. A value; any thread.
class TextSearch {
public:
    TextSearch() = default;
    explicit TextSearch(const QString& text);

    [[nodiscard]] bool isIn(const QString& text) const; ///< an empty search is in every text
    /// A text as the search compares it: decomposed, without marks, in one case.
    [[nodiscard]] static QString folded(const QString& text);

private:
    QString sought_;
    bool ascii_ = true;
};

} // namespace daylark
