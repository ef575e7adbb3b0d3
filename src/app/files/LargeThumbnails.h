#pragma once

#include "archive/Image.h"
#include "base/jobs/CancelFlag.h"
#include "base/jobs/WorkQueue.h"
#include "picture/Thumbnail.h"

#include <QImage>
#include <QObject>
#include <QSet>
#include <QString>

#include <deque>
#include <memory>
#include <vector>

namespace daylark {

class Movie;
class Preferences;
class ReviewEdits;
class SampleTables;

/// Items' thumbnails at the size in which they are shown: the same pictures as the small ones of their records, made on a
/// worker when somebody looks at them and kept with the desktop's own thumbnails. They go through the display's view that is
/// chosen now, where their pictures do at all; another view makes them anew. What cannot be made is not there, and the small
/// one is shown. Interface thread.
class LargeThumbnails : public QObject {
    Q_OBJECT
public:
    using Movies = std::vector<std::shared_ptr<Movie>>;
    /// `folder`: where the desktop keeps thumbnails; empty: none is kept. `colours`: shared with whoever else makes stills.
    LargeThumbnails(ReviewEdits& edits, const Preferences& preferences, QString folder, std::shared_ptr<SampleTables> tables,
                    std::shared_ptr<StillColours> colours = nullptr, QObject* parent = nullptr);
    ~LargeThumbnails() override;

    /// Has these made, in this order, at least `width` pixels wide; what was wanted before and has not begun is dropped.
    void want(const Movies& movies, int width);
    /// A person chose this picture; it becomes the large one.
    void keep(const std::shared_ptr<Movie>& movie, const QImage& picture);
    [[nodiscard]] bool isIdle() const { return waiting_.empty() && running_ == 0; }

Q_SIGNALS:
    void made(const daylark::Image& thumbnail, const QImage& picture); ///< of which small one
    void outdated(); ///< those that were made are of another view: whoever shows them wants them anew

private:
    struct Task {
        ThumbnailRequest request;
        Image thumbnail;
        int side = 0;
        QImage chosen; ///< null: from the file
    };
    void followChoice();
    void dispatch();
    [[nodiscard]] static QImage carryOut(const Task& task, const QString& folder, const CancelFlag& cancel,
                                         SampleTables& tables);

    ReviewEdits& edits_;
    const Preferences& preferences_;
    const QString folder_;
    const std::shared_ptr<SampleTables> tables_;
    const std::shared_ptr<StillColours> colours_;
    ColourChoice choice_;
    const std::shared_ptr<CancelFlag> cancel_;
    std::deque<Task> waiting_;
    QSet<QByteArray> impossible_; ///< small ones, with the size, for which there is none; by their bytes' digest
    int running_ = 0;
    WorkQueue work_{1, WorkQueue::Pace::background};
};

} // namespace daylark
