#pragma once

#include "media/facts/MediaFacts.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <memory>
#include <optional>
#include <vector>

namespace daylark {

class Movie;
class WorkQueue;

/// What items' files say of themselves beyond their records: read on a worker when somebody looks at it, and kept for the
/// run. Interface thread.
class ItemFacts : public QObject {
    Q_OBJECT
public:
    using Movies = std::vector<std::shared_ptr<Movie>>;
    explicit ItemFacts(QObject* parent = nullptr);
    ~ItemFacts() override;

    /// Null: not read yet, or not to be read. Valid until the next turn of the loop.
    [[nodiscard]] const MediaFacts* of(const Movie& movie) const;
    void want(const Movies& movies); ///< has those read that are not known; the newest demand goes first

    /// With what the record says of its sound: "No sound", "stereo", "2 tracks", "Muted", "Added: take3.wav". Empty: not known.
    [[nodiscard]] QString soundOf(const Movie& movie) const;
    [[nodiscard]] static QString soundTracksOf(const MediaFacts& facts); ///< a line each
    [[nodiscard]] QString startTimecodeOf(const Movie& movie) const; ///< "01:00:00:00"; empty where the file has none
    /// What the production calls its frames, "1001 - 1100"; empty where that is counted from 1 anyway, or is not known.
    [[nodiscard]] QString productionNumbersOf(const Movie& movie, std::optional<qint64> usualFirst) const;

Q_SIGNALS:
    void known(const QString& path);

private:
    struct Entry {
        MediaFacts facts;
        bool readable = false;
        QString sizeText; ///< the record's when it was read: another one asks anew
    };
    [[nodiscard]] const Entry* entryOf(const Movie& movie) const;
    void readNext();

    struct Demand {
        QString path, sizeText;
    };
    QHash<QString, Entry> entries_;
    std::vector<Demand> waiting_; ///< the last is read next
    std::shared_ptr<CancelFlag> cancel_;
    bool reading_ = false;
    std::unique_ptr<WorkQueue> work_;
};

} // namespace daylark
