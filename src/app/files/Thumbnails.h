#pragma once

#include "model/Playlist.h"
#include "platform/Sender.h"

#include <QImage>
#include <QObject>

#include <memory>
#include <vector>

namespace daylark {

class Library;
class ProgressBoard;
class Preferences;
class SampleTables;
class StillColours;

/// Makes thumbnails and reads the properties of items, on workers, in the order asked for; results find their
/// record weakly and are dropped when it is gone. Pictures go through the display's view as the viewer shows them; an item
/// whose input space is another one now gets its thumbnail anew. Interface thread.
class Thumbnails : public QObject {
    Q_OBJECT
public:
    using Movies = std::vector<std::shared_ptr<Movie>>;
    /// `tables`: where movies' sample tables are shared; null makes some of its own; the same for `colours`.
    Thumbnails(Library& library, Preferences& preferences, ProgressBoard& progress,
               std::shared_ptr<SampleTables> tables = nullptr, std::shared_ptr<StillColours> colours = nullptr,
               QObject* parent = nullptr);
    ~Thumbnails() override;

    void probeAndThumbnail(
        const Movies& newItems); ///< what adding asks for: properties, then a thumbnail, item by item
    void readAgain(const Movies& items); ///< their files are others now: both anew
    void updateThumbnailsInArray(const Movies& items);
    void updateThumbnailsSequentially(const std::shared_ptr<Playlist>& playlist);
    void updateThumbnailForMovie(const std::shared_ptr<Movie>& movie);
    void createMissingThumbnails(const Sender& sender);
    void recreateSelectedThumbnails(const Sender& sender); ///< the sender's title is the frame choice
    void recreateAllThumbnails(const Sender& sender);
    /// The viewer's picture as the item's thumbnail, by the older movie path's rules.
    void recreateCurrentThumbnail(const std::shared_ptr<Movie>& current, const QImage& picture,
                                  const Sender& sender);
    /// Items that a person can see go before the others, in their own order.
    void prioritise(const Movies& visible);
    void cancelAll();
    [[nodiscard]] bool isIdle() const;

Q_SIGNALS:
    /// A picture that a person chose became the item's thumbnail.
    void pictureChosen(const std::shared_ptr<daylark::Movie>& movie, const QImage& picture);
    void thumbnailDidLoad(const std::shared_ptr<daylark::Movie>& movie);
    void idle();

private:
    struct Task;
    struct Outcome;
    void enqueue(const Movies& items, const Task& kind);
    void bringToDisplayAnew(const std::shared_ptr<Movie>& movie);
    void dispatch();
    void taskDone(const Task& task, const Outcome& outcome);
    static Outcome carryOut(const Task& task, SampleTables& tables);
    static void applyThumbnail(Movie& movie, const Outcome& outcome, bool force);
    [[nodiscard]] Movies moviesOfAllPlaylists() const;

    class Queue;
    Library& library_;
    Preferences& preferences_;
    ProgressBoard& progress_;
    const std::shared_ptr<SampleTables> tables_;
    const std::shared_ptr<StillColours> colours_;
    std::unique_ptr<Queue> queue_;
};

} // namespace daylark
