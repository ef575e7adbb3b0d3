#include "app/arrangement/MovieFilter.h"

#include <algorithm>

namespace daylark {

namespace {

template<Image Movie::*icon>
bool has(const Movie& movie) {
    return !(movie.*icon).isNil();
}

template<Image Movie::*icon>
bool hasNot(const Movie& movie) {
    return (movie.*icon).isNil();
}

// Both look for the label with four blanks and no other; wanted.
bool isMissing(const Movie& movie) {
    return movie.creatingThumbnailText == fileNotFoundText;
}

bool isNotMissing(const Movie& movie) {
    return !isMissing(movie);
}

} // namespace

const std::vector<MovieFilter::Choice>& MovieFilter::choices() {
    static const std::vector<Choice> all{
        {"showAll", "Show All", "More Filters", nullptr},
        {"unflagged", "Unflagged", "Unflagged", hasNot<&Movie::flag>},
        {"anyFlag", "Any Flag", "Any Flag", has<&Movie::flag>},
        {"withNotes", "With Notes", "Notes", has<&Movie::notesIcon>},
        {"withoutNotes", "Without Notes", "No Notes", hasNot<&Movie::notesIcon>},
        {"withDrawings", "With Drawings", "Drawings", has<&Movie::drawingIcon>},
        {"withoutDrawings", "Without Drawings", "No Drawings", hasNot<&Movie::drawingIcon>},
        {"withBookmarks", "With Bookmarks", "BMs", has<&Movie::bookmarkIcon>},
        {"withoutBookmarks", "Without Bookmarks", "No BMs", hasNot<&Movie::bookmarkIcon>},
        {"withGrade", "With Colour Correction", "CCs", has<&Movie::gradeIcon>},
        {"withoutGrade", "Without Colour Correction", "No CCs", hasNot<&Movie::gradeIcon>},
        {"missing", "Missing", "Missing", isMissing},
        {"notMissing", "Not Missing", "Not Missing", isNotMissing},
    };
    return all;
}

MovieFilter MovieFilter::withChoice(const Choice& choice) {
    MovieFilter filter;
    if (choice.shows) filter.choice_ = &choice;
    return filter;
}

MovieFilter MovieFilter::withFlag(int tag) {
    MovieFilter filter;
    if (tag < firstFlag || tag > lastFlag) return filter;
    filter.flag_ = tag;
    filter.flagCode_ = QString::number(tag);
    return filter;
}

MovieFilter MovieFilter::withText(const QString& text) {
    MovieFilter filter;
    filter.text_ = text;
    filter.search_ = TextSearch(text);
    return filter;
}

bool MovieFilter::shows(const Movie& movie) const {
    if (choice_) return choice_->shows(movie);
    if (flag_) return movie.flagString == flagCode_;
    return text_.isEmpty() || search_.isIn(movie.filepathString);
}

QString MovieFilter::buttonTitle() const {
    if (flag_) return QStringLiteral("Flagged");
    return QLatin1String(choice_ ? choice_->button : choices().front().button);
}

QString MovieFilter::id() const {
    if (flag_) return QStringLiteral("flag.%1").arg(flag_);
    return QLatin1String(choice_ ? choice_->id : choices().front().id);
}

bool MovieFilter::looksAt(const QString& field) {
    static const std::vector<QLatin1String> fields{
        QLatin1String("flagString"),  QLatin1String("flag"),         QLatin1String("notesIcon"),
        QLatin1String("drawingIcon"), QLatin1String("bookmarkIcon"), QLatin1String("gradeIcon"),
        QLatin1String("creatingThumbnailText"), QLatin1String("filepathString")};
    return std::find(fields.begin(), fields.end(), field) != fields.end();
}

bool hasReviewWork(const Movie& movie) {
    return !movie.gradeIcon.isNil() || !movie.drawingIcon.isNil() || !movie.notesIcon.isNil() ||
           !movie.bookmarkIcon.isNil() || !movie.flag.isNil();
}

} // namespace daylark
