#pragma once

#include "model/ColourTransform.h"
#include "model/Grade.h"
#include "model/Movie.h"
#include "platform/Sender.h"

#include <QObject>

#include <memory>
#include <vector>

namespace daylark {

class CurrentMovie;
class ReviewEdits;
class ViewerList;

/// The current movie's grade on the picture: values by control, reset by tag, on and off, copied, pasted, put
/// onto every movie of the list. `transform` is what the picture view and the snapshot apply. Owned by the
/// viewer's controller; interface thread.
class ViewerGrade : public QObject {
    Q_OBJECT
public:
    enum Tag { resetAll = 100, exposure, contrast, brightness, gamma, red, green, blue, saturation };

    ViewerGrade(CurrentMovie& current, ReviewEdits& edits, ViewerList& list, QObject* parent = nullptr);

    [[nodiscard]] Grade grade() const;                  ///< of the movie on screen; neutral without one
    [[nodiscard]] bool isApplied() const;               ///< its grade is switched on
    [[nodiscard]] bool hasCopy() const { return hasCopy_; } ///< a grade was copied, to be pasted
    /// What the picture gets: the grade, or nothing when it is switched off.
    [[nodiscard]] const ColourTransform& transform() const { return transform_; }

    void setValue(Tag tag, double value); ///< a slider or field
    [[nodiscard]] double value(Tag tag) const;
    void setGrade(const Sender& sender); ///< resets what the tag names; another tag only applies anew
    void toggleGrade();
    /// "Copy" takes the first of these movies' grade; "Paste" puts it onto all of them, and on.
    void copyAndPasteGradeValues(const Sender& sender, const std::vector<std::shared_ptr<Movie>>& selected);
    void applyGradeToAllMovies(); ///< the copied grade onto every movie of the list; on or off stays as it is

Q_SIGNALS:
    void transformChanged(); ///< the picture looks different
    void gradeChanged();     ///< values or switch: controls follow

private:
    void setMovie(const std::shared_ptr<Movie>& movie); ///< applies its grade (`loadGrade`)
    void apply();
    /// The clipboard: narrowed to single precision.
    struct Copied {
        float exposure = 0, contrast = 1, saturation = 1, gamma = 1, brightness = 0, red = 1, green = 1,
              blue = 1;
        [[nodiscard]] Grade grade() const;
    };

    ReviewEdits& edits_;
    ViewerList& list_;
    std::shared_ptr<Movie> movie_;
    ColourTransform transform_;
    Copied copied_;
    bool hasCopy_ = false;
};

} // namespace daylark
