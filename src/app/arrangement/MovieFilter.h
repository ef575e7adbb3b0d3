#pragma once

#include "app/arrangement/TextSearch.h"
#include "model/Movie.h"

#include <QString>

#include <vector>

namespace daylark {

/// What of a playlist's items is shown: those with a flag, with notes, missing and so on, or those whose path holds a
/// text. One line of a table a choice: its title in the menu, the button's title while it is on, its test. A value;
/// interface thread, which owns the records.
class MovieFilter {
public:
    /// A line of the menu.
    struct Choice {
        const char* id;    ///< of its command, behind "filter."
        const char* title; ///< in the menu
        const char* button;
        bool (*shows)(const Movie&); ///< null: everything
    };
    [[nodiscard]] static const std::vector<Choice>& choices(); ///< "Show All" first; the flags beside
    static constexpr int firstFlag = 901, lastFlag = 908;      ///< the tags that ask for a flag

    MovieFilter() = default; ///< shows everything
    [[nodiscard]] static MovieFilter withChoice(const Choice& choice);
    [[nodiscard]] static MovieFilter withFlag(int tag);
    [[nodiscard]] static MovieFilter withText(const QString& text); ///< of the path; empty: everything

    [[nodiscard]] bool isOn() const { return choice_ || flag_ || !text_.isEmpty(); }
    [[nodiscard]] bool shows(const Movie& movie) const;
    [[nodiscard]] QString buttonTitle() const;
    [[nodiscard]] QString text() const { return text_; } ///< of the search field
    [[nodiscard]] QString id() const; ///< of the menu's line that is on; "showAll" too where a text is looked for
    bool operator==(const MovieFilter& other) const {
        return choice_ == other.choice_ && flag_ == other.flag_ && text_ == other.text_;
    }
    /// Whether a change of this field of an item may bring it in or out.
    [[nodiscard]] static bool looksAt(const QString& field);

private:
    const Choice* choice_ = nullptr;
    int flag_ = 0;
    QString flagCode_;
    QString text_;
    TextSearch search_;
};

/// Whether a reviewer left something on the item: a grade, drawings, notes, bookmarks or a flag.
[[nodiscard]] bool hasReviewWork(const Movie& movie);

} // namespace daylark
