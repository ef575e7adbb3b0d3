#include "viewer/review/ViewerGrade.h"

#include "annotate/GradeArithmetic.h"
#include "review/ReviewEdits.h"
#include "viewer/CurrentMovie.h"
#include "viewer/review/ViewerList.h"

namespace daylark {

namespace {

double* numberOf(Grade& grade, int tag) {
    switch (tag) {
    case ViewerGrade::exposure:
        return &grade.exposure;
    case ViewerGrade::contrast:
        return &grade.contrast;
    case ViewerGrade::brightness:
        return &grade.brightness;
    case ViewerGrade::gamma:
        return &grade.gamma;
    case ViewerGrade::red:
        return &grade.redChannel;
    case ViewerGrade::green:
        return &grade.greenChannel;
    case ViewerGrade::blue:
        return &grade.blueChannel;
    case ViewerGrade::saturation:
        return &grade.saturation;
    default:
        return nullptr;
    }
}

} // namespace

Grade ViewerGrade::Copied::grade() const {
    return {exposure, contrast, saturation, gamma, brightness, red, green, blue};
}

ViewerGrade::ViewerGrade(CurrentMovie& current, ReviewEdits& edits, ViewerList& list, QObject* parent)
    : QObject(parent)
    , edits_(edits)
    , list_(list) {
    current.handTo(this, &ViewerGrade::setMovie);
    connect(&edits_, &ReviewEdits::movieChanged, this,
            [this](const std::shared_ptr<Movie>& movie, const QString& field) {
                if (movie == movie_ &&
                    (field == QLatin1String("grade") || field == QLatin1String("applyGrade")))
                    apply();
            });
}

void ViewerGrade::setMovie(const std::shared_ptr<Movie>& movie) {
    movie_ = movie;
    if (movie_) edits_.refreshIcons(movie_);
    apply();
}

Grade ViewerGrade::grade() const {
    return movie_ ? movie_->grade() : Grade{};
}

bool ViewerGrade::isApplied() const {
    return movie_ && movie_->applyGrade;
}

void ViewerGrade::apply() {
    const ColourTransform transform = isApplied() ? colourTransformOf(grade()) : ColourTransform{};
    const bool changed = transform != transform_;
    transform_ = transform;
    if (changed) Q_EMIT transformChanged();
    Q_EMIT gradeChanged();
}

double ViewerGrade::value(Tag tag) const {
    Grade numbers = grade();
    const double* number = numberOf(numbers, tag);
    return number ? *number : 0;
}

void ViewerGrade::setValue(Tag tag, double value) {
    Grade numbers = grade();
    double* number = numberOf(numbers, tag);
    if (movie_ && number && *number != value) {
        *number = value;
        edits_.setGrade(movie_, numbers, QString::number(tag));
    }
    apply();
}

void ViewerGrade::setGrade(const Sender& sender) {
    if (movie_ && sender.tag == resetAll) edits_.setGrade(movie_, Grade{});
    Grade neutral;
    if (const double* number = numberOf(neutral, sender.tag)) return setValue(Tag(sender.tag), *number);
    if (movie_) edits_.refreshIcons(movie_);
    apply();
}

// A neutral grade is always on: switching it off would switch it on again.
void ViewerGrade::toggleGrade() {
    if (movie_ && !(movie_->applyGrade && movie_->grade().isNeutral()))
        edits_.setApplyGrade(movie_, !movie_->applyGrade);
    setGrade({});
}

void ViewerGrade::copyAndPasteGradeValues(const Sender& sender,
                                          const std::vector<std::shared_ptr<Movie>>& selected) {
    if (sender.title == QLatin1String("Copy") && !selected.empty() && selected.front()) {
        const Grade from = selected.front()->grade();
        copied_ = {float(from.exposure),     float(from.contrast),   float(from.saturation),
                   float(from.gamma),        float(from.brightness), float(from.redChannel),
                   float(from.greenChannel), float(from.blueChannel)};
        hasCopy_ = true;
        Q_EMIT gradeChanged();
    } else if (sender.title == QLatin1String("Paste")) {
        edits_.pasteGrade(selected, copied_.grade(), true);
        setGrade({});
    }
}

void ViewerGrade::applyGradeToAllMovies() {
    edits_.pasteGrade(list_.movies(), copied_.grade(), false);
    setGrade({});
}

} // namespace daylark
