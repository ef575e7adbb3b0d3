#pragma once

#include "app/links/ReviewLink.h"
#include "model/Movie.h"

#include <QObject>
#include <QString>

#include <memory>

namespace daylark {

class Alerts;
class Library;
class Playlist;
class ProgressBoard;
class Thumbnails;
struct LinkedFiles;

/// Opens review links, one after the other in the order given: a worker looks for the files, then the items come in one
/// step, which can be taken back. Knows which items came by a link in this run. Interface thread.
class LinkOpening : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        Alerts& alerts;
        ProgressBoard& progress;
        Thumbnails& thumbnails;
    };
    explicit LinkOpening(const Surroundings& surroundings, QObject* parent = nullptr);
    ~LinkOpening() override;

    /// The text that another program handed over: a link, or several on lines of their own.
    void handleURLEvent(const QString& text);
    [[nodiscard]] bool isBusy() const;
    [[nodiscard]] bool cameByLink(const Movie& movie) const;

Q_SIGNALS:
    void mediaComes(); ///< before items are added: the viewer is to close
    void finished();   ///< a link has been opened, or told to be none, or cancelled

private:
    void startNext();
    void opened(const ReviewLink& link, const LinkedFiles& files, bool cancelled);
    void linkDone();
    std::shared_ptr<Playlist> targetOf(const ReviewLink& link);
    void add(const ReviewLink& link, const LinkedFiles& files);
    void tellMissing(const LinkedFiles& files);

    class Worker;
    Surroundings surroundings_;
    std::unique_ptr<Worker> worker_;
};

} // namespace daylark
