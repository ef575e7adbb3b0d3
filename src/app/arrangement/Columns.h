#pragma once

#include "model/Movie.h"

#include <QString>

#include <array>
#include <memory>
#include <vector>

namespace daylark {

class Preferences;

/// What the library can say of an item: one descriptor a column, for the table, the tiles, the sorting and
/// the information box alike. The table's columns come first, in the order of the table; saved layouts of the
/// table count on it, so new ones stand at the end of them. Constant values; interface thread, which owns the
/// records.
struct Column {
    enum Id {
        thumbnail,
        flag,
        name,
        notes,
        drawings,
        bookmarks,
        grade,
        instance,
        frames,
        duration,
        rate,
        size,
        resolution,
        path,
        sound, ///< of the file, which the record doesn't say: by `ItemFacts`
        tableTotal, ///< what follows stands in the information box only
        created = tableTotal,
        notesText,
        notes2Text,
        bookmarkCount,
        total
    };
    enum class Alignment { left, right };

    /// Sorts by the number, then by the text.
    struct SortKey {
        double number = 0;
        QString text;
        bool operator<(const SortKey& other) const {
            return number != other.number ? number < other.number : text < other.text;
        }
    };

    Id id;
    const char* label; ///< in menus, tooltips, the information box and for screen readers
    const char* title; ///< in the table's header; empty for columns of icons
    const char* field; ///< the record's field that it shows and sorts by
    int width;         ///< in the table at first, in points
    Alignment alignment = Alignment::left;
    QString (*text)(const Movie&) = nullptr;    ///< null: shows no text
    SortKey (*sortKey)(const Movie&) = nullptr; ///< null: does not sort
    /// In the information box, where it says it differently than in a row.
    QString (*fact)(const Movie&) = nullptr;
    const char* icon = "";         ///< in the header of columns of icons
    Image Movie::*image = nullptr; ///< the record's icon, in columns of icons
    const char* shownImage = "";   ///< what the cell shows for it, whatever the record's is called
    const char* hint = "";         ///< what an icon in the column says

    // For people, in their language.
    [[nodiscard]] QString labelText() const;
    [[nodiscard]] QString titleText() const; ///< empty for columns of icons
    [[nodiscard]] QString hintText() const;
    [[nodiscard]] QString textOf(const Movie& movie) const { return text ? text(movie) : QString(); }
    [[nodiscard]] QString factOf(const Movie& movie) const { return fact ? fact(movie) : textOf(movie); }
    [[nodiscard]] bool hasIcon(const Movie& movie) const { return image && !(movie.*image).isNil(); }
    [[nodiscard]] QString iconOf(const Movie& movie) const; ///< null when the item has none
};

[[nodiscard]] const std::array<Column, Column::total>& columns();
[[nodiscard]] const Column& column(int id); ///< 0 to `Column::total` - 1
/// The flag's name as the user calls it; null without a flag.
[[nodiscard]] QString flagNameOf(const Movie& movie, const Preferences& preferences);

/// Sorts items by the field of a column, or by "sortOrder", steadily: items that are equal in it stay in the
/// order given. Texts are compared without regard to case. An empty or unknown field leaves the order as it
/// is.
void sortMoviesByField(std::vector<std::shared_ptr<Movie>>& movies, const QString& field, bool ascending);

} // namespace daylark
