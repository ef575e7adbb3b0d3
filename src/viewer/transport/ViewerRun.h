#pragma once

#include "base/jobs/CancelFlag.h"
#include "base/jobs/WorkQueue.h"
#include "model/runs/MovieRun.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace daylark {

class CurrentMovie;
class Movie;
class Preferences;
class ReviewEdits;

/// The run of pictures on screen: which of its layers can be shown and which is, and whether pictures have come or were made
/// anew meanwhile. Looks at the disk by a worker, now and then, as shares tell nobody what comes; a picture that is still
/// growing counts once it has stood still for one look. Silent where a movie is shown. Interface thread.
class ViewerRun : public QObject {
    Q_OBJECT
public:
    ViewerRun(CurrentMovie& current, ReviewEdits& edits, const Preferences& preferences, QObject* parent = nullptr);
    ~ViewerRun() override;

    [[nodiscard]] bool isRun() const;
    [[nodiscard]] const QStringList& layers() const { return layers_; } ///< beside its colours; empty until they are read
    [[nodiscard]] QString layer() const;                                ///< empty: its colours
    [[nodiscard]] RunRate rate() const;                                 ///< by hand; unknown: none
    [[nodiscard]] bool isFixed() const;
    void setLayer(const QString& layer);                                ///< one step of the review, as the next two
    [[nodiscard]] QString layerAlone() const;      ///< without the numbers behind it
    [[nodiscard]] QString blackAndWhite() const;   ///< these: "0,100"; empty: as far as each picture's numbers reach
    bool setBlackAndWhite(const QString& numbers); ///< false, and nothing happens, where they make no sense
    void setRate(const RunRate& rate);                                  ///< unknown: as its pictures say
    void setFixed(bool fixed);                                          ///< it keeps its ends whatever comes
    void look(); ///< at once, besides the looks that come by themselves

Q_SIGNALS:
    void changed();      ///< another run or movie, its layers are known, or another one is shown
    void picturesCame(const std::vector<qint64>& frames); ///< came, went or were made again: these (from 1) are to be read anew
    void shownOtherwise();                                 ///< all of them are to be read anew

private:
    /// Size and time of its last change, by number.
    using Stamps = std::map<qint64, std::pair<qint64, qint64>>;
    void follow(const std::shared_ptr<Movie>& movie);
    void recordChanged(const std::shared_ptr<Movie>& movie, const QString& field);
    void modify(const QString& what, const std::function<void(MovieRun&)>& change);
    void looked(const Stamps& now, qint64 taken);
    void readLayers();
    [[nodiscard]] static Stamps stampsOf(const QString& media, const CancelFlag& cancelled);

    CurrentMovie& current_;
    ReviewEdits& edits_;
    const Preferences& preferences_;
    std::optional<MovieRun> shown_; ///< as it was opened
    QStringList layers_;
    Stamps seen_, shownStamps_; ///< at the last look; what the pictures on screen were read from
    bool isFirstLook_ = true, isLooking_ = false;
    QTimer sometimes_;
    std::shared_ptr<CancelFlag> cancelled_;
    WorkQueue work_{1, WorkQueue::Pace::background}; ///< last: waits for its job
};

} // namespace daylark
