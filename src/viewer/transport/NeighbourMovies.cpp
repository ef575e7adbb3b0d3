#include "viewer/transport/NeighbourMovies.h"

#include "model/Bookmark.h"
#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "viewer/review/ViewerList.h"

#include <algorithm>
#include <utility>

namespace daylark {

namespace {

/// What the start depends on besides the movie's own index, as a text that changes when it does.
QString startMark(const Movie& movie, const Preferences& preferences, const MediaTime& current,
                  bool running) {
    const bool byCurrent = preferences.loadFrame() == StartFrame::current;
    const MediaTime time = byCurrent ? current : movie.mLastFrameVisited;
    return QStringLiteral("%1|%2|%3/%4|%5")
        .arg(movie.filepathString, preferences.loadFrame.text())
        .arg(time.value)
        .arg(time.scale)
        .arg(running);
}

std::function<qint64(const SampleIndex&)> standingStartOf(const Movie& movie, const Preferences& preferences,
                                                          const MediaTime& current, qint64 first) {
    const StartFrame start = preferences.loadFrame();
    const auto at = [](const MediaTime& time) {
        return [time](const SampleIndex& index) { return index.frameAt(time) + 1; };
    };
    if (start == StartFrame::first) return [first](const SampleIndex&) { return first; };
    if (start == StartFrame::second) return [first](const SampleIndex&) { return first + 1; };
    if (start == StartFrame::middle)
        return [](const SampleIndex& index) {
            return index.frameAt({index.endTicks / 2, index.timeScale}) + 1;
        };
    if (start == StartFrame::current) return at(current);
    if (start == StartFrame::lastVisited) return at(movie.mLastFrameVisited);
    if (start == StartFrame::firstBookmark)
        for (const auto& bookmark : movie.bookmarkStore)
            if (bookmark && !bookmark->mute) {
                const bool trimmed = preferences.trimHandles();
                const qint64 tail = trimmed ? preferences.handleTail() : 0;
                return [tail, frame = qint64(bookmark->firstFrame)](const SampleIndex& index) {
                    return frame > index.count() ? index.count() - tail : frame;
                };
            }
    return [](const SampleIndex&) { return qint64(1); };
}

} // namespace

std::function<qint64(const SampleIndex&)> startFrameOf(const Movie& movie, const Preferences& preferences,
                                                       const MediaTime& current, bool running) {
    const bool trimmed = preferences.trimHandles();
    const qint64 first = 1 + (trimmed ? preferences.handleHead() : 0);
    auto standing = standingStartOf(movie, preferences, current, first);
    if (!running) return standing;
    return [standing = std::move(standing), first](const SampleIndex& index) {
        const qint64 frame = standing(index);
        return frame >= index.count() ? first : frame;
    };
}

NeighbourMovies::NeighbourMovies(Player& player, const ViewerList& list, const Preferences& preferences,
                                 QObject* parent)
    : QObject(parent)
    , player_(player)
    , list_(list)
    , preferences_(preferences) {
    constexpr int momentMs = 300;
    settle_.setSingleShot(true);
    settle_.setInterval(momentMs);
    connect(&settle_, &QTimer::timeout, this, &NeighbourMovies::refresh);
    // Queued: whoever listens to `opened` chooses the place first.
    connect(&player_, &Player::opened, this, &NeighbourMovies::refresh, Qt::QueuedConnection);
    connect(&list_, &ViewerList::moviesChanged, this, &NeighbourMovies::refresh, Qt::QueuedConnection);
    connect(&player_, &Player::rateChanged, &settle_, qOverload<>(&QTimer::start));
    connect(&player_, &Player::positionChanged, this, [this] {
        if (player_.isOpen() && player_.rate() == 0 && preferences_.loadFrame() == StartFrame::current)
            settle_.start();
    });
}

void NeighbourMovies::refresh() {
    if (!player_.isOpen()) return;
    std::vector<qsizetype> places{list_.findNextMovie(), list_.findPreviousMovie()};
    if (places.front() < 0) places.push_back(0); // the list may be played round
    const bool running = player_.rate() > 0;
    const MediaTime current = player_.currentTime();
    std::vector<NeighbourMovie> wishes;
    QStringList marks;
    for (const qsizetype place : places) {
        if (place < 0 || place == list_.selectionIndex() || place >= list_.count()) continue;
        const Movie& movie = *list_.movies()[size_t(place)];
        const QString mark = startMark(movie, preferences_, current, running);
        if (marks.contains(mark)) continue;
        marks << mark;
        wishes.push_back({movie.filepathString, startFrameOf(movie, preferences_, current, running)});
    }
    marks.prepend(list_.selectedMovie() ? list_.selectedMovie()->filepathString : QString());
    if (marks == told_) return;
    told_ = marks;
    player_.setNeighbours(std::move(wishes));
}

void NeighbourMovies::none() {
    settle_.stop();
    told_.clear();
    player_.setNeighbours({});
}

} // namespace daylark
