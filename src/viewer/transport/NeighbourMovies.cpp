#include "viewer/transport/NeighbourMovies.h"

#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "viewer/RunPreferences.h"
#include "viewer/review/ViewerList.h"

#include <algorithm>
#include <utility>

namespace daylark {

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
        const StartFrame start = preferences_.loadFrame();
        if (start != StartFrame::current && start != StartFrame::sameFrame) return;
        if (player_.isOpen() && player_.rate() == 0) settle_.start();
    });
}

void NeighbourMovies::refresh() {
    if (!player_.isOpen()) return;
    std::vector<qsizetype> places{list_.findNextMovie(), list_.findPreviousMovie()};
    if (places.front() < 0) places.push_back(0); // the list may be played round
    const bool running = player_.rate() > 0;
    const StartPosition::Previous current{player_.currentTime(), player_.currentFrame()};
    std::vector<NeighbourMovie> wishes;
    const RunView view = runViewOf(preferences_);
    Told told{list_.selectedMovie() ? list_.selectedMovie()->mediaAddress(view) : QString(), running, {}};
    for (const qsizetype place : places) {
        if (place < 0 || place == list_.selectionIndex() || place >= list_.count()) continue;
        const Movie& movie = *list_.movies()[size_t(place)];
        const std::pair wish(movie.mediaAddress(view), StartPosition(movie, preferences_, current));
        if (std::find(told.wishes.begin(), told.wishes.end(), wish) != told.wishes.end()) continue;
        told.wishes.push_back(wish);
        wishes.push_back({wish.first, [start = wish.second, running](const SampleIndex& index) {
                              return start.frameIn(index, running);
                          }});
    }
    if (told == told_) return;
    told_ = std::move(told);
    player_.setNeighbours(std::move(wishes));
}

void NeighbourMovies::none() {
    settle_.stop();
    told_ = {};
    player_.setNeighbours({});
}

} // namespace daylark
